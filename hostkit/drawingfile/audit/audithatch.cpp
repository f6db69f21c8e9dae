// The check of a hatch: its groups mean by their order what they are, so that one count that is wrong shifts
// all.

#include "auditing.h"

namespace hostkit {

namespace {

constexpr std::int64_t polylineFlag = 2;

/// Follows the groups from the number of paths on. What is wrong first is told; behind it nothing can be
/// said.
class HatchWalk {
public:
    HatchWalk(AuditRun& run, const AuditContent& content, const AuditRecord& record)
        : m_run(run)
        , m_content(content)
        , m_record(record)
        , m_at(content.partOf("AcDbHatch").first)
        , m_end(content.partOf("AcDbHatch").second) {}

    void walk() {
        while (m_at < m_end && code() != 91) ++m_at;
        if (m_at == m_end) return;
        m_isSound = follow(92, L"boundary paths", [this] { walkPath(); });
        while (m_isSound && m_at < m_end && code() != 78 && code() != 98) ++m_at;
        if (m_isSound && is(78)) follow(53, L"pattern lines", [this] { walkPatternLine(); });
        while (m_isSound && m_at < m_end && code() != 98) ++m_at;
        if (m_isSound && is(98)) follow(10, L"seed points", [this] { skip({10, 20, 30}); });
    }

private:
    int code() const { return m_content.groups[m_at].code; }
    bool is(int wanted) const { return m_at < m_end && code() == wanted; }
    std::int64_t value() const { return auditInteger(m_content.groups[m_at].value).value_or(0); }

    // The group says how many things follow, each of which begins with a group of its own.
    template <class Walk>
    bool follow(int first, const wchar_t* what, Walk&& walk) {
        if (m_at >= m_end) return false;
        const AuditGroup& count = m_content.groups[m_at++];
        const std::int64_t told = auditInteger(count.value).value_or(0);
        std::int64_t found = 0;
        for (; m_isSound && is(first); ++found) walk();
        if (m_isSound && found != told) {
            m_run.findings.fault(AuditCheck::kRecord, &m_record, count.line, L"group ", count.code,
                                 L" says that ", told, L" ", what, L" follow, but ", found,
                                 found == 1 ? L" does" : L" do");
            m_run.findings.remedy(count.code, found);
            m_isSound = false;
        }
        return m_isSound;
    }

    void skip(std::initializer_list<int> codes) {
        for (const int each : codes)
            if (is(each)) ++m_at;
    }

    // A group that has to stand here.
    bool reach(int wanted, const wchar_t* what) {
        if (is(wanted)) return true;
        if (m_isSound) {
            const std::uint32_t line = m_at < m_end ? m_content.groups[m_at].line : m_record.line;
            m_run.findings.fault(AuditCheck::kRecord, &m_record, line, L"group ", wanted, L", ", what,
                                 L", is missing before this");
        }
        return m_isSound = false;
    }

    void walkPath() {
        const bool isPolyline = (value() & polylineFlag) != 0;
        ++m_at;
        if (isPolyline) {
            skip({72, 73});
            if (reach(93, L"the number of vertices")) follow(10, L"vertices", [this] { skip({10, 20, 42}); });
        } else if (reach(93, L"the number of edges")) {
            follow(72, L"edges", [this] { walkEdge(); });
        }
        if (m_isSound && is(97)) follow(330, L"boundary objects", [this] { ++m_at; });
    }

    void walkEdge() {
        const std::int64_t kind = value();
        ++m_at;
        switch (kind) {
        case 1:
            return skip({10, 20, 11, 21});
        case 2:
            return skip({10, 20, 40, 50, 51, 73});
        case 3:
            return skip({10, 20, 11, 21, 40, 50, 51, 73});
        case 4:
            return walkSpline();
        default:
            m_run.findings.fault(AuditCheck::kRecord, &m_record, m_content.groups[m_at - 1].line,
                                 L"an edge is of the kind ", kind, L"; there are kinds 1 to 4");
            m_isSound = false;
        }
    }

    // Both numbers stand before the two lists.
    void walkSpline() {
        skip({94, 73, 74});
        if (!reach(95, L"the number of knots")) return;
        const AuditGroup& knots = m_content.groups[m_at++];
        if (!reach(96, L"the number of control points")) return;
        const AuditGroup& controls = m_content.groups[m_at++];
        checkList(knots, 40, L"knots");
        checkList(controls, 10, L"control points");
        // The number of fit points, where it is written; else 97 belongs to the path.
        if (is(97) && m_at + 1 < m_end && isFitOrEdge(m_content.groups[m_at + 1].code))
            follow(11, L"fit points", [this] { skip({11, 21}); });
        skip({12, 22, 13, 23});
    }
    static bool isFitOrEdge(int code) {
        return code == 11 || code == 12 || code == 13 || code == 72 || code == 97;
    }

    void checkList(const AuditGroup& count, int first, const wchar_t* what) {
        const std::int64_t told = auditInteger(count.value).value_or(0);
        std::int64_t found = 0;
        for (; is(first); ++found) first == 10 ? skip({10, 20, 42}) : skip({first});
        if (!m_isSound || found == told) return;
        m_run.findings.fault(AuditCheck::kRecord, &m_record, count.line, L"group ", count.code,
                             L" says that ", told, L" ", what, L" follow, but ", found,
                             found == 1 ? L" does" : L" do");
        m_run.findings.remedy(count.code, found);
        m_isSound = false;
    }

    void walkPatternLine() {
        skip({53, 43, 44, 45, 46});
        if (reach(79, L"the number of dashes")) follow(49, L"dashes", [this] { ++m_at; });
    }

    AuditRun& m_run;
    const AuditContent& m_content;
    const AuditRecord& m_record;
    std::size_t m_at;
    std::size_t m_end;
    bool m_isSound = true;
};

} // namespace

void auditHatch(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    HatchWalk(run, content, record).walk();
}

} // namespace hostkit
