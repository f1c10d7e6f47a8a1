// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The game's one palette (the 32-colour DB32 set): every picture the art tool makes uses only
// these colours, with alpha reserved for shadows, glows and the end-screen overlays.

#include <cstdint>

namespace db32 {
	constexpr uint32_t BLACK		= 0xFF000000;
	constexpr uint32_t INK			= 0xFF222034;	// outlines
	constexpr uint32_t PLUM			= 0xFF45283C;
	constexpr uint32_t BROWN_DARK	= 0xFF663931;
	constexpr uint32_t BROWN		= 0xFF8F563B;
	constexpr uint32_t ORANGE		= 0xFFDF7126;
	constexpr uint32_t TAN			= 0xFFD9A066;
	constexpr uint32_t SKIN			= 0xFFEEC39A;
	constexpr uint32_t YELLOW		= 0xFFFBF236;
	constexpr uint32_t LIME			= 0xFF99E550;
	constexpr uint32_t GREEN		= 0xFF6ABE30;
	constexpr uint32_t TEAL			= 0xFF37946E;
	constexpr uint32_t MOSS			= 0xFF4B692F;
	constexpr uint32_t OLIVE_DARK	= 0xFF524B24;
	constexpr uint32_t SLATE		= 0xFF323C39;
	constexpr uint32_t INDIGO		= 0xFF3F3F74;
	constexpr uint32_t NAVY			= 0xFF306082;
	constexpr uint32_t BLUE			= 0xFF5B6EE1;
	constexpr uint32_t SKY			= 0xFF639BFF;
	constexpr uint32_t CYAN			= 0xFF5FCDE4;
	constexpr uint32_t ICE			= 0xFFCBDBFC;
	constexpr uint32_t WHITE		= 0xFFFFFFFF;
	constexpr uint32_t STEEL		= 0xFF9BADB7;
	constexpr uint32_t GREY			= 0xFF847E87;
	constexpr uint32_t GREY_DARK	= 0xFF696A6A;
	constexpr uint32_t GREY_DEEP	= 0xFF595652;
	constexpr uint32_t VIOLET		= 0xFF76428A;
	constexpr uint32_t RED			= 0xFFAC3232;
	constexpr uint32_t ROSE			= 0xFFD95763;
	constexpr uint32_t PINK			= 0xFFD77BBA;
	constexpr uint32_t OLIVE		= 0xFF8F974A;
	constexpr uint32_t GOLD_DARK	= 0xFF8A6F30;

	constexpr int COUNT = 32;
	constexpr uint32_t ALL[COUNT] = {
		BLACK, INK, PLUM, BROWN_DARK, BROWN, ORANGE, TAN, SKIN, YELLOW, LIME, GREEN, TEAL, MOSS,
		OLIVE_DARK, SLATE, INDIGO, NAVY, BLUE, SKY, CYAN, ICE, WHITE, STEEL, GREY, GREY_DARK,
		GREY_DEEP, VIOLET, RED, ROSE, PINK, OLIVE, GOLD_DARK
	};

	// The same colour with another alpha (0..255).
	constexpr uint32_t WithAlpha( uint32_t colour, uint32_t alpha ) {
		return ( colour & 0x00FFFFFF ) | ( alpha << 24 );
	}
}

// Three shades of one material, lit from the top-left.
struct sRamp {
	uint32_t	dark;
	uint32_t	mid;
	uint32_t	light;
};
