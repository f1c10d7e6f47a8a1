// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Times every start and goal pair on its own with both searches and prints the medians, their
// ratio and the difference in path length. False when the two searches disagree on a pair.

#include <cstdint>
#include <vector>

#include "SearchPeers.h"

bool						ComparePairs( const int32_t *walkMap, const std::vector<cSearchPair> &pairs );
