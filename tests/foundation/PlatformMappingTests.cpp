// SPDX-License-Identifier: GPL-3.0-or-later
// The SDL side's pure rules: every PC key has its own code, and the window's whole-number scale.

#include <gtest/gtest.h>

#include <map>

#include "input/KeyCodes.h"
#include "input/sdl/ScancodeMap.h"
#include "platform/sdl/SdlWindow.h"

TEST( ScancodeMap, GameBindingsMapToTheirCodes ) {
	const struct { SDL_Scancode scancode; int code; const char *key; } bindings[] = {
		{ SDL_SCANCODE_ESCAPE, KEY_ESCAPE, "Escape" }, { SDL_SCANCODE_W, KEY_W, "W" }, { SDL_SCANCODE_S, KEY_S, "S" },
		{ SDL_SCANCODE_A, KEY_A, "A" }, { SDL_SCANCODE_D, KEY_D, "D" }, { SDL_SCANCODE_H, KEY_H, "H" },
		{ SDL_SCANCODE_J, KEY_J, "J" }, { SDL_SCANCODE_K, KEY_K, "K" }, { SDL_SCANCODE_UP, KEY_UP, "Up" },
		{ SDL_SCANCODE_DOWN, KEY_DOWN, "Down" }, { SDL_SCANCODE_LEFT, KEY_LEFT, "Left" },
		{ SDL_SCANCODE_RIGHT, KEY_RIGHT, "Right" }, { SDL_SCANCODE_KP_1, KEY_NUMPAD1, "keypad 1" },
		{ SDL_SCANCODE_KP_2, KEY_NUMPAD2, "keypad 2" }, { SDL_SCANCODE_KP_3, KEY_NUMPAD3, "keypad 3" },
	};
	for ( const auto &binding : bindings ) {
		EXPECT_EQ( MapScancode( binding.scancode ), binding.code ) << binding.key;
	}
	EXPECT_EQ( MapScancode( SDL_SCANCODE_UNKNOWN ), 0 ) << "a key without a code maps to 0";
	EXPECT_EQ( MapScancode( static_cast<SDL_Scancode>( SDL_NUM_SCANCODES ) ), 0 );
}

TEST( ScancodeMap, NoTwoKeysShareACodeAndEveryKeyIsMapped ) {
	size_t count = 0;
	const cScancodePair *table = GetScancodeTable( count );
	EXPECT_GE( count, 104u ) << "a full PC keyboard has at least 104 keys";
	std::map<int, SDL_Scancode> owners;
	for ( size_t i = 0; i < count; i++ ) {
		EXPECT_GT( table[i].keyCode, 0 );
		EXPECT_LT( table[i].keyCode, KEY_COUNT );
		const auto inserted = owners.emplace( table[i].keyCode, table[i].scancode );
		EXPECT_TRUE( inserted.second ) << SDL_GetScancodeName( table[i].scancode ) << " and "
									   << SDL_GetScancodeName( inserted.first->second ) << " both map to code "
									   << table[i].keyCode;
	}
	for ( int letter = SDL_SCANCODE_A; letter <= SDL_SCANCODE_Z; letter++ ) {
		EXPECT_NE( MapScancode( static_cast<SDL_Scancode>( letter ) ), 0 ) << "letter scancode " << letter;
	}
	for ( int key = SDL_SCANCODE_F1; key <= SDL_SCANCODE_F12; key++ ) {
		EXPECT_NE( MapScancode( static_cast<SDL_Scancode>( key ) ), 0 ) << "function key scancode " << key;
	}
}

TEST( SdlWindow, WindowScaleIsTheLargestWholeNumberInMostOfTheDesktop ) {
	EXPECT_EQ( cSdlWindow::GetWindowScale( 1920, 1050 ), 1 ) << "1632 x 892 usable: 2x (960 high) does not fit";
	EXPECT_EQ( cSdlWindow::GetWindowScale( 2560, 1400 ), 2 );
	EXPECT_EQ( cSdlWindow::GetWindowScale( 3840, 2100 ), 3 );
	EXPECT_EQ( cSdlWindow::GetWindowScale( 800, 600 ), 1 ) << "never below 1, even on a small desktop";
	EXPECT_EQ( cSdlWindow::GetWindowScale( 0, 0 ), 1 );
}
