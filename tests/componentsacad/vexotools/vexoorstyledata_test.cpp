// A style's data: its items, its file to the byte, and the records that it carries.
#include "vexoorstyledata.h"

#include "afxwin.h"
#include "dbsymtb.h"
#include "hosttest.h"
#include "temporaryfolder.h"
#include "widepath.h"

#include <cmath>
#include <cwchar>
#include <memory>

namespace {

using Item = VEXOORStyleDataItem;

class StyleData : public hostkit::HostTest {
protected:
    CString add(const wchar_t* key, const CString& value) {
        CString full = key;
        style.AddItem(full, value);
        return full;
    }
    /// What WriteDataToFile leaves.
    std::string written() {
        const CString path = wide(folder / "style");
        CStdioFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite);
        style.WriteDataToFile(&file);
        file.Close();
        return folder.read("style");
    }
    template <class Record>
    AcDbObjectId enter(AcDbObjectId table, std::unique_ptr<Record> record) {
        AcDbSymbolTable* opened = nullptr;
        acdbOpenObject(opened, table, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(opened->add(id, record.get()), Acad::eOk);
        opened->close();
        record.release()->close();
        return id;
    }

    TemporaryFolder folder;
    VEXOORStyleData style;
};

// The bytes as they were written down once: what stands in users' folders must be read for ever.
TEST_F(StyleData, TheFileIsTheseBytes) {
    style.setPrefix(L"key");
    auto text = std::make_unique<AcDbTextStyleTableRecord>();
    text->setName(L"Légende €");
    text->setFileName(L"txt.shx");
    text->setBigFontFileName(L"big.shx");
    text->setTextSize(2.5);
    text->setFlagBits(4);
    text->setIsVertical(true);
    text->setXScale(0.8);
    text->setObliquingAngle(0.1);
    auto line = std::make_unique<AcDbLinetypeTableRecord>();
    line->setName(L"TIRETS");
    line->setPatternLength(0.75);
    line->setNumDashes(2);
    line->setDashLengthAt(0, 0.5);
    line->setDashLengthAt(1, -0.25);
    EXPECT_EQ(written(), "") << "without type and name";
    style.setEntityType(L"Typé");
    EXPECT_EQ(written(), "");
    style.setStyleName(L"Mine \"x\" 文");
    CString key = L"T";
    EXPECT_EQ(style.AddItemTextStyle(key, enter(database().textStyleTableId(), std::move(text))), Acad::eOk);
    EXPECT_EQ(key, L"keyT") << "in place";
    EXPECT_EQ(style.AddItemLineType(key = L"L", enter(database().linetypeTableId(), std::move(line))),
              Acad::eOk);
    EXPECT_EQ(style.AddItemDimStyle(key = L"D", database().dimstyle()), Acad::eOk);
    style.AddItem(key = L"Angle", -1.0 / 3.0);
    style.AddItem(key = L"Trim", -2147483647);
    EXPECT_EQ(written(), "[Typ\xE9]\r\n"
                         "StyleName = \"Mine \"x\" ?\"\r\n"
                         "keyT = \"L\xE9gende \x80\"\r\n"
                         "keyTFont = \"txt.shx\"\r\n"
                         "keyTBigFont = \"big.shx\"\r\n"
                         "keyTHeight = 2.500000000000\r\n"
                         "keyTUpsideDown = 1\r\n"
                         "keyTBackWards = 0\r\n"
                         "keyTVertical = 1\r\n"
                         "keyTWidthFactor = 0.800000000000\r\n"
                         "keyTObliqueAngle = 0.100000000000\r\n"
                         "keyL = \"TIRETS\"\r\n"
                         "keyLDescription = \"2 0.500000 -0.250000\"\r\n"
                         "keyLPatternLength = 0.750000000000\r\n"
                         "keyD = \"Standard\"\r\n"
                         "keyAngle = -0.333333333333\r\n"
                         "keyTrim = -2147483647\r\n");
}

TEST_F(StyleData, WritingThatFailsEndsInSilence) {
    style.setEntityType(L"T");
    style.setStyleName(L"N");
    for (int i = 0; i < 10000; ++i) add(L"a", L"b");
    style.WriteDataToFile(nullptr);
    CStdioFile closed, full(L"/dev/full", CFile::modeWrite | CFile::shareDenyNone);
    style.WriteDataToFile(&closed);
    style.WriteDataToFile(&full);
    CString key = L"a";
    EXPECT_EQ(style.AddItemTextStyle(key, {}), Acad::eInvalidInput);
    EXPECT_EQ(style.AddItemLineType(key, {}), Acad::eInvalidInput);
    EXPECT_EQ(style.AddItemDimStyle(key, {}), Acad::eInvalidInput);
    EXPECT_EQ(style.AddItemTextStyle(key, database().layerZero()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(style.GetItems().length(), 10000) << "nothing was added";
}

// A key is put behind the prefix unless that stands anywhere in it; a look-up always does.
TEST_F(StyleData, KeysAndTheirPrefix) {
    Item item;
    EXPECT_EQ(add(L"Height", L"1"), L"Height");
    style.setPrefix(L"Pre");
    EXPECT_EQ(add(L"", L"2"), L"");
    EXPECT_EQ(add(L"Height", L"3"), L"PreHeight");
    EXPECT_EQ(add(L"HeightPre", L"4"), L"HeightPre");
    EXPECT_EQ(add(L"Height", L"5"), L"PreHeight");
    EXPECT_EQ(style.GetItems().length(), 4);
    ASSERT_EQ(style.GetItem(L"Height", item), Acad::eOk);
    EXPECT_EQ(item.text(), L"3") << "the first of that key";
    for (const wchar_t* none : {L"PreHeight", L"HeightPre", L"height", L""})
        EXPECT_EQ(style.GetItem(none, item), Acad::eInvalidInput);
    EXPECT_EQ(item.text(), L"3") << "untouched";
    Item own;
    own.setInteger(7);
    own.m_key = L"";
    style.AddItem(own);
    EXPECT_EQ(style.GetItems().last().integer(), 7) << "as it stands";
    own.m_kind = 9;
    own.m_value[Item::maximumText] = L'v';
    style.AddItem(own);
    EXPECT_EQ(style.GetItems().last().m_value[Item::maximumText], L'v') << "of no kind: all of it";

    VEXOORStyleData other(style), assigned;
    EXPECT_EQ(other.getPrefix(), L"Pre");
    assigned.setPrefix(L"Own");
    style.setStyleName(L"Mur");
    assigned = style;
    EXPECT_EQ(assigned.getPrefix(), L"Own");
    EXPECT_EQ(assigned.getStyleName(), L"Mur");
    EXPECT_EQ(assigned.GetItems().length(), 6);
    style.ClearItems();
    EXPECT_EQ(other.GetItems().length(), 6);
    EXPECT_EQ(style.WriteDataFromControls(), 1);
    EXPECT_EQ(style.UpdateControlsFromData(), 1);
}

TEST_F(StyleData, TextsAreCutAt255AndCopiedWhole) {
    for (const int length : {0, 1, 254, 255, 256, 100000}) {
        const CString text(L'é', length);
        add(L"t", text);
        const Item last = style.GetItems().last();
        EXPECT_EQ(last.text(), text.Left(255));
        EXPECT_EQ(std::wcslen(last.m_value), static_cast<std::size_t>(std::min(length, 255)));
        EXPECT_EQ(last.m_kind, 2);
    }
}

TEST_F(StyleData, DashesAreReadStrictly) {
    struct Case {
        const wchar_t* text;
        int count; // -1: refused
        double first, last;
    };
    const Case cases[] = {{L"2 0.500000 -0.250000", 2, 0.5, -0.25},
                          {L" \"1 4\" ", 1, 4, 4},
                          {L"3  1 \t2   3", 3, 1, 3},
                          {L"2 a 1", 2, 0, 1},
                          {L"0 1", 0, 0, 0},
                          {L"-1 1", 0, 0, 0},
                          {L"0", -1, 0, 0},
                          {L"", -1, 0, 0},
                          {L"2 1", -1, 0, 0},
                          {L"2 1 2 3", -1, 0, 0},
                          {L"51 1", -1, 0, 0},
                          {L"2147483648 1 2", -1, 0, 0}};
    for (const Case& each : cases) {
        double dashes[51] = {};
        int count = -7;
        const Acad::ErrorStatus status = style.FillDashVectorFromDescription(each.text, count, dashes);
        EXPECT_EQ(status, each.count < 0 ? Acad::eInvalidInput : Acad::eOk) << CString(each.text).GetLength();
        if (each.count <= 0) continue;
        EXPECT_EQ(count, each.count);
        EXPECT_EQ(dashes[0], each.first);
        EXPECT_EQ(dashes[count - 1], each.last);
    }
    CString fifty = L"50";
    for (int i = 0; i < 50; ++i) fifty.AppendFormat(L" %d", i);
    double dashes[50] = {};
    int count = 0;
    EXPECT_EQ(style.FillDashVectorFromDescription(fifty, count, dashes), Acad::eOk);
    EXPECT_EQ(dashes[49], 49);
    add(L"L", L"LIGNE");
    add(L"LDescription", fifty);
    AcDbLinetypeTableRecord record;
    CString key = L"L";
    EXPECT_EQ(style.GetLineType(key, &record), Acad::eInvalidInput) << "more than the record takes";
}

TEST_F(StyleData, RecordsAreFilledAsFarAsItemsGo) {
    CString key = L"T";
    AcDbTextStyleTableRecord text;
    EXPECT_EQ(style.GetTextStyle(key, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(style.GetTextStyle(key, &text), Acad::eInvalidInput);
    add(L"T", L"Cote");
    EXPECT_EQ(style.GetTextStyle(key, &text), Acad::eInvalidInput) << "no font";
    add(L"TFont", L"romans.shx");
    ASSERT_EQ(style.GetTextStyle(key, &text), Acad::eOk);
    EXPECT_EQ(text.fileName(), L"romans.shx");
    EXPECT_EQ(text.xScale(), 1.0) << "what is missing stays";
    add(L"TBigFont", L"big.shx");
    CString part;
    style.AddItem(part = L"TUpsideDown", 1);
    style.AddItem(part = L"TBackWards", 0);
    ASSERT_EQ(style.GetTextStyle(key, &text), Acad::eOk);
    EXPECT_EQ(text.flagBits(), 0) << "never set";
    EXPECT_EQ(text.bigFontFileName(), L"big.shx");
    text.setFlagBits(6);
    style.GetTextStyle(key, &text);
    EXPECT_EQ(text.flagBits(), 0) << "6 and 4, and that and 0";

    AcDbLinetypeTableRecord line;
    line.setNumDashes(3);
    EXPECT_EQ(style.GetLineType(part = L"L", &line), Acad::eInvalidInput);
    add(L"L", L"AXES");
    EXPECT_EQ(style.GetLineType(part = L"L", &line), Acad::eOk) << "no description";
    add(L"LDescription", L"0");
    EXPECT_EQ(style.GetLineType(part = L"L", &line), Acad::eInvalidInput) << "as AddItemLineType writes it";

    AcDbObjectId id;
    EXPECT_EQ(style.GetDimStyle(part = L"D", id), Acad::eInvalidInput);
    add(L"D", L"standard");
    EXPECT_EQ(style.GetDimStyle(part = L"D", id), Acad::eOk);
    EXPECT_EQ(id, database().dimstyle());
    add(L"E", L"none");
    EXPECT_EQ(style.GetDimStyle(part = L"E", id), Acad::eKeyNotFound);
}

TEST_F(StyleData, RecordsAreMadeWhereTheListHasNoneThatBeginsSo) {
    CWnd window;
    window.CreateEx(0, L"#32770", L"", WS_POPUP, CRect(0, 0, 100, 100), nullptr, 0);
    CComboBox list;
    list.Create(CBS_DROPDOWNLIST, CRect(0, 0, 50, 10), &window, 1);
    list.AddString(L"ARIAL2b");
    EXPECT_EQ(style.CreateTextStyleIfNeeded(nullptr, L"T"), 260) << "no item";
    add(L"T", L"Arial2");
    add(L"TFont", L"arial.ttf");
    add(L"L", L"AXES");
    add(L"LDescription", L"2 1 -1");
    EXPECT_EQ(style.CreateTextStyleIfNeeded(&list, L"T"), 260);
    EXPECT_EQ(style.CreateTextStyleIfNeeded(nullptr, L"T"), 0);
    EXPECT_EQ(style.CreateTextStyleIfNeeded(nullptr, L"T"), 3) << "the name is in use";
    EXPECT_EQ(style.CreateLineTypeIfNeeded(&list, L"L"), 0);
    add(L"N", L"Bad|Name*");
    add(L"NFont", L"x");
    EXPECT_EQ(style.CreateTextStyleIfNeeded(&list, L"N"), 3);
    EXPECT_EQ(style.CreateLineTypeIfNeeded(&list, L"N"), 3) << "nor that";
    giveLockBack();
    add(L"O", L"Outside");
    add(L"OFont", L"x");
    EXPECT_EQ(style.CreateTextStyleIfNeeded(nullptr, L"O"), 3) << "no command runs";
}

} // namespace
