// What the host is, its application object, modules and processes.
#include "vexoacadsystemtools.h"

#include "aced.h"
#include "applicationobject.h"
#include "dbcurve.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbviewtablerecord.h"
#include "hostapplication.h"
#include "hosttest.h"
#include "menugroup.h"
#include "rxprodkey.h"
#include "systempath.h"
#include "temporaryfolder.h"
#include "undohistory.h"
#include "vexoregistrytools.h"
#include "vexotools.h"

#include <dlfcn.h>
#include <unistd.h>

namespace {

using Tools = VEXOAcadSystemTools;

class HostTools : public hostkit::HostTest {
protected:
    // The message of a damaged installation stands in the module's texts.
    HostTools() { DllMain(module, 1, nullptr); }
    ~HostTools() override {
        DllMain(module, 0, nullptr);
        dlclose(module);
    }
    void setVariable(const wchar_t* name, const wchar_t* text) {
        hostkit::SystemValue value;
        value.type = RTSTR;
        value.text = text;
        ASSERT_EQ(session.host().variables().setByHost(name, value), hostkit::VariableResult::ok);
    }
    void setProduct(const wchar_t* name, const std::wstring& text) {
        ASSERT_EQ(
            VEXORegistryTools::SetRegistryValue(acrxProductKey(), name, text.c_str(), HKEY_LOCAL_MACHINE), 1);
    }
    int referencesHeld() { return session.host().application().referencesHeld(); }

    HINSTANCE module = static_cast<HINSTANCE>(dlopen("VEXOTools10.so", RTLD_NOW | RTLD_NOLOAD));
};

TEST_F(HostTools, VersionsByTheTextOfTheHost) {
    constexpr bool (*tests[])() = {
        Tools::isAcad2004,        Tools::isAcad2005OrLater, Tools::isAcad2006,
        Tools::isAcad2006OrLater, Tools::isAcad2007OrLater, Tools::isAcad2008OrLater,
        Tools::isAcad2009,        Tools::isAcad2009OrLater, Tools::isAcad2010OrLater};
    const std::pair<const wchar_t*, const char*> cases[] = {
        {L"15.9", "---------"},        {L"16.0", "X--------"},  {L"16.1", "-X-------"},
        {L"16.2s", "-XXX-----"},       {L"16.3", "-X-X-----"},  {L"17.0", "-X-XX----"},
        {L"17.1", "-X-XXX---"},        {L"17.2", "-X-XXXXX-"},  {L"17.3", "-X-XXX-X-"},
        {L"18.0s (LMS)", "-X-XXX-XX"}, {L"19.1", "-X-XXX-XX"},  {L"18", "---------"},
        {L"18.", "---------"},         {L"R18.0", "---------"}, {L"9999999999.1", "---------"}};
    for (const auto& [version, expected] : cases) {
        setVariable(L"ACADVER", version);
        std::string results;
        for (const auto test : tests) results += test() ? 'X' : '-';
        EXPECT_EQ(results, expected) << version;
    }
}

TEST_F(HostTools, ProductsByTheRegistry) {
    const std::wstring overTheBuffer = std::wstring(5000, L'x') + L" Architecture";
    const std::tuple<std::wstring, bool, bool> products[] = {
        {L"Some cad Lt 18", true, false}, {L"Some Architecture", false, true}, {overTheBuffer, false, false}};
    for (const auto& [name, isLt, isAdt] : products) {
        setProduct(L"ProductName", name);
        EXPECT_EQ(Tools::isAcadLT(), isLt) << name.c_str();
        EXPECT_EQ(Tools::isADT(), isAdt) << name.c_str();
    }
    AcEdCommandStack& stack = session.host().commands();
    ASSERT_EQ(stack.addCommand(L"aecuibase", L"X", nullptr, 0, [] {}), Acad::eOk);
    EXPECT_FALSE(Tools::isADT());
    ASSERT_EQ(stack.addCommand(L"The AecUiBase57", L"X", nullptr, 0, [] {}), Acad::eOk);
    EXPECT_TRUE(Tools::isADT());

    const std::pair<const wchar_t*, int> ids[] = {
        {L"12", 1}, {L"204", 2}, {L"8004", 8}, {L"40040", 0}, {L"", 0}};
    for (const auto& [id, version] : ids) {
        setProduct(L"ProductId", id);
        EXPECT_EQ(Tools::getADTVersion(), version) << id;
    }
}

TEST_F(HostTools, TheFirstRunIsMarkedOnceAProfile) {
    hostkit::RuntimeServices& runtime = session.host().runtime();
    runtime.setProductKey(L"Software\\Maker\\R18.0\\Other-8001:409");
    Tools::SetAcadAsRun();
    EXPECT_TRUE(Tools::IsAcadFirstTimeRun()) << "a key without a profile";
    runtime.setProductKey(L"Software\\Maker\\R18.0\\ACAD-8001:409");
    EXPECT_TRUE(Tools::IsAcadFirstTimeRun());
    Tools::SetAcadAsRun();
    EXPECT_FALSE(Tools::IsAcadFirstTimeRun());
    runtime.setProductKey(L"Software\\Maker\\R18.0\\ACAD-8001:40C");
    EXPECT_TRUE(Tools::IsAcadFirstTimeRun());
}

// A file under a name that capital letters do not match, with a group of two toolbars.
class MenuTools : public HostTools {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder / "Support");
        folder.write("Support/Ordane.mnu",
                     "***MENUGROUP=Ordane\n***TOOLBARS\n**BARS\n"
                     "ID_Bars [_Toolbar(\"Barres\", _Floating, _Hide, 0, 0, 1)]\n"
                     "**VIEWS\nID_Views [_Toolbar(\"Vues\", _Floating, _Show, 0, 0, 1)]\n");
        setDataPath(hostkit::pathFromSystem(folder.path().string()));
    }
    static void setDataPath(const std::wstring& path) {
        ASSERT_EQ(VEXORegistryTools::SetRegistryValueAdv(L"", L"PATHDATA", path.c_str(), HKEY_CURRENT_USER),
                  1);
    }
    int loadMenu(int load) { return Tools::loadMenu(L"ORDANE", L"ordane.MNU", L"", load); }
    bool runs() { return session.host().runDeferred().status == Acad::eOk; }
    bool isShown(int index) {
        return session.host().menuGroups().find(L"Ordane")->toolbars[index]->isVisible;
    }

    TemporaryFolder folder;
};

TEST_F(MenuTools, AMenuIsLoadedOnceAndUnloadedOnce) {
    EXPECT_EQ(loadMenu(0), 0) << "nothing to unload";
    EXPECT_EQ(loadMenu(1), 1);
    EXPECT_FALSE(acedIsMenuGroupLoaded(L"Ordane")) << "queued";
    ASSERT_TRUE(runs());
    EXPECT_TRUE(acedIsMenuGroupLoaded(L"Ordane"));
    EXPECT_EQ(loadMenu(1), 0);
    EXPECT_TRUE(session.host().deferred().isEmpty());
    EXPECT_EQ(loadMenu(0), 1);
    ASSERT_TRUE(runs());
    EXPECT_FALSE(acedIsMenuGroupLoaded(L"Ordane"));
    EXPECT_TRUE(session.port().problems.empty());
    EXPECT_TRUE(session.port().boxes.empty());
}

TEST_F(MenuTools, WhatCannotBeLoadedIsTold) {
    setDataPath(std::wstring(500, L'd'));
    EXPECT_EQ(loadMenu(1), 0);
    EXPECT_NE(session.port().printed.find(L"512 characters"), std::wstring::npos);
    EXPECT_TRUE(session.host().deferred().isEmpty());

    setDataPath(hostkit::pathFromSystem(folder.path().string()));
    EXPECT_EQ(Tools::loadMenu(L"Other", L"nosuch.mnu", L"", 1), 1);
    EXPECT_FALSE(runs()) << "the host's to tell";

    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Vexomar\\ordane\\R18\\10.1\\Settings");
    ASSERT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Vexomar\\ordane\\R18\\10.1"), ERROR_SUCCESS);
    EXPECT_EQ(loadMenu(1), 0);
    ASSERT_EQ(session.port().boxes.size(), 1u);
    EXPECT_NE(session.port().boxes[0].text.find(L"réinstaller"), std::wstring::npos);
    EXPECT_EQ(session.port().boxes[0].flags, 16u);
}

TEST_F(MenuTools, WhatTheApplicationHandsOutIsReleased) {
    ASSERT_EQ(loadMenu(1), 1);
    ASSERT_TRUE(runs());
    struct {
        const wchar_t *toolbar, *group;
        bool isThere;
    } const cases[] = {{L"barres", L"ORDANE", true}, {L"VUES", L"Ordane", true}, {L"Barre", L"Ordane", false},
                       {L"", L"Ordane", false},      {L"Barres", L"", false},    {L"Barres", L"Ord", false}};
    for (const bool visible : {true, false})
        for (const auto& each : cases) {
            EXPECT_EQ(Tools::ShowToolbar(each.toolbar, visible, each.group), each.isThere) << each.toolbar;
            EXPECT_EQ(referencesHeld(), 0) << each.toolbar << " of " << each.group;
            if (each.isThere) {
                EXPECT_EQ(isShown(*each.toolbar == L'V'), visible);
            }
        }
    IDispatch *group = nullptr, *application = nullptr;
    EXPECT_FALSE(Tools::getApplication(nullptr));
    for (const wchar_t* name : {L"", L"Ord", L"Ordanes"})
        EXPECT_FALSE(Tools::getOrdaneMenuGroup(&group, name));
    EXPECT_EQ(group, nullptr);
    EXPECT_FALSE(Tools::getOrdaneMenuGroup(nullptr, L"Ordane"));
    EXPECT_EQ(referencesHeld(), 0);
    ASSERT_TRUE(Tools::getOrdaneMenuGroup(&group, L"ordane"));
    EXPECT_EQ(referencesHeld(), 1);
    ASSERT_TRUE(Tools::getApplication(&application));
    EXPECT_EQ(referencesHeld(), 2);
    group->Release();
    application->Release();
    // The startup dialog: what was set before is told.
    EXPECT_FALSE(Tools::enableStartupDialog(5));
    EXPECT_TRUE(Tools::enableStartupDialog(0));
    EXPECT_FALSE(Tools::enableStartupDialog(0));
    EXPECT_EQ(referencesHeld(), 0);
}

TEST_F(HostTools, BetweenMarksAllIsOneStep) {
    const AcRxFunctionPtr widen = [] { Tools::setSysVar(L"USERI1", Tools::getSysVar(L"USERI1") + 1); };
    ASSERT_EQ(session.host().commands().addCommand(L"T", L"WIDEN", nullptr, 0, widen), Acad::eOk);
    EXPECT_TRUE(Tools::startUndoMark());
    for (int i = 0; i < 2; ++i) ASSERT_EQ(session.host().run(L"WIDEN").status, Acad::eOk);
    EXPECT_TRUE(Tools::endUndoMark());
    EXPECT_FALSE(Tools::endUndoMark()) << "none was started";
    EXPECT_EQ(Tools::getSysVar(L"USERI1"), 2);
    hostkit::UndoReport report;
    ASSERT_EQ(hostkit::undoLastGroup(database(), report), Acad::eOk);
    EXPECT_EQ(Tools::getSysVar(L"USERI1"), 0);
    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    EXPECT_FALSE(Tools::startUndoMark());
    EXPECT_EQ(referencesHeld(), 0);
}

TEST_F(HostTools, ApplicationsAreRegisteredOnce) {
    EXPECT_EQ(Tools::RegisterXDataFor(L"MY_APP"), Acad::eOk);
    EXPECT_EQ(Tools::RegisterXDataFor(L"my_app"), Acad::eOk);
    EXPECT_TRUE(AcDbSymbolTablePointer<AcDbRegAppTable>(&database(), AcDb::kForRead)->has(L"MY_APP"));
    EXPECT_EQ(Tools::RegisterXDataFor(L"no|name"), Acad::eInvalidInput);
    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    EXPECT_EQ(Tools::RegisterXDataFor(L"MY_APP"), Acad::eInvalidInput);
}

TEST_F(HostTools, DescendantsAreOtherClassesBelow) {
    EXPECT_EQ(Tools::hasDescendantsInOtherApp(AcDbCurve::desc()), 1);
    EXPECT_EQ(Tools::hasDescendantsInOtherApp(AcDbLine::desc()), 0) << "itself does not count";
    EXPECT_EQ(Tools::hasDescendantsInOtherApp(nullptr), 0);
    EXPECT_TRUE(session.port().boxes.empty());
    AcRxObject* const classes = acrxSysRegistry()->remove(L"ClassDictionary");
    EXPECT_EQ(Tools::hasDescendantsInOtherApp(AcDbCurve::desc()), 0);
    ASSERT_EQ(session.port().boxes.size(), 1u);
    EXPECT_EQ(session.port().boxes[0].text, L"ERROR: Couldn't get class dictionary.");
    acrxSysRegistry()->atPut(L"ClassDictionary", classes);
}

std::wstring libraryFile() {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(&getModulePromptsProjectName), &info);
    return hostkit::pathFromSystem(info.dli_fname);
}

TEST_F(HostTools, ModulesOfTheHostByName) {
    struct {
        const wchar_t* file;
        const wchar_t* name;
    } const names[] = {{L"a.arx", L"a"}, {L"a.b.arx", L"a.b"},  {L".arx", L".arx"}, {L"a", L"a"},
                       {L"", L""},       {L"dir.d\\a", L"dir"}, {L"a.", L"a"}};
    for (const auto& each : names) EXPECT_EQ(Tools::FileNameWithoutExtension(each.file), each.name);
    EXPECT_EQ(Tools::FileNameWithoutExtension(nullptr), L"");

    AcRxDynamicLinker& linker = session.host().runtime().linker();
    EXPECT_FALSE(Tools::isModuleLoaded(L"VEXOTools10"));
    ASSERT_EQ(linker.loadModule(libraryFile().c_str()), Acad::eOk) << linker.lastProblem().c_str();
    for (const wchar_t* each : {L"VEXOTools10", L"vexotools10.ARX", L"VEXOTOOLS10.so"})
        EXPECT_TRUE(Tools::isModuleLoaded(each)) << each;
    for (const wchar_t* each : {L"VEXOTools1", L"VEXOTools", L"Tools10", L"VEXOTools100", L"", L".so"})
        EXPECT_FALSE(Tools::isModuleLoaded(each)) << each;
    EXPECT_FALSE(Tools::isModuleLoaded(nullptr));

    EXPECT_TRUE(Tools::isTheSameModule(L"C:\\a\\Été.arx", L"/b/ÉTÉ.ARX"));
    EXPECT_TRUE(Tools::isTheSameModule(L"x.arx", L"D:\\x.arx"));
    EXPECT_FALSE(Tools::isTheSameModule(L"x.arx", L"x.ar"));
    EXPECT_FALSE(Tools::isTheSameModule(L"x.arx", nullptr));
}

TEST_F(HostTools, ModulesOfProcessesByPartsOfTheirPaths) {
    const DWORD self = GetCurrentProcessId();
    CString found(L"(untouched)");
    EXPECT_EQ(Tools::ProcessContainsModule(self, L"VEXOTools10", L"no such module", found), 0);
    EXPECT_EQ(Tools::ProcessContainsModule(0x7FFFFFFE, L"", L"", found), 0) << "no such process";
    EXPECT_EQ(found, L"(untouched)");
    EXPECT_EQ(Tools::ProcessContainsModule(self, L"VEXOTOOLS10", L".SO", found), 1);
    EXPECT_GE(found.Find(L"vexotools10.so"), 0) << found.GetString();

    CString program;
    ASSERT_EQ(Tools::ProcessContainsModule(self, L"", L"", program), 1);
    EXPECT_EQ(Tools::ProcessesHaveDifferentModules(program, L""), 0) << "one path";
    // Another program, which ends when its input does; the system takes a moment to map it.
    FILE* const other = popen("cat", "w");
    int differ = 0;
    for (int i = 0; i < 5000 && differ == 0; ++i, usleep(1000))
        differ = Tools::ProcessesHaveDifferentModules(L"/bin/", L"");
    EXPECT_EQ(differ, 1) << "its program and this one";
    pclose(other);
}

// Nothing is asked of a host that is not there.
TEST(WithoutAHost, EveryToolFallsBack) {
    CString name(L"(untouched)");
    IDispatch* object = nullptr;
    AcDbViewTableRecord view;
    EXPECT_EQ(Tools::getSysVar(L"CMDECHO"), 0);
    EXPECT_EQ(Tools::setSysVar(L"CMDECHO", 1), Acad::eInvalidInput);
    EXPECT_EQ(Tools::RegisterXDataFor(L"APP"), Acad::eInvalidInput);
    EXPECT_EQ(Tools::hasDescendantsInOtherApp(AcDbCurve::desc()), 0);
    EXPECT_EQ(Tools::loadMenu(L"A", L"a", L"", 0), 0);
    EXPECT_FALSE(Tools::isCommand(L"") || Tools::isCommand(L"A", L"A") || Tools::isCommandActive() ||
                 Tools::isNullCommandActive() || Tools::commandActive(name) || Tools::isAcadCommandModify());
    EXPECT_FALSE(Tools::isAcad2005OrLater() || Tools::isAcadLT() || Tools::isADT() ||
                 Tools::getADTVersion() || Tools::getApplication(&object) ||
                 Tools::getOrdaneMenuGroup(&object, L"A") || Tools::ShowToolbar(L"A", true, L"A") ||
                 Tools::enableStartupDialog(1) || Tools::isModelSpace() || Tools::startUndoMark() ||
                 Tools::isModuleLoaded(L"a"));
    EXPECT_TRUE(Tools::isUndoRedoCommand(L"u"));
    EXPECT_EQ(name, L"(untouched)");
    for (const auto send : {Tools::sendCommandToAutoCAD, Tools::sendCommandToAutoCADEx}) send(L"A\n");
    Tools::postCommandToAutoCAD(L"A", true);
    Tools::postMessageToAcad(L'A');
    Tools::launchCommandNoEcho(L"A");
    Tools::setFloatingSpace();
    Tools::GetCurrentView(view);
    EXPECT_EQ(object, nullptr);
}

} // namespace
