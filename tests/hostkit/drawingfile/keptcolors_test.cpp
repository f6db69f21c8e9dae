// True colours through a form that has none, and back: an older program's own choice of colour wins.
#include "drawingfiles.h"
#include "drawingparts.h"

#include "dbaccess.h"
#include "dblayertable.h"
#include "dbline.h"

using namespace hostkit;
using namespace drawingtest;

namespace {

const AcCmEntityColor brick(181, 82, 51);

std::unique_ptr<AcDbDatabase> opened(const std::string& bytes) {
    return openDrawingFromMemory(bytes, L"colours", nullptr, quietReading);
}

template <class T>
const T* only(const AcDbDatabase& drawing) {
    const T* found = nullptr;
    DatabaseAccess::forEachObject(drawing, [&](const AcDbObject& object) {
        if (const T* const one = T::cast(&object)) found = one;
    });
    return found;
}

class KeptColors : public testing::TestWithParam<DrawingVersion> {
protected:
    KeptColors() {
        auto* const line = new AcDbLine({0, 0, 0}, {1, 2, 0});
        line->setColor(brick);
        appendToModelSpace(made, line);
        change<AcDbLayerTableRecord>(addRecord<AcDbLayerTable>(made, L"Wall"),
                                     [](AcDbLayerTableRecord& layer) { layer.setColor(brick); });
    }
    void changeLine(AcDbDatabase& drawing, AcCmEntityColor color) {
        change<AcDbLine>(only<AcDbLine>(drawing)->objectId(), [&](AcDbLine& line) { line.setColor(color); });
    }
    AcDbDatabase made;
};

TEST_P(KeptColors, ComeBackFromAnOlderFormByEveryWay) {
    const auto fromMemory = opened(saved(made, GetParam()));
    const auto fromFile = opened(saved(*opened(saved(made, DrawingVersion::k2013)), GetParam()));
    const auto throughBoth = opened(saved(*fromFile, DrawingVersion::k2010));
    for (const AcDbDatabase* drawing : {fromMemory.get(), fromFile.get(), throughBoth.get()}) {
        EXPECT_EQ(only<AcDbLine>(*drawing)->color(), brick);
        EXPECT_EQ(only<AcDbLine>(*drawing)->extendedData(), nullptr);
        EXPECT_EQ(only<AcDbLayerTableRecord>(*drawing)->color(), brick);
    }
    // Nobody changed it: the same bytes.
    const std::string older = saved(*fromFile);
    EXPECT_EQ(saved(*opened(older)), older);
    EXPECT_EQ(saved(*opened(older), fromFields), older);
    EXPECT_EQ(countOf(older, group(2, "VEXO_TRUE_COLOR")), 1u);
}

TEST_P(KeptColors, FollowLaterChanges) {
    const auto drawing = opened(saved(made, GetParam()));
    const AcCmEntityColor moss(90, 110, 60);
    changeLine(*drawing, moss);
    const auto again = opened(saved(*drawing));
    EXPECT_EQ(only<AcDbLine>(*again)->color(), moss);
    EXPECT_EQ(only<AcDbLayerTableRecord>(*again)->color(), brick);
    AcCmEntityColor nearest;
    nearest.setColorIndex(moss.colorIndex());
    changeLine(*again, nearest);
    EXPECT_EQ(only<AcDbLine>(*opened(saved(*again)))->color(), nearest);
}

TEST_P(KeptColors, GiveWayToTheIndexOfAnotherProgram) {
    std::string bytes = saved(made, GetParam());
    const std::string old = "\n" + group(62, std::to_string(brick.colorIndex()));
    ASSERT_GE(countOf(bytes, old), 2u);
    for (std::size_t place; (place = bytes.find(old)) != std::string::npos;)
        bytes.replace(place, old.size(), "\n" + group(62, "3"));
    const auto drawing = opened(bytes);
    EXPECT_EQ(only<AcDbLine>(*drawing)->colorIndex(), 3);
    EXPECT_FALSE(only<AcDbLine>(*drawing)->color().isByColor());
}

// Programs write a true colour without the index beside it, which an older form has alone.
TEST_P(KeptColors, GetTheIndexThatTheirRecordLacked) {
    std::string bytes = saved(made, DrawingVersion::k2010);
    const std::string index = "\n" + group(62, std::to_string(brick.colorIndex()));
    for (std::size_t place; (place = bytes.find(index)) != std::string::npos;)
        bytes.erase(place + 1, index.size() - 1);
    const auto newer = opened(bytes);
    ASSERT_EQ(only<AcDbLine>(*newer)->color(), brick);
    WriteOptions onTwoThreads = quietWriting;
    onTwoThreads.version = GetParam();
    onTwoThreads.threads = 2;
    const std::string older = saved(*newer, onTwoThreads);
    EXPECT_EQ(countOf(older, index), 2u);
    EXPECT_EQ(countOf(older, group(1001, "VEXO_TRUE_COLOR")), 2u);
    EXPECT_EQ(only<AcDbLine>(*opened(older))->color(), brick);
}

// A record may have a true colour by itself in a form that knows none; what is kept beside it is older.
TEST_P(KeptColors, GiveWayToOneThatTheRecordHas) {
    std::string bytes = saved(made, GetParam());
    const std::string index = "\n" + group(62, std::to_string(brick.colorIndex()));
    const AcCmEntityColor other(182, 82, 51); // the same index is its nearest
    ASSERT_EQ(other.colorIndex(), brick.colorIndex());
    ASSERT_GE(countOf(bytes, index), 2u);
    bytes.insert(bytes.rfind(index) + index.size(), group(420, std::to_string(other.rgb())));
    const auto drawing = opened(bytes);
    EXPECT_EQ(only<AcDbLine>(*drawing)->color(), other);
    DatabaseAccess::markChanged(*const_cast<AcDbLine*>(only<AcDbLine>(*drawing)));
    EXPECT_EQ(only<AcDbLine>(*opened(saved(*drawing)))->color(), other);
}

INSTANTIATE_TEST_SUITE_P(Forms, KeptColors,
                         testing::Values(DrawingVersion::kR12, DrawingVersion::kR14, DrawingVersion::k2000));

} // namespace
