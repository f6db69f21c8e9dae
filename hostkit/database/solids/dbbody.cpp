#include "dbbody.h"

HOSTKIT_KIT_CLASS(AcDbBody, AcDbModelerGeometry, L"BODY")
