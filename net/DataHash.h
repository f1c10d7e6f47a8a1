// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The hash of the game's data: every file of the resource tree the game reads, by its path within
// the tree and its bytes, in path order. Two machines whose hashes differ would not play the same
// game (one map number is enough), so an online game refuses them.

#include <cstdint>
#include <string>

// root is the folder that holds resources/; false (and the hash of what was read) when a file
// could not be read.
bool					HashGameData( const std::string &root, uint64_t &hash );
