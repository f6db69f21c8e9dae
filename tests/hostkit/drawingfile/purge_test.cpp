// Purging: each way to refer to something keeps it, by a table; what is erased is named by nothing that is
// left, and undo gives the same bytes back.
#include "drawingfiles.h"
#include "drawingpurge.h"
#include "faulttexts.h"

#include "dbaccess.h"
#include "dbobjptr.h"
#include "groupscanner.h"
#include "undohistory.h"

#include <set>

using namespace drawingtest;
using namespace hostkit;

namespace {

// One X of each kind, beside the linetype that only the dictionary of the layer names and the circle of two
// blocks.
std::string withUnused() {
    std::string text = contentOf("sound.txt");
    const auto add = [&](const std::string& before, const std::string& records) {
        text.insert(beginOf(text, before), records);
    };
    const std::string record = "100=AcDbSymbolTableRecord ";
    add("5=4", "0=LTYPE 5=A2 330=3 " + record +
                   "100=AcDbLinetypeTableRecord 2=X 70=0 3= 72=65 73=0 40=0.0\n"
                   "0=LTYPE 5=A8 330=3 " +
                   record + "100=AcDbLinetypeTableRecord 2=Y 70=0 3= 72=65 73=0 40=0.0\n");
    add("5=9", "0=LAYER 5=A1 102={ACAD_XDICTIONARY 360=A9 102=} 330=8 " + record +
                   "100=AcDbLayerTableRecord 2=X 70=0 62=7 6=Continuous\n");
    add("5=C", "0=STYLE 5=A3 330=B " + record + "100=AcDbTextStyleTableRecord 2=X 70=0 40=0.0 3=txt 4=\n");
    add("5=11", "0=APPID 5=A6 330=10 " + record + "100=AcDbRegAppTableRecord 2=X 70=0\n");
    add("105=14", "0=DIMSTYLE 105=A4 330=13 " + record + "100=AcDbDimStyleTableRecord 2=X 70=0\n");
    for (const auto& [name, handle, other] :
         {std::tuple{"X", "A5", ""}, {"C1", "B5", "C2"}, {"C2", "C5", "C1"}}) {
        const std::string layer = *other ? "0" : "X";
        const std::string owner = std::string(" 330=") + handle + " 100=AcDbEntity 8=" + layer + " 100=";
        const std::string own = std::string("0=") + handle[0] + "F";
        add("5=1F", std::string("0=BLOCK_RECORD 5=") + handle + " 330=15 " + record +
                        "100=AcDbBlockTableRecord 2=" + name + " 340=0\n");
        add("5=20", std::string("0=BLOCK 5=") + handle[0] + "F1" + owner + "AcDbBlockBegin 2=" + name +
                        " 70=0 10=0.0 20=0.0 30=0.0 3=" + name + " 1=\n" +
                        (*other ? std::string("0=POINT 5=") + handle[0] + "F2" + owner +
                                      "AcDbPoint 10=0.0 20=0.0 30=0.0 1001=ORDANE 1005=" +
                                      (*other == 'C' && other[1] == '2' ? "C5" : "B5") + "\n"
                                : "") +
                        "0=ENDBLK 5=" + handle[0] + "F3" + owner + "AcDbBlockEnd\n");
    }
    add("5=63", "0=MLINESTYLE 5=A7 330=62 100=AcDbMlineStyle 2=X 70=0 3= 62=256 51=90.0 52=90.0 71=0\n"
                "0=DICTIONARY 5=A9 330=A1 100=AcDbDictionary 281=1 3=own 360=AA\n"
                "0=XRECORD 5=AA 330=A9 100=AcDbXrecord 280=1 6=Y\n"
                "0=GROUP 5=AB 330=AC 100=AcDbGroup 300= 70=0 71=1\n"
                "0=DICTIONARY 5=AC 330=60 100=AcDbDictionary 281=1 3=X 350=AB\n");
    text.replace(placeOf(text, "3=Standard 350=63"), 17, "3=Standard 350=63 3=X 350=A7");
    text.replace(placeOf(text, "3=SERVICE"), 9, "3=ACAD_GROUP 350=AC 3=SERVICE");
    return text;
}

std::set<std::string> namesOf(const std::vector<PurgeItem>& items) {
    std::set<std::string> names;
    for (const PurgeItem& each : items) {
        std::wstring name = purgeKindName(each.kind) + (L" " + each.name);
        names.emplace(name.begin(), name.end());
    }
    return names;
}

std::set<std::string> unusedIn(const std::string& text) {
    const auto database = openDrawingFromMemory(drawingOf(text), L"test", nullptr, quietReading);
    std::vector<PurgeItem> unused;
    EXPECT_TRUE(database && findUnused(*database, unused) == Acad::eOk) << text;
    return namesOf(unused);
}

const std::set<std::string> allUnused = {
    "layer X",  "linetype X", "linetype Y",    "text style X", "dimension style X", "block C1",
    "block C2", "block X",    "application X", "group X",      "multiline style X"};

struct Use {
    const char* record;
    const char* change; ///< puts one reference there
    std::set<std::string> kept;
};
const Use uses[] = {
    {"5=41", "8=0 -> 8=x", {"layer X", "linetype Y"}},
    {"5=41", "6=DASHED -> 6=Y", {"linetype Y"}},
    {"5=A", "6=DASHED -> 6=X", {"linetype X"}},
    {"5=7", "74=0 -> 74=2 75=1 340=A3 46=1.0 50=0.0 44=0.0 45=0.0 9=X", {"text style X"}},
    {"5=50", "7=STANDARD -> 7=X", {"text style X"}},
    {"5=4A", "2=NUMBER -> 2=X", {}},
    {"5=4A", "70=0 -> 70=0 7=X", {"text style X"}},
    {"5=56",
     "43=1.0 -> 43=1.0 // 0=INSERT 5=E1 330=1F 100=AcDbEntity 8=0 100=AcDbBlockReference 2=X 10=0.0 20=0.0 "
     "30=0.0",
     {"block X", "layer X", "linetype Y"}},
    {"5=56",
     "43=1.0 -> 43=1.0 // 0=INSERT 5=E1 330=1F 100=AcDbEntity 8=0 100=AcDbBlockReference 2=C1 10=0.0 20=0.0 "
     "30=0.0",
     {"block C1", "block C2"}},
    {"5=52", "3=Standard -> 3=X", {"dimension style X"}},
    {"5=53", "3=Standard -> 3=X", {"dimension style X"}},
    {"5=48", "340=63 -> 340=A7", {"multiline style X"}},
    {"5=40", "1001=ORDANE -> 1001=X 1000=a 1001=ORDANE", {"application X"}},
    {"5=40", "1003=Slab -> 1003=X", {"layer X", "linetype Y"}},
    {"5=40", "1005=41 -> 1005=A5", {"block X", "layer X", "linetype Y"}},
    {"5=40", "1000=mark -> 1000=X", {}},
    {"105=14", "340=C -> 340=A3 342=A5", {"text style X", "block X", "layer X", "linetype Y"}},
    {"5=69", "330=41 -> 330=A4", {"dimension style X"}},
    {"5=69", "330=41 -> 320=A5", {"block X", "layer X", "linetype Y"}},
    {"5=69", "1=text -> 8=X 2=X", {"layer X", "linetype Y", "block X", "multiline style X"}},
    {"5=41", "5=41 -> 5=41 102={ACAD_REACTORS 330=A1 102=}", {}},
    {"5=41", "5=41 -> 5=41 102={X 340=A3 102=}", {"text style X"}},
    {"5=54", "0=POINT -> 0=FOREIGN", {}},
    {"5=54",
     "0=POINT 5=54 330=1F 100=AcDbEntity 8=0 -> 0=FOREIGN 5=54 330=1F 100=AcDbEntity 8=0 100=Foreign 3=X 7=X",
     {"dimension style X", "text style X"}},
    {".", "9=$CLAYER 8=0 -> 9=$CLAYER 8=X", {"layer X", "linetype Y"}},
    {".",
     "9=$LTSCALE -> 9=$DIMBLK 1=X 9=$CMLSTYLE 2=X 9=$LTSCALE",
     {"block X", "layer X", "linetype Y", "multiline style X"}},
    {"5=AB", "71=1 -> 71=1 340=41", {"group X"}},
    {"5=AB", "71=1 -> 71=1 340=EEEE", {}},
};

bool eraseAll(const AcDbObjectIdArray& ids) {
    for (int i = 0; i < ids.length(); ++i)
        if (AcDbObjectPointer<AcDbObject>(ids[i], AcDb::kForWrite)->erase() != Acad::eOk) return false;
    return true;
}

} // namespace

TEST(Purge, whatRefersKeeps) {
    EXPECT_EQ(unusedIn(withUnused()), allUnused);
    for (const Use& use : uses) {
        SCOPED_TRACE(use.change);
        std::set<std::string> wanted = allUnused;
        for (const std::string& each : use.kept) EXPECT_EQ(wanted.erase(each), 1u) << each;
        const std::string text = changedText(withUnused(), use.record, use.change);
        EXPECT_EQ(unusedIn(text), wanted);
    }
}

// A record that was renamed is still what unchanged records name, and a changed one refers as it is now.
TEST(Purge, changesCount) {
    const std::string text = changedText(withUnused(), "5=41", "8=0 -> 8=X");
    const auto database = openDrawingFromMemory(drawingOf(text), L"test", nullptr, quietReading);
    const auto open = [&](AcDbHandleValue handle) {
        return AcDbObjectPointer<AcDbObject>(DatabaseAccess::find(*database, handle), AcDb::kForWrite);
    };
    ASSERT_EQ(AcDbSymbolTableRecord::cast(open(0xA1).object())->setName(L"Z"), Acad::eOk);
    std::vector<PurgeItem> unused;
    EXPECT_EQ(findUnused(*database, unused), Acad::eOk);
    EXPECT_EQ(namesOf(unused).count("layer Z"), 0u);
    {
        const auto circle = open(0x41);
        EXPECT_EQ(findUnused(*database, unused), Acad::eWasOpenForWrite);
        ASSERT_EQ(AcDbEntity::cast(circle.object())->setLayer(L"0"), Acad::eOk);
    }
    EXPECT_EQ(findUnused(*database, unused), Acad::eOk);
    EXPECT_EQ(namesOf(unused).count("layer Z"), 1u);
    const AcDbObjectPointer<AcDbObject> layer(DatabaseAccess::find(*database, 0xA1), AcDb::kForRead);
    PurgeReport report;
    EXPECT_EQ(purgeUnused(*database, report), Acad::eOk);
    EXPECT_EQ(namesOf(report.kept), (std::set<std::string>{"layer Z", "linetype Y"})) << "held open";
}

// Asked again and again, the public question comes to the end of all but circles.
TEST(Purge, byListsOfIds) {
    const auto database = openDrawingFromMemory(drawingOf(withUnused()), L"test", nullptr, quietReading);
    AcDbObjectIdArray all;
    DatabaseAccess::forEachObject(*database, [&](const AcDbObject& each) { all.append(each.objectId()); });
    for (const std::size_t count : {7u, 1u, 1u, 0u}) { // a block, its layer, and the linetype of that
        AcDbObjectIdArray ids = all;
        ASSERT_EQ(database->purge(ids), Acad::eOk);
        EXPECT_EQ(ids.length(), static_cast<int>(count));
        ASSERT_TRUE(eraseAll(ids));
    }
    std::vector<PurgeItem> unused;
    EXPECT_EQ(findUnused(*database, unused), Acad::eOk);
    EXPECT_EQ(namesOf(unused), (std::set<std::string>{"block C1", "block C2"}));
}

namespace {

/// The values of all groups that can be handles, but for the objects' own and their reactors'.
std::set<std::string> handlesIn(const std::string& bytes, bool own) {
    std::set<std::string> handles;
    GroupScanner scanner(bytes);
    bool isInReactors = false;
    for (RawGroup group; scanner.next(group) == ScanResult::kGroup;) {
        if (group.code == 102) isInReactors = group.value.starts_with("{ACAD_REACTORS");
        const bool isOwn = group.code == 5 || group.code == 105;
        const bool refers =
            (group.code >= 330 && group.code < 370) || group.code == 390 || group.code == 1005;
        if (own ? isOwn : refers && !isInReactors) handles.emplace(group.value);
    }
    return handles;
}

} // namespace

class PurgedDrawings : public DrawingsOfOthers {};

TEST_F(PurgedDrawings, nothingLeftNamesWhatWentAndUndoGivesItBack) {
    forEach([](AcDbDatabase& database) {
        const std::string before = saved(database);
        database.disableUndoRecording(false);
        beginUndoGroup(database, L"PURGE");
        PurgeReport report;
        ASSERT_EQ(purgeUnused(database, report), Acad::eOk);
        endUndoGroup(database);
        EXPECT_TRUE(report.kept.empty());
        const std::string after = saved(database);
        const std::set<std::string> own = handlesIn(before, true);
        const std::set<std::string> left = handlesIn(after, true);
        for (const std::string& each : handlesIn(after, false))
            EXPECT_TRUE(left.contains(each) || !own.contains(each)) << each;
        std::vector<PurgeItem> unused;
        EXPECT_EQ(findUnused(database, unused), Acad::eOk);
        EXPECT_TRUE(unused.empty());
        UndoReport undone;
        EXPECT_EQ(undoLastGroup(database, undone) == Acad::eOk, !report.erased.empty());
        EXPECT_TRUE(saved(database) == before);
    });
}
