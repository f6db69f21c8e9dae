#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One command of a script with the line that it stands on, counted from 1.
struct ScriptLine {
    std::size_t number;
    std::wstring text;
};

/// A script holds one command a line, with its answers behind it. Empty lines and lines that begin with ';'
/// count for nothing. Any line ends are taken; text as told at wideFromArgument.
std::vector<ScriptLine> parseScript(std::string_view bytes);

/// The commands of a script file; nothing, with the reason set, when it cannot be read or holds a NUL byte.
std::optional<std::vector<ScriptLine>> readScript(const std::wstring& file, std::wstring& reason);
