// Stand-in for the host's symbol table header. Covers all nine tables with their records and iterators; leaves out the abstract viewport records.
#pragma once

#include "dbblocktable.h"
#include "dbdimstyletable.h"
#include "dblayertable.h"
#include "dblinetypetable.h"
#include "dbregapptable.h"
#include "dbtextstyletable.h"
#include "dbucstable.h"
#include "dbviewporttable.h"
#include "dbviewtable.h"
