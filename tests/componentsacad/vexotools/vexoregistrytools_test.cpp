#include "vexoregistrytools.h"

#include "adscodes.h"
#include "registrystore.h"
#include "runtimeservices.h"
#include "rxprodkey.h"
#include "scriptedport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <dlfcn.h>

namespace {

using Tools = VEXORegistryTools;

constexpr const wchar_t* applicationKey = L"Software\\Vexomar\\ordane\\R18\\10.1";
const HKEY user = HKEY_CURRENT_USER, machine = HKEY_LOCAL_MACHINE;

class RegistryTools : public testing::Test {
protected:
    static void setText(HKEY hive, const wchar_t* subKey, const wchar_t* name, const std::wstring& text) {
        ASSERT_EQ(Tools::SetRegistryValueAdv(subKey, name, text.c_str(), hive), 1);
    }
    /// Into the user's key K.
    static void setBytes(const wchar_t* name, DWORD type, const void* data, DWORD size) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(user, L"K", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr), 0);
        ASSERT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), size), 0);
        RegCloseKey(key);
    }
    static std::wstring text(HKEY hive, const wchar_t* subKey, const wchar_t* name) {
        CString value(L"(absent)");
        Tools::QueryValueInRegistryApp(CString(subKey), CString(name), value, hive);
        return std::wstring(value.view());
    }
    static std::wstring result(int (*getter)(CString&)) {
        CString path(L"(untouched)");
        const int found = getter(path);
        EXPECT_EQ(found == 0, path == L"(untouched)");
        return std::wstring(path.view());
    }
    void TearDown() override { EXPECT_EQ(port_.registry().openHandleCount(), 0u) << "a key stayed open"; }

    hostkit::ScriptedPort port_;
    hostkit::ScopedPort usePort_{port_};
    hostkit::RuntimeServices services_;
    hostkit::ScopedRuntimeServices useServices_{services_};
};

TEST_F(RegistryTools, ApplicationKeyIsOneAndTheSame) {
    CString path;
    wchar_t buffer[100];
    Tools::GetPathRegistryApp(path);
    EXPECT_EQ(path, applicationKey);
    EXPECT_EQ(Tools::GetPathRegistryApp(buffer), buffer);
    EXPECT_STREQ(buffer, applicationKey);
}

TEST_F(RegistryTools, TextComesBackThroughEveryRoad) {
    EXPECT_EQ(Tools::SetRegistryValue(applicationKey, L"a", L"é€", user), 1);
    wchar_t value[1024];
    EXPECT_EQ(Tools::GetRegistryValue(applicationKey, L"a", value, user, 0), 1);
    EXPECT_STREQ(value, L"é€");
    EXPECT_EQ(Tools::GetRegistryValueAdv(L"", L"A", value, user), 1);
    EXPECT_STREQ(value, L"é€");
    EXPECT_EQ(Tools::GetRegistryValueAdv(L"", L"a", nullptr, user), 1);
    wchar_t key[] = L"SOFTWARE\\vexomar\\ordane\\r18\\10.1", name[] = L"a";
    EXPECT_EQ(Tools::QueryValueInRegistry(user, key, name, value, sizeof value), 1);
    EXPECT_STREQ(value, L"é€");
    unsigned long size = 3 * sizeof(wchar_t);
    EXPECT_EQ(Tools::QueryValueInRegistryApp(L"", L"a", value, size, user), 1);
    EXPECT_EQ(size, 3 * sizeof(wchar_t));
    EXPECT_EQ(text(user, L"", L"a"), L"é€");
    EXPECT_EQ(text(machine, L"", L"a"), L"(absent)"); // hives are apart
}

TEST_F(RegistryTools, OutputsStayAsTheyWereOnFailure) {
    setText(user, L"Settings", L"long", std::wstring(1024, L'x'));
    setText(user, L"Settings", L"fits", std::wstring(1023, L'x'));
    wchar_t value[1024] = L"untouched";
    unsigned long number = 77, size = 10;
    CString string(L"untouched");
    const std::pair<const wchar_t*, const wchar_t*> places[] = {
        {L"Settings", L"long"}, {L"Settings", L"none"}, {L"None", L"x"}, {nullptr, L"x"}};
    for (const auto& [key, name] : places)
        EXPECT_EQ(Tools::GetRegistryValueAdv(key, name, value, user), 0) << name;
    EXPECT_EQ(Tools::GetRegistryValue(nullptr, L"x", value, user, 0), 0);
    EXPECT_EQ(Tools::QueryValueInRegistryApp(L"Settings", L"fits", value, size, user), 0);
    EXPECT_EQ(Tools::GetRegistryValueAdv(L"Settings", L"fits", number, user), 0) << "a text is no number";
    EXPECT_EQ(Tools::QueryValueInRegistryApp(CString(L"None"), CString(L"x"), string, user), 0);
    const wchar_t* const nothing = nullptr;
    EXPECT_EQ(Tools::SetRegistryValueAdv(L"Settings", L"x", nothing, user), 0);
    EXPECT_STREQ(value, L"untouched");
    EXPECT_EQ(string, L"untouched");
    EXPECT_EQ(number + size, 77u + 10u);
    EXPECT_EQ(Tools::GetRegistryValueAdv(L"Settings", L"fits", value, user), 1);
    EXPECT_EQ(lstrlenW(value), 1023);
    EXPECT_EQ(text(user, L"Settings", L"long").size(), 1024u); // the other road has no limit
}

TEST_F(RegistryTools, NumbersHaveThirtyTwoBits) {
    const unsigned long wide = 0x1'2345'6789UL;
    unsigned long value = ~0UL;
    EXPECT_EQ(Tools::SetRegistryValueAdv(L"Settings", L"n", wide, user), 1);
    EXPECT_EQ(Tools::GetRegistryValueAdv(L"Settings", L"n", value, user), 1);
    EXPECT_EQ(value, 0x2345'6789UL); // no stale upper bits
    setBytes(L"short", REG_DWORD, "\1\2", 2);
    EXPECT_EQ(Tools::GetRegistryValue(L"K", L"short", value, user), 0);
    setBytes(L"empty", REG_SZ, L"", sizeof(wchar_t));
    EXPECT_EQ(Tools::GetRegistryValue(L"K", L"empty", value, user), 0);
    EXPECT_EQ(value, 0x2345'6789UL);
}

TEST_F(RegistryTools, TheGateGuardsTextWithoutATerminator) {
    setBytes(L"v", REG_SZ, L"abc", 3 * sizeof(wchar_t));
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(user, L"K", 0, KEY_READ, &key), ERROR_SUCCESS);
    unsigned long type = ~0UL, size = ~0UL;
    EXPECT_EQ(Tools::VEXORegQueryValueEx(key, L"v", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_SZ);
    ASSERT_EQ(size, 3 * sizeof(wchar_t) + 1);
    std::vector<unsigned char> data(size, 0xAA);
    EXPECT_EQ(Tools::VEXORegQueryValueEx(key, L"v", nullptr, &type, data.data(), &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 3 * sizeof(wchar_t));
    EXPECT_EQ(data[size], 0); // one byte, at the size told
    // Without type or name there is no guard; without room for it, no unterminated text.
    data.back() = 0xAA;
    size = data.size();
    EXPECT_EQ(Tools::VEXORegQueryValueEx(key, L"v", nullptr, nullptr, data.data(), &size), ERROR_SUCCESS);
    EXPECT_EQ(data.back(), 0xAA);
    EXPECT_EQ(Tools::VEXORegQueryValueEx(key, L"v", nullptr, &type, data.data(), &size), ERROR_MORE_DATA);
    unsigned long reserved = 0;
    EXPECT_EQ(Tools::VEXORegQueryValueEx(key, L"v", &reserved, &type, nullptr, &size),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Tools::VEXORegQueryValueEx(key, L"none", nullptr, &type, nullptr, &size), ERROR_FILE_NOT_FOUND);
    RegCloseKey(key);

    wchar_t value[4] = L"???";
    wchar_t keyName[] = L"K", name[] = L"v";
    EXPECT_EQ(Tools::QueryValueInRegistry(user, keyName, name, value, sizeof value), 1);
    EXPECT_STREQ(value, L"abc");
    EXPECT_EQ(Tools::QueryValueInRegistry(user, keyName, name, value, 3 * sizeof(wchar_t)), 0);
    const wchar_t exact[2] = {L'z', 0};
    setBytes(L"v", REG_SZ, exact, sizeof exact);
    EXPECT_EQ(Tools::QueryValueInRegistry(user, keyName, name, value, sizeof exact), 1);
    EXPECT_STREQ(value, L"z");
}

TEST_F(RegistryTools, PathsFallBackInOrder) {
    const auto bin = [] { return result(Tools::GetOrdaneBinPath); };
    const auto data = [] { return result(Tools::GetOrdaneDataPath); };
    EXPECT_EQ(bin() + data(), L"(untouched)(untouched)");
    setText(machine, L"", L"Path", L"C:\\Ordane");
    EXPECT_EQ(bin() + L"|" + data(), L"C:\\Ordane\\Bin|C:\\Ordane");
    setText(machine, L"", L"PATHDATA", L"D:\\Machine\\");
    EXPECT_EQ(data(), L"D:\\Machine\\");
    setText(user, L"", L"PATHDATA", L"");
    EXPECT_EQ(data(), L""); // an empty value is a value
    setText(machine, L"", L"PATHBIN", L"E:\\");
    EXPECT_EQ(bin(), L"E:\\Bin");
    setText(machine, L"", L"PATHBIN", L"");
    EXPECT_EQ(bin(), L"Bin"); // no separator in front
    wchar_t buffer[50] = L"";
    EXPECT_EQ(Tools::GetOrdaneBinPath(buffer), 1);
    EXPECT_STREQ(buffer, L"Bin");
    EXPECT_EQ(Tools::GetOrdaneDataPath(static_cast<wchar_t*>(nullptr)), 0);
}

TEST_F(RegistryTools, ParentAndModuleDirectories) {
    CString out(L"before");
    const auto expectParent = [&](const CString& directory) {
        EXPECT_EQ(Tools::GetPathParentDir(out, true), directory + L"\\");
        EXPECT_EQ(out, directory + L"\\");
        EXPECT_EQ(Tools::GetPathParentDir(out, false), directory);
    };
    EXPECT_EQ(Tools::GetPathParentDir(out, false), L"..\\");
    EXPECT_EQ(Tools::GetPathParentDir(out, true), L"..\\");
    EXPECT_EQ(Tools::GetPathAppDir(out, true), L"");
    setText(machine, L"", L"PATHBIN", L"C:\\P");
    setText(machine, L"Loader", L"MODULE", L"C:\\T\\Bin\\ordane10.arx");
    // The last one is 1 by its start, but too long to read.
    for (const std::wstring& testing :
         {std::wstring(L"2"), {}, std::wstring(L" 1"), std::wstring(260, L'1')}) {
        setText(machine, L"", L"TestingRelease", testing);
        expectParent(L"C:\\P");
    }
    setText(machine, L"", L"TestingRelease", L"1x");
    expectParent(L"C:\\T\\Bin");

    const std::wstring deep = L"/" + std::wstring(400, L'd') + L"/mod.so";
    setText(machine, L"Loader", L"MODULE", deep);
    EXPECT_EQ(Tools::GetPathAppDir(out, true).GetLength(), 402);
    EXPECT_EQ(Tools::GetPathAppDir(out, false).GetLength(), 401);
    setText(machine, L"Loader", L"MODULE", L"mod.so");
    EXPECT_EQ(Tools::GetPathAppDir(out, false), L"");
}

TEST_F(RegistryTools, DirectoriesBelowTheDataPath) {
    const std::pair<CString (*)(CString&, bool), const wchar_t*> flagged[] = {
        {Tools::GetPathCatalogDir, L"Catalog"},
        {Tools::GetPathSupportDir, L"Support"},
        {Tools::GetPathSupportStylesDir, L"Support\\Styles"},
        {Tools::GetPathSupportLevelArrowDir, L"Support\\Arrow"},
        {Tools::GetPathSupportDynBlocksDir, L"Support\\Dynamic Symbols"},
        {Tools::GetPathRecoverDir, L"Recover"},
    };
    const std::pair<CString (*)(), const wchar_t*> plain[] = {
        {Tools::GetPathSupportSymbolDir, L"Support\\Symbol"},
        {Tools::GetPathSupportLayoutStyles, L"Support\\Layout Styles"},
        {Tools::GetPathSupportSamplesDocument, L"Support\\Sample\\Document"},
        {Tools::GetPathSupportBarSupportsDir, L"Support\\Bar Supports"},
    };
    const auto check = [&](const CString& base, const CString& plainBase) {
        for (const auto& [getter, tail] : flagged) {
            CString out(L"X:\\given");
            EXPECT_EQ(getter(out, false), base + tail);
            EXPECT_EQ(out, base + tail);
            out = L"X:\\given";
            EXPECT_EQ(getter(out, true), base + tail + L"\\");
        }
        for (const auto& [getter, tail] : plain) EXPECT_EQ(getter(), plainBase + tail);
    };
    check(L"X:\\given\\", L"\\"); // no install: what the caller brought
    for (const wchar_t* dataPath : {L"D:\\Data", L"D:\\Data\\"}) {
        setText(user, L"", L"PATHDATA", dataPath);
        check(L"D:\\Data\\", L"D:\\Data\\");
    }
}

TEST_F(RegistryTools, LanguageIsFrenchUntilTheMachineSaysOtherwise) {
    const auto languages = [] {
        return std::vector<unsigned long>{Tools::GetLanguageUI(), Tools::GetSubLanguageUI(),
                                          Tools::GetRegistryLanguageUI()};
    };
    const std::vector<unsigned long> french = {12, 1, 0};
    EXPECT_EQ(languages(), french);
    setText(machine, L"", L"Path", L"x"); // the key is there, the value is not
    EXPECT_EQ(languages(), french);
    EXPECT_EQ(text(machine, L"", L"Language"), L"(absent)"); // and stays so
    setText(machine, L"", L"Language", L"1031");
    EXPECT_EQ(languages(), french);
    const std::vector<unsigned long> swissGerman = {7, 2, 0x0807}, withUpperWord = {9, 1, 0xABCD0409};
    for (const auto& language : {swissGerman, withUpperWord}) {
        Tools::SetRegistryValueAdv(L"", L"Language", language[2], machine);
        EXPECT_EQ(languages(), language);
    }
}

TEST_F(RegistryTools, UnitTypeIsHeldBetweenItsBounds) {
    const std::tuple<const wchar_t*, int, const wchar_t*> cases[] = {
        {L"7", 7, L"7"},       {L"0", 0, L"0"},           {L"8", 4, L"4"},          {L"-1", 4, L"4"},
        {L" 5 m", 5, L" 5 m"}, {L"metres", 0, L"metres"}, {L"99999999999", 4, L"4"}};
    EXPECT_EQ(Tools().GetDefaultUnitType(), 4); // absent
    EXPECT_EQ(text(user, L"Settings", L"Metrics"), L"4");
    for (const auto& [stored, type, after] : cases) {
        setText(user, L"Settings", L"Metrics", stored);
        EXPECT_EQ(Tools().GetDefaultUnitType(), type);
        EXPECT_EQ(text(user, L"Settings", L"Metrics"), after);
    }
    Tools::SetDefaultUnitType(6);
    EXPECT_EQ(text(user, L"Settings", L"Metrics"), L"6");
}

TEST_F(RegistryTools, RebarDirectoryIsFixedAtFirstUse) {
    EXPECT_EQ(Tools::GetPathRebarSolutionXML(), L"");
    EXPECT_EQ(text(user, L"Settings", L"PathRebarSolutionXML"), L"(absent)");
    setText(machine, L"", L"PATHDATA", L"D:\\Data");
    EXPECT_EQ(Tools::GetPathRebarSolutionXML(), L"D:\\Data\\Support\\Dynamic Reinforcement");
    setText(machine, L"", L"PATHDATA", L"E:\\Moved");
    EXPECT_EQ(Tools::GetPathRebarSolutionXML(), L"D:\\Data\\Support\\Dynamic Reinforcement");
    setText(user, L"Settings", L"PathRebarSolutionXML", L"F:\\Mine");
    EXPECT_EQ(Tools::GetPathRebarSolutionXML(), L"F:\\Mine");
}

TEST_F(RegistryTools, LegendVisibilityTakesNoEmptyText) {
    EXPECT_EQ(Tools::GetSketchPointColorsLegendVisibility(), L"");
    Tools::SetSketchPointColorsLegendVisibility(L"1;0");
    Tools::SetSketchPointColorsLegendVisibility(L"");
    EXPECT_EQ(Tools::GetSketchPointColorsLegendVisibility(), L"1;0");
}

TEST_F(RegistryTools, AChangedSettingFlipsTheHostsVariable) {
    // null: the host has none
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> steps[] = {
        {L"A", L"1", L"1"}, // nothing was there before
        {L"A", L"1", L"1"}, // the same text
        {L"a", L"1", L"0"},       {L"b", L"0", L"1"}, {L"c", L"other", L"1"},
        {L"d", nullptr, nullptr}, {L"", L"1", L"0"},  {L"e", L"1", L"1"}, // the old text is empty
    };
    for (const auto& [written, variableBefore, variableAfter] : steps) {
        port_.environment.clear();
        if (variableBefore) port_.environment[L"LOOK"] = variableBefore;
        EXPECT_EQ(Tools::SetRegistryValueAdvAndSwitchEnvVar(L"Settings", L"s", written, user, L"LOOK"), 1);
        EXPECT_EQ(text(user, L"Settings", L"s"), written);
        ASSERT_EQ(port_.environment.size(), variableAfter ? 1u : 0u);
        if (variableAfter) {
            EXPECT_EQ(port_.environment[L"LOOK"], variableAfter);
        }
    }
    EXPECT_EQ(Tools::SetRegistryValueAdvAndSwitchEnvVar(L"Settings", L"s", L"f", user, nullptr), 1);
    port_.registry().setReadOnly(hostkit::RegistryHive::currentUser, true);
    port_.environment[L"LOOK"] = L"1";
    EXPECT_EQ(Tools::SetRegistryValueAdvAndSwitchEnvVar(L"Settings", L"s", L"g", user, L"LOOK"), 0);
    EXPECT_EQ(port_.environment[L"LOOK"], L"1");
}

TEST_F(RegistryTools, TheHostsPlaceAndEditionStandUnderItsProductKey) {
    EXPECT_EQ(result(Tools::GetAcadLocation), L"(untouched)");
    EXPECT_EQ(Tools::WhoAmI(), L"ordane10.arx");
    Tools::SetRegistryValue(acrxProductKey(), L"Location", L"C:\\B", machine);
    EXPECT_EQ(result(Tools::GetAcadLocation), L"C:\\B");
    Tools::SetRegistryValue(acrxProductKey(), L"AcadLocation", L"C:\\A", machine);
    EXPECT_EQ(result(Tools::GetAcadLocation), L"C:\\A");
    Tools::SetRegistryValue(acrxProductKey(), L"ProductName", L"Host cad lt 2010", machine);
    EXPECT_EQ(Tools::WhoAmI(), L"ordane10.ltx");
}

TEST_F(RegistryTools, RegisteringNeedsBothHives) {
    using hostkit::RegistryHive;
    hostkit::RegistryStore& store = port_.registry();
    for (const int readOnly : {0, 1, 2, 3}) {
        store.setReadOnly(RegistryHive::classesRoot, readOnly & 1);
        store.setReadOnly(RegistryHive::localMachine, readOnly & 2);
        EXPECT_EQ(Tools::CanRegisterComModules(), readOnly == 0) << readOnly;
        EXPECT_EQ(store.read().find(RegistryHive::classesRoot, L"Test key"), nullptr);
        EXPECT_EQ(store.read().find(RegistryHive::localMachine, L"Test key"), nullptr);
    }
}

TEST_F(RegistryTools, RegistersThroughThePlatformsModule) {
    const auto instance = reinterpret_cast<HINSTANCE>(this);
    const auto update = [&](int registerIt) {
        return Tools::UpdateRegistryD(instance, L"#1", registerIt, nullptr);
    };
    EXPECT_EQ(update(1), E_FAIL); // neither module is there
    // A module that is loaded is found by its own name.
    void* whole = dlopen(VEXO_BINARY_DIR "/lib/registrar_whole.so", RTLD_NOW); // atl71.dll
    ASSERT_NE(whole, nullptr) << dlerror();
    EXPECT_EQ(update(1), S_FALSE);
    EXPECT_EQ(update(0), S_OK);
    EXPECT_EQ(Tools::UpdateRegistryD(nullptr, L"#1", 1, nullptr), E_INVALIDARG);
    void* lacking =
        dlopen(VEXO_BINARY_DIR "/lib/registrar_lacking.so", RTLD_NOW); // atl70.dll, which comes first
    ASSERT_NE(lacking, nullptr) << dlerror();
    EXPECT_EQ(update(1), E_FAIL);
    dlclose(lacking);
    EXPECT_EQ(update(1), S_FALSE);
    dlclose(whole);
}

} // namespace
