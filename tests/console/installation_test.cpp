#include "installation.h"

#include "registrystore.h"
#include "runtimeservices.h"
#include "scriptedport.h"
#include "systempath.h"
#include "temporaryfolder.h"
#include "vexoacadsystemtools.h"
#include "vexoregistrytools.h"

#include <gtest/gtest.h>

namespace {

using Tools = VEXORegistryTools;

class Installation : public testing::Test {
protected:
    static bool isDirectory(const CString& path) {
        const DWORD attributes = GetFileAttributesW(path);
        return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
    }
    std::wstring place(const std::string& name) const { return hostkit::pathFromSystem(folder_ / name); }

    TemporaryFolder folder_;
    hostkit::ScriptedPort port_;
    hostkit::ScopedPort usePort_{port_};
    hostkit::RuntimeServices services_;
    hostkit::ScopedRuntimeServices useServices_{services_};
    std::wstring problem_;
};

TEST_F(Installation, GivesThePathToolsSomethingTrueToSay) {
    const std::wstring root = place("pr\xC3\xA9"
                                    "fixe/ordane");
    ASSERT_TRUE(writeInstallation(root + L"/", 0x0807, L"/opt/lib/VEXOTools10.so", problem_));
    CString path;
    EXPECT_TRUE(Tools::GetOrdaneDataPath(path) && path == root.c_str());
    EXPECT_TRUE(Tools::GetOrdaneBinPath(path) && isDirectory(path));
    EXPECT_TRUE(Tools::GetAcadLocation(path) && path == root.c_str());
    EXPECT_TRUE(isDirectory(Tools::GetPathParentDir(path, true)));
    EXPECT_EQ(Tools::GetPathAppDir(path, false), L"/opt/lib");
    for (auto getter :
         {Tools::GetPathCatalogDir, Tools::GetPathSupportDir, Tools::GetPathSupportStylesDir,
          Tools::GetPathSupportLevelArrowDir, Tools::GetPathSupportDynBlocksDir, Tools::GetPathRecoverDir}) {
        EXPECT_TRUE(isDirectory(getter(path, false))) << hostkit::mapPath(path.view());
        EXPECT_TRUE(isDirectory(getter(path, true))) << hostkit::mapPath(path.view());
    }
    for (auto getter : {Tools::GetPathSupportSymbolDir, Tools::GetPathSupportLayoutStyles,
                        Tools::GetPathSupportSamplesDocument, Tools::GetPathSupportBarSupportsDir,
                        Tools::GetPathRebarSolutionXML})
        EXPECT_TRUE(isDirectory(getter())) << hostkit::mapPath(getter().view());
    EXPECT_EQ(Tools::GetLanguageUI(), 7u);
    EXPECT_EQ(Tools::GetSubLanguageUI(), 2u);
    EXPECT_EQ(Tools::WhoAmI(), L"ordane10.arx");

    EXPECT_TRUE(VEXOAcadSystemTools::IsAcadFirstTimeRun());
    VEXOAcadSystemTools::SetAcadAsRun();
    EXPECT_FALSE(VEXOAcadSystemTools::IsAcadFirstTimeRun()) << "the default product key names a profile";

    ASSERT_TRUE(writeInstallation(place("second"), 1036, L"x.so", problem_)); // over the first
    EXPECT_TRUE(Tools::GetOrdaneDataPath(path) && path == place("second").c_str());
    EXPECT_EQ(Tools::GetLanguageUI(), 12u);
}

TEST_F(Installation, SaysWhatCannotBeDone) {
    folder_.write("file", "");
    EXPECT_FALSE(writeInstallation(place("file/x"), 1036, L"x.so", problem_));
    EXPECT_NE(problem_.find(L"Bin: the directory cannot be made: Not a directory"), std::wstring::npos);
    EXPECT_FALSE(writeInstallation(L"", 1036, L"x.so", problem_));
    port_.registry().setReadOnly(hostkit::RegistryHive::localMachine, true);
    EXPECT_FALSE(writeInstallation(place("x"), 1036, L"x.so", problem_));
    EXPECT_NE(problem_.find(L"HKEY_LOCAL_MACHINE\\Software\\Vexomar\\ordane\\R18\\10.1"), std::wstring::npos);
    EXPECT_FALSE(writeInstallation(place("x"), 1036, problem_)); // the registry is in memory
    EXPECT_NE(problem_.find(L"registry file"), std::wstring::npos);
}

} // namespace
