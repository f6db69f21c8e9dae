#include "vexoorderdesc.h"

short VEXOOrderDesc::m_nClrIdxCurrentOrder = 4;
short VEXOOrderDesc::m_nClrIdxNotOrdered = 163;
short VEXOOrderDesc::m_nClrIdxOrderedElsewhere = 9;
