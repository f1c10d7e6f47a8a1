// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/Rollback.h"

#include <cassert>

#include "app/Game.h"
#include "net/Lockstep.h"

cRollback::cRollback( cGame &game, cLockstep &lockstep, tRun run, tConfirm confirm )
	: game( game ), lockstep( lockstep ), run( std::move( run ) ), confirm( std::move( confirm ) ),
	  slots( MAX_GUESS + 1 ) {
}

bool cRollback::CanStep() const {
	return newest - lockstep.GetStep() < MAX_GUESS && lockstep.CanGive( newest ) && !lockstep.IsOutOfStep();
}

bool cRollback::Step( const cStepInput &sampled ) {
	assert( CanStep() );
	lockstep.Give( newest, sampled );
	cSlot &slot = GetSlot( newest );
	slot.own = lockstep.GetOwnInput( newest );
	slot.known = lockstep.FindPartnerInput( newest, slot.partner );
	if ( !slot.known ) {
		slot.partner = lockstep.GetLastPartnerInput();
	}
	const bool going = Play( newest, false );
	newest++;
	ConfirmDue();
	return going;
}

bool cRollback::Play( uint64_t step, bool again ) {
	cSlot &slot = GetSlot( step );
	game.Save( slot.before );
	return run( step, slot.own, slot.partner, again );
}

bool cRollback::Correct() {
	uint64_t wrong = newest;
	for ( uint64_t step = lockstep.GetStep(); step < newest; step++ ) {
		cSlot &slot = GetSlot( step );
		cStepInput real;
		if ( !slot.known && lockstep.FindPartnerInput( step, real ) ) {
			slot.known = true;
			wrong = real != slot.partner && wrong == newest ? step : wrong;
			slot.partner = real;
		} else if ( !slot.known && wrong < step ) {
			slot.partner = lockstep.GetLastPartnerInput();		// a better guess, since it is played again
		}
	}
	bool going = true;
	if ( wrong < newest ) {
		corrections++;
		game.Restore( GetSlot( wrong ).before );
		for ( uint64_t step = wrong; step < newest; step++ ) {
			going = Play( step, true ) && going;
			stepsAgain++;
		}
	}
	ConfirmDue();
	return going;
}

// A step confirmed behind the newest is looked at in its own state, then the newest is put back.
void cRollback::ConfirmDue() {
	while ( lockstep.GetStep() < newest && lockstep.CanConfirm() ) {
		const uint64_t step = lockstep.GetStep();
		cStepInput own;
		cStepInput partner;
		lockstep.Confirm( own, partner );
		assert( GetSlot( step ).known && partner == GetSlot( step ).partner );
		if ( step + 1 == newest ) {
			confirm( step, own, partner );
			continue;
		}
		game.Save( spare );
		game.Restore( GetSlot( step + 1 ).before );
		confirm( step, own, partner );
		game.Restore( spare );
	}
}
