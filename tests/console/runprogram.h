#pragma once

#include "temporaryfolder.h"

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// Writes a file into the folder and gives its path.
std::string writtenFile(const TemporaryFolder& folder, const std::string& name, const std::string& content);
std::string readFile(const std::string& path);

struct ProgramResult {
    int code = -1; ///< exit code; 128 + signal for a program that a signal ended
    std::string output;
    std::string problems;
};

/// In the child, after the fork: never comes back. The environment is this process's with these changes; an
/// empty value takes the variable out.
[[noreturn]] void becomeProgram(const std::vector<std::string>& command,
                                const std::map<std::string, std::string>& environment);

/// A started program with its three streams.
class RunningProgram {
public:
    /// The environment as for becomeProgram.
    RunningProgram(const std::vector<std::string>& command, const std::string& input,
                   const std::map<std::string, std::string>& environment = {});
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Reads problems until this text is among them; false when the program ends before.
    bool waitForProblem(const std::string& text);
    void sendSignal(int number) const;
    ProgramResult finish();

private:
    bool readSome();

    pid_t m_process = -1;
    int m_output = -1;
    int m_problems = -1;
    ProgramResult m_result;
};

ProgramResult runProgram(const std::vector<std::string>& command, const std::string& input = "",
                         const std::map<std::string, std::string>& environment = {});

/// True when the whole text is one JSON value and nothing else.
bool isJson(const std::string& text);
