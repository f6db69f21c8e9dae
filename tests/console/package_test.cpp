// A customer's module outside the tree, as README.md and docs/modules.md give it: the installed package is
// found, the module and its test are built, loaded and run.
#include "consoletest.h"

namespace {

// The first block of code of that language in a document.
std::string codeIn(const std::string& document, const std::string& language) {
    const std::string text = readFile(VEXO_SOURCE_DIR "/" + document);
    const std::string opening = "\n```" + language + "\n";
    const std::size_t start = text.find(opening) + opening.size();
    return text.substr(start, text.find("```\n", start) - start);
}

class Package : public ConsoleTest {
protected:
    void mustRun(const std::vector<std::string>& command) {
        const ProgramResult result = runProgram(command);
        ASSERT_EQ(result.code, 0) << result.output << result.problems;
    }
};

TEST_F(Package, TheModuleAndTheTestOfTheDocumentsBuildAgainstTheInstalledLibrary) {
    const std::string prefix = folder / "prefix";
    mustRun({"cmake", "--install", VEXO_BINARY_DIR, "--prefix", prefix});
    folder.write("CMakeLists.txt", codeIn("README.md", "cmake") + codeIn("docs/modules.md", "cmake"));
    folder.write("beam.cpp", codeIn("README.md", "cpp"));
    // The test of the document, and the same without its close.
    const std::string test = codeIn("docs/modules.md", "cpp");
    std::string leaving = test.substr(test.find("TEST_F"));
    const auto replace = [&leaving](const std::string& from, const std::string& to) {
        leaving.replace(leaving.find(from), from.size(), to);
    };
    replace("standsInItsBlock", "leavesItsLineOpen");
    replace("line->close();", "");
    folder.write("beam_test.cpp", test + leaving);
    mustRun({"cmake", "-S", folder / ".", "-B", folder / "build", "-G", VEXO_GENERATOR,
             "-DCMAKE_PREFIX_PATH=" + prefix, std::string("-DCMAKE_CXX_COMPILER=") + VEXO_COMPILER,
             std::string("-DCMAKE_CXX_FLAGS=") + VEXO_SANITIZER_FLAGS});
    mustRun({"cmake", "--build", folder / "build"});

    const ProgramResult module =
        runProgram({prefix + "/bin/vexohost", "--new", "--registry", folder / "r.txt", "--module",
                    folder / "build/beam.so", "--command", "BULGE"});
    EXPECT_EQ(module.code, 0) << module.problems;
    EXPECT_EQ(module.output, "bulge 1\n");

    const ProgramResult tests = runProgram({folder / "build/beam_test"});
    EXPECT_EQ(tests.code, 1) << tests.output;
    expectHas(tests.output, {"[       OK ] Beam.standsInItsBlock", "[  FAILED  ] Beam.leavesItsLineOpen",
                             "left behind: document 1: AcDbLine"});
}

} // namespace
