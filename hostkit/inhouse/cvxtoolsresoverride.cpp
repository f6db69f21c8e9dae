#include "cvxtoolsresoverride.h"

#include "moduletexts.h"

namespace {
// The host's one thread opens and closes these scopes in order.
HINSTANCE g_current = nullptr;
} // namespace

CVxToolsResOverride::CVxToolsResOverride(HINSTANCE instance)
    : m_earlier(g_current) {
    if (instance) g_current = instance;
}

CVxToolsResOverride::CVxToolsResOverride(const CString& moduleName)
    : CVxToolsResOverride(hostkit::attachedModule(moduleName)) {}

CVxToolsResOverride::~CVxToolsResOverride() { g_current = m_earlier; }

HINSTANCE CVxToolsResOverride::current() { return g_current; }
