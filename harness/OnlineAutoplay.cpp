// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/OnlineAutoplay.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>

#include "actors/GameState.h"
#include "app/Config.h"
#include "app/MenuEntries.h"
#include "harness/Bot.h"
#include "harness/HeadlessGame.h"
#include "input/Keyboard.h"
#include "net/Handshake.h"
#include "net/NetSession.h"
#include "net/Packet.h"
#include "net/Link.h"
#include "platform/MonotonicClock.h"
#include "replay/Fingerprint.h"
#include "replay/ReplaySound.h"

namespace {

const int64_t NSEC_PER_MSEC = 1000000;
const int64_t STEP_TIME = cGame::FRAME_TIME * NSEC_PER_MSEC;
const int ENTRY_QUIT = 5;
const int CLICK_EVERY = 100;			// frames between two clicks on Quit at the main menu
const int ENTRY_LEAVE = 5;				// on the pause screen: back to the main menu
const uint64_t REPORT_STEPS = 200;			// online steps between two lines on how the line goes

// The steps of the program on the real clock, one every 15 msec, as the game's frame loop paces them.
class cPacer {
public:
	explicit cPacer( cPacingClock &clock ) : clock( clock ), deadline( clock.GetNanoseconds() ) {}
	void Wait() {
		clock.SleepUntil( deadline );
		deadline += STEP_TIME;
		const int64_t now = clock.GetNanoseconds();
		if ( now > deadline + 4 * STEP_TIME ) {
			deadline = now;
		}
	}

private:
	cPacingClock &	clock;
	int64_t			deadline;
};

// Played ahead of the partner, what the host's bot saw may have been a guess that a correction
// took back: an end screen (its Escape then paused the real game), even the main menu. Until the
// online game is over, the bot follows what the game shows: it plays on, waits out an end screen,
// leaves the pause and clicks Quit at the main menu; a click that a correction takes back is given
// again. The quit ends the online game once its step is confirmed.
void FollowToQuit( cHeadlessGame &headless, const cNetSession &session, const cGameSetup &setup ) {
	cBot bot( 0, setup.bot );
	for ( int frame = 0; session.IsOnline() && frame < setup.frameLimit; frame++ ) {
		const int32_t state = headless.GetGame().GetGameState();
		const int entry = state == STATE_MAIN_MENU ? ENTRY_QUIT : ( state == STATE_PAUSE ? ENTRY_LEAVE : 0 );
		if ( entry != 0 && frame % CLICK_EVERY == 0 ) {
			const cRect &rect = MENU_ENTRIES[entry - 1];
			headless.Click( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 );
			continue;
		}
		headless.GetInput().ReleaseAllKeys();
		if ( state == STATE_PLAYING ) {
			PressBotKeys( headless, 0, bot.Think( headless.GetGame() ) );
		}
		if ( !headless.Step() ) {
			break;
		}
	}
}

// The host's bot plays one game of two players through the menus and then quits from the main menu.
bool PlayAsHost( cHeadlessGame &headless, const cNetSession &session, const cOnlineOptions &options ) {
	cGameSetup setup = options.setup;
	setup.players = 2;
	setup.localPlayer = 0;
	// A delay that follows the line may grow during the game: the clicks wait for the longest.
	setup.inputDelay = static_cast<int>( options.delay > 0 ? options.delay : cPacket::MAX_DELAY );
	cAutoplayGame autoplay( headless );
	cGameResult result;
	const bool played = autoplay.Play( setup, result );
	std::printf( "game   1: %s\n", DescribeResult( setup, result ).c_str() );
	std::printf( "Bot CPU: %.1f ms\n", result.thinkTime );
	FollowToQuit( headless, session, setup );
	return played;
}

// The partner's bot plays player 2 whenever a game of two runs, until the online game ends.
void PlayAsPartner( cHeadlessGame &headless, const cNetSession &session, const cOnlineOptions &options ) {
	std::unique_ptr<cBot> bot;
	while ( session.IsOnline() ) {
		const cGame &game = headless.GetGame();
		if ( game.GetGameState() == STATE_PLAYING && game.GetPlayers() != nullptr && game.GetPlayers()->size() > 1 ) {
			if ( !bot ) {
				bot = std::make_unique<cBot>( 1, options.setup.bot );
			}
			PressBotKeys( headless, 1, bot->Think( game ) );
		} else {
			bot.reset();
			headless.GetInput().ReleaseAllKeys();
		}
		headless.Step();
	}
}

// The felt delay: the step times from a key of this machine's player going down on the platform to
// the first step the game shows that reads it down, one key at a time. Only a key that was up for
// longer than any delay is followed, so that an earlier press still on its way is not taken for it.
class cFeltDelay {
public:
	explicit cFeltDelay( int player ) : player( static_cast<uint32_t>( player ) ) {}

	// Before a step time: a key that went down since the last one is followed, unless one is.
	void Sample( cHeadlessGame &headless ) {
		uint32_t keys[cConfig::KEYS_PER_PLAYER] = {};
		headless.GetGame().GetConfig().GetKeys( player, keys );
		uint8_t state[cStepInput::KEY_COUNT] = {};
		headless.GetInput().ReadKeyboard( state );
		for ( uint32_t key : keys ) {
			const bool down = ( state[key] & 0x80 ) != 0;
			if ( down && !held[key] && followed < 0 && slots - upSince[key] > QUIET_SLOTS ) {
				followed = static_cast<int>( key );
				pressed = slots;
			}
			if ( !down && held[key] ) {
				upSince[key] = slots;
			}
			held[key] = down;
		}
	}
	// After a step time.
	void Shown( const cGame &game ) {
		slots++;
		const cKeyboard *keyboard = game.GetInputLayer().GetKeyboard();
		if ( followed >= 0 && keyboard != nullptr && keyboard->KeyDown( followed ) ) {
			const uint64_t felt = slots - pressed - 1;
			total += felt;
			most = std::max( most, felt );
			count++;
			followed = -1;
		}
	}
	void Print() const {
		std::printf( "Felt delay: %.2f step times on average, %" PRIu64 " at most, over %" PRIu64 " key presses\n",
					 count > 0 ? static_cast<double>( total ) / static_cast<double>( count ) : 0.0, most, count );
	}

private:
	static constexpr uint64_t QUIET_SLOTS = 2 * cPacket::MAX_DELAY;

	uint32_t		player;
	bool			held[cStepInput::KEY_COUNT] = {};
	uint64_t		upSince[cStepInput::KEY_COUNT] = {};	// the step time a key last went up
	int				followed = -1;
	uint64_t		pressed = 0;
	uint64_t		slots = 0;
	uint64_t		total = 0;
	uint64_t		most = 0;
	uint64_t		count = 0;
};

// The out-of-step test's build plays one extra step of its own at the step that KMVT_SKEW_AT_STEP
// names, a rule its partner does not play; every other build plays the same game as its partner.
uint64_t GetSkewStep() {
#if KMVT_ONLINE_SKEW
	const char *step = std::getenv( "KMVT_SKEW_AT_STEP" );
	return step != nullptr ? std::strtoull( step, nullptr, 10 ) : 0;
#else
	return 0;
#endif
}

}

int PlayOnline( const cOnlineOptions &options ) {
	cReplaySound sound( nullptr, true );
	cHeadlessGame headless( &sound );
	headless.GetGraphics().SetRecording( false );
	cMonotonicClock time;
	const int64_t joinStart = time.GetNanoseconds();
	std::string why;
	const std::unique_ptr<cLink> link = cLink::OpenOnNetwork( options.host, options.partner, options.port, why );
	if ( !link ) {
		std::fprintf( stderr, "kmvt_autoplay: %s\n", why.c_str() );
		return 1;
	}
	const cHello hello = cHandshake::MakeHello( options.version, ".", cFingerprint::Compute(), options.delay );
	cNetSession session( *link, options.host ? cNetSession::HOST : cNetSession::JOIN, hello, options.recordPath,
						 headless.GetInput(), headless.GetClock(), time );
	SetClock( &session.GetClock() );
	// The game lets go of the session's input and clock before the session goes.
	struct cLetGo {
		cHeadlessGame &headless;
		~cLetGo() {
			headless.GetGame().Finalize();
			SetClock( &headless.GetClock() );
		}
	} letGo { headless };
	cPacer pacer( time );
	const uint64_t skewStep = GetSkewStep();
	// The CPU time of the online game's own work (steps played and again, saves, packets), without
	// the bot's thinking, the drawing and the pacing; and the step times it ran in.
	std::clock_t sessionTime = 0;
	uint64_t sessionFrames = 0;
	cFeltDelay felt( options.host ? 1 : 2 );
	// One step of the game each call, however long the partner keeps it waiting; false once the
	// online game is over.
	headless.SetStepRunner( [&]( cGame &game ) {
		const uint64_t before = session.GetFigures().steps;
		bool going = true;
		while ( going && session.IsOnline() && session.GetFigures().steps == before ) {
			pacer.Wait();
			felt.Sample( headless );
			const std::clock_t start = std::clock();
			going = session.Step( game );
			sessionTime += std::clock() - start;
			sessionFrames++;
			felt.Shown( game );
		}
		const cNetFigures &figures = session.GetFigures();
		if ( skewStep != 0 && before < skewStep && figures.steps >= skewStep ) {
			game.Step();
		}
		if ( figures.steps / REPORT_STEPS != before / REPORT_STEPS ) {
			std::printf( "Online step %" PRIu64 ": input delay %u, round trip %u ms, %" PRIu64 " step times waited\n",
						 figures.steps, figures.delay, figures.roundTrip, figures.waitedSlots );
			std::fflush( stdout );
		}
		return going && session.IsOnline();
	} );
	if ( !headless.Start( false, &session.GetInput() ) ) {
		return 1;
	}
	const int64_t giveUp = joinStart + options.waitSeconds * 1000 * NSEC_PER_MSEC;
	while ( !session.IsOnline() && session.GetEndLine().empty() && time.GetNanoseconds() < giveUp ) {
		pacer.Wait();
		session.Step( headless.GetGame() );
	}
	if ( !session.IsOnline() ) {
		std::fprintf( stderr, "kmvt_autoplay: no online game: %s\n",
					  session.GetEndLine().empty() ? "no partner came" : session.GetEndLine().c_str() );
		session.Close( headless.GetGame() );
		return 1;
	}
	const int64_t onlineStart = time.GetNanoseconds();
	std::printf( "At the shared main menu %" PRId64 " ms after the start\n", ( onlineStart - joinStart ) / NSEC_PER_MSEC );
	std::fflush( stdout );
	if ( options.host ) {
		PlayAsHost( headless, session, options );
	} else {
		PlayAsPartner( headless, session, options );
	}
	const double seconds = static_cast<double>( time.GetNanoseconds() - onlineStart ) / 1e9;
	session.Close( headless.GetGame() );
	const cNetFigures &figures = session.GetFigures();
	const double meanDelay = figures.steps > 0 ? static_cast<double>( figures.delaySteps ) / static_cast<double>( figures.steps ) : 0.0;
	std::printf( "Online game over (%s): %" PRIu64 " steps in %.1f s (%.2f steps/s), input delay %u (mean %.1f), round trip %u ms, %" PRIu64
				 " step times waited, %" PRIu64 " bad packets, %" PRIu64 " steps played again in %" PRIu64
				 " step times (at most %" PRIu64 "), the partner's figure moved by %" PRIu64 " corrections (%" PRIu64
				 " in all, at most %" PRIu64 "); final state hash: %016" PRIx64 "\n",
				 session.GetEndLine().c_str(), figures.steps, seconds, static_cast<double>( figures.steps ) / seconds,
				 figures.delay, meanDelay, figures.roundTrip, figures.waitedSlots, figures.badPackets, figures.stepsAgain,
				 figures.frames, figures.mostStepsAgain, figures.jumps, figures.jumpLength, figures.longestJump,
				 figures.finalHash );
	std::printf( "Online game CPU: %.3f ms per step time\n",
				 sessionFrames > 0 ? 1000.0 * static_cast<double>( sessionTime ) / CLOCKS_PER_SEC / static_cast<double>( sessionFrames ) : 0.0 );
	felt.Print();
	const bool atMenu = headless.GetGame().GetGameState() == STATE_MAIN_MENU && headless.GetGame().GetScene() == nullptr;
	std::printf( "%s\n", atMenu ? "Back at the main menu, alone" : "Not back at the main menu" );
	return atMenu && figures.steps > 0 ? 0 : 1;
}
