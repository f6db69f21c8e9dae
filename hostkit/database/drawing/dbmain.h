// Stand-in for the host's main database header. Covers objects, entities, extents, opening and the drawing; leaves out the concrete kinds, which have headers of their own.
#pragma once

#include "dbdatabase.h"
#include "dbent.h"
#include "dbextents.h"
#include "dbmaindefs.h"
#include "dbobject.h"
#include "dbopen.h"
