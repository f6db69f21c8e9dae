#include "dbsolid.h"

HOSTKIT_KIT_CLASS(AcDbSolid, AcDbEntity, L"SOLID")
