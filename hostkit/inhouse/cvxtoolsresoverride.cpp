#include "cvxtoolsresoverride.h"

#include "dialogtemplate.h"
#include "moduletexts.h"

CVxToolsResOverride::CVxToolsResOverride(HINSTANCE instance)
    : m_earlier(AfxGetResourceHandle()) {
    if (instance) AfxSetResourceHandle(instance);
}

CVxToolsResOverride::CVxToolsResOverride(const CString& moduleName)
    : CVxToolsResOverride(hostkit::attachedModule(moduleName)) {}

CVxToolsResOverride::~CVxToolsResOverride() { AfxSetResourceHandle(m_earlier); }

HINSTANCE CVxToolsResOverride::current() { return AfxGetResourceHandle(); }
