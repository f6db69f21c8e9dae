// Layouts of records: underlays, lights, table records.
#include "recordlayouts.h"

namespace hostkit {

const char* const tablesLayouts = R"(
@ ACAD_PROXY_ENTITY 498 E
use PROXY-DATA
@ ACAD_PROXY_OBJECT 499 O
use PROXY-DATA
@ PROXY-DATA part P
BL classid
[-27] BL objformat
[32+] BL dwgver
[32+] BL maintver
B fromdxf
OPAQUE
@ ACAD_TABLE class E
use INSERT-DATA
use INSERT-HANDLES
[24+] RC unk0
[24+] H4 unkh
[24+] BL unk1
[27+] BL unk2
[24-24] B unk3
[24+] use TABLECONTENT-DATA
[24+] BS unk4
[24+] 3BD hdir
[24+] BL hasbreak
[24+] if hasbreak:
  BL boptions
  BL bflow
  BD bspacing
  BL bunk1
  BL bunk2
  BL nmanual
  for nmanual:
    3BD bpos
    BD bheight
    BL bflag
[24+] BL nranges
[24+] for nranges:
  3BD rpos
  BL rstart
  BL rend
[-21] use TABLE-2004
@ TABLE-2004 part P
BS valueflag
3BD hdir
BL ncols
BL nrows
BD colw[ncols]
BD rowh[nrows]
H5 tablestyle
for ncols * nrows:
  use TABLE-CELL
B hasover
if hasover:
  BL tov
  B o280 ? tov & 1
  BS o70 ? tov & 4
  BD o40 ? tov & 8
  BD o41 ? tov & 0x10
  CMCX c1 ? tov & 0x20
  CMCX c2 ? tov & 0x40
  CMCX c3 ? tov & 0x80
  B f1 ? tov & 0x100
  B f2 ? tov & 0x200
  B f3 ? tov & 0x400
  CMCX b1 ? tov & 0x800
  CMCX b2 ? tov & 0x1000
  CMCX b3 ? tov & 0x2000
  BS a1 ? tov & 0x4000
  BS a2 ? tov & 0x8000
  BS a3 ? tov & 0x10000
  H5 s1 ? tov & 0x20000
  H5 s2 ? tov & 0x40000
  H5 s3 ? tov & 0x80000
  BD h1 ? tov & 0x100000
  BD h2 ? tov & 0x200000
  BD h3 ? tov & 0x400000
  let ignore = 0
B hasbcol
if hasbcol:
  BL bcolflags
  for 18:
    CMCX borderc ? (bcolflags >> INDEX) & 1
B hasblw
if hasblw:
  BL blwflags
  for 9 * 2:
    BS borderw ? (blwflags >> INDEX) & 1
B hasbvis
if hasbvis:
  BL bvisflags
  for 6 * 3:
    BS borderv ? (bvisflags >> INDEX) & 1
@ TABLE-CELL part P
BS ctype
RC edges
B merged
B autofit
BL mergew
BL mergeh
BD rot
H5 cellref
if ctype == 1:
  [-18] TV ctext ? cellref == 0
if ctype == 2:
  BD bscale
  B hasatts
  if hasatts:
    BS natts
    for natts:
      H4 attdef
      BS aindex
      TV atext
B hascov
if hascov:
  BL cov
  RC virt
  BS oa ? cov & 1
  B of ? cov & 2
  CMCX ob ? cov & 4
  CMCX oc ? cov & 8
  H5 os ? cov & 16
  BD oh ? cov & 32
  CMCX tc ? cov & 0x40
  BS tl ? cov & 0x400
  BS tv ? cov & 0x4000
  CMCX rc ? cov & 0x80
  BS rl ? cov & 0x800
  BS rv ? cov & 0x8000
  CMCX bc ? cov & 0x100
  BS bl ? cov & 0x1000
  BS bv ? cov & 0x10000
  CMCX lc ? cov & 0x200
  BS ll ? cov & 0x2000
  BS lv ? cov & 0x20000
[21+] BL cunk
[21+] use VALUE
@ TABLECONTENT-DATA part P
TV name
TV desc
BL ncols
for ncols:
  TV colname
  BL ccustom
  use CUSTOM-DATA
  use CELL-STYLE
  BL cstyleid
  BD cwidth
BL nrows
for nrows:
  BL ncells
  for ncells:
    use CELL-DATA
  BL rcustom
  use CUSTOM-DATA
  use CELL-STYLE
  BL rstyleid
  BD rheight
BL nfields
H3 fields[nfields]
use CELL-STYLE
BL nmerged
for nmerged:
  BL mtop
  BL mleft
  BL mbottom
  BL mright
H5 tablestyle
@ CUSTOM-DATA part P
BL ncd
for ncd:
  TV cdname
  use VALUE
@ CELL-DATA part P
BL state
TV tooltip
BL custom
use CUSTOM-DATA
BL linked
if linked:
  H5 datalink
  BL lrows
  BL lcols
  BL lunk
BL ncontent
for ncontent:
  BL kind
  if kind == 1:
    use VALUE
  H5 fieldref ? kind == 2
  H5 blockref ? kind == 4
  BL natt
  for natt:
    H4 attdef
    TV attvalue
    BL attindex
  BS hasformat
  if hasformat:
    use CONTENT-FORMAT
use CELL-STYLE
BL styleid
BL hasgeom
if hasgeom:
  BL g91
  BD g40
  BD g41
  BL geomflags
  H4 geomref
  if geomflags:
    3BD topleft
    3BD center
    BD contentw
    BD contenth
    BD gwidth
    BD gheight
    BL gunk
@ TABLECONTENT class O
use TABLECONTENT-DATA
@ BLOCK_CONTROL 48 O
BL nentries
H2 entries[nentries]
H3 modelspace
H3 paperspace
@ BLOCK_HEADER 49 O
use TABLE-ENTRY
B anonymous
B hasatts
B isxref
B isoverlay
B unloaded
let nowned = 0
[18+] BL nowned ? !isxref && !isoverlay
3BD base
TV xrefpath
COUNTZ ninserts
TV description
BL npreview
X npreview preview
[21+] BS insunits
[21+] B explodable
[21+] RC scaling
H5 xref
H3 block
[-15] if !isxref && !isoverlay:
  H4 first
  H4 last
[18+] H3 owned[nowned]
H3 endblk
H4 inserts[ninserts]
H5 layout
@ LAYER_CONTROL 50 O
BL nentries
H2 entries[nentries]
@ LAYER 51 O
use TABLE-ENTRY
BS values
CMC color
H5 xref
H5 plotstyle
[21+] H5 material
H5 ltype
[27+] H5 visualstyle
@ STYLE_CONTROL 52 O
BL nentries
H2 entries[nentries]
@ STYLE 53 O
use TABLE-ENTRY
B isshape
B vertical
BD fixedheight
BD wfactor
BD oblique
RC generation
BD lastheight
TV font
TV bigfont
H5 xref
@ LTYPE_CONTROL 56 O
BL nentries
H2 entries[nentries]
H3 byblock
H3 bylayer
@ LTYPE 57 O
use TABLE-ENTRY
TV description
BD length
RC alignment
RC ndash
let hastext = 0
for ndash:
  BD dash
  BS shapecode
  RD xoff
  RD yoff
  BD scale
  BD rotation
  BS shapeflag
  let hastext = hastext || (shapeflag & 2)
[-18] X 256 strings
[21+] X 512 strings ? hastext
H5 xref
H5 shapefile[ndash]
@ VIEW_CONTROL 60 O
BL nentries
H2 entries[nentries]
@ VIEW-DATA part P
2RD center
3BD target
3BD dir
BD twist
BD lens
BD frontclip
BD backclip
B mode0
B mode1
B mode2
B mode4n
RC rendermode
[21+] B defaultlights
[21+] RC lighttype
[21+] BD brightness
[21+] BD contrast
[21+] CMC ambient
@ VIEW 61 O
use TABLE-ENTRY
BD height
BD width
use VIEW-DATA
B pspace
B hasucs
if hasucs:
  3BD ucsorg
  3BD ucsx
  3BD ucsy
  BD ucselev
  BS ucsortho
[21+] B plottable
H5 xref
[21+] H4 background
[21+] H5 visualstyle
[21+] H3 sun
if hasucs:
  H5 baseucs
  H5 nameducs
[21+] H4 livesection
@ UCS_CONTROL 62 O
BL nentries
H2 entries[nentries]
@ UCS 63 O
use TABLE-ENTRY
3BD origin
3BD xdir
3BD ydir
BD elevation
BS orthoview
BS northo
for northo:
  BS orthotype
  3BD orthopt
H5 xref
H5 baseucs
H5 nameducs
@ VPORT_CONTROL 64 O
BL nentries
H2 entries[nentries]
)";

} // namespace hostkit
