// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/Lockstep.h"

#include <algorithm>
#include <cassert>

cLockstep::cLockstep( uint32_t inputDelay )
	: firstDelay( inputDelay ), delay( inputDelay ), ownEnd( inputDelay ), own( WINDOW ), partner( WINDOW ),
	  acknowledged( inputDelay ), partnerHeld( inputDelay ) {
	assert( delay < WINDOW / 2 );
	for ( uint64_t step = 0; step < delay; step++ ) {
		own[step].step = step;
	}
}

cStepWindow cLockstep::GetWindow() const {
	return { next > WINDOW ? next - WINDOW : 0, next + WINDOW };
}

// A longer delay holds the keys and the mouse's place over the steps it adds; motion, wheel and
// clicks happen once.
void cLockstep::SetDelay( uint32_t newDelay ) {
	assert( newDelay < WINDOW / 2 );
	delay = newDelay;
	Hold( next + delay );
}

void cLockstep::Hold( uint64_t end ) {
	cStepInput held = ownEnd > 0 ? own[( ownEnd - 1 ) % WINDOW].input : cStepInput();
	held.mouse.dx = 0;
	held.mouse.dy = 0;
	held.mouse.wheel = 0;
	while ( ownEnd < end && ownEnd + 1 - acknowledged <= WINDOW ) {
		own[ownEnd % WINDOW] = { ownEnd, held };
		ownEnd++;
	}
}

bool cLockstep::CanStep() const {
	return partnerHeld > next && CanGive( next ) && !IsOutOfStep();
}

void cLockstep::Step( const cStepInput &sampled, cStepInput &ownInput, cStepInput &partnerInput ) {
	assert( CanStep() );
	Give( next, sampled );
	Confirm( ownInput, partnerInput );
}

bool cLockstep::CanGive( uint64_t runStep ) const {
	return std::max( ownEnd, runStep + delay + 1 ) - acknowledged <= WINDOW;
}

void cLockstep::Give( uint64_t runStep, const cStepInput &sampled ) {
	assert( CanGive( runStep ) );
	if ( runStep + delay >= ownEnd ) {
		Hold( runStep + delay );
		own[ownEnd % WINDOW] = { ownEnd, sampled };
		ownEnd++;
	}
}

cStepInput cLockstep::GetOwnInput( uint64_t step ) const {
	assert( step >= next && step < ownEnd );
	return step < firstDelay ? cStepInput() : own[step % WINDOW].input;
}

bool cLockstep::FindPartnerInput( uint64_t step, cStepInput &input ) const {
	if ( step < next || step >= partnerHeld ) {
		return false;
	}
	input = step < firstDelay ? cStepInput() : partner[step % WINDOW].input;
	return true;
}

bool cLockstep::CanConfirm() const {
	return partnerHeld > next && ownEnd > next && !IsOutOfStep();
}

void cLockstep::Confirm( cStepInput &ownInput, cStepInput &partnerInput ) {
	assert( CanConfirm() );
	ownInput = GetOwnInput( next );
	FindPartnerInput( next, partnerInput );
	next++;
}

cNetMessage cLockstep::MakeInputs() const {
	cNetMessage message;
	message.kind = NET_INPUTS;
	message.inputs.acknowledged = partnerHeld;
	message.inputs.first = acknowledged;
	for ( uint64_t step = acknowledged; step < ownEnd && message.inputs.inputs.size() < cPacket::MAX_INPUTS; step++ ) {
		message.inputs.inputs.push_back( own[step % WINDOW].input );
	}
	return message;
}

bool cLockstep::TakeInputs( const cInputRun &run ) {
	if ( run.acknowledged > ownEnd ) {
		return false;
	}
	acknowledged = std::max( acknowledged, run.acknowledged );
	for ( size_t i = 0; i < run.inputs.size(); i++ ) {
		const uint64_t step = run.first + i;
		if ( step >= partnerHeld && step < next + WINDOW ) {
			partner[step % WINDOW] = { step, run.inputs[i] };
		}
	}
	while ( partnerHeld < next + WINDOW && partner[partnerHeld % WINDOW].step == partnerHeld ) {
		lastPartner = partner[partnerHeld % WINDOW].input;
		partnerHeld++;
	}
	return true;
}

cNetMessage cLockstep::TakeOwnHash( const cCheckpoint &checkpoint ) {
	cNetMessage message;
	message.kind = NET_HASH;
	message.hash.step = checkpoint.step;
	message.hash.total = checkpoint.total;
	message.hash.parts = checkpoint.parts;
	message.hash.hasNames = checkpoint.names != ownNames;
	if ( message.hash.hasNames ) {
		message.hash.names = checkpoint.names;
		ownNames = checkpoint.names;
	}
	ownHashes.push_back( checkpoint );
	if ( ownHashes.size() > MAX_PENDING_HASHES ) {
		ownHashes.pop_front();
	}
	Compare();
	return message;
}

bool cLockstep::TakePartnerHash( const cHashReport &report ) {
	if ( report.hasNames ) {
		partnerNames = report.names;
	} else if ( partnerNames.size() != report.parts.size() ) {
		return false;
	}
	cCheckpoint checkpoint;
	checkpoint.step = report.step;
	checkpoint.total = report.total;
	checkpoint.names = partnerNames;
	checkpoint.parts = report.parts;
	partnerHashes.push_back( checkpoint );
	if ( partnerHashes.size() > MAX_PENDING_HASHES ) {
		partnerHashes.pop_front();
	}
	Compare();
	return true;
}

// Each side's hashes come in step order; a hash the other side never matches falls out of its queue.
void cLockstep::Compare() {
	while ( !ownHashes.empty() && !partnerHashes.empty() && !IsOutOfStep() ) {
		const cCheckpoint &mine = ownHashes.front();
		const cCheckpoint &theirs = partnerHashes.front();
		if ( mine.step < theirs.step ) {
			ownHashes.pop_front();
		} else if ( theirs.step < mine.step ) {
			partnerHashes.pop_front();
		} else {
			const std::string part = mine.FindDifference( theirs );
			if ( !part.empty() ) {
				outOfStepAt = mine.step;
				outOfStepPart = part;
			}
			ownHashes.pop_front();
			partnerHashes.pop_front();
		}
	}
}
