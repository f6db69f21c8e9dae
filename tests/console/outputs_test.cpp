// No output of a run takes the place of what the run reads, or of a file that it was not told to replace.
#include "consoletest.h"

#include <filesystem>
#include <functional>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Arguments = std::vector<std::string>;

// A run that reads a file of every kind. Each output goes to a file in turn.
class Outputs : public ConsoleTest {
protected:
    struct Run {
        std::string module = slabModule;
        std::string registry;
        std::string trace;
        std::string answer = "Ok";
        std::string command = "LAYERS";
        Arguments more{};
        std::string file{}; ///< that the output goes to
    };
    /// What is different in the run when this output goes to the file, asked to replace it.
    struct Output {
        const char* name;
        std::function<void(Run&)> direct;
    };

    static std::string quoted(const std::string& file) { return "\"" + file + "\""; }
    static Output commandTo(const char* name, const char* start, const char* end) {
        return {name, [=](Run& run) { run.command = start + quoted(run.file) + end; }};
    }
    const std::vector<Output> all = {
        commandTo("PLOT", "PLOT ", " 200 100 OVERWRITE"),
        commandTo("LIST", "LIST JSON ", " OVERWRITE"),
        commandTo("CONTOURS", "CONTOURS CSV ", " OVERWRITE"),
        commandTo("SLABSTRIPS", "SLABSTRIPS OUTLINES COFFRAGE CSV ", " OVERWRITE"),
        commandTo("SAVEAS", "SAVEAS ", " FIELDS OVERWRITE"),
        {"a box's picture",
         [](Run& run) {
             run.answer = "\">" + run.file + "\" Ok";
             run.command = "BOX OK \"text\"";
         }},
        {"--output",
         [](Run& run) {
             run.more = {"--output", run.file};
         }},
        {"--trace", [](Run& run) { run.trace = run.file; }},
        {"--record",
         [](Run& run) {
             run.more = {"--record", run.file};
         }},
        {"--registry", [](Run& run) { run.registry = run.file; }},
    };

    void SetUp() override {
        for (const auto& [name, from] :
             std::map<std::string, std::string>{{"me.dxf", floorDrawing},
                                                {"me.so", slabModule},
                                                {"me.mnu", VEXO_SOURCE_DIR "/fuzz/corpus/menu/whole.mnu"}})
            std::filesystem::copy_file(from, folder / name);
        // The library's first run leaves its settings.
        outputOf({"--new", "--registry", folder / "me.txt", "--command", "LAYERS"});
    }
    ProgramResult runWith(const Output& output, const std::string& file, bool isAsked = true) {
        Run plan;
        plan.module = folder / "me.so";
        plan.registry = folder / "me.txt";
        plan.trace = folder / "me.json";
        plan.file = file;
        output.direct(plan);
        const std::size_t word = plan.command.find("OVERWRITE");
        if (!isAsked && word != std::string::npos) plan.command.erase(word);
        folder.write("me.ans", plan.answer + "\n");
        folder.write("me.scr", "CUILOAD " + quoted(folder / "me.mnu") + "\n" + plan.command + "\n");
        Arguments arguments = {folder / "me.dxf", "--module",   plan.module,       "--module",
                               boxesModule,       "--answers",  folder / "me.ans", "--script",
                               folder / "me.scr", "--registry", plan.registry,     "--trace",
                               plan.trace};
        if (isAsked) arguments.push_back("--overwrite");
        arguments.insert(arguments.end(), plan.more.begin(), plan.more.end());
        return run(arguments);
    }
    /// By name, of the folder's regular files but these.
    std::map<std::string, std::string> contents(const std::vector<std::string>& but) const {
        std::map<std::string, std::string> found;
        for (const auto& each : std::filesystem::directory_iterator(folder.path()))
            if (each.is_regular_file() && !has(each.path().filename(), ".lock")) {
                const std::string name = each.path().filename();
                if (std::find(but.begin(), but.end(), name) == but.end()) found[name] = readFile(each.path());
            }
        return found;
    }
};

TEST_F(Outputs, NeverReplaceWhatTheRunReadsWhateverTheyAreTold) {
    const std::pair<std::string, std::string> inputs[] = {
        {"me.dxf", "the drawing that was opened"}, {"me.scr", "the script of this run"},
        {"me.so", "a module of this run"},         {"me.ans", "the file of answers"},
        {"me.txt", "the registry of this run"},    {"me.mnu", "a menu file"},
        {"me.json", "the timeline of this run"},
    };
    EXPECT_EQ(runWith(all.front(), folder / "first").code, exitcode::ok) << "a run that does no harm";
    const std::vector<std::string> rewritten = {"me.ans", "me.scr", "me.json"};
    const auto before = contents(rewritten);
    for (const Output& output : all)
        for (const auto& [file, what] : inputs) {
            const std::string name = output.name;
            // What the output itself is, and the drawing, which a saving replaces when told to.
            if ((name == "--registry" && file == "me.txt") || (name == "--trace" && file == "me.json"))
                continue;
            if (file == "me.dxf" && (name == "SAVEAS" || name == "--output")) continue;
            SCOPED_TRACE(name + " to " + file);
            const ProgramResult result = runWith(output, folder / file);
            EXPECT_NE(result.code, exitcode::ok);
            EXPECT_TRUE(has(result.problems, file + ": this is ")) << result.problems;
            // That a menu is read is known when it is loaded; a registry is told from what it holds.
            const bool isToldByContent = name == "--registry" && (file == "me.mnu" || file == "me.json");
            EXPECT_TRUE(isToldByContent || has(result.problems, what)) << result.problems;
            EXPECT_EQ(contents(rewritten), before);
            EXPECT_TRUE(has(readFile(folder / "me.scr"), "CUILOAD"));
            EXPECT_EQ(readFile(folder / "me.ans").substr(0, 1), name == "a box's picture" ? "\"" : "O");
            EXPECT_TRUE(isJson(readFile(folder / "me.json")));
        }
}

TEST_F(Outputs, ReplaceAFileOnlyWhenTold) {
    for (const Output& output : all) {
        if (std::string(output.name) == "--registry") continue; // which is kept, not replaced
        SCOPED_TRACE(output.name);
        const std::string target = folder / "target";
        folder.write("target", "old");
        const ProgramResult refused = runWith(output, target, false);
        EXPECT_NE(refused.code, exitcode::ok);
        expectHas(refused.problems, {"target: the file is there already;", "replaces it"});
        EXPECT_EQ(readFile(target), "old");

        const ProgramResult replaced = runWith(output, target);
        EXPECT_EQ(replaced.code, exitcode::ok) << replaced.problems;
        EXPECT_GT(readFile(target).size(), 100u);
        std::filesystem::remove(target);
        std::filesystem::remove(folder / "me.json");
        const ProgramResult fresh = runWith(output, target, false);
        EXPECT_EQ(fresh.code, exitcode::ok) << fresh.problems;
        EXPECT_GT(readFile(target).size(), 100u);
        std::filesystem::remove(target);
        std::filesystem::remove(folder / "me.json");
    }
}

TEST_F(Outputs, OfOneRunDoNotReplaceEachOther) {
    const std::string drawing = folder / "me.dxf", same = folder / "same";
    const std::string link = folder / "link";
    std::filesystem::create_symlink("same", link);
    struct {
        Arguments arguments;
        int code;
        std::string reason;
    } const cases[] = {
        {{"--command", "PLOT " + same, "--command", "LIST JSON " + link},
         1,
         "this run has written the file already"},
        {{"--command", "PLOT " + link, "--command", "SAVEAS " + same},
         1,
         "this run has written the file already"},
        {{"--command", "PLOT " + same, "--output", link}, 1, "this is the file that --output saves to"},
        {{"--trace", same, "--output", folder / "./same"}, 5, "this is the timeline"},
        {{"--command", "PLOT " + same, "--trace", link}, 1, "this is the timeline"},
    };
    for (const auto& [arguments, code, reason] : cases)
        for (const bool isAsked : {false, true}) {
            SCOPED_TRACE(arguments[1] + " " + arguments.back());
            Arguments whole = arguments;
            whole.insert(whole.begin(), drawing);
            if (isAsked) whole.push_back("--overwrite");
            expectProblems(whole, code, {reason});
            std::filesystem::remove(same);
        }
    // A command may say that it is meant so.
    outputOf({drawing, "--command", "PLOT " + same, "--command", "LIST JSON " + same + " OVERWRITE"});
    EXPECT_TRUE(isJson(readFile(same)));
}

TEST_F(Outputs, GoToPipesAndStreamsAsTheyCome) {
    const std::string quiet = program + " " + (folder / "me.dxf") + " --quiet --module " + slabModule;
    const std::string registry = " --registry " + (folder / "me.txt");
    const std::string listing = runInShell(quiet + " --command 'LIST JSON'").output;
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(runInShell("cat " + fifo + " & " + quiet + " --command 'LIST JSON " + fifo + "'; wait").output,
              listing);
    for (const std::string stream : {"/dev/stdout", "/dev/fd/1"}) {
        EXPECT_EQ(runInShell(quiet + " --command 'LIST JSON " + stream + "' | cat").output, listing);
        EXPECT_EQ(runInShell(quiet + " -o " + stream + " | cat").output, readFile(floorDrawing));
        runInShell(quiet + " --command 'LIST JSON " + stream + "' >" + (folder / "redirected"));
        EXPECT_EQ(readFile(folder / "redirected"), listing);
    }
    const std::string picture = runInShell(quiet + " --command 'PLOT /dev/stdout' | cat").output;
    EXPECT_EQ(picture.substr(picture.size() - 7), "</svg>\n");
    expectHas(runInShell(quiet + " --command 'CONTOURS CSV /dev/stderr' 2>&1 >/dev/null").output, {"Layer"});
    // In order with what is printed, and not over the files that the streams are.
    const std::string both =
        runInShell(quiet + " --command LAYERS --command 'LIST JSON /dev/stdout' | cat").output;
    EXPECT_LT(both.find("Linetype"), both.find("\"entities\""));
    const ProgramResult over =
        runInShell(quiet + " --command 'LIST JSON " + (folder / "log") + " OVERWRITE' >" + (folder / "log"));
    expectHas(over.problems, {"log: this is where standard output goes"});
    folder.write("piped.scr", "PLOT " + (folder / "piped.scr") + " OVERWRITE\n");
    const std::string script = readFile(folder / "piped.scr");
    expectHas(runInShell(quiet + " <" + (folder / "piped.scr")).problems, {"the standard input of this run"});
    EXPECT_EQ(readFile(folder / "piped.scr"), script);
}

TEST_F(Outputs, ThatCannotBeWrittenLeaveWhatStandsThere) {
    std::filesystem::create_directory(folder / "dir");
    folder.write("old", "old");
    for (const Output& output : all) {
        SCOPED_TRACE(output.name);
        const ProgramResult toFolder = runWith(output, folder / "dir");
        EXPECT_NE(toFolder.code, exitcode::ok);
        expectHas(toFolder.problems, {"dir: this is a folder; name a file in it"});
        if (std::string(output.name) == "--registry") continue;
        const ProgramResult lost = runWith(output, folder / "old/x");
        EXPECT_NE(lost.code, exitcode::ok);
        expectHas(lost.problems, {"old/x"});
        const ProgramResult full = runWith(output, "/dev/full");
        EXPECT_NE(full.code, exitcode::ok);
        expectHas(full.problems, {"/dev/full"});
    }
    // A disk that is full in the middle: the old file stays, and nothing beside it.
    for (const std::string& output : {"--output " + (folder / "old"), "--trace " + (folder / "old"),
                                      "--command 'LIST JSON " + (folder / "old") + "'"}) {
        const ProgramResult full =
            runInShell("trap '' XFSZ; ulimit -f 8; " + program + " " + (folder / "me.dxf") +
                       " --overwrite --module " + slabModule + " --command CONTOURS --registry " +
                       (folder / "me.txt") + " " + output + " >/dev/null");
        EXPECT_NE(full.code, exitcode::ok);
        expectHas(full.problems, {"old"});
        EXPECT_EQ(readFile(folder / "old"), "old") << output;
    }
    for (const auto& each : std::filesystem::directory_iterator(folder.path()))
        EXPECT_FALSE(has(each.path().filename(), ".new-")) << each.path();
}

TEST_F(Outputs, AFileThatIsNoRegistryIsNotMadeOne) {
    const std::string texts[] = {readFile(floorDrawing), "; a script\nLAYERS\n", "{\"a\": [1]}\n",
                                 std::string("\0\1\2", 3), "\"Name\"=\"value\"\n"};
    for (const std::string& text : texts) {
        folder.write("other", text);
        for (const bool isEnvironment : {false, true}) {
            const Arguments named = {"--new", "--command", "LAYERS", "--registry", folder / "other"};
            const ProgramResult result = isEnvironment ? run({"--new", "--command", "LAYERS"}, "",
                                                             {{"VEXO_REGISTRY", folder / "other"}})
                                                       : run(named);
            EXPECT_EQ(result.code, exitcode::scriptUnreadable) << text.substr(0, 40);
            expectHas(result.problems, {"other: this is no registry"});
            EXPECT_EQ(readFile(folder / "other"), text);
        }
    }
    for (const std::string text : {"", "\n", "; my settings\n", "[hkey_current_user\\A\nnonsense\n"}) {
        folder.write("other", text);
        outputOf({"--new", "--command", "LAYERS", "--registry", folder / "other"});
        expectHas(readFile(folder / "other"), {"[HKEY_CURRENT_USER"});
    }
}

} // namespace
