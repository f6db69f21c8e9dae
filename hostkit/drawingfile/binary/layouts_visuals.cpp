// Layouts of records: visual styles and table contents.
#include "recordlayouts.h"

namespace hostkit {

const char* const visualsLayouts = R"(
@ VISUALSTYLE class O
[-21] OPAQUE
[24+] TV name ; 2
[24+] BL vstype ; 70
[24+] BS v177 ; 177
[24+] B v291 ; 291
[24+] BL p71 ; 71
[24+] BS p71_op ; 176
[24+] BL p72 ; 72
[24+] BS p72_op ; 176
[24+] BL p73 ; 73
[24+] BS p73_op ; 176
[24+] BL p90 ; 90
[24+] BS p90_op ; 176
[24+] BD p40 ; 40
[24+] BS p40_op ; 176
[24+] BD p41 ; 41
[24+] BS p41_op ; 176
[24+] CMC p63 ; 63
[24+] BS p63_op ; 176
[24+] BL p74 ; 74
[24+] BS p74_op ; 176
[24+] BL p91 ; 91
[24+] BS p91_op ; 176
[24+] CMC p64 ; 64
[24+] BS p64_op ; 176
[24+] CMC p65 ; 65
[24+] BS p65_op ; 176
[24+] BL p75 ; 75
[24+] BS p75_op ; 176
[24+] BL p175 ; 175
[24+] BS p175_op ; 176
[24+] BD p42 ; 42
[24+] BS p42_op ; 176
[24+] BL p92 ; 92
[24+] BS p92_op ; 176
[24+] CMC p66 ; 66
[24+] BS p66_op ; 176
[24+] BD p43 ; 43
[24+] BS p43_op ; 176
[24+] BL p76 ; 76
[24+] BS p76_op ; 176
[24+] BL p77 ; 77
[24+] BS p77_op ; 176
[24+] BL p78 ; 78
[24+] BS p78_op ; 176
[24+] CMC p67 ; 67
[24+] BS p67_op ; 176
[24+] BL p79 ; 79
[24+] BS p79_op ; 176
[24+] BL p170 ; 170
[24+] BS p170_op ; 176
[24+] BL p171 ; 171
[24+] BS p171_op ; 176
[24+] B p290 ; 290
[24+] BS p290_op ; 176
[24+] BL p93 ; 93
[24+] BS p93_op ; 176
[24+] BD p44 ; 44
[24+] BS p44_op ; 176
[24+] BL p173 ; 173
[24+] BS p173_op ; 176
[27+] B q1
[27+] BS q1_op ; 176
[27+] B q2
[27+] BS q2_op ; 176
[27+] B q3
[27+] BS q3_op ; 176
[27+] B q4
[27+] BS q4_op ; 176
[27+] B q5
[27+] BS q5_op ; 176
[27+] B q6
[27+] BS q6_op ; 176
[27+] B q7
[27+] BS q7_op ; 176
[27+] B q8
[27+] BS q8_op ; 176
[27+] B q9
[27+] BS q9_op ; 176
[27+] BL q10
[27+] BS q10_op ; 176
[27+] BD q11
[27+] BS q11_op ; 176
[27+] BD q12
[27+] BS q12_op ; 176
[27+] BL q13
[27+] BS q13_op ; 176
[27+] CMC q14
[27+] BS q14_op ; 176
[27+] BL q15
[27+] BS q15_op ; 176
[27+] BL q16
[27+] BS q16_op ; 176
[27+] CMC q17
[27+] BS q17_op ; 176
[27+] B q18
[27+] BS q18_op ; 176
[27+] BL q19
[27+] BS q19_op ; 176
[27+] BL q20
[27+] BS q20_op ; 176
[27+] BL q21
[27+] BS q21_op ; 176
[27+] B q22
[27+] BS q22_op ; 176
[27+] BL q23
[27+] BS q23_op ; 176
[27+] CMC q24
[27+] BS q24_op ; 176
[27+] BD q25
[27+] BS q25_op ; 176
[27+] BL q26
[27+] BS q26_op ; 176
[27+] TV q27
[27+] BS q27_op ; 176
[27+] B q28
[27+] BS q28_op ; 176
[27+] BD q29
[27+] BS q29_op ; 176
[27+] BD q30
[27+] BS q30_op ; 176
@ DATATABLE class O
BS dtver ; 70
BL ncols ; 90
BL nrows ; 91
TV name ; 1
for ncols:
  BL coltype ; 92
  TV colname ; 2
  if coltype == 1:
    BL v[nrows] ; 93
  if coltype == 2:
    BD v[nrows] ; 40
  if coltype == 3:
    TV v[nrows] ; 3
  if coltype == 4:
    2RD v[nrows] ; 10
  if coltype == 5:
    3RD v[nrows] ; 11
  if coltype == 6:
    H3 v[nrows] ; 360
  if coltype == 7:
    H4 v[nrows] ; 330
  if coltype == 10:
    B v[nrows] ; 71
@ LIGHT class E
BL classver ; 90
TV name ; 1
BL lighttype ; 70
B status ; 290
CMC lcolor ; 63
B plotglyph ; 291
BD intensity ; 40
3BD position ; 10
3BD target ; 11
BL attenuation ; 72
B uselimits ; 292
BD startlimit ; 41
BD endlimit ; 42
BD hotspot ; 50
BD falloff ; 51
B shadows ; 293
BL shadowtype ; 73
BS mapsize ; 91
RC softness ; 280
@ ACDB_BLOCKREPRESENTATION_DATA class O
BS version ; 70
H5 block ; 340
@ ACDB_DYNAMICBLOCKPURGEPREVENTER_VERSION class O
BS version ; 70
H5 block
@ ACAD_EVALUATION_GRAPH class O
BL v96 ; 96
BL v97 ; 97
BL nnodes
for nnodes:
  BL index ; 91
  BL nflags ; 93
  BL id ; 95
  H3 expr ; 360
  BL d1 ; 92
  BL d2
  BL d3
  BL d4
BL nedges
for nedges:
  BL eindex ; 92
  BL eflags ; 93
  BL tracked ; 94
  BL from ; 91
  BL to ; 91
  BL e1 ; 92
  BL e2
  BL e3
  BL e4
  BL e5
@ TABLEGEOMETRY class O
BL nrows ; 90
BL ncols ; 91
BL ncells ; 92
for ncells:
  BL gflags ; 93
  BD gw ; 40
  BD gh ; 41
  H4 gref ; 330
  BL ngeo ; 94
  for ngeo:
    3BD topleft ; 10
    3BD center ; 11
    BD cw ; 43
    BD ch ; 44
    BD w ; 45
    BD h ; 46
    BL f ; 95
)";

} // namespace hostkit
