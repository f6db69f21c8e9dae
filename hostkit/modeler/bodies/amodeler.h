// Stand-in for the modeller's main header: all of its classes.
#pragma once

#include "ambody.h"
#include "amerror.h"
