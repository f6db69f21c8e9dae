// Text records of filed entities as outsiders may hand them in: the fuzz target's corpus and its damaged
// forms.
#include "../../../fuzz/entityrecordinvariants.h"
#include "hosttest.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

class EntityRecords : public hostkit::HostTest {};

} // namespace

TEST_F(EntityRecords, TheCorpusAndItsDamagedFormsAreSurvived) {
    const auto run = [](const std::string& each) {
        EXPECT_EQ(entityrecordinvariants::faultOf(each), "") << each;
    };
    std::mt19937 random(9);
    std::size_t files = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/entityrecord")) {
        std::ifstream stream(file.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        ++files;
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut) run(bytes.substr(0, cut));
        for (int round = 0; round < 2000; ++round) {
            std::string other = bytes;
            const char characters[] = "0123456789/-.en \n\xff";
            for (int changes = 0; changes < 3; ++changes)
                other[random() % other.size()] = characters[random() % (sizeof characters - 1)];
            run(other);
        }
    }
    EXPECT_GE(files, 9u);
}
