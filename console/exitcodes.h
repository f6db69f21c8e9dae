#pragma once

/// How the program ends. The numbers are what scripts test; docs/console.md and --help show the same table.
namespace exitcode {
constexpr int ok = 0;
constexpr int commandFailed = 1;
constexpr int usage = 2;
constexpr int drawingUnreadable = 3;
constexpr int moduleNotLoaded = 4;
constexpr int notWritten = 5;
constexpr int scriptUnreadable = 6;
constexpr int rescued = 7;
constexpr int notRescued = 8;
constexpr int interrupted = 130;
} // namespace exitcode
