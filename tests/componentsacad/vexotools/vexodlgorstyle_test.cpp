// The bar of styles: what its list holds, what it reads of a file, and how it saves and loads for a user.
#include "vexodlgorstyle.h"

#include "../../../fuzz/styleinvariants.h"

#include "dbsymtb.h"
#include "drawingreader.h"
#include "drawingsofothers.h"
#include "hosttest.h"
#include "temporaryfolder.h"
#include "vexodlgorstylesavefile.h"
#include "vexoregistrytools.h"
#include "vexotools.h"
#include "widepath.h"

#include <csignal>
#include <dlfcn.h>
#include <random>
#include <set>
#include <sys/resource.h>

using namespace std::string_literals;

namespace {

using Do = hostkit::WindowAction;
using Item = VEXOORStyleDataItem;
namespace fs = std::filesystem;

constexpr wchar_t loadEntry[] = L"<Charger un style depuis un fichier...>";
constexpr wchar_t selectEntry[] = L"<Sélectionner un style>";
const std::string head = "[Autosurf]\r\nStyleName = \"Mine\"\r\n";

/// Style data of an application, which counts what it is asked for.
struct CountingStyle : VEXOORStyleData {
    Acad::ErrorStatus WriteDataFromControls() override {
        CString key = L"Cover1";
        AddItem(key, 0.5);
        return Acad::eOk;
    }
    Acad::ErrorStatus UpdateControlsFromData() override {
        ++updates;
        return Acad::eOk;
    }
    int updates = 0;
};

/// The library as a host has it loaded, with a styles directory.
class StyleDialog : public hostkit::HostTest {
protected:
    StyleDialog() {
        DllMain(instance, 1, nullptr);
        fs::create_directories(styles);
        VEXORegistryTools::SetRegistryValueAdv(L"", L"PATHDATA", wide(folder.path()), HKEY_CURRENT_USER);
        dialog.SetEntityType(L"Autosurf");
        dialog.SetORStyleData(data);
    }
    ~StyleDialog() override {
        dialog.DestroyWindow();
        DllMain(instance, 0, nullptr);
        dlclose(instance);
    }
    CString file(const std::string& content, const std::string& name = "file") {
        folder.write(name, content);
        return wide(folder / name);
    }
    /// The items that are read behind the head, as key=value by kind.
    std::wstring readItems(const std::string& lines) {
        EXPECT_EQ(dialog.LoadStyleFromFile(file(head + lines)), Acad::eOk);
        std::wstring text;
        for (const Item& each : style.GetItems()) {
            CString value;
            if (each.m_kind == Item::kReal) value.Format(L"%g", each.real());
            if (each.m_kind == Item::kInteger) value.Format(L"%d", each.integer());
            if (each.m_kind >= Item::kName) value.Format(L"'%s'", each.text());
            text += std::wstring(each.m_key) + L"=" + std::wstring(value) + L";";
        }
        return text;
    }
    CComboBox& list() {
        return *static_cast<CComboBox*>(dialog.GetDlgItem(VEXODlgORStyle::IDC_COMBO_STYLES));
    }
    std::wstring entries() {
        std::wstring text;
        for (int i = 0; i < list().GetCount(); ++i) {
            CString entry;
            list().GetLBText(i, entry);
            text += std::wstring(i == list().GetCurSel() ? L">" : L"") + std::wstring(entry) + L"|";
        }
        return text;
    }

    TemporaryFolder folder;
    const std::string styles = folder / "Support/Styles";
    HINSTANCE instance = static_cast<HINSTANCE>(dlopen("VEXOTools10.so", RTLD_NOW | RTLD_NOLOAD));
    CountingStyle style;
    VEXOORStyleData* data = &style;
    VEXODlgORStyle dialog;
};

// --- Reading -----------------------------------------------------------------------------------------------

TEST_F(StyleDialog, WhatIsNoStyleOfThisTypeIsTold) {
    constexpr wchar_t noStyle[] = L"Le fichier sélectionné ne contient pas de style Ordane Dalle.";
    constexpr wchar_t otherType[] = L"Le style sélectionné n'est pas compatible avec ce type d'objet.";
    const struct {
        std::string content;
        const wchar_t* told; // null: it is read
    } cases[] = {{head, nullptr},
                 {"\r\n\r\n \t[ Autosurf ] \r\nx\r\nAngle = 1\r\n StyleName=a\r\n", nullptr},
                 {"[Autosurf]\nStyleName = x", nullptr},
                 {" \r\n" + head, noStyle},
                 {"", noStyle},
                 {"[", noStyle},
                 {"[Autosurf\r\nStyleName = \"a\"\r\n", noStyle},
                 {"[Autosurf]\r\n", noStyle},
                 {"[Autosurf]\r\nStyleName = \"?.:\"\r\nstylename = \"a\"\r\n", noStyle},
                 {"[Autosurf]\0]\r\nStyleName = a\0b"s, nullptr},
                 {"[Autosurf]\r\nStyleName = \0b"s, noStyle},
                 {"\x1A" + head, noStyle},
                 {"[]\r\n" + head, otherType},
                 {"[autosurf]\r\nStyleName = \"a\"\r\n", otherType},
                 {"[AutosurfX]\r\n", otherType}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.content);
        session.port().boxes.clear();
        EXPECT_EQ(dialog.LoadStyleFromFile(file(each.content)), each.told ? Acad::eInvalidInput : Acad::eOk);
        ASSERT_EQ(session.port().boxes.size(), each.told ? 1u : 0u);
        if (each.told) {
            EXPECT_EQ(session.port().boxes[0].text, each.told);
        }
    }
    session.port().boxes.clear();
    fs::permissions(folder / "file", fs::perms::none);
    const bool isRoot = std::ifstream(folder / "file").good();
    for (const std::string& unreadable : {folder / "none", styles, folder / "none/x"})
        EXPECT_EQ(dialog.LoadStyleFromFile(wide(unreadable)), Acad::eInvalidInput);
    if (!isRoot) {
        EXPECT_EQ(dialog.LoadStyleFromFile(wide(folder / "file")), Acad::eInvalidInput);
    }
    VEXOORStyleData* none = nullptr;
    dialog.SetORStyleData(none);
    EXPECT_EQ(dialog.LoadStyleFromFile(file(head, "other")), Acad::eInvalidInput);
    EXPECT_TRUE(session.port().boxes.empty()) << "what cannot be opened is not told";
}

TEST_F(StyleDialog, LinesAreUnderstoodByTheirKey) {
    EXPECT_EQ(readItems("Angle = 12.5\r\n Ang:le\" = -1e3x \r\nTrim=3.9\r\nNbLayers = 99999999999\r\n"),
              L"Angle=12.5;Angle=-1000;Trim=3;NbLayers=2147483647;");
    EXPECT_EQ(
        readItems("angle = 1\r\nOther = 1\r\nAngle\r\n\r\n= 1\r\nAngle = \r\nTrim =\t\r\nAngle = x\r\n"),
        L"Angle=0;")
        << "other keys, no separator, no value";
    EXPECT_EQ(readItems("Label = \"a=b.c; d\"\r\nType = \"?,\"\r\nUsertext1 = \r\nLabel = \xE9\x80\r\n"),
              L"Label='abc d';Type='';Usertext1='';Label='é€';");
    EXPECT_EQ(
        readItems("PositionTextStyleFont = \" txt.shx=\"1\" \"\r\nLinetypeDescription = \"2 0.5 -1\"\r\n"
                  "PositionTextStyleBackWards = 1\r\nPositionTextStyleHeight = 2.5\r\n"
                  "DimensionStyleRepStyle8 = \"ISO-25\"\r\nDimensionStyleRepStyle8Font = \"x\"\r\n"),
        L"PositionTextStyleFont='txt.shx=1';LinetypeDescription='2 0.5 -1';PositionTextStyleBackWards=1;"
        L"PositionTextStyleHeight=2.5;DimensionStyleRepStyle8='ISO-25';");
    EXPECT_EQ(readItems("Label = a\0b\r\nTop or Front = 1\rAngle = 2\nAngle = 3\x1A\r\nAngle = 4"s),
              L"Label='a';Top or Front=1;Angle=3;");
    EXPECT_EQ(style.getStyleName(), L"Mine");
}

// The keys of each type, counted by hand from the lists that users' files were made with: records bring their
// companions along.
TEST_F(StyleDialog, EachTypeHasItsKeys) {
    const auto countOf = [&](const std::string& type, const std::vector<std::string>& keys) {
        std::string lines;
        for (const std::string& key : keys) lines += key + " = 1\r\n";
        dialog.SetEntityType(wide(type));
        EXPECT_EQ(dialog.LoadStyleFromFile(file("[" + type + "]\r\nStyleName = \"a\"\r\n" + lines)),
                  Acad::eOk);
        return style.GetItems().length();
    };
    const std::vector<std::string> keys = {
        "Method", "CustomWidth", "ShowDashes8", "DashLineTypeDescription", "StraightBarHasRake", "UnitsY1"};
    EXPECT_EQ(countOf("Autosurf", keys), 3);
    EXPECT_EQ(countOf("BMRepartition", keys), 3);
    EXPECT_EQ(countOf("Slab", keys), 0);
    EXPECT_EQ(countOf("DwgStyle", keys), 4) << "without a prefix";
    dialog.setPrefix(L"Rep");
    EXPECT_EQ(style.getPrefix(), L"Rep");
    EXPECT_EQ(countOf("DwgStyle", keys), 0);
    EXPECT_EQ(countOf("DwgStyle", {"RepUnitsY1", "RepMethod", "RepQuantitativeRepartRakeDistanceToTarget",
                                   "RepDimRepartDimensionStyleBigFont", "RepRepUnitsY1", "repUnitsY1"}),
              3);
}

TEST_F(StyleDialog, LargeAndDamagedFilesComeToAnEnd) {
    EXPECT_EQ(readItems("Label = \"" + std::string(1'000'000, 'a') + "\"\r\n" + std::string(1'000'000, '=') +
                        "\r\nAngle = " + std::string(1'000'000, '1') + "\r\nTrim = 1"),
              L"Label='" + std::wstring(255, L'a') + L"';Angle=inf;Trim=1;");
    std::string many;
    for (int i = 0; i < 100'000; ++i) many += (i % 2 ? "Angle" : "Key" + std::to_string(i)) + " = 1\n";
    EXPECT_EQ(dialog.LoadStyleFromFile(file(head + many)), Acad::eOk);
    EXPECT_EQ(style.GetItems().length(), 50'000);
}

TEST_F(StyleDialog, WhatIsReadIsWrittenAndReadAgain) {
    std::mt19937 random(7);
    styleinvariants::Reader reader;
    int files = 0;
    for (const auto& each : fs::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/style")) {
        SCOPED_TRACE(each.path());
        std::ifstream stream(each.path(), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
        EXPECT_EQ(reader.faultOf(bytes), "");
        for (int round = 0; round < 100; ++round) {
            std::string damaged = bytes;
            for (unsigned i = random() % 4 + 1; i > 0; --i) {
                const std::size_t at = random() % (damaged.size() + 1);
                damaged.replace(at, random() % 9, bytes.substr(random() % (bytes.size() + 1), random() % 30));
            }
            EXPECT_EQ(reader.faultOf(damaged), "");
        }
        ++files;
    }
    EXPECT_GE(files, 4);
}

// --- The list ----------------------------------------------------------------------------------------------

TEST_F(StyleDialog, TheListHoldsTheStylesOfItsType) {
    const auto put = [&](const std::string& name, const std::string& content) {
        folder.write("Support/Styles/" + name, content);
    };
    put("b.ORStyle", head);
    put("a.orstyle", "[Autosurf]\r\nStyleName = \"\xC9t\xE9.1\"\r\n");
    put("c.ORStyle", "x[Autosurf]x\r\nStyleName = \"Loose\"\r\n");
    put("d.ORStyle", "Autosurf]\r\nStyleName = \"No bracket\"\r\n");
    put("d2.ORStyle", "[AutosurfX]\r\nStyleName = \"Longer type\"\r\n");
    put("e.ORStyle", "[BMRepartition]\r\nStyleName = \"Other\"\r\n");
    put("f.ORStyle", "\r\n[Autosurf]\r\nStyleName = \"Second line\"\r\n");
    put("g.ORStyle", "[Autosurf]\r\nNo name\r\n");
    put("h.txt", head);
    put("i.ORStyle", "[Autosurf]\r\nStyleName = \"Mine\"\r\nAngle = 9\r\n");
    fs::create_directory(styles + "/j.ORStyle");
    fs::create_symlink("nowhere", styles + "/k.ORStyle");
    ASSERT_TRUE(dialog.Create(nullptr));
    const std::wstring own = std::wstring(loadEntry) + L"|>" + selectEntry + L"|";
    EXPECT_EQ(entries(), L"Été1|Mine|Loose|" + own);
    wchar_t directory[4096];
    GetCurrentDirectoryW(4096, directory);
    EXPECT_EQ(fs::canonical(styles).wstring(), directory);
    EXPECT_NE(fs::current_path(), fs::canonical(styles)) << "the process stays where it is";
    list().SetCurSel(1);
    const auto choose = [&] {
        dialog.SendMessageW(WM_COMMAND, MAKEWPARAM(VEXODlgORStyle::IDC_COMBO_STYLES, CBN_SELCHANGE));
    };
    choose();
    EXPECT_EQ(style.GetItems().length(), 1) << "of two files of one name the last";
    put("i.ORStyle", "broken since it was listed");
    choose();
    EXPECT_EQ(session.port().boxes.size(), 1u);
    EXPECT_EQ(style.updates, 2) << "with the items that stand";

    dialog.FillStyles();
    EXPECT_EQ(entries(), L"Été1|Mine|Loose|" + own) << "anew";
    VEXORegistryTools::SetRegistryValueAdv(L"", L"PATHDATA", wide(folder / "none"), HKEY_CURRENT_USER);
    dialog.FillStyles();
    EXPECT_EQ(entries(), own) << "no such directory";
}

// --- A user at it ------------------------------------------------------------------------------------------

class Sheet : public CPropertySheet {
public:
    explicit Sheet(VEXODlgORStyle& bar)
        : CPropertySheet(L"Sheet")
        , m_bar(bar) {}

protected:
    BOOL OnInitDialog() override {
        CPropertySheet::OnInitDialog();
        return m_bar.Create(this);
    }

private:
    VEXODlgORStyle& m_bar;
};

class StyleSheetTest : public StyleDialog {
protected:
    /// What the list holds when all of it is done.
    std::wstring run(std::deque<Do> actions) {
        Sheet sheet(dialog);
        session.port().windows.clear();
        session.port().actions = std::move(actions);
        session.port().actions.push_back(Do::press(VK_HOME)); // the state before closing
        session.port().actions.push_back(Do::click(IDCANCEL));
        EXPECT_EQ(sheet.DoModal(), IDCANCEL);
        EXPECT_TRUE(session.port().actions.empty());
        const hostkit::ShownControl& shown =
            *session.port().windows.back().control(VEXODlgORStyle::IDC_COMBO_STYLES);
        std::wstring text = shown.text + L":";
        for (const auto& each : shown.items) text += each.text + L"|";
        return text;
    }
    static Do choose(int item) { return Do::choose(VEXODlgORStyle::IDC_COMBO_STYLES, item); }
    static Do save() { return Do::click(VEXODlgORStyle::IDC_BUTTON_SAVE); }
    static Do name(const wchar_t* text) { return Do::write(VEXODlgORStyleSaveFile::IDC_NAME, text); }
    static Do path(const CString& text) { return Do::write(CFileDialog::nameId, text.GetString()); }
    static Do ok() { return Do::click(IDOK); }
    static Do cancel() { return Do::click(IDCANCEL); }

    const std::wstring load = std::wstring(loadEntry) + L"|";
    const std::wstring select = std::wstring(selectEntry) + L"|";
};

TEST_F(StyleSheetTest, TheEntryThatNoneIsChosenStandsOnlyInTheClosedList) {
    folder.write("Support/Styles/a.ORStyle", head);
    folder.write("Support/Styles/b.ORStyle", "[Autosurf]\r\nStyleName = \"Mur\"\r\n");
    const Do key = Do::press(VK_F4), escape = Do::press(VK_ESCAPE);
    const Do click = Do::click(VEXODlgORStyle::IDC_COMBO_STYLES);
    EXPECT_EQ(run({}), std::wstring(selectEntry) + L":Mine|Mur|" + load + select);
    EXPECT_EQ(run({click}), L":Mine|Mur|" + load);
    EXPECT_EQ(run({click, escape}), std::wstring(selectEntry) + L":Mine|Mur|" + load + select);
    EXPECT_EQ(run({click, key}), std::wstring(selectEntry) + L":Mine|Mur|" + load + select);
    EXPECT_EQ(style.updates, 0);
    EXPECT_EQ(run({choose(1)}), L"Mur:Mine|Mur|" + load);
    EXPECT_EQ(style.getStyleName(), L"Mur");
    EXPECT_EQ(style.updates, 1);
    EXPECT_EQ(run({choose(1), click, escape}), L"Mur:Mine|Mur|" + load);
    EXPECT_EQ(run({choose(3)}), std::wstring(selectEntry) + L":Mine|Mur|" + load + select)
        << "it is gone when the list is open";
}

TEST_F(StyleSheetTest, AStyleIsSavedAndStandsInTheList) {
    fs::remove(styles);
    const std::wstring list =
        run({save(), name(L"a.b"), ok(), ok(), name(L"  Dalle 20 "), ok(), path(L"dalle"), ok()});
    EXPECT_EQ(list, L"Dalle 20:" + load + select + L"Dalle 20|");
    EXPECT_EQ(session.port().boxes.at(0).text, L"Le nom du style n'est pas valide.");
    EXPECT_EQ(folder.read("Support/Styles/dalle.ORStyle"),
              "[Autosurf]\r\nStyleName = \"Dalle 20\"\r\nCover1 = 0.500000000000\r\n");
    for (const std::deque<Do>& refused :
         {std::deque<Do>{save(), cancel()}, std::deque<Do>{save(), name(L"x"), ok(), cancel()},
          std::deque<Do>{save(), name(L" "), ok(), ok(), cancel()}})
        EXPECT_EQ(run(refused), std::wstring(selectEntry) + L":Dalle 20|" + load + select);
    // Over a style that is there, the user is asked.
    session.port().buttons = {IDNO, IDYES};
    run({save(), name(L"Autre"), ok(), path(L"DALLE.ORStyle"), cancel()});
    run({save(), name(L"Autre"), ok(), path(L"dalle"), ok(), Do::click(IDNO), ok(), Do::click(IDYES)});
    EXPECT_EQ(folder.read("Support/Styles/dalle.ORStyle").substr(0, 34),
              "[Autosurf]\r\nStyleName = \"Autre\"\r\nC");
}

TEST_F(StyleSheetTest, AFullDiskLeavesTheStyleThatStands) {
    folder.write("Support/Styles/a.ORStyle", head);
    const std::wstring standing = std::wstring(selectEntry) + L":Mine|" + load + select;
    rlimit limit;
    getrlimit(RLIMIT_FSIZE, &limit);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{20, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_EQ(run({save(), name(L"x"), ok(), path(L"a"), ok(), Do::click(IDYES)}), standing);
    EXPECT_EQ(run({save(), name(L"x"), ok(), path(L"b"), ok()}), standing);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(folder.read("Support/Styles/a.ORStyle"), head);
    EXPECT_EQ(std::distance(fs::directory_iterator(styles), {}), 1) << "nothing is left behind";
}

TEST_F(StyleSheetTest, AStyleIsLoadedFromAnyFile) {
    folder.write("far.ORStyle", head + "Angle = 2\r\n");
    folder.write("bad.ORStyle", "nothing");
    const CString far = wide(folder / "far.ORStyle");
    EXPECT_EQ(run({choose(0), path(far), ok()}), L"Mine:" + load + L"Mine|");
    EXPECT_EQ(style.updates, 1);
    EXPECT_EQ(style.GetItems().length(), 1);
    // The folder is kept; without its ending the name is enough. What was chosen stays chosen on a failure.
    EXPECT_EQ(run({choose(0), path(L"far"), ok(), choose(0), path(L"bad"), ok(), ok()}),
              L"Mine:" + load + L"Mine|");
    EXPECT_EQ(style.updates, 2);
    EXPECT_EQ(run({choose(0), cancel()}), std::wstring(selectEntry) + L":" + load + select);
    EXPECT_EQ(run({choose(0), path(L"none"), ok(), ok(), cancel()}),
              std::wstring(selectEntry) + L":" + load + select);
    EXPECT_EQ(style.updates, 2);
}

// --- From drawing to drawing -------------------------------------------------------------------------------

CString readBack(std::wstring text, std::wstring_view lost) {
    std::erase_if(text, [&](wchar_t each) { return lost.find(each) != std::wstring_view::npos; });
    return CString(std::wstring_view(text)).Trim();
}

class StylesOfOthers : public StyleDialog {
protected:
    static std::wstring upper(const std::wstring& name) {
        return CString(name.c_str()).MakeUpper().GetString();
    }
    template <class Record>
    static std::set<std::wstring> names(AcDbObjectId table) {
        std::set<std::wstring> found;
        forEach<Record>(table, [&](AcDbObjectId, Record& record) { found.insert(upper(nameOf(record))); });
        return found;
    }
    template <class Record, class Use>
    static void forEach(AcDbObjectId table, const Use& use) {
        AcDbSymbolTable* opened = nullptr;
        ASSERT_EQ(acdbOpenObject(opened, table, AcDb::kForRead), Acad::eOk);
        const std::vector<AcDbObjectId> ids = opened->records();
        opened->close();
        for (const AcDbObjectId id : ids) {
            Record* record = nullptr;
            if (acdbOpenObject(record, id, AcDb::kForRead) != Acad::eOk) continue;
            use(id, *record);
            record->close();
        }
    }
    /// Saves what the data holds and reads it again.
    void travel() {
        style.setEntityType(L"Autosurf");
        style.setStyleName(L"Voyage");
        const CString path = wide(folder / "travel.ORStyle");
        {
            CStdioFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite);
            style.WriteDataToFile(&file);
        }
        style.ClearItems();
        ASSERT_EQ(dialog.LoadStyleFromFile(path), Acad::eOk);
    }
    template <class Record>
    Record* findRecord(AcDbObjectId table, const CString& name) {
        AcDbSymbolTable* opened = nullptr;
        acdbOpenObject(opened, table, AcDb::kForRead);
        AcDbObjectId id;
        opened->getAt(name, id);
        opened->close();
        Record* record = nullptr;
        acdbOpenObject(record, id, AcDb::kForRead);
        return record;
    }
    void carryTextStyle(AcDbObjectId id, const AcDbTextStyleTableRecord& record) {
        CString key = L"PositionTextStyle", name = readBack(nameOf(record), L"\":;,.?=");
        if (name.IsEmpty() || !taken.insert(upper(name.GetString())).second) return;
        style.ClearItems();
        ASSERT_EQ(style.AddItemTextStyle(key, id), Acad::eOk);
        travel();
        ASSERT_EQ(style.CreateTextStyleIfNeeded(nullptr, L"PositionTextStyle"), Acad::eOk);
        auto* const made = findRecord<AcDbTextStyleTableRecord>(database().textStyleTableId(), name);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->fileName(), readBack(record.fileName(), L"\"").GetString());
        EXPECT_EQ(made->bigFontFileName(), readBack(record.bigFontFileName(), L"\"").GetString());
        constexpr double lastDecimal = 5.1e-13;
        EXPECT_NEAR(made->textSize(), record.textSize(), lastDecimal);
        EXPECT_NEAR(made->xScale(), record.xScale(), lastDecimal);
        EXPECT_NEAR(made->obliquingAngle(), record.obliquingAngle(), lastDecimal);
        EXPECT_EQ(made->isVertical(), record.isVertical());
        EXPECT_EQ(made->flagBits(), 0) << "never carried";
        made->close();
        ++carried;
    }
    void carryLineType(AcDbObjectId id, const AcDbLinetypeTableRecord& record) {
        CString key = L"Linetype", name = readBack(nameOf(record), L"\":;,.?=");
        if (name.IsEmpty() || !taken.insert(upper(name.GetString())).second) return;
        style.ClearItems();
        ASSERT_EQ(style.AddItemLineType(key, id), Acad::eOk);
        travel();
        const Acad::ErrorStatus status = style.CreateLineTypeIfNeeded(nullptr, L"Linetype");
        ASSERT_EQ(status, record.numDashes() ? Acad::eOk : Acad::eInvalidInput);
        if (status != Acad::eOk) return;
        auto* const made = findRecord<AcDbLinetypeTableRecord>(database().linetypeTableId(), name);
        ASSERT_NE(made, nullptr);
        EXPECT_NEAR(made->patternLength(), record.patternLength(), 5.1e-13);
        ASSERT_EQ(made->numDashes(), record.numDashes());
        for (int i = 0; i < record.numDashes(); ++i)
            EXPECT_NEAR(made->dashLengthAt(i), record.dashLengthAt(i), 5.1e-7) << "six decimals";
        made->close();
        ++carried;
    }
    static std::wstring nameOf(const AcDbSymbolTableRecord& record) {
        const wchar_t* name = L"";
        record.getName(name);
        return name;
    }

    std::set<std::wstring> taken;
    int carried = 0;
};

TEST_F(StylesOfOthers, RecordsCompareInAnEmptyDrawing) {
    const fs::path drawings = drawingsOfOthers();
    if (!fs::is_directory(drawings)) GTEST_SKIP() << "no drawings of others at " << drawings;
    const auto texts = names<AcDbTextStyleTableRecord>(database().textStyleTableId());
    const auto lines = names<AcDbLinetypeTableRecord>(database().linetypeTableId());
    std::set<std::wstring> takenTexts = texts, takenLines = lines;
    for (const auto& each : fs::directory_iterator(drawings)) {
        if (each.path().extension() != ".dxf" || each.file_size() > 2'000'000) continue;
        SCOPED_TRACE(each.path().filename());
        const auto source = hostkit::openDrawing(each.path().wstring(), nullptr, {.tellPort = false});
        ASSERT_TRUE(source);
        taken.swap(takenTexts);
        forEach<AcDbTextStyleTableRecord>(source->textStyleTableId(), [&](AcDbObjectId id, auto& record) {
            if (!record.isShapeFile()) carryTextStyle(id, record);
        });
        taken.swap(takenTexts);
        taken.swap(takenLines);
        forEach<AcDbLinetypeTableRecord>(source->linetypeTableId(),
                                         [&](AcDbObjectId id, auto& record) { carryLineType(id, record); });
        taken.swap(takenLines);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(carried, 20);
    RecordProperty("carried", carried);
}

} // namespace
