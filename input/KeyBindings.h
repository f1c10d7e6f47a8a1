// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cKeyBindings holds which key a player presses for each of the seven actions. The game itself
// always reads each action on its own key code, the one of the default keys; the input backends
// fold the keys the player chose onto those codes before anything else sees the keyboard, so
// that a recording or an online partner gets the actions, whatever keys made them.

#include <cstdint>

class cKeyBindings {
public:
	static const int	PLAYERS = 2;
	static const int	ACTIONS = 7;
	enum eAction { UP, DOWN, LEFT, RIGHT, FIRE, SKILL, USE };

						cKeyBindings() { SetDefaults(); }

	// Players 1 and 2; actions from UP to USE.
	int					GetKey( int player, int action ) const { return keys[player - 1][action]; }
	void				SetKey( int player, int action, int key ) { keys[player - 1][action] = key; }
	// The action other than (player, action) that key drives; false when none does.
	bool				FindHolder( int key, int player, int action, int &holderPlayer, int &holderAction ) const;
	void				SetDefaults();
	// Player 2's fire, skill and use moved off the keypad, which most laptops lack, onto Right Ctrl,
	// Right Shift and Return. False, with nothing changed, when another action holds one: key and
	// holder say which.
	bool				SetNoKeypad( int &key, int &holderPlayer, int &holderAction );
	// Escape, the Alt keys and keys without a place name stay the game's and the desktop's.
	static bool			IsBindable( int key );
	// The key code the game reads for the action: its default key.
	static int			GetGameKey( int player, int action );
	static const char *	GetActionName( int action );	// "up" ... "use"
	// Every action's key folded onto its game key, and taken off; the other keys pass as they are.
	void				Apply( uint8_t state[256] ) const;
	bool				operator==( const cKeyBindings &other ) const;

private:
	int					keys[PLAYERS][ACTIONS];
};
