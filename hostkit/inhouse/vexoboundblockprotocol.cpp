#include "vexoboundblockprotocol.h"

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(VEXOBoundBlockProtocol, AcRxObject)

// Here, so that the class's tables stand in this library alone.
VEXOBoundBlockProtocol::~VEXOBoundBlockProtocol() = default;
