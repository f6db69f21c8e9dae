#include "dbsymtb.h"

// The typed tables differ in their records alone.

HOSTKIT_KIT_CLASS(AcDbLayerTable, AcDbSymbolTable, L"TABLE")
HOSTKIT_KIT_CLASS(AcDbTextStyleTable, AcDbSymbolTable, L"TABLE")
HOSTKIT_KIT_CLASS(AcDbLinetypeTable, AcDbSymbolTable, L"TABLE")
HOSTKIT_KIT_CLASS(AcDbViewTable, AcDbSymbolTable, L"TABLE")
HOSTKIT_KIT_CLASS(AcDbUCSTable, AcDbSymbolTable, L"TABLE")
HOSTKIT_KIT_CLASS(AcDbViewportTable, AcDbSymbolTable, L"TABLE")
HOSTKIT_KIT_CLASS(AcDbRegAppTable, AcDbSymbolTable, L"TABLE")
HOSTKIT_KIT_CLASS(AcDbDimStyleTable, AcDbSymbolTable, L"TABLE")
