// Registry service: stores of keys and values with rights and handles; leaves out security.
#pragma once

#include "registrytree.h"
#include "windowstypes.h"

#include <map>
#include <memory>

namespace hostkit {

/// One change to the registry, told so that it can be made again on a newer state.
struct RegistryChange {
    enum class Kind { makeKey, removeKey, setValue, removeValue };
    Kind kind;
    RegistryHive hive;
    std::wstring path;
    std::wstring name{};
    RegistryValue value{};
};

/// Where a host's registry lives. The functions of winreg.h are the way to use it; a store says how its state
/// is read and how one change is made for good.
class RegistryStore {
public:
    struct OpenKey {
        RegistryHive hive;
        std::wstring path;
        REGSAM access;
    };

    RegistryStore();
    virtual ~RegistryStore();
    RegistryStore(const RegistryStore&) = delete;
    RegistryStore& operator=(const RegistryStore&) = delete;

    /// The state as it is now.
    virtual const RegistryTree& read() = 0;
    /// Makes the change as a whole or not at all: ERROR_SUCCESS, or the reason why not. A read-only hive was
    /// refused before.
    virtual LONG apply(const RegistryChange& change) = 0;

    /// True where changes are still there for the next process.
    virtual bool isLasting() const = 0;

    /// A read-only hive refuses every change with ERROR_ACCESS_DENIED, as a machine hive does to an ordinary
    /// user.
    void setReadOnly(RegistryHive hive, bool readOnly);
    bool isReadOnly(RegistryHive hive) const;

    /// Open keys. A handle stays known until it is closed; after that it is told from every open one.
    HKEY openHandle(OpenKey key);
    const OpenKey* fromHandle(HKEY handle) const;
    bool closeHandle(HKEY handle);
    std::size_t openHandleCount() const { return m_handles.size(); }

protected:
    /// What apply does to a tree in memory: ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED (a key
    /// with sub-keys), ERROR_INVALID_PARAMETER.
    static LONG applyToTree(RegistryTree& tree, const RegistryChange& change);

private:
    std::map<std::uintptr_t, OpenKey> m_handles;
    std::uintptr_t m_nextHandle;
    bool m_readOnly[registryHiveCount] = {};
};

/// A store that lives as long as the object.
class MemoryRegistryStore final : public RegistryStore {
public:
    const RegistryTree& read() override { return m_tree; }
    bool isLasting() const override { return false; }
    LONG apply(const RegistryChange& change) override { return applyToTree(m_tree, change); }

private:
    RegistryTree m_tree;
};

} // namespace hostkit
