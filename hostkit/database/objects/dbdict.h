// Stand-in for the host's dictionary header. Covers AcDbDictionary and its iterator; leaves out nothing.
#pragma once

#include "dbdictionary.h"
