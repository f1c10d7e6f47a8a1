#include "world/Scene.h"

#include <algorithm>

#include "world/Grid.h"

// The route runs up the left side of the map (zone 0), right along the lower street (1, 2), up
// the right side (3), left along the top (4, 5) and ends in the boss's area at the top left (6).
// The camera follows the player furthest behind along it, with a rule of its own in each zone.
namespace {

enum eCameraZone : int32_t {
	ZONE_START				= 0,
	ZONE_LOWER_TURN			= 1,
	ZONE_LOWER_STREET		= 2,
	ZONE_RIGHT_SIDE			= 3,
	ZONE_UPPER_TURN			= 4,
	ZONE_UPPER_STREET		= 5,
	ZONE_FINAL_AREA			= 6
};

const int32_t LOWER_PART_TOP		= 1088;		// in pixels: zones 0 to 2 lie at and below this y
const int32_t START_RIGHT			= 448;		// zone 0 spans x 0 to 448
const int32_t LOWER_TURN_LEFT		= 449;
const int32_t LOWER_TURN_RIGHT		= 744;
const int32_t LOWER_STREET_LEFT		= 593;
const int32_t RIGHT_SIDE_LEFT		= 1504;
const int32_t UPPER_TURN_LEFT		= 1377;
const int32_t UPPER_TURN_RIGHT		= 1503;
const int32_t UPPER_STREET_LEFT		= 672;
const int32_t UPPER_STREET_RIGHT	= 1376;

const int32_t MAX_CAMERA_X			= WORLD_WIDTH - VIEW_WIDTH;		// 1280
const int32_t LOWER_STREET_CAMERA_Y	= 992;
const int32_t START_CAMERA_MAX_Y	= 1888;
const int32_t START_LEAD			= 352;		// in pixels: zone 0 keeps the player this far below the view's top
const int32_t LOWER_STREET_LEAD		= 160;
const int32_t UPPER_STREET_LEAD		= 348;
const int32_t UPPER_STREET_MIN_X	= 640;
const int32_t FINAL_SLIDE			= 4;		// in pixels per frame

const int32_t PLAYER_MAX_OFFSET_X	= VIEW_WIDTH - BODY_SIZE;		// 608
const int32_t PLAYER_MAX_OFFSET_Y	= VIEW_HEIGHT - BODY_SIZE;		// 448

// Which of two players in the same zone lags furthest behind; true for player 1.
bool IsFirstBehind( int32_t zone, int32_t x1, int32_t y1, int32_t x2, int32_t y2 ) {
	switch ( zone ) {
		case ZONE_START:
		case ZONE_RIGHT_SIDE:
			return y1 > y2;
		case ZONE_LOWER_TURN:
		case ZONE_LOWER_STREET:
			return x1 < x2;
		default:
			return x1 > x2;
	}
}

void KeepInView( int32_t cameraX, int32_t cameraY, int32_t &x, int32_t &y ) {
	x = std::clamp( x, cameraX, cameraX + PLAYER_MAX_OFFSET_X );
	y = std::clamp( y, cameraY, cameraY + PLAYER_MAX_OFFSET_Y );
}

}

int32_t cScene::GetCameraZone( int32_t x, int32_t y ) const {
	const bool lowerPart = y >= LOWER_PART_TOP;
	if ( lowerPart && x >= 0 && x <= START_RIGHT ) {
		return ZONE_START;
	}
	if ( lowerPart && x >= LOWER_TURN_LEFT && x <= LOWER_TURN_RIGHT ) {
		return ZONE_LOWER_TURN;
	}
	if ( lowerPart && x >= LOWER_STREET_LEFT ) {
		return ZONE_LOWER_STREET;
	}
	if ( !lowerPart && x >= RIGHT_SIDE_LEFT ) {
		return ZONE_RIGHT_SIDE;
	}
	if ( x >= UPPER_TURN_LEFT && x <= UPPER_TURN_RIGHT ) {
		return ZONE_UPPER_TURN;
	}
	if ( !finalAreaLocked && x >= UPPER_STREET_LEFT && x <= UPPER_STREET_RIGHT ) {
		return ZONE_UPPER_STREET;
	}
	return ZONE_FINAL_AREA;
}

void cScene::UpdateCamera( bool active1, int32_t &x1, int32_t &y1, bool active2, int32_t &x2, int32_t &y2 ) {
	int32_t zone = ZONE_FINAL_AREA;
	int32_t fx = 0;
	int32_t fy = 0;
	int32_t oy = 0;
	ChooseFollowed( active1, x1, y1, active2, x2, y2, zone, fx, fy, oy );

	int32_t newX = cameraX;
	int32_t newY = cameraY;
	ApplyZoneRule( zone, fx, fy, newX, newY );

	cameraX = newX;
	if ( finalAreaLocked ) {
		cameraY = newY;
	} else {
		MoveCameraY( newY, oy );
	}

	if ( active1 ) {
		KeepInView( cameraX, cameraY, x1, y1 );
	}
	if ( active2 ) {
		KeepInView( cameraX, cameraY, x2, y2 );
	}
	cameraCellX = cameraX / CELL_SIZE;
	cameraCellY = cameraY / CELL_SIZE;
}

// The followed player is the one furthest behind: in the lower-numbered zone, or by the zone's
// own measure when both share one (player 2 on a tie). With one active player both roles are its.
void cScene::ChooseFollowed( bool active1, int32_t x1, int32_t y1, bool active2, int32_t x2, int32_t y2,
							int32_t &zone, int32_t &fx, int32_t &fy, int32_t &oy ) const {
	if ( !active1 && !active2 ) {
		zone = ZONE_FINAL_AREA;
		return;
	}
	if ( active1 != active2 ) {
		fx = active1 ? x1 : x2;
		fy = active1 ? y1 : y2;
		oy = fy;
		zone = GetCameraZone( fx, fy );
		return;
	}
	const int32_t zone1 = GetCameraZone( x1, y1 );
	const int32_t zone2 = GetCameraZone( x2, y2 );
	const bool firstFollowed = zone1 != zone2 ? zone1 < zone2 : IsFirstBehind( zone1, x1, y1, x2, y2 );
	zone = std::min( zone1, zone2 );
	fx = firstFollowed ? x1 : x2;
	fy = firstFollowed ? y1 : y2;
	oy = firstFollowed ? y2 : y1;
}

void cScene::ApplyZoneRule( int32_t zone, int32_t fx, int32_t fy, int32_t &newX, int32_t &newY ) {
	switch ( zone ) {
		case ZONE_START:
			newX = 0;
			newY = std::clamp( fy - START_LEAD, LOWER_STREET_CAMERA_Y, START_CAMERA_MAX_Y );
			break;
		case ZONE_LOWER_TURN:
			// Twice the player's pace, so the view catches up with the street by the turn's end.
			newX = 2 * fx - 2 * START_RIGHT;
			newY = LOWER_STREET_CAMERA_Y;
			break;
		case ZONE_LOWER_STREET:
			newX = std::min( fx - LOWER_STREET_LEAD, MAX_CAMERA_X );
			newY = LOWER_STREET_CAMERA_Y;
			break;
		case ZONE_RIGHT_SIDE:
			// One and a half times the player's pace, from the lower street's view up to the top.
			// Exact in double on every build: a pixel count times 1.5 plus a pixel count.
			newX = MAX_CAMERA_X;
			newY = std::max( static_cast<int32_t>( ( fy - LOWER_PART_TOP ) * 1.5 + LOWER_STREET_CAMERA_Y ), 0 );
			break;
		case ZONE_UPPER_TURN:
			newX = std::min( MAX_CAMERA_X - 2 * ( RIGHT_SIDE_LEFT - fx ), MAX_CAMERA_X );
			newY = 0;
			break;
		case ZONE_UPPER_STREET:
			newX = std::max( fx - UPPER_STREET_LEAD, UPPER_STREET_MIN_X );
			newY = 0;
			break;
		default:
			newX = std::max( newX - FINAL_SLIDE, 0 );
			newY = 0;
			finalAreaLocked = true;
			break;
	}
}

// The view rises or falls only while the other player is inside it, and never so far that the
// other player would drop out over its top edge: then the view stops with that player on it.
void cScene::MoveCameraY( int32_t newY, int32_t oy ) {
	const int32_t before = oy - cameraY;
	const int32_t after = oy - newY;
	const bool inside = before >= 0 && before <= VIEW_HEIGHT;
	const bool pushedOverTop = before == 0 && after < 0;
	const bool pushedUnderBottom = before == VIEW_HEIGHT && after > VIEW_HEIGHT;
	if ( !inside || pushedOverTop || pushedUnderBottom ) {
		return;
	}
	cameraY = after < 0 ? oy : newY;
}
