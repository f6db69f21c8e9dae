#include "vexotools.h"

#include "afxdllx.h"
#include "cvxtoolsresoverride.h"
#include "runtimeservices.h"
#include "rxdlinkr.h"
#include "scriptedport.h"
#include "vexoorderdesc.h"
#include "vexoregistrytools.h"
#include "vexouitools.h"
#include "vxprompts.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

constexpr DWORD attach = 1;
constexpr DWORD detach = 0;

struct Module : testing::Test {
    hostkit::ScriptedPort port;
    hostkit::ScopedPort current{port};
    HINSTANCE instance = static_cast<HINSTANCE>(dlopen("VEXOTools10.so", RTLD_NOW | RTLD_NOLOAD));
    void TearDown() override {
        DllMain(instance, detach, nullptr);
        dlclose(instance);
    }
    static void set(const wchar_t* name, unsigned long value) {
        VEXORegistryTools::SetRegistryValueAdv(L"Settings", name, value, HKEY_CURRENT_USER);
    }
    static unsigned long setting(const wchar_t* name) {
        unsigned long value = 999;
        VEXORegistryTools::GetRegistryValueAdv(L"Settings", name, value, HKEY_CURRENT_USER);
        return value;
    }
};

TEST_F(Module, FirstLoadWritesTheBuiltInColoursAndASecondReadsThem) {
    ASSERT_NE(instance, nullptr);
    EXPECT_STREQ(getModulePromptsProjectName(), L"VEXOTOOLS");
    EXPECT_EQ(DllMain(instance, attach, nullptr), 1);
    EXPECT_EQ(setting(L"OrderDescClrIdxCurrentOrder"), 4u);
    EXPECT_EQ(setting(L"OrderDescClrIdxNotOrdered"), 163u);
    EXPECT_EQ(setting(L"OrderDescClrIdxOrderedElswhere"), 9u);
    EXPECT_EQ(DllMain(instance, detach, nullptr), 1);

    const unsigned long chosen = 300, tooWide = 65536 + 5;
    set(L"OrderDescClrIdxNotOrdered", chosen);
    set(L"OrderDescClrIdxOrderedElswhere", tooWide);
    EXPECT_EQ(DllMain(instance, attach, nullptr), 1);
    EXPECT_EQ(VEXOOrderDesc::m_nClrIdxCurrentOrder, 4);
    EXPECT_EQ(VEXOOrderDesc::m_nClrIdxNotOrdered, 300); // narrowed, unchecked
    EXPECT_EQ(VEXOOrderDesc::m_nClrIdxOrderedElsewhere, 5);
    EXPECT_EQ(setting(L"OrderDescClrIdxOrderedElswhere"), tooWide); // what is there is never rewritten
}

TEST_F(Module, AttachFailsOnlyWithoutAnInstance) {
    EXPECT_EQ(DllMain(nullptr, attach, nullptr), 0);
    EXPECT_EQ(CDynLinkLibrary::first(), nullptr);
    EXPECT_EQ(DllMain(instance, 2, nullptr), 1); // threads come and go
    EXPECT_EQ(setting(L"OrderDescClrIdxCurrentOrder"), 999u);
}

TEST_F(Module, EntryActsOnInitialisationAlone) {
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), AcRx::kRetOK); // no host at all
    hostkit::RuntimeServices services;
    hostkit::ScopedRuntimeServices running(services);
    Dl_info info{};
    dladdr(reinterpret_cast<const void*>(&getModulePromptsProjectName), &info);
    const std::string path = info.dli_fname;
    const std::wstring file(path.begin(), path.end());
    ASSERT_EQ(services.linker().loadModule(file.c_str()), Acad::eOk) << info.dli_fname;
    EXPECT_FALSE(services.linker().isApplicationLocked(file.c_str()));
    EXPECT_TRUE(services.linker().isAppMDIAware(L"VEXOTools10.so"));
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetOK);
    EXPECT_EQ(services.linker().unloadModule(file.c_str()), Acad::eOk);
    EXPECT_FALSE(services.linker().isLoaded(file.c_str()));
}

TEST_F(Module, PromptsComeFromTheModulesTable) {
    CString text(L"as it was");
    EXPECT_EQ(VxPrompts::getPrompt(text, 14013, L"NOSUCH", 0), 0);
    EXPECT_EQ(VxPrompts::getPrompt(text, 13999, L"VEXOTOOLS", 0), 0);
    EXPECT_EQ(VxPrompts::getPrompt(text, 14001, nullptr, 0), 0); // no resource scope is open
    EXPECT_STREQ(text, L"as it was");
    EXPECT_EQ(VxPrompts::getPrompt(text, 14000, L"VEXOTOOLS", 0), 1); // also before attach
    EXPECT_STREQ(text, L"\nSélectionnez un élément : ");
    DllMain(instance, attach, nullptr);
    {
        CVxToolsResOverride scope{CString(L"VEXOTOOLS")};
        CVxToolsResOverride unknown{CString(L"NOSUCH")};
        EXPECT_EQ(VxPrompts::getPrompt(text, 14110, nullptr, 0), 1);
        EXPECT_STREQ(text, L"Invalid file name!");
    }
    EXPECT_EQ(CVxToolsResOverride::current(), nullptr);
    EXPECT_EQ(VxPrompts::getPrompt(text, 14026, L"VEXOTOOLS", 0), 1);
    EXPECT_STREQ(text, L"Ordane Dalle");
}

TEST_F(Module, ErrorAlertsAndBoxesSpeakThroughThePort) {
    VEXOUITools::dlgErrorAlert(Acad::eOk, L"plan.dxf");
    EXPECT_TRUE(port.boxes.empty());
    VEXOUITools::dlgErrorAlert(Acad::eKeyNotFound, L"plan 100%s.dxf");
    port.buttons.push_back(IDYES);
    EXPECT_EQ(VEXOUITools::MessageBoxW(14013, L"VEXOTOOLS", MB_YESNO, nullptr), IDYES);
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[0].text, L"ARX ERROR: eKeyNotFound, file: plan 100%s.dxf");
    EXPECT_EQ(port.boxes[0].caption, L"Ordane Dalle");
    EXPECT_EQ(port.boxes[0].flags, 48u);
    EXPECT_EQ(port.boxes[1].text, L"Des informations importantes sont manquantes.\n"
                                  L"Il est fortement conseillé de réinstaller le programme.");
}

} // namespace
