// Transcripts of dictionaries, layouts, materials and other objects.
#include "recordtranscripts.h"

namespace hostkit {

const char* const objectTranscripts = R"(
@ DICTIONARY-DATA
100 AcDbDictionary
280 hardowner = 0
281 cloning ~ 1
for n:
  3 names[]
  360 items[] ?> hardowner
  350 items[] ?> !hardowner
@ DICTIONARY
use DICTIONARY-DATA
@ ACDBDICTIONARYWDFLT
use DICTIONARY-DATA
100 AcDbDictionaryWithDefault
340 default
@ GROUP
100 AcDbGroup
300 description
70 unnamed
71 selectable ~ 1
340 members*
@ MLINESTYLE
100 AcDbMlineStyle
2 name
70 ((flags & 1) << 1 | (flags & 2) >> 1 | flags & 0x110 | (flags & 32) << 1 | (flags & 64) >> 1 | (flags & 512) << 1 | (flags & 1024) >> 1) as g70
write flags = (g70 & 2) >> 1 | (g70 & 1) << 1 | g70 & 0x110 | (g70 & 64) >> 1 | (g70 & 32) << 1 | (g70 & 1024) >> 1 | (g70 & 512) << 1
3 description
62 fill color ~ 256
51 startang deg ~ 90
52 endang deg ~ 90
71 nlines
for nlines:
  49 offset
  62 lcolor color ~ 256
  [-27] 6 ltindex linetypeindex
  [32+] 6 ltype name
@ XRECORD
100 AcDbXrecord
280 cloning ~ 1
1 data xrecord
@ PLACEHOLDER | ACDBPLACEHOLDER
@ ACDBPLACEHOLDER
@ PLOTSETTINGS-DATA
100 AcDbPlotSettings
1 pagesetup
2 printer
4 papersize
[-15] 6 plotview
[18+] 6 plotviewh name VIEW
40 left
41 bottom
42 right
43 top
44 paperw
45 paperh
46 orgx
47 orgy
48 winllx
49 winlly
140 winurx
141 winury
142 num ~ 1
143 denom ~ 1
70 plotflags
72 paperunits
73 rotation
74 plottype
7 stylesheet
75 scaletype
147 scalefactor ~ 1
[18+] 76 shademode
[18+] 77 shaderes ~ 2
[18+] 78 shadedpi ~ 300
148 imgx
149 imgy
[21+] 333 visualstyle = 0
@ PLOTSETTINGS
use PLOTSETTINGS-DATA
@ LAYOUT
use PLOTSETTINGS-DATA
100 AcDbLayout
1 name
70 flags
71 taborder
10 limmin
11 limmax
12 insbase
14 extmin
15 extmax
146 elevation
13 ucsorg
16 ucsx ~ 1,0,0
17 ucsy ~ 0,1,0
76 orthotype
330 blockrecord
331 activevp = 0
345 nameducs = 0
346 baseucs = 0
@ DICTIONARYVAR
100 DictionaryVariables
280 schema
1 value
@ IMAGEDEF
100 AcDbRasterImageDef
90 classver
1 file
10 size
11 pixelsize
280 loaded ~ 1
281 resunits
@ IMAGEDEF_REACTOR
100 AcDbRasterImageDefReactor
90 classver ~ 2
330 owner
@ RASTERVARIABLES
100 AcDbRasterVariables
90 classver
70 frame
71 quality
72 units
@ WIPEOUTVARIABLES
100 AcDbWipeoutVariables
70 frame
@ SORTENTSTABLE
100 AcDbSortentsTable
330 owner2
for n:
  331 ents[]
  5 sort[]
@ SPATIAL_FILTER
100 AcDbFilter
100 AcDbSpatialFilter
70 n
10 pts*
210 ext ~ 0,0,1
11 origin
71 dispbound
72 frontclip
40 frontdist ? frontclip
73 backclip
41 backdist ? backclip
for 12:
  40 invmatrix[]
for 12:
  40 clipmatrix[]
@ LAYER_INDEX
100 AcDbIndex
40 time1,time2 julian
100 AcDbLayerIndex
for n:
  8 layername
  360 entries[]
  90 count
@ IDBUFFER
100 AcDbIdBuffer
330 ids*
@ SCALE
100 AcDbScale
70 unk
300 name
140 paper ~ 1
141 drawing ~ 1
290 unit
@ DBCOLOR
100 AcDbColor
[18+] 62 color color
@ FIELDLIST
100 AcDbIdSet
90 n
330 fields*
100 AcDbFieldList
@ DIMASSOC
100 AcDbDimAssoc
330 dimension
90 assoc
70 transspace
71 rottype
for 4:
  if (assoc >> INDEX) & 1:
    use OSNAPREF
@ OSNAPREF
1 clsname
72 osnap
331 ids*
if nids:
  73 subtype
  91 marker
  301 xrefs*
40 param
10 pt
if osnap == 6 || osnap == 11:
  332 ids2*
  74 subtype2
  92 marker2
  302 xrefs2*
75 haslast
if haslast:
  use OSNAPREF as last
@ PDFDEFINITION
100 AcDbUnderlayDefinition
1 file
2 item
@ ACDB_BLOCKREPRESENTATION_DATA
100 AcDbBlockRepresentationData
70 version
340 block
@ ACDB_DYNAMICBLOCKPURGEPREVENTER_VERSION
100 AcDbDynamicBlockPurgePreventer
70 version
@ ACAD_EVALUATION_GRAPH
100 AcDbEvalGraph
96 v96
97 v97
for nnodes next:
  91 index
  93 nflags
  95 id
  360 expr
  92 d1
  92 d2
  92 d3
  92 d4
for nedges next:
  92 eindex
  93 eflags
  94 tracked
  91 from
  91 to
  92 e1
  92 e2
  92 e3
  92 e4
  92 e5
@ SUN
100 AcDbSun
90 classver ~ 1
290 ison
63 color color ~ 7
40 intensity ~ 1
291 shadow
91 julian
92 msec
292 dst
70 shadowtype
71 shadowsize
280 softness
@ DATATABLE | [-15] ACDBDATATABLE
[-15] 100 ACDBDATATABLE
[18+] 100 AcDbDataTable
70 dtver
90 ncols
91 nrows
1 name
for ncols:
  92 coltype
  2 colname
  93 longs* ? coltype == 1
  40 reals* ? coltype == 2
  3 texts* ? coltype == 3
  10 points2* ? coltype == 4
  11 points3* ? coltype == 5
  360 owned* ? coltype == 6
  330 pointers* ? coltype == 7
  71 flags* ? coltype == 10
)";

} // namespace hostkit
