// Layouts of records: dimensions, paragraphs, hatches, viewports, bodies, images.
#include "recordlayouts.h"

namespace hostkit {

const char* const annotationsLayouts = R"(
@ DIMENSION_ORDINATE 20 E
use DIM-COMMON
3BD pt10
3BD pt13
3BD pt14
RC flags2
use DIM-HANDLES
@ DIMENSION_LINEAR 21 E
use DIM-COMMON
3BD pt13
3BD pt14
3BD pt10
BD extrot
BD rotation
use DIM-HANDLES
@ DIMENSION_ALIGNED 22 E
use DIM-COMMON
3BD pt13
3BD pt14
3BD pt10
BD extrot
use DIM-HANDLES
@ DIMENSION_ANG3PT 23 E
use DIM-COMMON
3BD pt10
3BD pt13
3BD pt14
3BD pt15
use DIM-HANDLES
@ DIMENSION_ANG2LN 24 E
use DIM-COMMON
2RD pt16
3BD pt13
3BD pt14
3BD pt15
3BD pt10
use DIM-HANDLES
@ DIMENSION_RADIUS 25 E
use DIM-COMMON
3BD pt10
3BD pt15
BD leaderlen
use DIM-HANDLES
@ DIMENSION_DIAMETER 26 E
use DIM-COMMON
3BD pt15
3BD pt10
BD leaderlen
use DIM-HANDLES
@ ARC_DIMENSION class E
use DIM-COMMON
3BD pt10
3BD pt13
3BD pt14
3BD center
B partial
BD start
BD end
B hasleader
3BD pt16
3BD pt17
use DIM-HANDLES
@ LARGE_RADIAL_DIMENSION class E
use DIM-COMMON
3BD pt10
3BD pt15
BD jogangle
3BD override
3BD jogpoint
use DIM-HANDLES
@ MTEXT 44 E
use MTEXT-DATA
@ MTEXT-DATA part P
3BD ins
3BD ext
3BD xdir
BD rectw
[21+] BD recth
BD height
BS attach
BS flowdir
BD extheight
BD extwidth
TV text
BS lsstyle
BD lsfactor
B unk
[18+] BL bgflags
let hasbg = 0
[18-27] let hasbg = bgflags & 1
[32+] let hasbg = bgflags & 0x11
if hasbg:
  [18+] BD bgscale
  [18+] CMC bgcolor
  [18+] BL bgtrans
H5 style
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
  BS coltype
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
BL npts
3BD pts[npts]
3BD origin
3BD ext
3BD xdir
3BD blkoffset
3BD endptproj
[-21] BD boxheight
[-21] BD boxwidth
B hookonx
B arrowon
BS unk2
B unk3
B unk4
H5 annot
H5 dimstyle
@ TOLERANCE 46 E
3BD ins
3BD xdir
3BD ext
TV text
H5 dimstyle
@ MLINE 47 E
BD scale
RC just
3BD base
3BD ext
BS openclosed
RC nlines
BS nverts
for nverts:
  3BD vertex
  3BD dir
  3BD miter
  for nlines:
    BS nseg
    BD segparm[nseg]
    BS nfill
    BD fillparm[nfill]
H5 style
@ HATCH 78 E
[18+] BL isgradient
[18+] BL reserved
[18+] BD gradangle
[18+] BD gradshift
[18+] BL singlecolor
[18+] BD gradtint
[18+] BL ncolors
[18+] for ncolors:
  BD shiftvalue
  CMC gcolor
[18+] TV gradname
BD elevation
3BD ext
TV name
B solid
B assoc
BL npaths
let derived = 0
for npaths:
  BL pathflag
  let derived = derived || (pathflag & 4)
  if !(pathflag & 2):
    BL nsegs
    for nsegs:
      RC segtype
      if segtype == 1:
        2RD p0
        2RD p1
      if segtype == 2:
        2RD center
        BD radius
        BD start
        BD end
        B ccw
      if segtype == 3:
        2RD center
        2RD major
        BD ratio
        BD start
        BD end
        B ccw
      if segtype == 4:
        BL degree
        B rational
        B periodic
        BL nknots
        BL nctrl
        BD knots[nknots]
        for nctrl:
          2RD pt
          BD weight ? rational
        [24+] BL nfit
        [24+] if nfit:
          2RD fitpts[nfit]
          2RD starttan
          2RD endtan
  else:
    B bulges
    B closed
    BL nverts
    for nverts:
      2RD pt
      BD bulge ? bulges
  BL nbound
  H4 bound[nbound]
BS style
BS pattype
if !solid:
  BD angle
  BD scale
  B double
  BS ndef
  for ndef:
    BD langle
    BD lx
    BD ly
    BD offx
    BD offy
    BS ndash
    BD dash[ndash]
BD pixsize ? derived
BL nseeds
2RD seeds[nseeds]
@ VIEWPORT 34 E
3BD center
BD width
BD height
3BD target
3BD viewdir
BD twist
BD viewheight
BD lens
BD frontclip
BD backclip
BD snapang
2RD viewcenter
2RD snapbase
2RD snapspace
2RD gridspace
BS circlezoom
[21+] BS gridmajor
BL nfrozen
BL status
TV stylesheet
RC rendermode
B ucsatorigin
B ucspervp
3BD ucsorg
3BD ucsx
3BD ucsy
BD ucselev
BS ucsortho
[18+] BS shadeplot
[21+] B defaultlights
[21+] RC lighttype
[21+] BD brightness
[21+] BD contrast
[21+] CMC ambient
[-15] H5 frozen[nfrozen]
[18+] H4 frozen[nfrozen]
H5 clip
[-15] H5 vpentheader
H5 nameducs
H5 baseucs
[21+] H4 background
[21+] H5 visualstyle
[21+] H4 shadeplotid
[21+] H3 sun
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
BS mversion
let bs = 0
if mversion == 1:
  BL bs
  while bs:
    X bs sat
    BL bs
if mversion == 2:
  SAB sab
@ MODELER-DATA part P
let empty = 1
[-24] B empty
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
  B empty2
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
[21+] H3 history
@ BODY 39 E
use MODELER-DATA
@ OLEFRAME 43 E
BS flags
BS mode
BL n
X n data
@ OLE2FRAME 74 E
BS version
BS mode
BL n
X n data
RC unk
@ IMAGE class E
use IMAGE-DATA
@ WIPEOUT class E
use IMAGE-DATA
@ IMAGE-DATA part P
BL classver
3BD ins
3BD u
3BD v
2RD size
BS display
B clipping
RC brightness
RC contrast
RC fade
[24+] B clipmode
BS cliptype
let ncv = 2
if cliptype == 2:
  BL ncv
2RD clip[ncv]
H5 imagedef
H3 reactor
)";

} // namespace hostkit
