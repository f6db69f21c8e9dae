#pragma once

/// Ctrl-C (SIGINT) and the end request of the system (SIGTERM). The first one only raises a flag, which
/// commands and the prompt look at; the second ends the program at once.
namespace interrupt {

/// Takes the signals over for the life of the process.
void install();
bool isRequested();
/// Readable from the first signal on, for a poll beside the input; -1 where it could not be made.
int descriptor();

} // namespace interrupt
