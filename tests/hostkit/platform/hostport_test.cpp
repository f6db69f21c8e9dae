#include "afxdllx.h"
#include "scriptedport.h"
#include "systempath.h"
#include "winbase.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using namespace hostkit;

TEST(HostPort, IsHeadlessUntilOneIsSetAndComesBackInOrder) {
    HostPort* const headless = currentPort();
    std::wstring line = L"kept";
    EXPECT_EQ(headless->readLine(L"?", line), Input::end);
    EXPECT_EQ(line, L"kept");
    ScriptedPort outer;
    {
        const ScopedPort useOuter(outer);
        ScriptedPort inner;
        {
            const ScopedPort useInner(inner);
            OutputDebugStringW(L"\ndraw failed");
            OutputDebugStringW(nullptr);
        }
        EXPECT_EQ(inner.debug, std::vector<std::wstring>{L"\ndraw failed"});
        EXPECT_EQ(currentPort(), &outer);
    }
    EXPECT_TRUE(outer.debug.empty());
    EXPECT_EQ(currentPort(), headless);
}

TEST(HostPort, KeepsEnvironmentAndClockToItself) {
    ASSERT_EQ(setenv("VEXO_PORT_TEST", "outside \xC3\xA9", 1), 0);
    HostPort real;
    std::wstring value;
    EXPECT_TRUE(real.getEnvironment(L"VEXO_PORT_TEST", value));
    EXPECT_EQ(value, L"outside é");
    real.setEnvironment(L"VEXO_PORT_TEST", L"inside");
    EXPECT_TRUE(real.getEnvironment(L"VEXO_PORT_TEST", value));
    EXPECT_EQ(value, L"inside");
    EXPECT_STREQ(std::getenv("VEXO_PORT_TEST"), "outside \xC3\xA9");

    ScriptedPort port;
    const ScopedPort use(port);
    EXPECT_FALSE(port.getEnvironment(L"VEXO_PORT_TEST", value));
    EXPECT_EQ(value, L"inside");
    __time64_t seconds = 0;
    EXPECT_EQ(_time64(&seconds), port.time);
    EXPECT_EQ(seconds, port.time);
    port.nanoseconds = (std::int64_t{1} << 32) * 1'000'000 + 5'000'000;
    EXPECT_EQ(GetTickCount(), 5u);
}

TEST(SystemPath, MapsSeparatorsDrivesAndAnyName) {
    ScriptedPort port;
    port.drives = {{L'D', "/mnt/data"}};
    const ScopedPort use(port);
    const std::pair<const wchar_t*, const char*> cases[] = {{L"a\\b/c", "a/b/c"},
                                                            {L"C:\\Été\\x", "/\xC3\x89t\xC3\xA9/x"},
                                                            {L"c:x", "x"},
                                                            {L"d:\\x", "/mnt/data/x"},
                                                            {L"D:x", "/mnt/data/x"},
                                                            {L"D:", "/mnt/data/"},
                                                            {L"C:", ""},
                                                            {L"1:\\x", "1:/x"},
                                                            {L"", ""}};
    for (const auto& [path, mapped] : cases) EXPECT_EQ(mapPath(path), mapped) << mapped;
    EXPECT_EQ(mapPath(std::wstring_view(L"a\0b", 3)), "a");
    // Names that are no text, and a separator of the other kind within a name, can be opened by what a
    // listing gives.
    for (const std::string name : {"plain", "\xFF\xFE\x61\x80", "a\\b", "\xED\xB2\x80", "\xC3"})
        EXPECT_EQ(mapPath(pathFromSystem(name)), name);
    EXPECT_EQ(fileNameOfPath(L"a\\b/c.d"), L"c.d");
    EXPECT_EQ(fileNameOfPath(L"a\\"), L"");
}

TEST(ExtensionModule, OwnsItsPlaceInTheChain) {
    AFX_EXTENSION_MODULE first, second;
    int modules[2];
    const auto handle = [&](int i) { return reinterpret_cast<HMODULE>(&modules[i]); };
    EXPECT_FALSE(AfxInitExtensionModule(first, nullptr));
    EXPECT_FALSE(first.bInitialized);
    ASSERT_TRUE(AfxInitExtensionModule(first, handle(0)));
    ASSERT_TRUE(AfxInitExtensionModule(second, handle(1)));
    EXPECT_TRUE(AfxInitExtensionModule(first, handle(1))); // once is enough
    EXPECT_EQ(first.hModule, handle(0));
    new CDynLinkLibrary(first, 0);
    new CDynLinkLibrary(second, 0);
    new CDynLinkLibrary(first, 0);
    AfxTermExtensionModule(first);
    ASSERT_NE(CDynLinkLibrary::first(), nullptr);
    EXPECT_EQ(CDynLinkLibrary::first()->m_hModule, handle(1));
    EXPECT_EQ(CDynLinkLibrary::first()->next(), nullptr);
    AfxTermExtensionModule(first); // no longer initialised
    AfxTermExtensionModule(second, TRUE);
    EXPECT_EQ(CDynLinkLibrary::first(), nullptr);
}

TEST(Modules, OfAnotherPlatformAreNotThere) {
    SetLastError(0);
    EXPECT_EQ(LoadLibraryW(L"atl70.dll"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    EXPECT_EQ(LoadLibraryW(L""), nullptr);
    EXPECT_EQ(GetProcAddress(nullptr, "DllMain"), nullptr);
    EXPECT_FALSE(FreeLibrary(nullptr));
    const HMODULE mathematics = LoadLibraryW(L"libm.so.6");
    ASSERT_NE(mathematics, nullptr);
    EXPECT_NE(GetProcAddress(mathematics, "cos"), nullptr);
    EXPECT_EQ(GetProcAddress(mathematics, "noSuchFunction"), nullptr);
    EXPECT_TRUE(FreeLibrary(mathematics));
}

} // namespace
