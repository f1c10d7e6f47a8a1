// SPDX-License-Identifier: GPL-3.0-or-later
#include "MenuArt.h"

#include "CharacterArt.h"
#include "Palette.h"
#include "SpriteTools.h"
#include "TextRenderer.h"
#include "TownBackdrop.h"
#include "app/ControlsPage.h"
#include "program/WaitingPicture.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

const int PANEL_LEFT = 284;
const int PANEL_TOP = 244;
const int PANEL_RIGHT = 620;
const int PANEL_BOTTOM = 462;
const int PANEL_MARGIN = 12;
const int PAD_LEFT = 296;		// the pad's picture and its controls, in the title area beside the heading
const int PAD_TOP = 20;

}	// namespace

// The fonts and the drawing steps of the screens.
class cMenuArtist {
public:
	cTextRenderer	label;		// entry labels: one font and size for every screen
	cTextRenderer	heading;
	cTextRenderer	titleSmall;
	cTextRenderer	titleLarge;
	cTextRenderer	body;
	cTextRenderer	bodyBold;
	cTextRenderer	banner;
	cTextRenderer	mono;		// the glyph sheet of the lines written at run time

	bool Open() {
		return label.Open( "DejaVuSans-Bold.ttf", 15 ) && heading.Open( "DejaVuSans-Bold.ttf", 40 ) &&
			titleSmall.Open( "DejaVuSans-Bold.ttf", 26 ) && titleLarge.Open( "DejaVuSans-Bold.ttf", 66 ) &&
			body.Open( "DejaVuSans.ttf", 13 ) && bodyBold.Open( "DejaVuSans-Bold.ttf", 13 ) &&
			banner.Open( "DejaVuSans-Bold.ttf", 72 ) && mono.Open( "DejaVuSansMono.ttf", 12 );
	}

	// Lettering with a banded gradient from top to bottom, a thick ink outline and a drop shadow.
	cCanvas StyledText( const cTextRenderer &font, const std::string &text, const std::vector<uint32_t> &bands, int shadow ) const {
		const cCanvas mask = font.Render( text, db32::WHITE );
		int top = mask.GetHeight(), bottom = 0;
		for ( int y = 0; y < mask.GetHeight(); y++ ) {
			for ( int x = 0; x < mask.GetWidth(); x++ ) {
				if ( mask.IsOpaque( x, y ) ) {
					top = std::min( top, y );
					bottom = std::max( bottom, y + 1 );
				}
			}
		}
		const int pad = 2 + shadow;
		cCanvas letters( mask.GetWidth() + 2 * pad, mask.GetHeight() + 2 * pad );
		for ( int y = 0; y < mask.GetHeight(); y++ ) {
			const int band = std::clamp( ( y - top ) * int( bands.size() ) / std::max( bottom - top, 1 ), 0, int( bands.size() ) - 1 );
			for ( int x = 0; x < mask.GetWidth(); x++ ) {
				if ( mask.IsOpaque( x, y ) ) {
					letters.Set( x + pad, y + pad, bands[band] );
				}
			}
		}
		letters.Outline( db32::INK );
		letters.Outline( db32::INK );
		cCanvas result( letters.GetWidth(), letters.GetHeight() );
		for ( int y = 0; y < result.GetHeight(); y++ ) {
			for ( int x = 0; x < result.GetWidth(); x++ ) {
				if ( letters.IsOpaque( x - shadow, y - shadow ) ) {
					result.Set( x, y, db32::BLACK );
				}
			}
		}
		CopyNonEmpty( result, letters, 0, 0 );
		return result;
	}

	// A raised plate filling the entry rectangle, with a marker and the label left-aligned on it.
	void DrawEntry( cCanvas &screen, const sMenuRect &rect, const char *text ) const {
		screen.FillRect( rect.left, rect.top, rect.right, rect.bottom, db32::INK );
		screen.FillRect( rect.left, rect.top, rect.right, rect.top + 1, db32::BLUE );
		screen.FillRect( rect.left, rect.top, rect.left + 1, rect.bottom, db32::BLUE );
		screen.FillRect( rect.left + 1, rect.bottom - 1, rect.right, rect.bottom, db32::BLACK );
		screen.FillRect( rect.right - 1, rect.top + 1, rect.right, rect.bottom, db32::BLACK );
		screen.FillRect( rect.left + 4, rect.top + 5, rect.left + 7, rect.bottom - 5, db32::ORANGE );
		const cCanvas letters = label.Render( text, db32::ICE );
		const int y = rect.top + ( rect.bottom - rect.top - letters.GetHeight() ) / 2;
		CopyNonEmpty( screen, letters, rect.left + 14, y );
	}

	void DrawPanel( cCanvas &screen ) const {
		screen.FillRect( PANEL_LEFT, PANEL_TOP, PANEL_RIGHT, PANEL_BOTTOM, db32::INK );
		screen.FillRect( PANEL_LEFT, PANEL_TOP, PANEL_RIGHT, PANEL_TOP + 1, db32::INDIGO );
		screen.FillRect( PANEL_LEFT, PANEL_TOP, PANEL_LEFT + 1, PANEL_BOTTOM, db32::INDIGO );
		screen.FillRect( PANEL_LEFT + 1, PANEL_BOTTOM - 1, PANEL_RIGHT, PANEL_BOTTOM, db32::BLACK );
		screen.FillRect( PANEL_RIGHT - 1, PANEL_TOP + 1, PANEL_RIGHT, PANEL_BOTTOM, db32::BLACK );
	}

	// Writes text wrapped to a width; returns the y below the last line.
	int DrawParagraph( cCanvas &screen, const cTextRenderer &font, const std::string &text, int x, int y, int width, uint32_t colour ) const {
		std::string line;
		size_t start = 0;
		while ( start <= text.size() ) {
			size_t end = text.find( ' ', start );
			if ( end == std::string::npos ) {
				end = text.size();
			}
			const std::string word = text.substr( start, end - start );
			const std::string candidate = line.empty() ? word : line + " " + word;
			if ( !line.empty() && font.GetWidth( candidate ) > width ) {
				CopyNonEmpty( screen, font.Render( line, colour ), x, y );
				y += 16;
				line = word;
			} else {
				line = candidate;
			}
			start = end + 1;
		}
		if ( !line.empty() ) {
			CopyNonEmpty( screen, font.Render( line, colour ), x, y );
			y += 16;
		}
		return y;
	}

	// A key cap with its name; returns the x after it.
	int DrawKey( cCanvas &screen, const std::string &name, int x, int y ) const {
		const cCanvas letters = bodyBold.Render( name, db32::INK );
		const int width = std::max( letters.GetWidth() + 8, 18 );
		static const sRamp cap = { db32::GREY, db32::STEEL, db32::ICE };
		ShadedRect( screen, x, y, x + width, y + 18, cap );
		CopyNonEmpty( screen, letters, x + ( width - letters.GetWidth() ) / 2, y + ( 18 - letters.GetHeight() ) / 2 );
		return x + width + 3;
	}

	int DrawKeyRow( cCanvas &screen, const std::vector<std::string> &keys, const char *action, int x, int y ) const {
		for ( const std::string &key : keys ) {
			x = DrawKey( screen, key, x, y );
		}
		CopyNonEmpty( screen, body.Render( action, db32::ICE ), x + 3, y + 1 );
		return x + 3 + body.GetWidth( action ) + 14;
	}

	void DrawHeading( cCanvas &screen, const char *text ) const {
		static const std::vector<uint32_t> bands = { db32::YELLOW, db32::YELLOW, db32::TAN, db32::ORANGE, db32::ORANGE };
		CopyNonEmpty( screen, StyledText( heading, text, bands, 3 ), 62, 150 );
	}

	void DrawMainTitle( cCanvas &screen ) const {
		static const std::vector<uint32_t> warm = { db32::YELLOW, db32::YELLOW, db32::TAN, db32::ORANGE, db32::ORANGE, db32::RED };
		static const std::vector<uint32_t> cold = { db32::ICE, db32::CYAN };
		const cCanvas small = StyledText( titleSmall, "Project", cold, 2 );
		const cCanvas large = StyledText( titleLarge, "Kormaveth 2D", warm, 4 );
		const int left = ( 640 - large.GetWidth() ) / 2;
		CopyNonEmpty( screen, small, left + 4, 26 );
		CopyNonEmpty( screen, large, left, 56 );
		DrawParagraph( screen, body, "One rain-soaked night. Two heroes. Fight through the town to the boss.", left + 8, 160, 560, db32::STEEL );
	}

	// The sprite enlarged; its soft shadow becomes a dither of black so the screen keeps to the palette.
	void DrawPortrait( cCanvas &screen, int kind, int x, int y, int scale ) const {
		const cCanvas portrait = MakeCharacterPortrait( kind );
		for ( int j = 0; j < 32 * scale; j++ ) {
			for ( int i = 0; i < 32 * scale; i++ ) {
				const uint32_t pixel = portrait.Get( i / scale, j / scale );
				if ( ( pixel >> 24 ) == 0xFF ) {
					screen.Set( x + i, y + j, pixel );
				} else if ( ( pixel >> 24 ) != 0 && ( i + j ) % 2 == 0 ) {
					screen.Set( x + i, y + j, db32::BLACK );
				}
			}
		}
	}

	void DrawMainPanel( cCanvas &screen ) const {
		DrawPortrait( screen, 0, 330, 290, 4 );
		DrawPortrait( screen, 1, 460, 290, 4 );
		DrawParagraph( screen, bodyBold, "tavesh", 372, 420, 100, db32::ORANGE );
		DrawParagraph( screen, bodyBold, "lumra", 506, 420, 100, db32::CYAN );
	}

	// The table the game writes each player's keys into, in the player's own layout's names.
	void DrawControlsPanel( cCanvas &screen ) const {
		static const char *const ACTIONS[] = { "Up", "Down", "Left", "Right", "Fire", "Skill", "Use" };
		DrawPanel( screen );
		const int x = cControlsPage::LABEL_X;
		DrawParagraph( screen, bodyBold, "Player 1", cControlsPage::CELL_LEFT[0] + 6, PANEL_TOP + 8, 100, db32::ORANGE );
		DrawParagraph( screen, bodyBold, "Player 2", cControlsPage::CELL_LEFT[1] + 6, PANEL_TOP + 8, 100, db32::CYAN );
		for ( int action = 0; action < 7; action++ ) {
			const cRect row = cControlsPage::GetKeyCell( 1, action );
			DrawParagraph( screen, body, ACTIONS[action], x, row.top + 2, 90, db32::ICE );
			for ( int player = 1; player <= 2; player++ ) {
				const cRect cell = cControlsPage::GetKeyCell( player, action );
				screen.FillRect( cell.left, cell.top, cell.right, cell.bottom, db32::INDIGO );
				screen.FillRect( cell.left + 1, cell.top + 1, cell.right - 1, cell.bottom - 1, db32::BLACK );
			}
		}
		DrawParagraph( screen, body, "Click a key, then press the new one.", x, cControlsPage::HELP_Y, PANEL_RIGHT - x - PANEL_MARGIN, db32::STEEL );
	}

	// The sound screen's entries: a minus on the half that lowers, a plus on the half that raises.
	void DrawLevelMarks( cCanvas &screen, const sMenuRect &rect ) const {
		const int middle = ( rect.left + rect.right ) / 2;
		CopyNonEmpty( screen, label.Render( "\xE2\x88\x92", db32::ORANGE ), middle - 8, rect.top + 3 );
		CopyNonEmpty( screen, label.Render( "+", db32::ORANGE ), rect.right - 16, rect.top + 3 );
	}

	void DrawSoundPanel( cCanvas &screen ) const {
		DrawPanel( screen );
		const int x = PANEL_LEFT + PANEL_MARGIN;
		const int width = PANEL_RIGHT - PANEL_LEFT - 2 * PANEL_MARGIN;
		int y = DrawParagraph( screen, body, "Music and effects each from 0, silent, to 10, the game's own loudness.", x, PANEL_TOP + 10, width, db32::ICE ) + 8;
		DrawParagraph( screen, body, "Click the left half of an entry to lower it, the right half to raise it. The change is heard at once and kept for the next time.", x, y, width, db32::STEEL );
	}

	// A pad seen from above in the title area, its controls listed beside it with what they do.
	void DrawPadPanel( cCanvas &screen ) const {
		const int left = PAD_LEFT;
		const int top = PAD_TOP;
		DrawParagraph( screen, bodyBold, "Gamepad", left, top, 200, db32::YELLOW );
		DrawPad( screen, left, top + 26 );
		const int x = left + 156;
		int y = top + 22;
		int next = DrawStick( screen, x, y );
		DrawKeyRow( screen, { "D-pad" }, "move", next, y );
		y += 24;
		next = DrawPadButton( screen, "A", db32::GREEN, x, y );
		DrawKeyRow( screen, { "RT" }, "fire", next, y );
		y += 24;
		next = DrawPadButton( screen, "X", db32::BLUE, x, y );
		DrawKeyRow( screen, { "LB" }, "skill", next, y );
		y += 24;
		next = DrawPadButton( screen, "B", db32::RED, x, y );
		next = DrawPadButton( screen, "Y", db32::GOLD_DARK, next, y );
		DrawKeyRow( screen, {}, "use", next - 3, y );
		y += 24;
		DrawKeyRow( screen, { "Start" }, "pause", x, y );
		DrawParagraph( screen, body, "In the menus the stick moves the pointer and A clicks. One pad in a two-player game is player 2's; with two pads, the first plugged in is player 1's.",
					   left, top + 150, SCREEN_WIDTH - left - PANEL_MARGIN, db32::STEEL );
	}

	// The body with its two grips, the stick, the d-pad, the four face buttons and the shoulders.
	void DrawPad( cCanvas &screen, int x, int y ) const {
		static const sRamp shell = { db32::GREY_DEEP, db32::GREY, db32::STEEL };
		static const sRamp rubber = { db32::BLACK, db32::SLATE, db32::GREY_DARK };
		cCanvas pad( 150, 110 );
		ShadedRect( pad, 22, 8, 50, 20, rubber );				// left shoulder and right trigger
		ShadedRect( pad, 100, 8, 128, 20, rubber );
		ShadedCircle( pad, 36, 58, 30, shell );				// grips
		ShadedCircle( pad, 114, 58, 30, shell );
		ShadedRect( pad, 36, 16, 114, 70, shell );
		ShadedCircle( pad, 36, 42, 13, rubber );				// left stick
		ShadedCircle( pad, 36, 42, 8, shell );
		pad.FillRect( 57, 56, 79, 63, db32::INK );				// d-pad
		pad.FillRect( 64, 49, 71, 70, db32::INK );
		pad.FillRect( 70, 28, 80, 32, db32::INK );				// Start
		static const struct { int dx, dy; uint32_t colour; } faces[] = {
			{ 0, 10, db32::GREEN }, { 10, 0, db32::RED }, { -10, 0, db32::BLUE }, { 0, -10, db32::YELLOW },
		};
		for ( const auto &face : faces ) {
			pad.FillCircle( 112.0f + face.dx, 44.0f + face.dy, 5.0f, face.colour );
		}
		pad.Outline( db32::INK );
		CopyNonEmpty( screen, pad, x, y );
	}

	// The left stick's cap; returns the x after it.
	int DrawStick( cCanvas &screen, int x, int y ) const {
		static const sRamp shell = { db32::GREY_DEEP, db32::GREY, db32::STEEL };
		static const sRamp rubber = { db32::BLACK, db32::SLATE, db32::GREY_DARK };
		cCanvas stick( 19, 19 );
		ShadedCircle( stick, 9.5f, 9.5f, 9.0f, rubber );
		ShadedCircle( stick, 9.5f, 9.5f, 5.0f, shell );
		stick.Outline( db32::INK );
		CopyNonEmpty( screen, stick, x, y - 1 );
		return x + 22;
	}

	// A round face button with its letter; returns the x after it.
	int DrawPadButton( cCanvas &screen, const char *name, uint32_t colour, int x, int y ) const {
		cCanvas button( 19, 19 );
		button.FillCircle( 9.5f, 9.5f, 9.0f, colour );
		button.Outline( db32::INK );
		CopyNonEmpty( screen, button, x, y - 1 );
		const cCanvas letter = bodyBold.Render( name, db32::WHITE );
		CopyNonEmpty( screen, letter, x + ( 19 - letter.GetWidth() ) / 2, y + ( 18 - letter.GetHeight() ) / 2 );
		return x + 22;
	}

	void DrawCreditsPanel( cCanvas &screen ) const {
		DrawPanel( screen );
		const int x = PANEL_LEFT + PANEL_MARGIN;
		const int width = PANEL_RIGHT - PANEL_LEFT - 2 * PANEL_MARGIN;
		int y = PANEL_TOP + 10;
		y = DrawParagraph( screen, bodyBold, "Project Kormaveth 2D", x, y, width, db32::ORANGE ) + 4;
		y = DrawParagraph( screen, body, "A top-down action game for one or two players on one keyboard.", x, y, width, db32::ICE ) + 8;
		y = DrawParagraph( screen, body, "Code, map, pictures and music: made for this game by its team. Every picture is drawn and every sound synthesised by the game's own tools.", x, y, width, db32::ICE ) + 8;
		y = DrawParagraph( screen, body, "Lettering: the DejaVu fonts.", x, y, width, db32::STEEL );
		DrawParagraph( screen, body, "Runs on SDL2.", x, y, width, db32::STEEL );
	}

	void DrawHeroCard( cCanvas &screen, int kind, int x, const char *name, uint32_t colour, const char *text ) const {
		DrawPortrait( screen, kind, x + 40, PANEL_TOP + 8, 2 );
		CopyNonEmpty( screen, StyledText( bodyBold, name, { colour }, 1 ), x, PANEL_TOP + 74 );
		DrawParagraph( screen, body, text, x, PANEL_TOP + 96, 150, db32::ICE );
	}

	void DrawSelectionPanel( cCanvas &screen ) const {
		DrawPanel( screen );
		DrawHeroCard( screen, 0, PANEL_LEFT + PANEL_MARGIN, "Tavesh", db32::ORANGE, "Heavy gun. His shield halves the damage he takes. Opens boxes." );
		DrawHeroCard( screen, 1, PANEL_LEFT + 176, "Lumra", db32::CYAN, "Long gun. Her cloak hides her from the enemies. Opens boxes and doors." );
		DrawParagraph( screen, body, "You choose for player 1. In a two-player game player 2 takes the other.", PANEL_LEFT + PANEL_MARGIN, PANEL_BOTTOM - 44, PANEL_RIGHT - PANEL_LEFT - 2 * PANEL_MARGIN, db32::YELLOW );
	}

	void DrawDifficultyPanel( cCanvas &screen ) const {
		DrawPanel( screen );
		const int x = PANEL_LEFT + PANEL_MARGIN;
		const int width = PANEL_RIGHT - PANEL_LEFT - 2 * PANEL_MARGIN;
		int y = PANEL_TOP + 10;
		y = DrawParagraph( screen, bodyBold, "How tough are the enemies?", x, y, width, db32::ORANGE ) + 6;
		y = DrawParagraph( screen, body, "Easy: they fall as quickly as you do.", x, y, width, db32::ICE ) + 4;
		y = DrawParagraph( screen, body, "Normal: twice as much health.", x, y, width, db32::ICE ) + 4;
		y = DrawParagraph( screen, body, "Hard: three times as much.", x, y, width, db32::ICE ) + 10;
		DrawParagraph( screen, body, "The choice holds for the next game and takes you back to the main menu.", x, y, width, db32::STEEL );
	}

	void DrawPausePanel( cCanvas &screen ) const {
		DrawPanel( screen );
		const int x = PANEL_LEFT + PANEL_MARGIN;
		const int width = PANEL_RIGHT - PANEL_LEFT - 2 * PANEL_MARGIN;
		int y = DrawParagraph( screen, body, "The town holds its breath.", x, PANEL_TOP + 10, width, db32::ICE ) + 8;
		DrawParagraph( screen, body, "Resume to fight on. Going to the main menu ends this game.", x, y, width, db32::STEEL );
	}

	void DrawSettingsPanel( cCanvas &screen ) const {
		DrawPanel( screen );
		const int x = PANEL_LEFT + PANEL_MARGIN;
		const int width = PANEL_RIGHT - PANEL_LEFT - 2 * PANEL_MARGIN;
		int y = DrawParagraph( screen, body, "Sound: the loudness of the music and of the effects.", x, PANEL_TOP + 10, width, db32::ICE ) + 8;
		y = DrawParagraph( screen, body, "Start: full screen at start, each click in turn: ask, full screen or window. --fullscreen and --window still choose for one run.", x, y, width, db32::ICE ) + 8;
		y = DrawParagraph( screen, body, "Difficulty: how much the enemies can take.", x, y, width, db32::ICE ) + 8;
		y = DrawParagraph( screen, body, "Controls: the keys of both players.", x, y, width, db32::ICE ) + 8;
		DrawParagraph( screen, body, "Sound, start and keys are kept for the next time.", x, y, width, db32::STEEL );
	}
};

cMenuArt::cMenuArt() : backdrop( MakeTownBackdrop() ), artist( new cMenuArtist ) {
}

cMenuArt::~cMenuArt() {
	delete artist;
}

bool cMenuArt::Open() {
	return artist->Open();
}

cCanvas cMenuArt::MakeScreen( const sMenuScreen &screen ) const {
	cCanvas picture = backdrop;
	if ( screen.heading == nullptr ) {
		artist->DrawMainTitle( picture );
		artist->DrawMainPanel( picture );
	} else {
		artist->DrawHeading( picture, screen.heading );
		const std::string file = screen.file;
		if ( file == "controls.png" ) {
			artist->DrawControlsPanel( picture );
			artist->DrawPadPanel( picture );
		} else if ( file == "credits.png" ) {
			artist->DrawCreditsPanel( picture );
		} else if ( file == "charselection.png" ) {
			artist->DrawSelectionPanel( picture );
		} else if ( file == "difficulty.png" ) {
			artist->DrawDifficultyPanel( picture );
		} else if ( file == "pause.png" ) {
			artist->DrawPausePanel( picture );
		} else if ( file == "sound.png" ) {
			artist->DrawSoundPanel( picture );
		} else {
			artist->DrawSettingsPanel( picture );
		}
	}
	for ( int entry = 0; entry < MENU_ENTRY_COUNT; entry++ ) {
		if ( screen.labels[entry] != nullptr ) {
			artist->DrawEntry( picture, MENU_ENTRIES[entry], screen.labels[entry] );
		}
	}
	if ( std::string( screen.file ) == "sound.png" ) {
		artist->DrawLevelMarks( picture, MENU_ENTRIES[0] );
		artist->DrawLevelMarks( picture, MENU_ENTRIES[1] );
	}
	return picture;
}

// What the game writes over the screen at run time, with the default settings, for the pictures
// of the documentation: the keys' names (as a US layout names them), the start choice, the volumes.
cCanvas cMenuArt::MakeShownScreen( const sMenuScreen &screen ) const {
	static const char *const KEYS[2][7] = {
		{ "W", "S", "A", "D", "H", "J", "K" },
		{ "Up", "Down", "Left", "Right", "Keypad 1", "Keypad 2", "Keypad 3" },
	};
	cCanvas picture = MakeScreen( screen );
	const std::string file = screen.file;
	const auto write = [&]( const std::string &text, int x, int y ) {
		CopyNonEmpty( picture, artist->body.Render( text, db32::WHITE ), x, y );
	};
	if ( file == "controls.png" ) {
		for ( int player = 1; player <= 2; player++ ) {
			for ( int action = 0; action < 7; action++ ) {
				const cRect cell = cControlsPage::GetKeyCell( player, action );
				write( KEYS[player - 1][action], cell.left + cControlsPage::TEXT_INSET_X, cell.top + cControlsPage::TEXT_INSET_Y );
			}
		}
	} else if ( file == "settings.png" ) {
		write( "ask", MENU_VALUE_X, MENU_ENTRIES[1].top + MENU_VALUE_DOWN );
	} else if ( file == "sound.png" ) {
		write( "10", MENU_LEVEL_X, MENU_ENTRIES[0].top + MENU_VALUE_DOWN );
		write( "10", MENU_LEVEL_X, MENU_ENTRIES[1].top + MENU_VALUE_DOWN );
	}
	return picture;
}

// A translucent band across the middle with the verdict; the world stays visible around it.
cCanvas cMenuArt::MakeEndOverlay( bool victory ) const {
	cCanvas overlay( SCREEN_WIDTH, SCREEN_HEIGHT );
	for ( int y = 0; y < SCREEN_HEIGHT; y++ ) {
		for ( int x = 0; x < SCREEN_WIDTH; x++ ) {
			const float dx = ( x - 320.0f ) / 320.0f;
			const float dy = ( y - 240.0f ) / 240.0f;
			const float edge = dx * dx * dx * dx + dy * dy * dy * dy;		// a soft vignette in the corners
			if ( edge > 0.35f ) {
				overlay.Set( x, y, db32::WithAlpha( db32::BLACK, uint32_t( std::min( ( edge - 0.35f ) * 160.0f, 140.0f ) ) ) );
			}
		}
	}
	const uint32_t band = victory ? db32::INK : db32::PLUM;
	overlay.FillRect( 0, 176, SCREEN_WIDTH, 304, db32::WithAlpha( band, 0xC0 ) );
	overlay.FillRect( 0, 174, SCREEN_WIDTH, 176, victory ? db32::YELLOW : db32::RED );
	overlay.FillRect( 0, 304, SCREEN_WIDTH, 306, victory ? db32::YELLOW : db32::RED );
	const std::vector<uint32_t> bands = victory ?
		std::vector<uint32_t>{ db32::WHITE, db32::YELLOW, db32::YELLOW, db32::TAN, db32::ORANGE } :
		std::vector<uint32_t>{ db32::ROSE, db32::ROSE, db32::RED, db32::RED, db32::PLUM };
	const cCanvas word = artist->StyledText( artist->banner, victory ? "Victory" : "Defeat", bands, 4 );
	CopyNonEmpty( overlay, word, ( SCREEN_WIDTH - word.GetWidth() ) / 2, 184 );
	const char *line = victory ? "The boss has fallen. The streets are yours." : "No one is left standing. The town stays dark.";
	const cCanvas text = artist->body.Render( line, db32::ICE );
	CopyNonEmpty( overlay, text, ( SCREEN_WIDTH - text.GetWidth() ) / 2, 276 );
	return overlay;
}

// The band over the frozen world while the partner is silent; the game draws the seconds left
// from the countdown's glyphs in the room between the heading and the line under it.
cCanvas cMenuArt::MakeConnectionLostOverlay() const {
	cCanvas overlay( SCREEN_WIDTH, SCREEN_HEIGHT );
	overlay.FillRect( 0, 182, SCREEN_WIDTH, 298, db32::WithAlpha( db32::INK, 0xC0 ) );
	overlay.FillRect( 0, 180, SCREEN_WIDTH, 182, db32::ICE );
	overlay.FillRect( 0, 298, SCREEN_WIDTH, 300, db32::ICE );
	const std::vector<uint32_t> bands = { db32::WHITE, db32::ICE, db32::ICE, db32::TAN };
	const cCanvas word = artist->StyledText( artist->heading, "Connection lost: waiting", bands, 3 );
	CopyNonEmpty( overlay, word, ( SCREEN_WIDTH - word.GetWidth() ) / 2, 186 );
	const cCanvas text = artist->body.Render( "The game goes on where it stopped once the partner is back.", db32::ICE );
	CopyNonEmpty( overlay, text, ( SCREEN_WIDTH - text.GetWidth() ) / 2, 272 );
	return overlay;
}

cCanvas cMenuArt::MakeCountdownGlyphs() const {
	const char *const glyphs[cWaitingPicture::COUNTDOWN_GLYPHS] = { "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "s" };
	const std::vector<uint32_t> bands = { db32::YELLOW, db32::YELLOW, db32::TAN, db32::ORANGE };
	std::vector<cCanvas> drawn;
	int width = 0;
	int height = 0;
	for ( const char *glyph : glyphs ) {
		drawn.push_back( artist->StyledText( artist->body, glyph, bands, 2 ) );
		width = std::max( width, drawn.back().GetWidth() );
		height = std::max( height, drawn.back().GetHeight() );
	}
	cCanvas sheet( width * cWaitingPicture::COUNTDOWN_GLYPHS, height );
	for ( int i = 0; i < cWaitingPicture::COUNTDOWN_GLYPHS; i++ ) {
		CopyNonEmpty( sheet, drawn[i], i * width + ( width - drawn[i].GetWidth() ) / 2, 0 );
	}
	return sheet;
}

// A band across the middle over the frozen world while an online game waits for the partner's input.
cCanvas cMenuArt::MakeWaitingOverlay() const {
	cCanvas overlay( SCREEN_WIDTH, SCREEN_HEIGHT );
	overlay.FillRect( 0, 196, SCREEN_WIDTH, 284, db32::WithAlpha( db32::INK, 0xC0 ) );
	overlay.FillRect( 0, 194, SCREEN_WIDTH, 196, db32::ICE );
	overlay.FillRect( 0, 284, SCREEN_WIDTH, 286, db32::ICE );
	const std::vector<uint32_t> bands = { db32::WHITE, db32::ICE, db32::ICE, db32::TAN };
	const cCanvas word = artist->StyledText( artist->heading, "Waiting for partner", bands, 3 );
	CopyNonEmpty( overlay, word, ( SCREEN_WIDTH - word.GetWidth() ) / 2, 204 );
	const cCanvas text = artist->body.Render( "The game goes on as soon as the partner's keys arrive.", db32::ICE );
	CopyNonEmpty( overlay, text, ( SCREEN_WIDTH - text.GetWidth() ) / 2, 256 );
	return overlay;
}

// Characters 32 to 126 in cells of one size, GLYPH_COLUMNS to a row, and in the last cell (127) the
// band the game lays under each character so that the line stands out from any picture.
cCanvas cMenuArt::MakeGlyphSheet() const {
	const int width = artist->mono.GetWidth( "M" );
	const int height = GLYPH_HEIGHT;
	cCanvas sheet( width * GLYPH_COLUMNS, height * GLYPH_ROWS );
	for ( int code = GLYPH_FIRST; code < GLYPH_FIRST + GLYPH_COLUMNS * GLYPH_ROWS; code++ ) {
		const int cell = code - GLYPH_FIRST;
		const int left = cell % GLYPH_COLUMNS * width;
		const int top = cell / GLYPH_COLUMNS * height;
		if ( code == GLYPH_FIRST + GLYPH_COLUMNS * GLYPH_ROWS - 1 ) {
			sheet.FillRect( left, top, left + width, top + height, db32::WithAlpha( db32::INK, 0xD0 ) );
		} else if ( code != ' ' ) {
			CopyNonEmpty( sheet, artist->mono.Render( std::string( 1, static_cast<char>( code ) ), db32::WHITE ), left, top );
		}
	}
	return sheet;
}
