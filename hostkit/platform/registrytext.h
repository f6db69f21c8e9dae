// Registry export: the readable text form of all hives, read and written; leaves out comments, which are not
// kept.
#pragma once

#include "registrytree.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// The form, UTF-8, one thing a line, line ends LF or CRLF:
///   ; comment                                        not kept when the file is written again
///   [HKEY_CURRENT_USER\Software\Maker]               a key, with all keys above it
///   "Name"="text"                                    REG_SZ, wide, with one terminator
///   @="text"                                         the default value of the key
///   "Name"=expand:"text"                             REG_EXPAND_SZ, likewise
///   "Name"=dword:000004b0   "Name"=qword:...         REG_DWORD and REG_QWORD, 1 to 8 and 1 to 16 hexadecimal
///   digits "Name"=hex(3):01,02,ff                           any type (the number in hexadecimal) and its
///   bytes as they stand
/// In quotes, \\ \" \n \r stand for the character, and \u{d800} for any character by its code. A value told
/// twice counts as told last. Text whose bytes are not wide characters with one terminator is written in the
/// hex form.

struct RegistryTextProblem {
    std::size_t line; // from 1
    std::wstring reason;
};

/// Reads into the tree what can be read and tells of each line that cannot; after a bad key line, the values
/// below it are left out with it. Never fails as a whole.
std::vector<RegistryTextProblem> readRegistryText(std::string_view text, RegistryTree& tree);

/// False for a text that was never a registry: it holds lines, and among those that cannot be read none that
/// begins as a key does, with "[HKEY_".
bool isRegistryText(std::string_view text);

/// Keys and values in order of their names, so that equal registries are equal files.
std::string writeRegistryText(const RegistryTree& tree);

} // namespace hostkit
