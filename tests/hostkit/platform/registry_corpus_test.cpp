// The fuzz target's own check, over the corpus that it has collected and what damage makes of it.
#include "../../../fuzz/registry_fuzz.cpp"

#include "atomicfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

void check(const std::string& text) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

std::string damaged(std::string text, std::mt19937& random) {
    for (unsigned i = random() % 4 + 1; i > 0; --i) {
        std::string piece = text.substr(random() % (text.size() + 1)).substr(0, random() % 30);
        if (random() % 2) piece += static_cast<char>(random());
        const std::size_t at = random() % (text.size() + 1);
        text.replace(at, random() % 20, piece);
    }
    return text;
}

TEST(RegistryText, CorpusOfTheFuzzTarget) {
    std::mt19937 random(11);
    int files = 0;
    for (const auto& file : std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/registry")) {
        std::string content;
        ASSERT_TRUE(hostkit::readWholeFile(file.path().string(), content)) << file.path();
        SCOPED_TRACE(file.path().string());
        check(content);
        for (int round = 0; round < 300; ++round) check(damaged(content, random));
        ++files;
    }
    EXPECT_GE(files, 6);
}
