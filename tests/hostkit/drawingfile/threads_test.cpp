// A save on several threads is the save on one: the same bytes, the same counts, the same failure; and the
// code of applications is called on the caller's thread alone.
#include "drawingfiles.h"
#include "drawingparts.h"

#include "dbaccess.h"
#include "dbfiler.h"
#include "dblayertablerecord.h"
#include "dbline.h"

#include <set>
#include <thread>

using namespace hostkit;
using namespace drawingtest;

namespace {

struct Saved {
    Acad::ErrorStatus status;
    std::string bytes;
    WriteReport report;
};

Saved savedOn(unsigned threads, const AcDbDatabase& drawing, bool everything) {
    Saved result;
    WriteOptions options = quietWriting;
    options.everythingFromFields = everything;
    options.threads = threads;
    result.status = writeDrawingToMemory(drawing, result.bytes, options, &result.report);
    return result;
}

void expectSameOnThreads(const AcDbDatabase& drawing, bool everything) {
    const Saved one = savedOn(1, drawing, everything);
    for (const unsigned threads : {2u, 7u}) {
        SCOPED_TRACE(threads);
        const Saved many = savedOn(threads, drawing, everything);
        EXPECT_EQ(many.status, one.status);
        EXPECT_TRUE(many.bytes == one.bytes);
        EXPECT_EQ(many.report.message, one.report.message);
        if (one.status != Acad::eOk) continue; // it ended somewhere
        EXPECT_EQ(many.report.recordsWritten, one.report.recordsWritten);
        EXPECT_EQ(many.report.recordsCopied, one.report.recordsCopied);
        EXPECT_EQ(many.report.groupsFromFields, one.report.groupsFromFields);
        EXPECT_EQ(many.report.groupsKept, one.report.groupsKept);
    }
}

class ThreadsOfASave : public DrawingsOfOthers {};

TEST_F(ThreadsOfASave, GiveTheBytesOfOne) {
    forEach([](AcDbDatabase& drawing) {
        expectSameOnThreads(drawing, true);
        int place = 0;
        AcDbObjectId layer;
        DatabaseAccess::forEachObject(drawing, [&](AcDbObject& object) {
            const auto* const record = AcDbLayerTableRecord::cast(&object);
            if (record && record->name() != L"0") layer = record->objectId();
            if (++place % 3 == 0 && object.isKindOf(AcDbEntity::desc())) DatabaseAccess::markChanged(object);
        });
        if (!layer.isNull())
            change<AcDbLayerTableRecord>(layer, [](AcDbLayerTableRecord& record) {
                EXPECT_EQ(record.setName(L"By another name"), Acad::eOk);
            });
        expectSameOnThreads(drawing, false);
    });
}

/// A line of an application, which notes on which threads it is asked.
class WatchedLine : public AcDbLine {
    ACRX_DECLARE_MEMBERS(WatchedLine)

public:
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override {
        threads.insert(std::this_thread::get_id());
        return fails ? Acad::eNotImplementedYet : AcDbLine::dxfOutFields(filer);
    }
    static inline std::set<std::thread::id> threads;
    static inline bool fails = false;
};
ACRX_DXF_DEFINE_MEMBERS(WatchedLine, AcDbLine, 0, 0, 0, VEXO_TEST_WATCHED, TEST)

class WatchedLines : public testing::Test {
protected:
    void SetUp() override {
        WatchedLine::rxInit();
        WatchedLine::fails = false;
        AcDbDatabase made;
        for (int i = 0; i < 40; ++i) appendToModelSpace(made, new AcDbLine({0, 0, 0}, {1, double(i), 0}));
        drawing = openDrawingFromMemory(saved(made, quietWriting), L"watched", nullptr, quietReading);
        ASSERT_TRUE(drawing);
        std::vector<AcDbLine*> lines;
        DatabaseAccess::forEachObject(*drawing, [&](AcDbObject& object) {
            if (auto* const line = AcDbLine::cast(&object)) lines.push_back(line);
        });
        for (std::size_t i = 0; i < lines.size(); i += 4) takePlaceOf(*lines[i]);
        WatchedLine::threads.clear();
    }
    void TearDown() override {
        drawing.reset();
        WatchedLine::rxExit();
    }
    // The line's record becomes that of a watched one.
    void takePlaceOf(AcDbLine& line) {
        auto* const watched = new WatchedLine;
        appendToModelSpace(*drawing, watched);
        DatabaseAccess::setSource(*watched, line.sourceSpan());
        DatabaseAccess::setSource(line, {});
    }
    std::unique_ptr<AcDbDatabase> drawing;
};

TEST_F(WatchedLines, AreAskedOnTheCallersThreadAlone) {
    EXPECT_EQ(savedOn(5, *drawing, true).status, Acad::eOk);
    EXPECT_EQ(WatchedLine::threads, std::set{std::this_thread::get_id()});
    expectSameOnThreads(*drawing, true);
}

TEST_F(WatchedLines, FailTheSaveWithTheSameWords) {
    WatchedLine::fails = true;
    EXPECT_EQ(savedOn(5, *drawing, true).status, Acad::eNotImplementedYet);
    expectSameOnThreads(*drawing, true);
}

} // namespace
