// Stand-in for the host's entities header. Covers lines, arcs, circles, points, texts, insertions, old polylines,
// solids, traces, faces and attributes; leaves out meshes.
#pragma once

#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "db3dpolyline.h"
#include "db3dvertex.h"
#include "dbarc.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblockbegin.h"
#include "dbblockend.h"
#include "dbblockreference.h"
#include "dbcircle.h"
#include "dbface.h"
#include "dbline.h"
#include "dbminsert.h"
#include "dbpoint.h"
#include "dbsequenceend.h"
#include "dbsolid.h"
#include "dbtext.h"
#include "dbtrace.h"
