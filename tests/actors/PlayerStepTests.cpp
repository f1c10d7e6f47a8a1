// The player step on small maps: movement axis by axis, firing and its sounds, the skill key,
// the use key on doors and boxes, and reviving a partner.

#include <gtest/gtest.h>

#include "TestGame.h"
#include "TestMaps.h"
#include "actors/Player.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

struct cKeys {
	int32_t		dx = 0;
	int32_t		dy = 0;
	int32_t		direction = DIR_NONE;
	bool		fire = false;
	bool		skill = false;
	bool		use = false;
};

cKeys Press( bool fire, bool skill, bool use ) {
	cKeys keys;
	keys.fire = fire;
	keys.skill = skill;
	keys.use = use;
	return keys;
}

const cKeys NOTHING;
const cKeys FIRE = Press( true, false, false );
const cKeys SKILL = Press( false, true, false );
const cKeys USE = Press( false, false, true );

class PlayerStepTest : public ::testing::Test {
protected:
	void Start( std::unique_ptr<cScene> scene ) { game = std::make_unique<cTestGame>( std::move( scene ) ); }
	int32_t Step( cPlayer &player, const cKeys &keys, cPlayer *partner = nullptr ) {
		int32_t health = -1;
		if ( partner != nullptr ) {
			game->GetGame().UpdatePlayerCoop( player, partner, keys.dx, keys.dy, keys.direction, keys.fire, keys.skill,
											  keys.use, health );
		} else {
			game->GetGame().UpdatePlayer( player, keys.dx, keys.dy, keys.direction, keys.fire, keys.skill, keys.use, health );
		}
		return health;
	}
	int32_t WalkCode( int column, int row ) const { return game->GetScene().GetWalkCode( column, row ); }

	std::unique_ptr<cTestGame> game;
};

struct cMoveCase {
	const char *				what;
	std::vector<std::string>	picture;
	int32_t						x, y;			// start, facing left
	int32_t						dx, dy, direction;
	int32_t						endX, endY, facing;
	bool						moving;
};

const cMoveCase MOVE_CASES[] = {
	{ "a straight step", { "#####", "#...#", "#####" }, 32, 32, 1, 0, DIR_RIGHT, 34, 32, DIR_RIGHT, true },
	{ "a diagonal covers the speed on both axes", { "####", "#..#", "#..#", "####" }, 32, 32, 1, 1, DIR_DOWN_RIGHT,
	  34, 34, DIR_DOWN_RIGHT, true },
	{ "a slant into a wall slides along it, facing the slant", { "#####", "#..##", "#..##", "#####" }, 64, 64, 1, -1,
	  DIR_UP_RIGHT, 64, 62, DIR_UP_RIGHT, true },
	{ "one pixel would fit, a step of two does not", { "####", "#..#", "####" }, 63, 32, 1, 0, DIR_RIGHT,
	  63, 32, DIR_LEFT, false },
	{ "both axes blocked: no move, no turn", { "#####", "#..##", "#####" }, 64, 32, 1, -1, DIR_UP_RIGHT,
	  64, 32, DIR_LEFT, false },
	{ "each axis is tested alone, never the diagonal target", { "####", "#.##", "#..#", "####" }, 32, 64, 1, -1,
	  DIR_UP_RIGHT, 34, 62, DIR_UP_RIGHT, true },
	{ "enemy marks do not block", { "#####", "#.EE#", "#####" }, 62, 32, 1, 0, DIR_RIGHT, 64, 32, DIR_RIGHT, true },
	{ "no key held", { "###", "#.#", "###" }, 32, 32, 0, 0, DIR_NONE, 32, 32, DIR_LEFT, false },
};

TEST_F( PlayerStepTest, MovementTriesEachAxisAloneAgainstTheWalkLayer ) {
	for ( const cMoveCase &c : MOVE_CASES ) {
		Start( MakeScene( c.picture ) );
		cPlayer &player = game->AddPlayer( KIND_TAVESH, c.x, c.y );
		player.SetDirection( DIR_LEFT );
		player.SetMoving( !c.moving );
		cKeys keys;
		keys.dx = c.dx;
		keys.dy = c.dy;
		keys.direction = c.direction;
		Step( player, keys );
		int32_t x = 0;
		int32_t y = 0;
		player.GetPosition( x, y );
		EXPECT_TRUE( x == c.endX && y == c.endY ) << c.what << ": ended at (" << x << ", " << y << ")";
		EXPECT_EQ( player.GetDirection(), c.facing ) << c.what;
		EXPECT_EQ( player.IsMoving(), c.moving ) << c.what;
	}
}

TEST_F( PlayerStepTest, EachGunFiresWithItsOwnSoundAndTheMachineGunPaysForItsRounds ) {
	Start( MakeOpenScene() );
	cPlayer &tavesh = game->AddPlayer( KIND_TAVESH, 320, 320 );
	cPlayer &lumra = game->AddPlayer( KIND_LUMRA, 400, 320 );
	Step( tavesh, NOTHING );
	Step( lumra, NOTHING );
	Step( lumra, FIRE );
	Step( tavesh, FIRE );
	Step( tavesh, FIRE );
	EXPECT_EQ( game->GetPlayedSounds(), ( std::vector<int>{ SOUND_LUMRA_SHOT, SOUND_TAVESH_SHOT } ) )
		<< "one shot each; no sound while a gun cools down";

	game->ForgetSounds();
	tavesh.SetWeapon( WEAPON_MACHINE_GUN );
	tavesh.SetAmmo( 0 );
	Step( tavesh, NOTHING );
	Step( tavesh, FIRE );
	EXPECT_EQ( game->GetGame().GetBullets()->back().GetWeapon(), WEAPON_MACHINE_GUN );
	EXPECT_EQ( tavesh.GetWeapon(), WEAPON_TAVESH ) << "the last round hands back the gun";
	Step( tavesh, NOTHING );
	Step( tavesh, FIRE );
	EXPECT_EQ( game->GetPlayedSounds(), ( std::vector<int>{ SOUND_MACHINE_GUN, SOUND_TAVESH_SHOT } ) );
	EXPECT_EQ( game->GetGame().GetBullets()->size(), 4u );
}

TEST_F( PlayerStepTest, LumraHoldingFireWithTheSkillOnDrainsEnergyEveryStep ) {
	Start( MakeOpenScene() );
	cPlayer &lumra = game->AddPlayer( KIND_LUMRA, 320, 320 );
	Step( lumra, Press( true, true, false ) );
	EXPECT_TRUE( lumra.IsSkillActive() );
	EXPECT_EQ( lumra.GetEnergy(), 3000 ) << "the skill went on after the step's firing";
	EXPECT_EQ( game->GetPlayedSounds(), std::vector<int>{ SOUND_SKILL } );
	Step( lumra, FIRE );
	Step( lumra, FIRE );
	EXPECT_EQ( lumra.GetEnergy(), 2900 ) << "50 a step while cooling down, no bullet needed";
	EXPECT_TRUE( game->GetGame().GetBullets()->empty() );
	lumra.SetEnergy( 30 );
	Step( lumra, FIRE );
	EXPECT_EQ( lumra.GetEnergy(), 0 ) << "not below 0";
	EXPECT_FALSE( lumra.IsSkillActive() ) << "the step's own skill update ends the empty skill";

	cPlayer &tavesh = game->AddPlayer( KIND_TAVESH, 100, 320 );
	Step( tavesh, Press( true, true, false ) );
	Step( tavesh, FIRE );
	EXPECT_EQ( tavesh.GetEnergy(), 3000 ) << "tavesh's skill costs nothing while firing";
}

TEST_F( PlayerStepTest, SkillKeyTogglesAndEnergyFollowsTheClockBetweenSteps ) {
	Start( MakeOpenScene() );
	cPlayer &player = game->AddPlayer( KIND_TAVESH, 320, 320 );
	Step( player, SKILL );
	game->GetClock().Advance( 15 );
	player.SetHealth( 64 );
	EXPECT_EQ( Step( player, NOTHING ), 64 ) << "the step reports the health";
	EXPECT_EQ( player.GetEnergy(), 2985 );
	Step( player, SKILL );
	EXPECT_FALSE( player.IsSkillActive() );
	EXPECT_EQ( game->GetPlayedSounds(), ( std::vector<int>{ SOUND_SKILL, SOUND_SKILL } ) );
}

// The player stands in cell (2, 1), with a box to its left and a two-cell door to its right.
TEST_F( PlayerStepTest, LumraOpensDoorsAndBoxesTaveshOnlyBoxes ) {
	const std::vector<std::string> picture = { "######", "#B.DD#", "######" };
	struct cUseCase { int32_t kind; int32_t door; std::vector<int> sounds; };
	const cUseCase cases[] = {
		{ KIND_TAVESH, WALK_DOOR, { SOUND_OPEN_BOX } },
		{ KIND_LUMRA, WALK_FLOOR, { SOUND_DOOR_OPEN, SOUND_OPEN_BOX } },
	};
	for ( const cUseCase &c : cases ) {
		Start( MakeScene( picture ) );
		cPlayer &player = game->AddPlayer( c.kind, 64, 32 );
		Step( player, USE );
		EXPECT_EQ( WalkCode( 1, 1 ), WALK_FLOOR ) << "kind " << c.kind << " opens the box";
		EXPECT_EQ( WalkCode( 3, 1 ), c.door ) << "kind " << c.kind;
		EXPECT_EQ( WalkCode( 4, 1 ), c.door ) << "kind " << c.kind << ": the door opens whole or not at all";
		EXPECT_EQ( game->GetPlayedSounds(), c.sounds ) << "kind " << c.kind;
		Step( player, USE );
		EXPECT_EQ( game->GetPlayedSounds(), c.sounds ) << "nothing opens twice";
	}
}

TEST_F( PlayerStepTest, UseKeyOpensOneBoxAStepRightLeftBelowAbove ) {
	Start( MakeScene( { "#B#", "B.B", "#B#" }, 10, 10 ) );
	cPlayer &tavesh = game->AddPlayer( KIND_TAVESH, 11 * 32, 11 * 32 );
	const int order[4][2] = { { 12, 11 }, { 10, 11 }, { 11, 12 }, { 11, 10 } };
	for ( int step = 0; step < 4; step++ ) {
		Step( tavesh, USE );
		for ( int box = 0; box < 4; box++ ) {
			EXPECT_EQ( WalkCode( order[box][0], order[box][1] ), box <= step ? WALK_FLOOR : WALK_BOX )
				<< "box " << box << " after step " << step;
		}
	}
}

// Unchecked, the neighbours of a cell on the grid's edge would be read from the next or the
// previous row, or from outside the layer.
TEST_F( PlayerStepTest, UseKeyIgnoresNeighboursOutsideTheGrid ) {
	cTestLayers layers = DrawLayers( {} );
	layers.walk[CellIndex( 59, 1 )] = WALK_BOX;		// where (-1, 2) would be read
	layers.walk[CellIndex( 0, 6 )] = WALK_DOOR;		// where (60, 5) would be read
	Start( layers.Build() );
	const int32_t spots[4][2] = { { 0, 2 * 32 }, { 59 * 32, 5 * 32 }, { 5 * 32, 0 }, { 5 * 32, 74 * 32 } };
	for ( const int32_t *spot : spots ) {
		Step( game->AddPlayer( KIND_LUMRA, spot[0], spot[1] ), USE );
	}
	EXPECT_EQ( WalkCode( 59, 1 ), WALK_BOX );
	EXPECT_EQ( WalkCode( 0, 6 ), WALK_DOOR );
	EXPECT_EQ( game->GetPlayedSounds(), std::vector<int>{} );
}

TEST_F( PlayerStepTest, PartnerWhoIsDownIsRevivedFromItsCellOrAnEdgeNeighbour ) {
	Start( MakeOpenScene() );
	cPlayer &player = game->AddPlayer( KIND_TAVESH, 320, 320 );	// cell (10, 10)
	cPlayer &partner = game->AddPlayer( KIND_LUMRA, 352, 352 );	// cell (11, 11)
	partner.SetHealth( 0 );
	partner.SetDead( true );
	Step( player, USE, &partner );
	EXPECT_TRUE( partner.IsDead() ) << "a diagonal neighbour is not revived";
	partner.SetPosition( 352, 320 );
	Step( player, USE );
	EXPECT_TRUE( partner.IsDead() ) << "the one-player step never revives";
	Step( player, NOTHING, &partner );
	EXPECT_TRUE( partner.IsDead() ) << "nor does a step without the use key";
	Step( player, USE, &partner );
	EXPECT_FALSE( partner.IsDead() );
	EXPECT_EQ( partner.GetHealth(), 26 );

	partner.SetDead( true );
	partner.SetPosition( 330, 325 );
	Step( player, USE, &partner );
	EXPECT_FALSE( partner.IsDead() ) << "in the same cell";
	EXPECT_EQ( partner.GetHealth(), 52 );
	Step( player, USE, &partner );
	EXPECT_EQ( partner.GetHealth(), 52 ) << "a partner standing gets nothing";
}

}
