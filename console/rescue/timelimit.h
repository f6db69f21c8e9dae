#pragma once

/// The time that one piece of work may take: an opening, the loading of a module, a command, a saving.
namespace timelimit {

/// From now on every piece has so many seconds; what takes longer is asked to stop as by Ctrl-C, and half a
/// second later ended by SIGALRM, both on the calling thread. False where the system has no timer for it.
bool set(double seconds);
/// A piece of work begins and ends. Nothing happens without a limit.
void begin();
void end();
/// A piece took longer than the limit.
bool isOver();
/// In seconds; 0 without one.
double seconds();

/// A handler of SIGALRM asks here: true when the time is up for good, false when the work was asked to stop.
bool isUpForGood();

} // namespace timelimit
