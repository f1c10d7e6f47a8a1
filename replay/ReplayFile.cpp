// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/ReplayFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "log/Log.h"
#include "replay/ByteReader.h"
#include "replay/ByteWriter.h"
#include "replay/TapeReader.h"

namespace {

const char MAGIC[4] = { 'K', 'M', 'R', 'P' };
const size_t MIN_CHECKPOINT_BYTES = 9;		// the total and the byte that says whether names follow
const size_t MIN_PART_BYTES = 5;			// a name's length and its hash
const size_t MAX_FILE_SIZE = 256u << 20;	// in bytes; a day of play takes far less
const uint8_t NAMES_AS_BEFORE = 0;
const uint8_t NAMES_FOLLOW = 1;

void PutCheckpoint( cByteWriter &out, const cCheckpoint &checkpoint, const cCheckpoint *previous ) {
	out.PutWord64( checkpoint.total );
	if ( previous != nullptr && previous->names == checkpoint.names ) {
		out.PutByte( NAMES_AS_BEFORE );
	} else {
		out.PutByte( NAMES_FOLLOW );
		out.PutVarint( checkpoint.names.size() );
		for ( const std::string &name : checkpoint.names ) {
			out.PutString( name );
		}
	}
	for ( uint32_t part : checkpoint.parts ) {
		out.PutWord32( part );
	}
}

bool GetNames( cByteReader &in, cCheckpoint &checkpoint, const cCheckpoint *previous ) {
	uint8_t names = 0;
	if ( !in.GetByte( names ) ) {
		return false;
	}
	if ( names == NAMES_AS_BEFORE ) {
		if ( previous == nullptr ) {
			return in.Fail( "the first checkpoint names no parts" );
		}
		checkpoint.names = previous->names;
		return true;
	}
	if ( names != NAMES_FOLLOW ) {
		return in.Fail( "a checkpoint's names flag is " + std::to_string( names ) );
	}
	uint64_t count = 0;
	if ( !in.GetCount( count, MIN_PART_BYTES, "state parts" ) ) {
		return false;
	}
	checkpoint.names.resize( static_cast<size_t>( count ) );
	for ( std::string &name : checkpoint.names ) {
		if ( !in.GetString( name, cReplayFile::MAX_NAME_LENGTH ) ) {
			return false;
		}
	}
	return true;
}

bool GetCheckpoint( cByteReader &in, cCheckpoint &checkpoint, const cCheckpoint *previous ) {
	if ( !in.GetWord64( checkpoint.total ) || !GetNames( in, checkpoint, previous ) ) {
		return false;
	}
	if ( checkpoint.names.size() > in.GetRemaining() / 4 ) {
		return in.Fail( "the file ends early" );
	}
	checkpoint.parts.resize( checkpoint.names.size() );
	for ( uint32_t &part : checkpoint.parts ) {
		if ( !in.GetWord32( part ) ) {
			return false;
		}
	}
	return true;
}

bool GetHeader( cByteReader &in, cRecording &recording ) {
	if ( in.GetRemaining() < sizeof( MAGIC ) ) {
		return in.Fail( "not a replay file (too short)" );
	}
	uint8_t magic[4] = {};
	for ( uint8_t &byte : magic ) {
		in.GetByte( byte );
	}
	if ( std::memcmp( magic, MAGIC, sizeof( MAGIC ) ) != 0 ) {
		return in.Fail( "not a replay file" );
	}
	uint64_t version = 0;
	if ( !in.GetVarint( version ) ) {
		return false;
	}
	if ( version != cReplayFile::FORMAT_VERSION ) {
		return in.Fail( "format version " + std::to_string( version ) + ", this game reads version " +
						std::to_string( cReplayFile::FORMAT_VERSION ) );
	}
	uint8_t sound = 0;
	if ( !in.GetString( recording.gameVersion, cReplayFile::MAX_NAME_LENGTH ) || !in.GetByte( sound ) ) {
		return false;
	}
	if ( sound > 1 ) {
		return in.Fail( "the sound flag is " + std::to_string( sound ) );
	}
	recording.soundOpened = sound == 1;
	return in.GetVarint( recording.steps );
}

bool GetBody( cByteReader &in, const uint8_t *data, cRecording &recording ) {
	const uint64_t checkpoints = recording.steps / cRecording::CHECKPOINT_EVERY + ( recording.steps % cRecording::CHECKPOINT_EVERY != 0 );
	if ( checkpoints > in.GetRemaining() / MIN_CHECKPOINT_BYTES ) {
		return in.Fail( std::to_string( recording.steps ) + " steps need more checkpoints than the file can hold" );
	}
	uint64_t tapeSize = 0;
	if ( !in.GetCount( tapeSize, 1, "tape bytes" ) ) {
		return false;
	}
	const uint8_t *tape = data + in.GetPosition();
	std::string why;
	if ( !cTapeReader::Check( tape, static_cast<size_t>( tapeSize ), recording.steps, why ) ) {
		return in.Fail( why );
	}
	recording.tape.assign( tape, tape + tapeSize );
	in.Skip( static_cast<size_t>( tapeSize ) );
	recording.checkpoints.resize( static_cast<size_t>( checkpoints ) );
	for ( size_t i = 0; i < recording.checkpoints.size(); i++ ) {
		cCheckpoint &checkpoint = recording.checkpoints[i];
		checkpoint.step = cRecording::GetCheckpointStep( i, recording.steps );
		if ( !GetCheckpoint( in, checkpoint, i > 0 ? &recording.checkpoints[i - 1] : nullptr ) ) {
			return false;
		}
	}
	if ( !in.IsAtEnd() ) {
		return in.Fail( std::to_string( in.GetRemaining() ) + " bytes after the last checkpoint" );
	}
	return true;
}

}

uint64_t cRecording::GetCheckpointStep( uint64_t index, uint64_t steps ) {
	const uint64_t step = ( index + 1 ) * CHECKPOINT_EVERY;
	return step < steps ? step : steps;
}

std::vector<uint8_t> cReplayFile::Encode( const cRecording &recording ) {
	cByteWriter out;
	for ( char byte : MAGIC ) {
		out.PutByte( static_cast<uint8_t>( byte ) );
	}
	out.PutVarint( FORMAT_VERSION );
	out.PutString( recording.gameVersion );
	out.PutByte( recording.soundOpened ? 1 : 0 );
	out.PutVarint( recording.steps );
	out.PutVarint( recording.tape.size() );
	out.PutBytes( recording.tape );
	for ( size_t i = 0; i < recording.checkpoints.size(); i++ ) {
		PutCheckpoint( out, recording.checkpoints[i], i > 0 ? &recording.checkpoints[i - 1] : nullptr );
	}
	return std::move( out.GetBytes() );
}

bool cReplayFile::Decode( const uint8_t *data, size_t size, cRecording &recording, std::string &why ) {
	recording = cRecording();
	cByteReader in( data, size );
	if ( !GetHeader( in, recording ) || !GetBody( in, data, recording ) ) {
		why = in.GetError();
		recording = cRecording();
		return false;
	}
	return true;
}

bool cReplayFile::Save( const std::string &path, const cRecording &recording, std::string &error ) {
	const std::vector<uint8_t> bytes = Encode( recording );
	std::ofstream file( path, std::ios::binary | std::ios::trunc );
	file.write( reinterpret_cast<const char *>( bytes.data() ), static_cast<std::streamsize>( bytes.size() ) );
	file.close();
	if ( !file ) {
		error = "Error writing replay " + path + ": " + std::strerror( errno );
		cLog::Write( error.c_str() );
		return false;
	}
	return true;
}

bool cReplayFile::Load( const std::string &path, cRecording &recording, std::string &error ) {
	std::string why;
	std::ifstream file( path, std::ios::binary | std::ios::ate );
	const std::streamoff size = file ? static_cast<std::streamoff>( file.tellg() ) : -1;
	std::vector<uint8_t> bytes;
	if ( !file || size < 0 ) {
		why = std::strerror( errno );
	} else if ( static_cast<uint64_t>( size ) > MAX_FILE_SIZE ) {
		why = "larger than " + std::to_string( MAX_FILE_SIZE >> 20 ) + " MB";
	} else {
		bytes.resize( static_cast<size_t>( size ) );
		file.seekg( 0 );
		file.read( reinterpret_cast<char *>( bytes.data() ), static_cast<std::streamsize>( bytes.size() ) );
		if ( !file ) {
			why = "cannot be read whole";
		}
	}
	if ( why.empty() && Decode( bytes.data(), bytes.size(), recording, why ) ) {
		return true;
	}
	error = "Error reading replay " + path + ": " + why;
	cLog::Write( error.c_str() );
	return false;
}
