#include "runtimeservices.h"

namespace hostkit {
namespace {
RuntimeServices* g_current = nullptr;
}

RuntimeServices::RuntimeServices()
    : m_productKey(L"Software\\Host\\R18.0\\ACAD-8001:40C") {
    m_systemRegistry.atPut(L"DynamicLinker", &m_linker);
    m_systemRegistry.atPut(L"ClassDictionary", acrxClassDictionary());
}

RuntimeServices* RuntimeServices::current() { return g_current; }

ScopedRuntimeServices::ScopedRuntimeServices(RuntimeServices& services)
    : m_earlier(g_current) {
    g_current = &services;
}

ScopedRuntimeServices::~ScopedRuntimeServices() { g_current = m_earlier; }

} // namespace hostkit

AcRxDictionary* acrxSysRegistry() {
    return hostkit::g_current ? &hostkit::g_current->systemRegistry() : nullptr;
}

AcRxDynamicLinker* acrxDynamicLinkerOfHost() {
    return hostkit::g_current ? &hostkit::g_current->linker() : nullptr;
}

const wchar_t* acrxProductKey() {
    return hostkit::g_current ? hostkit::g_current->productKey().c_str() : L"";
}
