#include "vexotools.h"

#include "afxdllx.h"
#include "cvxlogentry.h"
#include "moduleinstance.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "vexoorderdesc.h"
#include "vexoregistrytools.h"

namespace {

HINSTANCE g_instance = nullptr;
AFX_EXTENSION_MODULE g_extensionModule;

struct OrderColor {
    const wchar_t* key;
    short* value;
    short builtIn;
};

// The last key is spelled against its member's name: installations in the field hold their setting under it.
const OrderColor orderColors[] = {
    {L"OrderDescClrIdxCurrentOrder", &VEXOOrderDesc::m_nClrIdxCurrentOrder, 4},
    {L"OrderDescClrIdxNotOrdered", &VEXOOrderDesc::m_nClrIdxNotOrdered, 163},
    {L"OrderDescClrIdxOrderedElswhere", &VEXOOrderDesc::m_nClrIdxOrderedElsewhere, 9},
};

// A value that is absent is written, so that the user's settings hold the built-in from the first run on. A
// write that fails leaves the built-in in force until the next start.
void readOrderColor(const OrderColor& color) {
    unsigned long value = 0;
    if (VEXORegistryTools::GetRegistryValueAdv(L"Settings", color.key, value, HKEY_CURRENT_USER)) {
        *color.value = static_cast<short>(value);
        return;
    }
    *color.value = color.builtIn;
    const auto builtIn = static_cast<unsigned long>(color.builtIn);
    VEXORegistryTools::SetRegistryValueAdv(L"Settings", color.key, builtIn, HKEY_CURRENT_USER);
}

BOOL attach(HINSTANCE instance) {
    g_instance = instance;
    if (!AfxInitExtensionModule(g_extensionModule, instance)) return 0;
    new CDynLinkLibrary(g_extensionModule, 0); // the chain of modules owns it
    for (const OrderColor& color : orderColors) readOrderColor(color);
    return 1;
}

AcRxDynamicLinker* dynamicLinker() {
    AcRxDictionary* registry = acrxSysRegistry();
    return registry ? static_cast<AcRxDynamicLinker*>(registry->at(L"DynamicLinker")) : nullptr;
}

} // namespace

HINSTANCE vexo::moduleInstance() { return g_instance; }

extern "C" const wchar_t* getModulePromptsProjectName() { return L"VEXOTOOLS"; }

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    CVxLogEntry entry(L"acrxEntryPoint");
    if (message == AcRx::kInitAppMsg) {
        if (AcRxDynamicLinker* linker = dynamicLinker()) linker->unlockApplication(packet);
        if (AcRxDynamicLinker* linker = dynamicLinker()) linker->registerAppMDIAware(packet);
    }
    return AcRx::kRetOK;
}

extern "C" BOOL DllMain(HINSTANCE instance, DWORD reason, void* /*reserved*/) {
    CVxLogEntry entry(L"DllMain");
    constexpr DWORD processAttach = 1;
    constexpr DWORD processDetach = 0;
    if (reason == processAttach) return attach(instance);
    if (reason == processDetach) {
        AfxTermExtensionModule(g_extensionModule, FALSE);
        g_instance = nullptr;
    }
    return 1;
}
