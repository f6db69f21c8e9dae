// What the fuzzer starts from, and what it has found, changed in every way that the fuzzer knows.
#include "drawinginvariants.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>

using namespace drawinginvariants;

namespace {

std::size_t
forEachDrawing(const char* folder,
               const std::function<void(const std::string& name, const std::string& bytes)>& visit) {
    std::size_t readable = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/" + std::string(folder))) {
        SCOPED_TRACE(entry.path());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        readable += read(bytes) != nullptr;
        visit(entry.path().filename().string(), bytes);
    }
    return readable;
}

TEST(FuzzCorpus, holdsWhatAllDrawingsHold) {
    const std::size_t readable = forEachDrawing("corpus/drawing", [](const auto&, const auto& bytes) {
        EXPECT_EQ(brokenBySaving(bytes), "");
        EXPECT_EQ(brokenByForms(bytes), "");
        for (const Edit edit : {Edit::moveAll, Edit::eraseEverySecond})
            for (const std::size_t choice : {0u, 1u})
                EXPECT_EQ(brokenByEdit(bytes, edit, choice), "") << int(edit);
        for (std::size_t record = 0; record < 40; ++record)
            EXPECT_EQ(brokenByEdit(bytes, Edit::renameOne, record), "") << "record " << record;
    });
    EXPECT_GE(readable, 5u);
}

// Drawings that come back changed from saving; they go to the corpus when they no longer do. Until then they
// are saved and read at least.
TEST(FuzzCorpus, openFindingsAreReadAgain) {
    forEachDrawing("findings/drawing", [](const auto&, const auto& bytes) {
        const std::set<std::string> open = {
            "", "what was written from fields has other entities",
            "what was written from fields is written otherwise the second time",
            "the changed drawing is read with other entities"};
        EXPECT_TRUE(open.contains(brokenBySaving(bytes))) << brokenBySaving(bytes);
        EXPECT_EQ(brokenByForms(bytes), "");
        for (const Edit edit : {Edit::moveAll, Edit::eraseEverySecond, Edit::renameOne}) {
            const std::string broken = brokenByEdit(bytes, edit, 0);
            EXPECT_TRUE(open.contains(broken)) << broken;
        }
    });
}

} // namespace
