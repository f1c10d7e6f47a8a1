// SPDX-License-Identifier: GPL-3.0-or-later
// The bot's planning pieces on tiny maps: the lattice of body positions and its moves, the
// distance fields, the enemy shots flown ahead against a walking body, and the player's lines of
// fire.

#include <gtest/gtest.h>

#include <vector>

#include "harness/IncomingFire.h"
#include "harness/LineOfFire.h"
#include "harness/Situation.h"
#include "TestMaps.h"
#include "harness/WalkLattice.h"
#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "world/Scene.h"

namespace {

// A room of floor in the top-left corner of the map, with a pillar at cell (3, 2).
const std::vector<std::string> ROOM_WITH_PILLAR = {
	"######",
	"#.....",
	"#..#..",
	"#.....",
	"#.....",
};

// The map with its camera on its top-left screen, as the final area's is.
std::unique_ptr<cScene> Shown( std::unique_ptr<cScene> scene ) {
	scene->SetCameraPosition( 0, 0 );
	return scene;
}

cEnemySighting SeeEnemyAt( int32_t x, int32_t y, int32_t vx = 0, int32_t vy = 0 ) {
	return cEnemySighting { nullptr, x, y, vx, vy, KIND_SOLDIER, 0, true, false };
}

}

TEST( WalkLatticeTest, SlantedMoveNeedsBothStraightHalves ) {
	std::unique_ptr<cScene> scene = MakeScene( ROOM_WITH_PILLAR );
	const cWalkLattice lattice( *scene, 0, 0 );
	// The body at (64, 88) covers cells (2, 2) and (2, 3); the pillar is at (3, 2).
	const int32_t start = lattice.FindNode( 64, 88 );
	ASSERT_NE( start, cWalkLattice::NO_NODE );
	ASSERT_TRUE( lattice.IsOpen( start ) );
	EXPECT_TRUE( lattice.IsOpen( lattice.FindNode( 72, 96 ) ) ) << "the slanted target itself is free";
	EXPECT_EQ( lattice.GetNeighbour( start, DIR_DOWN_RIGHT ), cWalkLattice::NO_NODE )
		<< "the move right from (64, 88) runs into the pillar, so the slanted one is refused";
	EXPECT_EQ( lattice.GetNeighbour( start, DIR_DOWN ), lattice.FindNode( 64, 96 ) );
	EXPECT_EQ( lattice.GetNeighbour( start, DIR_RIGHT ), cWalkLattice::NO_NODE );
}

TEST( WalkLatticeTest, PositionsBetweenNodesAndShiftedLattices ) {
	std::unique_ptr<cScene> scene = MakeScene( ROOM_WITH_PILLAR );
	const cWalkLattice lattice( *scene, 0, 0 );
	int32_t nodes[4];
	ASSERT_EQ( lattice.GetSurroundingNodes( 36, 40, nodes ), 2 ) << "x between two nodes, y on one";
	int32_t x = 0, y = 0;
	lattice.GetPosition( nodes[0], x, y );
	EXPECT_EQ( x, 32 );
	EXPECT_EQ( y, 40 );
	lattice.GetPosition( nodes[1], x, y );
	EXPECT_EQ( x, 40 );
	EXPECT_EQ( y, 40 );
	EXPECT_EQ( lattice.GetSurroundingNodes( 8, 40, nodes ), 0 ) << "a body at x 8 reaches into the wall column";
	const cWalkLattice odd( *scene, 1, 0 );
	EXPECT_EQ( odd.FindNode( 32, 40 ), cWalkLattice::NO_NODE ) << "an odd lattice has no even positions";
	EXPECT_NE( odd.FindNode( 33, 40 ), cWalkLattice::NO_NODE );
}

TEST( WalkLatticeTest, DistancesCountStraightAndSlantedMoves ) {
	std::unique_ptr<cScene> scene = MakeScene( ROOM_WITH_PILLAR );
	const cWalkLattice lattice( *scene, 0, 0 );
	std::vector<int32_t> distances;
	lattice.FillDistances( { lattice.FindNode( 32, 96 ) }, distances );
	EXPECT_EQ( distances[lattice.FindNode( 32, 96 )], 0 );
	EXPECT_EQ( distances[lattice.FindNode( 48, 96 )], 2 * cWalkLattice::STRAIGHT_COST );
	EXPECT_EQ( distances[lattice.FindNode( 48, 112 )], 2 * cWalkLattice::DIAGONAL_COST );
	EXPECT_EQ( distances[lattice.FindNode( 32, 32 )], 8 * cWalkLattice::STRAIGHT_COST ) << "straight up the wall";
	EXPECT_EQ( distances[lattice.FindNode( 96, 64 )], cWalkLattice::UNREACHED ) << "inside the pillar";
	lattice.FillDistances( { lattice.FindNode( 32, 96 ) }, distances, 3 * cWalkLattice::STRAIGHT_COST );
	EXPECT_EQ( distances[lattice.FindNode( 32, 32 )], cWalkLattice::UNREACHED ) << "beyond the search's limit";

	cLocalSearch search;
	search.Run( lattice, lattice.FindNode( 32, 96 ), 100 );
	EXPECT_EQ( search.GetCost( lattice.FindNode( 48, 112 ) ), 2 * cWalkLattice::DIAGONAL_COST );
	EXPECT_EQ( search.GetFirstStep( lattice.FindNode( 48, 112 ) ), lattice.FindNode( 40, 104 ) );
}

TEST( IncomingFireTest, AShotIsMetWhereTheBodyStandsAndMissedByOneThatStepsAside ) {
	std::unique_ptr<cScene> scene = Shown( MakeOpenScene() );
	tBulletList bullets;
	// A soldier's shot flying down at 2 pixels a frame towards a body at (320, 180).
	bullets.push_back( cBullet( 326, 106, 0, 1, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
	bullets.push_back( cBullet( 326, 106, 0, 1, WEAPON_TAVESH, KIND_TAVESH ) );		// a player's: no threat
	cIncomingFire incoming;
	incoming.Forecast( *scene, 0, 0, bullets );
	cBodyTrack track;
	cIncomingFire::Walk( *scene, 320, 180, 2, 0, 0, 0, 0, 0, cIncomingFire::HORIZON, track );
	EXPECT_EQ( incoming.FindFirstHit( track ), 28 ) << "the box's bottom edge passes y 180 after 28 frames";
	cIncomingFire::Walk( *scene, 320, 180, 2, 1, 0, 1, 1, 0, cIncomingFire::HORIZON, track );
	EXPECT_EQ( incoming.FindFirstHit( track ), 0 ) << "walking right, the body is 56 pixels aside by then";
	incoming.Forecast( *scene, 0, 200, bullets );
	EXPECT_TRUE( incoming.IsEmpty() ) << "a shot above the view is gone at the next bullet pass";
}

TEST( IncomingFireTest, WalkSlidesAlongWallsAndStaysInTheView ) {
	std::unique_ptr<cScene> scene = Shown( MakeScene( ROOM_WITH_PILLAR ) );
	cBodyTrack track;
	cIncomingFire::Walk( *scene, 32, 40, 2, 1, -1, 10, 0, 0, 10, track );
	EXPECT_EQ( track.xs[9], 52 ) << "up-right against the top wall slides right";
	EXPECT_EQ( track.ys[9], 32 );
	std::unique_ptr<cScene> open = Shown( MakeOpenScene() );
	cIncomingFire::Walk( *open, 600, 100, 2, 1, 0, 10, 0, 0, 10, track );
	EXPECT_EQ( track.xs[9], 608 ) << "the camera holds the body inside the view";
}

TEST( IncomingFireTest, NearTheWanderingBossOnlyTheWayOutCounts ) {
	std::unique_ptr<cScene> scene = Shown( MakeOpenScene() );
	cIncomingFire incoming;
	incoming.Forecast( *scene, 0, 0, tBulletList() );
	incoming.KeepAwayFrom( 300, 300, 0, 0 );
	cBodyTrack track;
	cIncomingFire::Walk( *scene, 300, 190, 2, 0, 1, 48, 0, 0, 48, track );
	EXPECT_EQ( incoming.FindFirstHit( track ), 16 ) << "walking down from 110 pixels away, in reach from y 222";
	cIncomingFire::Walk( *scene, 300, 140, 2, 0, 1, 48, 0, 0, 48, track );
	EXPECT_EQ( incoming.FindFirstHit( track ), 0 ) << "in reach only after frame 40, beyond the boss's guessed walk";
	cIncomingFire::Walk( *scene, 300, 260, 2, 0, -1, 48, 0, 0, 48, track );
	EXPECT_EQ( incoming.FindFirstHit( track ), cIncomingFire::KEEP_AWAY_FRAMES - 19 + 1 )
		<< "walking away from 40 pixels, out of reach from frame 20";
	cIncomingFire::Walk( *scene, 300, 260, 2, 0, 0, 48, 0, 0, 48, track );
	EXPECT_EQ( incoming.FindFirstHit( track ), 1 ) << "standing beside the boss is the worst";
}

TEST( LineOfFireTest, AimFollowsTheEightLinesWithinABodysReach ) {
	EXPECT_EQ( GetAimDirection( 0, 0, 100, 25 ), DIR_RIGHT );
	EXPECT_EQ( GetAimDirection( 0, 0, 100, 26 ), 0 ) << "too far off the row, not yet near the slant";
	EXPECT_EQ( GetAimDirection( 0, 0, -20, -200 ), DIR_UP );
	EXPECT_EQ( GetAimDirection( 0, 0, 100, 120 ), DIR_DOWN_RIGHT );
	EXPECT_EQ( GetAimDirection( 0, 0, -100, -64 ), DIR_UP_LEFT );
	EXPECT_EQ( GetLineDepth( 0, 0, 100, 20, DIR_RIGHT ), 5 );
	EXPECT_EQ( GetLineDepth( 0, 0, 100, 100, DIR_DOWN_RIGHT ), 18 );
}

TEST( LineOfFireTest, ShotsStopAtWallsAndMeetWalkingEnemies ) {
	std::unique_ptr<cScene> scene = MakeScene( {
		"##########",
		"#........#",
		"#....#...#",
		"#........#",
		"##########",
	} );
	cSituation situation;
	situation.scene = scene.get();
	situation.enemies.push_back( SeeEnemyAt( 256, 64 ) );		// behind the wall at (5, 2)
	situation.enemies.push_back( SeeEnemyAt( 256, 96, 0, -1 ) );	// walking up out of row 3
	const cLineOfFire fire( situation );
	EXPECT_FALSE( fire.Hits( 32, 64, DIR_RIGHT, 0 ) ) << "the wall stops the shot";
	EXPECT_TRUE( fire.Hits( 32, 96, DIR_RIGHT, 1 ) );
	int frames = 0;
	EXPECT_EQ( fire.FindTarget( 32, 96, DIR_RIGHT, frames ), 1 );
	EXPECT_EQ( frames, 40 ) << "the shot's box, from x 38 at 5 pixels a frame, first enters the body at x 258";
	const std::vector<int32_t> places = { 128, 96, 192, 96, 192, 32, 96, 32 };
	EXPECT_EQ( fire.CountCrossed( 32, 96, DIR_RIGHT, places ), 2 ) << "the row's two places, not the row above";
}
