// Stand-in for the host's application framework, base. Covers text, string collections and files; leaves out run-time classes and serialisation.
#pragma once

#include "cfile.h"
#include "cfilefind.h"
#include "cstring.h"
#include "cstringlist.h"
#include "windows.h"
