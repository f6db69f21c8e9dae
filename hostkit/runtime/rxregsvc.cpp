#include "rxregsvc.h"

#include "adsdef.h"
#include "rxdlinkr.h"

AcArray<wchar_t*>* acrxLoadedApps() {
    const AcRxDynamicLinker* linker = acrxDynamicLinker;
    if (!linker) return nullptr;
    auto* names = new AcArray<wchar_t*>;
    for (const std::wstring& name : linker->moduleNames()) names->append(acutNewString(name.c_str()));
    return names;
}
