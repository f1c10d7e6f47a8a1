// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cScene is the level: four layers of cell codes over the 60 x 75 grid (ground, objects, walk
// codes, tiles above the actors) and the camera that follows the players along the route.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class cScene {
public:
	static const int32_t START_CAMERA_X = 0;			// in pixels: the bottom-left screen
	static const int32_t START_CAMERA_Y = 1920;

	// Loads the level's four map files from ./resources/map/.
						cScene();
	// The map folder of the resource tree under root, with its trailing slash.
	static std::string	GetMapFolder( const std::string &root );
	// Loads basemap.txt, objectmap.txt, walkmap.txt and overmap.txt from another folder
	// (written with its trailing slash).
	explicit			cScene( const std::string &mapFolder );
	virtual				~cScene();

	// A scene from four layers held in memory, for tests and tools. A layer that does not hold
	// exactly 4500 codes is logged and makes the scene unusable.
	static std::unique_ptr<cScene> FromLayers( const std::vector<int32_t> &base,
										const std::vector<int32_t> &object,
										const std::vector<int32_t> &walk,
										const std::vector<int32_t> &over );

	// Each loader fills its layer from a file of 4500 whitespace-separated integers. A missing
	// file, fewer numbers or a token before the last that is not an integer is logged, clears the
	// whole layer to wall (0) and makes the scene unusable.
	bool				LoadBaseMap( const std::string &path );
	bool				LoadObjectMap( const std::string &path );
	bool				LoadWalkMap( const std::string &path );
	bool				LoadOverMap( const std::string &path );
	// False once any layer failed to load; a new game must not start on such a scene.
	bool				IsUsable() const { return usable; }

	const int32_t *		GetBaseMap() const { return baseMap->data(); }
	const int32_t *		GetObjectMap() const { return objectMap.data(); }
	const int32_t *		GetWalkMap() const { return walkMap.data(); }
	const int32_t *		GetOverMap() const { return overMap->data(); }
	int32_t *			GetObjectMap() { return objectMap.data(); }
	int32_t *			GetWalkMap() { return walkMap.data(); }
	// Walk code of a cell; a cell outside the grid reads as wall (0).
	int32_t				GetWalkCode( int column, int row ) const;

	// Whether a square body (32 px, or 20 px when small) may stand with its top-left corner at
	// (x, y): every corner must lie inside the world on floor (1) or enemy-occupied floor (99).
	bool				IsFree( int32_t x, int32_t y, bool small ) const;
	// Opens the door at the cell and every door cell 4-connected to it.
	void				OpenDoor( int column, int row );
	// Opens the box at the cell; what it holds is the items' business (cItem::AddBoxContent).
	void				OpenBox( int column, int row );
	bool				IsUnderRoof( int column, int row ) const;

	int32_t				GetCameraZone( int32_t x, int32_t y ) const;
	// Moves the camera after the players' steps and pulls the active players into the view.
	void				UpdateCamera( bool active1, int32_t &x1, int32_t &y1,
									bool active2, int32_t &x2, int32_t &y2 );
	int32_t				GetCameraX() const { return cameraX; }
	int32_t				GetCameraY() const { return cameraY; }
	int32_t				GetCameraCellX() const { return cameraCellX; }
	int32_t				GetCameraCellY() const { return cameraCellY; }
	// Puts the camera anywhere in the world, for tests and tools.
	void				SetCameraPosition( int32_t x, int32_t y );
	bool				IsFinalAreaLocked() const { return finalAreaLocked; }

private:
	// The base and over layers are only drawn: set once, never changed, so that a copy of the
	// scene (a saved match) shares them and copies only the layers that play changes.
	using tDrawnLayer = std::shared_ptr<const std::vector<int32_t>>;

	// Empty layers (all 0) and the camera of a new game.
	struct cEmptyTag {};
	explicit			cScene( cEmptyTag );

	bool				LoadLayer( const std::string &path, std::vector<int32_t> &layer );
	bool				SetLayer( const char *name, const std::vector<int32_t> &codes, std::vector<int32_t> &layer );
	bool				SetLayer( const char *name, const std::vector<int32_t> &codes, tDrawnLayer &layer );
	bool				LoadLayer( const std::string &path, tDrawnLayer &layer );
	void				ChooseFollowed( bool active1, int32_t x1, int32_t y1, bool active2, int32_t x2, int32_t y2,
									int32_t &zone, int32_t &fx, int32_t &fy, int32_t &oy ) const;
	void				ApplyZoneRule( int32_t zone, int32_t fx, int32_t fy, int32_t &newX, int32_t &newY );
	void				MoveCameraY( int32_t newY, int32_t oy );

	tDrawnLayer			baseMap;
	std::vector<int32_t>	objectMap;
	tDrawnLayer			overMap;
	std::vector<int32_t>	walkMap;
	int32_t				cameraCellX;		// the cell at the view's top-left corner
	int32_t				cameraCellY;
	int32_t				cameraX;			// the view's top-left corner, in world pixels
	int32_t				cameraY;
	bool				finalAreaLocked;	// the players reached the boss; the camera stops following
	bool				usable;				// every layer holds 4500 codes
};
