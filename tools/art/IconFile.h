// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The window icon file: a Windows ICO container holding uncompressed 32-bit images with their
// transparency masks, the form every ICO reader understands.

#include "Canvas.h"

#include <string>
#include <vector>

bool WriteIconFile( const std::string &path, const std::vector<cCanvas> &images );
// The game's icon drawn for one size (32 or 64 pixels square).
cCanvas MakeGameIcon( int size );
