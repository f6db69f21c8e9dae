#include "recordrepair.h"

#include "auditrules.h"
#include "auditvalues.h"
#include "extendedrepair.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

constexpr int markCode = 100;
constexpr int embeddedCode = 101;
constexpr int controlCode = 102;
constexpr int ownerCode = 330;
constexpr int firstExtended = 1000;
constexpr int coordinateStep = 10;

using Group = SalvagedGroup;
using Groups = SalvagedGroups;

bool isValue(const Group& group) {
    const AuditValue kind = auditValueOf(group.code);
    return kind != AuditValue::kNone && isAuditValue(kind, group.value);
}

/// The kind's marks with the groups that go behind each.
class PartedRecord {
public:
    PartedRecord(std::string_view type, const AuditKind& kind, const std::vector<AuditMark>& variant,
                 bool isMarked)
        : m_type(type)
        , m_kind(kind)
        , m_variant(variant)
        , m_isMarked(isMarked) {
        if (!isMarked)
            m_parts.push_back({&kind.unmarked, true, {}, {}});
        else
            for (const AuditMark& mark : variant) m_parts.push_back({mark.part, !mark.isOptional, {}, {}});
        for (Part& each : m_parts)
            if (each.rules) each.counts.resize(each.rules->rules.size());
    }

    bool run(Groups& groups) {
        for (m_at = 0; m_at < groups.size(); ++m_at)
            if (!take(groups)) break;
        for (Part& each : m_parts)
            if (!complete(each)) return false;
        groups = all();
        return true;
    }

private:
    struct Part {
        const AuditPart* rules; ///< null where any group may stand
        bool isThere;
        Groups groups;
        std::vector<std::uint32_t> counts;
    };

    int handleCode() const { return m_type == "DIMSTYLE" ? 105 : 5; }

    // False where the rest of the record is another object's.
    bool take(const Groups& groups) {
        const Group& group = groups[m_at];
        if (group.code == embeddedCode) {
            m_embedded.assign(groups.begin() + static_cast<std::ptrdiff_t>(m_at), groups.end());
            return false;
        }
        if (group.code == markCode)
            enterMark(group.value);
        else if (group.code == controlCode)
            takeControl(groups);
        else if (group.code == 2 && m_type == "TABLE" && m_name.empty())
            m_name = {group};
        else if (group.code == handleCode() && isHead(m_handle, group))
            m_handle = {group};
        else if (group.code == ownerCode && m_isMarked && isHead(m_owner, group))
            m_owner = {group};
        else
            takeGroup(groups);
        return true;
    }
    // Behind the first mark handle and owner stand where the head has none.
    bool isHead(const Groups& taken, const Group& group) const {
        return taken.empty() && (m_current < 1 || !ruleIn(m_current, group.code)) && isValue(group);
    }

    void enterMark(std::string_view name) {
        for (std::size_t i = 0; i < m_variant.size(); ++i)
            if (m_variant[i].name == name && !m_isEntered[i]) {
                m_current = static_cast<int>(i);
                m_isEntered[i] = m_parts[m_isMarked ? i : 0].isThere = true;
                return;
            }
    }

    // Up to its end; one without an end has handles alone.
    void takeControl(const Groups& groups) {
        const std::size_t first = m_at;
        if (!groups[first].value.starts_with('{')) return;
        std::size_t end = first + 1;
        while (end < groups.size() && groups[end].code != controlCode && groups[end].code != markCode) ++end;
        const bool isClosed =
            end < groups.size() && groups[end].code == controlCode && groups[end].value == "}";
        if (!isClosed) {
            end = first + 1;
            while (end < groups.size() && groups[end].code > ownerCode && groups[end].code < 370) ++end;
        }
        Groups& into =
            m_current < 0 || !m_isMarked ? m_controls : m_parts[static_cast<std::size_t>(m_current)].groups;
        for (std::size_t i = first; i < end; ++i)
            if (isValue(groups[i])) into.push_back(groups[i]);
        into.push_back({controlCode, "}"});
        m_at = isClosed ? end : end - 1;
    }

    const AuditGroupRule* ruleIn(int part, int code) const {
        const AuditPart* const rules = m_parts[static_cast<std::size_t>(part)].rules;
        return rules ? rules->find(code) : nullptr;
    }
    bool hasRoom(int part, int code) const {
        const Part& each = m_parts[static_cast<std::size_t>(part)];
        if (!each.rules) return each.isThere;
        const AuditGroupRule* const rule = each.rules->find(code);
        return rule && (rule->mayRepeat || each.counts[placeOf(each, *rule)] == 0);
    }
    static std::size_t placeOf(const Part& part, const AuditGroupRule& rule) {
        return static_cast<std::size_t>(&rule - part.rules->rules.data());
    }
    int partFor(int code) const {
        const int count = static_cast<int>(m_parts.size());
        const int current = m_isMarked ? m_current : 0;
        if (current >= 0 && current < count && hasRoom(current, code)) return current;
        for (int part = 0; part < count; ++part)
            if (m_parts[static_cast<std::size_t>(part)].rules && hasRoom(part, code)) return part;
        return -1;
    }

    void takeGroup(const Groups& groups) {
        const Group& group = groups[m_at];
        const int place = partFor(group.code);
        if (place < 0) return;
        Part& part = m_parts[static_cast<std::size_t>(place)];
        const AuditGroupRule* const rule = ruleIn(place, group.code);
        if (rule && rule->isPoint) return takePoint(groups, part, *rule);
        if (!isValue(group)) return;
        Group limited = group;
        if (rule && !isWithin(*rule, limited)) return;
        part.groups.push_back(limited);
        if (rule) ++part.counts[placeOf(part, *rule)];
    }

    void takePoint(const Groups& groups, Part& part, const AuditGroupRule& rule) {
        std::size_t end = m_at + 1;
        while (end < groups.size() && end < m_at + 3 &&
               groups[end].code == rule.code + static_cast<int>(end - m_at) * coordinateStep)
            ++end;
        const std::size_t size = end - m_at;
        const std::size_t most = rule.isFlat ? 2 : 3;
        bool isSound = size >= 2;
        bool hasLength = false;
        for (std::size_t i = m_at; i < end; ++i) {
            isSound = isSound && isValue(groups[i]);
            hasLength = hasLength || auditReal(groups[i].value).value_or(0) != 0;
        }
        if (isSound && (hasLength || rule.limit != AuditLimit::kNotZeroVector)) {
            const auto from = groups.begin() + static_cast<std::ptrdiff_t>(m_at);
            part.groups.insert(part.groups.end(), from,
                               from + static_cast<std::ptrdiff_t>(std::min(size, most)));
            ++part.counts[placeOf(part, rule)];
        }
        m_at = end - 1;
    }

    // Into its limits where that keeps what was meant; false where the group goes.
    static bool isWithin(const AuditGroupRule& rule, Group& group) {
        if (auditValueOf(group.code) == AuditValue::kReal) {
            const double value = auditReal(group.value).value_or(0);
            const bool isBelow = value < 0;
            switch (rule.limit) {
            case AuditLimit::kPositive:
            case AuditLimit::kNotNegative:
                if (isBelow) group.value.remove_prefix(group.value.find('-') + 1);
                return value != 0 || rule.limit == AuditLimit::kNotNegative;
            case AuditLimit::kRatio:
                if (std::abs(value) < 1e-6) return false;
                if (std::abs(value) > 1 + 1e-9) group.value = isBelow ? "-1.0" : "1.0";
                return true;
            default:
                return true;
            }
        }
        const std::int64_t value = auditInteger(group.value).value_or(0);
        constexpr int weights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                   50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
        switch (rule.limit) {
        case AuditLimit::kColor:
            return value >= 0 && value <= 256;
        case AuditLimit::kLayerColor:
            if (value < -255 || value > 255) group.value = "7";
            return true;
        case AuditLimit::kTrueColor:
            return value >= 0 && value <= 0xFFFFFF;
        case AuditLimit::kLineweight:
            return std::find(std::begin(weights), std::end(weights), value) != std::end(weights);
        case AuditLimit::kNotNegative:
            return value >= 0;
        default:
            return true;
        }
    }

    bool complete(Part& part) {
        if (!part.rules || !part.isThere) return true;
        for (std::size_t i = 0; i < part.counts.size(); ++i) {
            const AuditGroupRule& rule = part.rules->rules[i];
            if (rule.isRequired && part.counts[i] == 0 && !addNeutral(part, rule)) return false;
        }
        return true;
    }

    bool addNeutral(Part& part, const AuditGroupRule& rule) {
        const bool isText = auditValueOf(rule.code) == AuditValue::kText;
        const bool isBlockBase = m_type == "BLOCK" && rule.isPoint;
        const bool isName = isText && (rule.code == 2 || rule.table == AuditTable::kBlock);
        const AuditValue kind = auditValueOf(rule.code);
        if (kind == AuditValue::kReal && !isBlockBase) return false;
        if (isName && m_kind.isEntity) return false;
        Group group{rule.code, isText ? "" : "0"};
        if (rule.table == AuditTable::kLayer) group.value = "0";
        if (rule.table == AuditTable::kDimStyle || rule.table == AuditTable::kStyle) group.value = "Standard";
        if (isBlockBase)
            for (int step = 0; step <= 2 * coordinateStep; step += coordinateStep)
                part.groups.push_back({rule.code + step, "0.0"});
        else
            part.groups.insert(part.groups.begin(), group);
        return true;
    }

    Groups all() const {
        Groups result = m_name; // of a table, before all
        result.insert(result.end(), m_handle.begin(), m_handle.end());
        result.insert(result.end(), m_controls.begin(), m_controls.end());
        result.insert(result.end(), m_owner.begin(), m_owner.end());
        for (std::size_t i = 0; i < m_parts.size(); ++i) {
            if (!m_parts[i].isThere) continue;
            if (m_isMarked) result.push_back({markCode, m_variant[i].name});
            result.insert(result.end(), m_parts[i].groups.begin(), m_parts[i].groups.end());
        }
        result.insert(result.end(), m_embedded.begin(), m_embedded.end());
        return result;
    }

    std::string_view m_type;
    const AuditKind& m_kind;
    const std::vector<AuditMark>& m_variant;
    bool m_isMarked;
    std::size_t m_at = 0;
    int m_current = -1;
    bool m_isEntered[16] = {};
    Groups m_name, m_handle, m_controls, m_owner, m_embedded;
    std::vector<Part> m_parts;
};

// How far the marks are from a variant: those that lack and those that are too many.
std::size_t distanceOf(const std::vector<AuditMark>& variant, const Groups& groups) {
    std::vector<std::string_view> found;
    for (const Group& each : groups)
        if (each.code == markCode) found.push_back(each.value);
    std::size_t distance = 0;
    for (const AuditMark& mark : variant) {
        const auto place = std::find(found.begin(), found.end(), mark.name);
        if (place != found.end())
            found.erase(place);
        else
            distance += mark.isOptional ? 0 : 1;
    }
    return distance + found.size();
}

const std::vector<AuditMark>& nearestVariant(const AuditKind& kind, const Groups& groups) {
    return *std::min_element(kind.variants.begin(), kind.variants.end(),
                             [&](const auto& left, const auto& right) {
                                 return distanceOf(left, groups) < distanceOf(right, groups);
                             });
}

// Kinds whose groups are their writers' affair: what is no group goes, and the mark that all have comes.
void repairFree(std::string_view mark, Groups& groups) {
    bool isMarked = mark.empty();
    Groups result;
    for (const Group& each : groups) {
        if (!isValue(each)) continue;
        isMarked = isMarked || (each.code == markCode && each.value == mark);
        result.push_back(each);
    }
    if (!isMarked) {
        auto place = result.begin();
        bool isInControl = false;
        for (; place != result.end(); ++place) {
            if (place->code == controlCode) isInControl = place->value.starts_with('{');
            if (!isInControl && place->code != controlCode && place->code != 5 && place->code != ownerCode)
                break;
        }
        result.insert(place, {markCode, mark});
    }
    groups = std::move(result);
}

void dropStrayWeights(Groups& groups) {
    const auto countOf = [&](int code) {
        return std::count_if(groups.begin(), groups.end(),
                             [&](const Group& each) { return each.code == code; });
    };
    if (countOf(41) != countOf(10)) std::erase_if(groups, [](const Group& each) { return each.code == 41; });
}

} // namespace

bool repairGroups(const SalvagedRecord& record, const RepairForm& form, SalvagedGroups& groups) {
    const auto extended = std::find_if(groups.begin(), groups.end(),
                                       [](const Group& each) { return each.code == firstExtended + 1; });
    Groups data(extended, groups.end());
    groups.erase(extended, groups.end());
    std::erase_if(groups, [](const Group& each) { return each.code >= firstExtended; });
    const AuditKind* const kind = findAuditKind(record.type);
    const bool isEntity = record.place == SalvagedPlace::kBlock || record.place == SalvagedPlace::kEntities;
    if (!kind) {
        repairFree(isEntity && form.hasMarks ? "AcDbEntity" : "", groups);
    } else if (record.type == "XRECORD") {
        repairFree("AcDbXrecord", groups);
    } else if (form.hasMarks || !kind->isAnyAllowed) {
        const bool isMarked = form.hasMarks;
        if (!PartedRecord(record.type, *kind, nearestVariant(*kind, groups), isMarked).run(groups))
            return false;
        if (record.type == "SPLINE") dropStrayWeights(groups);
    } else {
        repairFree("", groups);
    }
    repairExtendedData(data);
    groups.insert(groups.end(), data.begin(), data.end());
    return true;
}

} // namespace hostkit
