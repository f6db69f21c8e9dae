// Which files are one and the same, and what an output may do to them.
#include "atomicfile.h"
#include "outputfiles.h"
#include "scriptedport.h"
#include "systempath.h"
#include "temporaryfolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace {

using namespace hostkit;

struct OutputFilesTest : testing::Test {
    TemporaryFolder folder;
    ScriptedPort port;
    OutputFiles outputs{port};

    OutputFilesTest() {
        std::filesystem::create_directories(folder / "sub/deep");
        std::filesystem::create_directories(folder / "other");
        std::filesystem::create_symlink("sub", folder / "way");
    }
    std::wstring at(const std::string& name) const {
        return pathFromSystem(folder.path().string()) + L"/" + std::wstring(name.begin(), name.end());
    }
    bool isRefused(const std::string& name) const { return !outputs.refusal({at(name), true}).empty(); }
};

TEST_F(OutputFilesTest, AFileIsKnownByWhatItIsNotByItsSpelling) {
    folder.write("sub/there", "x");
    std::filesystem::create_symlink("there", folder / "sub/link");
    std::filesystem::create_symlink("../sub/link", folder / "sub/chain");
    std::filesystem::create_hard_link(folder / "sub/there", folder / "sub/second");
    std::filesystem::create_symlink("later", folder / "sub/dangling");
    std::filesystem::copy_file(folder / "sub/there", folder / "other/there");
    const char* const names[] = {"sub/there", "sub/./there", "sub//there", "sub/deep/../there", "sub\\there",
                                 "way/there", "sub/link",    "sub/chain",  "sub/second",        "way\\chain"};
    const char* const others[] = {"other/there", "sub/ther", "sub/there2", "sub/later", "there"};
    for (const char* name : names) {
        outputs.release(outputs.protect(at("sub/later"), OutputFiles::Role::input, L"done with"));
        const auto protection = outputs.protect(at(name), OutputFiles::Role::input, L"an input");
        for (const char* same : names) EXPECT_TRUE(isRefused(same)) << name << " " << same;
        for (const char* other : others) EXPECT_FALSE(isRefused(other)) << name << " " << other;
        outputs.release(protection);
        EXPECT_FALSE(isRefused(name));
    }
    // One that is not there yet has its folder and its name; it may come by any way.
    outputs.protect(at("way/later"), OutputFiles::Role::output, L"an output");
    for (const char* same : {"sub/later", "sub/dangling", "sub/deep/../later"}) EXPECT_TRUE(isRefused(same));
    EXPECT_FALSE(isRefused("other/later"));
    folder.write("sub/later", "y");
    std::filesystem::create_hard_link(folder / "sub/later", folder / "hard");
    EXPECT_TRUE(isRefused("hard"));
    // What is replaced in one step is another file then, and stays the one of that name.
    AtomicFile replaced(folder / "sub/later");
    ASSERT_TRUE(replaced.commit());
    EXPECT_TRUE(isRefused("sub/dangling"));
    EXPECT_FALSE(isRefused("hard"));
}

TEST_F(OutputFilesTest, RolesAndOrdersDecideWhatIsRefused) {
    using Role = OutputFiles::Role;
    using Kind = OutputFiles::Kind;
    folder.write("there", "x");
    folder.write("drawing", "x");
    outputs.protect(at("drawing"), Role::drawing, L"the drawing");
    const auto answer = [&](const char* name, bool mayReplace, Kind kind) {
        return outputs.refusal({at(name), mayReplace}, kind).empty();
    };
    for (const bool areReplaced : {false, true}) {
        outputs.replaceExisting(areReplaced);
        for (const Kind kind : {Kind::file, Kind::drawing}) {
            EXPECT_TRUE(answer("new", false, kind));
            EXPECT_EQ(answer("there", false, kind), areReplaced);
            EXPECT_TRUE(answer("there", true, kind));
            EXPECT_FALSE(answer("drawing", false, kind));
            EXPECT_EQ(answer("drawing", true, kind), kind == Kind::drawing);
        }
        EXPECT_EQ(outputs.asksForReplacing(at("there")), !areReplaced);
        EXPECT_FALSE(outputs.asksForReplacing(at("new")));
        EXPECT_FALSE(outputs.asksForReplacing(at("drawing")));
    }
    // The strictest of several roles holds.
    outputs.protect(at("drawing"), Role::output, L"an output");
    outputs.protect(at("drawing"), Role::drawing, L"the drawing, once more");
    EXPECT_FALSE(answer("drawing", true, Kind::drawing));
    EXPECT_FALSE(outputs.write({at("sub"), true}, "x").empty()) << "a folder";
    EXPECT_EQ(outputs.write({at("once")}, "1"), L"");
    EXPECT_FALSE(outputs.write({at("way/../once")}, "2").empty())
        << "replacing is not for what the run wrote";
    EXPECT_EQ(outputs.write({at("once"), true}, "3"), L"");
    EXPECT_EQ(folder.read("once"), "3");
}

TEST_F(OutputFilesTest, AFileThatComesMeanwhileIsLeftAlone) {
    AtomicFile late(folder / "late", AtomicFile::Existing::keep);
    late.write("mine");
    folder.write("late", "another's");
    EXPECT_FALSE(late.commit());
    EXPECT_EQ(late.error(), EEXIST);
    EXPECT_EQ(folder.read("late"), "another's");
    AtomicFile free(folder / "free", AtomicFile::Existing::keep);
    free.write("mine");
    EXPECT_TRUE(free.commit());
    EXPECT_EQ(folder.read("free"), "mine");
    EXPECT_EQ(folder.count(), 5u) << "nothing else is left";
}

TEST_F(OutputFilesTest, AStreamTakesTheBytesAsTheyCome) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string name = "/dev/fd/" + std::to_string(ends[1]);
    std::filesystem::create_symlink(name, folder / "stream");
    for (const int round : {1, 2}) EXPECT_EQ(outputs.write({at("stream")}, std::to_string(round)), L"");
    char bytes[8] = {};
    EXPECT_EQ(read(ends[0], bytes, sizeof bytes), 2);
    EXPECT_STREQ(bytes, "12");
    close(ends[0]);
    close(ends[1]);
    EXPECT_FALSE(outputs.write({at("stream")}, "x").empty()) << "the stream is closed";
    EXPECT_FALSE(outputs.write({L"/dev/full"}, "x").empty());
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "stream"));
}

} // namespace
