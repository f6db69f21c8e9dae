// What other applications keep in a drawing must outlive an edit of ours.
#include "drawingfiles.h"
#include "drawingreader.h"
#include "drawingrecord.h"
#include "drawingwriter.h"
#include "sampledrawing.h"

#include "dbaccess.h"
#include "dbdictionary.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsource.h"
#include "dbxrecrd.h"

#include <gtest/gtest.h>

#include <map>

using namespace hostkit;
using namespace drawingtest;

namespace {

using Groups = std::vector<std::pair<int, std::string>>;

bool isKeptWhole(std::string_view record) {
    return record == "DICTIONARY" || record == "ACDBDICTIONARYWDFLT" || record == "XRECORD" ||
           record == "DICTIONARYVAR";
}

/// By handle: extended data, and all of the records of dictionaries and their like, with the bytes of the
/// values. A new dictionary's name stands in the root, so the root is told by what it had before.
std::map<std::string, Groups> foreignData(const std::string& bytes) {
    std::map<std::string, Groups> data;
    GroupScanner scanner(bytes, startOfGroups(bytes));
    DrawingRecord record;
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (group.code != 0 || group.is(0, "SECTION") || group.is(0, "ENDSEC")) continue;
        if (scanRecord(scanner, group, record) == ScanResult::kBadCode) break;
        const RecordGroup* const handle = record.find(record.name() == "DIMSTYLE" ? 105 : 5);
        const std::size_t first = isKeptWhole(record.name()) ? 1 : record.extendedDataBegin;
        if (!handle || first >= record.groups.size()) continue;
        Groups& groups = data[std::string(withoutBlanks(handle->value))];
        for (std::size_t i = first; i < record.groups.size(); ++i)
            groups.emplace_back(record.groups[i].code, withoutBlanks(record.groups[i].value));
    }
    return data;
}

void expectKept(const std::map<std::string, Groups>& before, const std::map<std::string, Groups>& after) {
    for (const auto& [handle, groups] : before) {
        const auto found = after.find(handle);
        ASSERT_NE(found, after.end()) << handle;
        // The root may have got entries of its own.
        if (found->second.size() == groups.size()) {
            EXPECT_EQ(found->second, groups) << handle;
        } else {
            for (const auto& each : groups)
                EXPECT_NE(std::find(found->second.begin(), found->second.end(), each), found->second.end())
                    << handle << ": " << each.first << " " << each.second;
        }
    }
}

} // namespace

TEST(ForeignData, extendedDataAndDictionariesOutliveAnEditOfEveryRecord) {
    if (foldersAreMissing()) GTEST_SKIP() << "no drawings in " << drawingsFolder();
    ReadOptions quiet;
    quiet.tellPort = false;
    std::size_t kept = 0;
    for (const std::string& file : drawingFiles()) {
        SCOPED_TRACE(file);
        const auto database = openDrawing(wide(file), nullptr, quiet);
        ASSERT_TRUE(database);
        const auto before = foreignData(database->source()->bytes);
        kept += before.size();
        DatabaseAccess::forEachObject(*database, [](AcDbObject& object) {
            if (!object.sourceSpan().isEmpty()) DatabaseAccess::markChanged(object);
        });
        std::string saved;
        ASSERT_EQ(writeDrawingToMemory(*database, saved), Acad::eOk);
        expectKept(before, foreignData(saved));
    }
    EXPECT_GT(kept, 100u) << "the drawings have such data";
}

TEST(ForeignData, aNewEntryInADictionaryOfOthersLeavesTheirsAlone) {
    const auto made = sampleDrawing();
    std::string original;
    ASSERT_EQ(writeDrawingToMemory(*made, original), Acad::eOk);
    const std::size_t place = original.find("DICTIONARY\r\n");
    ASSERT_NE(place, std::string::npos);
    const auto database = openDrawingFromMemory(original, L"foreign");
    ASSERT_TRUE(database);
    {
        AcDbObjectPointer<AcDbDictionary> root(database->namedObjectsDictionaryId(), AcDb::kForWrite);
        auto* const service = new AcDbDictionary;
        AcDbObjectId id;
        ASSERT_EQ(root->setAt(L"VEXO_SERVICES", service, id), Acad::eOk);
        service->close();
    }
    std::string saved;
    ASSERT_EQ(writeDrawingToMemory(*database, saved), Acad::eOk);
    const auto before = foreignData(original);
    const auto after = foreignData(saved);
    EXPECT_EQ(after.size(), before.size() + 1);
    expectKept(before, after);
}
