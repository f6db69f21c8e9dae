#include "afxdllx.h"

namespace {

CDynLinkLibrary* newest = nullptr;

} // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module) {
    if (!module) return FALSE;
    if (state.bInitialized) return TRUE;
    state.bInitialized = TRUE;
    state.hModule = module;
    state.hResource = module;
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all) {
    if (!state.bInitialized) return;
    for (CDynLinkLibrary* at = newest; at;) {
        CDynLinkLibrary* const next = at->next();
        if (all || at->m_hModule == state.hModule) delete at;
        at = next;
    }
    state = {};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system)
    : m_hModule(state.hModule)
    , m_hResource(state.hResource)
    , m_bSystem(system)
    , m_next(newest) {
    newest = this;
}

CDynLinkLibrary::~CDynLinkLibrary() {
    if (newest == this) newest = m_next;
    for (CDynLinkLibrary* at = newest; at; at = at->m_next)
        if (at->m_next == this) at->m_next = m_next;
}

CDynLinkLibrary* CDynLinkLibrary::first() { return newest; }
