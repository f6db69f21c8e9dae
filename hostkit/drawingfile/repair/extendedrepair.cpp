#include "extendedrepair.h"

#include "auditnames.h"
#include "auditvalues.h"
#include "textencoding.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int applicationCode = 1001;
constexpr int braceCode = 1002;
constexpr int binaryCode = 1004;
constexpr std::size_t mostBytes = 16383;
constexpr std::size_t mostText = 255;
constexpr std::size_t mostHexDigits = 254;

using Group = SalvagedGroup;
using Groups = SalvagedGroups;

bool isPointCode(int code) { return code >= 1010 && code <= 1013; }

bool isSingleCode(int code) {
    return (code >= 1000 && code <= 1005) || (code >= 1040 && code <= 1042) || code == 1070 || code == 1071;
}

// To whole characters.
std::string_view cut(std::string_view text) {
    if (text.size() <= mostText) return text;
    std::size_t size = 0;
    std::size_t characters = 0;
    const bool isUtf8 = isValidUtf8(text);
    while (size < text.size() && characters < mostText) {
        ++size;
        ++characters;
        while (isUtf8 && size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80)
            ++size;
    }
    return text.substr(0, size);
}

std::size_t sizeOf(const Group& group) {
    switch (auditValueOf(group.code)) {
    case AuditValue::kText:
        return group.code == 1003 ? 10 : 4 + 2 * group.value.size();
    case AuditValue::kBinary:
        return 4 + group.value.size() / 2;
    default:
        return 10;
    }
}

/// One application's data after the other.
class ExtendedRepair {
public:
    explicit ExtendedRepair(const Groups& data)
        : m_data(data) {}

    Groups run() {
        for (m_at = 0; m_at < m_data.size(); ++m_at) take();
        closeBraces();
        return std::move(m_result);
    }

private:
    void take() {
        Group group = m_data[m_at];
        if (isPointCode(group.code)) return takePoint();
        if (!isSingleCode(group.code)) return;
        if (group.code == applicationCode) return beginApplication(group);
        if (m_isPassedOver) return;
        if (group.code == braceCode) return takeBrace(group);
        if (auditValueOf(group.code) == AuditValue::kText) group.value = cut(group.value);
        if (group.code == binaryCode) group.value = group.value.substr(0, mostHexDigits);
        if (isAuditValue(auditValueOf(group.code), group.value)) m_result.push_back(group);
    }

    void beginApplication(const Group& group) {
        closeBraces();
        const AuditNames::Id name = m_names.idOf(group.value);
        m_isPassedOver = group.value.empty() || std::find(m_applications.begin(), m_applications.end(),
                                                          name) != m_applications.end();
        if (m_isPassedOver) return;
        m_applications.push_back(name);
        m_result.push_back(group);
    }

    void takeBrace(const Group& group) {
        if (group.value == "{")
            ++m_open;
        else if (group.value != "}" || m_open == 0)
            return;
        else
            --m_open;
        m_result.push_back(group);
    }
    void closeBraces() {
        for (; m_open > 0; --m_open) m_result.push_back({braceCode, "}"});
    }

    void takePoint() {
        const std::size_t first = m_at;
        bool isSound = isAuditValue(AuditValue::kReal, m_data[first].value);
        for (int step = 10; step <= 20; step += 10) {
            const bool isThere =
                m_at + 1 < m_data.size() && m_data[m_at + 1].code == m_data[first].code + step;
            if (isThere) ++m_at;
            isSound = isSound && isThere && isAuditValue(AuditValue::kReal, m_data[m_at].value);
        }
        if (isSound && !m_isPassedOver)
            for (std::size_t i = first; i <= m_at; ++i) m_result.push_back(m_data[i]);
    }

    const Groups& m_data;
    Groups m_result;
    AuditNames m_names;
    std::vector<AuditNames::Id> m_applications;
    std::size_t m_at = 0;
    int m_open = 0;
    bool m_isPassedOver = false;
};

} // namespace

void repairExtendedData(SalvagedGroups& data) {
    data = ExtendedRepair(data).run();
    std::size_t size = 0;
    for (const Group& each : data) size += sizeOf(each);
    if (size > mostBytes) data.clear();
}

} // namespace hostkit
