// What Tab offers, and the commands that are kept from one run to the next.
#include "builtincommands.h"
#include "commandhistory.h"
#include "completion.h"
#include "consoletest.h"
#include "systempath.h"
#include "testhost.h"

#include <filesystem>
#include <sys/stat.h>

namespace {

class Completing : public ::testing::Test {
protected:
    Completing() {
        registerBuiltinCommands(session.host().commands());
        session.host().commands().addCommand(L"BEAMS", L"BEAMLIST", L"POUTRES", 0, [] {});
        for (const char* name : {"plan.dxf", "plan b.dxf", ".hidden", "other.svg"}) folder.write(name, "");
        std::filesystem::create_directory(folder / "parts");
        folder.write("parts/beam.dxf", "");
    }
    std::wstring in(const std::string& name) const { return hostkit::pathFromSystem(folder / name); }
    // The line with each of the words in the place of what they complete.
    static std::vector<std::wstring> lines(std::wstring_view line,
                                           Completion (*complete)(std::wstring_view)) {
        const Completion found = complete(line);
        std::vector<std::wstring> all;
        for (const std::wstring& word : found.words)
            all.push_back(std::wstring(line.substr(0, found.start)) + word);
        return all;
    }

    TemporaryFolder folder;
    hostkit::TestHost session;
};

using Lines = std::vector<std::wstring>;

TEST_F(Completing, CommandsThenWhatTheyTake) {
    const std::pair<std::wstring, Lines> cases[] = {
        {L"sa", {L"SAVE", L"SAVEAS"}},
        {L"  _beam", {L"  _BEAMLIST"}},
        {L"pou", {L"POUTRES"}},
        {L"HELP lay", {L"HELP LAYERS"}},
        {L"SETVAR clay", {L"SETVAR CLAYER"}},
        {L"NOSUCHCOMMAND", {}},
        {L"OPEN " + in("pl"), {L"OPEN \"" + in("plan b.dxf") + L"\"", L"OPEN " + in("plan.dxf")}},
        {L"OPEN \"" + in("plan b"), {L"OPEN \"" + in("plan b.dxf") + L"\""}},
        {L"AUDIT OF " + in("pa"), {L"AUDIT OF " + in("parts/")}},
        {L"_BEAMLIST " + in("parts/"), {L"_BEAMLIST " + in("parts/beam.dxf")}},
        {L"OPEN " + in("."), {L"OPEN " + in(".hidden")}},
        {L"OPEN " + in("none/x"), {}},
        {L"LAYERS " + in("pl"), {}}, // takes no file
    };
    for (const auto& [line, wanted] : cases)
        EXPECT_EQ(lines(line, completeCommand), wanted) << hostkit::mapPath(line);
    EXPECT_EQ(lines(in("ot"), completeFile), Lines{in("other.svg")});
}

TEST(CommandHistory, KeepsTheLatestLinesForTheOwnerAlone) {
    const TemporaryFolder folder;
    const std::string file = folder / "state/vexotools/history";
    std::wstring problem;
    {
        CommandHistory history(file);
        EXPECT_TRUE(history.read().empty());
        for (const wchar_t* each : {L"LAYERS", L"LAYERS", L"PLOT \"\u00E9t\u00E9.svg\"", L"LAYERS"})
            EXPECT_TRUE(history.add(each, problem));
    }
    EXPECT_EQ(CommandHistory(file).read(), (Lines{L"LAYERS", L"PLOT \"\u00E9t\u00E9.svg\"", L"LAYERS"}));
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0600u);

    std::string many;
    for (int i = 0; i < 2500; ++i) many += "LINE " + std::to_string(i) + "\n";
    folder.write("many", many);
    const Lines kept = CommandHistory(folder / "many").read();
    ASSERT_EQ(kept.size(), 1000u);
    EXPECT_EQ(kept.front(), L"LINE 1500");
    EXPECT_EQ(CommandHistory(folder / "many").read(), kept);
    EXPECT_LT(readFile(folder / "many").size(), many.size());

    EXPECT_FALSE(CommandHistory(folder / "many/no").add(L"LAYERS", problem));
    EXPECT_NE(problem.find(L"many/no: the commands cannot be kept"), std::wstring::npos);
}

} // namespace
