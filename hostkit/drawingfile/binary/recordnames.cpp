#include "recordnames.h"

#include "casefold.h"
#include "transcriptvalues.h"

namespace hostkit {
namespace {

std::string exactKey(std::string_view kind, std::string_view name) {
    std::string key(kind);
    key += '\n';
    key += name;
    return key;
}

} // namespace

std::wstring RecordNames::keyOf(std::string_view kind, std::string_view name) const {
    std::wstring key(kind.begin(), kind.end());
    key += L'\n';
    key += foldCase(m_text.decode(name));
    return key;
}

void RecordNames::add(std::string_view kind, std::string name, std::uint64_t handle) {
    if (kind == "LTYPE") {
        const std::string rule = upperCaseAscii(name);
        if (rule != "BYLAYER" && rule != "BYBLOCK") m_linetypes.push_back(handle);
    }
    // The first of two equal names counts, whichever of the two is asked.
    const auto first = m_foldedHandles.try_emplace(keyOf(kind, name), handle).first;
    m_handles.try_emplace(exactKey(kind, name), first->second);
    m_names.try_emplace(handle, std::move(name));
}

std::string_view RecordNames::nameOf(std::uint64_t handle) const {
    const auto found = m_names.find(handle);
    return found == m_names.end() ? std::string_view() : std::string_view(found->second);
}

std::uint64_t RecordNames::handleOf(std::string_view kind, std::string_view name) const {
    const auto found = m_handles.find(exactKey(kind, name));
    if (found != m_handles.end()) return found->second;
    const auto other = m_foldedHandles.find(keyOf(kind, name));
    return other == m_foldedHandles.end() ? 0 : other->second;
}

std::uint64_t RecordNames::handleOfValue(std::string_view kind, std::string_view value) const {
    if (value.find('^') == std::string_view::npos) return handleOf(kind, value);
    std::string name;
    appendUnescaped(value, name);
    return handleOf(kind, name);
}

} // namespace hostkit
