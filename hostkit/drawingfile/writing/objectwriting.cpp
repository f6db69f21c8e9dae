#include "objectwriting.h"

#include "dbblockbegin.h"
#include "dbblockreference.h"
#include "dbregapptablerecord.h"
#include "erasedowners.h"
#include "extendeddata.h"
#include "fieldtable.h"
#include "groupcodes.h"
#include "keptcolors.h"
#include "recordkinds.h"

#include <algorithm>

namespace hostkit {

namespace {

std::string asciiOf(const wchar_t* name) {
    const std::wstring_view text = name ? name : L"";
    return {text.begin(), text.end()};
}

} // namespace

DrawingStyle styleOf(const DrawingSource* source) {
    DrawingStyle style;
    if (source) {
        style.version = versionOfFiler(source->version);
        style.text = DrawingText(static_cast<CodePage>(source->codePage));
        style.newline = source->endsLinesWithCrLf ? "\r\n" : "\n";
    }
    return style;
}

bool isOpenForWrite(const AcDbDatabase& database) {
    for (std::size_t place = 0, count = DatabaseAccess::stubCount(database); place < count; ++place)
        if ((DatabaseAccess::stubAt(database, place)->openMode & (kOpenForWrite | kHeldForWrite)) != 0)
            return true;
    return false;
}

// What the class takes there is what it will write. The drawing is not asked, which may have other names by
// now.
std::unique_ptr<AcDbObject> markGroups(const AcDbObject& object, std::string_view sourceBytes,
                                       SourceSpan span, RecordReader& filer, DrawingRecord& record,
                                       RecordHead& head) {
    scanRecordAt(sourceBytes, span.offset, span.length, record);
    readHead(record, head);
    std::unique_ptr<AcDbObject> blank = makeBlank(object, record);
    filer.begin(record);
    if (blank) (void)blank->dxfInFields(&filer);
    if (auto* const entity = AcDbEntity::cast(blank.get())) filer.readLooseLook(*entity);
    return blank;
}

const SubentityList* partsOf(const AcDbObject& object) {
    auto* const entity = AcDbEntity::cast(&object);
    return entity ? DatabaseAccess::parts(*entity) : nullptr;
}

bool isLeftOut(const AcDbObject& object) {
    const auto showsNothing = [](const AcDbObject* entity) {
        const auto* const reference = AcDbBlockReference::cast(entity);
        return reference && reference->blockTableRecord().isErased();
    };
    return isGone(object) || showsNothing(&object) || showsNothing(DatabaseAccess::object(object.ownerId()));
}

bool isActiveSpace(const AcDbBlockTableRecord& block) {
    return equalFolded(block.name(), L"*Model_Space") || equalFolded(block.name(), L"*Paper_Space");
}

ObjectWriting::ObjectWriting(const AcDbDatabase& database, const DrawingStyle& style, ProgressStage progress)
    : m_database(database)
    , m_style(style)
    , m_progress(progress)
    , m_reader(const_cast<AcDbDatabase*>(&database), style.text, style.version)
    , m_writer(const_cast<AcDbDatabase*>(&database), style)
    , m_fieldsAsRead(const_cast<AcDbDatabase*>(&database), style)
    , m_nextHandle(database.handseed().value()) {
    // The records that were read have the form of their file, whatever form is written.
    m_reader.readWithoutDrawing();
    const auto source = database.source();
    if (!source) return;
    const DrawingVersion read = versionOfFiler(source->version);
    m_reader.setForm(DrawingText(static_cast<CodePage>(source->codePage)), read);
    if (read >= DrawingVersion::k2004 && style.version < DrawingVersion::k2004) m_writer.loseTrueColors();
}

std::uint64_t ObjectWriting::newHandle() {
    while (!DatabaseAccess::find(m_database, m_nextHandle).isNull()) ++m_nextHandle;
    return m_nextHandle++;
}

void ObjectWriting::follow(const ReferenceChanges* changes) {
    m_changes = changes && !changes->isEmpty() ? changes : nullptr;
    m_writer.follow(m_changes);
}

std::unique_ptr<ObjectWriting> ObjectWriting::makeSibling() const {
    auto sibling = std::make_unique<ObjectWriting>(m_database, m_style, ProgressStage(nullptr, 0, 0.0, 0.0));
    sibling->follow(m_changes);
    sibling->setCopySource(m_copySource);
    if (m_hasRecord) sibling->setHasRecord(m_hasRecord);
    if (m_writer.givesMarks()) sibling->giveMarksInR12();
    sibling->m_keepsTrueColors = m_keepsTrueColors;
    return sibling;
}

void ObjectWriting::take(const ObjectWriting& sibling) {
    m_writer.addCounts(sibling.m_writer);
    m_recordsWritten += sibling.m_recordsWritten;
    m_aboveNewRecords = std::max(m_aboveNewRecords, sibling.m_aboveNewRecords);
    if (sibling.m_status == Acad::eOk) return;
    m_status = sibling.m_status;
    m_message = sibling.m_message;
}

bool ObjectWriting::mustFollow(std::string_view sourceBytes, SourceSpan span) {
    if (!m_changes) return false;
    scanRecordAt(sourceBytes, span.offset, span.length, m_original);
    return m_changes->concern(m_original, m_style.text);
}

// The owner of an entity or a table's record is where it stands in the file; some writers put other handles
// there.
std::unique_ptr<AcDbObject> ObjectWriting::markKnownGroups(const AcDbObject& object,
                                                           std::string_view sourceBytes, SourceSpan span) {
    std::unique_ptr<AcDbObject> blank = markGroups(object, sourceBytes, span, m_reader, m_original, m_head);
    if ((object.isKindOf(AcDbEntity::desc()) || object.isKindOf(AcDbSymbolTableRecord::desc())) &&
        m_head.owner != object.ownerId().handle().value())
        for (RecordGroup& group : m_original.groups)
            if (group.code == ownerCode && group.part == headPart &&
                handleFromText(group.value) == m_head.owner)
                group.part = foreignPart;
    (void)readExtendedData(m_original, m_reader, nullptr);
    return blank;
}

// What the old record says, filed again: groups in which the object does not differ from it were not changed.
const RecordWriter& ObjectWriting::fieldsAsRead(const AcDbObject& object, AcDbObject& blank) {
    // The opening record of a block files what its owner has, not what it has read: without one, its look
    // alone.
    const bool isBlockBegin = blank.isKindOf(AcDbBlockBegin::desc());
    if (!isBlockBegin) DatabaseAccess::setOwner(blank, object.ownerId());
    m_fieldsAsRead.begin();
    if (blank.dxfOutFields(&m_fieldsAsRead) == Acad::eOk || isBlockBegin) m_writer.markAsRead(m_fieldsAsRead);
    return m_fieldsAsRead;
}

bool ObjectWriting::writeMerged(const AcDbObject& object, std::string_view sourceBytes, SourceSpan span,
                                bool keepsSpelling, std::string& bytes) {
    const std::unique_ptr<AcDbObject> blank = markKnownGroups(object, sourceBytes, span);
    if (!gatherRecord(object, object.handle().value(), object.ownerId(), true)) return false;
    std::function<const RecordWriter&()> readAgain;
    if (keepsSpelling && blank)
        readAgain = [&]() -> const RecordWriter& { return fieldsAsRead(object, *blank); };
    RecordMerge(m_writer, m_original, m_reader.parts(), std::move(readAgain), m_mergeRoom, bytes).run();
    return true;
}

// What no class reads of the original goes along, but for what the original alone owns.
bool ObjectWriting::writeCopy(const AcDbObject& object, std::string& bytes) {
    const std::unique_ptr<AcDbObject> blank = markKnownGroups(object, m_copySource, object.originalSpan());
    m_isCopy = true;
    const bool isGathered = gatherRecord(object, object.handle().value(), object.ownerId(), true);
    m_isCopy = false;
    if (!isGathered) return false;
    m_aboveNewRecords = std::max(m_aboveNewRecords, object.handle().value() + 1);
    std::function<const RecordWriter&()> readAgain;
    if (blank) readAgain = [&]() -> const RecordWriter& { return fieldsAsRead(object, *blank); };
    RecordMerge merge(m_writer, m_original, m_reader.parts(), std::move(readAgain), m_mergeRoom, bytes);
    merge.makeCopy();
    merge.run();
    return true;
}

bool ObjectWriting::writeNew(const AcDbObject& object, std::string& bytes) {
    if (!m_copySource.empty() && !object.originalSpan().isEmpty()) return writeCopy(object, bytes);
    return writeNewUnder(object, object.handle().value(), object.ownerId(), bytes);
}

bool ObjectWriting::writeNewUnder(const AcDbObject& fields, std::uint64_t handle, AcDbObjectId owner,
                                  std::string& bytes) {
    if (!gatherRecord(fields, handle, owner, false)) return false;
    m_aboveNewRecords = std::max(m_aboveNewRecords, handle + 1);
    m_writer.finish(bytes);
    return true;
}

bool ObjectWriting::gatherRecord(const AcDbObject& object, std::uint64_t handle, AcDbObjectId owner,
                                 bool hasOriginal) {
    m_writer.begin();
    writeHead(object, handle, owner, hasOriginal);
    Acad::ErrorStatus status = object.dxfOutFields(&m_writer);
    if (m_changes && m_changes->hasRenamed()) m_writer.renameTexts(asciiOf(object.dxfName()));
    m_writer.setPart(extendedPart);
    if (status == Acad::eOk) writeExtendedDataOf(object, hasOriginal);
    if (status == Acad::eOk) status = m_writer.filerStatus();
    if (status != Acad::eOk) {
        wchar_t text[17] = {};
        (void)AcDbHandle(handle).getIntoAsciiBuffer(text);
        m_status = status;
        m_message = std::wstring(object.dxfName()) + L" " + text + L" cannot be written";
        if (!m_writer.errorMessage().empty()) m_message += L": " + m_writer.errorMessage();
        return false;
    }
    ++m_recordsWritten;
    m_progress.advance(m_progressStep);
    return true;
}

void ObjectWriting::writeHead(const AcDbObject& object, std::uint64_t handle, AcDbObjectId owner,
                              bool hasOriginal) {
    const std::wstring_view name = object.dxfName() ? object.dxfName() : L"";
    if (!hasOriginal) m_writer.writeText(0, name); // else the record keeps its own
    m_writer.markOptional();
    m_writer.writeHandle(name == L"DIMSTYLE" ? 105 : 5, handle);
    // R12 has handles alone; a record that was read with more keeps it.
    const bool hadMore = hasOriginal && (m_original.hasMarks || m_head.owner != 0 ||
                                         !m_head.reactors.empty() || m_head.extensionDictionary != 0);
    if (m_writer.isR12Form() && !hadMore && !(m_writer.givesMarks() && !hasOriginal)) return;
    // The two groups keep the order that they had.
    const RecordGroup* const first = hasOriginal ? m_original.find(applicationGroupCode) : nullptr;
    const bool reactorsFirst = first && withoutBlanks(first->value) == "{ACAD_REACTORS";
    if (reactorsFirst) writeReactors(object);
    writeExtensionDictionary(object);
    if (!reactorsFirst) writeReactors(object);
    m_writer.setPart(headPart);
    if ((!hasOriginal || m_isCopy) && !owner.isNull() && !m_writer.files(owner)) return;
    m_writer.markOptional();
    m_writer.writeItem(ownerCode, owner);
}

void ObjectWriting::writeExtendedDataOf(const AcDbObject& object, bool hasOriginal) {
    const bool hasRoomForColor =
        hasOriginal && !m_writer.losesTrueColors() && m_original.find(trueColorCode) != nullptr;
    if (m_keepsTrueColors &&
        keepColor(object, hasRoomForColor ? std::nullopt : trueColorOf(object), m_extendedData))
        writeExtendedData(m_extendedData);
    else if (object.extendedData())
        writeExtendedData(*object.extendedData());
}

// Where the old form is the source's too, a record that has a true colour all the same keeps it by itself.
bool ObjectWriting::hasColorToKeep(std::string_view sourceBytes) const {
    bool isFound = false;
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        isFound = isFound || (trueColorOf(object) && !isLeftOut(object) &&
                              (m_writer.losesTrueColors() || !isColorKeptByItself(object, sourceBytes)));
    });
    return isFound;
}

void ObjectWriting::keepTrueColors(std::string_view sourceBytes) {
    if (m_style.version >= DrawingVersion::k2004) return;
    const bool isRegistered = !registeredApplication(m_database, trueColorApplication).isNull();
    const AcDbObject* const table =
        DatabaseAccess::object(DatabaseAccess::table(m_database, TableKind::kRegApp));
    const bool hasTable = table && (sourceBytes.empty() || !table->sourceSpan().isEmpty());
    m_keepsTrueColors = isRegistered || (hasTable && hasColorToKeep(sourceBytes));
    m_mustRegisterColors = m_keepsTrueColors && !isRegistered;
}

bool ObjectWriting::registerColors(AcDbObjectId table, std::string& bytes) {
    AcDbRegAppTableRecord record;
    (void)record.setName(trueColorApplication);
    return writeNewUnder(record, newHandle(), table, bytes);
}

// A layer that is named there follows its record.
void ObjectWriting::writeExtendedData(const GroupBlock& data) {
    if (!m_changes) return writeBlock(m_writer, data);
    GroupWalker walker(data);
    AcDbDxfGroup group;
    while (walker.next(group)) {
        const std::wstring* const newName =
            group.code == extendedLayerCode ? m_changes->newName(TableKind::kLayer, group.text) : nullptr;
        if (newName)
            m_writer.writeText(group.code, *newName);
        else
            m_writer.writeGroup(group);
    }
}

void ObjectWriting::writeReactors(const AcDbObject& object) {
    bool isOpen = false;
    m_writer.setPart(reactorsPart);
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
    m_writer.setPart(dictionaryPart);
    m_writer.writeText(applicationGroupCode, L"{ACAD_XDICTIONARY");
    m_writer.writeItem(hardOwnerCode, dictionary);
    m_writer.writeText(applicationGroupCode, L"}");
}

} // namespace hostkit
