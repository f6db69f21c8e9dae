// Transcripts of paragraphs, leaders, hatches, viewports, bodies, images, meshes and lights.
#include "recordtranscripts.h"

namespace hostkit {

const char* const annotationTranscripts = R"(
@ PARAGRAPH
10 ins
40 height
41 rectw
[21+] 46 recth
71 attach ~ 1
72 flowdir ~ 1
1 text pieces 3
7 style name = 'Standard'
210 ext = 0,0,1
11 xdir = 1,0,0
73 lsstyle ~ 1
44 lsfactor ~ 1
[18+] 90 bgflags = 0
[18-27] read ground = bgflags & 1
[32+] read ground = bgflags & 0x11
[18-27] write ground = bgflags & 1
[32+] write ground = bgflags & 0x11
[18+] if ground:
  63 bgcolor color ~ 256
  45 bgscale ~ 1.5
  441 bgtrans ~ 0
@ PARAGRAPH-TWIN
write attach2 = attach
write coltype = 0
write xdir2 = xdir
write ins2 = ins
write rectw2 = rectw
write recth2 = recth
new extw2 = extwidth
new exth2 = extheight
@ MTEXT
100 AcDbMText
use PARAGRAPH
50 ext textrotation
[32+] new notanno = 1
[32+] new ver = 4
[32+] new defflag = 1
[32+] read given = (coltype != 0) * attach2
[32+] if notanno:
  101 'Embedded Object' ?> given
  70 (given) as given = 0
  if given:
    write attach2 = given
    10 xdir2
    11 ins2
    40 rectw2
    41 recth2
    42 extw2
    43 exth2
    71 coltype
    72 nheights
    44 colwidth
    45 gutter
    73 autoheight
    74 flowrev
    46 heights* ? !autoheight && coltype == 2
  else:
    use PARAGRAPH-TWIN
@ LEADER
100 AcDbLeader
3 dimstyle name ~ 'Standard'
71 arrowon = 1
72 pathtype = 0
73 annottype ~ 3
74 hookonx
[-21] 40 boxheight = 0
[-21] 41 boxwidth = 0
76 npts
for npts:
  10 pts[]
  if !INDEX:
    new origin = pts
340 annot = 0
210 ext = 0,0,1
211 xdir = 1,0,0
212 blkoffset = 0
213 endptproj = 0
@ TOLERANCE
100 AcDbFcf
3 dimstyle name ~ 'Standard'
10 ins
1 text
210 ext = 0,0,1
11 xdir = 1,0,0
@ MLINE
100 AcDbMline
2 style name MLINESTYLE
340 style
40 scale
70 just
71 openclosed ~ 1
72 nverts
73 nlines
10 base
210 ext ~ 0,0,1
for nverts:
  11 vertex
  12 dir
  13 miter
  for nlines:
    74 nseg
    41 segparm*
    75 nfill
    42 fillparm*
@ HATCH
100 AcDbHatch
10 zx,zy,elevation
210 ext ~ 0,0,1
2 name
70 solid
71 assoc
91 npaths
for npaths:
  92 pathflag
  if !(pathflag & 2):
    93 nsegs
    for nsegs:
      72 segtype
      if segtype == 1:
        10 p0
        11 p1
      if segtype == 2:
        10 center
        40 radius
        50 start deg
        51 end deg
        73 ccw
      if segtype == 3:
        10 center
        11 major
        40 ratio
        50 start deg
        51 end deg
        73 ccw
      if segtype == 4:
        94 degree
        73 rational
        74 periodic
        95 nknots
        96 nctrl
        40 knots*
        for nctrl:
          10 pt
          42 weight ? rational
        [24+] 97 nfit
        [24+] if nfit:
          11 fitpts*
          12 starttan
          13 endtan
  else:
    72 bulges
    73 closed
    93 nverts
    for nverts:
      10 pt
      42 bulge ~ 0 ? bulges
  97 nbound
  330 bound*
75 style
76 pattype ~ 1
if !solid:
  52 angle deg
  41 scale ~ 1
  77 double
  78 ndef
  for ndef:
    53 langle deg
    43 lx
    44 ly
    45 offx
    46 offy
    79 ndash
    49 dash*
47 pixsize
98 nseeds
10 seeds*
[18+] 450 isgradient = 0
[18+] 451 reserved ?> isgradient
[18+] 460 gradangle ?> isgradient
[18+] 461 gradshift ?> isgradient
[18+] 452 singlecolor ?> isgradient
[18+] 462 gradtint ?> isgradient
[18+] read told = isgradient * ncolors
[18+] 453 (told) as told = 0
[18+] if told:
  write ncolors = told
  for ncolors:
    463 shiftvalue
    63 gcolor color ~ 7
[18+] 470 gradname ?> isgradient
@ VIEWPORT
100 AcDbViewport
10 center
40 width
41 height
12 viewcenter
13 snapbase
14 snapspace
15 gridspace
16 viewdir ~ 0,0,1
17 target
42 lens ~ 50
43 frontclip
44 backclip
45 viewheight
50 snapang deg
51 twist deg
72 circlezoom ~ 1000
331 frozen*
90 status
340 clip = 0
1 stylesheet
281 rendermode
71 ucspervp
74 ucsatorigin
110 ucsorg
111 ucsx ~ 1,0,0
112 ucsy ~ 0,1,0
345 nameducs = 0
346 baseucs = 0
79 ucsortho
146 ucselev
[18+] 170 shadeplot
[21+] 61 gridmajor ~ 5
[21+] 332 background = 0
[21+] 333 shadeplotid = 0
[21+] 348 visualstyle = 0
[21+] 361 sun = 0
[21+] 292 defaultlights ~ 1
[21+] 282 lighttype ~ 1
[21+] 141 brightness
[21+] 142 contrast
[21+] 63 ambient color ~ 250
@ BODY-DATA
100 AcDbModelerGeometry
1 empty modeler
@ REGION
use BODY-DATA
@ BODY
use BODY-DATA
@ 3DSOLID
use BODY-DATA
[21+] 100 AcDb3dSolid
[21+] 350 history
@ OLEFRAME
100 AcDbOleFrame
70 flags
90 n
310 data hex
1 'OLE'
@ OLE2FRAME
100 AcDbOle2Frame
70 version ~ 2
3 'OLE'
72 mode
90 n
310 data hex
1 'OLE'
@ IMAGE-DATA
90 classver
10 ins
11 u
12 v
13 size
340 imagedef
70 display
280 clipping
281 brightness ~ 50
282 contrast ~ 50
283 fade
[24+] 290 clipmode ~ 0
360 reactor
71 cliptype ~ 1
91 (ncv + (cliptype == 1) * 2) as ncv
14 clip*
@ IMAGE
100 AcDbRasterImage
use IMAGE-DATA
@ WIPEOUT
100 AcDbWipeout
use IMAGE-DATA
@ PDFUNDERLAY
100 AcDbUnderlayReference
340 definition
10 ins
41 sx = 1
42 sy = 1
43 sz = 1
50 rotation deg = 0
210 ext = 0,0,1
280 flags
281 contrast
282 fade
11 pts*
@ MESH
100 AcDbSubDMesh
71 version ~ 2
72 blendcrease
91 level
92 nverts
10 verts*
93 nfaces
90 faces*
94 nedges
for nedges:
  90 e0
  90 e1
95 ncrease
140 crease*
90 nov
@ LIGHT
100 AcDbLight
90 classver
1 name
70 lighttype
290 status
63 lcolor color ~ 7
291 plotglyph
40 intensity
10 position
11 target
72 attenuation
292 uselimits
41 startlimit
42 endlimit
50 hotspot deg
51 falloff deg
293 shadows
73 shadowtype
91 mapsize
280 softness
)";

} // namespace hostkit
