#include "filtercompiler.h"

#include "casefold.h"
#include "groupcodes.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

using AcDb::GroupKind;

namespace {

std::wstring groupName(short code) { return L"group " + std::to_wstring(code); }
std::wstring quoted(std::wstring_view text) { return L'"' + std::wstring(text) + L'"'; }

std::wstring_view withoutBlanks(std::wstring_view text) {
    while (!text.empty() && isWhiteSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isWhiteSpace(text.back())) text.remove_suffix(1);
    return text;
}

/// Codes of an entity's own groups whose values can be compared.
bool canBeAsked(short code) {
    return code >= 0 && code < commentCode && AcDb::groupKind(code) != GroupKind::kBinary;
}

Adesk::Int64 integerOf(const resbuf& group, GroupKind kind) {
    if (kind == GroupKind::kInt64) return group.resval.mnInt64;
    return kind == GroupKind::kInt32 ? group.resval.rlong : group.resval.rint;
}

} // namespace

struct FilterCompiler::Grouping {
    std::wstring_view opening;
    std::wstring_view closing;
    Joining joining;
    std::size_t operands; ///< 0: one or more
};

const FilterCompiler::Grouping FilterCompiler::groupings[] = {
    {L"<and", L"and>", Joining::kAll, 0},
    {L"<or", L"or>", Joining::kAny, 0},
    {L"<xor", L"xor>", Joining::kEitherOne, 2},
    {L"<not", L"not>", Joining::kNone, 1},
};

bool FilterCompiler::fail(std::wstring reason) {
    m_reason = std::move(reason);
    return false;
}

bool FilterCompiler::failUnsuited(short code, const Operator& how) {
    return fail(L"the operator " + quoted(how.text) + L" does not suit " + groupName(code));
}

std::unique_ptr<const FilterProgram> FilterCompiler::compile() {
    Conditions operands;
    if (!readOperands(nullptr, 0, operands)) return nullptr;
    m_program->condition = joined(Joining::kAll, std::move(operands));
    return std::move(m_program);
}

bool FilterCompiler::readOperands(const Grouping* within, int depth, Conditions& operands) {
    if (depth > SelectionFilter::deepestNesting) return fail(L"the groupings are nested too deeply");
    while (m_at) {
        bool isEnd = false;
        bool isRead;
        if (m_at->restype == operatorCode)
            isRead = readOperator(within, depth, operands, isEnd);
        else if (m_at->restype == extendedDataCode || m_at->restype == applicationCode)
            isRead = readApplications(operands);
        else
            isRead = readGroup({}, operands);
        if (!isRead || isEnd) return isRead;
    }
    return !within || fail(quoted(within->opening) + L" is not closed");
}

bool FilterCompiler::readOperator(const Grouping* within, int depth, Conditions& operands, bool& isEnd) {
    if (!m_at->resval.rstring) return fail(L"an operator has no text");
    const std::wstring_view word = withoutBlanks(m_at->resval.rstring);
    m_at = m_at->rbnext;
    for (const Grouping& each : groupings) {
        if (equalFolded(word, each.opening)) return readGrouping(each, depth, operands);
        if (!equalFolded(word, each.closing)) continue;
        isEnd = within == &each;
        return isEnd || fail(quoted(word) + L" closes nothing that is open there");
    }
    return readRelations(word, operands);
}

bool FilterCompiler::readGrouping(const Grouping& grouping, int depth, Conditions& operands) {
    Conditions own;
    if (!readOperands(&grouping, depth + 1, own)) return false;
    if (own.empty()) return fail(quoted(grouping.opening) + L" has nothing in it");
    if (grouping.operands != 0 && own.size() != grouping.operands)
        return fail(quoted(grouping.opening) + L" takes " + std::to_wstring(grouping.operands) +
                    (grouping.operands == 1 ? L" operand, not " : L" operands, not ") +
                    std::to_wstring(own.size()));
    operands.push_back(joined(grouping.joining, std::move(own)));
    return true;
}

bool FilterCompiler::readRelations(std::wstring_view text, Conditions& operands) {
    Operator how{text, {}};
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(L',', begin), text.size());
        const std::optional<Relation> relation = relationOf(withoutBlanks(text.substr(begin, end - begin)));
        if (!relation) return fail(quoted(text) + L" is no operator");
        how.relations.push_back(*relation);
        begin = end + 1;
    }
    if (!m_at || m_at->restype < 0 || m_at->restype == applicationCode)
        return fail(L"the operator " + quoted(text) + L" has no group behind it");
    return readGroup(how, operands);
}

// Those behind a group -3 are one operand, one without it stands by itself.
bool FilterCompiler::readApplications(Conditions& operands) {
    const resbuf& head = *m_at;
    m_at = m_at->rbnext;
    if (head.restype == applicationCode) return readApplication(head.resval.rstring, operands);
    Conditions own;
    if (head.resval.rstring && !readApplication(head.resval.rstring, own)) return false;
    for (; m_at && m_at->restype == applicationCode; m_at = m_at->rbnext)
        if (!readApplication(m_at->resval.rstring, own)) return false;
    if (own.empty()) return fail(groupName(extendedDataCode) + L" names no application");
    operands.push_back(joined(Joining::kAll, std::move(own)));
    return true;
}

bool FilterCompiler::readApplication(const wchar_t* name, Conditions& operands) {
    if (!name) return fail(L"an application has no name");
    operands.push_back(applicationCondition(WildcardPattern(name)));
    return true;
}

bool FilterCompiler::readGroup(const Operator& how, Conditions& operands) {
    const resbuf& group = *m_at;
    m_at = m_at->rbnext;
    const short code = group.restype == RTDXF0 ? short{0} : group.restype;
    if (!canBeAsked(code)) return fail(groupName(code) + L" cannot be asked for");
    ValueTest test = IntegerTest();
    if (!readValue(group, code, how, test)) return false;
    ConditionPointer condition = fieldCondition(code, test, m_database);
    if (!condition) condition = groupCondition(m_program->tests.add(code, std::move(test)));
    operands.push_back(std::move(condition));
    return true;
}

bool FilterCompiler::readValue(const resbuf& group, short code, const Operator& how, ValueTest& test) {
    const GroupKind kind = AcDb::groupKind(code);
    if (kind == GroupKind::kPoint) return readPoint(group, code, how, test);
    if (kind != GroupKind::kText && kind != GroupKind::kHandle) return readNumber(group, code, how, test);
    if (!how.relations.empty()) return failUnsuited(code, how);
    if (!group.resval.rstring) return fail(groupName(code) + L" has no text");
    test = WildcardPattern(group.resval.rstring);
    return true;
}

bool FilterCompiler::readNumber(const resbuf& group, short code, const Operator& how, ValueTest& test) {
    if (how.relations.size() > 1) return failUnsuited(code, how);
    const Relation relation = how.relations.empty() ? Relation::kEqual : how.relations.front();
    const GroupKind kind = AcDb::groupKind(code);
    if (kind != GroupKind::kReal) {
        test = IntegerTest{integerOf(group, kind), relation};
        return true;
    }
    if (isOfBits(relation)) return failUnsuited(code, how);
    if (!std::isfinite(group.resval.rreal)) return fail(groupName(code) + L" has a value that is no number");
    test = RealTest{group.resval.rreal, relation};
    return true;
}

bool FilterCompiler::readPoint(const resbuf& group, short code, const Operator& how, ValueTest& test) {
    const double* const point = group.resval.rpoint;
    if (!std::all_of(point, point + 3, [](double value) { return std::isfinite(value); }))
        return fail(groupName(code) + L" has a coordinate that is no number");
    if (how.relations.empty()) {
        test = PointTest{{point[0], point[1], point[2]}};
        return true;
    }
    if (how.relations.size() > 3 || std::any_of(how.relations.begin(), how.relations.end(), isOfBits))
        return failUnsuited(code, how);
    CoordinatesTest coordinates;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const bool isCompared = axis < how.relations.size();
        coordinates.coordinates[axis] = {point[axis], isCompared ? how.relations[axis] : Relation::kAnything};
    }
    test = coordinates;
    return true;
}

} // namespace hostkit
