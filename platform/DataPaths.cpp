// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DataPaths.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "log/Log.h"

namespace fs = std::filesystem;

namespace {

#ifdef KMVT_INSTALLED_DATA
const char *const INSTALLED_DATA = KMVT_INSTALLED_DATA;
#else
const char *const INSTALLED_DATA = "";
#endif

const char *const DEFAULT_STATE_HOME = ".local/state";	// under $HOME

// "/usr/bin/../share/x/" and "/usr/share/x" are one folder: compare and show them in one form.
std::string Tidy( const std::string &folder ) {
	std::string tidy = fs::path( folder ).lexically_normal().generic_string();
	while ( tidy.size() > 1 && tidy.back() == '/' ) {
		tidy.pop_back();
	}
	return tidy;
}

void AddCandidate( std::vector<std::string> &candidates, const std::string &folder ) {
	if ( folder.empty() ) {
		return;
	}
	const std::string tidy = Tidy( folder );
	if ( std::find( candidates.begin(), candidates.end(), tidy ) == candidates.end() ) {
		candidates.push_back( tidy );
	}
}

bool IsSet( const char *value ) {
	return value != nullptr && value[0] != '\0';
}

}

std::vector<std::string> cDataPaths::ListCandidates( const char *dataVariable, const std::string &executableFolder,
										const std::string &installedFolder ) {
	std::vector<std::string> candidates;
	if ( IsSet( dataVariable ) ) {
		AddCandidate( candidates, dataVariable );
	}
	AddCandidate( candidates, WORKING_FOLDER );
	if ( !executableFolder.empty() ) {
		AddCandidate( candidates, executableFolder );
		AddCandidate( candidates, executableFolder + "/" + BESIDE_EXECUTABLE );
	}
	AddCandidate( candidates, installedFolder );
	return candidates;
}

bool cDataPaths::Find( const std::vector<std::string> &candidates ) {
	searched = candidates;
	for ( const std::string &candidate : candidates ) {
		std::error_code error;
		if ( fs::is_regular_file( fs::path( candidate ) / PROBE_FILE, error ) ) {
			root = candidate;
			found = true;
			return true;
		}
	}
	root = WORKING_FOLDER;
	found = false;
	return false;
}

bool cDataPaths::IsInWorkingFolder() const {
	std::error_code error;
	return found && fs::equivalent( root, WORKING_FOLDER, error );
}

std::string cDataPaths::ChooseLogPath( const char *stateHome, const char *home ) const {
	if ( IsInWorkingFolder() ) {
		return LOG_NAME;
	}
	fs::path state;
	if ( IsSet( stateHome ) && fs::path( stateHome ).is_absolute() ) {
		state = stateHome;
	} else if ( IsSet( home ) ) {
		state = fs::path( home ) / DEFAULT_STATE_HOME;
	} else {
		return "";
	}
	const fs::path folder = state / STATE_SUBFOLDER;
	std::error_code error;
	fs::create_directories( folder, error );
	if ( !fs::is_directory( folder, error ) ) {
		return "";
	}
	return ( folder / LOG_NAME ).string();
}

void cDataPaths::SetUp( const std::string &executableFolder ) {
	Find( ListCandidates( std::getenv( DATA_VARIABLE ), executableFolder, INSTALLED_DATA ) );
	cLog::Restart( ChooseLogPath( std::getenv( "XDG_STATE_HOME" ), std::getenv( "HOME" ) ) );
	if ( !found ) {
		cLog::Write( DescribeSearch().c_str() );
	}
}

std::string cDataPaths::DescribeSearch() const {
	std::string text = "No game data found; looked in: ";
	for ( size_t i = 0; i < searched.size(); i++ ) {
		std::error_code error;
		const fs::path shown = searched[i] == WORKING_FOLDER ? fs::current_path( error ) : fs::path( searched[i] );
		text += ( i == 0 ? "" : ", " ) + ( shown.empty() ? searched[i] : shown.string() );
	}
	return text;
}
