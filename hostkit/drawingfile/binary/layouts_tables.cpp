// Layouts of records: underlays, lights, table records.
#include "recordlayouts.h"

namespace hostkit {

const char* const tablesLayouts = R"(
@ WIPEOUT class E
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
@ ACAD_PROXY_ENTITY 498 E
use PROXY-DATA
@ ACAD_PROXY_OBJECT 499 O
use PROXY-DATA
@ PROXY-DATA part P
BL classid ; 91
[-27] BL objformat ; 95
[32+] BL dwgver ; 71
[32+] BL maintver ; 97
B fromdxf ; 70
OPAQUE ; 93 310
@ ACAD_TABLE class E
use INSERT-DATA
use INSERT-HANDLES
[24+] RC unk0
[24+] H4 unkh
[24+] BL unk1
[27+] BL unk2
[24-24] B unk3
[24+] use TABLECONTENT-DATA
[24+] BS unk4 ; 38
[24+] 3BD hdir ; 11
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
BS valueflag ; 90
3BD hdir ; 11
BL ncols ; 92
BL nrows ; 91
BD colw[ncols] ; 142
BD rowh[nrows] ; 141
H5 tablestyle ; 342
for ncols * nrows:
  use TABLE-CELL
B hasover
if hasover:
  BL tov ; 93
  B o280 ? tov & 1 ; 280
  BS o70 ? tov & 4 ; 70
  BD o40 ? tov & 8 ; 40
  BD o41 ? tov & 0x10 ; 41
  CMCX c1 ? tov & 0x20 ; 64
  CMCX c2 ? tov & 0x40
  CMCX c3 ? tov & 0x80
  B f1 ? tov & 0x100 ; 283
  B f2 ? tov & 0x200
  B f3 ? tov & 0x400
  CMCX b1 ? tov & 0x800 ; 63
  CMCX b2 ? tov & 0x1000
  CMCX b3 ? tov & 0x2000
  BS a1 ? tov & 0x4000 ; 170
  BS a2 ? tov & 0x8000
  BS a3 ? tov & 0x10000
  H5 s1 ? tov & 0x20000 ; 7
  H5 s2 ? tov & 0x40000
  H5 s3 ? tov & 0x80000
  BD h1 ? tov & 0x100000 ; 140
  BD h2 ? tov & 0x200000
  BD h3 ? tov & 0x400000
  let ignore = 0
B hasbcol
if hasbcol:
  BL bcolflags ; 94
  for 18:
    CMCX bc ? (bcolflags >> INDEX) & 1
B hasblw
if hasblw:
  BL blwflags ; 95
  for 18:
    BS bl ? (blwflags >> INDEX) & 1
B hasbvis
if hasbvis:
  BL bvisflags ; 96
  for 18:
    BS bv ? (bvisflags >> INDEX) & 1
@ TABLE-CELL part P
BS ctype
RC edges ; 172
B merged ; 173
B autofit ; 174
BL mergew ; 175
BL mergeh ; 176
BD rot ; 145
H5 cellref ; 344
if ctype == 1:
  [-18] TV ctext ? cellref == 0 ; 1
if ctype == 2:
  BD bscale ; 144
  B hasatts
  if hasatts:
    BS natts ; 179
    for natts:
      H4 attdef ; 331
      BS aindex
      TV atext ; 300
B hascov
if hascov:
  BL cov ; 177
  RC virt ; 178
  BS oa ? cov & 1 ; 170
  B of ? cov & 2 ; 283
  CMCX ob ? cov & 4 ; 63
  CMCX oc ? cov & 8 ; 64
  H5 os ? cov & 16 ; 7
  BD oh ? cov & 32 ; 140
  CMCX tc ? cov & 0x40 ; 69
  BS tl ? cov & 0x400 ; 279
  BS tv ? cov & 0x4000 ; 289
  CMCX rc ? cov & 0x80 ; 65
  BS rl ? cov & 0x800 ; 275
  BS rv ? cov & 0x8000 ; 285
  CMCX bc ? cov & 0x100 ; 66
  BS bl ? cov & 0x1000 ; 276
  BS bv ? cov & 0x10000 ; 286
  CMCX lc ? cov & 0x200 ; 68
  BS ll ? cov & 0x2000 ; 278
  BS lv ? cov & 0x20000 ; 288
[21+] BL cunk
[21+] use VALUE
@ TABLECONTENT-DATA part P
TV name ; 1
TV desc ; 300
BL ncols ; 90
for ncols:
  TV colname ; 300
  BL ccustom ; 91
  use CUSTOM-DATA
  use CELL-STYLE
  BL cstyleid ; 90
  BD cwidth ; 40
BL nrows ; 91
for nrows:
  BL ncells ; 90
  for ncells:
    use CELL-DATA
  BL rcustom ; 91
  use CUSTOM-DATA
  use CELL-STYLE
  BL rstyleid ; 90
  BD rheight ; 40
BL nfields
H3 fields[nfields]
use CELL-STYLE
BL nmerged ; 90
for nmerged:
  BL mtop ; 91
  BL mleft ; 92
  BL mbottom ; 93
  BL mright ; 94
H5 tablestyle ; 340
@ CUSTOM-DATA part P
BL ncd ; 90
for ncd:
  TV cdname ; 300
  use VALUE
@ CELL-DATA part P
BL state ; 90
TV tooltip ; 300
BL custom ; 91
use CUSTOM-DATA
BL linked ; 92
if linked:
  H5 datalink ; 340
  BL lrows ; 93
  BL lcols ; 94
  BL lunk ; 96
BL ncontent ; 95
for ncontent:
  BL kind
  if kind == 1:
    use VALUE
  H5 fieldref ? kind == 2 ; 340
  H5 blockref ? kind == 4 ; 340
  BL natt ; 91
  for natt:
    H4 attdef ; 330
    TV attvalue ; 301
    BL attindex ; 92
  BS hasformat ; 170
  if hasformat:
    use CONTENT-FORMAT
use CELL-STYLE
BL styleid ; 90
BL hasgeom ; 91
if hasgeom:
  BL g91 ; 91
  BD g40 ; 40
  BD g41 ; 40
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
BL nentries ; 70
H2 entries[nentries]
H3 modelspace
H3 paperspace
@ BLOCK_HEADER 49 O
use TABLE-ENTRY
B anonymous ; 70
B hasatts ; 70
B isxref ; 70
B isoverlay ; 70
B unloaded
let nowned = 0
[18+] BL nowned ? !isxref && !isoverlay
3BD base ; 10
TV xrefpath ; 1
COUNTZ ninserts
TV description ; 4
BL npreview
X npreview preview ; 310
[21+] BS insunits ; 70
[21+] B explodable ; 280
[21+] RC scaling ; 281
H5 xref
H3 block
[-15] if !isxref && !isoverlay:
  H4 first
  H4 last
[18+] H3 owned[nowned]
H3 endblk
H4 inserts[ninserts] ; 331
H5 layout ; 340
@ LAYER_CONTROL 50 O
BL nentries
H2 entries[nentries]
@ LAYER 51 O
use TABLE-ENTRY
BS values ; 1
CMC color ; 62 420 430
H5 xref
H5 plotstyle ; 390
[21+] H5 material ; 347
H5 ltype ; 6
[27+] H5 visualstyle ; 348
@ STYLE_CONTROL 52 O
BL nentries
H2 entries[nentries]
@ STYLE 53 O
use TABLE-ENTRY
B isshape ; 70
B vertical ; 70
BD fixedheight ; 40
BD wfactor ; 41
BD oblique ; 50
RC generation ; 71
BD lastheight ; 42
TV font ; 3
TV bigfont ; 4
H5 xref
@ LTYPE_CONTROL 56 O
BL nentries
H2 entries[nentries]
H3 byblock
H3 bylayer
@ LTYPE 57 O
use TABLE-ENTRY
TV description ; 3
BD length ; 40
RC alignment ; 72 65
RC ndash ; 73
let hastext = 0
for ndash:
  BD dash ; 49
  BS shapecode ; 75
  RD xoff ; 44
  RD yoff ; 45
  BD scale ; 46
  BD rotation ; 50
  BS shapeflag
  let hastext = hastext || (shapeflag & 2)
[-18] X 256 strings ; 9
[21+] X 512 strings ? hastext
H5 xref
H5 shapefile[ndash] ; 340
@ VIEW_CONTROL 60 O
BL nentries
H2 entries[nentries]
@ VIEW 61 O
use TABLE-ENTRY
BD height ; 40
BD width ; 41
2RD center ; 10
3BD target ; 12
3BD dir ; 11
BD twist ; 50
BD lens ; 42
BD frontclip ; 43
BD backclip ; 44
B mode0 ; 71
B mode1 ; 71
B mode2 ; 71
B mode4n
RC rendermode ; 281
[21+] B defaultlights
[21+] RC lighttype
[21+] BD brightness
[21+] BD contrast
[21+] CMC ambient
B pspace ; 70
B hasucs ; 72
if hasucs:
  3BD ucsorg ; 110
  3BD ucsx ; 111
  3BD ucsy ; 112
  BD ucselev ; 146
  BS ucsortho ; 79
[21+] B plottable ; 73
H5 xref
[21+] H4 background ; 332
[21+] H5 visualstyle ; 348
[21+] H3 sun ; 361
if hasucs:
  H5 baseucs ; 346
  H5 nameducs ; 345
[21+] H4 livesection ; 334
@ UCS_CONTROL 62 O
BL nentries
H2 entries[nentries]
@ UCS 63 O
use TABLE-ENTRY
3BD origin ; 10
3BD xdir ; 11
3BD ydir ; 12
BD elevation ; 146
BS orthoview ; 79
BS northo
for northo:
  BS orthotype ; 71
  3BD orthopt ; 13
H5 xref
H5 baseucs ; 346
H5 nameducs
@ VPORT_CONTROL 64 O
BL nentries
H2 entries[nentries]
)";

} // namespace hostkit
