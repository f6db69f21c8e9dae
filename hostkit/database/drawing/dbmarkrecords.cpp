#include "dbblockbegin.h"
#include "dbblockend.h"
#include "dbplhldr.h"
#include "dbsequenceend.h"

// Records that have no content of their own in memory.

HOSTKIT_KIT_CLASS(AcDbBlockBegin, AcDbEntity, L"BLOCK")
HOSTKIT_KIT_CLASS(AcDbBlockEnd, AcDbEntity, L"ENDBLK")
HOSTKIT_KIT_CLASS(AcDbSequenceEnd, AcDbEntity, L"SEQEND")
HOSTKIT_KIT_CLASS(AcDbPlaceHolder, AcDbObject, L"ACDBPLACEHOLDER")
