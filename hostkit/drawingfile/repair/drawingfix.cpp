#include "drawingfix.h"

#include "binaryform.h"
#include "drawingreader.h"
#include "drawingwriter.h"
#include "givenrecords.h"
#include "objectwriting.h"
#include "recordkinds.h"

#include "changelog.h"
#include "dbblockbegin.h"
#include "dbblockend.h"
#include "dbdictionary.h"
#include "dbobjptr.h"
#include "dbsequenceend.h"
#include "displaychanges.h"
#include "headervariables.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace hostkit {

namespace {

bool isAnythingOpen(const AcDbDatabase& database) { return database.numOpenObjects() > 0; }

/// The records of a text by their handles.
std::unordered_map<AcDbHandleValue, std::string_view> recordsOf(std::string_view text) {
    std::unordered_map<AcDbHandleValue, std::string_view> records;
    GroupScanner scanner(text, startOfGroups(text));
    DrawingRecord record;
    RecordHead head;
    for (RawGroup group; scanner.next(group) == ScanResult::kGroup;) {
        if (group.code != 0 || group.is(0, "SECTION")) continue;
        if (group.is(0, "EOF") || scanRecord(scanner, group, record) != ScanResult::kGroup) break;
        readHead(record, head);
        if (head.handle != 0) records.emplace(head.handle, record.bytes());
    }
    return records;
}

/// One repair of an open drawing.
class DrawingFixing {
public:
    DrawingFixing(AcDbDatabase& database, RepairReport& report)
        : m_database(database)
        , m_report(report) {}

    Acad::ErrorStatus run() {
        if (!m_database.mayWrite()) return Acad::eLockViolation;
        if (isAnythingOpen(m_database)) return Acad::eWasOpenForRead;
        const auto source = m_database.source();
        if (binaryDrawingOf(source)) return Acad::eNotImplementedYet;
        m_isBinary = source && binaryBytesOf(source);
        Acad::ErrorStatus status = repairText();
        if (status != Acad::eOk || m_report.notes.empty()) return status;
        if (!pair()) return Acad::eNotApplicable;
        // What the drawing was given by its reader comes into the text, and what has to go goes first, so
        // that the text does not name it any more.
        bool isOther = false;
        if (lacksStanding()) {
            DatabaseAccess::changes(m_database).sourceChanging();
            isOther = takeGiven(m_database);
        }
        if (isOther || eraseOthers()) {
            const RepairReport earlier = std::move(m_report);
            status = repairText();
            if (status != Acad::eOk || !m_repaired || !pair()) return status;
            keepLosses(earlier);
            (void)eraseOthers();
        }
        apply();
        return Acad::eOk;
    }

    void keepLosses(const RepairReport& earlier) {
        std::vector<RepairNote> notes;
        for (const RepairNote& each : earlier.notes)
            if (each.outcome == RepairOutcome::kLost || m_report.notes.empty()) notes.push_back(each);
        notes.insert(notes.end(), m_report.notes.begin(), m_report.notes.end());
        m_report.notes = std::move(notes);
    }

private:
    struct Pair {
        AcDbObject* mine;
        const AcDbObject* its;
    };

    Acad::ErrorStatus repairText() {
        WriteOptions writing;
        writing.tellPort = false;
        writing.coding = DrawingCoding::kText;
        const Acad::ErrorStatus status = writeDrawingToMemory(m_database, m_text, writing);
        if (status != Acad::eOk) return status;
        const bool isFirst = !m_repaired;
        if (isFirst) m_firstText = m_text;
        RepairOptions options;
        options.firstHandle = m_database.handseed().value();
        options.handleOf = [this](std::string_view table, std::wstring_view name) {
            return handleOf(table, name);
        };
        std::string repaired = repairDrawingText(m_text, m_report, options);
        if (isFirst && m_report.notes.empty()) return Acad::eOk;
        // A binary drawing stays one.
        std::string binary;
        if (m_isBinary && !binaryFromText(repaired, versionOfFiler(m_database.source()->version), binary))
            repaired = std::move(binary);
        ReadOptions reading;
        reading.tellPort = false;
        m_repaired = openDrawingFromMemory(std::move(repaired), L"repaired", nullptr, reading);
        return m_repaired ? Acad::eOk : Acad::eDwgObjectImproperlyRead;
    }

    // Of a record that the text lacks and the drawing was given.
    AcDbHandleValue handleOf(std::string_view tableName, std::wstring_view name) const {
        const std::optional<TableKind> kind = tableKindOf(tableName);
        if (!kind) return 0;
        const auto* const table =
            DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(m_database, *kind));
        const AcDbObject* const record = table ? DatabaseAccess::object(table->find(name)) : nullptr;
        return record && record->sourceSpan().isEmpty() ? record->handle().value() : 0;
    }

    // What came into the text beside applications, blocks and ends: the drawing has it already where its
    // reader gave it.
    bool lacksStanding() const {
        bool isMissing = false;
        DatabaseAccess::forEachObject(*m_repaired, [&](const AcDbObject& its) {
            if (its.sourceSpan().isEmpty() || mine(its)) return;
            const auto* const record = AcDbSymbolTableRecord::cast(&its);
            isMissing = isMissing || (record && mineByName(*record)) || AcDbSymbolTable::cast(&its) ||
                        AcDbDictionary::cast(&its);
        });
        return isMissing;
    }

    // Pairs.

    AcDbObject* mine(const AcDbObject& its) const {
        AcDbObject* const found =
            DatabaseAccess::object(DatabaseAccess::find(m_database, its.handle().value()));
        return found && !found->isErased() && found->dxfName() == std::wstring_view(its.dxfName()) ? found
                                                                                                   : nullptr;
    }
    AcDbObject* mineByName(const AcDbSymbolTableRecord& its) const {
        for (int kind = 0; kind < tableCount; ++kind) {
            const auto which = static_cast<TableKind>(kind);
            if (DatabaseAccess::table(*m_repaired, which) != its.ownerId()) continue;
            const auto* const table =
                DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(m_database, which));
            return table ? DatabaseAccess::object(table->find(its.name())) : nullptr;
        }
        return nullptr;
    }
    AcDbObject* mineByKind(const AcDbObject& its) const {
        if (const auto* const record = AcDbSymbolTableRecord::cast(&its)) return mineByName(*record);
        for (int kind = 0; kind < tableCount; ++kind) {
            const auto which = static_cast<TableKind>(kind);
            if (DatabaseAccess::table(*m_repaired, which) == its.objectId())
                return DatabaseAccess::object(DatabaseAccess::table(m_database, which));
        }
        const auto* const owner = DatabaseAccess::objectOf<AcDbBlockTableRecord>(its.ownerId());
        const auto* const block = owner ? AcDbBlockTableRecord::cast(mineByName(*owner)) : nullptr;
        if (!block) return nullptr;
        if (its.isKindOf(AcDbBlockBegin::desc())) return DatabaseAccess::object(block->blockBeginId());
        return its.isKindOf(AcDbBlockEnd::desc()) ? DatabaseAccess::object(block->blockEndId()) : nullptr;
    }

    // False where a record has no handle and is none that its name tells.
    bool pair() {
        m_pairs.clear();
        m_added.clear();
        m_mine.clear();
        const std::string_view bytes = m_repaired->source()->bytes;
        bool isGood = true;
        DatabaseAccess::forEachObject(*m_repaired, [&](const AcDbObject& its) {
            const SourceSpan span = its.sourceSpan();
            if (!isGood || span.isEmpty()) return;
            scanRecordAt(bytes, span.offset, span.length, m_record);
            readHead(m_record, m_head);
            AcDbObject* const found = m_head.handle != 0 ? mine(its) : mineByKind(its);
            isGood = found || m_head.handle != 0;
            if (found)
                m_pairs.push_back({found, &its});
            else
                m_added.push_back(&its);
        });
        for (const Pair& each : m_pairs) m_mine.emplace(each.its->objectId().stub(), each.mine);
        return isGood;
    }

    AcDbObjectId mineOf(AcDbObjectId its) const {
        if (its.isNull()) return its;
        if (const auto found = m_mine.find(its.stub()); found != m_mine.end())
            return found->second->objectId();
        // What no record of the text stands for is known by its name.
        const AcDbObject* const object = DatabaseAccess::object(its);
        if (object && object->sourceSpan().isEmpty()) {
            const AcDbObject* const own = mineByKind(*object);
            return own ? own->objectId() : AcDbObjectId();
        }
        return DatabaseAccess::find(m_database, its.handle().value());
    }

    // Applying.

    void apply() {
        const auto before = recordsOf(m_firstText);
        const std::string_view bytes = m_repaired->source()->bytes;
        const auto source = m_repaired->source();
        m_reader = std::make_unique<RecordReader>(&m_database, styleOf(source.get()).text,
                                                  versionOfFiler(source->version));
        for (const AcDbObject* const each : m_added) addNew(*each);
        for (const Pair& each : m_pairs) {
            const SourceSpan span = each.its->sourceSpan();
            const auto earlier = before.find(each.its->handle().value());
            if (earlier == before.end() || earlier->second != bytes.substr(span.offset, span.length))
                readAgain(*each.mine, *each.its);
        }
        for (const Pair& each : m_pairs)
            if (auto* const dictionary = AcDbDictionary::cast(each.mine))
                takeEntries(*dictionary, static_cast<const AcDbDictionary&>(*each.its));
        for (const Pair& each : m_pairs) takeOwner(*each.mine, mineOf(each.its->ownerId()));
        takeHeader();
        takeSource();
    }

    bool readRecord(AcDbObject& object, const AcDbObject& its) {
        const SourceSpan span = its.sourceSpan();
        scanRecordAt(m_repaired->source()->bytes, span.offset, span.length, m_record);
        readHead(m_record, m_head);
        m_reader->resetFilerStatus();
        m_reader->begin(m_record);
        if (object.dxfInFields(m_reader.get()) != Acad::eOk || m_reader->filerStatus() != Acad::eOk)
            return false;
        auto* const entity = AcDbEntity::cast(&object);
        if (!entity) return true;
        m_reader->readLooseLook(*entity);
        if (entity->layerId().isNull())
            DatabaseAccess::setLayer(*entity, mineOf(static_cast<const AcDbEntity&>(its).layerId()));
        return true;
    }

    // An entry that was taken out and put in again has none.
    void takeOwner(AcDbObject& object, AcDbObjectId owner) {
        if (object.ownerId() == owner) return;
        DatabaseAccess::changes(m_database).changing(object);
        DatabaseAccess::setOwner(object, owner);
    }

    // What its record has beside its own fields.
    void attach(AcDbObject& object, const AcDbObject& its) {
        GroupBlock data;
        if (its.extendedData()) data = *its.extendedData();
        if (object.extendedData() || !data.isEmpty())
            DatabaseAccess::setExtendedData(object, std::move(data));
        DatabaseAccess::setExtensionDictionary(object, mineOf(DatabaseAccess::extensionDictionary(its)));
        std::vector<AcDbObjectId> reactors;
        for (const AcDbObjectId each : DatabaseAccess::persistentReactors(its))
            if (const AcDbObjectId id = mineOf(each); !id.isNull()) reactors.push_back(id);
        DatabaseAccess::setPersistentReactors(object, std::move(reactors));
    }

    // An object keeps its class: what another one would make of the repaired record, it is when the drawing
    // is opened again.
    void readAgain(AcDbObject& object, const AcDbObject& its) {
        if (object.isA() != its.isA()) return;
        ChangeLog& changes = DatabaseAccess::changes(m_database);
        const std::unique_ptr<AcDbObject> blank = makeBlank(object, DrawingRecord(recordOf(its)));
        // The opening of a block reads the block's own fields.
        AcDbObject* const block =
            object.isKindOf(AcDbBlockBegin::desc()) ? DatabaseAccess::object(object.ownerId()) : nullptr;
        changes.changing(object);
        if (block) changes.changing(*block);
        if (blank && block) DatabaseAccess::setOwner(*blank, block->objectId());
        if (blank && readRecord(*blank, its)) {
            const auto* const record = AcDbSymbolTableRecord::cast(&object);
            const std::wstring name = record ? record->name() : std::wstring();
            if (auto* const entity = AcDbEntity::cast(&object)) keepParts(*entity, *blank);
            if (const auto copier = object.isA()->valueCopier()) copier(object, *blank);
            if (record && record->name() != name)
                (void)DatabaseAccess::followName(static_cast<AcDbSymbolTableRecord&>(object), name);
        }
        DatabaseAccess::setOwner(object, mineOf(its.ownerId()));
        attach(object, its);
        DatabaseAccess::display(m_database).changed(object);
    }
    const DrawingRecord& recordOf(const AcDbObject& its) {
        const SourceSpan span = its.sourceSpan();
        scanRecordAt(m_repaired->source()->bytes, span.offset, span.length, m_record);
        return m_record;
    }
    // The parts are objects of their own.
    static void keepParts(AcDbEntity& object, AcDbObject& blank) {
        SubentityList* const parts = DatabaseAccess::parts(object);
        SubentityList* const others = DatabaseAccess::parts(static_cast<AcDbEntity&>(blank));
        if (parts && others) *others = *parts;
    }

    void addNew(const AcDbObject& its) {
        AcDbObject* object = nullptr;
        AcDbObjectId owner = mineOf(its.ownerId());
        // In R12 the block's opening stands for its record.
        if (owner.isNull() && its.isKindOf(AcDbBlockBegin::desc())) owner = addBlock(its.ownerId());
        if (its.isKindOf(AcDbSymbolTableRecord::desc())) {
            object = addRecord(static_cast<const AcDbSymbolTableRecord&>(its));
        } else {
            std::unique_ptr<AcDbObject> made = makeBlank(its, DrawingRecord(recordOf(its)));
            if (!made || its.isKindOf(AcDbSymbolTable::desc())) return;
            const bool isBegin = made->isKindOf(AcDbBlockBegin::desc());
            if (isBegin) DatabaseAccess::setOwner(*made, owner);
            (void)readRecord(*made, its);
            if (isBegin) DatabaseAccess::setOwner(*made, {});
            object = made.get();
            if (DatabaseAccess::addOpen(m_database, object, owner, its.handle().value()).isNull()) return;
            (void)made.release();
        }
        if (!object) return;
        enter(*object, owner);
        attach(*object, its);
        (void)object->close();
        m_mine.emplace(its.objectId().stub(), object);
        m_pairs.push_back({object, &its});
        m_news.insert(object);
    }
    AcDbObject* addRecord(const AcDbSymbolTableRecord& its) {
        for (int kind = 0; kind < tableCount; ++kind) {
            const auto which = static_cast<TableKind>(kind);
            if (DatabaseAccess::table(*m_repaired, which) != its.ownerId()) continue;
            AcDbSymbolTable* table = nullptr;
            if (acdbOpenObject(table, DatabaseAccess::table(m_database, which), AcDb::kForWrite) != Acad::eOk)
                return nullptr;
            (void)m_database.setHandseed(its.handle());
            std::unique_ptr<AcDbSymbolTableRecord> record = makeTableRecord(which);
            const bool isAdded = readRecord(*record, its) && table->add(record.get()) == Acad::eOk;
            (void)table->close();
            return isAdded ? record.release() : nullptr;
        }
        return nullptr;
    }
    // What its owner lists.
    void enter(AcDbObject& object, AcDbObjectId owner) {
        AcDbObject* const holder = DatabaseAccess::object(owner);
        if (auto* const block = AcDbBlockTableRecord::cast(holder)) {
            const bool isBegin = object.isKindOf(AcDbBlockBegin::desc());
            const bool isEnd = object.isKindOf(AcDbBlockEnd::desc());
            if (isBegin || isEnd)
                DatabaseAccess::setBlockRecords(*block, isBegin ? object.objectId() : block->blockBeginId(),
                                                isEnd ? object.objectId() : block->blockEndId());
        }
        if (!object.isKindOf(AcDbSequenceEnd::desc())) return;
        if (SubentityList* const parts =
                holder ? DatabaseAccess::parts(static_cast<AcDbEntity&>(*holder)) : nullptr)
            parts->setSequenceEnd(object.objectId());
    }

    AcDbObjectId addBlock(AcDbObjectId its) {
        const auto* const record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(its);
        AcDbSymbolTable* table = nullptr;
        if (!record || acdbOpenObject(table, m_database.blockTableId(), AcDb::kForWrite) != Acad::eOk)
            return {};
        (void)m_database.setHandseed(m_repaired->handseed());
        auto made = std::make_unique<AcDbBlockTableRecord>();
        DatabaseAccess::setRecordName(*made, record->name());
        const bool isAdded = table->add(made.get()) == Acad::eOk;
        (void)table->close();
        if (!isAdded) return {};
        AcDbBlockTableRecord* const added = made.release();
        (void)added->close();
        m_news.insert(added);
        m_mine.emplace(its.stub(), added);
        return added->objectId();
    }

    // What had a record before and has none now. The classes are not asked: of two layers 0 one goes.
    bool eraseOthers() {
        const auto before = recordsOf(m_text);
        std::unordered_set<const AcDbObject*> stays;
        for (const Pair& each : m_pairs) stays.insert(each.mine);
        bool isAny = false;
        ChangeLog& changes = DatabaseAccess::changes(m_database);
        DatabaseAccess::forEachObject(m_database, [&](AcDbObject& object) {
            if (object.isErased() || stays.contains(&object) || !before.contains(object.handle().value()))
                return;
            changes.erasing(object);
            object.objectId().stub()->flags |= kStubErased;
            DatabaseAccess::markChanged(object);
            DatabaseAccess::display(m_database).changed(object);
            isAny = true;
        });
        return isAny;
    }

    void takeEntries(AcDbDictionary& dictionary, const AcDbDictionary& its) {
        std::vector<std::pair<std::wstring, AcDbObjectId>> wanted;
        for (AcDbDictionaryIterator entry(its); !entry.done(); entry.next())
            wanted.emplace_back(entry.name(), mineOf(entry.objectId()));
        std::vector<std::wstring> gone;
        std::size_t count = 0;
        for (AcDbDictionaryIterator entry(dictionary); !entry.done(); entry.next()) {
            const std::pair<std::wstring, AcDbObjectId> own(entry.name(), entry.objectId());
            if (std::find(wanted.begin(), wanted.end(), own) == wanted.end())
                gone.push_back(own.first);
            else
                ++count;
        }
        if (gone.empty() && count == wanted.size()) return;
        const AcDbObjectPointer<AcDbDictionary> open(dictionary.objectId(), AcDb::kForWrite);
        if (!open.object()) return;
        for (const std::wstring& each : gone) (void)open->remove(each.c_str());
        for (const auto& [name, id] : wanted) {
            AcDbObjectId present;
            AcDbObject* const object = DatabaseAccess::object(id);
            if (object && open->getAt(name.c_str(), present) != Acad::eOk)
                (void)open->setAt(name.c_str(), object, present);
        }
    }

    void takeHeader() {
        HeaderVariables& header = m_database.header();
        ChangeLog& changes = DatabaseAccess::changes(m_database);
        std::vector<std::wstring> names;
        for (const HeaderVariables::Variable& each : header.all()) names.push_back(each.name);
        for (const HeaderVariables::Variable& each : m_repaired->header().all())
            if (!header.find(each.name)) names.push_back(each.name);
        for (const std::wstring& name : names) {
            const HeaderVariables::Variable* const own = header.find(name);
            const HeaderVariables::Variable* const its = m_repaired->header().find(name);
            if (own && its && !own->modified && own->groups == its->groups) continue;
            changes.headerChanging(header, name);
            header.putBack(name, its ? std::optional(*its) : std::nullopt);
        }
    }

    // The repaired text is the drawing's from now on; what it was given stays given.
    void takeSource() {
        DatabaseAccess::changes(m_database).sourceChanging();
        const auto earlier = m_database.source();
        const auto source = m_repaired->source();
        if (earlier) const_cast<DrawingSource&>(*source).given = earlier->given;
        DatabaseAccess::setSource(m_database, source, m_database.originalFileName());
        std::unordered_set<const AcDbObject*> standing;
        for (const Pair& each : m_pairs) {
            DatabaseAccess::setSource(*each.mine, each.its->sourceSpan());
            standing.insert(each.mine);
        }
        DatabaseAccess::forEachObject(m_database, [&](AcDbObject& object) {
            if (standing.contains(&object)) return;
            const bool wasInFile = !object.sourceSpan().isEmpty();
            DatabaseAccess::setSource(object, {});
            if (wasInFile) DatabaseAccess::markChanged(object);
        });
    }

    AcDbDatabase& m_database;
    RepairReport& m_report;
    bool m_isBinary = false; ///< of the exchange form
    std::string m_firstText; ///< before anything was changed
    std::string m_text;
    std::unique_ptr<AcDbDatabase> m_repaired;
    std::vector<Pair> m_pairs;
    std::vector<const AcDbObject*> m_added;
    std::unordered_map<const AcDbStub*, AcDbObject*> m_mine; ///< by the stub of the repaired one
    std::unordered_set<const AcDbObject*> m_news;
    std::unique_ptr<RecordReader> m_reader;
    DrawingRecord m_record;
    RecordHead m_head;
};

} // namespace

Acad::ErrorStatus fixDrawing(AcDbDatabase& database, RepairReport& report) {
    report = {};
    const Acad::ErrorStatus status = DrawingFixing(database, report).run();
    if (status != Acad::eOk) report = {};
    return status;
}

} // namespace hostkit
