// Stand-in for the host's run-time part. Covers its system registry, module loader and product key, and which host is current; leaves out demand loading.
#pragma once

#include "rxdict.h"
#include "rxdlinkr.h"

#include <string>

namespace hostkit {

/// One host's services by name. Modules are unloaded when it goes.
class RuntimeServices {
public:
    RuntimeServices();
    RuntimeServices(const RuntimeServices&) = delete;
    RuntimeServices& operator=(const RuntimeServices&) = delete;

    AcRxDictionary& systemRegistry() { return m_systemRegistry; }
    AcRxDynamicLinker& linker() { return m_linker; }
    const std::wstring& productKey() const { return m_productKey; }
    void setProductKey(std::wstring key) { m_productKey = std::move(key); }

    static RuntimeServices* current();

private:
    friend class ScopedRuntimeServices;
    AcRxDictionary m_systemRegistry;
    std::wstring m_productKey;
    AcRxDynamicLinker m_linker;
};

/// Makes services the current ones for a scope; the earlier ones come back at its end.
class ScopedRuntimeServices {
public:
    explicit ScopedRuntimeServices(RuntimeServices& services);
    ~ScopedRuntimeServices();
    ScopedRuntimeServices(const ScopedRuntimeServices&) = delete;
    ScopedRuntimeServices& operator=(const ScopedRuntimeServices&) = delete;

private:
    RuntimeServices* m_earlier;
};

} // namespace hostkit

/// The registry key of the host's product below the machine hive; never null, empty when there is no host.
const wchar_t* acrxProductKey();
