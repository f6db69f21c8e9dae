#include "vexoboundblockprotocol.h"

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(VEXOBoundBlockProtocol, AcRxObject)
