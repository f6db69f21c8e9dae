#include "selectionfilter.h"

#include "acutads.h"
#include "filtertext.h"

#include "dbaccess.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbcircle.h"
#include "dblayout.h"
#include "dbline.h"
#include "dbopaque.h"
#include "dbpolyline.h"
#include "dbtext.h"
#include "drawingparts.h"
#include "drawingreader.h"
#include "textencoding.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace {

using drawingtest::append;
using hostkit::DatabaseAccess;
using hostkit::readFilterText;
using hostkit::RecordList;
using hostkit::SelectionFilter;

std::wstring handleText(AcDbObjectId id) {
    wchar_t text[17];
    id.handle().getIntoAsciiBuffer(text);
    return text;
}

/// A drawing with one of each thing that filters ask about.
class SelectionFilters : public testing::Test {
protected:
    SelectionFilters() {
        drawingtest::addRecord<AcDbLayerTable>(m_drawing, L"Walls");
        drawingtest::addRecord<AcDbLayerTable>(m_drawing, L"Walls-2");
        drawingtest::addRecord<AcDbLayerTable>(m_drawing, L"Gone");
        drawingtest::addRecord<AcDbLinetypeTable>(m_drawing, L"DASHED");
        for (const wchar_t* application : {L"ORDANE", L"OTHER"})
            drawingtest::addRecord<AcDbRegAppTable>(m_drawing, application);
        addCurves();
        addTexts();
        addOthers();
    }

    void addCurves() {
        auto* line = new AcDbLine({1.0, 2.0, 3.0}, {1e6, 0.1 + 0.2, 0.0});
        line->setLayer(find(L"Walls"), true);
        line->setColorIndex(1);
        line->setThickness(0.5);
        add("line", line);
        auto* circle = new AcDbCircle({0.0, 0.0, 0.0}, {0.0, 0.0, -1.0}, 2.5);
        circle->setLayer(find(L"Walls-2"), true);
        circle->setColorIndex(0);
        circle->setLineWeight(AcDb::kLnWt025);
        circle->setVisibility(AcDb::kInvisible);
        add("circle", circle);
        auto* outline = new AcDbPolyline(3);
        for (unsigned int i = 0; i < 3; ++i) outline->addVertexAt(i, AcGePoint2d(10.0 * i, 5.0));
        outline->setClosed(true);
        outline->setLinetypeScale(2.0);
        add("outline", outline);
    }

    void addTexts() {
        const AcDbDatabase& drawing = m_drawing;
        auto* text = new AcDbText({0.0, 0.0, 0.0}, L"12 d 14 / 150", AcDbObjectId::kNull, 2.5, 0.5);
        add("text", text, drawing.paperSpaceId());
        drawingtest::change<AcDbText>(text->objectId(),
                                      [](AcDbText& opened) { opened.setLinetype(L"DASHED"); });
        setApplication(text, {L"ORDANE"});
        auto* note = new AcDbText({0.0, 0.0, 0.0}, L"\u00C9tage", AcDbObjectId::kNull, 5.0);
        add("note", note);
        setApplication(note, {L"ORDANE", L"OTHER"});
    }

    void addOthers() {
        auto* unknown = new AcDbOpaqueEntity(L"VEXOBAR");
        unknown->setLayer(find(L"Gone"), true);
        add("unknown", unknown);
        const AcDbObjectId block = drawingtest::addRecord<AcDbBlockTable>(m_drawing, L"Column");
        auto* insert = new AcDbBlockReference(AcGePoint3d(4.0, 5.0, 6.0), block);
        auto* mark = new AcDbAttribute;
        mark->setTag(L"MARK");
        mark->setTextString(L"S 12");
        insert->appendAttribute(mark);
        m_names[mark] = "mark";
        mark->close();
        add("insert", insert);
        add("inner", new AcDbLine({0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}), block);
    }

    AcDbObjectId find(const wchar_t* layer) {
        return DatabaseAccess::objectOf<AcDbSymbolTable>(m_drawing.layerTableId())->find(layer);
    }
    void add(const char* name, AcDbEntity* entity) { add(name, entity, m_drawing.modelSpaceId()); }
    void add(const char* name, AcDbEntity* entity, AcDbObjectId block) {
        append(block, entity);
        m_names[entity] = name;
        m_order.push_back(entity);
    }
    static void setApplication(AcDbEntity* entity, std::initializer_list<const wchar_t*> names) {
        RecordList list;
        for (const wchar_t* name : names) {
            RecordList more(acutBuildList(1001, name, 1070, 7, 0));
            more->rbnext->rbnext = list.release();
            list = std::move(more);
        }
        drawingtest::change<AcDbEntity>(entity->objectId(), [&](AcDbEntity& opened) {
            EXPECT_EQ(opened.setXData(list.get()), Acad::eOk);
        });
    }

    /// The names of those that the filter takes, in the order in which they were made.
    std::string accepted(const resbuf* list) {
        std::wstring reason;
        const auto filter = SelectionFilter::compile(list, m_drawing, &reason);
        if (!filter) return "no filter: " + hostkit::utf8FromWide(reason);
        std::string names;
        for (const AcDbEntity* entity : m_order)
            if (filter->accepts(*entity)) names += (names.empty() ? "" : " ") + m_names[entity];
        return names;
    }
    std::string accepted(const std::wstring& text) {
        const auto reading = readFilterText(text);
        return reading.isRead() ? accepted(reading.list.get()) : hostkit::utf8FromWide(reading.problem);
    }

    AcDbDatabase m_drawing;
    std::map<const AcDbEntity*, std::string> m_names;
    std::vector<const AcDbEntity*> m_order;
};

TEST_F(SelectionFilters, TakeWhatTheirGroupsSay) {
    const struct {
        const wchar_t* filter;
        const char* accepted;
    } cases[] = {
        {L"", "line circle outline text note unknown insert inner"},
        // Types, layers, linetypes, handles' owners, marks.
        {LR"((0 . "line,TEXT"))", "line text note inner"},
        {LR"((0 . "VEXO*"))", "unknown"},
        {LR"((0 . "~*LINE,INSERT"))", "circle text note unknown insert"},
        {LR"((8 . "walls*"))", "line circle"},
        {LR"((8 . "0"))", "outline text note insert inner"},
        {LR"((6 . "dashed"))", "text"},
        {LR"((6 . "ByLayer") (0 . "LINE"))", "line inner"},
        {LR"((100 . "AcDbCircle"))", "circle"},
        {LR"((2 . "column"))", "insert"},
        // The look, also where no file would tell it.
        {L"(62 . 256)", "outline text note unknown insert inner"},
        {L"(62 . 0)", "circle"},
        {LR"((-4 . "<") (62 . 2))", "line circle"},
        {L"(370 . -1)", "line outline text note unknown insert inner"},
        {L"(370 . 25)", "circle"},
        {L"(60 . 1)", "circle"},
        {L"(48 . 2)", "outline"},
        {L"(39 . 0.5)", "line"},
        {L"(210 0 0 -1)", "circle"},
        {L"(67 . 1)", "text"},
        {LR"((67 . 0) (0 . "TEXT"))", "note"},
        {LR"((410 . "model"))", "line circle outline note unknown insert"},
        {LR"((410 . "~Model"))", "text"},
        // Texts and numbers.
        {LR"((1 . "## d ## / ###"))", "text"},
        {L"(1 . \"\u00E9*\")", "note"},
        {LR"((1 . "12 d 14 `/*"))", "text"},
        {L"(40 . 2.5)", "circle text"},
        {LR"((-4 . ">") (40 . 2.5))", "note"},
        {LR"((-4 . ">=") (40 . 2.50000000001))", "circle text note"}, // nearer than 1e-10
        {LR"((-4 . "/=") (40 . 2.5))", "outline note"},
        {LR"((-4 . "*") (40 . 0))", "circle outline text note"},
        {L"(50 . 0.5)", "text"},
        {LR"((-4 . "&") (70 . 3))", "outline insert"},
        {LR"((-4 . "&=") (70 . 3))", ""},
        // Points: any vertex, in the plane of the entity, coordinate by coordinate.
        {L"(10 10 5)", "outline"},
        {L"(10 1 2 3)", "line"},
        {L"(11 1000000.0000000005 0.3 0)", "line"},
        {L"(11 1000000.000001 0.3 0)", ""},
        {LR"((-4 . ">,*,<=") (10 0.5 0 3))", "line outline"},
        {LR"((-4 . "<") (10 1.0 0 0))", "circle outline text note inner"},
        {LR"((-4 . "=,>") (10 20 4))", "outline"},
        {LR"((-4 . "!=") (10 0 0 0))", "line outline insert"}, // one vertex is elsewhere
        // Extended data.
        {LR"((-3 ("ordane")))", "text note"},
        {LR"((-3 ("ORDANE") ("OTH*")))", "note"},
        {LR"((1001 . "OTHER"))", "note"},
        {LR"((-4 . "<not") (-3 ("ORDANE") ("OTHER")) (-4 . "not>") (0 . "TEXT"))", "text"},
        // Groupings.
        {LR"((-4 . "<OR") (0 . "CIRCLE") (-4 . "<and") (0 . "LINE") (62 . 1) (-4 . "AND>") (-4 . "or>"))",
         "line circle"},
        {LR"((-4 . "<xor") (8 . "Walls") (62 . 1) (-4 . "xor>"))", ""},
        {LR"((-4 . "<xor") (8 . "Walls*") (62 . 1) (-4 . "xor>"))", "circle"},
        {LR"((-4 . "<not") (-4 . "<or") (0 . "*LINE") (62 . 256) (-4 . "or>") (-4 . "not>"))", "circle"},
        {LR"((-4 . "<or") (-4 . ">") (40 . 4.0) (1 . "12*") (8 . "Gone") (-4 . "or>"))", "text note unknown"},
        {LR"((8 . "W*") (8 . "*2"))", "circle"},
    };
    for (const auto& each : cases) EXPECT_EQ(accepted(each.filter), each.accepted) << each.filter;
}

TEST_F(SelectionFilters, TakeTheTypeInBothForms) {
    std::wstring pattern = L"CIRCLE";
    resbuf record{nullptr, RTDXF0, {}};
    record.resval.rstring = pattern.data();
    EXPECT_EQ(accepted(&record), "circle");
    record.restype = 0;
    EXPECT_EQ(accepted(&record), "circle");
}

TEST_F(SelectionFilters, RefuseListsThatAreNone) {
    const struct {
        const wchar_t* filter;
        const char* reason;
    } cases[] = {
        {LR"((-4 . "<or"))", "\"<or\" is not closed"},
        {LR"((-4 . "<and") (-4 . "<or") (62 . 1) (-4 . "or>"))", "\"<and\" is not closed"},
        {LR"((-4 . "<or") (-4 . "or>"))", "\"<or\" has nothing in it"},
        {LR"((62 . 1) (-4 . "or>"))", "\"or>\" closes nothing that is open there"},
        {LR"((-4 . "<or") (62 . 1) (-4 . "and>"))", "\"and>\" closes nothing that is open there"},
        {LR"((-4 . "<not") (62 . 1) (62 . 2) (-4 . "not>"))", "\"<not\" takes 1 operand, not 2"},
        {LR"((-4 . "<xor") (62 . 1) (-4 . "xor>"))", "\"<xor\" takes 2 operands, not 1"},
        {LR"((-4 . "<xor") (62 . 1) (62 . 2) (62 . 3) (-4 . "xor>"))", "\"<xor\" takes 2 operands, not 3"},
        {LR"((-4 . "==") (62 . 1))", "\"==\" is no operator"},
        {LR"((-4 . "") (62 . 1))", "\"\" is no operator"},
        {LR"((-4 . ">,") (10 1 2 3))", "\">,\" is no operator"},
        {LR"((-4 . ">"))", "the operator \">\" has no group behind it"},
        {LR"((-4 . ">") (-4 . "<and") (62 . 1) (-4 . "and>"))", "the operator \">\" has no group behind it"},
        {LR"((-4 . "=") (-3 ("A")))", "the operator \"=\" has no group behind it"},
        {LR"((-4 . "=") (1001 . "A"))", "the operator \"=\" has no group behind it"},
        {LR"((-4 . "=") (8 . "0"))", "the operator \"=\" does not suit group 8"},
        {LR"((-4 . "*") (5 . "2F"))", "the operator \"*\" does not suit group 5"},
        {LR"((-4 . "&") (40 . 1.0))", "the operator \"&\" does not suit group 40"},
        {LR"((-4 . ">,<") (40 . 1.0))", "the operator \">,<\" does not suit group 40"},
        {LR"((-4 . "&=") (10 1 2 3))", "the operator \"&=\" does not suit group 10"},
        {LR"((-4 . ">,>,>,>") (10 1 2 3))", "the operator \">,>,>,>\" does not suit group 10"},
        {LR"((1000 . "key"))", "group 1000 cannot be asked for"},
        {LR"((999 . "comment"))", "group 999 cannot be asked for"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(accepted(each.filter), std::string("no filter: ") + each.reason) << each.filter;
}

TEST_F(SelectionFilters, RefuseValuesThatNoTextCanHold) {
    const auto check = [&](resbuf* list, const char* reason) {
        const RecordList owner(list);
        EXPECT_EQ(accepted(list), std::string("no filter: ") + reason);
    };
    const double nowhere[] = {0.0, std::numeric_limits<double>::infinity(), 0.0};
    check(acutBuildList(8, nullptr, 0), "group 8 has no text");
    check(acutBuildList(RTDXF0, nullptr, 0), "group 0 has no text");
    check(acutBuildList(-4, nullptr, 0), "an operator has no text");
    check(acutBuildList(-3, nullptr, 0), "group -3 names no application");
    check(acutBuildList(-3, nullptr, 1001, nullptr, 0), "an application has no name");
    check(acutBuildList(40, std::numeric_limits<double>::quiet_NaN(), 0),
          "group 40 has a value that is no number");
    check(acutBuildList(10, nowhere, 0), "group 10 has a coordinate that is no number");
    check(acutNewRb(310), "group 310 cannot be asked for");
    for (const int type : {RTSTR, RTLB, RTNONE, -1, -2, -5, 1071})
        check(acutNewRb(type), ("group " + std::to_string(type) + " cannot be asked for").c_str());
}

TEST_F(SelectionFilters, NestAsDeepAsTheySay) {
    const auto nested = [&](int depth) {
        std::wstring text = L"(62 . 1)";
        for (int i = 0; i < depth; ++i) text = LR"((-4 . "<not") )" + text + LR"( (-4 . "not>"))";
        return accepted(text);
    };
    EXPECT_EQ(nested(SelectionFilter::deepestNesting), "line");
    EXPECT_EQ(nested(SelectionFilter::deepestNesting + 1), "no filter: the groupings are nested too deeply");
    EXPECT_EQ(nested(2000), "no filter: the groupings are nested too deeply");
}

TEST_F(SelectionFilters, FollowHandlesOwnersAndPartsOfEntities) {
    const auto withHandle = [&](int code, AcDbObjectId id) {
        return L"(" + std::to_wstring(code) + L" . \"" + handleText(id) + L"\")";
    };
    EXPECT_EQ(accepted(withHandle(5, m_order[2]->objectId())), "outline");
    EXPECT_EQ(accepted(withHandle(330, m_drawing.paperSpaceId())), "text");
    for (const auto& [entity, name] : m_names)
        if (name == "mark") m_order = {entity};
    EXPECT_EQ(accepted(LR"((0 . "ATTRIB") (2 . "mark") (1 . "S*") (410 . "Model"))"), "mark");
}

// Beside layers that are gone, names of layers that the drawing's reader did not find.
TEST_F(SelectionFilters, KnowNamesThatNoRecordHas) {
    EXPECT_EQ(drawingtest::erase(find(L"Gone")), Acad::eOk);
    EXPECT_EQ(accepted(LR"((8 . "Gone"))"), "");
    EXPECT_EQ(accepted(LR"((8 . "0") (0 . "VEXOBAR"))"), "unknown");
    auto* stray = new AcDbLine;
    add("stray", stray);
    DatabaseAccess::setLayer(*stray, {});
    DatabaseAccess::setUnknownName(*stray, 8, L"Nowhere");
    EXPECT_EQ(accepted(LR"((8 . "NOWHERE"))"), "stray");
    EXPECT_EQ(accepted(LR"((8 . "~0,Walls*"))"), "line circle stray");
}

// In a file angles are degrees, and some groups are those of other applications.
TEST(SelectionFiltersOfFiles, AskRecordsOfKindsThatNoClassReads) {
    const std::string file =
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1027\n0\nENDSEC\n"
        "0\nSECTION\n2\nENTITIES\n0\nREBARTAG\n5\n2F\n102\n{OTHERS\n1\nnot its own\n102\n}\n"
        "100\nAcDbEntity\n8\n0\n100\nAcRebarTag\n10\n1.0\n20\n2.0\n30\n3.0\n"
        "1\n12 d 14\n40\n2.5\n50\n90.0\n90\n70000\n160\n9000000000\n0\nENDSEC\n0\nEOF\n";
    const auto drawing = hostkit::openDrawingFromMemory(file, L"tag.dxf", nullptr, {.tellPort = false});
    ASSERT_TRUE(drawing);
    const AcDbObjectId id = DatabaseAccess::find(*drawing, 0x2F);
    const auto* const tag = DatabaseAccess::objectOf<AcDbEntity>(id);
    ASSERT_TRUE(tag);
    const auto accepts = [&](const wchar_t* text) {
        const auto reading = readFilterText(text);
        const auto filter = SelectionFilter::compile(reading.list.get(), *drawing);
        return filter && filter->accepts(*tag);
    };
    for (const wchar_t* text :
         {LR"((0 . "REBARTAG") (1 . "12*"))", L"(40 . 2.5)", L"(10 1 2 3)", L"(50 . 1.5707963267948966)",
          LR"((-4 . ">=") (90 . 70000))", L"(160 . 9000000000)", LR"((100 . "AcRebarTag"))"})
        EXPECT_TRUE(accepts(text)) << text;
    for (const wchar_t* text : {LR"((1 . "not*"))", L"(40 . 2.0)", L"(70 . 0)"})
        EXPECT_FALSE(accepts(text)) << text;
}

TEST(Patterns, AreMatchedByTheGivenName) {
    EXPECT_EQ(acutWcMatch(L"Wall-12", L"Wall-##,Floor*"), RTNORM);
    EXPECT_EQ(acutWcMatch(L"wall-12", L"Wall-##,Floor*"), RTERROR);
    EXPECT_EQ(acutWcMatch(nullptr, L"*"), RTERROR);
    EXPECT_EQ(acutWcMatch(L"a", nullptr), RTERROR);
}

} // namespace
