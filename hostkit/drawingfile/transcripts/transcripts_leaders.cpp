// Transcripts of leaders and tables of several cells, and their styles.
#include "recordtranscripts.h"

namespace hostkit {

const char* const leaderTranscripts = R"(
@ MLEADER-LINE
304 'LEADER_LINE{'
10 pts*
90 segindex ?> nbreakinfo
for nse:
  11 s
  12 e
write nbreakinfo = nse > 0
91 lineindex
[24+] new ltypeov = 1
[24+] new lcolor = 0xC1000000
[24+] new llweight = -2
[24+] 170 ltypeov ?> ovflags & 1
[24+] 92 lcolor longcolor ?> ovflags & 2
[24+] 340 lltype ?> ovflags & 4
[24+] 171 llweight ?> ovflags & 8
[24+] 40 arrowsize ?> ovflags & 16
[24+] 341 arrow ?> ovflags & 32
[24+] 93 ovflags = 0
305 '}'
@ MLEADER-CONTEXT
300 'CONTEXT_DATA{'
40 scale ~ 1
10 base
41 textheight
140 arrowsize2
145 landinggap
174 leftattach
175 rightattach
176 align
177 attachtype
290 hastext
if hastext:
  304 label
  11 normal ~ 0,0,1
  340 textstyle
  12 location
  13 direction ~ 1,0,0
  42 rotation
  43 bwidth
  44 bheight
  45 lsfactor ~ 1
  170 lsstyle ~ 1
  90 tcolor longcolor
  171 talign ~ 1
  172 flow ~ 5
  91 bgcolor longcolor
  141 bgscale
  92 bgtrans
  291 bgfill
  292 bgmask
  173 coltype
  293 autoheight
  142 colwidth
  143 colgutter
  294 colrev
  144 sizes*
  295 wordbreak
  296 (0)
else:
  296 hasblock
  if hasblock:
    341 blockrec
    14 bnormal ~ 0,0,1
    15 blocation
    16 bscale ~ 1
    46 brot
    93 bcolor longcolor
    47 matrix*
110 basept
111 basedir ~ 1,0,0
112 basevert ~ 0,1,0
297 reversed
for nroots:
  302 'LEADER{'
  290 contentvalid
  291 dogvecset
  10 conn
  11 dir
  for nbreaks:
    12 bstart
    13 bend
  90 leaderindex
  40 landing
  for nlines:
    use MLEADER-LINE
  [24+] 271 attachdir
  303 '}'
[24+] 272 bottomattach ~ 9
[24+] 273 topattach ~ 9
301 '}'
@ MULTILEADER
100 AcDbMLeader
[24+] 270 version ~ 2
use MLEADER-CONTEXT as context
340 style
90 overrides
170 leadertype ~ 1
91 linecolor longcolor
341 lltype
171 lweight2 ~ -2
290 landingon ~ 1
291 dogleg ~ 1
41 landingdist
342 arrow = 0
42 arrowsize
172 content
343 textstyle = 0
173 left
95 right
174 textangle
175 textalign
92 textcolor longcolor
292 frame
344 block = 0
93 blockcolor longcolor
10 blockscale ~ 1
43 blockrot
176 blockconn
293 annotative
[-21] for narrows:
  94 isdefault
  345 arrowh
for nlabels:
  330 attdef
  177 lindex
  44 lwidth
  302 ltext
294 negdir
178 ipealign
179 attachpt ~ 1
45 scale ~ 1
[24+] 271 attachdir
[24+] 272 bottomattach ~ 9
[24+] 273 topattach ~ 9
[27+] 295 exttotext
@ ACAD_TABLE
100 AcDbBlockReference
use INSERT-PLACE
50 rotation deg = 0
210 ext = 0,0,1
100 AcDbTable
[-21] use TABLE-2004
[24+] changed
[24+] use TABLE-2010
@ TABLE-2010
forwards:
  280 (0)
  342 tablestyle
  343 block
  11 hdir
  90 (22)
  91 nrows
  92 ncols
  93 (0)
  94 (0)
  95 (0)
  96 (0)
  for nrows:
    141 rheight
  for ncols:
    142 cwidth
  for nrows:
    read row = INDEX
    for ncells:
      read column = INDEX
      read inside = 0
      read wide = 1
      read high = 1
      for nmerged:
        read here = mtop == row && mleft == column
        read wide = wide + here * (mright - mleft)
        read high = high + here * (mbottom - mtop)
        read within = row >= mtop && row <= mbottom && column >= mleft && column <= mright
        read inside = inside || (within && !here)
      use TABLE-2010-CELL
@ TABLE-2010-CELL
read first = 0
read tall = 0
for ncontent:
  if INDEX == 0:
    read first = kind
    if hasformat:
      read tall = (ovflags >> 7) & 1
171 (1 + (first == 4))
172 (0)
173 (inside)
174 (0)
175 (wide)
176 (high)
91 (tall * 32)
178 (0)
145 (0)
for ncontent:
  if INDEX == 0 && kind == 4:
    340 blockref
    144 scale ~ 1
    179 (0)
  140 textheight ? INDEX == 0 && tall
92 (0)
301 'CELL_VALUE'
for ncontent:
  if INDEX == 0 && kind == 1:
    use VALUE-BODY
if first != 1:
  93 (7)
  90 (0)
  94 (0)
  300 ''
  302 ''
304 'ACVALUE_END'
@ TABLE-CELL
171 ctype ~ 1
172 edges
173 merged
174 autofit
175 mergew ~ 1
176 mergeh ~ 1
read own = hascov * cov
[-18] 177 ((own & 0x7FFF) - (own & 0x8000)) as own
[21+] 91 (own) as own
[-18] write cov = (own & 0xFFFF) | hascov * (cov & 0x70000)
[21+] write cov = own
write hascov = cov != 0
178 virt ~ 0
145 rot
if ctype == 1:
  344 cellref = 0
  [-18] 1 ctext pieces 2 ? cellref == 0
if ctype == 2:
  340 cellref
  144 bscale ~ 1
  179 natts ~ 0
  write hasatts = natts > 0
  for natts:
    331 attdef
    300 atext
    write aindex = INDEX + 1
if cov:
  170 oa ? cov & 1
  63 ob color ? cov & 4
  64 oc color ? cov & 8
  283 of ? cov & 2
  7 os name ? cov & 16
  140 oh ? cov & 32
  275 rl ? cov & 0x800
  65 rc color ? cov & 0x80
  285 rv = 0 ? cov & 0x8000
  276 bl ? cov & 0x1000
  66 bc color ? cov & 0x100
  286 bv = 0 ? cov & 0x10000
  278 ll ? cov & 0x2000
  68 lc color ? cov & 0x200
  288 lv = 0 ? cov & 0x20000
  279 tl ? cov & 0x400
  69 tc color ? cov & 0x40
  289 tv = 0 ? cov & 0x4000
[21+] 92 cunk
[21+] 301 'CELL_VALUE'
[21+] use VALUE
@ TABLE-2004
342 tablestyle
343 block
11 hdir ~ 1,0,0
90 valueflag ~ 22
91 nrows
92 ncols
read over = hasover * tov
93 (over) as over
94 (hasbcol * bcolflags) as bcolflags
95 (hasblw * blwflags) as blwflags
96 (hasbvis * bvisflags) as bvisflags
write hasover = over != 0
write tov = over
write hasbcol = bcolflags != 0
write hasblw = blwflags != 0
write hasbvis = bvisflags != 0
if over:
  280 o280 ? over & 1
  70 o70 ? over & 4
  40 o40 ? over & 8
  41 o41 ? over & 0x10
  170 a3 ? over & 0x10000
  283 f3 ? over & 0x400
  63 b3 color ? over & 0x2000
  64 c3 color ? over & 0x80
  7 s3 name ? over & 0x80000
  140 h3 ? over & 0x400000
  170 a1 ? over & 0x4000
  283 f1 ? over & 0x100
  63 b1 color ? over & 0x800
  64 c1 color ? over & 0x20
  7 s1 name ? over & 0x20000
  140 h1 ? over & 0x100000
  170 a2 ? over & 0x8000
  283 f2 ? over & 0x200
  63 b2 color ? over & 0x1000
  64 c2 color ? over & 0x40
  7 s2 name ? over & 0x40000
  140 h2 ? over & 0x200000
141 rowh*
142 colw*
for ncols * nrows:
  use TABLE-CELL
@ TABLEGEOMETRY
100 AcDbTableGeometry
90 nrows
91 ncols
92 ncells
for ncells:
  93 gflags
  40 gw
  41 gh
  330 gref
  94 ngeo
  for ngeo:
    10 topleft
    11 center
    43 cw
    44 ch
    45 w
    46 h
    95 f
)";

} // namespace hostkit
