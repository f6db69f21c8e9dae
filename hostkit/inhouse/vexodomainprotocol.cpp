#include "vexodomainprotocol.h"

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(VEXODomainProtocol, AcRxObject)

// Here, so that the class's tables stand in this library alone.
VEXODomainProtocol::~VEXODomainProtocol() = default;
