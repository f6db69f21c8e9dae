#pragma once

#include "acadstrc.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

/// What a run did, for programs that run many of them: its commands with their results, what was reported,
/// the time and memory that it took. --record writes it; docs/console.md tells the fields.
class RunRecord {
public:
    struct Command {
        std::wstring line;
        Acad::ErrorStatus status = Acad::eOk;
        std::wstring reason; ///< empty where the status says all
        double seconds = 0;
    };

    void addCommand(Command command) { m_commands.push_back(std::move(command)); }
    /// The first hundred are kept as they are, the others are counted.
    void addProblem(std::wstring_view text);
    /// One JSON object on one line, with the time and memory up to now. The drawing is empty for a new one.
    std::string json(std::wstring_view drawing, int exitCode) const;

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::vector<Command> m_commands;
    std::vector<std::wstring> m_problems;
    std::size_t m_problemCount = 0;
};
