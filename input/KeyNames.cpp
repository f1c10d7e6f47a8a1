// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/KeyNames.h"

#include <strings.h>

namespace {

struct cPlaceName {
	int				key;
	const char *	name;
};

// Every key of input/sdl/ScancodeMap.cpp's table, by the name SDL gives its place; the semicolon
// by its name, since the file takes a ; after a space for the start of a comment.
const cPlaceName PLACES[] = {
	{ 0x01, "Escape" }, { 0x02, "1" }, { 0x03, "2" }, { 0x04, "3" }, { 0x05, "4" }, { 0x06, "5" }, { 0x07, "6" },
	{ 0x08, "7" }, { 0x09, "8" }, { 0x0A, "9" }, { 0x0B, "0" }, { 0x0C, "-" }, { 0x0D, "=" },
	{ 0x0E, "Backspace" }, { 0x0F, "Tab" },
	{ 0x10, "Q" }, { 0x11, "W" }, { 0x12, "E" }, { 0x13, "R" }, { 0x14, "T" }, { 0x15, "Y" }, { 0x16, "U" },
	{ 0x17, "I" }, { 0x18, "O" }, { 0x19, "P" }, { 0x1A, "[" }, { 0x1B, "]" }, { 0x1C, "Return" },
	{ 0x1D, "Left Ctrl" },
	{ 0x1E, "A" }, { 0x1F, "S" }, { 0x20, "D" }, { 0x21, "F" }, { 0x22, "G" }, { 0x23, "H" }, { 0x24, "J" },
	{ 0x25, "K" }, { 0x26, "L" }, { 0x27, "Semicolon" }, { 0x28, "'" }, { 0x29, "`" }, { 0x2A, "Left Shift" },
	{ 0x2B, "\\" },
	{ 0x2C, "Z" }, { 0x2D, "X" }, { 0x2E, "C" }, { 0x2F, "V" }, { 0x30, "B" }, { 0x31, "N" }, { 0x32, "M" },
	{ 0x33, "," }, { 0x34, "." }, { 0x35, "/" }, { 0x36, "Right Shift" }, { 0x37, "Keypad *" },
	{ 0x38, "Left Alt" }, { 0x39, "Space" }, { 0x3A, "CapsLock" },
	{ 0x3B, "F1" }, { 0x3C, "F2" }, { 0x3D, "F3" }, { 0x3E, "F4" }, { 0x3F, "F5" }, { 0x40, "F6" },
	{ 0x41, "F7" }, { 0x42, "F8" }, { 0x43, "F9" }, { 0x44, "F10" },
	{ 0x45, "Numlock" }, { 0x46, "ScrollLock" },
	{ 0x47, "Keypad 7" }, { 0x48, "Keypad 8" }, { 0x49, "Keypad 9" }, { 0x4A, "Keypad -" },
	{ 0x4B, "Keypad 4" }, { 0x4C, "Keypad 5" }, { 0x4D, "Keypad 6" }, { 0x4E, "Keypad +" },
	{ 0x4F, "Keypad 1" }, { 0x50, "Keypad 2" }, { 0x51, "Keypad 3" }, { 0x52, "Keypad 0" },
	{ 0x53, "Keypad ." }, { 0x56, "Less" }, { 0x57, "F11" }, { 0x58, "F12" },
	{ 0x64, "F13" }, { 0x65, "F14" }, { 0x66, "F15" },
	{ 0x70, "International 2" }, { 0x73, "International 1" }, { 0x79, "International 4" },
	{ 0x7B, "International 5" }, { 0x7D, "International 3" }, { 0x8D, "Keypad =" },
	{ 0x90, "AudioPrev" }, { 0x99, "AudioNext" }, { 0x9C, "Keypad Enter" }, { 0x9D, "Right Ctrl" },
	{ 0xA0, "Mute" }, { 0xA1, "Calculator" }, { 0xA2, "AudioPlay" }, { 0xA4, "AudioStop" },
	{ 0xAE, "VolumeDown" }, { 0xB0, "VolumeUp" }, { 0xB2, "AC Home" }, { 0xB3, "Keypad ," },
	{ 0xB5, "Keypad /" }, { 0xB7, "PrintScreen" }, { 0xB8, "Right Alt" }, { 0xC5, "Pause" },
	{ 0xC7, "Home" }, { 0xC8, "Up" }, { 0xC9, "PageUp" }, { 0xCB, "Left" }, { 0xCD, "Right" },
	{ 0xCF, "End" }, { 0xD0, "Down" }, { 0xD1, "PageDown" }, { 0xD2, "Insert" }, { 0xD3, "Delete" },
	{ 0xDB, "Left GUI" }, { 0xDC, "Right GUI" }, { 0xDD, "Application" }, { 0xDE, "Power" }, { 0xDF, "Sleep" },
	{ 0xE5, "AC Search" }, { 0xE6, "AC Bookmarks" }, { 0xE7, "AC Refresh" }, { 0xE8, "AC Stop" },
	{ 0xE9, "AC Forward" }, { 0xEA, "AC Back" }, { 0xEB, "Computer" }, { 0xEC, "Mail" }, { 0xED, "MediaSelect" },
};

}

const char *cKeyNames::GetPlaceName( int key ) {
	for ( const cPlaceName &place : PLACES ) {
		if ( place.key == key ) {
			return place.name;
		}
	}
	return nullptr;
}

int cKeyNames::FindPlace( const std::string &name ) {
	for ( const cPlaceName &place : PLACES ) {
		if ( strcasecmp( place.name, name.c_str() ) == 0 ) {
			return place.key;
		}
	}
	return 0;
}
