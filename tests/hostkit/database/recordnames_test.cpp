// Which record a name finds, whatever was done and taken back before.

#include "recordmodel.h"

#include <cstdlib>

namespace {

using namespace drawingtest;

// VEXO_SEEDS asks for another number of seeds.
std::uint32_t seedCount() {
    const char* asked = std::getenv("VEXO_SEEDS");
    return asked ? static_cast<std::uint32_t>(std::atoi(asked)) : 10000;
}

TEST(RecordNames, FollowWhatTheTablesHold) {
    const RecordModel::Kinds kinds[] = {
        {true, false, false}, {false, true, false}, {true, true, false}, {true, true, true}};
    for (std::uint32_t seed = 1; seed <= seedCount() && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        AcDbDatabase database;
        RecordModel(seed, kinds[seed % 4], database).run(40);
    }
}

} // namespace
