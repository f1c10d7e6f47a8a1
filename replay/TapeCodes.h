// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The tags of a recording's tape. Each entry opens with one byte: the kind in the low 3 bits and a
// small argument in the high 5; an argument of 31 or more is written as 31 and the rest follows
// as a varint. docs/replays.md describes every kind.

#include <cstdint>

enum eTapeTag : uint8_t {
	TAG_STEP		= 0,	// a step begins: the input layer's poll; argument 1 when it asked to pause
	TAG_REPEAT		= 1,	// the previous step's bytes again, argument + 1 times
	TAG_TICK		= 2,	// a read of the tick count: the zigzagged difference from the last one
	TAG_CALENDAR	= 3,	// a read of the calendar second: the zigzagged difference from the last one
	TAG_KEYBOARD	= 4,	// a keyboard poll: the number of key bytes that changed, then each as index and value
	TAG_MOUSE		= 5,	// a mouse poll: a mask of the MOUSE_ fields that changed, then each
	TAG_FAILED		= 6		// a poll the device refused: argument 0 the keyboard, 1 the mouse
};

const uint8_t TAG_KIND_MASK		= 0x07;
const int TAG_ARGUMENT_SHIFT	= 3;
const uint64_t TAG_ARGUMENT_ESCAPE = 31;

// The mouse fields, in the order they follow the tag.
const uint64_t MOUSE_MOTION		= 1;	// dx and dy, each the zigzagged difference from the last poll's
const uint64_t MOUSE_WHEEL		= 2;	// the zigzagged difference
const uint64_t MOUSE_POSITION	= 4;	// a byte 0 or 1 for hasPosition, then x and y as differences
const uint64_t MOUSE_BUTTONS	= 8;	// the four button bytes
const uint64_t MOUSE_ALL		= 15;

const uint64_t FAILED_KEYBOARD	= 0;
const uint64_t FAILED_MOUSE		= 1;
