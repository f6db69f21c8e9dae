#include "headervariables.h"

#include "changelog.h"

#include <algorithm>
#include <cmath>

using AcDb::GroupKind;

namespace hostkit {

const HeaderVariables::Variable* HeaderVariables::find(std::wstring_view name) const {
    const auto found = m_index.find(name);
    return found == m_index.end() ? nullptr : &m_variables[found->second];
}

HeaderVariables::Variable& HeaderVariables::put(std::wstring_view name) {
    const auto [place, isNew] = m_index.try_emplace(std::wstring(name), m_variables.size());
    if (isNew) m_variables.push_back({std::wstring(name), {}, false});
    Variable& variable = m_variables[place->second];
    variable.groups.clear();
    return variable;
}

// Integers of different widths and truth values stand for each other.
static bool isOfKind(GroupKind found, GroupKind wanted) {
    const auto isInteger = [](GroupKind kind) {
        return kind == GroupKind::kInt16 || kind == GroupKind::kInt32 || kind == GroupKind::kInt64 ||
               kind == GroupKind::kBool;
    };
    return found == wanted || (isInteger(found) && isInteger(wanted));
}

bool HeaderVariables::first(std::wstring_view name, GroupKind kind, AcDbDxfGroup& group,
                            std::wstring& text) const {
    const Variable* variable = find(name);
    if (!variable) return false;
    GroupWalker walker(variable->groups);
    if (!walker.next(group) || !isOfKind(group.kind, kind)) return false;
    text = group.text;
    group.text = {};
    return true;
}

double HeaderVariables::real(std::wstring_view name, double otherwise) const {
    AcDbDxfGroup group;
    std::wstring text;
    return first(name, GroupKind::kReal, group, text) ? group.real : otherwise;
}

Adesk::Int64 HeaderVariables::integer(std::wstring_view name, Adesk::Int64 otherwise) const {
    AcDbDxfGroup group;
    std::wstring text;
    return first(name, GroupKind::kInt16, group, text) ? group.integer : otherwise;
}

std::wstring HeaderVariables::text(std::wstring_view name, std::wstring_view otherwise) const {
    AcDbDxfGroup group;
    std::wstring text;
    return first(name, GroupKind::kText, group, text) ? text : std::wstring(otherwise);
}

Adesk::UInt64 HeaderVariables::handle(std::wstring_view name) const {
    AcDbDxfGroup group;
    std::wstring text;
    return first(name, GroupKind::kHandle, group, text) ? group.handle() : 0;
}

AcGePoint3d HeaderVariables::point(std::wstring_view name) const {
    AcDbDxfGroup group;
    std::wstring text;
    if (!first(name, GroupKind::kPoint, group, text)) return {};
    return {group.point[0], group.point[1], group.point[2]};
}

HeaderVariables::Variable& HeaderVariables::change(std::wstring_view name, GroupKind kind, short& code) {
    if (m_changes) m_changes->headerChanging(*this, name);
    if (const Variable* old = find(name)) {
        GroupWalker walker(old->groups);
        AcDbDxfGroup group;
        if (walker.next(group) && isOfKind(group.kind, kind)) code = group.code;
    }
    Variable& variable = put(name);
    variable.modified = true;
    return variable;
}

void HeaderVariables::putBack(std::wstring_view name, const std::optional<Variable>& earlier) {
    const auto found = m_index.find(name);
    if (found == m_index.end()) {
        if (!earlier) return;
        m_variables.push_back(*earlier);
        m_index.emplace(earlier->name, m_variables.size() - 1);
        return;
    }
    const std::size_t place = found->second;
    if (earlier) {
        m_variables[place] = *earlier;
        return;
    }
    m_variables.erase(m_variables.begin() + static_cast<std::ptrdiff_t>(place));
    m_index.erase(found);
    for (auto& [each, index] : m_index)
        if (index > place) --index;
}

void HeaderVariables::setReal(std::wstring_view name, double value, short code) {
    if (std::isfinite(value)) change(name, GroupKind::kReal, code).groups.appendReal(code, value);
}

void HeaderVariables::setInteger(std::wstring_view name, Adesk::Int64 value, short code) {
    change(name, GroupKind::kInt16, code).groups.appendInteger(code, value);
}

void HeaderVariables::setText(std::wstring_view name, std::wstring_view value, short code) {
    change(name, GroupKind::kText, code).groups.appendText(code, value);
}

void HeaderVariables::setHandle(std::wstring_view name, Adesk::UInt64 value, short code) {
    change(name, GroupKind::kHandle, code).groups.appendHandle(code, value);
}

void HeaderVariables::setPoint(std::wstring_view name, const double* coordinates, int dimension, short code) {
    const bool isPoint =
        std::all_of(coordinates, coordinates + dimension, [](double value) { return std::isfinite(value); });
    if (isPoint) change(name, GroupKind::kPoint, code).groups.appendPoint(code, coordinates, dimension);
}

} // namespace hostkit
