// SPDX-License-Identifier: GPL-3.0-or-later
// The host's line at the foot of the main menu: cut at spaces into lines that fit the screen.

#include <gtest/gtest.h>

#include "program/NoticePicture.h"

namespace {

TEST( NoticePictureTests, TheLineWrapsAtSpacesToTheWidth ) {
	struct cCase {
		const char *				text;
		size_t						columns;
		std::vector<std::string>	lines;
	};
	const cCase cases[] = {
		{ "", 10, {} },
		{ "short", 10, { "short" } },
		{ "exactly 10", 10, { "exactly 10" } },
		{ "one more 11", 10, { "one more", "11" } },
		{ "a b c d e f", 3, { "a b", "c d", "e f" } },
		{ "kormaveth2d --join", 6, { "kormav", "eth2d", "--join" } },
		{ "11.77.0.1:27460 (in", 15, { "11.77.0.1:27460", "(in" } },
		{ "anything", 0, {} },
	};
	for ( const cCase &test : cases ) {
		EXPECT_EQ( cNoticePicture::Wrap( test.text, test.columns ), test.lines ) << test.text << " in " << test.columns;
	}
}

}
