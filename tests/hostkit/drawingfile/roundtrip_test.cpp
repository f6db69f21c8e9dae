#include "drawingfiles.h"
#include "recordcompare.h"

#include "dbsource.h"
#include "drawingreader.h"
#include "drawingwriter.h"

#include "dbaccess.h"
#include "dbopaque.h"
#include "headervariables.h"

#include <gtest/gtest.h>

using namespace hostkit;
using namespace drawingtest;

namespace {

// A drawing that lacks layouts gets them, and who names them says so: the root dictionary, the spaces'
// records, the seed of handles.
bool isOfAddedLayouts(const std::string& line) {
    for (const char* start :
         {"OBJECTS DICTIONARY", "OBJECTS LAYOUT", "TABLES BLOCK_RECORD", "HEADER $HANDSEED"})
        if (line.rfind(start, 0) == 0) return true;
    return false;
}

} // namespace

TEST(RoundTrip, drawingsOfOthersComeBackUntouched) {
    if (foldersAreMissing()) GTEST_SKIP() << "no drawings in " << drawingsFolder();
    for (const std::string& file : drawingFiles()) {
        SCOPED_TRACE(file);
        const auto database = openDrawing(wide(file));
        ASSERT_TRUE(database);
        EXPECT_EQ(database->numOpenObjects(), 0);
        std::string written;
        ASSERT_EQ(writeDrawingToMemory(*database, written), Acad::eOk);
        EXPECT_TRUE(written == database->source()->bytes);
    }
}

// One changed record makes a real save of it: all others must come out as they were.
TEST(RoundTrip, oneChangedHeaderVariableTouchesNothingElse) {
    if (foldersAreMissing()) GTEST_SKIP() << "no drawings in " << drawingsFolder();
    for (const std::string& file : drawingFiles()) {
        SCOPED_TRACE(file);
        const auto database = openDrawing(wide(file));
        ASSERT_TRUE(database);
        database->header().setReal(L"LTSCALE", 12.5);
        std::string written;
        ASSERT_EQ(writeDrawingToMemory(*database, written), Acad::eOk);
        const auto found =
            differences(recordsOf(database->source()->bytes), recordsOf(written), Strictness::kSame);
        ASSERT_EQ(found.size(), 1u) << ::testing::PrintToString(found);
        EXPECT_EQ(found[0].rfind("HEADER $LTSCALE", 0), 0u) << found[0];
    }
}

// Every record is written from what its class read: what a class does not read or write rightly shows here.
TEST(RoundTrip, everyRecordWrittenFromItsFieldsAgrees) {
    if (foldersAreMissing()) GTEST_SKIP() << "no drawings in " << drawingsFolder();
    WriteOptions options;
    options.everythingFromFields = true;
    for (const std::string& file : drawingFiles()) {
        SCOPED_TRACE(file);
        const auto database = openDrawing(wide(file));
        ASSERT_TRUE(database);
        bool lacksLayouts = false;
        DatabaseAccess::forEachObject(*database, [&](const AcDbObject& object) {
            lacksLayouts = lacksLayouts ||
                           (object.sourceSpan().isEmpty() && object.dxfName() == std::wstring(L"LAYOUT"));
        });
        std::string written;
        WriteReport report;
        ASSERT_EQ(writeDrawingToMemory(*database, written, options, &report), Acad::eOk);
        EXPECT_GT(report.recordsWritten, 0u);
        for (const std::string& line :
             differences(recordsOf(database->source()->bytes), recordsOf(written), Strictness::kFields))
            EXPECT_TRUE(lacksLayouts && isOfAddedLayouts(line)) << line;
        const auto again = openDrawingFromMemory(written, L"again");
        ASSERT_TRUE(again);
        EXPECT_EQ(again->numOpenObjects(), 0);
    }
}

// Keeping a group that a class ought to know would hide a fault of its field: these kinds know all of theirs.
TEST(RoundTrip, kindsWithFieldsKnowTheirGroups) {
    if (foldersAreMissing()) GTEST_SKIP() << "no drawings in " << drawingsFolder();
    WriteOptions options;
    options.everythingFromFields = true;
    std::size_t known = 0;
    std::size_t kept = 0;
    for (const std::string& file : drawingFiles()) {
        const auto database = openDrawing(wide(file));
        ASSERT_TRUE(database) << file;
        DatabaseAccess::forEachObject(*database, [](AcDbObject& object) {
            // Opaque records keep all they have; they would drown what this test looks at.
            const bool isOpaque =
                object.isKindOf(AcDbOpaqueObject::desc()) || object.isKindOf(AcDbOpaqueEntity::desc());
            if (isOpaque) DatabaseAccess::setSource(object, {});
            if (isOpaque) DatabaseAccess::markUnchanged(object);
        });
        std::string written;
        WriteReport report;
        ASSERT_EQ(writeDrawingToMemory(*database, written, options, &report), Acad::eOk) << file;
        known += report.groupsFromFields;
        kept += report.groupsKept;
    }
    EXPECT_GT(known, 100000u);
    EXPECT_LT(kept, known / 20) << kept << " groups were kept, " << known << " known";
}
