// Transcripts of records of tables.
#include "recordtranscripts.h"

namespace hostkit {

// What holds for all of them: bit 16 of group 70 tells that the entry depends on another drawing.
const char* const tableTranscripts = R"(
@ ENTRY
[-18] read dependent = xdep * 16
[21+] read dependent = (xrefflags & 0x100) >> 4
100 AcDbSymbolTableRecord
@ ENTRY-END
[-18] new f64 = 1
[-18] write xdep = (g70 & 16) >> 4
[21+] write xrefflags = xrefflags & 0xFF | (g70 & 16) << 4
@ BLOCK_HEADER | BLOCK_RECORD
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 name blockname
340 layout
310 preview hex
102 '{BLKREFS' ? ninserts
331 inserts*
102 '}' ? ninserts
[21+] 70 insunits ~ 0
[21+] 280 explodable ~ 1
[21+] 281 scaling ~ 0
[-18] new f64 = 1
@ LAYER
use ENTRY
100 AcDbLayerTableRecord
2 name
read off = (values >> 1) & 1
70 ((values & 1) | (values & 4) >> 1 | (values & 8) >> 1 | dependent) as g70
62 color,off layercolor
6 ltype name
290 ((values >> 4) & 1) as plots = 1
370 ((values >> 5) & 31) as weight weight ~ -3
390 plotstyle
[21+] 347 material = 0
[27+] 348 visualstyle
write values = (g70 & 1) | off << 1 | (g70 & 2) << 1 | (g70 & 4) << 1 | plots << 4 | weight << 5
use ENTRY-END
@ STYLE
use ENTRY
100 AcDbTextStyleTableRecord
2 name
70 (isshape | vertical << 2 | dependent) as g70
40 fixedheight
41 wfactor ~ 1
50 oblique deg
71 generation
42 lastheight
3 font
4 bigfont
write isshape = g70 & 1
write vertical = (g70 & 4) >> 2
use ENTRY-END
@ LTYPE
use ENTRY
100 AcDbLinetypeTableRecord
2 name
70 (dependent) as g70
3 description
72 alignment ~ 65
73 ndash
40 length
for ndash:
  49 dash
  74 shapeflag
  if shapeflag & 6:
    75 (shapecode * !(shapeflag & 2)) as shape
    write shapecode = shape
    340 shapefile[]
    46 scale
    50 rotation deg
    44 xoff
    45 yoff
    9 strings linetypetexts ? shapeflag & 2
  else:
    340 shapefile[] ?> 0
    write scale = 1
use ENTRY-END
@ VIEW-AXES
110 ucsorg
111 ucsx ~ 1,0,0
112 ucsy ~ 0,1,0
79 ucsortho
146 ucselev
345 nameducs = 0
346 baseucs = 0
@ VIEW
use ENTRY
100 AcDbViewTableRecord
2 name
70 (pspace | dependent) as g70
40 height
10 center
41 width
11 dir ~ 0,0,1
12 target
42 lens ~ 50
43 frontclip
44 backclip
50 twist deg
71 bits mode0:1 mode1:2 mode2:4 !mode4n:16
281 rendermode
72 hasucs
if hasucs:
  use VIEW-AXES
[21+] 73 plottable
[21+] 332 background = 0
[21+] 334 livesection = 0
[21+] 348 visualstyle = 0
[21+] 361 sun = 0
[21+] new defaultlights = 1
[21+] new lighttype = 1
[21+] new ambient = 0xC2333333
write pspace = g70 & 1
use ENTRY-END
@ UCS
use ENTRY
100 AcDbUCSTableRecord
2 name
70 (dependent) as g70
10 origin
11 xdir ~ 1,0,0
12 ydir ~ 0,1,0
79 orthoview
146 elevation
346 baseucs = 0
for northo:
  71 orthotype
  13 orthopt
use ENTRY-END
@ VPORT
use ENTRY
100 AcDbViewportTableRecord
2 name
70 (dependent) as g70
10 lowerleft
11 upperright ~ 1,1
12 center
13 snapbase
14 snapspace
15 gridspace
16 dir ~ 0,0,1
17 target
40 height
41 (aspectw / height) as aspect
write aspectw = aspect * height
42 lens ~ 50
43 frontclip
44 backclip
50 snaprot deg
51 twist deg
71 bits mode0:1 mode1:2 mode2:4 ucsfollow:8 !mode4n:16
72 circlezoom ~ 1000
73 fastzoom
74 bits ucsicon0:1 ucsicon1:2
75 snap
76 grid
77 snapstyle
78 isopair
281 rendermode
65 ucspervp
use VIEW-AXES
[21+] 332 background = 0
[21+] 348 visualstyle = 0
[21+] 60 gridflags ~ 3
[21+] 61 gridmajor ~ 5
[21+] 292 defaultlights ~ 1
[21+] 282 lighttype ~ 1
[21+] 141 brightness
[21+] 142 contrast
[21+] 63 ambient color ~ 250
[21+] 361 sun = 0
use ENTRY-END
@ APPID
use ENTRY
100 AcDbRegAppTableRecord
2 name
70 (dependent) as g70
71 unk71 = 0
use ENTRY-END
@ DIMSTYLE
use ENTRY
100 AcDbDimStyleTableRecord
2 name
70 (flag0 | dependent) as g70
3 DIMPOST = ''
4 DIMAPOST = ''
40 DIMSCALE = 1
41 DIMASZ = 0.18
42 DIMEXO = 0.0625
43 DIMDLI = 0.38
44 DIMEXE = 0.18
45 DIMRND = 0
46 DIMDLE = 0
47 DIMTP = 0
48 DIMTM = 0
[21+] 49 DIMFXL = 1
[21+] 50 DIMJOGANG deg = 45
[21+] 69 DIMTFILL = 0
[21+] 70 DIMTFILLCLR indexcolor = 0
71 DIMTOL = 0
72 DIMLIM = 0
73 DIMTIH = 1
74 DIMTOH = 1
75 DIMSE1 = 0
76 DIMSE2 = 0
77 DIMTAD = 0
78 DIMZIN = 0
79 DIMAZIN = 0
[21+] 90 DIMARCSYM = 0
140 DIMTXT = 0.18
141 DIMCEN = 0.09
142 DIMTSZ = 0
143 DIMALTF = 25.4
144 DIMLFAC = 1
145 DIMTVP = 0
146 DIMTFAC = 1
147 DIMGAP = 0.09
148 DIMALTRND = 0
170 DIMALT = 0
171 DIMALTD = 2
172 DIMTOFL = 0
173 DIMSAH = 0
174 DIMTIX = 0
175 DIMSOXD = 0
176 DIMCLRD indexcolor = 0
177 DIMCLRE indexcolor = 0
178 DIMCLRT indexcolor = 0
179 DIMADEC = 0
271 DIMDEC = 4
272 DIMTDEC = 4
273 DIMALTU = 2
274 DIMALTTD = 2
275 DIMAUNIT = 0
276 DIMFRAC = 0
277 DIMLUNIT = 2
278 DIMDSEP = 46
279 DIMTMOVE = 0
280 DIMJUST = 0
281 DIMSD1 = 0
282 DIMSD2 = 0
283 DIMTOLJ = 1
284 DIMTZIN = 0
285 DIMALTZ = 0
286 DIMALTTZ = 0
288 DIMUPT = 0
289 DIMATFIT = 3
[21+] 290 DIMFXLON = 0
[24+] 294 DIMTXTDIRECTION = 0
340 DIMTXSTY
341 DIMLDRBLK = 0
342 DIMBLK = 0
343 DIMBLK1 = 0
344 DIMBLK2 = 0
[21+] 345 DIMLTYPE = 0
[21+] 346 DIMLTEX1 = 0
[21+] 347 DIMLTEX2 = 0
371 DIMLWD = -2
372 DIMLWE = -2
write flag0 = g70 & 1
[24+] new DIMALTMZF = 100
[24+] new DIMMZF = 100
use ENTRY-END
)";

} // namespace hostkit
