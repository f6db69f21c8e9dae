#include "drawingpurge.h"

#include "objectwriting.h"
#include "usegraph.h"

#include "dbblocktablerecord.h"
#include "dbdictionary.h"
#include "dbobjptr.h"
#include "dbsymboltable.h"
#include "dbtextstyletablerecord.h"

#include <algorithm>
#include <iterator>

namespace hostkit {

namespace {

struct TableOfKind {
    PurgeKind kind;
    NamedKind named;
    TableKind table;
};
constexpr TableOfKind tables[] = {
    {PurgeKind::kLayer, NamedKind::kLayer, TableKind::kLayer},
    {PurgeKind::kLinetype, NamedKind::kLinetype, TableKind::kLinetype},
    {PurgeKind::kTextStyle, NamedKind::kTextStyle, TableKind::kTextStyle},
    {PurgeKind::kDimStyle, NamedKind::kDimStyle, TableKind::kDimStyle},
    {PurgeKind::kBlock, NamedKind::kBlock, TableKind::kBlock},
    {PurgeKind::kApplication, NamedKind::kApplication, TableKind::kRegApp},
};

struct DictionaryOfKind {
    PurgeKind kind;
    const wchar_t* key; ///< in the root
    std::wstring_view record;
};
constexpr DictionaryOfKind dictionaries[] = {
    {PurgeKind::kGroup, L"ACAD_GROUP", L"GROUP"},
    {PurgeKind::kMultilineStyle, L"ACAD_MLINESTYLE", L"MLINESTYLE"},
    {PurgeKind::kTableStyle, L"ACAD_TABLESTYLE", L"TABLESTYLE"},
    {PurgeKind::kMultileaderStyle, L"ACAD_MLEADERSTYLE", L"MLEADERSTYLE"},
    {PurgeKind::kMaterial, L"ACAD_MATERIAL", L"MATERIAL"},
};

struct Standing {
    PurgeKind kind;
    std::wstring_view name;
};
constexpr Standing standing[] = {
    {PurgeKind::kLayer, L"0"},
    {PurgeKind::kLinetype, L"ByLayer"},
    {PurgeKind::kLinetype, L"ByBlock"},
    {PurgeKind::kLinetype, L"Continuous"},
    {PurgeKind::kTextStyle, L"Standard"},
    {PurgeKind::kDimStyle, L"Standard"},
    {PurgeKind::kApplication, L"ACAD"},
    {PurgeKind::kMultilineStyle, L"Standard"},
    {PurgeKind::kTableStyle, L"Standard"},
    {PurgeKind::kMultileaderStyle, L"Standard"},
    {PurgeKind::kMaterial, L"Global"},
    {PurgeKind::kMaterial, L"ByLayer"},
    {PurgeKind::kMaterial, L"ByBlock"},
};

bool isStanding(PurgeKind kind, std::wstring_view name) {
    return std::any_of(std::begin(standing), std::end(standing), [&](const Standing& each) {
        return each.kind == kind && equalFolded(each.name, name);
    });
}

// Shapes are named without their file, so that nobody can tell who uses it.
bool mayGo(const AcDbSymbolTableRecord& record) {
    if (record.isDependent()) return false;
    if (const auto* const block = AcDbBlockTableRecord::cast(&record))
        return !block->isLayout() && !block->isFromExternalReference() && !block->isFromOverlayReference();
    const auto* const style = AcDbTextStyleTableRecord::cast(&record);
    return !style || !style->isShapeFile();
}

/// What may be purged, with the uses between.
struct Purgeable {
    std::vector<PurgeItem> items;
    std::vector<UseCandidate> candidates; ///< of the same order

    explicit Purgeable(const AcDbDatabase& database) {
        for (const TableOfKind& each : tables) addRecords(database, each);
        for (const DictionaryOfKind& each : dictionaries) addEntries(database, each);
    }

private:
    void add(AcDbObjectId id, PurgeKind kind, NamedKind named, const std::wstring& name) {
        if (isStanding(kind, name)) return;
        items.push_back({id, kind, name});
        // Nothing names a group.
        candidates.push_back({id, named, kind == PurgeKind::kGroup ? std::wstring() : name});
    }

    void addRecords(const AcDbDatabase& database, const TableOfKind& which) {
        const auto* const table =
            DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(database, which.table));
        if (!table) return;
        for (const AcDbObjectId id : table->records()) {
            const auto* const record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
            if (record && !record->isErased() && mayGo(*record))
                add(id, which.kind, which.named, record->name());
        }
    }

    void addEntries(const AcDbDatabase& database, const DictionaryOfKind& which) {
        const auto* const root =
            DatabaseAccess::objectOf<AcDbDictionary>(database.namedObjectsDictionaryId());
        AcDbObjectId id;
        if (!root || root->getAt(which.key, id) != Acad::eOk) return;
        const auto* const dictionary = DatabaseAccess::objectOf<AcDbDictionary>(id);
        if (!dictionary) return;
        for (AcDbDictionaryIterator entry(*dictionary); !entry.done(); entry.next()) {
            const AcDbObject* const object = DatabaseAccess::object(entry.objectId());
            // An entry of another kind, or one that another dictionary owns, is not understood.
            if (object && object->dxfName() == which.record && object->ownerId() == id)
                add(entry.objectId(), which.kind, NamedKind::kEntry, entry.name());
        }
    }
};

bool mayBeErased(AcDbObjectId id) {
    return AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite).openStatus() == Acad::eOk;
}

bool erase(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    return object.openStatus() == Acad::eOk && object->erase() == Acad::eOk;
}

} // namespace

const wchar_t* purgeKindName(PurgeKind kind) {
    constexpr const wchar_t* names[purgeKindCount] = {
        L"layer", L"linetype",        L"text style",  L"dimension style",   L"block",   L"application",
        L"group", L"multiline style", L"table style", L"multileader style", L"material"};
    return names[static_cast<std::size_t>(kind)];
}

Acad::ErrorStatus findUnused(const AcDbDatabase& database, std::vector<PurgeItem>& unused) {
    unused.clear();
    if (isOpenForWrite(database)) return Acad::eWasOpenForWrite;
    Purgeable purgeable(database);
    const UseGraph graph(database, std::move(purgeable.candidates));
    if (!graph.isWhole()) return Acad::eInvalidInput;
    const std::vector<bool> isReached = graph.reached();
    for (std::size_t i = 0; i < isReached.size(); ++i)
        if (!isReached[i]) unused.push_back(std::move(purgeable.items[i]));
    return Acad::eOk;
}

// What stays keeps what it refers to.
Acad::ErrorStatus purgeUnused(AcDbDatabase& database, PurgeReport& report) {
    report = {};
    if (isOpenForWrite(database)) return Acad::eWasOpenForWrite;
    Purgeable purgeable(database);
    UseGraph graph(database, std::move(purgeable.candidates));
    if (!graph.isWhole()) return Acad::eInvalidInput;
    const std::vector<bool> isReached = graph.reached();
    for (std::size_t i = 0; i < isReached.size(); ++i)
        if (!isReached[i] && !mayBeErased(purgeable.items[i].id)) graph.markUsed(i);
    const std::vector<bool> stays = graph.reached();
    for (std::size_t i = 0; i < isReached.size(); ++i) {
        if (isReached[i]) continue;
        const bool isErased = !stays[i] && erase(purgeable.items[i].id);
        (isErased ? report.erased : report.kept).push_back(std::move(purgeable.items[i]));
    }
    return Acad::eOk;
}

} // namespace hostkit

Acad::ErrorStatus AcDbDatabase::purge(AcDbObjectIdArray& ids) const {
    using namespace hostkit;
    if (isOpenForWrite(*this)) return Acad::eWasOpenForWrite;
    Purgeable purgeable(*this);
    const UseGraph graph(*this, std::move(purgeable.candidates));
    if (!graph.isWhole()) return Acad::eInvalidInput;
    const std::vector<bool> isReferredTo = graph.referredTo();
    std::unordered_map<const AcDbStub*, bool> mayGo;
    for (std::size_t i = 0; i < isReferredTo.size(); ++i)
        mayGo.emplace(graph.candidates()[i].id.stub(), !isReferredTo[i]);
    AcDbObjectIdArray left;
    for (int i = 0; i < ids.length(); ++i) {
        const auto found = mayGo.find(ids[i].stub());
        if (found != mayGo.end() && found->second) left.append(ids[i]);
    }
    ids = left;
    return Acad::eOk;
}
