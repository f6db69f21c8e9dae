#pragma once

#include <string>

/// What becomes of the drawing when a command, a module or the console itself fails: the application's crash
/// handler is built (cvxcrashhandler.h), which saves it, and the program says what failed and where the
/// recovered drawing lies.
namespace rescue {

/// Takes SIGSEGV, SIGFPE, SIGABRT, SIGILL, SIGBUS, SIGALRM and uncaught exceptions over for the life of the
/// process, whose main thread calls this: a failure is told and rescued, and the program ends with
/// exitcode::rescued or exitcode::notRescued. The rescue runs on the main thread with a stack and memory set
/// aside for it (reservememory.h), on that thread alone. A second failure, or more than a minute, ends it.
void install();
/// Whether install was called.
bool isInstalled();

/// Once the host stands: what a rescue needs of the settings and the library is found and loaded now.
void prepare();
/// When a drawing has been opened: so much memory is set aside as its rescue may take. `bytes` are its
/// file's.
void expect(std::size_t bytes);
/// From now on there is no drawing to be rescued: those that are open are being left.
void endDrawings();

/// For a program that can go on: rescues on the spot, with all of its memory. `what` is a sentence about the
/// failure without its end. The exit code.
int afterFailure(const std::string& what);

/// Keeps where an exception is thrown, for the report of one that ends a command. Called by every throw of
/// the program.
void noteThrow();

} // namespace rescue
