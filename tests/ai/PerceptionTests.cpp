// How enemies notice players: the distance bands, the field of view of each facing, the line of
// sight over the walk layer, and the alert-state tables of the regular enemies and the boss.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestMaps.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Grid.h"

namespace {

const int32_t EX = 640;		// the enemy's corner in the tests on open ground
const int32_t EY = 640;

std::vector<int32_t> OpenWalk() {
	return std::vector<int32_t>( MAP_CELLS, WALK_FLOOR );
}

// One perception of a fresh enemy facing right at (EX, EY), with tavesh at the given offset.
int32_t PerceiveAt( int32_t kind, int32_t dx, int32_t dy ) {
	const std::vector<int32_t> walk = OpenWalk();
	cEnemy enemy( kind, EX, EY, DIR_RIGHT, 1 );
	cPlayer tavesh( KIND_TAVESH, EX + dx, EY + dy );
	if ( kind == KIND_BOSS ) {
		enemy.PerceiveBoss( tavesh, walk.data() );
	} else {
		enemy.Perceive( tavesh, walk.data() );
	}
	return enemy.GetAiState();
}

TEST( PerceptionTest, DistanceBandsDecideWhetherAPlayerIsNoticed ) {
	struct cCase { int32_t dx, dy, state; const char *what; };
	const cCase cases[] = {
		{ 99, 0, AI_CHASE, "99 pixels: near" },
		{ 100, 0, AI_UNAWARE, "exactly 100 pixels is neither near nor middle" },
		{ 71, 71, AI_UNAWARE, "100.4 pixels truncates to 100" },
		{ 70, 71, AI_CHASE, "99.7 pixels truncates to 99" },
		{ 101, 0, AI_CHASE, "101 pixels: middle" },
		{ 414, 0, AI_CHASE, "414 pixels: the far edge of the middle band" },
		{ 415, 0, AI_UNAWARE, "415 pixels is too far" },
	};
	for ( const cCase &c : cases ) {
		EXPECT_EQ( PerceiveAt( KIND_SOLDIER, c.dx, c.dy ), c.state ) << c.what;
	}
	EXPECT_EQ( PerceiveAt( KIND_BOSS, 474, 0 ), AI_BOSS_WANDER ) << "the boss notices at 474 pixels";
	EXPECT_EQ( PerceiveAt( KIND_BOSS, 475, 0 ), AI_UNAWARE ) << "but not at 475";
	EXPECT_EQ( PerceiveAt( KIND_BOSS, 100, 0 ), AI_BOSS_WANDER ) << "the boss has no gap at 100";
}

TEST( PerceptionTest, FieldOfViewIsTheHalfPlaneTheEnemyFaces ) {
	struct cCase { int32_t facing, dx, dy; bool seen; const char *what; };
	const cCase cases[] = {
		{ DIR_UP, -200, 0, true, "facing up: level on the left" },
		{ DIR_UP, 200, 0, true, "facing up: level on the right" },
		{ DIR_UP, 0, 64, false, "facing up: below" },
		{ DIR_DOWN, 30, 0, true, "facing down: level" },
		{ DIR_DOWN, 0, -64, false, "facing down: above" },
		{ DIR_RIGHT, 0, -200, true, "facing right: straight above" },
		{ DIR_RIGHT, -1, 100, false, "facing right: a pixel behind" },
		{ DIR_LEFT, 0, 100, true, "facing left: straight below" },
		{ DIR_LEFT, 64, 0, false, "facing left: to the right" },
		{ DIR_UP_RIGHT, 200, 0, false, "facing up-right: straight right" },
		{ DIR_UP_RIGHT, 0, -200, false, "facing up-right: straight up" },
		{ DIR_UP_RIGHT, 100, -150, true, "facing up-right: up and right" },
		{ DIR_UP_RIGHT, 150, 100, true, "facing up-right: right and a little down" },
		{ DIR_UP_RIGHT, 100, 100, false, "facing up-right: on the boundary diagonal" },
		{ DIR_UP_RIGHT, -100, -150, true, "facing up-right: up and a little left" },
		{ DIR_UP_RIGHT, -100, 150, false, "facing up-right: behind" },
		{ DIR_UP_LEFT, -150, 100, true, "facing up-left: left and a little down" },
		{ DIR_UP_LEFT, 100, -150, true, "facing up-left: up and a little right" },
		{ DIR_UP_LEFT, 150, -100, false, "facing up-left: mostly right" },
		{ DIR_DOWN_RIGHT, 150, -100, true, "facing down-right: right and a little up" },
		{ DIR_DOWN_RIGHT, -100, 150, true, "facing down-right: down and a little left" },
		{ DIR_DOWN_RIGHT, -150, 100, false, "facing down-right: mostly left" },
		{ DIR_DOWN_LEFT, -150, -100, true, "facing down-left: left and a little up" },
		{ DIR_DOWN_LEFT, 100, 150, true, "facing down-left: down and a little right" },
		{ DIR_DOWN_LEFT, -100, -100, false, "facing down-left: on the boundary diagonal" },
		{ 0, 100, 100, true, "no facing sees all round" },
	};
	const std::vector<int32_t> walk = OpenWalk();
	for ( const cCase &c : cases ) {
		cEnemy enemy( KIND_SOLDIER, EX, EY, c.facing, 1 );
		EXPECT_EQ( enemy.CanSee( EX + c.dx, EY + c.dy, walk.data() ), c.seen ) << c.what;
	}
}

// A street with the enemy at its left end facing right and tavesh 256 pixels away at the right.
TEST( PerceptionTest, SightPassesOverEnemiesAndStopsAtBoxesDoorsAndWalls ) {
	struct cCase { char middle; bool seen; const char *what; };
	const cCase cases[] = {
		{ '.', true, "floor" },
		{ 'E', true, "a cell another enemy stands on" },
		{ 'B', false, "a closed box" },
		{ 'D', false, "a closed door" },
		{ '#', false, "a wall" },
	};
	for ( const cCase &c : cases ) {
		std::string street = ".........";
		street[4] = c.middle;
		const std::vector<int32_t> walk = DrawLayers( { street } ).walk;
		cEnemy enemy( KIND_SOLDIER, 0, 0, DIR_RIGHT, 1 );
		cPlayer tavesh( KIND_TAVESH, 8 * CELL_SIZE, 0 );
		EXPECT_EQ( enemy.CanSee( 8 * CELL_SIZE, 0, walk.data() ), c.seen ) << "across " << c.what;
		enemy.Perceive( tavesh, walk.data() );
		EXPECT_EQ( enemy.GetAiState(), c.seen ? AI_CHASE : AI_UNAWARE ) << "across " << c.what;
	}
}

// From (64, 64) towards (93, 96) the samples fall in (2,2), (2,2), (3,3): the goal cell (2,3) is
// stepped over, and the march runs on over open ground until it leaves the grid.
TEST( PerceptionTest, MarchThatMissesTheGoalCellEndsAtTheGridEdge ) {
	const std::vector<int32_t> walk = OpenWalk();
	cEnemy enemy( KIND_SOLDIER, 64, 64, DIR_DOWN_RIGHT, 1 );
	EXPECT_FALSE( enemy.CanSee( 93, 96, walk.data() ) ) << "the goal cell's corner is skipped";
	EXPECT_TRUE( enemy.CanSee( 96, 96, walk.data() ) ) << "a clean diagonal reaches it";
	EXPECT_FALSE( enemy.CanSee( 64, 64, walk.data() ) ) << "a diagonal facing does not see its own corner";
	cEnemy facingDown( KIND_SOLDIER, 64, 64, DIR_DOWN, 1 );
	EXPECT_TRUE( facingDown.CanSee( 64, 64, walk.data() ) ) << "a straight facing sees a player on its corner";
	// From row 73 towards (31, 2368): samples in (0,73), (0,73), (1,74), (1,74), (1,74), then row 75.
	cEnemy bottom( KIND_SOLDIER, 0, WORLD_HEIGHT - 2 * CELL_SIZE, DIR_DOWN, 1 );
	EXPECT_FALSE( bottom.CanSee( 31, WORLD_HEIGHT - CELL_SIZE, walk.data() ) )
		<< "a march that skips its goal in the bottom row leaves the grid";
}

// Regular enemies: the table of each state, driven by placing the player and the enemy's state.
class RegularPerceptionTest : public testing::Test {
protected:
	RegularPerceptionTest()
		: walk( OpenWalk() ), enemy( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 ),
		tavesh( KIND_TAVESH, EX + 200, EY ), lumra( KIND_LUMRA, EX + 200, EY ) {}

	// One frame as the game runs it for this player.
	void Frame( cPlayer &player ) {
		bool fired = false;
		enemy.Perceive( player, walk.data() );
		enemy.Act( player, bullets, walk.data(), fired );
	}
	// Frames until the enemy stands on a corner again.
	void WalkToCorner( cPlayer &player ) {
		for ( int32_t frame = 0; frame < CELL_SIZE && !enemy.IsOnCorner(); frame++ ) {
			Frame( player );
		}
		ASSERT_TRUE( enemy.IsOnCorner() );
	}

	std::vector<int32_t>	walk;
	tBulletList				bullets;
	cEnemy					enemy;
	cPlayer					tavesh;
	cPlayer					lumra;
};

TEST_F( RegularPerceptionTest, NearPlayerIsAttackedOnlyOnceTheChaserStandsOnACorner ) {
	Frame( tavesh );
	ASSERT_EQ( enemy.GetAiState(), AI_CHASE );
	ASSERT_FALSE( enemy.IsOnCorner() ) << "the first chase frame takes a step";
	tavesh.SetPosition( EX + 90, EY );
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_CHASE ) << "near, but between two cells";
	WalkToCorner( tavesh );
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_ATTACK ) << "near and on a corner";
	tavesh.SetPosition( EX + 300, EY );
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_CHASE ) << "backed off to the middle band";
}

TEST_F( RegularPerceptionTest, PlayerGoingDownEndsAChaseOnlyOnACorner ) {
	Frame( tavesh );
	tavesh.SetDead( true );
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_CHASE ) << "down, but the chaser is between cells";
	WalkToCorner( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_CHASE ) << "the frame's perception came before its step";
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_UNAWARE ) << "down, and the chaser stands on a corner";
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_UNAWARE ) << "a player who is down is not noticed again";
}

TEST_F( RegularPerceptionTest, AttackEndsWhenThePlayerGoesDownOrLumraHides ) {
	tavesh.SetPosition( EX + 50, EY );
	Frame( tavesh );
	WalkToCorner( tavesh );
	Frame( tavesh );
	ASSERT_EQ( enemy.GetAiState(), AI_ATTACK );
	tavesh.SetDead( true );
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_UNAWARE ) << "the attacked player went down";

	cEnemy second( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	lumra.SetPosition( EX + 64, EY );
	bool fired = false;
	second.Perceive( lumra, walk.data() );
	second.Act( lumra, bullets, walk.data(), fired );
	for ( int32_t frame = 0; frame < CELL_SIZE && second.GetAiState() != AI_ATTACK; frame++ ) {
		second.Perceive( lumra, walk.data() );
		second.Act( lumra, bullets, walk.data(), fired );
	}
	ASSERT_EQ( second.GetAiState(), AI_ATTACK );
	lumra.ToggleSkill();
	second.Perceive( lumra, walk.data() );
	EXPECT_EQ( second.GetAiState(), AI_SEARCH ) << "lumra hid while attacked";
}

TEST_F( RegularPerceptionTest, LumraHidingTurnsAChaseIntoASearchThatRunsItsCourse ) {
	Frame( lumra );
	ASSERT_EQ( enemy.GetAiState(), AI_CHASE );
	lumra.ToggleSkill();
	Frame( lumra );
	EXPECT_EQ( enemy.GetAiState(), AI_SEARCH ) << "lumra hid";
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_SEARCH ) << "being seen by a searching enemy does not bring tavesh back into chase";
	lumra.ToggleSkill();
	Frame( lumra );
	EXPECT_EQ( enemy.GetAiState(), AI_CHASE ) << "lumra showed herself in the middle band";
}

TEST_F( RegularPerceptionTest, SearchingEnemyThatIsShotChasesTheShooter ) {
	Frame( lumra );
	lumra.ToggleSkill();
	Frame( lumra );
	ASSERT_EQ( enemy.GetAiState(), AI_SEARCH );
	enemy.SetWasShot( true );
	tavesh.SetPosition( EX - 300, EY + 64 );
	enemy.Perceive( tavesh, walk.data() );
	EXPECT_EQ( enemy.GetAiState(), AI_CHASE ) << "shot while searching";
	EXPECT_FALSE( enemy.WasShot() ) << "the hit has been reacted to";
	EXPECT_EQ( enemy.GetPreviousAiState(), AI_SEARCH );
}

TEST_F( RegularPerceptionTest, SearchEndsInLookingAroundAndThatInUnawareAfterSixtyFrames ) {
	Frame( lumra );
	lumra.ToggleSkill();
	for ( int32_t frame = 0; frame < 400 && enemy.GetAiState() != AI_LOOK_AROUND; frame++ ) {
		Frame( lumra );
	}
	ASSERT_EQ( enemy.GetAiState(), AI_LOOK_AROUND ) << "the search path ended";
	int32_t lastSeenX = 0;
	int32_t lastSeenY = 0;
	enemy.GetLastSeen( lastSeenX, lastSeenY );
	int32_t x = 0;
	int32_t y = 0;
	enemy.GetPosition( x, y );
	EXPECT_EQ( x / CELL_SIZE, lastSeenX / CELL_SIZE ) << "the search ended at the last-seen cell";
	EXPECT_EQ( enemy.GetLookTimer(), 1 ) << "the frame that ended the search looked around once";
	for ( int32_t frame = 0; frame < 59; frame++ ) {
		Frame( lumra );
	}
	EXPECT_EQ( enemy.GetAiState(), AI_LOOK_AROUND ) << "59 frames later";
	EXPECT_EQ( enemy.GetLookTimer(), 60 );
	Frame( lumra );
	EXPECT_EQ( enemy.GetAiState(), AI_UNAWARE ) << "after 60 frames of looking around";
}

TEST_F( RegularPerceptionTest, LookingAroundEnemyTakesUpLumraAgainButNotTavesh ) {
	Frame( lumra );
	lumra.ToggleSkill();
	for ( int32_t frame = 0; frame < 400 && enemy.GetAiState() != AI_LOOK_AROUND; frame++ ) {
		Frame( lumra );
	}
	ASSERT_EQ( enemy.GetAiState(), AI_LOOK_AROUND );
	int32_t x = 0;
	int32_t y = 0;
	enemy.GetPosition( x, y );
	int32_t vx = 0;
	int32_t vy = 0;
	GetDirectionVector( enemy.GetDirection(), vx, vy );
	tavesh.SetPosition( x + vx * 64, y + vy * 64 );
	Frame( tavesh );
	EXPECT_EQ( enemy.GetAiState(), AI_LOOK_AROUND ) << "tavesh in front does not end looking around";
	GetDirectionVector( enemy.GetDirection(), vx, vy );
	lumra.ToggleSkill();
	lumra.SetPosition( x + vx * 64, y + vy * 64 );
	enemy.Perceive( lumra, walk.data() );
	EXPECT_EQ( enemy.GetAiState(), AI_ATTACK ) << "lumra near and in front";
}

// The boss: the wander state holds it while its health is above 100.
class BossPerceptionTest : public testing::Test {
protected:
	BossPerceptionTest()
		: walk( OpenWalk() ), boss( KIND_BOSS, EX, EY, DIR_RIGHT, 1 ), tavesh( KIND_TAVESH, EX + 200, EY ) {}

	std::vector<int32_t>	walk;
	cEnemy					boss;
	cPlayer					tavesh;
};

TEST_F( BossPerceptionTest, WandersUntilWeakenedThenChasesOrAttacks ) {
	boss.PerceiveBoss( tavesh, walk.data() );
	ASSERT_EQ( boss.GetAiState(), AI_BOSS_WANDER );
	boss.PerceiveBoss( tavesh, walk.data() );
	EXPECT_EQ( boss.GetAiState(), AI_BOSS_WANDER ) << "at full health the boss only wanders";
	boss.SetHealth( 101 );
	boss.PerceiveBoss( tavesh, walk.data() );
	EXPECT_EQ( boss.GetAiState(), AI_BOSS_WANDER ) << "101 health";
	boss.SetHealth( 100 );
	boss.PerceiveBoss( tavesh, walk.data() );
	EXPECT_EQ( boss.GetAiState(), AI_CHASE ) << "100 health, player in the middle band";

	cEnemy close( KIND_BOSS, EX, EY, DIR_RIGHT, 1 );
	tavesh.SetPosition( EX + 50, EY );
	close.PerceiveBoss( tavesh, walk.data() );
	close.SetHealth( 60 );
	close.PerceiveBoss( tavesh, walk.data() );
	EXPECT_EQ( close.GetAiState(), AI_ATTACK ) << "weakened, player near, boss on a corner";
}

TEST_F( BossPerceptionTest, GoesBackToWanderingWhenThePlayerIsDownOrHides ) {
	boss.SetHealth( 90 );
	boss.PerceiveBoss( tavesh, walk.data() );
	boss.PerceiveBoss( tavesh, walk.data() );
	ASSERT_EQ( boss.GetAiState(), AI_CHASE );
	tavesh.SetDead( true );
	boss.PerceiveBoss( tavesh, walk.data() );
	EXPECT_EQ( boss.GetAiState(), AI_BOSS_WANDER ) << "player down, boss on a corner";

	cEnemy attacker( KIND_BOSS, EX, EY, DIR_RIGHT, 1 );
	cPlayer lumra( KIND_LUMRA, EX + 50, EY );
	attacker.SetHealth( 90 );
	attacker.PerceiveBoss( lumra, walk.data() );
	attacker.PerceiveBoss( lumra, walk.data() );
	ASSERT_EQ( attacker.GetAiState(), AI_ATTACK );
	lumra.ToggleSkill();
	attacker.PerceiveBoss( lumra, walk.data() );
	EXPECT_EQ( attacker.GetAiState(), AI_BOSS_WANDER ) << "lumra hid from the attacking boss";
}

TEST_F( BossPerceptionTest, IgnoresBeingShotAndNeverSearches ) {
	boss.SetHealth( 90 );
	boss.PerceiveBoss( tavesh, walk.data() );
	boss.SetWasShot( true );
	boss.PerceiveBoss( tavesh, walk.data() );
	EXPECT_EQ( boss.GetAiState(), AI_CHASE );
	EXPECT_TRUE( boss.WasShot() ) << "the boss leaves the flag alone";
	cPlayer lumra( KIND_LUMRA, EX + 200, EY );
	lumra.ToggleSkill();
	boss.PerceiveBoss( lumra, walk.data() );
	EXPECT_EQ( boss.GetAiState(), AI_BOSS_WANDER ) << "where a soldier would search, the boss wanders";
}

}
