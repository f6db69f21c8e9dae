// Layouts of records: visual styles and table contents.
#include "recordlayouts.h"

namespace hostkit {

const char* const visualsLayouts = R"(
@ VISUALSTYLE class O
[-21] OPAQUE
[24+] TV name
[24+] BL vstype
[24+] BS v177
[24+] B v291
[24+] BL p71
[24+] BS p71_op
[24+] BL p72
[24+] BS p72_op
[24+] BL p73
[24+] BS p73_op
[24+] BL p90
[24+] BS p90_op
[24+] BD p40
[24+] BS p40_op
[24+] BD p41
[24+] BS p41_op
[24+] CMC p63
[24+] BS p63_op
[24+] BL p74
[24+] BS p74_op
[24+] BL p91
[24+] BS p91_op
[24+] CMC p64
[24+] BS p64_op
[24+] CMC p65
[24+] BS p65_op
[24+] BL p75
[24+] BS p75_op
[24+] BL p175
[24+] BS p175_op
[24+] BD p42
[24+] BS p42_op
[24+] BL p92
[24+] BS p92_op
[24+] CMC p66
[24+] BS p66_op
[24+] BD p43
[24+] BS p43_op
[24+] BL p76
[24+] BS p76_op
[24+] BL p77
[24+] BS p77_op
[24+] BL p78
[24+] BS p78_op
[24+] CMC p67
[24+] BS p67_op
[24+] BL p79
[24+] BS p79_op
[24+] BL p170
[24+] BS p170_op
[24+] BL p171
[24+] BS p171_op
[24+] B p290
[24+] BS p290_op
[24+] BL p93
[24+] BS p93_op
[24+] BD p44
[24+] BS p44_op
[24+] BL p173
[24+] BS p173_op
[27+] B q1
[27+] BS q1_op
[27+] B q2
[27+] BS q2_op
[27+] B q3
[27+] BS q3_op
[27+] B q4
[27+] BS q4_op
[27+] B q5
[27+] BS q5_op
[27+] B q6
[27+] BS q6_op
[27+] B q7
[27+] BS q7_op
[27+] B q8
[27+] BS q8_op
[27+] B q9
[27+] BS q9_op
[27+] BL q10
[27+] BS q10_op
[27+] BD q11
[27+] BS q11_op
[27+] BD q12
[27+] BS q12_op
[27+] BL q13
[27+] BS q13_op
[27+] CMC q14
[27+] BS q14_op
[27+] BL q15
[27+] BS q15_op
[27+] BL q16
[27+] BS q16_op
[27+] CMC q17
[27+] BS q17_op
[27+] B q18
[27+] BS q18_op
[27+] BL q19
[27+] BS q19_op
[27+] BL q20
[27+] BS q20_op
[27+] BL q21
[27+] BS q21_op
[27+] B q22
[27+] BS q22_op
[27+] BL q23
[27+] BS q23_op
[27+] CMC q24
[27+] BS q24_op
[27+] BD q25
[27+] BS q25_op
[27+] BL q26
[27+] BS q26_op
[27+] TV q27
[27+] BS q27_op
[27+] B q28
[27+] BS q28_op
[27+] BD q29
[27+] BS q29_op
[27+] BD q30
[27+] BS q30_op
@ DATATABLE class O
BS dtver
BL ncols
BL nrows
TV name
for ncols:
  BL coltype
  TV colname
  if coltype == 1:
    BL longs[nrows]
  if coltype == 2:
    BD reals[nrows]
  if coltype == 3:
    TV texts[nrows]
  if coltype == 4:
    2RD points2[nrows]
  if coltype == 5:
    3RD points3[nrows]
  if coltype == 6:
    H3 owned[nrows]
  if coltype == 7:
    H4 pointers[nrows]
  if coltype == 10:
    B flags[nrows]
@ LIGHT class E
BL classver
TV name
BL lighttype
B status
CMC lcolor
B plotglyph
BD intensity
3BD position
3BD target
BL attenuation
B uselimits
BD startlimit
BD endlimit
BD hotspot
BD falloff
B shadows
BL shadowtype
BS mapsize
RC softness
@ ACDB_BLOCKREPRESENTATION_DATA class O
BS version
H5 block
@ ACDB_DYNAMICBLOCKPURGEPREVENTER_VERSION class O
BS version
H5 block
@ ACAD_EVALUATION_GRAPH class O
BL v96
BL v97
BL nnodes
for nnodes:
  BL index
  BL nflags
  BL id
  H3 expr
  BL d1
  BL d2
  BL d3
  BL d4
BL nedges
for nedges:
  BL eindex
  BL eflags
  BL tracked
  BL from
  BL to
  BL e1
  BL e2
  BL e3
  BL e4
  BL e5
@ TABLEGEOMETRY class O
BL nrows
BL ncols
BL ncells
for ncells:
  BL gflags
  BD gw
  BD gh
  H4 gref
  BL ngeo
  for ngeo:
    3BD topleft
    3BD center
    BD cw
    BD ch
    BD w
    BD h
    BL f
)";

} // namespace hostkit
