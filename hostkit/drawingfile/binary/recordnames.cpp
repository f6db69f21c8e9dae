#include "recordnames.h"

#include "transcriptvalues.h"

namespace hostkit {
namespace {

/// Names of records are the same in upper and lower case.
std::string keyOf(std::string_view kind, std::string_view name) {
    std::string key(kind);
    key += '\n';
    for (const char character : name)
        key += character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    return key;
}

} // namespace

void RecordNames::add(std::string_view kind, std::string name, std::uint64_t handle) {
    std::string key = keyOf(kind, name);
    if (kind == "LTYPE" && key != "LTYPE\nBYLAYER" && key != "LTYPE\nBYBLOCK") m_linetypes.push_back(handle);
    m_handles.try_emplace(std::move(key), handle);
    m_names.try_emplace(handle, std::move(name));
}

std::string_view RecordNames::nameOf(std::uint64_t handle) const {
    const auto found = m_names.find(handle);
    return found == m_names.end() ? std::string_view() : std::string_view(found->second);
}

std::uint64_t RecordNames::handleOf(std::string_view kind, std::string_view name) const {
    const auto found = m_handles.find(keyOf(kind, name));
    return found == m_handles.end() ? 0 : found->second;
}

std::uint64_t RecordNames::handleOfValue(std::string_view kind, std::string_view value) const {
    if (value.find('^') == std::string_view::npos) return handleOf(kind, value);
    std::string name;
    appendUnescaped(value, name);
    return handleOf(kind, name);
}

} // namespace hostkit
