// The check of the groups behind one class mark: which may stand there, how often, and what they may hold.

#include "auditing.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int controlCode = 102;
constexpr int coordinateStep = 10;

constexpr int lineweights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                               50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr double leastRatio = 1e-6;
// A circle's two axes may differ in their last places.
constexpr double mostRatio = 1 + 1e-9;

/// The groups of one part against their rules.
class PartCheck {
public:
    PartCheck(AuditRun& run, const AuditContent& content, AuditIndex index, const AuditPart& part)
        : m_run(run)
        , m_content(content)
        , m_index(index)
        , m_part(part)
        , m_seen(part.rules.size()) {}

    void check(std::size_t first, std::size_t end) {
        bool isInControl = false;
        for (std::size_t at = first; at < end; ++at) {
            const AuditGroup& group = m_content.groups[at];
            if (group.code == controlCode) isInControl = group.value.starts_with('{');
            if (isInControl || group.code == controlCode) continue;
            gather(group);
            if (!m_part.rules.empty() || !m_part.mark.empty()) at = checkGroup(at, end);
        }
        checkRequired(first);
        checkCounts(first, end);
    }

private:
    AuditRecord& record() const { return m_run.drawing.records[m_index]; }
    template <class... Pieces>
    void fault(std::uint32_t line, const Pieces&... pieces) {
        m_run.findings.fault(AuditCheck::kRecord, &record(), line, pieces...);
    }

    // Gives the place of the last group that belongs to this one.
    std::size_t checkGroup(std::size_t at, std::size_t end) {
        const AuditGroup& group = m_content.groups[at];
        const AuditGroupRule* const rule = m_part.find(group.code);
        if (!rule) return checkUnexpected(at, end);
        std::uint32_t& seen = m_seen[static_cast<std::size_t>(rule - m_part.rules.data())];
        if (++seen == 2 && !rule->mayRepeat)
            fault(group.line, L"its group ", group.code, L" stands twice in the part ", partName());
        return rule->isPoint ? checkPoint(*rule, at, end) : at;
    }
    std::string_view partName() const {
        return m_part.mark.empty() ? std::string_view("of the record") : m_part.mark;
    }

    std::size_t checkPoint(const AuditGroupRule& rule, std::size_t at, std::size_t end) {
        const std::size_t first = at;
        const int second = rule.code + coordinateStep;
        const int third = second + coordinateStep;
        const auto isNext = [&](int code) { return at + 1 < end && m_content.groups[at + 1].code == code; };
        if (isNext(second))
            ++at;
        else
            fault(m_content.groups[first].line, L"group ", rule.code, L" has no second coordinate, group ",
                  second, L", behind it");
        if (isNext(third)) {
            ++at;
            if (rule.isFlat)
                fault(m_content.groups[at].line, L"group ", rule.code,
                      L" is a point of two coordinates; group ", third, L" does not belong to it");
        }
        if (rule.limit == AuditLimit::kNotZeroVector) checkVector(first, at + 1);
        return at;
    }

    void checkVector(std::size_t first, std::size_t end) {
        for (std::size_t at = first; at < end; ++at)
            if (auditReal(m_content.groups[at].value).value_or(1) != 0) return;
        fault(m_content.groups[first].line, L"group ", m_content.groups[first].code,
              L" is a direction of no length");
    }

    // A coordinate whose first one is not there, or a group that the part has no place for.
    std::size_t checkUnexpected(std::size_t at, std::size_t end) {
        const AuditGroup& group = m_content.groups[at];
        if (isOfHead(group.code)) return at;
        if (group.code >= 1000) {
            m_run.findings.fault(AuditCheck::kExtendedData, &record(), group.line,
                                 L"its extended data begins without an application, group 1001");
            return end;
        }
        for (const int step : {coordinateStep, 2 * coordinateStep}) {
            const AuditGroupRule* const point = m_part.find(group.code - step);
            if (!point || !point->isPoint) continue;
            fault(group.line, L"group ", group.code, L" stands without group ", group.code - coordinateStep,
                  L" before it");
            ++m_seen[static_cast<std::size_t>(point - m_part.rules.data())];
            const bool hasThird =
                at + 1 < end && m_content.groups[at + 1].code == group.code + coordinateStep;
            return step == coordinateStep && hasThird ? at + 1 : at;
        }
        fault(group.line, L"group ", group.code, L" does not belong to the part ", partName());
        return at;
    }

    // Handle and owner are looked at where the head is.
    bool isOfHead(int code) const {
        if (m_part.mark.empty()) return code == 5 || code == 105;
        return (m_part.mark == "AcDbEntity" || m_part.mark == "AcDbSymbolTableRecord" ||
                !record().isEntity) &&
               (code == 5 || code == 105 || code == 330);
    }

    void checkRequired(std::size_t first) {
        const std::uint32_t line =
            first > 0 && !m_part.mark.empty() ? m_content.groups[first - 1].line : record().line;
        for (std::size_t i = 0; i < m_seen.size(); ++i)
            if (m_part.rules[i].isRequired && m_seen[i] == 0)
                fault(line, L"its group ", m_part.rules[i].code, L" is missing in the part ", partName());
    }

    // Groups that say how often another one follows.
    void checkCounts(std::size_t first, std::size_t end) {
        for (std::size_t i = 0; i < m_seen.size(); ++i) {
            const AuditGroupRule& rule = m_part.rules[i];
            if (rule.counted == 0 || m_seen[i] == 0) continue;
            const AuditGroup* const group = m_content.find(rule.code, first, end);
            const AuditGroupRule* const counted = m_part.find(rule.counted);
            const auto found =
                static_cast<std::int64_t>(m_seen[static_cast<std::size_t>(counted - m_part.rules.data())]);
            const std::int64_t told = auditInteger(group->value).value_or(found);
            if (told == found) continue;
            fault(group->line, L"group ", rule.code, L" says that ", told, L" of group ", rule.counted,
                  L" follow, but ", found, found == 1 ? L" does" : L" do");
            m_run.findings.remedy(rule.code, found);
        }
    }

    // References and limits.
    void gather(const AuditGroup& group) {
        const AuditGroupRule* const rule = m_part.find(group.code);
        if (auditValueOf(group.code) == AuditValue::kHandle && group.code >= 320 &&
            m_part.mark != "AcDbDictionary")
            m_run.drawing.handleReferences.push_back(
                {auditHandle(group.value).value_or(0), rule ? rule->target : std::string_view(), m_index,
                 group.line, static_cast<short>(group.code), AuditLink::kReference});
        if (!rule) return;
        if (rule->table != AuditTable::kNone && !group.value.empty())
            m_run.drawing.nameReferences.push_back({m_index, group.line,
                                                    m_run.drawing.names.idOf(group.value),
                                                    static_cast<short>(group.code), rule->table});
        if (rule->limit != AuditLimit::kNone && rule->limit != AuditLimit::kNotZeroVector)
            checkLimit(*rule, group);
    }

    void checkLimit(const AuditGroupRule& rule, const AuditGroup& group) {
        if (auditValueOf(group.code) == AuditValue::kReal)
            checkReal(rule.limit, group);
        else if (const auto value = auditInteger(group.value))
            checkInteger(rule.limit, group, *value);
    }

    void checkReal(AuditLimit limit, const AuditGroup& group) {
        const double value = auditReal(group.value).value_or(1);
        const auto tell = [&](const wchar_t* what) {
            fault(group.line, L"group ", group.code, L" is ", group.value, what);
        };
        if (limit == AuditLimit::kPositive && value <= 0) tell(L"; it has to be above nought");
        if (limit == AuditLimit::kNotNegative && value < 0) tell(L"; it cannot be below nought");
        if (limit == AuditLimit::kRatio && (std::abs(value) < leastRatio || std::abs(value) > mostRatio))
            tell(L"; the ratio of the axes is above nought and at most 1");
        if (limit == AuditLimit::kNotZero && value == 0)
            m_run.findings.remark(AuditCheck::kRecord, &record(), group.line, L"the scale factor ",
                                  group.code, L" is nought; nothing can be seen");
    }

    void checkInteger(AuditLimit limit, const AuditGroup& group, std::int64_t value) {
        const auto tell = [&](const wchar_t* what) {
            fault(group.line, L"group ", group.code, L" is ", value, what);
        };
        switch (limit) {
        case AuditLimit::kColor:
            if (value < 0 || value > 256) tell(L"; colours go from 0 to 256");
            break;
        case AuditLimit::kLayerColor:
            if (value < -255 || value > 255) tell(L"; colours of layers go from -255 to 255");
            if (value == 0)
                m_run.findings.remark(AuditCheck::kRecord, &record(), group.line,
                                      L"its colour is 0, by block, which a layer cannot have");
            break;
        case AuditLimit::kTrueColor:
            if (value < 0 || value > 0xFFFFFF) tell(L", which is above 24 bits");
            break;
        case AuditLimit::kLineweight:
            if (std::find(std::begin(lineweights), std::end(lineweights), value) == std::end(lineweights))
                tell(L", which is no lineweight of the list");
            break;
        case AuditLimit::kNotNegative:
            if (value < 0) tell(L"; it cannot be below nought");
            break;
        default:
            break;
        }
    }

    AuditRun& m_run;
    const AuditContent& m_content;
    AuditIndex m_index;
    const AuditPart& m_part;
    std::vector<std::uint32_t> m_seen;
};

} // namespace

void auditPart(AuditRun& run, const AuditContent& content, AuditIndex index, const AuditPart& part,
               std::size_t first, std::size_t end) {
    PartCheck(run, content, index, part).check(first, end);
}

} // namespace hostkit
