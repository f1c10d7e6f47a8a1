// SPDX-License-Identifier: GPL-3.0-or-later
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

// --fullscreen and --window answer the question, with anything that opens the window, once.
TEST( CommandLineTest, FullScreenOrWindowOnceWithAWindow ) {
	const int WRONG = -1;
	const struct { std::vector<const char *> arguments; int screen; } cases[] = {
		{ {}, cCommandLine::ASK_SCREEN }, { { "--fullscreen" }, cCommandLine::FULL_SCREEN },
		{ { "--record", "a", "--window" }, cCommandLine::WINDOW_SCREEN }, { { "--window", "--replay", "b" }, cCommandLine::WINDOW_SCREEN },
		{ { "--fullscreen", "--window" }, WRONG }, { { "--window", "--window" }, WRONG },
		{ { "--replay", "c", "--verify", "--fullscreen" }, WRONG }, { { "--window", "--help" }, WRONG } };
	for ( const auto &c : cases ) {
		std::vector<const char *> argv = { "kormaveth2d" };
		argv.insert( argv.end(), c.arguments.begin(), c.arguments.end() );
		const cCommandLine line = cCommandLine::Parse( static_cast<int>( argv.size() ), argv.data() );
		EXPECT_EQ( line.mode == cCommandLine::WRONG ? WRONG : line.screen, c.screen ) << testing::PrintToString( c.arguments );
	}
}

TEST( CommandLineTest, TheOnlineFormsAndTheirMistakes ) {
	const struct {
		std::vector<const char *>	arguments;
		cCommandLine::eOnline		online;
		const char *				partnerOrError;
		uint16_t					port;
		uint32_t					delay;
	} cases[] = {
		{ { "--host" }, cCommandLine::HOST, "", 27460, 0 },
		{ { "--host", "5000", "--delay", "40" }, cCommandLine::HOST, "", 5000, 40 },
		{ { "--host", "--record", "a.kmr" }, cCommandLine::HOST, "", 27460, 0 },
		{ { "--join", "example.org" }, cCommandLine::JOIN, "example.org", 27460, 0 },
		{ { "--join", "10.0.0.2:65535", "--delay", "1" }, cCommandLine::JOIN, "10.0.0.2", 65535, 1 },
		{ { "--join", "[::1]:7" }, cCommandLine::JOIN, "::1", 7, 0 },
		{ { "--host", "65536" }, cCommandLine::ALONE, "--host takes a port from 1 to 65535", 0, 0 },
		{ { "--join", "a:0" }, cCommandLine::ALONE, "--join needs HOST or HOST:PORT", 0, 0 },
		{ { "--join", "[::1" }, cCommandLine::ALONE, "--join needs HOST or HOST:PORT", 0, 0 },
		{ { "--join" }, cCommandLine::ALONE, "--join needs HOST or HOST:PORT", 0, 0 },
		{ { "--host", "--join", "a" }, cCommandLine::ALONE, "one of --host and --join, once", 0, 0 },
		{ { "--host", "--delay", "41" }, cCommandLine::ALONE, "--delay takes a number of steps from 1 to 40", 0, 0 },
		{ { "--delay", "3" }, cCommandLine::ALONE, "--delay goes with --host or --join", 0, 0 },
		{ { "--host", "--replay", "a" }, cCommandLine::ALONE, "an online game cannot play a recording", 0, 0 },
	};
	for ( const auto &c : cases ) {
		std::vector<const char *> argv = { "kormaveth2d" };
		argv.insert( argv.end(), c.arguments.begin(), c.arguments.end() );
		const cCommandLine line = cCommandLine::Parse( static_cast<int>( argv.size() ), argv.data() );
		const std::string first = c.arguments.size() > 1 ? c.arguments[1] : "";
		const bool wrong = line.mode == cCommandLine::WRONG;
		EXPECT_EQ( wrong ? cCommandLine::ALONE : line.online, c.online ) << c.arguments[0] << " " << first;
		EXPECT_EQ( wrong ? line.error : line.partner, c.partnerOrError ) << c.arguments[0] << " " << first;
		EXPECT_EQ( wrong ? 0 : line.port, c.port ) << c.arguments[0] << " " << first;
		EXPECT_EQ( wrong ? 0 : line.delay, c.delay ) << c.arguments[0] << " " << first;
	}
}

TEST( CommandLineTest, OnlyTheHostLeavesTheRouterAlone ) {
	const struct {
		std::vector<const char *>	arguments;
		bool						portMapping;
		const char *				error;
	} cases[] = {
		{ { "--host" }, true, "" },
		{ { "--host", "--no-port-mapping" }, false, "" },
		{ { "--no-port-mapping", "--host", "5000" }, false, "" },
		{ { "--join", "a", "--no-port-mapping" }, true, "--no-port-mapping goes with --host" },
		{ { "--host", "--no-port-mapping", "--no-port-mapping" }, true, "unexpected argument '--no-port-mapping'" },
	};
	for ( const auto &c : cases ) {
		std::vector<const char *> argv = { "kormaveth2d" };
		argv.insert( argv.end(), c.arguments.begin(), c.arguments.end() );
		const cCommandLine line = cCommandLine::Parse( static_cast<int>( argv.size() ), argv.data() );
		EXPECT_EQ( line.error, c.error ) << c.arguments.size() << " arguments from " << c.arguments[0];
		EXPECT_TRUE( line.mode == cCommandLine::WRONG || line.portMapping == c.portMapping )
			<< c.arguments.size() << " arguments from " << c.arguments[0];
	}
}
