#include "atomicfile.h"
#include "casefold.h"
#include "cfile.h"
#include "cfilefind.h"
#include "cstringlist.h"
#include "hostport.h"
#include "systempath.h"
#include "tchar.h"
#include "temporaryfolder.h"
#include "winbase.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace hostkit;

CString wide(const std::string& path) { return CString(std::wstring_view(pathFromSystem(path))); }

TEST(Files, AnswerWithTheReason) {
    const TemporaryFolder folder;
    const CString base = wide(folder.path().string());
    folder.write("file.txt", "x");
    const auto failure = [](BOOL result) { return result ? 0 : static_cast<LONG>(GetLastError()); };

    EXPECT_EQ(failure(CreateDirectoryW(base + L"\\Été", nullptr)), 0);
    EXPECT_EQ(failure(CreateDirectoryW(base + L"\\Été", nullptr)), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(failure(CreateDirectoryW(base + L"\\file.txt", nullptr)), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(failure(CreateDirectoryW(base + L"\\no\\deep", nullptr)), ERROR_PATH_NOT_FOUND);
    EXPECT_NE(failure(CreateDirectoryW(nullptr, nullptr)), 0);

    EXPECT_EQ(GetFileAttributesW(base + L"\\Été"), FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(GetFileAttributesW(base + L"/file.txt"), FILE_ATTRIBUTE_ARCHIVE);
    const auto isThere = [&](const CString& path) {
        return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
    };
    EXPECT_EQ(failure(isThere(base + L"\\none")), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(failure(isThere(base + L"\\none\\x")), ERROR_PATH_NOT_FOUND);

    EXPECT_EQ(failure(MoveFileW(base + L"\\file.txt", base + L"\\Été\\b")), 0);
    folder.write("a", "");
    EXPECT_EQ(failure(MoveFileW(base + L"\\a", base + L"\\Été\\b")), ERROR_ALREADY_EXISTS);
    const auto replace = [&](const CString& from, const CString& to,
                             DWORD flags = MOVEFILE_REPLACE_EXISTING) {
        return failure(MoveFileExW(base + from, base + to, flags));
    };
    EXPECT_EQ(replace(L"\\none", L"\\Été\\b"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(replace(L"\\a", L"\\Été"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(replace(L"\\a", L"\\Été\\b", 2), ERROR_INVALID_PARAMETER);
    {
        const CFile reader(base + L"\\Été\\b", CFile::modeRead | CFile::shareDenyNone);
        EXPECT_EQ(replace(L"\\a", L"\\Été\\b"), ERROR_ACCESS_DENIED);
    }
    EXPECT_EQ(folder.read("Été/b"), "x");
    EXPECT_EQ(replace(L"\\a", L"\\Été\\b"), 0);
    EXPECT_EQ(folder.read("Été/b"), "");
    folder.write("a", "");
    EXPECT_EQ(failure(RemoveDirectoryW(base + L"\\Été")), ERROR_DIR_NOT_EMPTY);
    EXPECT_EQ(failure(RemoveDirectoryW(base + L"\\a")), ERROR_DIRECTORY);
    EXPECT_EQ(failure(DeleteFileW(base + L"\\Été\\b")), 0);
    EXPECT_EQ(failure(DeleteFileW(base + L"\\Été\\b")), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(failure(RemoveDirectoryW(base + L"\\Été")), 0);
}

TEST(Files, AreFoundThroughAChangeOfCase) {
    const TemporaryFolder folder;
    for (const char* name : {"Été", "été", "été/Sub"}) std::filesystem::create_directory(folder / name);
    for (const char* name : {"Été/one", "été/Sub/Menu.mnu", "été/Sub/MENU.txt", "été/Sub/menu.TXT"})
        folder.write(name, "x");
    const struct {
        const char* wanted;
        const char* found;
    } cases[] = {
        {"Été/one", "Été/one"},
        {"ÉTÉ/SUB/MENU.MNU", "été/Sub/Menu.mnu"}, // Été comes first and is a dead end
        {"ÉTÉ/ONE", "Été/one"},
        {"été/Sub/menu.TXT", "été/Sub/menu.TXT"}, // as it is given, where that is there
        {"été/sub/Menu.Txt", "été/Sub/MENU.txt"},
        {"ÉTÉ//SUB/", "été//Sub/"},
        {"ÉTÉ/TWO", "ÉTÉ/TWO"}, // there is none: as it was given
        {"", ""},
    };
    for (const auto& each : cases)
        EXPECT_EQ(findPath(pathFromSystem(folder / each.wanted)), folder / each.found) << each.wanted;
    const std::wstring upper = upperCase(pathFromSystem(folder / "été/Sub/menu.mnu"));
    EXPECT_EQ(findPath(upper), folder / "été/Sub/Menu.mnu") << "from the root on";
    EXPECT_EQ(findPath(L""), "");
    EXPECT_EQ(findPath(L"no\\such"), "no/such");
}

TEST(Files, FinderWalksAndMatches) {
    const TemporaryFolder folder;
    for (const char* name : {"b.ORStyle", "A.orstyle", "c.txt", ".hidden", "bad\xFFname.txt"})
        folder.write(name, "12345");
    std::filesystem::create_directory(folder / "sub");
    const CString base = wide(folder.path().string());

    const auto names = [&](const wchar_t* pattern) {
        CFileFind finder;
        std::wstring all;
        for (BOOL more = finder.FindFile(base + L"\\" + pattern); more;) {
            more = finder.FindNextFile();
            if (!finder.IsDots()) all += finder.GetFileName() + L"|";
        }
        return all;
    };
    EXPECT_EQ(names(L"*.orstyle"), L"A.orstyle|b.ORStyle|");
    EXPECT_EQ(names(L"?.*"), L"A.orstyle|b.ORStyle|c.txt|");
    EXPECT_EQ(names(L"*.*"), names(L"*"));
    EXPECT_EQ(names(L"none*"), L"");
    EXPECT_EQ(names(L""), L"");

    CFileFind finder;
    EXPECT_FALSE(finder.IsDirectory()); // nothing found yet
    ASSERT_TRUE(finder.FindFile(base + L"\\sub"));
    EXPECT_FALSE(finder.IsDirectory()); // and not gone to yet
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_TRUE(finder.IsDirectory());
    EXPECT_TRUE(finder.MatchesMask(FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(finder.GetFilePath(), base + L"\\sub");
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_FALSE(finder.FindFile(base + L"\\none"));
    ASSERT_TRUE(finder.FindFile(base + L"\\bad*"));
    finder.FindNextFile();
    EXPECT_EQ(finder.GetLength(), 5u);
    EXPECT_TRUE(DeleteFileW(finder.GetFilePath())); // a name that is no text can still be used
}

TEST(Files, StdioLinesAreInTheAnsiCodePage) {
    const TemporaryFolder folder;
    const CString path = wide(folder / "é.ORStyle");
    {
        CStdioFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite);
        file.WriteString(L"[Été]\n");
        file.WriteString(L"€ 文 \x80\n\nlast");
    }
    EXPECT_EQ(folder.read("\xC3\xA9.ORStyle"), "[\xC9t\xE9]\r\n\x80 ? \x80\r\n\r\nlast");
    CStdioFile file;
    ASSERT_TRUE(file.Open(path, CFile::modeRead | CFile::shareDenyNone));
    EXPECT_EQ(file.GetFileName(), L"é.ORStyle");
    EXPECT_EQ(file.GetLength(), 20u);
    CString line;
    std::wstring lines;
    while (file.ReadString(line)) lines += line + L"|";
    EXPECT_EQ(lines, L"[Été]|€ ? €||last|");
    EXPECT_TRUE(line.IsEmpty());

    CFileException reason(CFileException::none, {});
    EXPECT_FALSE(file.Open(wide(folder / "none"), CFile::modeRead, &reason));
    EXPECT_EQ(reason.m_cause, CFileException::fileNotFound);
    EXPECT_FALSE(file.Open(wide(folder.path().string()), CFile::modeRead, &reason));
    EXPECT_EQ(reason.m_cause, CFileException::accessDenied);
    try {
        CStdioFile missing(wide(folder / "none/x"), CFile::modeCreate | CFile::modeWrite);
        FAIL();
    } catch (CFileException* error) {
        EXPECT_EQ(error->m_cause, CFileException::fileNotFound);
        error->Delete();
    }
}

TEST(Files, TextModeEndsLinesAsThePlatformDoes) {
    const TemporaryFolder folder;
    const CString path = wide(folder / "x");
    const auto linesOf = [&](const std::string& bytes, UINT mode) {
        folder.write("x", bytes);
        CStdioFile file(path, CFile::modeRead | mode);
        CString line;
        std::wstring lines;
        while (file.ReadString(line)) lines.append(line.view()) += L'|';
        return lines;
    };
    EXPECT_EQ(linesOf("a\rb\r\r\n\r\n\nlast\r", CFile::typeText), L"a\rb\r|||last\r|");
    EXPECT_EQ(linesOf("a\r\nb\x1A\r\nc\n", CFile::typeText), L"a|b|");
    EXPECT_EQ(linesOf("\x1A", CFile::typeText), L"");
    EXPECT_EQ(linesOf("a\r\nb\x1A\r\nc\n", CFile::typeBinary), L"a\r|b\x1A\r|c|");
    EXPECT_TRUE(linesOf(std::string("a\0b\n", 4) + std::string(1'000'000, 'c'), 0) ==
                std::wstring(L"a\0b|", 4) + std::wstring(1'000'000, L'c') + L"|");
}

// Two files of one name: what each does, and what it lets the other do.
TEST(Files, SharingIsAsTheFlagsOfBothSay) {
    const TemporaryFolder folder;
    const CString path = wide(folder / "x");
    const UINT ways[] = {CFile::modeRead, CFile::modeWrite, CFile::modeReadWrite};
    const UINT shares[] = {CFile::shareCompat, CFile::shareExclusive, CFile::shareDenyWrite,
                           CFile::shareDenyRead, CFile::shareDenyNone};
    const auto lets = [](UINT share, UINT way) {
        const bool reads = way != CFile::modeWrite, writes = way != CFile::modeRead;
        return !(reads && share != CFile::shareDenyNone && share != CFile::shareDenyWrite) &&
               !(writes && share != CFile::shareDenyNone && share != CFile::shareDenyRead);
    };
    for (const UINT way : ways)
        for (const UINT share : shares)
            for (const UINT otherWay : ways)
                for (const UINT otherShare : shares) {
                    folder.write("x", "kept");
                    CFile one(path, way | share);
                    CFile other;
                    CFileException reason(CFileException::none, {});
                    const bool opens = other.Open(path, otherWay | otherShare | CFile::modeCreate, &reason);
                    EXPECT_EQ(opens, lets(share, otherWay) && lets(otherShare, way))
                        << way << " " << share << " " << otherWay << " " << otherShare;
                    if (opens) continue;
                    EXPECT_EQ(reason.m_cause, CFileException::sharingViolation);
                    EXPECT_EQ(folder.read("x"), "kept") << "not emptied";
                    one.Close();
                    EXPECT_TRUE(other.Open(path, otherWay | otherShare)) << "given back";
                }
}

TEST(Files, WhatDoesNotGetThereIsToldAtTheLatestWhenClosed) {
    const auto isLost = [](const auto& action) {
        try {
            action();
            return false;
        } catch (CFileException* error) {
            const bool isFull = error->m_cause == CFileException::diskFull;
            error->Delete();
            return isFull;
        }
    };
    for (const int characters : {1, 1'000'000}) {
        CStdioFile file(L"/dev/full", CFile::modeWrite);
        // A writer that keeps silent about what it could not write takes nothing away from Close.
        EXPECT_EQ(isLost([&] { file.WriteString(CString(L'a', characters)); }), characters > 1);
        EXPECT_TRUE(isLost([&] { file.Close(); })) << characters;
        EXPECT_FALSE(file.IsOpen());
        file.Close();
    }
    CStdioFile dropped(L"/dev/full", CFile::modeWrite);
    dropped.WriteString(L"a"); // and nobody closes it
}

TEST(Files, TheCurrentDirectoryIsTheHostsOwn) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "a/b");
    folder.write("a/b/x", "inner");
    const auto process = std::filesystem::current_path();
    const auto current = [] {
        wchar_t name[4096] = L"";
        GetCurrentDirectoryW(4096, name);
        return std::wstring(name);
    };
    hostkit::HostPort port;
    {
        const hostkit::ScopedPort use(port);
        EXPECT_EQ(current(), process.wstring());
        EXPECT_FALSE(SetCurrentDirectoryW(wide(folder / "none")));
        EXPECT_FALSE(SetCurrentDirectoryW(wide(folder / "a/b/x")));
        EXPECT_FALSE(SetCurrentDirectoryW(L""));
        EXPECT_EQ(current(), process.wstring());
        ASSERT_TRUE(SetCurrentDirectoryW(wide(folder / "a")));
        EXPECT_NE(GetFileAttributesW(L"b\\x"), INVALID_FILE_ATTRIBUTES);
        ASSERT_TRUE(SetCurrentDirectoryW(L"b\\..\\b"));
        EXPECT_EQ(current(), std::filesystem::canonical(folder / "a/b").wstring());
        CFile file(L"x", CFile::modeRead);
        EXPECT_EQ(file.GetLength(), 5u);
        file.Close();
        CFileFind finder;
        EXPECT_TRUE(finder.FindFile(L"*"));
        EXPECT_TRUE(finder.FindFile(L"x"));
        EXPECT_TRUE(finder.FindFile(L"..\\b"));
        EXPECT_TRUE(MoveFileW(L"x", L"y") && CreateDirectoryW(L"z", nullptr) && DeleteFileW(L"y"));
        EXPECT_EQ(hostkit::mapPath(L"y"), "y") << "what a user names";
    }
    EXPECT_EQ(current(), process.wstring()) << "another host";
    EXPECT_EQ(std::filesystem::current_path(), process);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "a/b/z"));
}

TEST(Files, BinaryFilesAreReadBackAndKeptByNoTruncate) {
    const TemporaryFolder folder;
    const CString path = wide(folder / "x");
    {
        CFile file(path, CFile::modeCreate | CFile::modeReadWrite);
        file.Write("0123\n", 5);
        file.Seek(1, CFile::begin);
        char bytes[9];
        EXPECT_EQ(file.Read(bytes, 9), 4u);
        EXPECT_EQ(file.GetPosition(), 5u);
    }
    {
        CFile file(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
        file.SeekToEnd();
        file.Write("+", 1);
    }
    EXPECT_EQ(folder.read("x"), "0123\n+");
}

TEST(AtomicFile, ReplacesWholeOrNotAtAll) {
    const TemporaryFolder folder;
    folder.write("drawing", "old");
    chmod((folder / "drawing").c_str(), 0640);
    symlink("drawing", (folder / "link").c_str());
    {
        AtomicFile dropped(folder / "drawing");
        dropped.write("half");
    }
    EXPECT_EQ(folder.read("drawing"), "old");
    EXPECT_EQ(folder.count(), 2u);

    AtomicFile file(folder / "link");
    const std::string large(3'000'000, 'x');
    file.write("new");
    file.write(large);
    EXPECT_EQ(folder.read("drawing"), "old");
    ASSERT_TRUE(file.commit()) << file.errorText();
    EXPECT_EQ(folder.read("drawing"), "new" + large);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    struct stat status;
    ASSERT_EQ(stat((folder / "drawing").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777u, 0640u);
    EXPECT_EQ(folder.count(), 2u);

    std::filesystem::create_directory(folder / "sub");
    for (const std::string& place : {folder / "none/x", folder / "sub", std::string()}) {
        AtomicFile refused(place);
        refused.write("x");
        EXPECT_FALSE(refused.commit()) << place;
        EXPECT_FALSE(refused.errorText().empty()) << place;
    }
    EXPECT_EQ(folder.count(), 3u);
}

TEST(AtomicFile, RemovesOnlyWhatNobodyWritesAnyMore) {
    const TemporaryFolder folder;
    AtomicFile open(folder / "drawing");
    open.write("open");
    for (const char* name : {".drawing.new-1-0", ".drawing.new-99999999-12", // left behind
                             ".drawing.new-idea", ".other.new-1-0", "drawing.new-1-0"})
        folder.write(name, "x");
    std::filesystem::create_directory(folder / ".drawing.new-1-1");
    AtomicFile next(folder / "drawing");
    next.write("next");
    ASSERT_TRUE(next.commit()) << next.errorText();
    EXPECT_EQ(folder.count(), 6u);
    for (const char* name : {".drawing.new-1-0", ".drawing.new-99999999-12"})
        EXPECT_FALSE(std::filesystem::exists(folder / name)) << name;
    ASSERT_TRUE(open.commit()) << open.errorText();
    EXPECT_EQ(folder.read("drawing"), "open");
}

// Each removes what the others leave behind, and never what they write.
TEST(AtomicFile, ManyProcessesWriteOneFile) {
    const TemporaryFolder folder;
    std::vector<pid_t> children;
    for (int number = 0; number < 4; ++number) {
        children.push_back(fork());
        if (children.back() != 0) continue;
        int failures = 0;
        for (int round = 0; round < 50; ++round) {
            AtomicFile file(folder / "drawing");
            file.write(std::string(10000, static_cast<char>('a' + number)));
            failures += !file.commit();
        }
        _exit(failures);
    }
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    const std::string content = folder.read("drawing");
    EXPECT_EQ(content, std::string(10000, content[0]));
    EXPECT_EQ(folder.count(), 1u);
}

TEST(AtomicFile, AFullDiskLeavesTheOldFile) {
    const TemporaryFolder folder;
    folder.write("drawing", "old");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const rlimit small{4096, 4096};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
        AtomicFile file(folder / "drawing");
        file.write(std::string(100000, 'x'));
        _exit(file.commit() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.read("drawing"), "old");
    EXPECT_EQ(folder.count(), 1u);
}

} // namespace
