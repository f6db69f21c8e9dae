#include "dbaccess.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbline.h"
#include "drawingparts.h"
#include "drawingreader.h"
#include "hosttest.h"
#include "temporaryfolder.h"
#include "vexocrashhandler.h"
#include "vexoregistrytools.h"
#include "winreg.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class CrashHandler : public hostkit::HostTest {
protected:
    void SetUp() override { setDataPath(folder / ""); }

    void setDataPath(const std::string& path) {
        const std::wstring wide(path.begin(), path.end());
        ASSERT_EQ(VEXORegistryTools::SetRegistryValueAdv(L"", L"PATHDATA", wide.c_str(), HKEY_CURRENT_USER),
                  1);
    }
    AcDbObjectId addLine() {
        return drawingtest::appendToModelSpace(database(), new AcDbLine({0, 0, 0}, {1, 0, 0}));
    }
    AcDbObjectId addDictionary(AcDbObjectId owner, const wchar_t* name) {
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbDictionary> holder(owner, AcDb::kForWrite);
        auto* const made = new AcDbDictionary;
        EXPECT_EQ(holder->setAt(name, made, id), Acad::eOk);
        made->close();
        return id;
    }
    /// Left open as a failed command leaves it.
    static AcDbObject& leaveOpen(AcDbObjectId id, AcDb::OpenMode mode, int times = 1) {
        AcDbObject* object = nullptr;
        for (int i = 0; i < times; ++i) EXPECT_EQ(acdbOpenAcDbObject(object, id, mode), Acad::eOk);
        return *object;
    }
    std::vector<std::string> saved() {
        std::vector<std::string> names;
        if (fs::is_directory(recover()))
            for (const auto& entry : fs::directory_iterator(recover()))
                names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string recover() { return folder / "Recover"; }

    TemporaryFolder folder;
};

} // namespace

TEST_F(CrashHandler, closesWhatWasLeftOpenAndSavesIt) {
    const AcDbObjectId line = addLine();
    const AcDbObjectId read = addLine(), written = addLine(), both = addLine();
    AcDbObjectId dictionary = database().namedObjectsDictionaryId();
    std::vector<AcDbObjectId> dictionaries;
    for (const wchar_t* const name : {L"ONE", L"TWO", L"THREE", L"FOUR"})
        dictionaries.push_back(dictionary = addDictionary(dictionary, name));
    leaveOpen(read, AcDb::kForRead, 3);
    static_cast<AcDbLine&>(leaveOpen(written, AcDb::kForWrite)).setEndPoint({7, 8, 9});
    leaveOpen(both, AcDb::kForRead, hostkit::maxReaders);
    leaveOpen(database().modelSpaceId(), AcDb::kForWrite);
    for (const AcDbObjectId each : dictionaries) leaveOpen(each, AcDb::kForWrite);
    session.port().time = 1772386502;
    wchar_t text[] = L"failed";
    const VEXOCrashHandler handler(text, 5);
    EXPECT_EQ(database().numOpenObjects(), 0);
    const std::vector<std::string> names = saved();
    ASSERT_EQ(names.size(), 1u);
    std::tm local{};
    const std::time_t then = 1772386502;
    localtime_r(&then, &local);
    char expected[64];
    std::strftime(expected, sizeof expected, "Recovered%Y-%m-%d-%H%M%S.dwg", &local);
    EXPECT_EQ(names[0], expected);
    const std::string file = recover() + "/" + names[0];
    std::string head(6, ' ');
    std::ifstream(file, std::ios::binary).read(head.data(), 6);
    EXPECT_EQ(head, "AC1024");
    const std::unique_ptr<AcDbDatabase> again = hostkit::openDrawing(std::wstring(file.begin(), file.end()));
    ASSERT_TRUE(again);
    AcDbObjectId id;
    ASSERT_EQ(again->getAcDbObjectId(id, false, written.handle()), Acad::eOk);
    const AcDbObjectPointer<AcDbLine> found(id, AcDb::kForRead);
    ASSERT_EQ(found.openStatus(), Acad::eOk);
    EXPECT_EQ(found->endPoint(), AcGePoint3d(7, 8, 9));
    EXPECT_EQ(again->getAcDbObjectId(id, false, line.handle()), Acad::eOk);

    // A copy and an assignment are no rescues; a second one within the second keeps the first.
    VEXOCrashHandler copy(handler);
    copy = handler;
    EXPECT_EQ(saved().size(), 1u);
    const VEXOCrashHandler second;
    ASSERT_EQ(saved().size(), 2u);
    EXPECT_EQ(saved()[0], names[0].substr(0, names[0].size() - 3) + "bak");
}

// What no walk comes to, or cannot close, hinders no saving.
TEST_F(CrashHandler, savesWhatStaysOpenAsItStands) {
    const AcDbObjectId line = addLine(), erased = addLine(), beyond = addLine();
    struct Held {
        AcDbObjectId id;
        AcDb::OpenMode mode;
    };
    const Held held[] = {{database().layerZero(), AcDb::kForWrite},
                         {database().blockTableId(), AcDb::kForWrite},
                         {database().namedObjectsDictionaryId(), AcDb::kForWrite},
                         {line, AcDb::kForNotify}};
    for (const Held& each : held) {
        SCOPED_TRACE(hostkit::utf8FromWide(each.id.objectClass()->name()));
        AcDbObject& object = leaveOpen(each.id, each.mode);
        session.port().time = 1772386502 + (&each - held);
        const VEXOCrashHandler handler;
        EXPECT_EQ(saved().size(), static_cast<std::size_t>(&each - held) + 1);
        EXPECT_EQ(database().numOpenObjects(), 1);
        object.close();
    }
    AcDbObject& gone = leaveOpen(erased, AcDb::kForWrite);
    gone.erase();
    leaveOpen(beyond, AcDb::kForRead, hostkit::maxReaders);
    leaveOpen(beyond, AcDb::kForNotify).close();
    session.port().time = 1772386600;
    const VEXOCrashHandler handler;
    EXPECT_EQ(saved().size(), std::size(held) + 1);
    EXPECT_EQ(database().numOpenObjects(), 1);
    gone.close();
}

// A dictionary that holds itself, or one above it, and one that two hold.
TEST_F(CrashHandler, walksDictionariesInCirclesOnce) {
    const AcDbObjectId outer = addDictionary(database().namedObjectsDictionaryId(), L"OUTER");
    const AcDbObjectId inner = addDictionary(outer, L"INNER");
    const std::pair<AcDbObjectId, AcDbObjectId> circles[] = {
        {outer, outer}, {inner, outer}, {inner, database().namedObjectsDictionaryId()}};
    for (const auto& [holder, entry] : circles)
        hostkit::DatabaseAccess::putEntry(*hostkit::DatabaseAccess::objectOf<AcDbDictionary>(holder),
                                          L"SELF" + std::to_wstring(entry.handle().value()), entry);
    // Each level holds the next one twice.
    AcDbObjectId level = outer;
    for (int depth = 0; depth < 40; ++depth) {
        const AcDbObjectId next = addDictionary(level, L"A");
        hostkit::DatabaseAccess::putEntry(*hostkit::DatabaseAccess::objectOf<AcDbDictionary>(level), L"B",
                                          next);
        level = next;
    }
    leaveOpen(outer, AcDb::kForWrite);
    leaveOpen(level, AcDb::kForRead, 2);
    const VEXOCrashHandler handler;
    EXPECT_EQ(database().numOpenObjects(), 0);
}

TEST_F(CrashHandler, closesWithoutAPlaceToSave) {
    const AcDbObjectId line = addLine();
    const std::string file = folder / "file";
    std::ofstream(file) << "kept";
    fs::create_directory(folder / "taken");
    std::ofstream(folder / "taken/Recover") << "kept";
    for (const std::string& path : {folder / "missing", file, folder / "taken", std::string()}) {
        SCOPED_TRACE(path);
        setDataPath(path);
        leaveOpen(line, AcDb::kForRead, 2);
        const VEXOCrashHandler handler;
        EXPECT_EQ(database().numOpenObjects(), 0);
    }
    HKEY key = nullptr;
    CString path;
    VEXORegistryTools::GetPathRegistryApp(path);
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_WRITE, &key), ERROR_SUCCESS);
    RegDeleteValueW(key, L"PATHDATA");
    RegCloseKey(key);
    leaveOpen(line, AcDb::kForRead);
    const VEXOCrashHandler handler;
    EXPECT_EQ(database().numOpenObjects(), 0);
    EXPECT_FALSE(fs::exists("/Recover"));
    EXPECT_TRUE(session.port().problems.empty());
    std::string kept;
    std::ifstream(folder / "taken/Recover") >> kept;
    EXPECT_EQ(kept, "kept");

    AcDbDatabase* const working = acdbHostApplicationServices()->workingDatabase();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    const VEXOCrashHandler nothing;
    acdbHostApplicationServices()->setWorkingDatabase(working);
}
