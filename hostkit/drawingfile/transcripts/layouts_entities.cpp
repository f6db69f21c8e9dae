// Layouts of records: common parts, texts, inserts, polylines, simple shapes.
#include "recordlayouts.h"

namespace hostkit {

const char* const entitiesLayouts = R"(
@ COMMON-ENTITY part P
[15-21] RL bitsize
HD handle
EED eed
B has_graphic
if has_graphic:
  [-21] RL gsize
  [24+] BLL gsize
  X gsize graphic
use ENTITY-TAIL
@ COMMON-OBJECT part P
[15-21] RL bitsize
HD handle
EED eed
BL nreact
[18+] B noxdic
[27+] B hasds
H4 owner
H4 reactors[nreact]
[-15] H3 xdic
[18+] H3 xdic ? !noxdic
@ TABLE-ENTRY part P
TV name
[-18] B f64
[-18] BS xrefindex1
[-18] B xdep
[21+] BS xrefflags
@ TEXT-DATA part P
RC df
RD elevation ? !(df & 1)
2RD ins
2DD align(ins) ? !(df & 2)
BE ext
BT thickness
RD oblique ? !(df & 4)
RD rotation ? !(df & 8)
RD height
RD wfactor ? !(df & 16)
TV text
BS generation ? !(df & 32)
BS halign ? !(df & 64)
BS valign ? !(df & 128)
H5 style
@ TEXT 1 E
use TEXT-DATA
@ ATTRIB 2 E
use TEXT-DATA
[24+] RC version
[32+] RC atttype
[32+] if atttype > 1:
  use EMBEDDED-MTEXT as m
TV tag
BS fieldlen
RC flags
[21+] B lockpos
@ ATTDEF 3 E
use TEXT-DATA
[24+] RC version
[32+] RC atttype
[32+] if atttype > 1:
  use EMBEDDED-MTEXT as m
TV tag
BS fieldlen
RC flags
[21+] B lockpos
[24+] RC version2
TV prompt
@ EMBEDDED-MTEXT part P
use ENTITY-TAIL
use MTEXT-DATA
BS annosize
if annosize > 0:
  X annosize annodata
  H5 annoapp
  BS annoflag
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
TV name
@ ENDBLK 5 E
@ SEQEND 6 E
@ INSERT 7 E
use INSERT-DATA
use INSERT-HANDLES
@ MINSERT 8 E
use INSERT-DATA
BS ncols
BS nrows
BD colspace
BD rowspace
use INSERT-HANDLES
@ INSERT-DATA part P
3BD ins
BB sf
if sf == 0:
  RD sx
  DD sy(sx)
  DD sz(sx)
if sf == 1:
  DD sy(1.0)
  DD sz(1.0)
if sf == 2:
  RD sx
BD rotation
3BD ext
B hasattr
[18+] BL nowned ? hasattr
@ INSERT-HANDLES part P
H5 block
if hasattr:
  [-15] H4 firstattrib
  [-15] H4 lastattrib
  [18+] H3 attribs[nowned]
  H3 seqend
@ VERTEX_2D 10 E
RC flags
3BD pt
BD startw
BD endw ? startw >= 0
BD bulge
[24+] BL id
BD tangent
@ VERTEX_3D 11 E
RC flags
3BD pt
@ VERTEX_MESH 12 E
RC flags
3BD pt
@ VERTEX_PFACE 13 E
RC flags
3BD pt
@ VERTEX_PFACE_FACE 14 E
BS v1
BS v2
BS v3
BS v4
@ POLY-OWNED part P
[18+] BL nowned
[-15] H4 firstvertex
[-15] H4 lastvertex
[18+] H3 vertices[nowned]
H3 seqend
@ POLYLINE_2D 15 E
BS flags
BS curvetype
BD startw
BD endw
BT thickness
BD elevation
BE ext
use POLY-OWNED
@ POLYLINE_3D 16 E
RC curveflags
RC flags
use POLY-OWNED
@ POLYLINE_PFACE 29 E
BS nverts
BS nfaces
use POLY-OWNED
@ POLYLINE_MESH 30 E
BS flags
BS curvetype
BS m
BS n
BS mdensity
BS ndensity
use POLY-OWNED
@ ARC 17 E
3BD center
BD radius
BT thickness
BE ext
BD start
BD end
@ CIRCLE 18 E
3BD center
BD radius
BT thickness
BE ext
@ LINE 19 E
B zzero
RD x1
DD x2(x1)
RD y1
DD y2(y1)
RD z1 ? !zzero
DD z2(z1) ? !zzero
BT thickness
BE ext
@ POINT 27 E
3BD pt
BT thickness
BE ext
BD xang
@ 3DFACE 28 E
B noflag
B zzero
RD x1
RD y1
RD z1 ? !zzero
let z1d = 0
if !zzero:
  let z1d = z1
3DD p2(x1,y1,z1d)
3DD p3(p2)
3DD p4(p3)
BS invis ? !noflag
@ SOLID 31 E
BT thickness
BD elevation
2RD p1
2RD p2
2RD p3
2RD p4
BE ext
@ TRACE 32 E
BT thickness
BD elevation
2RD p1
2RD p2
2RD p3
2RD p4
BE ext
@ SHAPE 33 E
3BD ins
BD size
BD rotation
BD wfactor
BD oblique
BD thickness
BS shapeno
3BD ext
H5 shapefile
@ ELLIPSE 35 E
3BD center
3BD major
3BD ext
BD ratio
BD start
BD end
@ SPLINE 36 E
BL scenario
[27+] BL flags1
[27+] BL knotparam
[27+] let scenario = 1
[27+] if (flags1 & 1) && knotparam != 15:
  let scenario = 2
BL degree
let nknots = 0
let nctrl = 0
let nfit = 0
let weighted = 0
if scenario == 2:
  BD fittol
  3BD begtan
  3BD endtan
  BL nfit
if scenario == 1:
  B rational
  B closed
  B periodic
  BD knottol
  BD ctrltol
  BL nknots
  BL nctrl
  B weighted
BD knots[nknots]
for nctrl:
  3BD pt
  BD weight ? weighted
3BD fitpts[nfit]
@ RAY 40 E
3BD pt
3BD dir
@ XLINE 41 E
3BD pt
3BD dir
@ LWPOLYLINE 77 E
BS flag
BD constw ? flag & 4
BD elevation ? flag & 8
BD thickness ? flag & 2
3BD ext ? flag & 1
BL npts
let nbulge = 0
let nid = 0
let nwidth = 0
BL nbulge ? flag & 16
[24+] BL nid ? flag & 1024
BL nwidth ? flag & 32
2DDCHAIN pts[npts]
BD bulges[nbulge]
[24+] BL ids[nid]
for nwidth:
  BD startw
  BD endw
@ DIM-COMMON part P
[24+] RC version
3BD ext
2RD textmid
BD elevation
RC flags
TV usertext
BD textrot
BD horizdir
BD insx
BD insy
BD insz
BD insrot
BS attach
BS lsstyle
BD lsfactor
BD measurement
[21+] B unk73
[21+] B flip1
[21+] B flip2
2RD pt12
@ DIM-HANDLES part P
H5 dimstyle
H5 block
)";

} // namespace hostkit
