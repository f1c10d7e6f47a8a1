// SPDX-License-Identifier: GPL-3.0-or-later
// The step and the frame apart: a frame drawn twice leaves the game as it was and shows the same
// picture; which of the world's pictures a step moves on in each screen; and the frames an idle
// screen saves.

#include <gtest/gtest.h>

#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/FramePicture.h"
#include "app/StateHash.h"
#include "support/TestGame.h"
#include "support/TestMaps.h"
#include "world/Scene.h"

namespace {

const int32_t CAMERA_X = 320;
const int32_t CAMERA_Y = 960;

// A world with one of everything in view, and an item and an enemy just out of view (on the
// view's left edge, which the strict test leaves out). Everyone is walking.
struct cBusyWorld {
	explicit cBusyWorld( cTestGame &test )
		: player( test.AddPlayer( KIND_TAVESH, CAMERA_X + 100, CAMERA_Y + 100 ) ),
		inView( test.AddEnemy( KIND_SOLDIER, CAMERA_X + 320, CAMERA_Y + 64, DIR_DOWN ) ),
		outOfView( test.AddEnemy( KIND_SOLDIER, CAMERA_X, CAMERA_Y + 64, DIR_DOWN ) ) {
		test.GetScene().SetCameraPosition( CAMERA_X, CAMERA_Y );
		test.GetGame().GetItems()->emplace_back( ITEM_HEALTH, CAMERA_X + 200, CAMERA_Y + 200 );
		test.GetGame().GetItems()->emplace_back( ITEM_HEALTH, CAMERA_X, CAMERA_Y + 200 );
		test.GetGame().GetExplosions()->emplace_back( CAMERA_X + 300, CAMERA_Y + 300, true );
		for ( cCharacter *walker : std::initializer_list<cCharacter *>{ &player, &inView, &outOfView } ) {
			walker->SetMoving( true );
		}
	}
	cPlayer &	player;
	cEnemy &	inView;
	cEnemy &	outOfView;
};

}

TEST( StepAndFrameTest, DrawingAFrameTwiceChangesNothingAndShowsTheSamePicture ) {
	for ( int32_t state : { STATE_PLAYING, STATE_DEFEAT, STATE_VICTORY, STATE_PAUSE, STATE_MAIN_MENU } ) {
		cTestGame test( MakeOpenScene() );
		cBusyWorld world( test );
		test.GetGame().SetGameState( state );
		ASSERT_TRUE( test.GetGame().Step() );
		const cStateHash before( test.GetGame() );
		test.GetGame().RenderFrame();
		const std::vector<cRecordingGraphicsBackend::cDrawCall> first = test.GetHeadless().GetGraphics().GetDraws();
		test.GetGame().RenderFrame();
		const std::vector<cRecordingGraphicsBackend::cDrawCall> second = test.GetHeadless().GetGraphics().GetDraws();
		EXPECT_EQ( cStateHash( test.GetGame() ).FindFirstDifference( before ), "" ) << "drawing changed the game in state " << state;
		ASSERT_EQ( first.size(), second.size() ) << "state " << state;
		for ( size_t i = 0; i < first.size(); i++ ) {
			EXPECT_TRUE( first[i].path == second[i].path && first[i].x == second[i].x && first[i].y == second[i].y
						 && first[i].source.left == second[i].source.left && first[i].source.top == second[i].source.top )
				<< "draw " << i << " of " << first[i].path << " differs the second time, state " << state;
		}
	}
}

// Nine steps on each screen, nobody at the keys: what moved on. The pause screen and the menus
// freeze the world; the defeat freezes the enemies and the victory the players, while explosions
// play and items bob on both end screens. An item or an enemy out of view never moves on.
TEST( StepAndFrameTest, WhatAStepMovesOnInEachScreen ) {
	struct cCase {
		int32_t		state;
		int32_t		playerTicks;		// the walk's steps counted towards the next column
		int32_t		enemyTicks;
		int32_t		explosionFrame;		// an impact moves on every third step
		int32_t		bobCounter;
	};
	const int STEPS = 9;
	const cCase cases[] = {
		{ STATE_DEFEAT, 4, 0, 3, STEPS },
		{ STATE_VICTORY, 0, -1, 3, STEPS },		// the victory explodes the enemies at once
		{ STATE_PAUSE, 0, 0, 0, 0 },
		{ STATE_MAIN_MENU, 0, 0, 0, 0 },
	};
	for ( const cCase &c : cases ) {
		cTestGame test( MakeOpenScene() );
		cBusyWorld world( test );
		test.GetGame().SetGameState( c.state );
		for ( int i = 0; i < STEPS; i++ ) {
			ASSERT_TRUE( test.GetGame().Step() );
		}
		const cGame &game = test.GetGame();
		EXPECT_EQ( world.player.GetAnimTicks(), c.playerTicks ) << "the player's walk in state " << c.state;
		if ( c.enemyTicks >= 0 ) {
			EXPECT_EQ( world.inView.GetAnimTicks(), c.enemyTicks ) << "the enemy's walk in state " << c.state;
			EXPECT_EQ( world.outOfView.GetAnimTicks(), 0 ) << "an enemy out of view, state " << c.state;
		}
		EXPECT_EQ( ( *game.GetExplosions() )[0].GetFrame(), c.explosionFrame ) << "the explosion in state " << c.state;
		EXPECT_EQ( ( *game.GetItems() )[0].GetBobCounter(), c.bobCounter ) << "the item in view, state " << c.state;
		EXPECT_EQ( ( *game.GetItems() )[1].GetBobCounter(), 0 ) << "an item out of view, state " << c.state;
	}
}

// A menu or the pause screen with the cursor at rest is drawn twice at first, then once for the
// cursor moving or another screen, twice again for a window event (the picture forgotten), since
// the first frame after it may not fill the window's new size. The world gets every one.
TEST( StepAndFrameTest, AnIdleScreenIsDrawnOnceUntilSomethingChanges ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	cFramePicture picture;
	auto stepAndMaybeDraw = [&]( int steps ) {
		const int before = headless.GetGraphics().GetFrameCount();
		for ( int i = 0; i < steps; i++ ) {
			EXPECT_TRUE( headless.Step() );
			if ( picture.IsChanged( headless.GetGame() ) ) {
				headless.GetGame().RenderFrame();
				picture.Note( headless.GetGame() );
			}
		}
		return headless.GetGraphics().GetFrameCount() - before;
	};
	EXPECT_EQ( stepAndMaybeDraw( 100 ), 2 ) << "the main menu at rest";
	headless.GetInput().SetMousePosition( 100, 100 );
	EXPECT_EQ( stepAndMaybeDraw( 100 ), 1 ) << "the cursor moved once";
	picture.Forget();
	EXPECT_EQ( stepAndMaybeDraw( 100 ), 2 ) << "a window event";
	headless.GetGame().SetGameState( STATE_PAUSE );
	EXPECT_EQ( stepAndMaybeDraw( 100 ), 1 ) << "the pause screen at rest";
	headless.GetGame().SetGameState( STATE_DEFEAT );
	EXPECT_EQ( stepAndMaybeDraw( 10 ), 10 ) << "the world is drawn every step";
}
