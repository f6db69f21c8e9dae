// What other applications keep in a drawing must outlive an edit of ours.
#include "drawingfiles.h"
#include "drawingparts.h"
#include "recordcompare.h"
#include "sampledrawing.h"

#include "dbaccess.h"
#include "dbsource.h"

#include <algorithm>

using namespace hostkit;
using namespace drawingtest;

namespace {

bool isKeptWhole(std::string_view record) {
    return record == "DICTIONARY" || record == "ACDBDICTIONARYWDFLT" || record == "XRECORD" ||
           record == "DICTIONARYVAR";
}

/// Extended data, and all of the records of dictionaries and their like, with the bytes of the values.
Records foreignData(const std::string& bytes) {
    Records data;
    for (const auto& [key, groups] : recordsOf(bytes)) {
        const auto first = isKeptWhole(groups.front().value)
                               ? groups.begin() + 1
                               : std::find_if(groups.begin(), groups.end(),
                                              [](const Pair& group) { return group.code >= 1000; });
        if (first != groups.end()) data[key].assign(first, groups.end());
    }
    return data;
}

void expectKept(const Records& before, const Records& after) {
    for (const auto& [key, groups] : before) {
        const auto found = after.find(key);
        ASSERT_NE(found, after.end()) << key;
        // The root may have got entries of its own.
        if (found->second.size() == groups.size()) {
            EXPECT_TRUE(found->second == groups) << key;
        } else {
            for (const Pair& each : groups)
                EXPECT_NE(std::find(found->second.begin(), found->second.end(), each), found->second.end())
                    << key << ": " << each.code << " " << each.value;
        }
    }
}

} // namespace

TEST_F(DrawingsOfOthers, extendedDataAndDictionariesOutliveAnEditOfEveryRecord) {
    std::size_t kept = 0;
    forEach([&](AcDbDatabase& database) {
        const Records before = foreignData(database.source()->bytes);
        kept += before.size();
        DatabaseAccess::forEachObject(database, [](AcDbObject& object) {
            if (!object.sourceSpan().isEmpty()) DatabaseAccess::markChanged(object);
        });
        expectKept(before, foreignData(saved(database)));
    });
    EXPECT_GT(kept, 100u) << "the drawings have such data";
}

TEST(ForeignData, aNewEntryInADictionaryOfOthersLeavesTheirsAlone) {
    const std::string original = saved(*sampleDrawing());
    const auto database = openDrawingFromMemory(original, L"foreign");
    ASSERT_TRUE(database);
    enter(database->namedObjectsDictionaryId(), L"VEXO_SERVICES", new AcDbDictionary);
    const Records before = foreignData(original);
    const Records after = foreignData(saved(*database));
    EXPECT_EQ(after.size(), before.size() + 1);
    expectKept(before, after);
}
