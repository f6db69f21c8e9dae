// Sizes of paragraphs and texts that other programs filed, against ours.
#include "drawingfiles.h"
#include "drawingrecord.h"

#include "dbmtext.h"
#include "dbtext.h"
#include "dbtextstyletablerecord.h"
#include "objectscan.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

using hostkit::DatabaseAccess;

double realOf(const hostkit::DrawingRecord& record, int code) {
    const hostkit::RecordGroup* const found = record.find(code);
    return found ? std::strtod(std::string(found->value).c_str(), nullptr) : std::nan("");
}

/// How far ours is off, in text heights.
struct Spread {
    int count = 0;
    double sum = 0.0;
    double worst = 0.0;
    int near = 0; ///< within a hundredth

    void add(double ours, double theirs, double height) {
        const double off = std::abs(ours - theirs) / height;
        ++count;
        sum += off;
        near += off <= 0.01;
        worst = std::max(worst, off);
    }
    void print(const char* what) const {
        std::printf("%s: %d, %d of them within 0.01 text heights, off by %.4f on average, %.4f at most\n",
                    what, count, near, count ? sum / count : 0.0, worst);
    }
};

class SavedParagraphs : public drawingtest::DrawingsOfOthers {
protected:
    template <class Look>
    void forEachText(Look&& look) {
        forEach([&](const AcDbDatabase& database) {
            hostkit::ObjectScan().lookAtNew(database, [&](AcDbObject& object) {
                if (object.sourceSpan().isEmpty() || !object.isKindOf(AcDbEntity::desc())) return;
                hostkit::DrawingRecord record;
                const hostkit::SourceSpan span = object.sourceSpan();
                hostkit::scanRecordAt(database.source()->bytes, span.offset, span.length, record);
                look(object, record);
            });
        });
    }
    static bool isSans(AcDbObjectId style) {
        const auto* const record = DatabaseAccess::objectOf<AcDbTextStyleTableRecord>(style);
        return record && record->fileName() == L"arial.ttf";
    }
};

TEST_F(SavedParagraphs, areAsLargeAsTheyWereFiled) {
    Spread widths, heights;
    forEachText([&](const AcDbObject& object, const hostkit::DrawingRecord& record) {
        const auto* const text = AcDbMText::cast(&object);
        if (!text || !isSans(text->textStyle()) || std::isnan(realOf(record, 42))) return;
        widths.add(text->actualWidth(), realOf(record, 42), text->textHeight());
        heights.add(text->actualHeight(), realOf(record, 43), text->textHeight());
    });
    widths.print("widths of paragraphs");
    heights.print("heights of paragraphs");
    EXPECT_GE(widths.count, 20);
    EXPECT_LE(widths.worst, 0.05);
    EXPECT_LE(heights.worst, 0.02);
}

// A centred or right text is filed with its start, too. Attributes may have got another wording since, and
// texts that name no style another standing one.
TEST_F(SavedParagraphs, textsAreAsWideAsTheyWereFiled) {
    Spread widths;
    forEachText([&](const AcDbObject& object, const hostkit::DrawingRecord&) {
        const auto* const text = AcDbText::cast(&object);
        if (!text || object.isA() != AcDbText::desc()) return;
        if (!isSans(text->textStyle()) || text->text().empty()) return;
        const int mode = text->horizontalMode();
        const bool isMoved = mode == AcDb::kTextCenter || mode == AcDb::kTextMid || mode == AcDb::kTextRight;
        if (!isMoved) return;
        const AcGeVector3d along(std::cos(text->rotation()), std::sin(text->rotation()), 0.0);
        const double half = (text->alignmentPoint() - text->position()).dotProduct(along);
        widths.add(text->estimatedWidth(), mode == AcDb::kTextRight ? half : 2.0 * half, text->height());
    });
    widths.print("widths of texts");
    EXPECT_GE(widths.count, 100);
    EXPECT_GE(widths.near, widths.count * 9 / 10);
}

} // namespace
