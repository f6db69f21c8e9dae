// Stand-in for the host's module loader. Covers loading, unloading, locking and the several-documents mark of shared objects; leaves out demand loading and search paths.
#pragma once

#include "rxdefs.h"
#include "rxobject.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Loads modules and tells them of loading and leaving. A module is locked (may not be unloaded) until it
/// unlocks itself, and is for one document only until it says otherwise; both through the packet that its
/// entry receives.
class AcRxDynamicLinker : public AcRxObject {
public:
    AcRxDynamicLinker();
    /// Unloads what is still loaded, last first, locked or not.
    ~AcRxDynamicLinker() override;

    /// Loads the file, runs its DllMain for attach (where it has one) and its acrxEntryPoint with
    /// kInitAppMsg. Entry points count only when they stand in the file itself. A module that was built
    /// against another version of the kit is refused before any of its code runs. Statuses: eModuleNotFound,
    /// eModuleLoadFailed (another version, or the system's loader refused), eModuleEntryMissing (no
    /// acrxEntryPoint),
    /// eModuleAttachFailed (DllMain gave 0 or the entry did not give kRetOK). After a failure nothing of the
    /// module stays, and lastProblem() says why in words. A second load of the same file is eOk and does
    /// nothing.
    Acad::ErrorStatus loadModule(const wchar_t* file);
    /// eModuleLocked while the module is locked; eKeyNotFound when it is not loaded.
    Acad::ErrorStatus unloadModule(const wchar_t* file);
    bool isLoaded(const wchar_t* file) const;
    const std::wstring& lastProblem() const { return m_problem; }
    /// File names of the loaded modules in the order of loading.
    std::vector<std::wstring> moduleNames() const;

    /// The packet is the one that the module's entry was given; false for any other.
    bool lockApplication(void* packet) const;
    bool unlockApplication(void* packet) const;
    bool isApplicationLocked(const wchar_t* file) const;
    bool registerAppMDIAware(void* packet) const;
    bool isAppMDIAware(const wchar_t* file) const;

    /// Called behind each module that was loaded, with its classes known; a host's drawings may hold objects
    /// of them.
    void setAfterLoading(std::function<void()> hear) { m_afterLoading = std::move(hear); }

    /// Sends a message to every loaded module, in the order of loading.
    void broadcast(AcRx::AppMsgCode message);

private:
    struct Module;
    Module* find(const wchar_t* file) const;
    Module* findPacket(void* packet) const;
    Acad::ErrorStatus fail(Acad::ErrorStatus status, std::wstring problem);
    void leave(Module& module);

    std::vector<std::unique_ptr<Module>> m_modules;
    std::function<void()> m_afterLoading;
    std::wstring m_problem;
};

/// The current host's loader; null when there is no host.
AcRxDynamicLinker* acrxDynamicLinkerOfHost();
#define acrxDynamicLinker acrxDynamicLinkerOfHost()
