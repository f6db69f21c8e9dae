#include "registrystore.h"

#include "winreg.h"

namespace hostkit {

namespace {

// Handles are numbers of their own, far from the hives' and never used twice, so that a closed one stays
// unknown.
std::uintptr_t firstHandle() {
    static std::uintptr_t stores = 0;
    return (++stores << 40) + 0x100;
}

} // namespace

RegistryStore::RegistryStore()
    : m_nextHandle(firstHandle()) {}
RegistryStore::~RegistryStore() = default;

void RegistryStore::setReadOnly(RegistryHive hive, bool readOnly) {
    m_readOnly[static_cast<int>(hive)] = readOnly;
}

bool RegistryStore::isReadOnly(RegistryHive hive) const { return m_readOnly[static_cast<int>(hive)]; }

HKEY RegistryStore::openHandle(OpenKey key) {
    const std::uintptr_t handle = m_nextHandle;
    m_nextHandle += 4;
    m_handles.emplace(handle, std::move(key));
    return reinterpret_cast<HKEY>(handle);
}

const RegistryStore::OpenKey* RegistryStore::fromHandle(HKEY handle) const {
    const auto found = m_handles.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == m_handles.end() ? nullptr : &found->second;
}

bool RegistryStore::closeHandle(HKEY handle) {
    return m_handles.erase(reinterpret_cast<std::uintptr_t>(handle)) != 0;
}

LONG RegistryStore::applyToTree(RegistryTree& tree, const RegistryChange& change) {
    if (change.kind == RegistryChange::Kind::makeKey)
        return tree.make(change.hive, change.path) ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;

    RegistryKey* key = tree.find(change.hive, change.path);
    if (!key) return ERROR_FILE_NOT_FOUND;
    if (change.kind == RegistryChange::Kind::removeKey)
        return tree.remove(change.hive, change.path) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;

    if (change.kind == RegistryChange::Kind::removeValue) {
        const auto value = key->values.find(change.name);
        if (value == key->values.end()) return ERROR_FILE_NOT_FOUND;
        key->values.erase(value);
        return ERROR_SUCCESS;
    }
    if (change.name.size() > RegistryTree::maximumValueName) return ERROR_INVALID_PARAMETER;
    key->values[change.name] = change.value;
    return ERROR_SUCCESS;
}

} // namespace hostkit
