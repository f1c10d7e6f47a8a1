// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/Bot.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "actors/ActorTypes.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/Game.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t ROUTE_GOAL_X = 3 * CELL_SIZE;		// the boss's place at the end of the route
const int32_t ROUTE_GOAL_Y = 7 * CELL_SIZE;
const int32_t SPOT_SEARCH_COST = 360;			// in lattice cost: how far the bot looks for a place to shoot from
const int32_t GOAL_FIELD_COST = 1600;			// in lattice cost: how far a walk to a goal may lead
const int32_t NEAR_PICKUP_COST = 160;			// a pickup this near is taken even in a fight
const int32_t PICKUP_COST = 640;
const int SPOT_REFRESH_FRAMES = 6;
const int GOAL_REFRESH_FRAMES = 30;				// doors and boxes may change the ways meanwhile
const int STUCK_FRAMES = 30;
const int UNSTICK_FRAMES = 12;
const int32_t SIGHT_RANGE = 415;				// in pixels, as far as the enemies notice anyone
const int32_t EXPOSURE_COST = 60;				// per other enemy that sees a place to shoot from
const int32_t FIRE_RANGE = 440;					// in pixels: farther targets are not shot at
const int SKILL_DANGER_FRAMES = 12;				// a hit this close and unavoidable calls for tavesh's skill
const int32_t SKILL_MIN_ENERGY = 1000;			// in msec of skill
const int32_t HIDE_HEALTH = 45;					// lumra hides at or below it when pressed
const int32_t HIDE_ENERGY = 2500;				// in msec: only with most of her energy
const int MOVE_COUNT = 9;						// stay, then the eight direction codes
const int PLACE_FRAMES = 6;						// the fought enemy's place is noted this often
const int PLACE_COUNT = 20;						// and so many of them are kept
const int32_t MIN_WANDER = 40;					// in pixels: the span of a walk to and fro that a
const int32_t MAX_WANDER = 200;					// shot's path can sweep
const int32_t BAND_DEPTH_COST = 4;				// per pixel inside the band of a line of fire
const int32_t EDGE_ROOM = 64;					// in pixels from the edge of the view
const int32_t COHESION_X = 320;					// in pixels: two players keep this near, so that the
const int32_t COHESION_Y = 240;					// camera never has to pull one of them into a wall

// What a walk is after; with the place it makes the key under which its distance field is kept.
enum eGoalKind : int64_t {
	GOAL_SPOT = 1, GOAL_ENEMY, GOAL_PARTNER, GOAL_ITEM, GOAL_BOX, GOAL_REGROUP
};

int64_t MakeGoalKey( eGoalKind kind, int64_t place ) {
	return place * 8 + kind;
}

// The direction code of a step, 0 for none.
int32_t GetStepDirection( int32_t dx, int32_t dy ) {
	static const int32_t codes[3][3] = {
		{ DIR_UP_LEFT, DIR_UP, DIR_UP_RIGHT },
		{ DIR_LEFT, 0, DIR_RIGHT },
		{ DIR_DOWN_LEFT, DIR_DOWN, DIR_DOWN_RIGHT },
	};
	return codes[dy + 1][dx + 1];
}

int32_t Sign( int32_t value ) {
	return value > 0 ? 1 : ( value < 0 ? -1 : 0 );
}

// The direction of the walk from one position to another: each axis on its own, as the keys go.
int32_t Steer( int32_t x, int32_t y, int32_t toX, int32_t toY ) {
	return GetStepDirection( Sign( toX - x ), Sign( toY - y ) );
}

// How far apart two directions are, in eighths of a turn (0 to 4).
int32_t GetTurn( int32_t a, int32_t b ) {
	static const int32_t octants[9] = { 0, 2, 6, 0, 4, 1, 3, 7, 5 };
	const int32_t turn = std::abs( octants[a] - octants[b] );
	return std::min( turn, 8 - turn );
}

// How well a move serves the wanted direction: 0 best. A move that goes nowhere counts as staying.
int32_t RateDesire( int32_t wanted, int32_t move ) {
	if ( wanted == 0 ) {
		return move == 0 ? 0 : 2;
	}
	return move == 0 ? 3 : GetTurn( wanted, move );
}

// Boxes and doors; when one opens, the ways planned before it may be shorter now.
int CountClosedCells( const cScene &scene ) {
	const int32_t *walkMap = scene.GetWalkMap();
	int closed = 0;
	for ( int cell = 0; cell < MAP_CELLS; cell++ ) {
		closed += walkMap[cell] == WALK_BOX || walkMap[cell] == WALK_DOOR ? 1 : 0;
	}
	return closed;
}

int32_t GetDistance( int32_t ax, int32_t ay, int32_t bx, int32_t by ) {
	const double dx = static_cast<double>( bx ) - ax;
	const double dy = static_cast<double>( by ) - ay;
	return static_cast<int32_t>( std::sqrt( dx * dx + dy * dy ) );
}

// Lattice cost of walking between two positions (the longer axis decides the frames).
int32_t GetWalkCost( int32_t ax, int32_t ay, int32_t bx, int32_t by ) {
	return std::max( std::abs( bx - ax ), std::abs( by - ay ) ) * cWalkLattice::STRAIGHT_COST / cWalkLattice::STEP;
}

// Shooting from too near gives no time to step out of the answer; from too far the enemy walks
// out of the line before the shot arrives. The boss's bursts want more room than a soldier's shot.
int32_t RateRange( int32_t distance, bool boss ) {
	const int32_t nearest = boss ? 150 : 130;
	if ( distance < 64 ) {
		return 300;
	}
	if ( distance < nearest ) {
		return ( nearest - distance ) * 2;
	}
	return distance <= 320 ? 0 : distance - 320;
}

// Pressed against the edge of the view, where the camera holds the body, a player has half the
// ways out of a shot's path.
int32_t RateRoom( int32_t x, int32_t y, int32_t cameraX, int32_t cameraY ) {
	const int32_t room = std::min( std::min( x - cameraX, cameraX + VIEW_WIDTH - BODY_SIZE - x ),
								   std::min( y - cameraY, cameraY + VIEW_HEIGHT - BODY_SIZE - y ) );
	return room < EDGE_ROOM ? ( EDGE_ROOM - room ) * 2 : 0;
}

}

cBot::cBot( int playerIndex, const cBotOptions &options ) : playerIndex( playerIndex ), options( options ) {
}

cBotKeys cBot::Think( const cGame &game ) {
	cBotKeys keys;
	frame++;
	if ( !situation.Read( game, playerIndex ) || situation.me->IsDead() ) {
		return keys;
	}
	plan = &GetPlan();
	// a reckless bot sees no shot coming, so it steps into them
	const tBulletList none;
	incoming.Forecast( *situation.scene, situation.cameraX, situation.cameraY, options.reckless ? none : *game.GetBullets() );
	for ( const cEnemySighting &enemy : situation.enemies ) {
		// only the wandering boss fires its bursts; chasing or standing, it aims single shots
		if ( enemy.kind == KIND_BOSS && ( enemy.aiState == AI_BOSS_WANDER || enemy.aiState == AI_UNAWARE ) ) {
			incoming.KeepAwayFrom( enemy.x, enemy.y, enemy.vx, enemy.vy );
		}
	}
	cIntent intent = ChooseIntent();
	intent.direction = Unstick( intent.direction );
	bool fire = false;
	int danger = 0;
	const int32_t move = ChooseMove( intent, fire, danger );
	GetDirectionVector( move, keys.dx, keys.dy );
	keys.fire = fire;
	if ( fire ) {
		lastFireFrame = frame;
		shotsFired++;
	}
	keys.skill = ChooseSkill( danger );
	if ( keys.skill ) {
		lastSkillFrame = frame;
		skillPresses++;
	}
	keys.use = intent.use && ( OpensDoors() || !IsNextToDoor() );
	lastX = situation.x;
	lastY = situation.y;
	return keys;
}

// A player of speed 2 keeps the evenness of its position, one of speed 4 its remainder by 4: the
// lattice is shifted by that remainder so that its positions are exactly reachable.
cBot::cPlan &cBot::GetPlan() {
	const int closed = CountClosedCells( *situation.scene );
	if ( situation.scene != planScene || closed != closedCells ) {
		plans.clear();
		planScene = situation.scene;
		closedCells = closed;
		goalKey = -1;
	}
	const int32_t speed = std::max( situation.me->GetSpeed(), 1 );
	const std::pair<int32_t, int32_t> offset( situation.x % speed, situation.y % speed );
	cPlan &found = plans[offset];
	if ( !found.lattice ) {
		found.lattice = std::make_unique<cWalkLattice>( *situation.scene, offset.first, offset.second );
		int32_t nodes[4];
		const int count = found.lattice->GetSurroundingNodes( ROUTE_GOAL_X, ROUTE_GOAL_Y, nodes );
		found.lattice->FillDistances( std::vector<int32_t>( nodes, nodes + count ), found.route );
	}
	return found;
}

cBot::cIntent cBot::ChooseIntent() {
	cIntent intent;
	if ( Regroup( intent ) || CollectPickup( intent, NEAR_PICKUP_COST ) || Fight( intent ) || Revive( intent )
		 || CollectPickup( intent, PICKUP_COST ) || OpenNearBox( intent ) ) {
		return intent;
	}
	FollowRoute( intent );
	return intent;
}

// The enemy in view to deal with first: the nearest, sooner one that is after a player, sooner
// the boss (its fall ends the game), and the one already fought unless another is much nearer.
int cBot::ChooseTarget() const {
	int best = -1;
	int32_t bestScore = INT32_MAX;
	for ( size_t i = 0; i < situation.enemies.size(); i++ ) {
		const cEnemySighting &enemy = situation.enemies[i];
		if ( !enemy.inView ) {
			continue;
		}
		int32_t score = GetDistance( situation.x, situation.y, enemy.x, enemy.y );
		score -= enemy.alerted ? 80 : 0;
		score -= enemy.kind == KIND_BOSS ? 120 : 0;
		score -= enemy.enemy == targetEnemy ? 100 : 0;
		if ( score < bestScore ) {
			bestScore = score;
			best = static_cast<int>( i );
		}
	}
	return best;
}

// Walks to a place from which a shot reaches the enemy and waits there for the moment to fire;
// with no such place near, walks towards the enemy.
bool cBot::Fight( cIntent &intent ) {
	target = ChooseTarget();
	if ( target < 0 ) {
		targetEnemy = nullptr;
		return false;
	}
	RememberTargetPlace();
	if ( situation.enemies[target].enemy != targetEnemy || frame - spotFrame >= SPOT_REFRESH_FRAMES ) {
		targetEnemy = situation.enemies[target].enemy;
		spot = FindFiringSpot( target );
		spotFrame = frame;
	}
	intent.target = target;
	if ( IsHiding() ) {
		intent.direction = Retreat();
		return true;
	}
	if ( spot != cWalkLattice::NO_NODE ) {
		int32_t sx = 0;
		int32_t sy = 0;
		plan->lattice->GetPosition( spot, sx, sy );
		intent.direction = sx == situation.x && sy == situation.y
			? 0 : StepTowards( { spot }, MakeGoalKey( GOAL_SPOT, spot ), SPOT_SEARCH_COST * 2 );
		return true;
	}
	const cEnemySighting &enemy = situation.enemies[target];
	int32_t cellX = 0;
	int32_t cellY = 0;
	GetBodyCell( enemy.x, enemy.y, cellX, cellY );
	std::vector<int32_t> goals;
	CollectCellNodes( cellX, cellY, goals );
	intent.direction = StepTowards( goals, MakeGoalKey( GOAL_ENEMY, CellIndex( cellX, cellY ) ), GOAL_FIELD_COST );
	return true;
}

// Every few frames the place of the enemy fought, for a while back.
void cBot::RememberTargetPlace() {
	const cEnemySighting &enemy = situation.enemies[target];
	if ( enemy.enemy != targetEnemy ) {
		targetPlaces.clear();
	}
	if ( frame % PLACE_FRAMES != 0 ) {
		return;
	}
	targetPlaces.push_back( enemy.x );
	targetPlaces.push_back( enemy.y );
	if ( static_cast<int>( targetPlaces.size() ) > 2 * PLACE_COUNT ) {
		targetPlaces.erase( targetPlaces.begin(), targetPlaces.begin() + 2 );
	}
}

// An enemy that keeps walking to and fro over a small area, as the boss does between its bursts,
// is hard to meet where a guess of its walk puts it; a shot whose path crosses most of the places
// it has been meets it wherever it is.
bool cBot::SweepsTarget( int32_t x, int32_t y, int32_t direction ) const {
	if ( static_cast<int>( targetPlaces.size() ) < 2 * PLACE_COUNT || direction < DIR_UP || direction > DIR_DOWN_LEFT ) {
		return false;
	}
	int32_t left = INT32_MAX, right = INT32_MIN, top = INT32_MAX, bottom = INT32_MIN;
	for ( size_t i = 0; i < targetPlaces.size(); i += 2 ) {
		left = std::min( left, targetPlaces[i] );
		right = std::max( right, targetPlaces[i] );
		top = std::min( top, targetPlaces[i + 1] );
		bottom = std::max( bottom, targetPlaces[i + 1] );
	}
	const int32_t spread = std::max( right - left, bottom - top );
	if ( spread < MIN_WANDER || spread > MAX_WANDER ) {
		return false;
	}
	return lineOfFire.CountCrossed( x, y, direction, targetPlaces ) * 4 >= PLACE_COUNT * 3;
}

int32_t cBot::FindFiringSpot( int targetIndex ) {
	const int32_t start = GetNearestNode();
	if ( start == cWalkLattice::NO_NODE ) {
		return cWalkLattice::NO_NODE;
	}
	search.Run( *plan->lattice, start, SPOT_SEARCH_COST );
	int32_t best = cWalkLattice::NO_NODE;
	int32_t bestScore = INT32_MAX;
	for ( int32_t node : search.GetReached() ) {
		const int32_t score = ScoreSpot( node, targetIndex, search.GetCost( node ) );
		if ( score < bestScore ) {
			bestScore = score;
			best = node;
		}
	}
	return best;
}

// INT32_MAX when no shot from the place reaches the enemy; otherwise the walk there, the range
// and the other enemies that would see the player standing there.
int32_t cBot::ScoreSpot( int32_t node, int targetIndex, int32_t cost ) const {
	int32_t qx = 0;
	int32_t qy = 0;
	plan->lattice->GetPosition( node, qx, qy );
	if ( qx < situation.cameraX || qx > situation.cameraX + VIEW_WIDTH - BODY_SIZE || qy < situation.cameraY
		 || qy > situation.cameraY + VIEW_HEIGHT - BODY_SIZE ) {
		return INT32_MAX;		// the camera would hold the player back
	}
	if ( !IsNearPartner( qx, qy ) ) {
		return INT32_MAX;
	}
	const cEnemySighting &enemy = situation.enemies[targetIndex];
	const int32_t aim = GetAimDirection( qx, qy, enemy.x, enemy.y );
	const int32_t range = GetDistance( qx, qy, enemy.x, enemy.y );
	if ( aim == 0 || range > FIRE_RANGE
		 || ( !lineOfFire.Hits( qx, qy, aim, targetIndex ) && !SweepsTarget( qx, qy, aim ) ) ) {
		return INT32_MAX;
	}
	int32_t score = cost + RateRange( range, enemy.kind == KIND_BOSS )
		+ RateRoom( qx, qy, situation.cameraX, situation.cameraY );
	if ( enemy.kind == KIND_BOSS ) {
		// its bursts come back along every line it can be shot along: stand at the line's edge
		score += GetLineDepth( qx, qy, enemy.x, enemy.y, aim ) * BAND_DEPTH_COST;
	}
	for ( size_t i = 0; i < situation.enemies.size(); i++ ) {
		const cEnemySighting &other = situation.enemies[i];
		if ( static_cast<int>( i ) != targetIndex && GetDistance( qx, qy, other.x, other.y ) < SIGHT_RANGE
			 && HasClearSight( *situation.scene, other.x, other.y, qx, qy ) ) {
			score += EXPOSURE_COST;
		}
	}
	return score;
}

// In a game for two, the camera follows the player furthest back and pulls the other into the
// view, through walls if need be: the one ahead walks back to its partner when they drift apart.
bool cBot::Regroup( cIntent &intent ) {
	const cPlayer *partner = situation.partner;
	if ( partner == nullptr || partner->IsDead() || IsNearPartner( situation.x, situation.y ) ) {
		return false;
	}
	int32_t px = 0;
	int32_t py = 0;
	partner->GetPosition( px, py );
	if ( GetFieldCost( plan->route, situation.x, situation.y ) > GetFieldCost( plan->route, px, py ) ) {
		return false;		// the one behind goes on
	}
	int32_t cellX = 0;
	int32_t cellY = 0;
	GetBodyCell( px, py, cellX, cellY );
	std::vector<int32_t> goals;
	CollectCellNodes( cellX, cellY, goals );
	intent.direction = StepTowards( goals, MakeGoalKey( GOAL_REGROUP, CellIndex( cellX, cellY ) ), GOAL_FIELD_COST );
	return true;
}

bool cBot::IsNearPartner( int32_t x, int32_t y ) const {
	const cPlayer *partner = situation.partner;
	if ( partner == nullptr || partner->IsDead() ) {
		return true;
	}
	int32_t px = 0;
	int32_t py = 0;
	partner->GetPosition( px, py );
	return std::abs( x - px ) <= COHESION_X && std::abs( y - py ) <= COHESION_Y;
}

// Stands on or beside the partner's cell and holds the use key.
bool cBot::Revive( cIntent &intent ) {
	if ( situation.partner == nullptr || !situation.partner->IsDead() ) {
		return false;
	}
	int32_t px = 0;
	int32_t py = 0;
	situation.partner->GetPosition( px, py );
	int32_t partnerX = 0;
	int32_t partnerY = 0;
	GetBodyCell( px, py, partnerX, partnerY );
	int32_t cellX = 0;
	int32_t cellY = 0;
	GetBodyCell( situation.x, situation.y, cellX, cellY );
	if ( std::abs( cellX - partnerX ) + std::abs( cellY - partnerY ) <= 1 && !IsNextToDoor() ) {
		intent.use = true;
		return true;
	}
	static const int32_t around[5][2] = { { 0, 0 }, { 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 } };
	std::vector<int32_t> goals;
	for ( const int32_t *step : around ) {
		if ( !IsDoorBeside( *situation.scene, partnerX + step[0], partnerY + step[1] ) ) {
			CollectCellNodes( partnerX + step[0], partnerY + step[1], goals );
		}
	}
	intent.direction = StepTowards( goals, MakeGoalKey( GOAL_PARTNER, CellIndex( partnerX, partnerY ) ), GOAL_FIELD_COST );
	return true;
}

bool cBot::WantsItem( const cItemSighting &item ) const {
	const cPlayer &me = *situation.me;
	const bool tavesh = me.GetKind() == KIND_TAVESH;
	switch ( item.kind ) {
		case ITEM_HEALTH:			return me.GetHealth() < cCharacter::MAX_HEALTH;
		case ITEM_AMMO:				return tavesh;
		case ITEM_TAVESH_ENERGY:	return tavesh;
		case ITEM_LUMRA_ENERGY:		return !tavesh;
		case ITEM_SPEED:			return me.GetSpeed() < 4;
		default:					return false;
	}
}

// The nearest wanted item in view, when the walk to it is short enough.
bool cBot::CollectPickup( cIntent &intent, int32_t reach ) {
	const cItemSighting *best = nullptr;
	int32_t bestDistance = INT32_MAX;
	for ( const cItemSighting &item : situation.items ) {
		const int32_t distance = GetDistance( situation.x, situation.y, item.x, item.y );
		if ( WantsItem( item ) && situation.IsInView( item.x, item.y ) && IsNearPartner( item.x, item.y )
			 && distance < bestDistance ) {
			bestDistance = distance;
			best = &item;
		}
	}
	if ( best == nullptr || bestDistance * cWalkLattice::STRAIGHT_COST / cWalkLattice::STEP > reach ) {
		return false;
	}
	std::vector<int32_t> goals;
	CollectCellNodes( best->cellX, best->cellY, goals );
	const int32_t direction = StepTowards( goals, MakeGoalKey( GOAL_ITEM, CellIndex( best->cellX, best->cellY ) ), GOAL_FIELD_COST );
	if ( GetFieldCost( goalField, situation.x, situation.y ) > reach ) {
		return false;
	}
	intent.direction = direction;
	return true;
}

bool cBot::OpensDoors() const {
	return options.openDoors && situation.me->GetKind() == KIND_LUMRA;
}

// A closed box in view with a free side (or a door, for lumra told to open them): walk beside it
// and press the use key.
bool cBot::OpenNearBox( cIntent &intent ) {
	static const int32_t sides[4][2] = { { 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 } };
	const cScene &scene = *situation.scene;
	int32_t cellX = 0;
	int32_t cellY = 0;
	GetBodyCell( situation.x, situation.y, cellX, cellY );
	for ( int32_t row = scene.GetCameraCellY(); row <= scene.GetCameraCellY() + VIEW_HEIGHT / CELL_SIZE; row++ ) {
		for ( int32_t column = scene.GetCameraCellX(); column <= scene.GetCameraCellX() + VIEW_WIDTH / CELL_SIZE; column++ ) {
			const int32_t code = scene.GetWalkCode( column, row );
			if ( code != WALK_BOX && !( code == WALK_DOOR && OpensDoors() ) ) {
				continue;
			}
			std::vector<int32_t> goals;
			for ( const int32_t *side : sides ) {
				const int32_t sideX = column + side[0];
				const int32_t sideY = row + side[1];
				if ( sideX == cellX && sideY == cellY && ( OpensDoors() || !IsNextToDoor() ) ) {
					intent.use = true;
					return true;
				}
				if ( OpensDoors() || !IsDoorBeside( scene, sideX, sideY ) ) {
					CollectCellNodes( sideX, sideY, goals );
				}
			}
			intent.direction = StepTowards( goals, MakeGoalKey( GOAL_BOX, CellIndex( column, row ) ), GOAL_FIELD_COST );
			if ( GetFieldCost( goalField, situation.x, situation.y ) <= PICKUP_COST ) {
				return true;
			}
		}
	}
	return false;
}

// Along the route towards the boss; in a game for two, no further ahead of a standing partner
// than the lead allows, since the camera keeps both in one view.
void cBot::FollowRoute( cIntent &intent ) {
	intent.direction = StepAlong( plan->route );
	const cPlayer *partner = situation.partner;
	if ( partner == nullptr || partner->IsDead() ) {
		return;
	}
	int32_t px = 0;
	int32_t py = 0;
	partner->GetPosition( px, py );
	const int32_t mine = GetFieldCost( plan->route, situation.x, situation.y );
	const int32_t theirs = GetFieldCost( plan->route, px, py );
	if ( theirs != cWalkLattice::UNREACHED && mine != cWalkLattice::UNREACHED && theirs - mine > options.leadLimit ) {
		intent.direction = 0;
	}
}

// On a lattice position: to the neighbour nearest the goal. Between positions (mid-step, or put
// off the lattice by the camera): to the surrounding position with the cheapest way on.
int32_t cBot::StepAlong( const std::vector<int32_t> &field ) const {
	const cWalkLattice &lattice = *plan->lattice;
	int32_t nodes[4];
	const int count = lattice.GetSurroundingNodes( situation.x, situation.y, nodes );
	int32_t best = cWalkLattice::NO_NODE;
	int32_t bestCost = cWalkLattice::UNREACHED;
	const bool onNode = count == 1 && lattice.FindNode( situation.x, situation.y ) == nodes[0];
	if ( onNode ) {
		bestCost = field[nodes[0]];
		for ( int32_t direction = DIR_UP; direction <= DIR_DOWN_LEFT; direction++ ) {
			const int32_t next = lattice.GetNeighbour( nodes[0], direction );
			if ( next != cWalkLattice::NO_NODE && field[next] < bestCost ) {
				bestCost = field[next];
				best = next;
			}
		}
	} else {
		for ( int i = 0; i < count; i++ ) {
			int32_t nx = 0;
			int32_t ny = 0;
			lattice.GetPosition( nodes[i], nx, ny );
			if ( field[nodes[i]] != cWalkLattice::UNREACHED ) {
				const int32_t cost = field[nodes[i]] + GetWalkCost( situation.x, situation.y, nx, ny );
				if ( cost < bestCost ) {
					bestCost = cost;
					best = nodes[i];
				}
			}
		}
	}
	if ( best == cWalkLattice::NO_NODE ) {
		return 0;
	}
	int32_t tx = 0;
	int32_t ty = 0;
	lattice.GetPosition( best, tx, ty );
	return Steer( situation.x, situation.y, tx, ty );
}

// The distance field towards the goals is kept while they stay the same.
int32_t cBot::StepTowards( const std::vector<int32_t> &goals, int64_t key, int32_t maxCost ) {
	const int64_t fullKey = key * 64 + plan->lattice->GetOffsetX() * 8 + plan->lattice->GetOffsetY();
	if ( fullKey != goalKey || frame - goalFrame >= GOAL_REFRESH_FRAMES ) {
		plan->lattice->FillDistances( goals, goalField, maxCost );
		goalKey = fullKey;
		goalFrame = frame;
	}
	return StepAlong( goalField );
}

int32_t cBot::GetNearestNode() const {
	int32_t nodes[4];
	const int count = plan->lattice->GetSurroundingNodes( situation.x, situation.y, nodes );
	int32_t best = cWalkLattice::NO_NODE;
	int32_t bestCost = INT32_MAX;
	for ( int i = 0; i < count; i++ ) {
		int32_t nx = 0;
		int32_t ny = 0;
		plan->lattice->GetPosition( nodes[i], nx, ny );
		const int32_t cost = GetWalkCost( situation.x, situation.y, nx, ny );
		if ( cost < bestCost ) {
			bestCost = cost;
			best = nodes[i];
		}
	}
	return best;
}

// The cost of the way on from a position that need not lie on the lattice.
int32_t cBot::GetFieldCost( const std::vector<int32_t> &field, int32_t x, int32_t y ) const {
	int32_t nodes[4];
	const int count = plan->lattice->GetSurroundingNodes( x, y, nodes );
	int32_t best = cWalkLattice::UNREACHED;
	for ( int i = 0; i < count; i++ ) {
		if ( field.empty() || field[nodes[i]] == cWalkLattice::UNREACHED ) {
			continue;
		}
		int32_t nx = 0;
		int32_t ny = 0;
		plan->lattice->GetPosition( nodes[i], nx, ny );
		best = std::min( best, field[nodes[i]] + GetWalkCost( x, y, nx, ny ) );
	}
	return best;
}

// The lattice positions whose body has its centre in the cell.
void cBot::CollectCellNodes( int32_t cellX, int32_t cellY, std::vector<int32_t> &nodes ) const {
	const cWalkLattice &lattice = *plan->lattice;
	const int32_t half = BODY_SIZE / 2;
	const int32_t firstX = cellX * CELL_SIZE - half;
	const int32_t firstY = cellY * CELL_SIZE - half;
	for ( int32_t y = firstY; y < firstY + CELL_SIZE; y++ ) {
		for ( int32_t x = firstX; x < firstX + CELL_SIZE; x++ ) {
			const int32_t node = lattice.FindNode( x, y );
			if ( node != cWalkLattice::NO_NODE && lattice.IsOpen( node ) ) {
				nodes.push_back( node );
			}
		}
	}
}

bool cBot::IsNextToDoor() const {
	int32_t cellX = 0;
	int32_t cellY = 0;
	GetBodyCell( situation.x, situation.y, cellX, cellY );
	return IsDoorBeside( *situation.scene, cellX, cellY );
}

// The use key looks at the four cells beside the player's; lumra would open a door among them.
bool cBot::IsDoorBeside( const cScene &scene, int32_t cellX, int32_t cellY ) {
	return scene.GetWalkCode( cellX + 1, cellY ) == WALK_DOOR || scene.GetWalkCode( cellX - 1, cellY ) == WALK_DOOR
		|| scene.GetWalkCode( cellX, cellY + 1 ) == WALK_DOOR || scene.GetWalkCode( cellX, cellY - 1 ) == WALK_DOOR;
}

// Safe moves first; among them one that fires a hit when the trigger is ready; then the one that
// serves the intent best. With no safe move, the one hit latest.
int32_t cBot::ChooseMove( const cIntent &intent, bool &fire, int &danger ) {
	int dangers[MOVE_COUNT];
	bool hits[MOVE_COUNT];
	RateMoves( dangers, hits );
	const bool ready = frame - lastFireFrame >= options.tapFrames && !IsHiding();
	int best = 0;
	int64_t bestRank = INT64_MAX;
	for ( int move = 0; move < MOVE_COUNT; move++ ) {
		const int64_t unsafe = dangers[move] == 0 ? 0 : 1;
		const int64_t lateness = dangers[move] == 0 ? 0 : cIncomingFire::HORIZON - dangers[move];
		const int64_t miss = ready && hits[move] ? 0 : 1;
		const int64_t rank = ( ( unsafe * 64 + lateness ) * 2 + miss ) * 8 + RateDesire( intent.direction, move );
		if ( rank < bestRank ) {
			bestRank = rank;
			best = move;
		}
	}
	fire = ready && hits[best];
	danger = dangers[best];
	return best;
}

// For each move (0 stays, 1 to 8 the direction codes): the latest first hit over the ways to go on
// after it (0 when one of them is never hit), and whether a shot fired with it hits an enemy.
void cBot::RateMoves( int danger[MOVE_COUNT], bool hits[MOVE_COUNT] ) {
	const cScene &scene = *situation.scene;
	const int32_t speed = situation.me->GetSpeed();
	cBodyTrack track;
	for ( int move = 0; move < MOVE_COUNT; move++ ) {
		int32_t dx = 0;
		int32_t dy = 0;
		GetDirectionVector( move, dx, dy );
		cIncomingFire::Walk( scene, situation.x, situation.y, speed, dx, dy, 1, 0, 0, 1, track );
		const bool moved = track.xs[0] != situation.x || track.ys[0] != situation.y;
		int frames = 0;
		const int32_t facing = moved ? move : situation.me->GetDirection();
		hits[move] = lineOfFire.FindTarget( track.xs[0], track.ys[0], facing, frames ) >= 0
			|| SweepsTarget( track.xs[0], track.ys[0], facing );
		danger[move] = 0;
		for ( int then = 0; then < MOVE_COUNT && !incoming.IsEmpty(); then++ ) {
			int32_t thenX = 0;
			int32_t thenY = 0;
			GetDirectionVector( then, thenX, thenY );
			cIncomingFire::Walk( scene, situation.x, situation.y, speed, dx, dy, 1, thenX, thenY, cIncomingFire::HORIZON, track );
			const int first = incoming.FindFirstHit( track );
			if ( first == 0 ) {
				danger[move] = 0;
				break;
			}
			danger[move] = std::max( danger[move], first );
		}
	}
}

// tavesh halves the damage of a hit he cannot avoid, and saves the energy while nothing flies
// at him; lumra hides when low on health with enemies after her, and shows herself again once
// none is.
bool cBot::ChooseSkill( int danger ) const {
	const cPlayer &me = *situation.me;
	if ( frame - lastSkillFrame < 2 ) {
		return false;		// the key must be seen up between two presses
	}
	int hunters = 0;
	for ( const cEnemySighting &enemy : situation.enemies ) {
		hunters += enemy.inView && ( enemy.aiState == AI_CHASE || enemy.aiState == AI_ATTACK ) ? 1 : 0;
	}
	if ( me.GetKind() == KIND_TAVESH ) {
		if ( !me.IsSkillActive() ) {
			return danger > 0 && danger <= SKILL_DANGER_FRAMES && me.GetEnergy() >= SKILL_MIN_ENERGY;
		}
		return incoming.IsEmpty() && hunters == 0;
	}
	if ( !me.IsSkillActive() ) {
		return me.GetHealth() <= HIDE_HEALTH && hunters > 0 && me.GetEnergy() >= HIDE_ENERGY;
	}
	return hunters == 0 && incoming.IsEmpty();
}

bool cBot::IsHiding() const {
	return situation.me->GetKind() == KIND_LUMRA && situation.me->IsSkillActive();
}

// Away from the enemies in view, the way the route came.
int32_t cBot::Retreat() const {
	int32_t awayX = 0;
	int32_t awayY = 0;
	for ( const cEnemySighting &enemy : situation.enemies ) {
		if ( enemy.inView ) {
			awayX += situation.x - enemy.x;
			awayY += situation.y - enemy.y;
		}
	}
	const int32_t length = std::max( std::abs( awayX ), std::abs( awayY ) );
	if ( length == 0 ) {
		return 0;
	}
	const int32_t dx = std::abs( awayX ) * 2 >= length ? Sign( awayX ) : 0;
	const int32_t dy = std::abs( awayY ) * 2 >= length ? Sign( awayY ) : 0;
	return GetStepDirection( dx, dy );
}

// A player that does not move for a while although it wants to tries another way for a moment.
int32_t cBot::Unstick( int32_t direction ) {
	if ( unstickFrames > 0 ) {
		unstickFrames--;
		return unstickDirection;
	}
	const bool still = situation.x == lastX && situation.y == lastY;
	stillFrames = direction != 0 && still ? stillFrames + 1 : 0;
	if ( stillFrames < STUCK_FRAMES ) {
		return direction;
	}
	stillFrames = 0;
	unstickFrames = UNSTICK_FRAMES;
	unstickDirection = 1 + ( frame * 5 + playerIndex * 3 ) % 8;
	return unstickDirection;
}
