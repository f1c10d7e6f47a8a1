// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A fresh folder under the system's temporary folder for one test, removed with everything in it
// when the test ends.

#include <string>

class cTempDir {
public:
					cTempDir();
					~cTempDir();
					cTempDir( const cTempDir & ) = delete;
	cTempDir &		operator=( const cTempDir & ) = delete;

	const std::string &GetPath() const { return path; }
	std::string		GetFile( const std::string &name ) const { return path + "/" + name; }
	void			WriteFile( const std::string &name, const std::string &contents ) const;

private:
	std::string		path;
};

// Reads a whole file; empty when it cannot be read.
std::string ReadWholeFile( const std::string &path );
