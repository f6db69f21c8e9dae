// Transcripts of styles of leaders, tables and views, and of materials.
#include "recordtranscripts.h"

namespace hostkit {

const char* const styleTranscripts = R"(
@ MLEADERSTYLE
100 AcDbMLeaderStyle
[24+] 179 version ~ 2
170 content ~ 2
171 draworder ~ 1
172 leaderorder
90 maxpoints ~ 2
40 segang1
41 segang2
173 leadertype ~ 1
91 linecolor longcolor
340 ltype
92 lweight ~ -2
290 landing ~ 1
42 landinggap
291 dogleg ~ 1
43 landingdist
3 description
341 arrow = 0
44 arrowsize
300 deftext
342 textstyle = 0
174 leftattach
178 rightattach
175 textangle
176 textalign
93 textcolor longcolor
45 textheight
292 frame
297 alignleft
46 alignspace
343 block = 0
94 blockcolor longcolor
47 blockscalex ~ 1
49 blockscaley ~ 1
140 blockscalez ~ 1
293 blockscaleon
141 blockrot
294 blockroton
177 blockconn
142 scale ~ 1
295 changed
296 annotative
143 breaksize
[24+] 271 attachdir
[24+] 272 bottomattach ~ 9
[24+] 273 topattach ~ 9
[27+] 298 unk298
@ ROW-STYLE
7 textstyle name
140 textheight
170 align
62 textcolor color
63 fillcolor color
283 fillon
[21+] 90 datatype ~ 512
[21+] 91 unittype
[21+] 1 format
274 topw ~ -2
284 topv ~ 1
64 topc color ~ 0
275 insidehw ~ -2
285 insidehv ~ 1
65 insidehc color ~ 0
276 bottomw ~ -2
286 bottomv ~ 1
66 bottomc color ~ 0
277 leftw ~ -2
287 leftv ~ 1
67 leftc color ~ 0
278 insidevw ~ -2
288 insidevv ~ 1
68 insidevc color ~ 0
279 rightw ~ -2
289 rightv ~ 1
69 rightc color ~ 0
@ TABLESTYLE
100 AcDbTableStyle
[-21] use TABLESTYLE-2004
[24+] use TABLESTYLE-2010
@ TABLESTYLE-2004
3 description
70 flow
71 flags
40 hmargin
41 vmargin
280 notitle
281 noheader
for 3:
  use ROW-STYLE
@ TABLESTYLE-2010
1 ncs tablestyle
forwards:
  280 unk0
  3 description
  70 (0)
  71 (0)
  for 2:
    40 margins[] ? INDEX == 1
  for 1:
    41 margins[]
  280 (0)
  281 (0)
  for ncs:
    if csid == 3:
      use ROW-STYLE-2010
  for ncs:
    if csid == 1:
      use ROW-STYLE-2010
  for ncs:
    if csid == 2:
      use ROW-STYLE-2010
@ BORDERS-2010
for nborders:
  if edge == 1:
    274 blw
    284 (!binvis)
    64 bcolor color
for nborders:
  if edge == 32:
    275 blw
    285 (!binvis)
    65 bcolor color
for nborders:
  if edge == 4:
    276 blw
    286 (!binvis)
    66 bcolor color
for nborders:
  if edge == 8:
    277 blw
    287 (!binvis)
    67 bcolor color
for nborders:
  if edge == 16:
    278 blw
    288 (!binvis)
    68 bcolor color
for nborders:
  if edge == 2:
    279 blw
    289 (!binvis)
    69 bcolor color
@ ROW-STYLE-2010
7 textstyle name
140 textheight
170 align
62 ccolor color
63 (7) ? bgcolor == 257
63 bgcolor color ? bgcolor != 257
283 (bgcolor != 257)
90 datatype
91 unittype
1 format
use BORDERS-2010
@ MATERIAL
100 AcDbMaterial
1 name
2 description = ''
70 ambient.method = 0
40 ambient.factor = 1
90 ambient.rgb ? ambient.method == 1
71 diffuse.method = 0
41 diffuse.factor = 1
91 diffuse.rgb ? diffuse.method == 1
42 diffuse.map.blend = 1
72 diffuse.map.source = 1
3 diffuse.map.mapfile = '' ? diffuse.map.source == 1
73 diffuse.map.projection = 2
74 diffuse.map.tiling = 1
75 diffuse.map.autotrans = 1
43 diffuse.map.matrix* = 1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1
44 gloss = 0.5
76 specular.method = 0
45 specular.factor = 1
92 specular.rgb ? specular.method == 1
46 specular.map.blend = 1
77 specular.map.source = 1
4 specular.map.mapfile = '' ? specular.map.source == 1
78 specular.map.projection = 2
79 specular.map.tiling = 1
170 specular.map.autotrans = 1
47 specular.map.matrix* = 1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1
48 reflection.blend = 1
171 reflection.source = 1
6 reflection.mapfile = '' ? reflection.source == 1
172 reflection.projection = 2
173 reflection.tiling = 1
174 reflection.autotrans = 1
49 reflection.matrix* = 1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1
140 opacity = 1
141 opacity.map.blend = 1
175 opacity.map.source = 1
7 opacity.map.mapfile = '' ? opacity.map.source == 1
176 opacity.map.projection = 2
177 opacity.map.tiling = 1
178 opacity.map.autotrans = 1
142 opacity.map.matrix* = 1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1
143 bump.blend = 1
179 bump.source = 1
8 bump.mapfile = '' ? bump.source == 1
270 bump.projection = 2
271 bump.tiling = 1
272 bump.autotrans = 1
144 bump.matrix* = 1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1
145 refraction = 1
146 refraction.map.blend = 1
273 refraction.map.source = 0
9 refraction.map.mapfile = '' ? refraction.map.source == 1
274 refraction.map.projection = 2
275 refraction.map.tiling = 1
276 refraction.map.autotrans = 1
147 refraction.map.matrix* = 1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1
[21+] 148 translucence = 0
[21+] 149 selfillum = 0
[21+] 468 reflectivity = 0
[21+] 93 illummodel = 0
[21+] 94 channels ~ 63
[21+] 282 mode = 0
@ VISUALSTYLE
[24-24] needs 177 2
[27+] needs 177 3
100 AcDbVisualStyle
2 name
70 vstype
[24-24] 177 v177 ~ 2
[27+] 177 (3)
[27+] new v177 = 2
291 v291 ~ 1
[27+] 70 (58)
[24-24] 71 p71
[24-24] 176 p71_op
[24-24] 72 p72
[24-24] 176 p72_op
[24-24] 73 p73
[24-24] 176 p73_op
[24-24] 90 p90
[24-24] 176 p90_op
[24-24] 40 p40
[24-24] 176 p40_op
[24-24] 41 p41
[24-24] 176 p41_op
[24-24] 63 p63 color
[24-24] 176 p63_op
[24-24] 74 p74
[24-24] 176 p74_op
[24-24] 91 p91
[24-24] 176 p91_op
[24-24] 64 p64 color
[24-24] 176 p64_op
[24-24] 65 p65 color
[24-24] 176 p65_op
[24-24] 75 p75
[24-24] 176 p75_op
[24-24] 175 p175
[24-24] 176 p175_op
[24-24] 42 p42
[24-24] 176 p42_op
[24-24] 92 p92
[24-24] 176 p92_op
[24-24] 66 p66 color
[24-24] 176 p66_op
[24-24] 43 p43
[24-24] 176 p43_op
[24-24] 76 p76
[24-24] 176 p76_op
[24-24] 77 p77
[24-24] 176 p77_op
[24-24] 78 p78
[24-24] 176 p78_op
[24-24] 67 p67 color
[24-24] 176 p67_op
[24-24] 79 p79
[24-24] 176 p79_op
[24-24] 170 p170
[24-24] 176 p170_op
[24-24] 171 p171
[24-24] 176 p171_op
[24-24] 290 p290
[24-24] 176 p290_op
[24-24] 93 p93
[24-24] 176 p93_op
[24-24] 44 p44
[24-24] 176 p44_op
[24-24] 173 p173
[24-24] 176 p173_op
[27+] 90 p71
[27+] 176 p71_op
[27+] 90 p72
[27+] 176 p72_op
[27+] 90 p73
[27+] 176 p73_op
[27+] 90 p90
[27+] 176 p90_op
[27+] 40 p40
[27+] 176 p40_op
[27+] 40 p41
[27+] 176 p41_op
[27+] 62 p63 color
[27+] 176 p63_op
[27+] 90 p74
[27+] 176 p74_op
[27+] 90 p91
[27+] 176 p91_op
[27+] 62 p64 color
[27+] 176 p64_op
[27+] 62 p65 color
[27+] 176 p65_op
[27+] 90 p75
[27+] 176 p75_op
[27+] 90 p175
[27+] 176 p175_op
[27+] 40 p42
[27+] 176 p42_op
[27+] 90 p92
[27+] 176 p92_op
[27+] 62 p66 color
[27+] 176 p66_op
[27+] 40 p43
[27+] 176 p43_op
[27+] 90 p76
[27+] 176 p76_op
[27+] 90 p77
[27+] 176 p77_op
[27+] 90 p78
[27+] 176 p78_op
[27+] 62 p67 color
[27+] 176 p67_op
[27+] 90 p79
[27+] 176 p79_op
[27+] 90 p170
[27+] 176 p170_op
[27+] 90 p171
[27+] 176 p171_op
[27+] 290 p290
[27+] 176 p290_op
[27+] 90 p93
[27+] 176 p93_op
[27+] 40 p44
[27+] 176 p44_op
[27+] 90 p173
[27+] 176 p173_op
[27+] 290 q1
[27+] 176 q1_op
[27+] 290 q2
[27+] 176 q2_op
[27+] 290 q3
[27+] 176 q3_op
[27+] 290 q4
[27+] 176 q4_op
[27+] 290 q5
[27+] 176 q5_op
[27+] 290 q6
[27+] 176 q6_op
[27+] 290 q7
[27+] 176 q7_op
[27+] 290 q8
[27+] 176 q8_op
[27+] 290 q9
[27+] 176 q9_op
[27+] 90 q10
[27+] 176 q10_op
[27+] 40 q11
[27+] 176 q11_op
[27+] 40 q12
[27+] 176 q12_op
[27+] 90 q13
[27+] 176 q13_op
[27+] 62 q14 color
[27+] 176 q14_op
[27+] 90 q15
[27+] 176 q15_op
[27+] 90 q16
[27+] 176 q16_op
[27+] 62 q17 color
[27+] 176 q17_op
[27+] 290 q18
[27+] 176 q18_op
[27+] 90 q19
[27+] 176 q19_op
[27+] 90 q20
[27+] 176 q20_op
[27+] 90 q21
[27+] 176 q21_op
[27+] 290 q22
[27+] 176 q22_op
[27+] 90 q23
[27+] 176 q23_op
[27+] 62 q24 color
[27+] 176 q24_op
[27+] 40 q25
[27+] 176 q25_op
[27+] 90 q26
[27+] 176 q26_op
[27+] 1 q27
[27+] 176 q27_op
[27+] 290 q28
[27+] 176 q28_op
[27+] 40 q29
[27+] 176 q29_op
[27+] 40 q30
[27+] 176 q30_op
)";

} // namespace hostkit
