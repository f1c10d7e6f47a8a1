// The command line: each accepted form and what it asks for; everything else is wrong, with the
// reason on the usage line.

#include <gtest/gtest.h>

#include <vector>

#include "program/CommandLine.h"

TEST( CommandLineTest, EachFormAndEachMistake ) {
	const struct {
		std::vector<const char *>	arguments;
		cCommandLine::eMode			mode;
		const char *				fileOrError;
	} cases[] = {
		{ {}, cCommandLine::PLAY, "" },
		{ { "--record", "a.kmr" }, cCommandLine::RECORD, "a.kmr" },
		{ { "--replay", "b.kmr" }, cCommandLine::REPLAY, "b.kmr" },
		{ { "--replay", "c.kmr", "--verify" }, cCommandLine::VERIFY, "c.kmr" },
		{ { "--verify", "--replay", "--record" }, cCommandLine::VERIFY, "--record" },
		{ { "--help" }, cCommandLine::HELP, "" },
		{ { "--version" }, cCommandLine::VERSION, "" },
		{ { "--windowed" }, cCommandLine::WRONG, "unexpected argument '--windowed'" },
		{ { "--record" }, cCommandLine::WRONG, "--record needs a file" },
		{ { "--replay", "" }, cCommandLine::WRONG, "--replay needs a file" },
		{ { "--verify" }, cCommandLine::WRONG, "--verify goes with --replay FILE" },
		{ { "--record", "a", "--verify" }, cCommandLine::WRONG, "--verify goes with --replay FILE" },
		{ { "--record", "a", "--replay", "b" }, cCommandLine::WRONG, "unexpected argument '--replay'" },
		{ { "--replay", "a", "--verify", "--verify" }, cCommandLine::WRONG, "unexpected argument '--verify'" },
		{ { "--help", "--version" }, cCommandLine::WRONG, "unexpected argument '--help'" },
		{ { "--replay", "a", "--help" }, cCommandLine::WRONG, "unexpected argument '--help'" },
	};
	for ( const auto &c : cases ) {
		std::vector<const char *> argv = { "kormaveth2d" };
		argv.insert( argv.end(), c.arguments.begin(), c.arguments.end() );
		const cCommandLine line = cCommandLine::Parse( static_cast<int>( argv.size() ), argv.data() );
		std::string joined;
		for ( const char *argument : c.arguments ) {
			joined += std::string( " " ) + argument;
		}
		EXPECT_EQ( line.mode, c.mode ) << joined;
		EXPECT_EQ( line.mode == cCommandLine::WRONG ? line.error : line.file, c.fileOrError ) << joined;
	}
	const std::string usage = cCommandLine::GetUsageLine( "unexpected argument 'x\n\x1b[2J'" );
	EXPECT_EQ( usage.find( '\n' ), usage.size() - 1 ) << "one line: " << usage;
	EXPECT_NE( usage.find( "'x\\x0A\\x1B[2J'" ), std::string::npos ) << "the argument's control bytes escaped: " << usage;
}

// --fullscreen and --window answer the question, with anything that opens the window.
TEST( CommandLineTest, FullScreenOrWindowOnceWithAWindow ) {
	const std::string twice = "--fullscreen or --window, one of them once";
	const struct {
		std::vector<const char *>	arguments;
		cCommandLine::eMode			mode;
		cCommandLine::eScreen		screen;
		const char *				error;
	} cases[] = {
		{ {}, cCommandLine::PLAY, cCommandLine::ASK_SCREEN, "" },
		{ { "--fullscreen" }, cCommandLine::PLAY, cCommandLine::FULL_SCREEN, "" },
		{ { "--window" }, cCommandLine::PLAY, cCommandLine::WINDOW_SCREEN, "" },
		{ { "--record", "a", "--fullscreen" }, cCommandLine::RECORD, cCommandLine::FULL_SCREEN, "" },
		{ { "--window", "--replay", "b" }, cCommandLine::REPLAY, cCommandLine::WINDOW_SCREEN, "" },
		{ { "--fullscreen", "--window" }, cCommandLine::WRONG, cCommandLine::ASK_SCREEN, twice.c_str() },
		{ { "--window", "--record", "a", "--fullscreen" }, cCommandLine::WRONG, cCommandLine::ASK_SCREEN, twice.c_str() },
		{ { "--window", "--window" }, cCommandLine::WRONG, cCommandLine::ASK_SCREEN, twice.c_str() },
		{ { "--replay", "c", "--verify", "--window" }, cCommandLine::WRONG, cCommandLine::ASK_SCREEN,
		  "--verify opens no window for --fullscreen or --window" },
		{ { "--fullscreen", "--help" }, cCommandLine::WRONG, cCommandLine::ASK_SCREEN, "unexpected argument '--help'" },
	};
	for ( const auto &c : cases ) {
		std::vector<const char *> argv = { "kormaveth2d" };
		argv.insert( argv.end(), c.arguments.begin(), c.arguments.end() );
		const cCommandLine line = cCommandLine::Parse( static_cast<int>( argv.size() ), argv.data() );
		const std::string joined = testing::PrintToString( c.arguments );
		EXPECT_EQ( line.mode, c.mode ) << joined;
		EXPECT_EQ( line.screen, c.screen ) << joined;
		EXPECT_EQ( line.error, c.error ) << joined;
	}
}

// The help names both options and the key, and the log's real places, as the README's Files do.
TEST( CommandLineTest, HelpNamesTheWindowOptionsAndWhereTheLogIs ) {
	const std::string help = cCommandLine::GetHelp();
	for ( const char *part : { "--fullscreen", "--window", "Alt+Enter", "in the folder the game runs in when the game's data is there",
							   "$XDG_STATE_HOME/kormaveth2d/", "~/.local/state/kormaveth2d/", "standard\nerror" } ) {
		EXPECT_NE( help.find( part ), std::string::npos ) << "the help lacks \"" << part << "\":\n" << help;
	}
}
