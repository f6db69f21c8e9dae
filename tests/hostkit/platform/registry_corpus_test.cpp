// The fuzz target's own check, over the corpus that it has collected.
#include "../../../fuzz/registry_fuzz.cpp"

#include "atomicfile.h"

#include <gtest/gtest.h>

#include <filesystem>

TEST(RegistryText, CorpusOfTheFuzzTarget) {
    int files = 0;
    for (const auto& file : std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/registry")) {
        std::string content;
        ASSERT_TRUE(hostkit::readWholeFile(file.path().string(), content)) << file.path();
        SCOPED_TRACE(file.path().string());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
        ++files;
    }
    EXPECT_GE(files, 6);
}
