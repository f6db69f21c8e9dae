// Layouts of records: dimensions, paragraphs, hatches, viewports, bodies, images.
#include "recordlayouts.h"

namespace hostkit {

const char* const annotationsLayouts = R"(
@ DIMENSION_ORDINATE 20 E
use DIM-COMMON
3BD pt10 ; 10
3BD pt13 ; 13
3BD pt14 ; 14
RC flags2
use DIM-HANDLES
@ DIMENSION_LINEAR 21 E
use DIM-COMMON
3BD pt13 ; 13
3BD pt14 ; 14
3BD pt10 ; 10
BD extrot ; 52
BD rotation ; 50
use DIM-HANDLES
@ DIMENSION_ALIGNED 22 E
use DIM-COMMON
3BD pt13
3BD pt14
3BD pt10
BD extrot ; 52
use DIM-HANDLES
@ DIMENSION_ANG3PT 23 E
use DIM-COMMON
3BD pt10 ; 10
3BD pt13 ; 13
3BD pt14 ; 14
3BD pt15 ; 15
use DIM-HANDLES
@ DIMENSION_ANG2LN 24 E
use DIM-COMMON
2RD pt16 ; 16
3BD pt13 ; 13
3BD pt14 ; 14
3BD pt15 ; 15
3BD pt10 ; 10
use DIM-HANDLES
@ DIMENSION_RADIUS 25 E
use DIM-COMMON
3BD pt10 ; 10
3BD pt15 ; 15
BD leaderlen ; 40
use DIM-HANDLES
@ DIMENSION_DIAMETER 26 E
use DIM-COMMON
3BD pt15 ; 15
3BD pt10 ; 10
BD leaderlen ; 40
use DIM-HANDLES
@ ARC_DIMENSION class E
use DIM-COMMON
3BD pt10 ; 10
3BD pt13 ; 13
3BD pt14 ; 14
3BD center ; 15
B partial ; 70
BD start ; 40
BD end ; 41
B hasleader ; 71
3BD pt16 ; 16
3BD pt17 ; 17
use DIM-HANDLES
@ LARGE_RADIAL_DIMENSION class E
use DIM-COMMON
3BD pt10 ; 10
3BD pt15 ; 15
BD jogangle ; 40
3BD override ; 13
3BD jogpoint ; 14
use DIM-HANDLES
@ MTEXT 44 E
use MTEXT-DATA
@ MTEXT-DATA part P
3BD ins ; 10
3BD ext ; 210
3BD xdir ; 11
BD rectw ; 41
[21+] BD recth ; 46
BD height ; 40
BS attach ; 71
BS flowdir ; 72
BD extheight ; 43
BD extwidth ; 42
TV text ; 1 3
BS lsstyle ; 73
BD lsfactor ; 44
B unk
[18+] BL bgflags ; 90
let hasbg = 0
[18-27] let hasbg = bgflags & 1
[32+] let hasbg = bgflags & 0x11
if hasbg:
  [18+] BD bgscale ; 45
  [18+] CMC bgcolor ; 63 421 431
  [18+] BL bgtrans ; 441
H5 style ; 7
[32+] B notanno
[32+] if notanno:
  BS ver
  B defflag
  H5 app
  BL attach2
  3BD xdir2
  3BD ins2
  BD rectw2
  BD recth2
  BD extw2
  BD exth2
  BS coltype ; 0
  if coltype:
    BL nheights
    BD colwidth
    BD gutter
    B autoheight
    B flowrev
    BD heights[nheights] ? !autoheight && coltype == 2 && nheights
@ LEADER 45 E
B unk
BS annottype
BS pathtype
BL npts ; 76
3BD pts[npts] ; 10
3BD origin
3BD ext ; 210
3BD xdir ; 211
3BD blkoffset ; 212
3BD endptproj ; 213
[-21] BD boxheight ; 40
[-21] BD boxwidth ; 41
B hookonx ; 74
B arrowon ; 71
BS unk2
B unk3
B unk4
H5 annot ; 340
H5 dimstyle ; 3
@ TOLERANCE 46 E
3BD ins ; 10
3BD xdir ; 11
3BD ext ; 210
TV text ; 1
H5 dimstyle ; 3
@ MLINE 47 E
BD scale ; 40
RC just ; 70
3BD base ; 10
3BD ext ; 210
BS openclosed ; 1
RC nlines ; 73
BS nverts ; 72
for nverts:
  3BD vertex ; 11
  3BD dir ; 12
  3BD miter ; 13
  for nlines:
    BS nseg ; 74
    BD segparm[nseg] ; 41
    BS nfill ; 75
    BD fillparm[nfill] ; 42
H5 style ; 340
@ HATCH 78 E
[18+] BL isgradient ; 450
[18+] BL reserved ; 451
[18+] BD gradangle ; 460
[18+] BD gradshift ; 461
[18+] BL singlecolor ; 452
[18+] BD gradtint ; 462
[18+] BL ncolors ; 453
[18+] for ncolors:
  BD shiftvalue ; 463
  CMC gcolor ; 63 421
[18+] TV gradname ; 470
BD elevation ; 30
3BD ext ; 210
TV name ; 2
B solid ; 70
B assoc ; 71
BL npaths ; 91
let derived = 0
for npaths:
  BL pathflag ; 92
  let derived = derived || (pathflag & 4)
  if !(pathflag & 2):
    BL nsegs ; 93
    for nsegs:
      RC segtype ; 72
      if segtype == 1:
        2RD p0 ; 10
        2RD p1 ; 11
      if segtype == 2:
        2RD center ; 10
        BD radius ; 40
        BD start ; 50
        BD end ; 51
        B ccw ; 73
      if segtype == 3:
        2RD center ; 10
        2RD major ; 11
        BD ratio ; 40
        BD start ; 50
        BD end ; 51
        B ccw ; 73
      if segtype == 4:
        BL degree ; 94
        B rational ; 73
        B periodic ; 74
        BL nknots ; 95
        BL nctrl ; 96
        BD knots[nknots] ; 40
        for nctrl:
          2RD pt ; 10
          BD weight ? rational ; 42
        [24+] BL nfit ; 97
        [24+] if nfit:
          2RD fitpts[nfit] ; 11
          2RD starttan ; 12
          2RD endtan ; 13
  else:
    B bulges ; 72
    B closed ; 73
    BL nverts ; 93
    for nverts:
      2RD pt ; 10
      BD bulge ? bulges ; 42
  BL nbound ; 97
  H4 bound[nbound] ; 330
BS style ; 75
BS pattype ; 76
if !solid:
  BD angle ; 52
  BD scale ; 41
  B double ; 77
  BS ndef ; 78
  for ndef:
    BD langle ; 53
    BD lx ; 43
    BD ly ; 44
    BD offx ; 45
    BD offy ; 46
    BS ndash ; 79
    BD dash[ndash] ; 49
BD pixsize ? derived ; 47
BL nseeds ; 98
2RD seeds[nseeds] ; 10
@ VIEWPORT 34 E
3BD center ; 10
BD width ; 40
BD height ; 41
3BD target ; 17
3BD viewdir ; 16
BD twist ; 51
BD viewheight ; 45
BD lens ; 42
BD frontclip ; 43
BD backclip ; 44
BD snapang ; 50
2RD viewcenter ; 12
2RD snapbase ; 13
2RD snapspace ; 14
2RD gridspace ; 15
BS circlezoom ; 72
[21+] BS gridmajor ; 61
BL nfrozen
BL status ; 90
TV stylesheet ; 1
RC rendermode ; 281
B ucsatorigin ; 74
B ucspervp ; 71
3BD ucsorg ; 110
3BD ucsx ; 111
3BD ucsy ; 112
BD ucselev ; 146
BS ucsortho ; 79
[18+] BS shadeplot ; 170
[21+] B defaultlights ; 292
[21+] RC lighttype ; 282
[21+] BD brightness ; 141
[21+] BD contrast ; 142
[21+] CMC ambient ; 63
[-15] H5 frozen[nfrozen] ; 331 341
[18+] H4 frozen[nfrozen]
H5 clip ; 340
[-15] H5 vpentheader
H5 nameducs ; 345
H5 baseucs ; 346
[21+] H4 background ; 332
[21+] H5 visualstyle ; 348
[21+] H4 shadeplotid ; 333
[21+] H3 sun ; 361
@ MODELER-WIRE part P
RC wtype
BL selmarker
BS wcolor
BL acisindex
BL npts
3BD pts[npts]
B hastrans
if hastrans:
  3BD xaxis
  3BD yaxis
  3BD zaxis
  3BD translation
  BD scale
  B hasrot
  B hasrefl
  B hasshear
@ MODELER-BLOB part P
B unk
BS mversion ; 1
let bs = 0
if mversion == 1:
  BL bs
  while bs:
    X bs sat ; 1
    BL bs ; 0
if mversion == 2:
  SAB sab
@ MODELER-DATA part P
let empty = 1
[-24] B empty ; 1
if !empty:
  use MODELER-BLOB
B haswire
if haswire:
  B haspt
  3BD pt ? haspt
  BL nisolines
  B hasiso
  if hasiso:
    BL nwires
    for nwires:
      use MODELER-WIRE
  BL nsil
  for nsil:
    BL vpid
    3BD target
    3BD dir
    3BD up
    B persp
    B hasiso2
    if hasiso2:
      BL nwires2
      for nwires2:
        use MODELER-WIRE
  B empty2 ; 1
  if !empty2:
    use MODELER-BLOB
[21+] BL unk21
[27+] B hasrev
[27+] BL rev1
[27+] BS rev2
[27+] BS rev3
[27+] X 8 rev4
[27+] BL revend
@ REGION 37 E
use MODELER-DATA
@ 3DSOLID 38 E
use MODELER-DATA
[21+] H3 history ; 350
@ BODY 39 E
use MODELER-DATA
@ OLEFRAME 43 E
BS flags ; 70
BS mode
BL n ; 90
X n data ; 310
@ OLE2FRAME 74 E
BS version ; 70
BS mode ; 72
BL n ; 90
X n data ; 310
RC unk
@ IMAGE class E
BL classver ; 90
3BD ins ; 10
3BD u ; 11
3BD v ; 12
2RD size ; 13
BS display ; 70
B clipping ; 280
RC brightness ; 281
RC contrast ; 282
RC fade ; 283
[24+] B clipmode ; 290
BS cliptype ; 71
let ncv = 2
if cliptype == 2:
  BL ncv ; 91
2RD clip[ncv] ; 14
H5 imagedef ; 340
H3 reactor ; 360
)";

} // namespace hostkit
