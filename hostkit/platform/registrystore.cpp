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
    : nextHandle_(firstHandle()) {}
RegistryStore::~RegistryStore() = default;

void RegistryStore::setReadOnly(RegistryHive hive, bool readOnly) {
    readOnly_[static_cast<int>(hive)] = readOnly;
}

bool RegistryStore::isReadOnly(RegistryHive hive) const { return readOnly_[static_cast<int>(hive)]; }

HKEY RegistryStore::openHandle(OpenKey key) {
    const std::uintptr_t handle = nextHandle_;
    nextHandle_ += 4;
    handles_.emplace(handle, std::move(key));
    return reinterpret_cast<HKEY>(handle);
}

const RegistryStore::OpenKey* RegistryStore::fromHandle(HKEY handle) const {
    const auto found = handles_.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == handles_.end() ? nullptr : &found->second;
}

bool RegistryStore::closeHandle(HKEY handle) {
    return handles_.erase(reinterpret_cast<std::uintptr_t>(handle)) != 0;
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
