// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ControlsPage.h"

#include "input/InputLayer.h"
#include "input/KeyCodes.h"
#include "input/Settings.h"

namespace {

const uint32_t NAME_COLOUR = 0xFFFFFFFF;
const uint32_t WAITING_COLOUR = 0xFFFFD541;
const uint32_t LINE_COLOUR = 0xFFFFA040;

std::string Describe( int player, int action ) {
	return "player " + std::to_string( player ) + "'s " + cKeyBindings::GetActionName( action );
}

}

bool cControlsPage::Click( int32_t x, int32_t y ) {
	Close();
	for ( int player = 1; player <= cKeyBindings::PLAYERS; player++ ) {
		for ( int action = 0; action < cKeyBindings::ACTIONS; action++ ) {
			const cRect cell = GetKeyCell( player, action );
			if ( x >= cell.left && x < cell.right && y >= cell.top && y < cell.bottom ) {
				waitingPlayer = player;
				waitingAction = action;
				line = "Press a key for " + Describe( player, action ) + "; Escape cancels";
				return true;
			}
		}
	}
	return false;
}

bool cControlsPage::ClickEntry( int entry, const cInputLayer &input, cSettings &settings ) {
	Close();
	if ( entry == DEFAULTS_ENTRY ) {
		const bool changed = !( settings.keys == cKeyBindings() );
		settings.keys.SetDefaults();
		return changed;
	}
	if ( entry != NO_KEYPAD_ENTRY ) {
		return false;
	}
	const cKeyBindings before = settings.keys;
	int key = 0;
	int holder = 0;
	int holderAction = 0;
	if ( !settings.keys.SetNoKeypad( key, holder, holderAction ) ) {
		Refuse( key, holder, holderAction, input );
	}
	return !( settings.keys == before );
}

void cControlsPage::Close() {
	waitingPlayer = 0;
	line.clear();
}

bool cControlsPage::ReadKeys( const cInputLayer &input, cSettings &settings ) {
	bool changed = false;
	for ( int key = 0; key < KEY_COUNT; key++ ) {
		const bool down = input.KeyDown( key );
		const bool pressed = down && !held[key];
		held[key] = down;
		if ( pressed && IsWaiting() ) {
			Bind( key, input, settings, changed );
		}
	}
	return changed;
}

void cControlsPage::Bind( int key, const cInputLayer &input, cSettings &settings, bool &changed ) {
	if ( key == KEY_ESCAPE ) {
		Close();
		return;
	}
	if ( !cKeyBindings::IsBindable( key ) ) {
		line = input.GetKeyName( key ) + " stays the game's own";
		return;
	}
	int holder = 0;
	int holderAction = 0;
	if ( settings.keys.FindHolder( key, waitingPlayer, waitingAction, holder, holderAction ) ) {
		Refuse( key, holder, holderAction, input );
		return;
	}
	changed = settings.keys.GetKey( waitingPlayer, waitingAction ) != key;
	settings.keys.SetKey( waitingPlayer, waitingAction, key );
	Close();
}

void cControlsPage::Refuse( int key, int holder, int holderAction, const cInputLayer &input ) {
	line = input.GetKeyName( key ) + " is " + Describe( holder, holderAction );
}

void cControlsPage::GetTexts( const cInputLayer &input, const cSettings &settings, std::vector<cMenuText> &texts ) const {
	for ( int player = 1; player <= cKeyBindings::PLAYERS; player++ ) {
		for ( int action = 0; action < cKeyBindings::ACTIONS; action++ ) {
			const cRect cell = GetKeyCell( player, action );
			const bool waiting = player == waitingPlayer && action == waitingAction;
			const std::string name = waiting ? "?" : input.GetKeyName( settings.keys.GetKey( player, action ) );
			texts.push_back( cMenuText{ cell.left + TEXT_INSET_X, cell.top + TEXT_INSET_Y, name,
										waiting ? WAITING_COLOUR : NAME_COLOUR } );
		}
	}
	if ( !line.empty() ) {
		texts.push_back( cMenuText{ LABEL_X, LINE_Y, line, LINE_COLOUR } );
	}
}
