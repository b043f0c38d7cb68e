#pragma once
// What the blocking calls of this layer wait with: a clock in seconds and one round of the
// event loop. Both can be replaced per object, so that a caller can put its own pump (or a
// test its own clock) in their place.
namespace velmora {

// Seconds on a steady clock: elapsed times never jump, not even across midnight.
double RelogioPadrao();

// Runs the events that are pending, or waits up to 10 ms for one.
void BombaPadrao();

} // namespace velmora
