// Stands for the platform's registrar module, so that a call of it can be seen. Built once with its function
// and once without (REGISTRAR_FUNCTION).
#include "windowstypes.h"

struct IRegistrar;

extern "C" HRESULT REGISTRAR_FUNCTION(HINSTANCE instance, const wchar_t* resource, BOOL registerIt,
                                      void* replacements, IRegistrar* registrar) {
    if (!instance || !resource || replacements || registrar) return E_INVALIDARG;
    return registerIt ? S_FALSE : S_OK;
}
