#include "drawingfiles.h"
#include "recordcompare.h"

#include "dbsource.h"

#include "dbaccess.h"
#include "dbopaque.h"
#include "headervariables.h"

using namespace hostkit;
using namespace drawingtest;

namespace {} // namespace

using RoundTrip = DrawingsOfOthers;

TEST_F(RoundTrip, drawingsOfOthersComeBackUntouched) {
    forEach([](AcDbDatabase& database) {
        EXPECT_EQ(database.numOpenObjects(), 0);
        EXPECT_TRUE(saved(database) == database.source()->bytes);
    });
}

// One changed record makes a real save of it: all others must come out as they were.
TEST_F(RoundTrip, oneChangedHeaderVariableTouchesNothingElse) {
    forEach([](AcDbDatabase& database) {
        database.header().setReal(L"LTSCALE", 12.5);
        const auto found =
            differences(recordsOf(database.source()->bytes), recordsOf(saved(database)), Strictness::kSame);
        ASSERT_EQ(found.size(), 1u) << ::testing::PrintToString(found);
        EXPECT_EQ(found[0].rfind("HEADER $LTSCALE", 0), 0u) << found[0];
    });
}

// Every record is written from what its class read: what a class does not read or write rightly shows here.
TEST_F(RoundTrip, everyRecordWrittenFromItsFieldsAgrees) {
    forEach([](AcDbDatabase& database) {
        WriteReport report;
        const std::string written = saved(database, fromFields, &report);
        EXPECT_GT(report.recordsWritten, 0u);
        EXPECT_EQ(differences(recordsOf(database.source()->bytes), recordsOf(written), Strictness::kFields),
                  std::vector<std::string>());
        const auto again = openDrawingFromMemory(written, L"again");
        ASSERT_TRUE(again);
        EXPECT_EQ(again->numOpenObjects(), 0);
    });
}

// Keeping a group that a class ought to know would hide a fault of its field: these kinds know all of theirs.
TEST_F(RoundTrip, kindsWithFieldsKnowTheirGroups) {
    std::size_t known = 0;
    std::size_t kept = 0;
    forEach([&](AcDbDatabase& database) {
        DatabaseAccess::forEachObject(database, [](AcDbObject& object) {
            // Opaque records keep all they have; they would drown what this test looks at.
            const bool isOpaque =
                object.isKindOf(AcDbOpaqueObject::desc()) || object.isKindOf(AcDbOpaqueEntity::desc());
            if (isOpaque) DatabaseAccess::setSource(object, {});
            if (isOpaque) DatabaseAccess::markUnchanged(object);
        });
        WriteReport report;
        (void)saved(database, fromFields, &report);
        known += report.groupsFromFields;
        kept += report.groupsKept;
    });
    EXPECT_GT(known, 100000u);
    EXPECT_LT(kept, known / 20) << kept << " groups were kept, " << known << " known";
}
