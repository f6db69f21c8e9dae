// Filters put together by chance from what entities file, against a plain reading of the gathered groups.

#include "filtertext.h"
#include "selectionfilter.h"

#include "casefold.h"
#include "drawingreader.h"
#include "drawingsofothers.h"
#include "textencoding.h"

#include "dbaccess.h"
#include "dblayout.h"
#include "dbopaque.h"
#include "groupgatherer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <random>

namespace {

using hostkit::DatabaseAccess;
using hostkit::RecordList;
using hostkit::SelectionFilter;
using hostkit::writeFilterText;

struct Fact {
    int code = 0;
    std::wstring text;
    double numbers[3] = {0.0, 0.0, 0.0};
};
using Facts = std::vector<Fact>;
using Truth = std::function<bool(const Facts&)>;

bool isPoint(int code) { return AcDb::groupKind(code) == AcDb::GroupKind::kPoint; }
bool isReal(int code) { return AcDb::groupKind(code) == AcDb::GroupKind::kReal; }
bool isText(int code) {
    const AcDb::GroupKind kind = AcDb::groupKind(code);
    return kind == AcDb::GroupKind::kText || kind == AcDb::GroupKind::kHandle;
}
/// In lists in radians, which the gathered text form has in degrees; the named cases have one.
bool isAngle(int code) { return code >= 50 && code <= 58; }
/// Of which an entity is asked for its own, not for further ones of its class.
bool isCommon(int code) {
    constexpr int codes[] = {0, 5, 6, 8, 48, 60, 62, 67, 370, 410};
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

std::wstring handleText(AcDbObjectId id) {
    wchar_t text[17];
    id.handle().getIntoAsciiBuffer(text);
    return text;
}

Fact factOf(const resbuf& record) {
    Fact fact{record.restype, {}};
    const ads_u_val& value = record.resval;
    switch (AcDb::groupKind(record.restype)) {
    case AcDb::GroupKind::kPoint:
        std::copy_n(value.rpoint, 3, fact.numbers);
        break;
    case AcDb::GroupKind::kReal:
        fact.numbers[0] = value.rreal;
        break;
    case AcDb::GroupKind::kInt64:
        fact.numbers[0] = static_cast<double>(value.mnInt64);
        break;
    case AcDb::GroupKind::kInt32:
        fact.numbers[0] = value.rlong;
        break;
    case AcDb::GroupKind::kText:
    case AcDb::GroupKind::kHandle:
        fact.text = value.rstring;
        break;
    default:
        fact.numbers[0] = value.rint;
    }
    return fact;
}

std::wstring sheetOf(const AcDbEntity& entity) {
    const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(entity.blockId());
    const auto* const sheet = block ? DatabaseAccess::objectOf<AcDbLayout>(block->getLayoutId()) : nullptr;
    return sheet ? sheet->getLayoutName() : std::wstring();
}

Facts factsOf(const AcDbEntity& entity) {
    Facts facts{
        {0, entity.dxfName()}, {5, handleText(entity.objectId())}, {330, handleText(entity.ownerId())}};
    hostkit::GroupGatherer gatherer(entity.database());
    EXPECT_EQ(entity.dxfOutFields(&gatherer), Acad::eOk);
    const RecordList list(gatherer.groups().toList());
    for (const resbuf* record = list.get(); record; record = record->rbnext) {
        const int code = record->restype;
        const bool isThere =
            std::any_of(facts.begin(), facts.end(), [&](const Fact& fact) { return fact.code == code; });
        const bool isAsked =
            code < 999 && !isAngle(code) && AcDb::groupKind(code) != AcDb::GroupKind::kBinary;
        if (isAsked && !(isThere && isCommon(code))) facts.push_back(factOf(*record));
    }
    if (std::none_of(facts.begin(), facts.end(), [](const Fact& fact) { return fact.code == 67; }))
        facts.push_back({67, {}});
    if (const std::wstring sheet = sheetOf(entity); !sheet.empty()) facts.push_back({410, sheet});
    const RecordList extended(entity.xData());
    for (const resbuf* record = extended.get(); record; record = record->rbnext)
        if (record->restype == 1001) facts.push_back({1001, record->resval.rstring});
    return facts;
}

/// Draws filters, with what each means.
class FilterDrawer {
public:
    FilterDrawer(const std::vector<Facts>& entities, unsigned seed)
        : m_entities(entities)
        , m_random(seed) {}

    Truth draw(RecordList& list) {
        m_tail = nullptr;
        m_list.reset();
        Truth truth = operands(1 + m_random() % 3, 3, Joining::kAll);
        list = std::move(m_list);
        return truth;
    }

private:
    enum class Joining { kAll, kAny, kOne, kNot };

    resbuf& append(int type) {
        resbuf* const record = acutNewRb(type);
        if (m_tail)
            m_tail->rbnext = record;
        else
            m_list.reset(record);
        return *(m_tail = record);
    }
    void appendText(int type, const std::wstring& text) {
        append(type).resval.rstring = acutNewString(text.c_str());
    }
    unsigned below(std::size_t count) { return static_cast<unsigned>(m_random() % count); }

    Truth operands(std::size_t count, int depth, Joining joining) {
        std::vector<Truth> all;
        for (std::size_t i = 0; i < count; ++i)
            all.push_back(depth > 0 && below(3) == 0 ? grouping(depth) : leaf());
        return [all, joining](const Facts& facts) {
            const auto met =
                std::count_if(all.begin(), all.end(), [&](const Truth& each) { return each(facts); });
            const auto wanted = static_cast<std::ptrdiff_t>(all.size());
            switch (joining) {
            case Joining::kAll:
                return met == wanted;
            case Joining::kAny:
                return met > 0;
            case Joining::kOne:
                return met == 1;
            default:
                return met == 0;
            }
        };
    }

    Truth grouping(int depth) {
        struct Words {
            const wchar_t* opening;
            const wchar_t* closing;
            Joining joining;
            std::size_t count;
        };
        const Words words[] = {{L"<and", L"and>", Joining::kAll, 1u + below(3)},
                               {L"<OR", L"Or>", Joining::kAny, 1u + below(4)},
                               {L"<xor", L"xor>", Joining::kOne, 2},
                               {L"<NOT", L"not>", Joining::kNot, 1}};
        const Words& each = words[below(4)];
        appendText(-4, each.opening);
        Truth truth = operands(each.count, depth - 1, each.joining);
        appendText(-4, each.closing);
        return truth;
    }

    /// On a group that some entity has, with its value or one beside it.
    Truth leaf() {
        const Facts& facts = m_entities[below(m_entities.size())];
        const Fact& fact = facts[below(facts.size())];
        if (isText(fact.code)) return textLeaf(fact);
        return isPoint(fact.code) ? pointLeaf(fact) : numberLeaf(fact);
    }

    static Truth anyOf(int code, std::function<bool(const Fact&)> holds) {
        return [code, holds](const Facts& facts) {
            return std::any_of(facts.begin(), facts.end(),
                               [&](const Fact& fact) { return fact.code == code && holds(fact); });
        };
    }

    static std::wstring escaped(std::wstring_view text) {
        std::wstring pattern;
        for (const wchar_t letter : text) {
            if (std::wstring_view(L"#@.*?~[]-,`").find(letter) != std::wstring_view::npos) pattern += L'`';
            pattern += letter;
        }
        return pattern;
    }

    Truth textLeaf(const Fact& fact) {
        const std::wstring head = fact.text.substr(0, 1 + below(fact.text.size() + 1));
        const std::wstring tail = fact.text.substr(below(fact.text.size() + 1));
        const auto same = [text = fact.text](const Fact& other) {
            return hostkit::equalFolded(other.text, text);
        };
        const auto starts = [head](const Fact& other) {
            return hostkit::equalFolded(std::wstring_view(other.text).substr(0, head.size()), head);
        };
        const auto ends = [tail](const Fact& other) {
            return other.text.size() >= tail.size() &&
                   hostkit::equalFolded(std::wstring_view(other.text).substr(other.text.size() - tail.size()),
                                        tail);
        };
        const std::wstring whole = below(2) ? hostkit::upperCase(fact.text) : hostkit::foldCase(fact.text);
        const bool isFoldable = hostkit::equalFolded(whole, fact.text);
        std::wstring pattern = escaped(isFoldable ? whole : fact.text);
        std::function<bool(const Fact&)> holds = same;
        switch (below(5)) {
        case 0:
            pattern = escaped(head) + L'*';
            holds = starts;
            break;
        case 1:
            pattern = L'*' + escaped(tail);
            holds = ends;
            break;
        case 2:
            pattern = L"~" + pattern;
            holds = [same](const Fact& other) { return !same(other); };
            break;
        case 3:
            pattern = L"no such name," + escaped(head) + L"*,~?*";
            holds = [starts](const Fact& other) { return starts(other) || other.text.empty(); };
            break;
        default:
            break;
        }
        appendText(fact.code, pattern);
        return anyOf(fact.code, holds);
    }

    struct Sign {
        const wchar_t* text;
        bool (*holds)(double value, double wanted);
    };
    /// Equal and nearly equal are the same; the values drawn are either nearer than that or far apart.
    static bool isEqual(double value, double wanted) {
        return std::abs(value - wanted) <= std::max(1e-10, 1e-15 * std::abs(wanted));
    }
    const Sign& sign() {
        static constexpr Sign signs[] = {
            {L"=", isEqual},
            {L"!=", [](double value, double wanted) { return !isEqual(value, wanted); }},
            {L"<>", [](double value, double wanted) { return !isEqual(value, wanted); }},
            {L"/=", [](double value, double wanted) { return !isEqual(value, wanted); }},
            {L"<", [](double value, double wanted) { return value < wanted && !isEqual(value, wanted); }},
            {L"<=", [](double value, double wanted) { return value < wanted || isEqual(value, wanted); }},
            {L">", [](double value, double wanted) { return value > wanted && !isEqual(value, wanted); }},
            {L">=", [](double value, double wanted) { return value > wanted || isEqual(value, wanted); }},
            {L"*", [](double, double) { return true; }},
        };
        return signs[below(std::size(signs))];
    }

    Truth numberLeaf(const Fact& fact) {
        const double wanted = fact.numbers[0] + (below(3) == 0 ? 1.0 : 0.0);
        const int code = fact.code;
        if (!isReal(code) && below(3) == 0) return bitLeaf(code, static_cast<long long>(wanted));
        if (below(2) == 0) {
            appendNumber(code, wanted);
            return anyOf(code, [wanted](const Fact& other) { return isEqual(other.numbers[0], wanted); });
        }
        const Sign& how = sign();
        appendText(-4, how.text);
        appendNumber(code, wanted);
        return anyOf(code, [wanted, &how](const Fact& other) { return how.holds(other.numbers[0], wanted); });
    }

    Truth bitLeaf(int code, long long bits) {
        const bool isAll = below(2) == 0;
        appendText(-4, isAll ? L"&=" : L"&");
        appendNumber(code, static_cast<double>(bits));
        return anyOf(code, [isAll, bits](const Fact& other) {
            const long long common = static_cast<long long>(other.numbers[0]) & bits;
            return isAll ? common == bits : common != 0;
        });
    }

    void appendNumber(int code, double value) {
        resbuf& record = append(code);
        switch (AcDb::groupKind(code)) {
        case AcDb::GroupKind::kReal:
            record.resval.rreal = value;
            break;
        case AcDb::GroupKind::kInt32:
            record.resval.rlong = static_cast<Adesk::Int32>(value);
            break;
        case AcDb::GroupKind::kInt64:
            record.resval.mnInt64 = static_cast<Adesk::Int64>(value);
            break;
        default:
            record.resval.rint = static_cast<short>(value);
        }
    }

    Truth pointLeaf(const Fact& fact) {
        double wanted[3];
        for (int axis = 0; axis < 3; ++axis) wanted[axis] = fact.numbers[axis] + (below(4) == 0 ? 1.0 : 0.0);
        const std::size_t compared = below(4);
        std::vector<const Sign*> signs;
        std::wstring text;
        for (std::size_t axis = 0; axis < compared; ++axis) {
            signs.push_back(&sign());
            text += (axis ? L"," : L"") + std::wstring(signs.back()->text);
        }
        if (compared > 0) appendText(-4, text);
        std::copy_n(wanted, 3, append(fact.code).resval.rpoint);
        if (compared == 0) signs.assign(3, &equalSign);
        return anyOf(fact.code, [x = wanted[0], y = wanted[1], z = wanted[2], signs](const Fact& other) {
            const double values[] = {x, y, z};
            for (std::size_t axis = 0; axis < signs.size(); ++axis)
                if (!signs[axis]->holds(other.numbers[axis], values[axis])) return false;
            return true;
        });
    }

    static constexpr Sign equalSign{L"=", isEqual};
    const std::vector<Facts>& m_entities;
    std::mt19937 m_random;
    RecordList m_list;
    resbuf* m_tail = nullptr;
};

/// How often filters and entities differ, so that the question is not idle.
struct Tally {
    std::size_t mixed = 0; ///< filters that take some of the entities and not others
    std::size_t filters = 0;
};

void checkDrawing(AcDbDatabase& drawing, unsigned seed, int filters, Tally& tally) {
    std::vector<const AcDbEntity*> entities;
    DatabaseAccess::forEachObject(drawing, [&](AcDbObject& object) {
        const auto* const entity = AcDbEntity::cast(&object);
        // Of kinds that no class reads nothing is gathered; a named case asks their records.
        if (entity && !entity->isErased() && !entity->isKindOf(AcDbOpaqueEntity::desc()) &&
            !entity->blockId().isNull())
            entities.push_back(entity);
    });
    std::mt19937 random(seed);
    std::shuffle(entities.begin(), entities.end(), random);
    entities.resize(std::min<std::size_t>(entities.size(), 150));
    std::vector<Facts> facts;
    for (const AcDbEntity* entity : entities) facts.push_back(factsOf(*entity));
    if (facts.empty()) return;
    FilterDrawer drawer(facts, seed);
    for (int round = 0; round < filters; ++round) {
        RecordList list;
        const Truth truth = drawer.draw(list);
        std::wstring reason;
        const auto filter = SelectionFilter::compile(list.get(), drawing, &reason);
        ASSERT_TRUE(filter) << hostkit::utf8FromWide(reason);
        std::size_t taken = 0;
        for (std::size_t i = 0; i < entities.size(); ++i) {
            taken += truth(facts[i]);
            ASSERT_EQ(filter->accepts(*entities[i]), truth(facts[i]))
                << hostkit::utf8FromWide(writeFilterText(list.get())) << " on "
                << hostkit::utf8FromWide(handleText(entities[i]->objectId()));
        }
        tally.mixed += taken > 0 && taken < entities.size();
        ++tally.filters;
    }
}

void checkFolder(const std::filesystem::path& folder, int filters) {
    unsigned seed = 7;
    Tally tally;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".dxf") continue;
        SCOPED_TRACE(entry.path().string());
        const auto drawing = hostkit::openDrawing(entry.path().wstring(), nullptr, {.tellPort = false});
        ASSERT_TRUE(drawing);
        checkDrawing(*drawing, ++seed, filters, tally);
        if (testing::Test::HasFatalFailure()) return;
    }
    EXPECT_GT(tally.mixed, tally.filters / 3);
}

TEST(RandomFilters, AgreeWithWhatTheExamplesFile) { checkFolder(VEXO_SOURCE_DIR "/examples/slab", 3000); }

TEST(RandomFilters, AgreeWithWhatDrawingsOfOthersFile) {
    const std::filesystem::path folder = drawingsOfOthers();
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no drawings at " << folder;
    checkFolder(folder, 300);
}

} // namespace
