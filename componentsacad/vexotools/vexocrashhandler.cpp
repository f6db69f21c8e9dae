#include "vexocrashhandler.h"

#include "cfilefind.h"
#include "dbapserv.h"
#include "dbblocktable.h"
#include "dbdatabase.h"
#include "dbdict.h"
#include "dbobjptr.h"
#include "vexoregistrytools.h"
#include "vexosmartpointer.h"
#include "winbase.h"

#include <ctime>
#include <unordered_set>

namespace {

// The most opens of one object that the rescue ends, beside its own.
constexpr int mostOpens = 256;
constexpr auto recoveredForm = static_cast<AcDb::AcDbDwgVersion>(29);

// The dictionaries whose walk has begun. The members that walk have no place for it, and one rescue runs at a
// time.
std::unordered_set<const void*>* g_begunWalks = nullptr;

class WalksOfRescue {
public:
    WalksOfRescue() { g_begunWalks = &m_begun; }
    ~WalksOfRescue() { g_begunWalks = nullptr; }
    WalksOfRescue(const WalksOfRescue&) = delete;
    WalksOfRescue& operator=(const WalksOfRescue&) = delete;

private:
    std::unordered_set<const void*> m_begun;
};

void closeAllOpens(AcDbObject& object) {
    for (int count = 0; !object.isReallyClosing() && count < mostOpens; ++count) object.close();
    object.close();
}

// The directory is there, or was made; its parent is not.
bool hasDirectory(const CString& directory) {
    CFileFind finder;
    if (!finder.FindFile(directory)) return CreateDirectoryW(directory, nullptr) != FALSE;
    finder.FindNextFile();
    const bool isDirectory = finder.MatchesMask(FILE_ATTRIBUTE_DIRECTORY) != FALSE;
    finder.Close();
    return isDirectory;
}

CString timeStamp() {
    const std::time_t now = _time64(nullptr);
    wchar_t text[64] = L"";
    if (const std::tm* const local = std::localtime(&now))
        std::wcsftime(text, sizeof text / sizeof *text, L"%Y-%m-%d-%H%M%S", local);
    return CString(text);
}

// Without a data path the recover directory would lie at the root of the drive.
void saveRecovered(const AcDbDatabase& database) {
    CString directory;
    if (!VEXORegistryTools::GetOrdaneDataPath(directory) || directory.IsEmpty()) return;
    VEXORegistryTools::GetPathRecoverDir(directory, false);
    if (!hasDirectory(directory)) return;
    const CString file = directory + L"\\Recovered" + timeStamp() + L".dwg";
    [[maybe_unused]] const Acad::ErrorStatus ignored =
        database.saveAs(file.GetString(), true, recoveredForm, nullptr);
}

} // namespace

VEXOCrashHandler::VEXOCrashHandler(wchar_t* text, int code)
    : CVxCrashHandler(text, code) {
    AcDbHostApplicationServices* const services = acdbHostApplicationServices();
    AcDbDatabase* const database = services ? services->workingDatabase() : nullptr;
    if (!database) return;
    {
        const AcDbSymbolTablePointer<AcDbBlockTable> table(database, AcDb::kForRead);
        if (table.openStatus() == Acad::eOk) BlockTableParsingForClose(table.object());
    }
    {
        const AcDbObjectPointer<AcDbDictionary> root(database->namedObjectsDictionaryId(), AcDb::kForRead);
        const WalksOfRescue walks;
        if (root.openStatus() == Acad::eOk) DictionaryRecursiveParsingForClose(root.object());
    }
    saveRecovered(*database);
}

VEXOCrashHandler::VEXOCrashHandler(const VEXOCrashHandler& other) = default;

VEXOCrashHandler& VEXOCrashHandler::operator=(const VEXOCrashHandler& other) = default;

VEXOCrashHandler::~VEXOCrashHandler() = default;

void VEXOCrashHandler::DictionaryRecursiveParsingForClose(AcDbDictionary* dictionary) {
    if (!dictionary) return;
    g_begunWalks->insert(dictionary);
    const VEXOSmartPointer<AcDbDictionaryIterator> entries(dictionary->newIterator());
    if (!entries) return;
    for (; !entries->done(); entries->next()) {
        AcDbObject* object = nullptr;
        if (entries->getObject(object, AcDb::kForNotify) != Acad::eOk) continue;
        // Its opens are the walk's own, which has a use for them yet.
        if (g_begunWalks->contains(object)) {
            object->close();
            continue;
        }
        CloseOpenedObject(object);
        const AcDbObjectPointer<AcDbDictionary> inner(entries->objectId(), AcDb::kForRead);
        if (inner.openStatus() == Acad::eOk) DictionaryRecursiveParsingForClose(inner.object());
    }
}

void VEXOCrashHandler::BlockTableParsingForClose(AcDbBlockTable* table) {
    if (!table) return;
    AcDbBlockTableIterator* made = nullptr;
    const Acad::ErrorStatus status = table->newIterator(made, true, true);
    const VEXOSmartPointer<AcDbBlockTableIterator> records(made);
    if (status != Acad::eOk) return;
    for (; !records->done(); records->step(true, true)) {
        AcDbBlockTableRecord* left = nullptr;
        if (records->getRecord(left, AcDb::kForNotify) != Acad::eOk) continue;
        CloseOpenedObject(left);
        AcDbObjectId id;
        if (records->getRecordId(id) != Acad::eOk) continue;
        const AcDbObjectPointer<AcDbBlockTableRecord> record(id, AcDb::kForRead);
        if (record.openStatus() != Acad::eOk) continue;
        AcDbBlockTableRecordIterator* walk = nullptr;
        const Acad::ErrorStatus walkStatus = record->newIterator(walk, true, true);
        const VEXOSmartPointer<AcDbBlockTableRecordIterator> entities(walk);
        for (; walkStatus == Acad::eOk && !entities->done(); entities->step(true, true)) {
            AcDbEntity* entity = nullptr;
            if (entities->getEntity(entity, AcDb::kForNotify) == Acad::eOk) CloseOpenedEntity(entity);
        }
    }
}

void VEXOCrashHandler::CloseOpenedEntity(AcDbEntity* entity) {
    if (entity) closeAllOpens(*entity);
}

void VEXOCrashHandler::CloseOpenedObject(AcDbObject* object) {
    if (object) closeAllOpens(*object);
}
