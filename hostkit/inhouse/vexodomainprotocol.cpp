#include "vexodomainprotocol.h"

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(VEXODomainProtocol, AcRxObject)
