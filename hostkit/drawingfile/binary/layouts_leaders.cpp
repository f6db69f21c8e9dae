// Layouts of records: multileaders, tables and their styles.
#include "recordlayouts.h"

namespace hostkit {

const char* const leadersLayouts = R"(
@ MLEADER-CONTEXT part P
BL nroots
for nroots:
  B contentvalid ; 290
  B dogvecset ; 291
  3BD conn ; 10
  3BD dir ; 11
  BL nbreaks
  for nbreaks:
    3BD bstart ; 12
    3BD bend ; 13
  BL leaderindex ; 90
  BD landing ; 40
  BL nlines
  for nlines:
    BL npts
    3BD pts[npts] ; 10
    BL nbreakinfo
    if nbreakinfo:
      BL segindex ; 90
      BL nse
      for nse:
        3BD s ; 11
        3BD e ; 12
    BL lineindex ; 91
    [24+] BS ltypeov ; 170
    [24+] CMC lcolor ; 92
    [24+] H5 lltype ; 340
    [24+] BL llweight ; 171
    [24+] BD arrowsize ; 40
    [24+] H5 arrow ; 341
    [24+] BL ovflags ; 93
  [24+] BS attachdir ; 271
BD scale ; 40
3BD base ; 10
BD textheight ; 41
BD arrowsize2 ; 140
BD landinggap ; 145
BS leftattach ; 174
BS rightattach ; 175
BS align ; 176
BS attachtype ; 177
B hastext ; 290
if hastext:
  TV label ; 304
  3BD normal ; 11
  H5 textstyle ; 340
  3BD location ; 12
  3BD direction ; 13
  BD rotation ; 42
  BD bwidth ; 43
  BD bheight ; 44
  BD lsfactor ; 45
  BS lsstyle ; 170
  CMC tcolor ; 90
  BS talign ; 171
  BS flow ; 172
  CMC bgcolor ; 91
  BD bgscale ; 141
  BL bgtrans ; 92
  B bgfill ; 291
  B bgmask ; 292
  BS coltype ; 173
  B autoheight ; 293
  BD colwidth ; 142
  BD colgutter ; 143
  B colrev ; 294
  BL nsizes
  BD sizes[nsizes] ; 144
  B wordbreak ; 295
  B unk
else:
  B hasblock ; 296
  if hasblock:
    H4 blockrec ; 341
    3BD bnormal ; 14
    3BD blocation ; 15
    3BD bscale ; 16
    BD brot ; 46
    CMC bcolor ; 93
    BD matrix[16] ; 47
3BD basept ; 110
3BD basedir ; 111
3BD basevert ; 112
B reversed ; 297
[24+] BS topattach ; 273
[24+] BS bottomattach ; 272
@ MULTILEADER class E
[24+] BS version ; 270 2
use MLEADER-CONTEXT
H5 style ; 340
BL overrides ; 90
BS leadertype ; 170
CMC linecolor ; 91
H5 lltype ; 341
BL lweight2 ; 171
B landingon ; 290
B dogleg ; 291
BD landingdist ; 41
H5 arrow ; 342
BD arrowsize ; 42
BS content ; 172
H5 textstyle ; 343
BS left ; 173
BS right ; 95
BS textangle ; 174
BS textalign ; 175
CMC textcolor ; 92
B frame ; 292
H5 block ; 344
CMC blockcolor ; 93
3BD blockscale ; 10
BD blockrot ; 43
BS blockconn ; 176
B annotative ; 293
[-21] BL narrows
[-21] for narrows:
  B isdefault ; 94
  H5 arrowh ; 345
BL nlabels
for nlabels:
  H5 attdef ; 330
  TV ltext ; 302
  BS lindex ; 177
  BD lwidth ; 44
B negdir ; 294
BS ipealign ; 178
BS attachpt ; 179
BD scale ; 45
[24+] BS attachdir ; 271
[24+] BS bottomattach ; 272
[24+] BS topattach ; 273
[27+] B exttotext ; 295
@ ROW-STYLE part P
H5 textstyle ; 7
BD textheight ; 140
BS align ; 170
CMCX textcolor ; 62
CMCX fillcolor ; 63
B fillon ; 283
for 6:
  BS blw
  B bvis
  CMCX bcolor
[21+] BL datatype ; 90
[21+] BL unittype ; 91
[21+] TV format ; 1
@ CONTENT-FORMAT part P
BL ovflags ; 90
BL propflags ; 91
BL datatype ; 92
BL unittype ; 93
TV format ; 300
BD rotation ; 40
BD scale ; 140
BL align ; 94
CMCX ccolor ; 62
H5 textstyle ; 340
BD textheight ; 144
@ CELL-STYLE part P
BL cstype ; 90
BS hasdata ; 170
if hasdata:
  BL csov ; 91
  BL mergeflags ; 92
  CMCX bgcolor ; 62
  BL layoutflags ; 93
  use CONTENT-FORMAT
  BS marginflags ; 171
  BD margins[6] ? marginflags & 1 ; 40
  BL nborders ; 94
  for nborders:
    BL edge ; 95
    if edge:
      BL bov ; 90
      BL btype ; 91
      CMCX bcolor ; 62
      BL blw ; 92
      H5 bltype ; 340
      BL binvis ; 93
      BD bspacing ; 40
@ TABLESTYLE class O
[-21] TV description ; 3
[-21] BS flow ; 70
[-21] BS flags ; 71
[-21] BD hmargin ; 40
[-21] BD vmargin ; 41
[-21] B notitle ; 280
[-21] B noheader ; 281
[-21] for 3:
  use ROW-STYLE
[24+] RC unk0
[24+] TV description
[24+] BL unk1
[24+] BL unk2
[24+] H3 unkh
[24+] use CELL-STYLE
[24+] BL csid ; 90
[24+] BL csclass ; 91
[24+] TV csname ; 300
[24+] BL ncs
[24+] for ncs:
  BL index
  use CELL-STYLE
  BL csid
  BL csclass
  TV csname
@ CELLSTYLEMAP class O
BL ncs
for ncs:
  use CELL-STYLE
  BL csid ; 90
  BL csclass ; 91
  TV csname ; 300
@ MATMAP part P
BD blend ; 42
RC projection ; 73
RC tiling ; 74
RC autotrans ; 75
BD matrix[16] ; 43
RC source
TV mapfile ? source == 1 ; 3
@ MATCOLOR part P
RC method
BD factor ; 40
BL rgb ? method == 1 ; 90
@ MATERIAL class O
TV name ; 1
TV description ; 2
use MATCOLOR
use MATCOLOR
use MATMAP
use MATCOLOR
use MATMAP
BD gloss ; 44
use MATMAP
BD opacity ; 140
use MATMAP
use MATMAP
BD refraction ; 145
use MATMAP
[21+] BD translucence ; 148
[21+] BD selfillum ; 149
[21+] BD reflectivity ; 468
[21+] BL illummodel ; 93
[21+] BL channels ; 94
[21+] BL mode ; 282
@ DIMASSOC class O
H4 dimension ; 330
BL assoc ; 90
B transspace ; 70
RC rottype ; 71
for 4:
  let present = (assoc >> INDEX) & 1
  if present:
    use OSNAPREF
@ OSNAPREF part P
TV clsname ; 1
RC osnap ; 72
BL nids
H4 ids[nids] ; 331
if nids:
  BS subtype ; 73
  BL marker ; 91
  BL nxref
  TV xrefs[nxref] ; 301
BD param ; 40
3BD pt ; 10
if osnap == 6 || osnap == 11:
  BL nids2
  H4 ids2[nids2] ; 332
  BS subtype2 ; 74
  BL marker2 ; 92
  BL nxref2
  TV xrefs2[nxref2] ; 302
B haslast ; 75
if haslast:
  use OSNAPREF
@ PDFDEFINITION class O
TV file ; 1
TV item ; 2
@ PDFUNDERLAY class E
3BD ext ; 210
3BD ins ; 10
BD rotation ; 50
BD sx ; 41
BD sy ; 42
BD sz ; 43
RC flags ; 280
RC contrast ; 281
RC fade ; 282
BL n
2RD pts[n] ; 11
H5 definition ; 340
@ MESH class E
BS version ; 71
B blendcrease ; 72
BL level ; 91
BL nverts ; 92
3BD verts[nverts] ; 10
BL nfaces ; 93
BL faces[nfaces] ; 90
BL nedges ; 94
for nedges:
  BL e0 ; 90
  BL e1
BL ncrease ; 95
BD crease[ncrease] ; 140
BL nov
@ SUN class O
BL classver ; 90
B ison ; 290
CMC color ; 63
BD intensity ; 40
B shadow ; 291
BL julian ; 91
BL msec ; 92
B dst ; 292
BL shadowtype ; 70
BS shadowsize ; 71
RC softness ; 280
@ EVAL-EXPR part P
BL parentid
BL major ; 98
BL minor ; 99
BS valcode
let vc = valcode
if vc == 40:
  BD v40
if vc == 10 || vc == 11:
  2RD v10
if vc == 1:
  TV v1
if vc == 90:
  BL v90
if vc == 70:
  BS v70
if vc == 91:
  H5 v91
BL nodeid ; 90
)";

} // namespace hostkit
