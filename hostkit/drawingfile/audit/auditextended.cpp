// The check of extended data.

#include "auditing.h"

#include "textencoding.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int applicationCode = 1001;
constexpr int braceCode = 1002;
constexpr int layerCode = 1003;
constexpr int binaryCode = 1004;
constexpr int handleCode = 1005;
constexpr std::size_t mostBytes = 16383;   // of all applications of a record
constexpr std::size_t mostText = 255;      // of one text
constexpr std::size_t mostHexDigits = 254; // of one piece of binary data

bool isPointCode(int code) { return code >= 1010 && code <= 1013; }

bool isExtendedCode(int code) {
    return (code >= 1000 && code <= 1005) || isPointCode(code) || isPointCode(code - 10) ||
           isPointCode(code - 20) || (code >= 1040 && code <= 1042) || code == 1070 || code == 1071;
}

// In the drawing's own binary form: two bytes of code; texts in UTF-16 and binaries with two bytes of length.
// The two further coordinates of a point are added where the point is looked at.
std::size_t sizeOf(const AuditGroup& group) {
    switch (auditValueOf(group.code)) {
    case AuditValue::kText:
        return 4 + 2 * AuditNames::charactersOf(group.value).size();
    case AuditValue::kBinary:
        return 4 + group.value.size() / 2;
    case AuditValue::kInteger16:
        return 4;
    case AuditValue::kInteger32:
        return 6;
    default:
        return 10;
    }
}

/// The extended data of one record.
class ExtendedCheck {
public:
    ExtendedCheck(AuditRun& run, const AuditContent& content, AuditIndex index)
        : m_run(run)
        , m_content(content)
        , m_index(index) {}

    void check() {
        const auto& groups = m_content.groups;
        std::size_t size = 0;
        for (std::size_t at = m_content.extendedBegin; at < groups.size(); ++at) {
            const AuditGroup& group = groups[at];
            if (group.code < 1000) {
                fault(group.line, L"group ", group.code,
                      L" stands behind the extended data, which ends a record");
                return;
            }
            size += sizeOf(group);
            if (checkValue(group)) at = checkMeaning(at, size);
        }
        closeBraces();
        if (size > mostBytes)
            fault(groups[m_content.extendedBegin].line, L"it has ", size, L" bytes of extended data, above ",
                  mostBytes);
    }

private:
    template <class... Pieces>
    void fault(std::uint32_t line, const Pieces&... pieces) {
        m_run.findings.fault(AuditCheck::kExtendedData, &m_run.drawing.records[m_index], line, pieces...);
    }

    bool checkValue(const AuditGroup& group) {
        if (!isExtendedCode(group.code)) {
            fault(group.line, L"extended data has no group ", group.code);
            return false;
        }
        const AuditValue kind = auditValueOf(group.code);
        if (!isAuditValue(kind, group.value)) {
            fault(group.line, L"group ", group.code, L" is ", group.value, L", which is not ",
                  auditValueName(kind));
            return false;
        }
        const bool isText = kind == AuditValue::kText;
        if (isText && group.value.size() > mostText &&
            AuditNames::charactersOf(group.value).size() > mostText)
            fault(group.line, L"group ", group.code, L" is a text of ", group.value.size(), L" bytes, above ",
                  mostText);
        if (kind == AuditValue::kBinary && group.value.size() > mostHexDigits)
            fault(group.line, L"group 1004 is ", group.value.size() / 2, L" bytes long, above ",
                  mostHexDigits / 2);
        return true;
    }

    // Gives the place of the last group that belongs to this one.
    std::size_t checkMeaning(std::size_t at, std::size_t& size) {
        const AuditGroup& group = m_content.groups[at];
        auto& drawing = m_run.drawing;
        switch (group.code) {
        case applicationCode:
            beginApplication(group);
            break;
        case braceCode:
            checkBrace(group);
            break;
        case layerCode:
            drawing.nameReferences.push_back(
                {m_index, group.line, drawing.names.idOf(group.value), layerCode, AuditTable::kLayer});
            break;
        case handleCode:
            drawing.handleReferences.push_back({auditHandle(group.value).value_or(0),
                                                {},
                                                m_index,
                                                group.line,
                                                handleCode,
                                                AuditLink::kExtendedData});
            break;
        default:
            if (group.code >= 1010 && group.code < 1040) return checkPoint(at, size);
        }
        return at;
    }

    std::size_t checkPoint(std::size_t at, std::size_t& size) {
        const AuditGroup& group = m_content.groups[at];
        if (!isPointCode(group.code)) {
            fault(group.line, L"group ", group.code, L" stands without group ", group.code - 10,
                  L" before it");
            return at;
        }
        for (int step = 10; step <= 20; step += 10) {
            if (at + 1 < m_content.groups.size() && m_content.groups[at + 1].code == group.code + step) {
                ++at;
                size += 8;
                (void)checkValue(m_content.groups[at]);
                continue;
            }
            fault(group.line, L"group ", group.code, L" has no coordinate ", group.code + step,
                  L" behind it");
            break;
        }
        return at;
    }

    void beginApplication(const AuditGroup& group) {
        closeBraces();
        const AuditNames::Id name = m_run.drawing.names.idOf(group.value);
        if (std::find(m_applications.begin(), m_applications.end(), name) != m_applications.end())
            fault(group.line, L"the application ", group.value, L" stands twice in its extended data");
        m_applications.push_back(name);
        m_run.drawing.nameReferences.push_back(
            {m_index, group.line, name, applicationCode, AuditTable::kApplication});
    }

    void checkBrace(const AuditGroup& group) {
        if (group.value == "{") {
            m_open.push_back(group.line);
        } else if (group.value != "}") {
            fault(group.line, L"group 1002 is ", group.value, L", which is no brace");
        } else if (m_open.empty()) {
            fault(group.line, L"a brace of its extended data closes that was not opened");
        } else {
            m_open.pop_back();
        }
    }

    void closeBraces() {
        if (!m_open.empty()) fault(m_open.back(), L"a brace of its extended data is not closed");
        m_open.clear();
    }

    AuditRun& m_run;
    const AuditContent& m_content;
    AuditIndex m_index;
    std::vector<std::uint32_t> m_open; ///< the lines of braces
    std::vector<AuditNames::Id> m_applications;
};

} // namespace

void auditExtendedData(AuditRun& run, const AuditContent& content, AuditIndex index) {
    ExtendedCheck(run, content, index).check();
}

} // namespace hostkit
