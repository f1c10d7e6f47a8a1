// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/Rollback.h"

#include <algorithm>
#include <cassert>

#include "app/Game.h"
#include "net/Lockstep.h"

cRollback::cRollback( cGame &game, cLockstep &lockstep, tRun run, tConfirm confirm )
	: game( game ), lockstep( lockstep ), run( std::move( run ) ), confirm( std::move( confirm ) ),
	  slots( MAX_GUESS + 1 ) {
}

void cRollback::SetInput( cOnlineInput *input ) {
	this->input = input;
	if ( input != nullptr ) {
		input->SetHolding( true );
	}
}

uint32_t cRollback::ChooseLocalDelay( uint32_t roundTrip ) {
	return std::min( roundTrip / LOCAL_DELAY_TRIP, MAX_LOCAL_DELAY );
}

bool cRollback::CanStep() const {
	return newest - lockstep.GetStep() < MAX_GUESS && lockstep.CanGive( newest ) && !lockstep.IsOutOfStep() &&
		   ( newest == 0 || GetSlot( newest - 1 ).going );
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
	Play( newest, false, false );
	newest++;
	ConfirmDue();
	return !ended;
}

// A step played again right after going back to its save has that save already.
void cRollback::Play( uint64_t step, bool again, bool saved ) {
	cSlot &slot = GetSlot( step );
	if ( !saved ) {
		game.Save( slot.before );
		if ( recorder != nullptr ) {
			recorder->Mark( slot.recorded );
		}
	}
	if ( input != nullptr ) {
		input->TakeRequests();		// a restore's, not a step's
	}
	slot.going = run( step, slot.own, slot.partner, again );
	if ( input != nullptr ) {
		slot.requests = input->TakeRequests();
	}
}

void cRollback::GoBack( uint64_t step ) {
	game.Restore( GetSlot( step ).before );
	if ( recorder != nullptr ) {
		recorder->Rewind( GetSlot( step ).recorded );
	}
}

void cRollback::BeQuiet( bool on ) const {
	if ( quiet ) {
		quiet( on );
	}
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
	if ( wrong < newest ) {
		corrections++;
		BeQuiet( true );
		GoBack( wrong );
		uint64_t step = wrong;
		for ( ; step < newest && ( step == wrong || GetSlot( step - 1 ).going ); step++ ) {
			Play( step, true, step == wrong );
			stepsAgain++;
		}
		newest = step;			// a step that ends the game now ends the steps played
		BeQuiet( false );
	}
	ConfirmDue();
	return !ended;
}

// A step confirmed behind the newest is looked at in its own state, then the newest is put back.
void cRollback::ConfirmDue() {
	while ( !ended && lockstep.GetStep() < newest && lockstep.CanConfirm() ) {
		const uint64_t step = lockstep.GetStep();
		cStepInput own;
		cStepInput partner;
		lockstep.Confirm( own, partner );
		assert( GetSlot( step ).known && partner == GetSlot( step ).partner );
		ended = !GetSlot( step ).going;
		if ( input != nullptr ) {
			input->Do( GetSlot( step ).requests );
		}
		if ( step + 1 == newest || ( looks && !looks( step ) ) ) {
			confirm( step, own, partner );
			continue;
		}
		BeQuiet( true );
		game.Save( spare );
		game.Restore( GetSlot( step + 1 ).before );
		confirm( step, own, partner );
		game.Restore( spare );
		BeQuiet( false );
	}
}

void cRollback::GoBackToConfirmed() {
	if ( lockstep.GetStep() < newest ) {
		BeQuiet( true );
		GoBack( lockstep.GetStep() );
		BeQuiet( false );
		newest = lockstep.GetStep();
	}
}
