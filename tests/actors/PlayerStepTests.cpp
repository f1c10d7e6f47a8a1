// SPDX-License-Identifier: GPL-3.0-or-later
// The player step on small maps: movement axis by axis, firing and its sounds, the skill key,
// the use key on doors and boxes, and reviving a partner.

#include <gtest/gtest.h>

#include <initializer_list>

#include "TestGame.h"
#include "TestMaps.h"
#include "Where.h"
#include "actors/Player.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

enum eKeys { NOTHING = 0, FIRE = 1, SKILL = 2, USE = 4 };

class PlayerStepTest : public ::testing::Test {
protected:
	void Start( std::unique_ptr<cScene> scene ) { game = std::make_unique<cTestGame>( std::move( scene ) ); }
	// One step without movement keys; returns the health the step reports.
	int32_t Step( cPlayer &player, int keys, cPlayer *partner = nullptr ) {
		int32_t health = -1;
		game->GetGame().UpdatePlayerCoop( player, partner, 0, 0, DIR_NONE, ( keys & FIRE ) != 0, ( keys & SKILL ) != 0,
										  ( keys & USE ) != 0, health );
		return health;
	}
	void Steps( cPlayer &player, std::initializer_list<int> keys ) {
		for ( int held : keys ) {
			Step( player, held );
		}
	}
	int32_t WalkCode( int column, int row ) const { return game->GetScene().GetWalkCode( column, row ); }

	std::unique_ptr<cTestGame> game;
};

// The player starts facing left; it turns only when it moves.
TEST_F( PlayerStepTest, MovementTriesEachAxisAloneAgainstTheWalkLayer ) {
	struct cMoveCase {
		const char *				what;
		std::vector<std::string>	picture;
		int32_t						x, y, dx, dy, direction;
		const char *				end;
	};
	const cMoveCase cases[] = {
		{ "a straight step", { "#####", "#...#", "#####" }, 32, 32, 1, 0, DIR_RIGHT, "(34, 32)" },
		{ "a diagonal: speed on both axes", { "####", "#..#", "#..#", "####" }, 32, 32, 1, 1, DIR_DOWN_RIGHT, "(34, 34)" },
		{ "a slant into a wall slides along it", { "#####", "#..##", "#..##", "#####" }, 64, 64, 1, -1, DIR_UP_RIGHT,
		  "(64, 62)" },
		{ "one pixel would fit, two do not", { "####", "#..#", "####" }, 63, 32, 1, 0, DIR_RIGHT, "(63, 32)" },
		{ "both axes blocked", { "#####", "#..##", "#####" }, 64, 32, 1, -1, DIR_UP_RIGHT, "(64, 32)" },
		{ "each axis alone, never the diagonal target", { "####", "#.##", "#..#", "####" }, 32, 64, 1, -1, DIR_UP_RIGHT,
		  "(34, 62)" },
		{ "enemy marks do not block", { "#####", "#.EE#", "#####" }, 62, 32, 1, 0, DIR_RIGHT, "(64, 32)" },
		{ "no key held", { "###", "#.#", "###" }, 32, 32, 0, 0, DIR_NONE, "(32, 32)" },
	};
	for ( const cMoveCase &c : cases ) {
		Start( MakeScene( c.picture ) );
		cPlayer &player = game->AddPlayer( KIND_TAVESH, c.x, c.y );
		player.SetDirection( DIR_LEFT );
		const bool moves = Where( player ) != c.end;
		player.SetMoving( !moves );
		int32_t health = 0;
		game->GetGame().UpdatePlayer( player, c.dx, c.dy, c.direction, false, false, false, health );
		EXPECT_EQ( Where( player ), c.end ) << c.what;
		EXPECT_EQ( player.GetDirection(), moves ? c.direction : DIR_LEFT ) << c.what;
		EXPECT_EQ( player.IsMoving(), moves ) << c.what;
	}
}

TEST_F( PlayerStepTest, EachGunFiresWithItsOwnSoundAndTheMachineGunPaysForItsRounds ) {
	Start( MakeOpenScene() );
	cPlayer &tavesh = game->AddPlayer( KIND_TAVESH, 320, 320 );
	cPlayer &lumra = game->AddPlayer( KIND_LUMRA, 400, 320 );
	Steps( lumra, { NOTHING, FIRE } );
	Steps( tavesh, { NOTHING, FIRE, FIRE } );
	EXPECT_EQ( game->GetPlayedSounds(), ( std::vector<int>{ SOUND_LUMRA_SHOT, SOUND_TAVESH_SHOT } ) )
		<< "one shot each; no sound while a gun cools down";
	game->ForgetSounds();
	tavesh.SetWeapon( WEAPON_MACHINE_GUN );
	tavesh.SetAmmo( 0 );
	Steps( tavesh, { NOTHING, FIRE } );
	EXPECT_EQ( game->GetGame().GetBullets()->back().GetWeapon(), WEAPON_MACHINE_GUN );
	EXPECT_EQ( tavesh.GetWeapon(), WEAPON_TAVESH ) << "the last round hands back the gun";
	Steps( tavesh, { NOTHING, FIRE } );
	EXPECT_EQ( game->GetPlayedSounds(), ( std::vector<int>{ SOUND_MACHINE_GUN, SOUND_TAVESH_SHOT } ) );
	tavesh.SetWeapon( WEAPON_MACHINE_GUN );
	tavesh.UseAmmo();
	EXPECT_TRUE( tavesh.GetAmmo() == -2 && tavesh.GetWeapon() == WEAPON_MACHINE_GUN )
		<< "only the round that leaves -1 hands back the gun: " << tavesh.GetAmmo();
}

// A new player's gun is cooling down, so the first step with fire held shoots nothing.
TEST_F( PlayerStepTest, LumraFiringWithTheSkillOnDrainsEnergyEveryStepAndHerShotEmptiesIt ) {
	Start( MakeOpenScene() );
	cPlayer &lumra = game->AddPlayer( KIND_LUMRA, 320, 320 );
	Step( lumra, FIRE | SKILL );
	EXPECT_EQ( lumra.GetEnergy(), 3000 ) << "the skill went on after the step's firing";
	Steps( lumra, { FIRE, FIRE } );
	EXPECT_EQ( lumra.GetEnergy(), 2900 ) << "50 a step while cooling down, no bullet needed";
	EXPECT_TRUE( game->GetGame().GetBullets()->empty() );
	Steps( lumra, { NOTHING, FIRE } );
	EXPECT_EQ( game->GetGame().GetBullets()->size(), 1u );
	EXPECT_EQ( lumra.GetEnergy(), 0 ) << "her shot empties the energy";
	EXPECT_FALSE( lumra.IsSkillActive() ) << "the step's own skill update ends the empty skill";
	EXPECT_EQ( game->GetPlayedSounds(), ( std::vector<int>{ SOUND_SKILL, SOUND_LUMRA_SHOT } ) );

	cPlayer &tavesh = game->AddPlayer( KIND_TAVESH, 100, 320 );
	Steps( tavesh, { FIRE | SKILL, NOTHING, FIRE } );
	EXPECT_EQ( game->GetGame().GetBullets()->size(), 2u );
	EXPECT_EQ( tavesh.GetEnergy(), 3000 ) << "tavesh's skill costs nothing while firing";
}

// The player stands in cell (2, 1), with a box to its left and a two-cell door to its right.
TEST_F( PlayerStepTest, LumraOpensDoorsAndBoxesTaveshOnlyBoxes ) {
	struct cUseCase { int32_t kind; int32_t door; std::vector<int> sounds; };
	const cUseCase cases[] = {
		{ KIND_TAVESH, WALK_DOOR, { SOUND_OPEN_BOX } },
		{ KIND_LUMRA, WALK_FLOOR, { SOUND_DOOR_OPEN, SOUND_OPEN_BOX } },
	};
	for ( const cUseCase &c : cases ) {
		Start( MakeScene( { "######", "#B.DD#", "######" } ) );
		cPlayer &player = game->AddPlayer( c.kind, 64, 32 );
		Step( player, USE );
		EXPECT_EQ( WalkCode( 1, 1 ), WALK_FLOOR ) << "kind " << c.kind << " opens the box";
		EXPECT_TRUE( WalkCode( 3, 1 ) == c.door && WalkCode( 4, 1 ) == c.door ) << "kind " << c.kind
			<< ": the door opens whole or not at all";
		Step( player, USE );
		EXPECT_EQ( game->GetPlayedSounds(), c.sounds ) << "kind " << c.kind << "; nothing opens twice";
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
	EXPECT_TRUE( WalkCode( 59, 1 ) == WALK_BOX && WalkCode( 0, 6 ) == WALK_DOOR );
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
	Step( player, NOTHING, &partner );
	EXPECT_TRUE( partner.IsDead() ) << "nor anyone without the use key";
	EXPECT_EQ( Step( player, USE, &partner ), 100 ) << "the step reports the player's own health";
	EXPECT_FALSE( partner.IsDead() );
	EXPECT_EQ( partner.GetHealth(), 26 );
	partner.SetDead( true );
	partner.SetPosition( 330, 325 );
	Step( player, USE, &partner );
	EXPECT_FALSE( partner.IsDead() ) << "in the same cell";
	Step( player, USE, &partner );
	EXPECT_EQ( partner.GetHealth(), 52 ) << "revived once; a partner standing gets nothing";
}

}
