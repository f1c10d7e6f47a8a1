// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Text from outside the game (file names, arguments, the platform's messages) made fit for the log
// and the terminal: control bytes, and bytes that are not part of a printable UTF-8 character,
// become \xHH, so that a line stays one line and cannot drive the terminal it is shown on.
// Printable text comes out as it went in, so making text printable twice changes nothing more.

#include <string>

std::string MakePrintable( const std::string &text );
