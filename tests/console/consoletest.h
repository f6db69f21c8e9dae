#pragma once

#include "exitcodes.h"
#include "runprogram.h"

#include <gtest/gtest.h>

inline const std::string program = VEXO_BINARY_DIR "/bin/vexohost";
inline const std::string slabModule = VEXO_BINARY_DIR "/lib/slab.so";
inline const std::string boxesModule = VEXO_BINARY_DIR "/lib/boxes.so";
inline const std::string modules = VEXO_BINARY_DIR "/tests/console/modules/";
inline const std::string helpful = modules + "helpful.so";
inline const std::string failing = modules + "failing.so";
inline const std::string floorDrawing = VEXO_SOURCE_DIR "/examples/slab/floor.dxf";

inline bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

inline void expectHas(const std::string& text, const std::vector<std::string>& parts) {
    for (const std::string& part : parts) EXPECT_TRUE(has(text, part)) << part << "\nis not in\n" << text;
}

/// Runs the console, with a folder and a registry of the test's own.
class ConsoleTest : public ::testing::Test {
protected:
    ProgramResult run(std::vector<std::string> arguments, const std::string& input = "",
                      std::map<std::string, std::string> environment = {}) {
        arguments.insert(arguments.begin(), program);
        environment.emplace("VEXO_REGISTRY", folder / "registry.txt");
        environment.emplace("XDG_STATE_HOME", folder / "state");
        return runProgram(arguments, input, environment);
    }
    /// With these lines as script.scr, behind the other arguments.
    ProgramResult runScript(std::vector<std::string> arguments, const std::string& lines) {
        arguments.insert(arguments.end(), {"--script", writtenFile(folder, "script.scr", lines)});
        return run(arguments);
    }
    /// Of a command line for the shell, such as one that closes streams.
    ProgramResult runInShell(const std::string& line) {
        return runProgram({"/bin/sh", "-c", line}, "", {{"VEXO_REGISTRY", folder / "registry.txt"}});
    }
    /// What it prints in a run that must go well.
    std::string outputOf(const std::vector<std::string>& arguments, const std::string& input = "",
                         const std::map<std::string, std::string>& environment = {}) {
        const ProgramResult result = run(arguments, input, environment);
        EXPECT_EQ(result.code, exitcode::ok) << arguments.back() << "\n" << result.problems;
        return result.output;
    }
    /// What it prints in a run that must end with this code and name this among its problems.
    std::string expectProblems(const std::vector<std::string>& arguments, int code,
                               const std::vector<std::string>& named) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.code, code) << (arguments.empty() ? "" : arguments.back()) << "\n"
                                     << result.problems;
        expectHas(result.problems, named);
        return result.output;
    }

    TemporaryFolder folder;
};
