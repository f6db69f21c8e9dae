#pragma once

#include <optional>
#include <string>
#include <vector>

/// The commands that a person typed, in a text file of one line each, UTF-8, that only its owner may read.
class CommandHistory {
public:
    /// In $XDG_STATE_HOME/vexotools, else ~/.local/state/vexotools; nothing without a home.
    static std::optional<std::string> defaultPath();

    /// path in the bytes of the file system.
    explicit CommandHistory(std::string path);

    /// The oldest first, at most the latest thousand. A file that has grown far beyond is cut to these.
    std::vector<std::wstring> read();
    /// Puts the line at the end; one that repeats the line before it is not kept. False, with the reason,
    /// where that cannot be done.
    bool add(const std::wstring& line, std::wstring& problem);

private:
    std::string m_path;
    std::wstring m_last;
};
