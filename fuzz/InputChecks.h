// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The rules that every input must keep when it goes through one of the game's file readers,
// shared by the fuzz targets and the replay test. A check returns an empty text when every rule
// held for the input, else the first rule broken and where.

#include <cstddef>
#include <cstdint>
#include <string>

// The bytes as a map layer file read by cScene::LoadWalkMap: the layer holds exactly the file's
// first 4500 integers, or the load is refused with a log line and the layer left as wall.
std::string CheckMapLayer( const uint8_t *data, size_t size );
// The bytes as a WAV file, read from memory and from a file: both agree, an accepted sound holds
// a playable format and exactly the samples announced, a refused one holds nothing.
std::string CheckWave( const uint8_t *data, size_t size );
// The bytes as a picture loaded with and without the cursor's colour key: both load or neither,
// as ARGB of the same size, differing exactly in the keyed pixels.
std::string CheckPicture( const uint8_t *data, size_t size );
// The bytes as a replay file: refused with a reason and nothing kept, or read into a recording
// with a checkpoint for every 100 steps, whose tape plays exactly its steps and which, written
// again, reads back the same.
std::string CheckReplayFile( const uint8_t *data, size_t size );
// The bytes as a packet from the online partner: refused with a reason, or read into a message
// within every bound and the window of steps, which written again reads back the same.
std::string CheckNetPacket( const uint8_t *data, size_t size );
