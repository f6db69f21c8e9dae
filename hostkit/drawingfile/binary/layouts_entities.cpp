// Layouts of records: common parts, texts, inserts, polylines, simple shapes.
#include "recordlayouts.h"

namespace hostkit {

const char* const entitiesLayouts = R"(
@ COMMON-ENTITY part P
[15-21] RL bitsize
HD handle ; 5
EED eed
B has_graphic
if has_graphic:
  [-21] RL gsize ; 92
  [24+] BLL gsize ; 160
  X gsize graphic ; 310
BB entmode ; 67 0
BL nreact
[18+] B noxdic ; 1
[27+] B hasds ; 1
[-15] B nolinks ; 1
[-15] CMC color ; 62
[18+] ENC color ; 62 420 430 440
BD ltscale ; 48
BB ltflags ; 6 0
[21+] BB matflags ; 0
[21+] RC shadow ; 284
BB psflags ; 0
[24+] B has_fullvs
[24+] B has_facevs
[24+] B has_edgevs
BS invisible ; 60
RC lweight ; 370
H4 owner ? entmode==0 ; 330
H4 reactors[nreact] ; 102
[-15] H3 xdic ; 102
[18+] H3 xdic ? !noxdic
[-15] H4 prev ? !nolinks
[-15] H4 next ? !nolinks
[18+] H5 colorbook ? color_ref ; 430
H5 layer ; 8
H5 ltype ? ltflags==3 ; 6
[21+] H5 material ? matflags==3 ; 347
H5 plotstyle ? psflags==3 ; 390
[24+] H5 fullvs ? has_fullvs ; 348
[24+] H5 facevs ? has_facevs
[24+] H5 edgevs ? has_edgevs
@ COMMON-OBJECT part P
[15-21] RL bitsize
HD handle ; 5
EED eed
BL nreact
[18+] B noxdic
[27+] B hasds
H4 owner ; 330
H4 reactors[nreact]
[-15] H3 xdic
[18+] H3 xdic ? !noxdic
@ TABLE-ENTRY part P
TV name ; 2
[-18] B f64 ; 70
[-18] BS xrefindex1
[-18] B xdep ; 70
[21+] BS xrefflags
@ TEXT-DATA part P
RC df
RD elevation ? !(df & 1) ; 30
2RD ins ; 10 20
2DD align(ins) ? !(df & 2) ; 11 21
BE ext ; 210
BT thickness ; 39
RD oblique ? !(df & 4) ; 51
RD rotation ? !(df & 8) ; 50
RD height ; 40
RD wfactor ? !(df & 16) ; 41
TV text ; 1
BS generation ? !(df & 32) ; 71
BS halign ? !(df & 64) ; 72
BS valign ? !(df & 128) ; 73
H5 style ; 7
@ TEXT 1 E
use TEXT-DATA
@ ATTRIB 2 E
use TEXT-DATA
[24+] RC version ; 280
[32+] RC atttype ; 1
[32+] if atttype > 1:
  use EMBEDDED-MTEXT
TV tag ; 2
BS fieldlen ; 73
RC flags ; 70
[21+] B lockpos ; 280
@ ATTDEF 3 E
use TEXT-DATA
[24+] RC version
[32+] RC atttype
[32+] if atttype > 1:
  use EMBEDDED-MTEXT
TV tag
BS fieldlen
RC flags
[21+] B lockpos
[24+] RC version2
TV prompt ; 3
@ EMBEDDED-MTEXT part P
use ENTITY-TAIL
use MTEXT-DATA
BS annosize
if annosize > 0:
  X annosize annodata
  H5 annoapp
  BS annoflag ; 0
@ ENTITY-TAIL part P
BB entmode
BL nreact
[18+] B noxdic
[27+] B hasds
[-15] B nolinks
[-15] CMC color
[18+] ENC color
BD ltscale
BB ltflags
[21+] BB matflags
[21+] RC shadow
BB psflags
[24+] B has_fullvs
[24+] B has_facevs
[24+] B has_edgevs
BS invisible
RC lweight
H4 owner ? entmode==0
H4 reactors[nreact]
[-15] H3 xdic
[18+] H3 xdic ? !noxdic
[-15] H4 prev ? !nolinks
[-15] H4 next ? !nolinks
[18+] H5 colorbook ? color_ref
H5 layer
H5 ltype ? ltflags==3
[21+] H5 material ? matflags==3
H5 plotstyle ? psflags==3
[24+] H5 fullvs ? has_fullvs
[24+] H5 facevs ? has_facevs
[24+] H5 edgevs ? has_edgevs
@ BLOCK 4 E
TV name ; 2
@ ENDBLK 5 E
@ SEQEND 6 E
@ INSERT 7 E
use INSERT-DATA
use INSERT-HANDLES
@ MINSERT 8 E
use INSERT-DATA
BS ncols ; 70
BS nrows ; 71
BD colspace ; 44
BD rowspace ; 45
use INSERT-HANDLES
@ INSERT-DATA part P
3BD ins ; 10
BB sf
if sf == 0:
  RD sx ; 41
  DD sy(sx) ; 42
  DD sz(sx) ; 43
if sf == 1:
  DD sy(1.0) ; 41
  DD sz(1.0)
if sf == 2:
  RD sx ; 42 43
BD rotation ; 50
3BD ext ; 210
B hasattr ; 66
[18+] BL nowned ? hasattr
@ INSERT-HANDLES part P
H5 block ; 2
if hasattr:
  [-15] H4 firstattrib
  [-15] H4 lastattrib
  [18+] H3 attribs[nowned]
  H3 seqend
@ VERTEX_2D 10 E
RC flags ; 70
3BD pt ; 10
BD startw ; 40
BD endw ? startw >= 0 ; 41
BD bulge ; 42
[24+] BL id ; 91
BD tangent ; 50
@ VERTEX_3D 11 E
RC flags ; 70
3BD pt ; 10
@ VERTEX_MESH 12 E
RC flags
3BD pt
@ VERTEX_PFACE 13 E
RC flags
3BD pt
@ VERTEX_PFACE_FACE 14 E
BS v1 ; 71
BS v2 ; 72
BS v3 ; 73
BS v4 ; 74
@ POLY-OWNED part P
[18+] BL nowned
[-15] H4 firstvertex
[-15] H4 lastvertex
[18+] H3 vertices[nowned]
H3 seqend
@ POLYLINE_2D 15 E
BS flags ; 70
BS curvetype ; 75
BD startw ; 40
BD endw ; 41
BT thickness ; 39
BD elevation ; 30
BE ext ; 210
use POLY-OWNED
@ POLYLINE_3D 16 E
RC curveflags
RC flags
use POLY-OWNED
@ POLYLINE_PFACE 29 E
BS nverts ; 71
BS nfaces ; 72
use POLY-OWNED
@ POLYLINE_MESH 30 E
BS flags ; 70
BS curvetype ; 75
BS m ; 71
BS n ; 72
BS mdensity ; 73
BS ndensity ; 74
use POLY-OWNED
@ ARC 17 E
3BD center ; 10
BD radius ; 40
BT thickness ; 39
BE ext ; 210
BD start ; 50
BD end ; 51
@ CIRCLE 18 E
3BD center ; 10
BD radius ; 40
BT thickness ; 39
BE ext ; 210
@ LINE 19 E
B zzero
RD x1 ; 10
DD x2(x1) ; 11
RD y1 ; 20
DD y2(y1) ; 21
RD z1 ? !zzero ; 30
DD z2(z1) ? !zzero ; 31
BT thickness ; 39
BE ext ; 210
@ POINT 27 E
3BD pt ; 10
BT thickness ; 39
BE ext ; 210
BD xang ; 50
@ 3DFACE 28 E
B noflag
B zzero
RD x1 ; 10
RD y1 ; 20
RD z1 ? !zzero ; 30
let z1d = 0
if !zzero:
  let z1d = z1
3DD p2(x1,y1,z1d) ; 11
3DD p3(p2) ; 12
3DD p4(p3) ; 13
BS invis ? !noflag ; 70
@ SOLID 31 E
BT thickness ; 39
BD elevation
2RD p1 ; 10
2RD p2 ; 11
2RD p3 ; 12
2RD p4 ; 13
BE ext ; 210
@ TRACE 32 E
BT thickness
BD elevation
2RD p1
2RD p2
2RD p3
2RD p4
BE ext
@ SHAPE 33 E
3BD ins ; 10
BD size ; 40
BD rotation ; 50
BD wfactor ; 41
BD oblique ; 51
BD thickness ; 39
BS shapeno ; 2
3BD ext ; 210
H5 shapefile
@ ELLIPSE 35 E
3BD center ; 10
3BD major ; 11
3BD ext ; 210
BD ratio ; 40
BD start ; 41
BD end ; 42
@ SPLINE 36 E
BL scenario ; 1
[27+] BL flags1 ; 1
[27+] BL knotparam ; 0
[27+] let scenario = 1
[27+] if (flags1 & 1) && knotparam != 15:
  let scenario = 2
BL degree ; 71
let nknots = 0
let nctrl = 0
let nfit = 0
let weighted = 0
if scenario == 2:
  BD fittol ; 44
  3BD begtan ; 12
  3BD endtan ; 13
  BL nfit ; 74
if scenario == 1:
  B rational ; 70
  B closed ; 70
  B periodic ; 70
  BD knottol ; 42
  BD ctrltol ; 43
  BL nknots ; 72
  BL nctrl ; 73
  B weighted
BD knots[nknots] ; 40
for nctrl:
  3BD pt ; 10
  BD weight ? weighted ; 41
3BD fitpts[nfit] ; 11
@ RAY 40 E
3BD pt ; 10
3BD dir ; 11
@ XLINE 41 E
3BD pt ; 10
3BD dir ; 11
@ LWPOLYLINE 77 E
BS flag ; 1
BD constw ? flag & 4 ; 43
BD elevation ? flag & 8 ; 38
BD thickness ? flag & 2 ; 39
3BD ext ? flag & 1 ; 210
BL npts ; 90
let nbulge = 0
let nid = 0
let nwidth = 0
BL nbulge ? flag & 16
[24+] BL nid ? flag & 1024
BL nwidth ? flag & 32
if npts > 0:
  2RD p0 ; 10
  2DDCHAIN pts(p0)[npts-1] ; 10
BD bulges[nbulge] ; 42
[24+] BL ids[nid] ; 91
for nwidth:
  BD startw ; 40
  BD endw ; 41
@ DIM-COMMON part P
[24+] RC version ; 280
3BD ext ; 210
2RD textmid ; 11 21
BD elevation ; 31
RC flags
TV usertext ; 1
BD textrot ; 53
BD horizdir ; 51
BD insx
BD insy
BD insz
BD insrot ; 54
BS attach ; 71
BS lsstyle ; 72
BD lsfactor ; 41
BD measurement ; 42
[21+] B unk73 ; 73
[21+] B flip1 ; 74
[21+] B flip2 ; 75
2RD pt12 ; 12 22
@ DIM-HANDLES part P
H5 dimstyle ; 3
H5 block ; 2
)";

} // namespace hostkit
