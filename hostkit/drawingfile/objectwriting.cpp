#include "objectwriting.h"

#include "dbblockbegin.h"
#include "drawingreading.h"
#include "fieldtable.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr short ownerCode = 330;
constexpr short applicationGroupCode = 102;
constexpr short hardOwnerCode = 360;
constexpr short commentCode = 999;

} // namespace

const SubentityList* partsOf(const AcDbObject& object) {
    auto* const entity = AcDbEntity::cast(&object);
    return entity ? DatabaseAccess::parts(*entity) : nullptr;
}

bool isActiveSpace(const AcDbBlockTableRecord& block) {
    return equalFolded(block.name(), L"*Model_Space") || equalFolded(block.name(), L"*Paper_Space");
}

ObjectWriting::ObjectWriting(const AcDbDatabase& database, const DrawingStyle& style, ProgressStage progress)
    : m_style(style)
    , m_progress(progress)
    , m_sourceVersion(style.version)
    , m_reader(const_cast<AcDbDatabase*>(&database), style.text, style.version)
    , m_writer(const_cast<AcDbDatabase*>(&database), style)
    , m_nextHandle(database.handseed().value()) {
    // The records that were read have the form of their file, whatever form is written.
    const auto source = database.source();
    if (!source) return;
    m_sourceVersion = versionOfFiler(source->version);
    m_reader.setForm(DrawingText(static_cast<CodePage>(source->codePage)), m_sourceVersion);
}

// The class reads the old record into a blank object: what it takes there is what it will write.
std::unique_ptr<AcDbObject> ObjectWriting::markKnownGroups(const AcDbObject& object,
                                                           std::string_view sourceBytes, SourceSpan span) {
    GroupScanner scanner(sourceBytes.substr(0, span.offset + span.length), span.offset);
    RawGroup first;
    (void)scanner.next(first);
    (void)scanRecord(scanner, first, m_original);
    readHead(m_original, m_sourceVersion, m_head);
    // The owner of an entity or a table's record is where it stands in the file; some writers put other
    // handles there.
    if ((object.isKindOf(AcDbEntity::desc()) || object.isKindOf(AcDbSymbolTableRecord::desc())) &&
        m_head.owner != object.ownerId().handle().value())
        for (RecordGroup& group : m_original.groups)
            if (group.code == ownerCode && handleFromText(group.value) == m_head.owner) group.isTaken = false;
    std::unique_ptr<AcDbObject> blank = makeBlank(object, m_original);
    m_reader.begin(m_original);
    if (blank) (void)blank->dxfInFields(&m_reader);
    GroupBlock data;
    (void)readExtendedData(m_original, m_reader, data);
    return blank;
}

bool ObjectWriting::knowsAllGroups(const AcDbObject& object, std::string_view sourceBytes, SourceSpan span) {
    (void)markKnownGroups(object, sourceBytes, span);
    return std::all_of(m_original.groups.begin() + 1, m_original.groups.end(),
                       [](const RecordGroup& group) { return group.isTaken || group.code == commentCode; });
}

// What the old record says, filed again: groups in which the object does not differ from it were not changed.
// The opening record of a block files what its owner has, not what it has read.
void ObjectWriting::gatherFieldsAsRead(const AcDbObject& object, AcDbObject& blank) {
    if (blank.isKindOf(AcDbBlockBegin::desc())) return;
    DatabaseAccess::setOwner(blank, object.ownerId());
    m_writer.begin();
    if (blank.dxfOutFields(&m_writer) == Acad::eOk) m_writer.rememberFields();
}

bool ObjectWriting::writeMerged(const AcDbObject& object, std::string_view sourceBytes, SourceSpan span,
                                bool keepsSpelling, std::string& bytes) {
    const std::unique_ptr<AcDbObject> blank = markKnownGroups(object, sourceBytes, span);
    m_writer.forgetFields();
    if (keepsSpelling && blank) gatherFieldsAsRead(object, *blank);
    return writeRecord(object, object.handle().value(), object.ownerId(), true, bytes);
}

bool ObjectWriting::writeNew(const AcDbObject& object, std::string& bytes) {
    return writeRecord(object, object.handle().value(), object.ownerId(), false, bytes);
}

bool ObjectWriting::writeNewUnder(const AcDbObject& fields, std::uint64_t handle, AcDbObjectId owner,
                                  std::string& bytes) {
    return writeRecord(fields, handle, owner, false, bytes);
}

bool ObjectWriting::writeRecord(const AcDbObject& object, std::uint64_t handle, AcDbObjectId owner,
                                bool hasOriginal, std::string& bytes) {
    m_writer.begin();
    writeHead(object, handle, owner, hasOriginal);
    const std::size_t firstField = m_writer.fieldCount();
    Acad::ErrorStatus status = object.dxfOutFields(&m_writer);
    if (hasOriginal)
        m_writer.compareWithRemembered(firstField);
    else
        m_aboveNewRecords = std::max(m_aboveNewRecords, handle + 1);
    if (status == Acad::eOk && object.extendedData()) writeBlock(m_writer, *object.extendedData());
    if (status == Acad::eOk) status = m_writer.filerStatus();
    if (status != Acad::eOk) {
        wchar_t text[17] = {};
        (void)AcDbHandle(handle).getIntoAsciiBuffer(text);
        m_status = status;
        m_message = std::wstring(object.dxfName()) + L" " + text + L" cannot be written";
        if (!m_writer.errorMessage().empty()) m_message += L": " + m_writer.errorMessage();
        return false;
    }
    m_writer.finish(hasOriginal ? &m_original : nullptr, bytes);
    ++m_recordsWritten;
    m_progress.advance();
    return true;
}

void ObjectWriting::writeHead(const AcDbObject& object, std::uint64_t handle, AcDbObjectId owner,
                              bool hasOriginal) {
    const std::wstring_view name = object.dxfName() ? object.dxfName() : L"";
    if (!hasOriginal) m_writer.writeText(0, name); // else the record keeps its own
    m_writer.markOptional();
    m_writer.writeHandle(name == L"DIMSTYLE" ? 105 : 5, handle);
    if (m_writer.isR12Form()) return;
    // The two groups keep the order that they had.
    const RecordGroup* const first = hasOriginal ? m_original.find(applicationGroupCode) : nullptr;
    const bool reactorsFirst = first && withoutBlanks(first->value) == "{ACAD_REACTORS";
    if (reactorsFirst) writeReactors(object);
    writeExtensionDictionary(object);
    if (!reactorsFirst) writeReactors(object);
    m_writer.markOptional();
    m_writer.writeItem(ownerCode, owner);
}

void ObjectWriting::writeReactors(const AcDbObject& object) {
    bool isOpen = false;
    for (const AcDbObjectId reactor : DatabaseAccess::persistentReactors(object)) {
        if (reactor.isNull() || reactor.isErased()) continue;
        if (!isOpen) m_writer.writeText(applicationGroupCode, L"{ACAD_REACTORS");
        isOpen = true;
        m_writer.writeItem(ownerCode, reactor);
    }
    if (isOpen) m_writer.writeText(applicationGroupCode, L"}");
}

void ObjectWriting::writeExtensionDictionary(const AcDbObject& object) {
    const AcDbObjectId dictionary = DatabaseAccess::extensionDictionary(object);
    if (dictionary.isNull() || dictionary.isErased()) return;
    m_writer.writeText(applicationGroupCode, L"{ACAD_XDICTIONARY");
    m_writer.writeItem(hardOwnerCode, dictionary);
    m_writer.writeText(applicationGroupCode, L"}");
}

} // namespace hostkit
