#pragma once
// The game's screen: the picture of 640 x 480 pixels that every platform shows, scaled or not,
// and the part of the world that the camera shows.

const int VIEW_WIDTH		= 640;						// in pixels
const int VIEW_HEIGHT		= 480;						// in pixels
