#include "dbtrace.h"

HOSTKIT_KIT_CLASS(AcDbTrace, AcDbEntity, L"TRACE")
