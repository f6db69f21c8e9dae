// Layouts of records: view ports, dictionaries, layouts, and what stands in dictionaries.
#include "recordlayouts.h"

namespace hostkit {

const char* const objectsLayouts = R"(
@ VPORT 65 O
use TABLE-ENTRY
BD height ; 40
BD aspectw ; 41
2RD center ; 12
3BD target ; 17
3BD dir ; 16
BD twist ; 51
BD lens ; 42
BD frontclip ; 43
BD backclip ; 44
B mode0 ; 71
B mode1 ; 71
B mode2 ; 71
B mode4n
RC rendermode ; 281
[21+] B defaultlights ; 292
[21+] RC lighttype ; 282
[21+] BD brightness ; 141
[21+] BD contrast ; 142
[21+] CMC ambient ; 63
2RD lowerleft ; 10
2RD upperright ; 11
B ucsfollow ; 71
BS circlezoom ; 72
B fastzoom ; 73
B ucsicon0 ; 74
B ucsicon1 ; 74
B grid ; 76
2RD gridspace ; 15
B snap ; 75
B snapstyle ; 77
BS isopair ; 78
BD snaprot ; 50
2RD snapbase ; 13
2RD snapspace ; 14
B unk
B ucspervp ; 65
3BD ucsorg ; 110
3BD ucsx ; 111
3BD ucsy ; 112
BD ucselev ; 146
BS ucsortho ; 79
[21+] BS gridflags ; 60
[21+] BS gridmajor ; 61
H5 xref
[21+] H4 background ; 332
[21+] H5 visualstyle ; 348
[21+] H3 sun ; 361
H5 nameducs ; 345
H5 baseucs ; 346
@ APPID_CONTROL 66 O
BL nentries
H2 entries[nentries]
@ APPID 67 O
use TABLE-ENTRY
RC unk71 ; 71
H5 xref
@ DIMSTYLE_CONTROL 68 O
BL nentries
RC nmore
H2 entries[nentries]
H5 more[nmore]
@ DIMSTYLE 69 O
use TABLE-ENTRY
TV DIMPOST ; 3
TV DIMAPOST ; 4
BD DIMSCALE ; 40
BD DIMASZ ; 41
BD DIMEXO ; 42
BD DIMDLI ; 43
BD DIMEXE ; 44
BD DIMRND ; 45
BD DIMDLE ; 46
BD DIMTP ; 47
BD DIMTM ; 48
[21+] BD DIMFXL ; 49
[21+] BD DIMJOGANG ; 50
[21+] BS DIMTFILL ; 69
[21+] CMC DIMTFILLCLR ; 70
B DIMTOL ; 71
B DIMLIM ; 72
B DIMTIH ; 73
B DIMTOH ; 74
B DIMSE1 ; 75
B DIMSE2 ; 76
BS DIMTAD ; 77
BS DIMZIN ; 78
BS DIMAZIN ; 79
[21+] BS DIMARCSYM ; 90
BD DIMTXT ; 140
BD DIMCEN ; 141
BD DIMTSZ ; 142
BD DIMALTF ; 143
BD DIMLFAC ; 144
BD DIMTVP ; 145
BD DIMTFAC ; 146
BD DIMGAP ; 147
BD DIMALTRND ; 148
B DIMALT ; 170
BS DIMALTD ; 171
B DIMTOFL ; 172
B DIMSAH ; 173
B DIMTIX ; 174
B DIMSOXD ; 175
CMC DIMCLRD ; 176
CMC DIMCLRE ; 177
CMC DIMCLRT ; 178
BS DIMADEC ; 179
BS DIMDEC ; 271
BS DIMTDEC ; 272
BS DIMALTU ; 273
BS DIMALTTD ; 274
BS DIMAUNIT ; 275
BS DIMFRAC ; 276
BS DIMLUNIT ; 277
BS DIMDSEP ; 278
BS DIMTMOVE ; 279
BS DIMJUST ; 280
B DIMSD1 ; 281
B DIMSD2 ; 282
BS DIMTOLJ ; 283
BS DIMTZIN ; 284
BS DIMALTZ ; 285
BS DIMALTTZ ; 286
B DIMUPT ; 288
BS DIMATFIT ; 289
[21+] B DIMFXLON ; 290
[24+] B DIMTXTDIRECTION ; 294
[24+] BD DIMALTMZF
[24+] TV DIMALTMZS
[24+] BD DIMMZF
[24+] TV DIMMZS
BS DIMLWD ; 371
BS DIMLWE ; 372
B flag0 ; 70
H5 xref
H5 DIMTXSTY ; 340
H5 DIMLDRBLK ; 341
H5 DIMBLK ; 342
H5 DIMBLK1 ; 343
H5 DIMBLK2 ; 344
[21+] H5 DIMLTYPE ; 345
[21+] H5 DIMLTEX1 ; 346
[21+] H5 DIMLTEX2 ; 347
@ VP_ENT_HDR_CONTROL 70 O
BL nentries
H2 entries[nentries]
@ VP_ENT_HDR 71 O
use TABLE-ENTRY
B flag1
H5 xref
H4 viewport
H5 nextheader
@ DICTIONARY-DATA part P
BL n
BS cloning ; 281
RC hardowner ; 280
TV names[n] ; 3
H* items[n] ; 350
@ DICTIONARY 42 O
use DICTIONARY-DATA
@ GROUP 72 O
TV description ; 300
BS unnamed ; 70
BS selectable ; 71
BL n
H5 members[n] ; 340
@ MLINESTYLE 73 O
TV name ; 2
TV description ; 3
BS flags
CMC fill ; 62
BD startang ; 51
BD endang ; 52
RC nlines ; 71
for nlines:
  BD offset ; 49
  CMC lcolor ; 62
  [-27] BS ltindex ; 6
  [32+] H5 ltype ; 6
@ XRECORD 79 O
BL nbytes
X nbytes data
BS cloning ; 280
HREST refs
@ PLACEHOLDER 80 O
@ PLOTSETTINGS-DATA part P
TV pagesetup ; 1
TV printer ; 2
BS plotflags ; 70
BD left ; 40
BD bottom ; 41
BD right ; 42
BD top ; 43
BD paperw ; 44
BD paperh ; 45
TV papersize ; 4
BD orgx ; 46
BD orgy ; 47
BS paperunits ; 72
BS rotation ; 73
BS plottype ; 74
BD winllx ; 48
BD winlly ; 49
BD winurx ; 140
BD winury ; 141
[-15] TV plotview ; 6
BD num ; 142
BD denom ; 143
TV stylesheet ; 7
BS scaletype ; 75
BD scalefactor ; 147
BD imgx ; 148
BD imgy ; 149
[18+] BS shademode ; 76
[18+] BS shaderes ; 77
[18+] BS shadedpi ; 78
[18+] H5 plotviewh ; 6
[21+] H4 visualstyle ; 333
@ LAYOUT 82 O
use PLOTSETTINGS-DATA
TV name ; 1
BL taborder ; 71
BS flags ; 70
3BD ucsorg ; 13
2RD limmin ; 10
2RD limmax ; 11
3BD insbase ; 12
3BD ucsx ; 16
3BD ucsy ; 17
BD elevation ; 146
BS orthotype ; 76
3BD extmin ; 14
3BD extmax ; 15
[18+] BL nviewports
H4 blockrecord ; 330
H4 activevp ; 331
H5 baseucs ; 346
H5 nameducs ; 345
[18+] H4 viewports[nviewports]
@ PLOTSETTINGS class O
use PLOTSETTINGS-DATA
@ DICTIONARYVAR class O
RC schema ; 280
TV value ; 1
@ ACDBDICTIONARYWDFLT class O
use DICTIONARY-DATA
H5 default ; 340
@ ACDBPLACEHOLDER class O
@ IMAGEDEF class O
BL classver ; 90
2RD size ; 10
TV file ; 1
B loaded ; 280
RC resunits ; 281
2RD pixelsize ; 11
@ IMAGEDEF_REACTOR class O
BL classver ; 90
@ RASTERVARIABLES class O
BL classver ; 90
BS frame ; 70
BS quality ; 71
BS units ; 72
@ WIPEOUTVARIABLES class O
BS frame ; 70
@ SORTENTSTABLE class O
BL n
HD sort[n] ; 5
H4 owner2 ; 330
H4 ents[n] ; 331
@ SPATIAL_FILTER class O
BS n ; 70
2RD pts[n] ; 10
3BD ext ; 210
3BD origin ; 11
BS dispbound ; 71
BS frontclip ; 72
BD frontdist ? frontclip ; 40
BS backclip ; 73
BD backdist ? backclip ; 41
BD invmatrix[12] ; 40
BD clipmatrix[12] ; 40
@ LAYER_INDEX class O
BL time1 ; 40
BL time2
BL n
for n:
  BL count ; 90
  TV layername ; 8
H3 entries[n] ; 360
@ IDBUFFER class O
RC unk
BL n
H4 ids[n] ; 330
@ SCALE class O
BS unk ; 70
TV name ; 300
BD paper ; 140
BD drawing ; 141
B unit ; 290
@ DBCOLOR class O
CMC color
@ FIELDLIST class O
BL n
B unk
H4 fields[n] ; 330
@ VALUE part P
[21+] BL vflags ; 93
[-18] let vflags = 0
BL vtype
if !(vflags & 1):
  BL ival ? vtype == 0 || vtype == 1
  BD dval ? vtype == 2
  if vtype == 4 || vtype == 512 || vtype == 8:
    BL vsize
    X vsize vbytes
  if vtype == 16:
    BL vsize
    2RD vpt2
  if vtype == 32:
    BL vsize
    3RD vpt3
  H5 vref ? vtype == 64
[21+] BL units ; 94
[21+] TV vformat ; 300
[21+] TV vstring ; 302
@ FIELD class O
TV evaluator ; 1
TV code ; 2 3
BL nchild ; 90
H3 children[nchild] ; 360
BL nobj ; 97
H5 objects[nobj] ; 331
[-18] TV format ; 4
BL evaloption ; 91
BL filingoption ; 92
BL state ; 94
BL evalstatus ; 95
BL evalerror ; 96
TV errormsg ; 300
use VALUE
TV valuestring ; 301 9
BL valuelen ; 98
BL nvalues ; 93
for nvalues:
  TV key ; 6
  use VALUE
@ MLEADERSTYLE class O
[24+] BS version ; 179 2
BS content ; 170
BS draworder ; 171
BS leaderorder ; 172
BL maxpoints ; 90
BD segang1 ; 40
BD segang2 ; 41
BS leadertype ; 173
CMC linecolor ; 91
H5 ltype ; 340
BL lweight ; 92
B landing ; 290
BD landinggap ; 42
B dogleg ; 291
BD landingdist ; 43
TV description ; 3
H5 arrow ; 341
BD arrowsize ; 44
TV deftext ; 300
H5 textstyle ; 342
BS leftattach ; 174
BS rightattach ; 178
BS textangle ; 175
BS textalign ; 176
CMC textcolor ; 93
BD textheight ; 45
B frame ; 292
B alignleft ; 297
BD alignspace ; 46
H5 block ; 343
CMC blockcolor ; 94
3BD blockscale ; 47 49 140
B blockscaleon ; 293
BD blockrot ; 141
B blockroton ; 294
BS blockconn ; 177
BD scale ; 142
B annotative ; 296
B changed ; 295
BD breaksize ; 143
[24+] BS attachdir ; 271
[24+] BS topattach ; 273
[24+] BS bottomattach ; 272
[27+] B unk298 ; 298
)";

} // namespace hostkit
