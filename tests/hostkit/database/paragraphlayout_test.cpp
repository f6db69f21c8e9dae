#include "paragraphlayout.h"

#include "drawingparts.h"

#include <gtest/gtest.h>

namespace {

using hostkit::InkSize;
using hostkit::paragraphInk;

/// Adds a style of the sans face.
AcDbObjectId sansStyle(AcDbDatabase& database) {
    const AcDbObjectId id = drawingtest::addRecord<AcDbTextStyleTable>(database, L"Sans");
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(id, AcDb::kForWrite);
    style->setFileName(L"sans.ttf");
    return id;
}

TEST(ParagraphLayout, InkOfSavedDimensions) {
    AcDbDatabase database;
    const AcDbObjectId sans = sansStyle(database);
    const AcDbObjectId strokes;
    const struct {
        const wchar_t* contents;
        AcDbObjectId style;
        double height, width, tall; // 0: not known
    } cases[] = {{L"\\A1;5.5105", sans, 0.18, 0.7486, 0.18 * 1.021},
                 {L"46,72", sans, 2.5, 0.0, 3.005},
                 {L"28,55", sans, 2.5, 8.5, 3.005},
                 {L"102,59", sans, 2.5, 10.148, 3.005},
                 {L"\\A1;3'-1\"", sans, 6.0, 15.95, 0.0},
                 {L"0.125", strokes, 1.0, 3.5, 1.0},
                 {L"\\A1;2.923", strokes, 0.115, 0.46, 0.115},
                 {L"0.100", strokes, 1.0, 3.1667, 1.0},
                 {L"317,88", strokes, 1.0, 0.0, 1.1667},
                 {L"{\\H1.000000x;\\S1#2;}\"", strokes, 0.1875, 0.438, 0.375},
                 {L"{\\H1x;\\S3#8;}", sans, 1.0, 0.0, 2.021}};
    for (const auto& c : cases) {
        const InkSize ink = paragraphInk(c.contents, c.height, c.style);
        const std::string name = drawingtest::narrow(c.contents);
        EXPECT_NEAR(ink.width, c.width > 0.0 ? c.width : ink.width, 0.02 * c.height) << name;
        EXPECT_NEAR(ink.height, c.tall > 0.0 ? c.tall : ink.height, 0.01 * c.height) << name;
    }
}

} // namespace
