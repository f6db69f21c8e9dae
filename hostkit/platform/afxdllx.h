// Stand-in for the host's extension module support. Covers the module record and the chain of linked modules; leaves out shared run-time classes.
#pragma once

#include "windowstypes.h"

class CDynLinkLibrary;

/// The record of one extension module: kept by the module, filled by AfxInitExtensionModule.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized = FALSE;
    HMODULE hModule = nullptr;
    HMODULE hResource = nullptr;
};

/// Fills the record and marks it initialised. FALSE, with the record untouched, for a null module. A record
/// that is initialised stays as it is and the answer is TRUE, so a second attach of one module does no harm.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);
/// Takes the module's objects out of the chain, frees them (with all: those of every module) and clears the
/// mark.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);

/// One module in the chain in which resources are looked up, the newest first. Made with new by the module at
/// its attach; the chain owns it until AfxTermExtensionModule.
class CDynLinkLibrary {
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system = FALSE);
    virtual ~CDynLinkLibrary();
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    /// The newest of the chain, or null; and the one made before.
    static CDynLinkLibrary* first();
    CDynLinkLibrary* next() const { return m_next; }

    HMODULE m_hModule;
    HMODULE m_hResource;
    BOOL m_bSystem;

private:
    CDynLinkLibrary* m_next;
};
