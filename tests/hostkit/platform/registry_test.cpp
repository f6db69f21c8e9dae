#include "atomicfile.h"
#include "fileregistrystore.h"
#include "registrytext.h"
#include "scriptedport.h"
#include "tchar.h"
#include "temporaryfolder.h"
#include "winbase.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace hostkit;

class Registry : public testing::Test {
protected:
    static HKEY open(HKEY hive, const wchar_t* path, REGSAM access) {
        HKEY key = nullptr;
        EXPECT_EQ(RegOpenKeyExW(hive, path, 0, access, &key), ERROR_SUCCESS);
        return key;
    }
    static HKEY make(HKEY hive, const wchar_t* path, REGSAM access = KEY_ALL_ACCESS) {
        HKEY key = nullptr;
        EXPECT_EQ(create(hive, path, access, key), ERROR_SUCCESS);
        return key;
    }
    static LONG create(HKEY hive, const wchar_t* path, REGSAM access, HKEY& key) {
        return RegCreateKeyExW(hive, path, 0, nullptr, 0, access, nullptr, &key, nullptr);
    }
    static LONG setText(HKEY key, const wchar_t* name, const std::wstring& text) {
        return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    static std::wstring getText(HKEY key, const wchar_t* name) {
        wchar_t text[100] = L"";
        DWORD size = sizeof text;
        const LONG status =
            RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
        return status == ERROR_SUCCESS ? text : L"status " + std::to_wstring(status);
    }
    template <class Enumerate>
    static std::pair<LONG, std::wstring> nameAt(Enumerate enumerate, HKEY key, DWORD index, DWORD room = 50) {
        wchar_t name[50];
        const LONG status = enumerate(key, index, name, &room, nullptr, nullptr, nullptr, nullptr);
        return {status, status == ERROR_SUCCESS ? std::wstring(name, room) : L""};
    }

    ScriptedPort port_;
    ScopedPort use_{port_};
};

TEST_F(Registry, FindsNamesInAnyCaseAndKeepsTheFirst) {
    const HKEY key = make(HKEY_CURRENT_USER, L"Software\\Vexomar\\Été");
    EXPECT_EQ(setText(key, L"PATHBIN", L"a"), ERROR_SUCCESS);
    EXPECT_EQ(setText(key, L"pathbin", L"b"), ERROR_SUCCESS);
    const HKEY again = open(HKEY_CURRENT_USER, L"\\SOFTWARE\\vexomar\\éTÉ\\", KEY_READ);
    EXPECT_EQ(getText(again, L"PathBin"), L"b");
    using Named = std::pair<LONG, std::wstring>;
    EXPECT_EQ(nameAt(RegEnumValueW, again, 0), Named(ERROR_SUCCESS, L"PATHBIN"));
    EXPECT_EQ(nameAt(RegEnumValueW, again, 1).first, ERROR_NO_MORE_ITEMS);
    const HKEY software = open(HKEY_CURRENT_USER, L"software", KEY_READ);
    EXPECT_EQ(nameAt(RegEnumKeyExW, software, 0, 3).first, ERROR_MORE_DATA);
    EXPECT_EQ(nameAt(RegEnumKeyExW, software, 0), Named(ERROR_SUCCESS, L"Vexomar"));
}

TEST_F(Registry, RightsDecideWhatAHandleMayDo) {
    make(HKEY_CURRENT_USER, L"K\\below");
    constexpr LONG ok = ERROR_SUCCESS, denied = ERROR_ACCESS_DENIED;
    const std::tuple<REGSAM, LONG, LONG, LONG> cases[] = {{KEY_READ, ok, denied, ok},
                                                          {KEY_WRITE, denied, ok, denied},
                                                          {KEY_QUERY_VALUE, ok, denied, denied},
                                                          {KEY_ENUMERATE_SUB_KEYS, denied, denied, ok},
                                                          {KEY_READ | KEY_WOW64_32KEY, ok, denied, ok},
                                                          {KEY_ALL_ACCESS, ok, ok, ok}};
    setText(open(HKEY_CURRENT_USER, L"K", KEY_WRITE), L"v", L"x");
    for (const auto& [access, query, set, enumerate] : cases) {
        SCOPED_TRACE(access);
        const HKEY key = open(HKEY_CURRENT_USER, L"K", access);
        EXPECT_EQ(RegQueryValueExW(key, L"v", nullptr, nullptr, nullptr, nullptr), query);
        EXPECT_EQ(setText(key, L"v", L"y"), set);
        EXPECT_EQ(nameAt(RegEnumKeyExW, key, 0).first, enumerate);
        EXPECT_EQ(nameAt(RegEnumValueW, key, 0).first, query);
        EXPECT_EQ(RegDeleteValueW(key, L"none"), set == denied ? denied : ERROR_FILE_NOT_FOUND);
        EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
        EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);
        EXPECT_EQ(setText(key, L"v", L"y"), ERROR_INVALID_HANDLE);
    }
}

TEST_F(Registry, AReadOnlyHiveRefusesEveryChange) {
    RegCloseKey(make(HKEY_LOCAL_MACHINE, L"K"));
    port_.registry().setReadOnly(RegistryHive::localMachine, true);
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"K", 0, KEY_WRITE, &key), ERROR_ACCESS_DENIED);
    EXPECT_EQ(key, nullptr);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, nullptr, 0, KEY_WRITE, &key), ERROR_ACCESS_DENIED);
    EXPECT_EQ(create(HKEY_LOCAL_MACHINE, L"New", KEY_READ, key), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"K"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(setText(HKEY_LOCAL_MACHINE, L"v", L"x"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"K", 0, KEY_READ, &key), ERROR_SUCCESS);
    EXPECT_EQ(create(HKEY_CURRENT_USER, L"New", KEY_WRITE, key), ERROR_SUCCESS);
}

TEST_F(Registry, QueriesTellSizesAndKeepRawBytes) {
    const HKEY key = make(HKEY_USERS, L"K");
    const BYTE raw[5] = {1, 0, 255, 0, 7};
    EXPECT_EQ(RegSetValueExW(key, L"", 0, 0x1234, raw, 5), ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueExW(key, L"empty", 0, REG_BINARY, nullptr, 0), ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueExW(key, L"x", 0, REG_SZ, nullptr, 4), ERROR_INVALID_PARAMETER);
    DWORD type = 0, size = 0;
    EXPECT_EQ(RegQueryValueExW(key, nullptr, nullptr, &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, 0x1234u);
    EXPECT_EQ(size, 5u);
    BYTE data[6] = {9, 9, 9, 9, 9, 9};
    size = 4;
    EXPECT_EQ(RegQueryValueExW(key, L"", nullptr, nullptr, data, &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(data[0], 9);
    EXPECT_EQ(RegQueryValueExW(key, L"", nullptr, nullptr, data, &size), ERROR_SUCCESS);
    EXPECT_EQ(std::memcmp(data, raw, 5) + (data[5] - 9), 0);
    EXPECT_EQ(RegQueryValueExW(key, L"", nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExW(key, L"none", nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, KeysAreMadeAndDeletedFromTheirEnds) {
    DWORD disposition = 0;
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CLASSES_ROOT, L"a\\b", 0, nullptr, 0, KEY_READ, nullptr, &key, &disposition);
    EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
    RegCreateKeyExW(HKEY_CLASSES_ROOT, L"A", 0, nullptr, 0, KEY_WRITE, nullptr, &key, &disposition);
    EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, L"a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyW(key, L"B"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, L"a"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, L"a"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(setText(key, L"v", L"x"), ERROR_KEY_DELETED);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, L""), ERROR_ACCESS_DENIED);
    for (const std::wstring& bad : {std::wstring(L"a\nb"), std::wstring(256, L'k'), std::wstring(L"x\\\x7F")})
        EXPECT_EQ(create(HKEY_CLASSES_ROOT, bad.c_str(), KEY_READ, key), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, L"x", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegOpenKeyExW(nullptr, L"x", 0, KEY_READ, &key), ERROR_INVALID_HANDLE);
}

TEST_F(Registry, AHandleBelongsToItsStore) {
    const HKEY key = make(HKEY_CURRENT_USER, L"K");
    ScriptedPort other;
    const ScopedPort use(other);
    EXPECT_EQ(getText(key, L"v"), L"status 6");
    const HKEY otherKey = make(HKEY_CURRENT_USER, L"K");
    EXPECT_NE(key, otherKey);
}

// --- The text form ----------------------------------------------------------------------------------------

RegistryValue textValue(std::wstring_view text, std::uint32_t type = REG_SZ) {
    std::string bytes((text.size() + 1) * sizeof(wchar_t), '\0');
    std::memcpy(bytes.data(), text.data(), text.size() * sizeof(wchar_t));
    return {type, bytes};
}

TEST(RegistryText, EveryValueComesBack) {
    RegistryTree tree;
    RegistryKey& key = *tree.make(RegistryHive::currentUser, L"Soft ware\\[x]\\Été;=\"");
    tree.make(RegistryHive::users, L"empty\\deep");
    key.values[L""] = textValue(L"default");
    key.values[L"a=\"b\"\\\n\r\t;"] = textValue(L"\"C:\\Été\"\n\r\t€𝄞");
    key.values[L"no text"] = {REG_SZ, ""};
    key.values[L"odd"] = {REG_SZ, "abc"};
    key.values[L"unterminated"] = {REG_SZ, std::string("a\0\0\0", 4)};
    key.values[L"two ends"] = {REG_SZ, std::string(8, '\0')};
    key.values[L"surrogate"] = textValue(std::wstring(1, static_cast<wchar_t>(0xD800)));
    key.values[L"beyond"] = textValue(std::wstring(1, static_cast<wchar_t>(0x7FFFFFFF)));
    key.values[std::wstring(1, static_cast<wchar_t>(-5))] = textValue(L"strange name");
    key.values[L"expand"] = textValue(L"%PATH%", REG_EXPAND_SZ);
    key.values[L"dword"] = {REG_DWORD, std::string("\x0C\x04\0\0", 4)};
    key.values[L"short dword"] = {REG_DWORD, "\x0C"};
    key.values[L"qword"] = {REG_QWORD, "\1\2\3\4\5\6\7\x88"};
    key.values[L"multi"] = {REG_MULTI_SZ, std::string("a\0\0\0\0\0\0\0", 8)};
    key.values[L"unknown"] = {0xFFFF0123, "\xFF"};

    const std::string text = writeRegistryText(tree);
    RegistryTree again;
    EXPECT_TRUE(readRegistryText(text, again).empty());
    EXPECT_EQ(again.find(RegistryHive::currentUser, L"soft ware\\[X]\\Été;=\"")->values, key.values);
    EXPECT_NE(again.find(RegistryHive::users, L"empty\\deep"), nullptr);
    EXPECT_EQ(writeRegistryText(again), text);
    EXPECT_NE(text.find("\"dword\"=dword:0000040c\n"), std::string::npos);
    EXPECT_NE(text.find("\"expand\"=expand:\"%PATH%\"\n"), std::string::npos);
}

TEST(RegistryText, TellsTheLineAndKeepsTheRest) {
    const auto expect = [](const std::string& line, bool isGood) {
        SCOPED_TRACE(line);
        const std::string text =
            "[HKEY_CURRENT_USER\\K]\r\n" + line + "\r\n[HKEY_CURRENT_USER\\L]\n\"last\"=\"x\"";
        RegistryTree tree;
        const auto problems = readRegistryText(text, tree);
        EXPECT_EQ(problems.empty(), isGood);
        for (const auto& problem : problems) EXPECT_EQ(problem.line, 2u);
        EXPECT_EQ(tree.find(RegistryHive::currentUser, L"L")->values.count(L"last"), 1u);
    };
    for (const char* good :
         {"\"a\"=\"b\"", "  \"a\" = \"b\"  ", "; \xFF comment", "\"a\"=dword:1",
          "\"a\"=hex(3):", "\"a\"=hex(3): 01 , 2", "@=\"\"", "[HKEY_USERS]", "[hkey_users\\\\a\\]  "})
        expect(good, true);
    for (const char* bad : {"a=b", "\"a\" \"b\"", "[HKEY_USERS", "[HKEY_NONE\\x]", "[HKEY_USERS\\a\x01]",
                            "\"\xC3\"=\"b\"", "["})
        expect(bad, false);
    for (const char* badValue : {"", "\"b", "\"b\" x", "\"\\q\"", "\"\\u{}\"", "\"\\u{0}\"",
                                 "dword:", "dword:123456789", "hex(3):123", "hex(3):01,", "hex():01"})
        expect("\"a\"=" + std::string(badValue), false);
    RegistryTree tree;
    const auto problems = readRegistryText("\"lost\"=\"x\"\n[HKEY_BAD]\n\"with its key\"=\"x\"\n", tree);
    ASSERT_EQ(problems.size(), 2u); // the values below a bad key are told once, with it
    EXPECT_EQ(problems[1].line, 2u);
}

// --- The file ---------------------------------------------------------------------------------------------

class RegistryFile : public Registry {
protected:
    RegistryFile() { port_.setRegistry(newStore()); }
    std::unique_ptr<FileRegistryStore> newStore() {
        return std::make_unique<FileRegistryStore>(
            file_, [this](const std::wstring& text) { port_.reportProblem(text); });
    }
    /// In the user's key K, which is there.
    static LONG setIn(RegistryStore& store, const std::wstring& name, const std::wstring& text) {
        return store.apply(
            {RegistryChange::Kind::setValue, RegistryHive::currentUser, L"K", name, textValue(text)});
    }

    TemporaryFolder folder_;
    std::string file_ = folder_ / "config/registry.txt";
};

TEST_F(RegistryFile, IsMadeAtTheFirstChangeAndReadByTheNext) {
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"K", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(folder_.count(), 0u);
    key = make(HKEY_CURRENT_USER, L"K");
    EXPECT_EQ(setText(key, L"é", L"\\€"), ERROR_SUCCESS);
    EXPECT_NE(folder_.read("config/registry.txt")
                  .find("[HKEY_CURRENT_USER\\K]\n\"\xC3\xA9\"=\"\\\\\xE2\x82\xAC\"\n"),
              std::string::npos);
    // Another process, or a person with an editor.
    auto other = newStore();
    EXPECT_EQ(setIn(*other, L"n", L"1"), ERROR_SUCCESS);
    EXPECT_EQ(getText(key, L"n"), L"1");
    EXPECT_EQ(RegDeleteValueW(key, L"é"), ERROR_SUCCESS);
    EXPECT_EQ(other->read().find(RegistryHive::currentUser, L"K")->values.size(), 1u);
    std::filesystem::remove(file_);
    EXPECT_EQ(getText(key, L"n"), L"status 1018");
    EXPECT_TRUE(port_.problems.empty());
}

TEST_F(RegistryFile, ADamagedFileIsToldAndKeptAsideAtTheFirstChange) {
    const std::string bad = "[HKEY_CURRENT_USER\\K]\n\"a\"=\"1\"\n\"b\"=oops\n\"c\"=\"3\"\n[HKEY_OOPS]\n";
    for (int round = 1; round <= 2; ++round) {
        std::filesystem::create_directory(folder_ / "config");
        folder_.write("config/registry.txt", bad);
        port_.problems.clear();
        port_.setRegistry(newStore());
        const HKEY key = open(HKEY_CURRENT_USER, L"K", KEY_ALL_ACCESS);
        EXPECT_EQ(getText(key, L"a") + getText(key, L"c"), L"13");
        ASSERT_EQ(port_.problems.size(), 2u);
        EXPECT_NE(port_.problems[1].find(L"registry.txt:5"), std::wstring::npos);
        EXPECT_NE(port_.problems[0].find(L"registry.txt:3: the value is neither"), std::wstring::npos);
        EXPECT_EQ(folder_.read("config/registry.txt"), bad); // reading changes nothing
        EXPECT_EQ(setText(key, L"d", L"4"), ERROR_SUCCESS);
        EXPECT_EQ(folder_.read("config/registry.txt.damaged-" + std::to_string(round)), bad);
        EXPECT_EQ(getText(key, L"a") + getText(key, L"c") + getText(key, L"d"), L"134");
        EXPECT_EQ(setText(key, L"d", L"5"), ERROR_SUCCESS); // good again: kept aside once
        EXPECT_EQ(port_.problems.size(), 3u);               // and told once, with the new place
        EXPECT_FALSE(std::filesystem::exists(file_ + ".damaged-" + std::to_string(round + 1)));
    }
}

TEST_F(RegistryFile, WhatCannotBeWrittenIsRefusedAndTold) {
    setText(make(HKEY_CURRENT_USER, L"K"), L"a", L"1");
    std::filesystem::remove(file_);
    std::filesystem::create_directory(file_); // in the place of the file, whoever runs this
    port_.problems.clear();
    port_.setRegistry(newStore());
    HKEY key = nullptr;
    EXPECT_NE(create(HKEY_CURRENT_USER, L"K", KEY_WRITE, key), ERROR_SUCCESS);
    EXPECT_FALSE(port_.problems.empty());
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"K", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(std::filesystem::is_directory(file_));
}

TEST_F(RegistryFile, TwoProcessesKeepEachOthersValues) {
    constexpr int processes = 4, values = 25;
    pid_t children[processes];
    for (int process = 0; process < processes; ++process) {
        children[process] = fork();
        ASSERT_GE(children[process], 0);
        if (children[process] != 0) continue;
        auto store = newStore();
        int failures = store->apply({RegistryChange::Kind::makeKey, RegistryHive::currentUser, L"K"}) != 0;
        for (int i = 0; i < values; ++i)
            failures += setIn(*store, std::to_wstring(100 * process + i), L"x") != ERROR_SUCCESS;
        _exit(failures);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    const RegistryKey* key = port_.registry().read().find(RegistryHive::currentUser, L"K");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->values.size(), static_cast<std::size_t>(processes * values));
    EXPECT_TRUE(port_.problems.empty());
}

TEST_F(RegistryFile, AProcessKilledWhileItWritesLosesNothing) {
    const HKEY key = make(HKEY_CURRENT_USER, L"K");
    std::mt19937 random(3);
    for (int round = 0; round < 15; ++round) {
        int progress[2];
        ASSERT_EQ(pipe(progress), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            auto store = newStore();
            for (int i = 0;; ++i) {
                setIn(*store, L"n" + std::to_wstring(round), std::to_wstring(i) + std::wstring(20000, L'x'));
                if (write(progress[1], &i, sizeof i) != sizeof i) _exit(1);
            }
        }
        close(progress[1]);
        int answered = 0; // the child says what it was told is written
        for (unsigned wanted = 2 + random() % 5; wanted > 0; --wanted)
            ASSERT_EQ(read(progress[0], &answered, sizeof answered), static_cast<ssize_t>(sizeof answered));
        usleep(random() % 2000);
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        while (read(progress[0], &answered, sizeof answered) == sizeof answered) {
        }
        close(progress[0]);

        auto store = newStore();
        const auto& values = store->read().find(RegistryHive::currentUser, L"K")->values;
        const auto value = values.find(L"n" + std::to_wstring(round));
        ASSERT_NE(value, values.end());
        const int stored =
            _wtoi(std::wstring(reinterpret_cast<const wchar_t*>(value->second.bytes.data()), 10).c_str());
        EXPECT_TRUE(stored == answered || stored == answered + 1) << stored << " " << answered;
        EXPECT_EQ(values.size(), static_cast<std::size_t>(round) + 1);
        EXPECT_TRUE(port_.problems.empty());
    }
    EXPECT_EQ(setText(key, L"after", L"x"), ERROR_SUCCESS) << "the lock went with its holder";
    const std::filesystem::directory_iterator files(folder_ / "config");
    EXPECT_EQ(std::distance(files, {}), 2) << "temporary files went, too";
}

TEST(UserRegistry, WorksInMemoryWithoutAHome) {
    const TemporaryFolder folder;
    folder.write("file", "");
    const std::string good = folder / "good", bad = folder / "file";
    const std::tuple<const char*, const char*, bool> cases[] = {
        {good.c_str(), nullptr, true}, {nullptr, good.c_str(), true}, {"relative", good.c_str(), true},
        {nullptr, nullptr, false},     {nullptr, bad.c_str(), false}, {bad.c_str(), nullptr, false},
    };
    const auto set = [](const char* name, const char* value) {
        value ? setenv(name, value, 1) : unsetenv(name);
    };
    const char* const home = std::getenv("HOME");
    const std::string before = home ? home : "";
    for (const auto& [configuration, itsHome, inFile] : cases) {
        set("XDG_CONFIG_HOME", configuration);
        set("HOME", itsHome);
        std::vector<std::wstring> problems;
        auto store = openUserRegistry([&](const std::wstring& text) { problems.push_back(text); });
        EXPECT_EQ(store->apply({RegistryChange::Kind::makeKey, RegistryHive::currentUser, L"K"}), 0);
        EXPECT_NE(store->read().find(RegistryHive::currentUser, L"K"), nullptr);
        EXPECT_EQ(problems.empty(), inFile);
        EXPECT_EQ(dynamic_cast<FileRegistryStore*>(store.get()) != nullptr, inFile);
    }
    EXPECT_TRUE(std::filesystem::exists(folder / "good/vexotools/registry.txt"));
    EXPECT_TRUE(std::filesystem::exists(folder / "good/.config/vexotools/registry.txt"));
    unsetenv("XDG_CONFIG_HOME");
    set("HOME", home ? before.c_str() : nullptr);
}

} // namespace
