// Layouts of records: multileaders, tables and their styles.
#include "recordlayouts.h"

namespace hostkit {

const char* const leadersLayouts = R"(
@ MLEADER-CONTEXT part P
BL nroots
for nroots:
  B contentvalid
  B dogvecset
  3BD conn
  3BD dir
  BL nbreaks
  for nbreaks:
    3BD bstart
    3BD bend
  BL leaderindex
  BD landing
  BL nlines
  for nlines:
    BL npts
    3BD pts[npts]
    BL nbreakinfo
    if nbreakinfo:
      BL segindex
      BL nse
      for nse:
        3BD s
        3BD e
    BL lineindex
    [24+] BS ltypeov
    [24+] CMC lcolor
    [24+] H5 lltype
    [24+] BL llweight
    [24+] BD arrowsize
    [24+] H5 arrow
    [24+] BL ovflags
  [24+] BS attachdir
BD scale
3BD base
BD textheight
BD arrowsize2
BD landinggap
BS leftattach
BS rightattach
BS align
BS attachtype
B hastext
if hastext:
  TV label
  3BD normal
  H5 textstyle
  3BD location
  3BD direction
  BD rotation
  BD bwidth
  BD bheight
  BD lsfactor
  BS lsstyle
  CMC tcolor
  BS talign
  BS flow
  CMC bgcolor
  BD bgscale
  BL bgtrans
  B bgfill
  B bgmask
  BS coltype
  B autoheight
  BD colwidth
  BD colgutter
  B colrev
  BL nsizes
  BD sizes[nsizes]
  B wordbreak
  B unk
else:
  B hasblock
  if hasblock:
    H4 blockrec
    3BD bnormal
    3BD blocation
    3BD bscale
    BD brot
    CMC bcolor
    BD matrix[16]
3BD basept
3BD basedir
3BD basevert
B reversed
[24+] BS topattach
[24+] BS bottomattach
@ MULTILEADER class E
[24+] BS version
use MLEADER-CONTEXT as context
H5 style
BL overrides
BS leadertype
CMC linecolor
H5 lltype
BL lweight2
B landingon
B dogleg
BD landingdist
H5 arrow
BD arrowsize
BS content
H5 textstyle
BS left
BS right
BS textangle
BS textalign
CMC textcolor
B frame
H5 block
CMC blockcolor
3BD blockscale
BD blockrot
BS blockconn
B annotative
[-21] BL narrows
[-21] for narrows:
  B isdefault
  H5 arrowh
BL nlabels
for nlabels:
  H5 attdef
  TV ltext
  BS lindex
  BD lwidth
B negdir
BS ipealign
BS attachpt
BD scale
[24+] BS attachdir
[24+] BS bottomattach
[24+] BS topattach
[27+] B exttotext
@ ROW-STYLE part P
H5 textstyle
BD textheight
BS align
CMCX textcolor
CMCX fillcolor
B fillon
BS topw
B topv
CMCX topc
BS insidehw
B insidehv
CMCX insidehc
BS bottomw
B bottomv
CMCX bottomc
BS leftw
B leftv
CMCX leftc
BS insidevw
B insidevv
CMCX insidevc
BS rightw
B rightv
CMCX rightc
[21+] BL datatype
[21+] BL unittype
[21+] TV format
@ CONTENT-FORMAT part P
BL ovflags
BL propflags
BL datatype
BL unittype
TV format
BD rotation
BD scale
BL align
CMCX ccolor
H5 textstyle
BD textheight
@ CELL-STYLE part P
BL cstype
BS hasdata
if hasdata:
  BL csov
  BL mergeflags
  CMCX bgcolor
  BL layoutflags
  use CONTENT-FORMAT
  BS marginflags
  BD margins[6] ? marginflags & 1
  BL nborders
  for nborders:
    BL edge
    if edge:
      BL bov
      BL btype
      CMCX bcolor
      BL blw
      H5 bltype
      BL binvis
      BD bspacing
@ TABLESTYLE class O
[-21] TV description
[-21] BS flow
[-21] BS flags
[-21] BD hmargin
[-21] BD vmargin
[-21] B notitle
[-21] B noheader
[-21] for 3:
  use ROW-STYLE
[24+] RC unk0
[24+] TV description
[24+] BL unk1
[24+] BL unk2
[24+] H3 unkh
[24+] use CELL-STYLE
[24+] BL csid
[24+] BL csclass
[24+] TV csname
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
  BL csid
  BL csclass
  TV csname
@ MATMAP part P
BD blend
RC projection
RC tiling
RC autotrans
BD matrix[16]
RC source
TV mapfile ? source == 1
@ MATCOLOR part P
RC method
BD factor
BL rgb ? method == 1
@ MATERIAL class O
TV name
TV description
use MATCOLOR as ambient
use MATCOLOR as diffuse
use MATMAP as diffuse.map
use MATCOLOR as specular
use MATMAP as specular.map
BD gloss
use MATMAP as reflection
BD opacity
use MATMAP as opacity.map
use MATMAP as bump
BD refraction
use MATMAP as refraction.map
[21+] BD translucence
[21+] BD selfillum
[21+] BD reflectivity
[21+] BL illummodel
[21+] BL channels
[21+] BL mode
@ DIMASSOC class O
H4 dimension
BL assoc
B transspace
RC rottype
for 4:
  let present = (assoc >> INDEX) & 1
  if present:
    use OSNAPREF
@ OSNAPREF part P
TV clsname
RC osnap
BL nids
H4 ids[nids]
if nids:
  BS subtype
  BL marker
  BL nxref
  TV xrefs[nxref]
BD param
3BD pt
if osnap == 6 || osnap == 11:
  BL nids2
  H4 ids2[nids2]
  BS subtype2
  BL marker2
  BL nxref2
  TV xrefs2[nxref2]
B haslast
if haslast:
  use OSNAPREF as last
@ PDFDEFINITION class O
TV file
TV item
@ PDFUNDERLAY class E
3BD ext
3BD ins
BD rotation
BD sx
BD sy
BD sz
RC flags
RC contrast
RC fade
BL n
2RD pts[n]
H5 definition
@ MESH class E
BS version
B blendcrease
BL level
BL nverts
3BD verts[nverts]
BL nfaces
BL faces[nfaces]
BL nedges
for nedges:
  BL e0
  BL e1
BL ncrease
BD crease[ncrease]
BL nov
@ SUN class O
BL classver
B ison
CMC color
BD intensity
B shadow
BL julian
BL msec
B dst
BL shadowtype
BS shadowsize
RC softness
@ EVAL-EXPR part P
BL parentid
BL major
BL minor
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
BL nodeid
)";

} // namespace hostkit
