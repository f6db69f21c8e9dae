// Which record a name finds, whatever was done and taken back before.

#include "recordmodel.h"

#include <cstdlib>

namespace {

using namespace drawingtest;

// VEXO_SEEDS asks for another number of seeds.
std::uint32_t seedCount() {
    const char* asked = std::getenv("VEXO_SEEDS");
    return asked ? static_cast<std::uint32_t>(std::atoi(asked)) : 2500;
}

TEST(RecordNames, FollowWhatTheTablesHold) {
    const RecordModel::Kinds kinds[] = {
        {true, false, false}, {false, true, false}, {true, true, false}, {true, true, true}};
    for (std::uint32_t seed = 1; seed <= seedCount() && !HasFailure(); ++seed)
        for (const RecordModel::Kinds& each : kinds) {
            SCOPED_TRACE(std::to_string(seed) + " " + std::to_string(&each - kinds));
            AcDbDatabase database;
            RecordModel(seed, each, database).run(40);
            if (HasFailure()) return;
        }
}

} // namespace
