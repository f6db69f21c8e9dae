// Header variables: an ordered store by name with typed values; leaves out their meaning.
#pragma once

#include "groupblock.h"

#include "gepnt3d.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hostkit {

class ChangeLog;

/// Variables by name without the leading $, in the order of their file. Names are compared exactly: they are
/// capital letters.
class HeaderVariables {
public:
    /// The log, where there is one, is told before a variable is set; it lives as long.
    explicit HeaderVariables(ChangeLog* changes = nullptr)
        : m_changes(changes) {}
    HeaderVariables(const HeaderVariables&) = delete;
    HeaderVariables& operator=(const HeaderVariables&) = delete;

    struct Variable {
        std::wstring name;
        GroupBlock groups;
        bool modified = false; ///< set since the drawing was read
    };

    const std::vector<Variable>& all() const { return m_variables; }
    const Variable* find(std::wstring_view name) const;
    /// Replaces or appends, without the mark "modified": what a reader calls. The variable takes further
    /// groups.
    Variable& put(std::wstring_view name);

    // The first group of the variable, or the value given, when it is missing or of another kind.

    double real(std::wstring_view name, double otherwise = 0.0) const;
    Adesk::Int64 integer(std::wstring_view name, Adesk::Int64 otherwise = 0) const;
    std::wstring text(std::wstring_view name, std::wstring_view otherwise = L"") const;
    Adesk::UInt64 handle(std::wstring_view name) const;
    AcGePoint3d point(std::wstring_view name) const;

    // Replace the variable by one group and mark it as modified. A variable that is there keeps its code, if
    // the code is of the same kind. A real or a point with values that are infinite or no numbers changes
    // nothing.

    void setReal(std::wstring_view name, double value, short code = 40);
    void setInteger(std::wstring_view name, Adesk::Int64 value, short code = 70);
    void setText(std::wstring_view name, std::wstring_view value, short code = 2);
    void setHandle(std::wstring_view name, Adesk::UInt64 value, short code = 5);
    void setPoint(std::wstring_view name, const double* coordinates, int dimension, short code = 10);

    /// As it was, the mark too, behind all others where it is gone; none: there was no such variable. Tells
    /// no log.
    void putBack(std::wstring_view name, const std::optional<Variable>& earlier);

private:
    bool first(std::wstring_view name, AcDb::GroupKind kind, AcDbDxfGroup& group, std::wstring& text) const;
    Variable& change(std::wstring_view name, AcDb::GroupKind kind, short& code);

    ChangeLog* m_changes;
    std::vector<Variable> m_variables;
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view name) const { return std::hash<std::wstring_view>()(name); }
    };
    std::unordered_map<std::wstring, std::size_t, NameHash, std::equal_to<>> m_index;
};

} // namespace hostkit
