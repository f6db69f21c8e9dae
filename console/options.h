#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a user does to have an output replace a file, for messages about files that options and answers name.
inline constexpr std::wstring_view overwriteOption = L"--overwrite replaces it";

/// What the command line asks for. Files are wide texts that mapPath turns back into the very bytes given.
struct Options {
    std::wstring drawing;
    bool isNewDrawing = false;
    std::vector<std::wstring> modules;
    std::optional<std::wstring> script;
    std::vector<std::wstring> commands;
    std::optional<std::wstring> answers;
    std::optional<std::wstring> output;
    std::vector<std::wstring> forms; ///< words that saveforms.h knows
    bool mayOverwrite = false; ///< files that stood there before the run, and by --output the drawing itself
    std::optional<std::wstring> registry;
    std::optional<std::wstring> library;
    std::optional<std::wstring> trace;
    std::optional<std::wstring> record;
    std::optional<std::wstring> installRoot;
    double timeout = 0;               ///< seconds for each piece of work; 0 is no limit
    bool isRescued = true;            ///< a failure saves the drawing
    std::optional<unsigned> language; ///< the platform's identifier
    bool isQuiet = false;
    bool keepsGoing = false; ///< commands run behind one that failed, too
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool wantsCommandList = false;
};

/// The options, or a sentence that says what is wrong with them.
struct ParsedOptions {
    Options options{};
    std::wstring problem{};
};

/// Options stand in any order; a value follows its option as the next argument or behind "="; behind "--" all
/// is a file name. Files are taken as the file system's bytes; commands as UTF-8, or as Windows-1252 where
/// they are not.
ParsedOptions parseOptions(const std::vector<std::string>& arguments);

/// The text of --help, with the table of exit codes.
std::wstring helpText();
