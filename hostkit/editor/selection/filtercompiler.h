// Reading of a filter's list: groups, operators and groupings into conditions; leaves out running them.
#pragma once

#include "filtercondition.h"
#include "filterfields.h"
#include "selectionfilter.h"

#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

struct FilterProgram {
    GroupTests tests;
    ConditionPointer condition;
};

/// Reads one list.
class FilterCompiler {
public:
    FilterCompiler(const resbuf* list, const AcDbDatabase& database)
        : m_at(list)
        , m_database(database) {}

    /// Null where the list is no filter; reason() says why.
    std::unique_ptr<const FilterProgram> compile();
    const std::wstring& reason() const { return m_reason; }

private:
    struct Grouping;
    static const Grouping groupings[];
    /// How a group and an entity's value compare; without relations the group has no operator.
    struct Operator {
        std::wstring_view text;
        std::vector<Relation> relations;
    };

    /// What stands up to the closing operator, or up to the list's end where there is none to wait for. False
    /// after a failure, as all below.
    bool readOperands(const Grouping* within, int depth, Conditions& operands);
    /// Of the closing operator tells that it is the end.
    bool readOperator(const Grouping* within, int depth, Conditions& operands, bool& isEnd);
    bool readGrouping(const Grouping& grouping, int depth, Conditions& operands);
    bool readRelations(std::wstring_view text, Conditions& operands);
    bool readApplications(Conditions& operands);
    bool readApplication(const wchar_t* name, Conditions& operands);
    bool readGroup(const Operator& how, Conditions& operands);
    bool readValue(const resbuf& group, short code, const Operator& how, ValueTest& test);
    bool readNumber(const resbuf& group, short code, const Operator& how, ValueTest& test);
    bool readPoint(const resbuf& group, short code, const Operator& how, ValueTest& test);
    bool fail(std::wstring reason);
    bool failUnsuited(short code, const Operator& how);

    const resbuf* m_at;
    const AcDbDatabase& m_database;
    std::unique_ptr<FilterProgram> m_program = std::make_unique<FilterProgram>();
    std::wstring m_reason;
};

} // namespace hostkit
