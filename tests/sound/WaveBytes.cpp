#include "WaveBytes.h"

namespace {

void AppendU16( std::string &bytes, uint16_t value ) {
	bytes.push_back( static_cast<char>( value & 0xff ) );
	bytes.push_back( static_cast<char>( value >> 8 ) );
}

void AppendU32( std::string &bytes, uint32_t value ) {
	AppendU16( bytes, static_cast<uint16_t>( value & 0xffff ) );
	AppendU16( bytes, static_cast<uint16_t>( value >> 16 ) );
}

std::string MakeWave( const sWaveShape &shape, uint16_t extraBytes ) {
	const uint16_t blockAlign = static_cast<uint16_t>( shape.channels * shape.bits / 8 );
	const uint32_t dataSize = shape.frames * blockAlign;
	const uint32_t formatSize = 16u + extraBytes;
	std::string bytes = "RIFF";
	AppendU32( bytes, 4 + ( 8 + formatSize ) + ( 8 + dataSize ) );
	bytes += "WAVEfmt ";
	AppendU32( bytes, formatSize );
	AppendU16( bytes, 1 );						// PCM
	AppendU16( bytes, shape.channels );
	AppendU32( bytes, shape.rate );
	AppendU32( bytes, shape.rate * blockAlign );
	AppendU16( bytes, blockAlign );
	AppendU16( bytes, shape.bits );
	bytes.append( extraBytes, '\0' );
	bytes += "data";
	AppendU32( bytes, dataSize );
	return bytes + MakeSampleBytes( dataSize );
}

}

const char *const GAME_SOUND_FILES[15] = {
	"menu.wav", "streets.wav", "boss.wav", "explosion.wav", "tavesh_shot.wav", "lumra_shot.wav",
	"enemy_shot.wav", "machinegun.wav", "skill.wav", "item.wav", "heartbeat.wav", "LvlComplete.wav",
	"GameOver.wav", "open_box.wav", "door_open.wav",
};

std::string MakeSampleBytes( uint32_t size ) {
	std::string bytes( size, '\0' );
	for ( uint32_t i = 0; i < size; i++ ) {
		bytes[i] = static_cast<char>( ( i * 7 + 3 ) & 0xff );
	}
	return bytes;
}

std::string MakeCanonicalWave( const sWaveShape &shape ) {
	return MakeWave( shape, 0 );
}

std::string MakeLongFormatWave( const sWaveShape &shape, uint16_t extraBytes ) {
	return MakeWave( shape, extraBytes );
}

void PutU16( std::string &bytes, size_t at, uint16_t value ) {
	bytes[at] = static_cast<char>( value & 0xff );
	bytes[at + 1] = static_cast<char>( value >> 8 );
}

void PutU32( std::string &bytes, size_t at, uint32_t value ) {
	PutU16( bytes, at, static_cast<uint16_t>( value & 0xffff ) );
	PutU16( bytes, at + 2, static_cast<uint16_t>( value >> 16 ) );
}

uint32_t GetU32( const std::string &bytes, size_t at ) {
	uint32_t value = 0;
	for ( int i = 3; i >= 0; i-- ) {
		value = ( value << 8 ) | static_cast<uint8_t>( bytes[at + i] );
	}
	return value;
}
