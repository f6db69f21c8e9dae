#include "filterfields.h"

#include "dbaccess.h"
#include "dbent.h"
#include "dblayout.h"
#include "groupblock.h"

#include "casefold.h"
#include "groupcodes.h"
#include "rxdict.h"

#include <algorithm>
#include <functional>

namespace hostkit {

namespace {

/// Records of a table, by their stubs in order.
using Records = std::vector<const AcDbStub*>;

// Of a few records each is compared: which of them are the same can be foretold, which come before cannot.
bool contains(const Records& records, AcDbObjectId id) {
    constexpr std::size_t few = 8;
    if (records.size() <= few) return std::find(records.begin(), records.end(), id.stub()) != records.end();
    return std::binary_search(records.begin(), records.end(), id.stub(), std::less<>());
}

template <class Record, class Wanted>
Records recordsOf(const AcDbDatabase& database, TableKind kind, Wanted&& isWanted) {
    Records found;
    const auto* const table =
        DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(database, kind));
    if (!table) return found;
    for (const AcDbObjectId id : table->records()) {
        const auto* const record = DatabaseAccess::objectOf<Record>(id);
        if (record && isWanted(*record)) found.push_back(id.stub());
    }
    std::sort(found.begin(), found.end(), std::less<>());
    return found;
}

/// Names of the classes that are known now are compared by their place in memory, those of other kinds of
/// records letter by letter.
class TypeCondition final : public FilterCondition {
public:
    explicit TypeCondition(WildcardPattern pattern)
        : m_pattern(std::move(pattern)) {
        for (const auto& [name, object] : *acrxClassDictionary()) {
            const auto* const known = static_cast<const AcRxClass*>(object);
            if (!known->dxfName() || !known->isDerivedFrom(AcDbEntity::desc())) continue;
            m_known.push_back({known->dxfName(), m_pattern.matches(known->dxfName())});
        }
        std::sort(m_known.begin(), m_known.end());
    }

    bool holds(FilterCandidate& candidate) const override {
        const wchar_t* const name = candidate.entity().dxfName();
        if (!name) return false;
        const auto found = std::lower_bound(m_known.begin(), m_known.end(), Known{name, false});
        return found != m_known.end() && found->first == name ? found->second : m_pattern.matches(name);
    }

    Cost cost() const override { return Cost::name; }

private:
    using Known = std::pair<const wchar_t*, bool>;
    WildcardPattern m_pattern;
    std::vector<Known> m_known;
};

class HandleCondition final : public FilterCondition {
public:
    explicit HandleCondition(WildcardPattern pattern)
        : m_pattern(std::move(pattern)) {}

    bool holds(FilterCandidate& candidate) const override {
        wchar_t text[17];
        candidate.entity().handle().getIntoAsciiBuffer(text);
        return m_pattern.matches(text);
    }
    Cost cost() const override { return Cost::name; }

private:
    WildcardPattern m_pattern;
};

/// The record that a field names, as the entity files it.
class NameCondition final : public FilterCondition {
public:
    using Field = AcDbObjectId (AcDbEntity::*)() const;

    NameCondition(short code, Field field, const wchar_t* otherwise, Records accepted,
                  WildcardPattern pattern)
        : m_code(code)
        , m_field(field)
        , m_otherwise(otherwise)
        , m_accepted(std::move(accepted))
        , m_pattern(std::move(pattern)) {}

    bool holds(FilterCandidate& candidate) const override {
        const AcDbObjectId record = (candidate.entity().*m_field)();
        if (!record.isNull() && !record.isErased()) return contains(m_accepted, record);
        const std::wstring* const unknown =
            record.isNull() ? DatabaseAccess::unknownName(candidate.entity(), m_code) : nullptr;
        return m_pattern.matches(unknown ? std::wstring_view(*unknown) : m_otherwise);
    }

private:
    short m_code;
    Field m_field;
    std::wstring_view m_otherwise;
    Records m_accepted;
    WildcardPattern m_pattern;
};

ConditionPointer nameCondition(short code, TableKind kind, NameCondition::Field field,
                               const wchar_t* otherwise, ValueTest& test, const AcDbDatabase& database) {
    auto& pattern = std::get<WildcardPattern>(test);
    Records accepted = recordsOf<AcDbSymbolTableRecord>(
        database, kind, [&](const AcDbSymbolTableRecord& record) { return pattern.matches(record.name()); });
    return std::make_unique<NameCondition>(code, field, otherwise, std::move(accepted), std::move(pattern));
}

/// The entity stands in one of these blocks, or in none of them.
class BlockCondition final : public FilterCondition {
public:
    BlockCondition(Records blocks, bool withinHolds, bool elsewhereHolds)
        : m_blocks(std::move(blocks))
        , m_withinHolds(withinHolds)
        , m_elsewhereHolds(elsewhereHolds) {}

    bool holds(FilterCandidate& candidate) const override {
        return contains(m_blocks, candidate.entity().blockId()) ? m_withinHolds : m_elsewhereHolds;
    }

private:
    Records m_blocks;
    bool m_withinHolds;
    bool m_elsewhereHolds;
};

ConditionPointer paperSpaceCondition(const IntegerTest& test, const AcDbDatabase& database) {
    constexpr std::wstring_view paper = L"*Paper_Space";
    Records blocks =
        recordsOf<AcDbBlockTableRecord>(database, TableKind::kBlock, [&](const AcDbBlockTableRecord& block) {
            return equalFolded(std::wstring_view(block.name()).substr(0, paper.size()), paper);
        });
    return std::make_unique<BlockCondition>(std::move(blocks), test.takes(1), test.takes(0));
}

ConditionPointer sheetCondition(const WildcardPattern& pattern, const AcDbDatabase& database) {
    Records blocks =
        recordsOf<AcDbBlockTableRecord>(database, TableKind::kBlock, [&](const AcDbBlockTableRecord& block) {
            const AcDbObjectId id = block.getLayoutId();
            const auto* const sheet = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbLayout>(id);
            return sheet && pattern.matches(sheet->getLayoutName());
        });
    return std::make_unique<BlockCondition>(std::move(blocks), true, false);
}

template <class Test>
class LookCondition final : public FilterCondition {
public:
    using Value = decltype(Test::wanted);
    using Look = Value (*)(const AcDbEntity& entity);

    LookCondition(Look look, const ValueTest& test)
        : m_look(look)
        , m_test(std::get<Test>(test)) {}

    bool holds(FilterCandidate& candidate) const override { return m_test.takes(m_look(candidate.entity())); }

private:
    Look m_look;
    Test m_test;
};

ConditionPointer integerCondition(LookCondition<IntegerTest>::Look look, const ValueTest& test) {
    return std::make_unique<LookCondition<IntegerTest>>(look, test);
}

class ApplicationCondition final : public FilterCondition {
public:
    explicit ApplicationCondition(WildcardPattern name)
        : m_name(std::move(name)) {}

    bool holds(FilterCandidate& candidate) const override {
        const GroupBlock* const data = candidate.entity().extendedData();
        if (!data) return false;
        GroupWalker walker(*data);
        AcDbDxfGroup group;
        for (short code = 0; walker.peek(code);) {
            if (code != applicationCode)
                walker.skip();
            else if (walker.next(group) && m_name.matches(group.text))
                return true;
        }
        return false;
    }
    Cost cost() const override { return Cost::filing; }

private:
    WildcardPattern m_name;
};

} // namespace

ConditionPointer fieldCondition(short code, ValueTest& test, const AcDbDatabase& database) {
    switch (code) {
    case 0:
        return std::make_unique<TypeCondition>(std::move(std::get<WildcardPattern>(test)));
    case handleCode:
        return std::make_unique<HandleCondition>(std::move(std::get<WildcardPattern>(test)));
    case 6:
        return nameCondition(code, TableKind::kLinetype, &AcDbEntity::linetypeId, L"BYLAYER", test, database);
    case 8:
        return nameCondition(code, TableKind::kLayer, &AcDbEntity::layerId, L"0", test, database);
    case 48:
        return std::make_unique<LookCondition<RealTest>>(
            [](const AcDbEntity& entity) { return entity.linetypeScale(); }, test);
    case 60:
        return integerCondition([](const AcDbEntity& entity) -> Adesk::Int64 { return entity.visibility(); },
                                test);
    case colorCode:
        return integerCondition([](const AcDbEntity& entity) -> Adesk::Int64 { return entity.colorIndex(); },
                                test);
    case 67:
        return paperSpaceCondition(std::get<IntegerTest>(test), database);
    case 370:
        return integerCondition([](const AcDbEntity& entity) -> Adesk::Int64 { return entity.lineWeight(); },
                                test);
    case 410:
        return sheetCondition(std::get<WildcardPattern>(test), database);
    default:
        return nullptr;
    }
}

ConditionPointer applicationCondition(WildcardPattern name) {
    return std::make_unique<ApplicationCondition>(std::move(name));
}

} // namespace hostkit
