#pragma once

/// Ctrl-C (SIGINT) and the end request of the system (SIGTERM). The first one only raises a flag, which
/// commands and the prompt look at; another one while the flag is up ends the program at once.
namespace interrupt {

/// Takes the signals over for the life of the process.
void install();
/// A wish to stop or an end request is there.
bool isRequested();
/// The system wants the program to end, which no prompt can answer.
bool isEndRequested();
/// The wish to stop, as by Ctrl-C; a signal handler may call this.
void request();
/// The wish to stop is answered: the next Ctrl-C is a first one again. An end request stays.
void withdraw();
/// Readable while a request is there, for a poll beside the input; -1 where it could not be made.
int descriptor();

} // namespace interrupt
