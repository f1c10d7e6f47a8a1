// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The places where a player's body can stand, as the bot plans its walks: a lattice of positions
// 8 pixels apart over the whole level, shifted so that a player of a given speed can reach its
// positions exactly, and the searches over it (a whole-level distance field towards a goal, and
// short searches around the player).

#include <cstdint>
#include <vector>

class cScene;

class cWalkLattice {
public:
	static constexpr int32_t STEP = 8;				// in pixels between neighbouring positions
	static constexpr int32_t STRAIGHT_COST = 10;	// a straight and a slanted move take the same frames;
	static constexpr int32_t DIAGONAL_COST = 11;	// the slanted one costs a little more to keep walks straight
	static constexpr int32_t NO_NODE = -1;
	static constexpr int32_t UNREACHED = INT32_MAX;

	// Positions (offsetX + STEP * i, offsetY + STEP * j) with the body inside the world.
						cWalkLattice( const cScene &scene, int32_t offsetX, int32_t offsetY );

	int32_t				GetOffsetX() const { return offsetX; }
	int32_t				GetOffsetY() const { return offsetY; }
	int32_t				GetNodeCount() const { return columns * rows; }
	void				GetPosition( int32_t node, int32_t &x, int32_t &y ) const;
	// The node at the position, or NO_NODE when the position is not one of the lattice's.
	int32_t				FindNode( int32_t x, int32_t y ) const;
	// The up to four nodes at the corners of the lattice square that holds the position (one when
	// the position is a node); only those where the body fits.
	int					GetSurroundingNodes( int32_t x, int32_t y, int32_t nodes[4] ) const;
	// The body fits at the node, as the player step's walk test sees it now.
	bool				IsOpen( int32_t node ) const;
	// The node one move away in a direction code (1 to 8), or NO_NODE when the body cannot make the
	// move: a slanted move also needs both straight moves it is made of.
	int32_t				GetNeighbour( int32_t node, int32_t direction ) const;

	// Costs from the nearest goal node to every node (UNREACHED where none leads), each move
	// costing STRAIGHT_COST or DIAGONAL_COST; searches no further than maxCost.
	void				FillDistances( const std::vector<int32_t> &goals, std::vector<int32_t> &distances,
									   int32_t maxCost = UNREACHED ) const;

private:
	const cScene &		scene;
	int32_t				offsetX;			// in pixels, 0 to STEP - 1
	int32_t				offsetY;
	int32_t				columns;
	int32_t				rows;
};

// A short search from one node, reused from frame to frame: the costs and the way back to the
// start of every node it reached.
class cLocalSearch {
public:
	// Searches the lattice from the start up to maxCost. The reached nodes are listed in the order
	// they were settled.
	void				Run( const cWalkLattice &lattice, int32_t start, int32_t maxCost );
	const std::vector<int32_t> &GetReached() const { return reached; }
	int32_t				GetCost( int32_t node ) const;
	// The node after the start on the way to the node; the node itself when it is the start's
	// neighbour or the start.
	int32_t				GetFirstStep( int32_t node ) const;

private:
	std::vector<int32_t>	costs;
	std::vector<int32_t>	parents;
	std::vector<int32_t>	reached;
	int32_t					start = cWalkLattice::NO_NODE;
};
