#pragma once

#include <string>

/// The library's file: beside this program, in ../lib, or beside the kit's own shared libraries, in this
/// order. Where it is in none of them, the first place, so that the message names it.
std::wstring libraryLocation();
