// Layouts of records: view ports, dictionaries, layouts, and what stands in dictionaries.
#include "recordlayouts.h"

namespace hostkit {

const char* const objectsLayouts = R"(
@ VPORT 65 O
use TABLE-ENTRY
BD height
BD aspectw
use VIEW-DATA
2RD lowerleft
2RD upperright
B ucsfollow
BS circlezoom
B fastzoom
B ucsicon0
B ucsicon1
B grid
2RD gridspace
B snap
B snapstyle
BS isopair
BD snaprot
2RD snapbase
2RD snapspace
B unk
B ucspervp
3BD ucsorg
3BD ucsx
3BD ucsy
BD ucselev
BS ucsortho
[21+] BS gridflags
[21+] BS gridmajor
H5 xref
[21+] H4 background
[21+] H5 visualstyle
[21+] H3 sun
H5 nameducs
H5 baseucs
@ APPID_CONTROL 66 O
BL nentries
H2 entries[nentries]
@ APPID 67 O
use TABLE-ENTRY
RC unk71
H5 xref
@ DIMSTYLE_CONTROL 68 O
BL nentries
RC nmore
H2 entries[nentries]
H5 more[nmore]
@ DIMENSION-VALUES part P
TV DIMPOST
TV DIMAPOST
BD DIMSCALE
BD DIMASZ
BD DIMEXO
BD DIMDLI
BD DIMEXE
BD DIMRND
BD DIMDLE
BD DIMTP
BD DIMTM
[21+] BD DIMFXL
[21+] BD DIMJOGANG
[21+] BS DIMTFILL
[21+] CMC DIMTFILLCLR
B DIMTOL
B DIMLIM
B DIMTIH
B DIMTOH
B DIMSE1
B DIMSE2
BS DIMTAD
BS DIMZIN
BS DIMAZIN
[21+] BS DIMARCSYM
BD DIMTXT
BD DIMCEN
BD DIMTSZ
BD DIMALTF
BD DIMLFAC
BD DIMTVP
BD DIMTFAC
BD DIMGAP
BD DIMALTRND
B DIMALT
BS DIMALTD
B DIMTOFL
B DIMSAH
B DIMTIX
B DIMSOXD
CMC DIMCLRD
CMC DIMCLRE
CMC DIMCLRT
BS DIMADEC
BS DIMDEC
BS DIMTDEC
BS DIMALTU
BS DIMALTTD
BS DIMAUNIT
BS DIMFRAC
BS DIMLUNIT
BS DIMDSEP
BS DIMTMOVE
BS DIMJUST
B DIMSD1
B DIMSD2
BS DIMTOLJ
BS DIMTZIN
BS DIMALTZ
BS DIMALTTZ
B DIMUPT
BS DIMATFIT
[21+] B DIMFXLON
[24+] B DIMTXTDIRECTION
[24+] BD DIMALTMZF
[24+] TV DIMALTMZS
[24+] BD DIMMZF
[24+] TV DIMMZS
@ DIMSTYLE 69 O
use TABLE-ENTRY
use DIMENSION-VALUES
BS DIMLWD
BS DIMLWE
B flag0
H5 xref
H5 DIMTXSTY
H5 DIMLDRBLK
H5 DIMBLK
H5 DIMBLK1
H5 DIMBLK2
[21+] H5 DIMLTYPE
[21+] H5 DIMLTEX1
[21+] H5 DIMLTEX2
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
BS cloning
RC hardowner
TV names[n]
H2 items[n]
@ DICTIONARY 42 O
use DICTIONARY-DATA
@ GROUP 72 O
TV description
BS unnamed
BS selectable
BL n
H5 members[n]
@ MLINESTYLE 73 O
TV name
TV description
BS flags
CMC fill
BD startang
BD endang
RC nlines
for nlines:
  BD offset
  CMC lcolor
  [-27] BS ltindex
  [32+] H5 ltype
@ XRECORD 79 O
BL nbytes
X nbytes data
BS cloning
HREST refs
@ PLACEHOLDER 80 O
@ PLOTSETTINGS-DATA part P
TV pagesetup
TV printer
BS plotflags
BD left
BD bottom
BD right
BD top
BD paperw
BD paperh
TV papersize
BD orgx
BD orgy
BS paperunits
BS rotation
BS plottype
BD winllx
BD winlly
BD winurx
BD winury
[-15] TV plotview
BD num
BD denom
TV stylesheet
BS scaletype
BD scalefactor
BD imgx
BD imgy
[18+] BS shademode
[18+] BS shaderes
[18+] BS shadedpi
[18+] H5 plotviewh
[21+] H4 visualstyle
@ LAYOUT 82 O
use PLOTSETTINGS-DATA
TV name
BL taborder
BS flags
3BD ucsorg
2RD limmin
2RD limmax
3BD insbase
3BD ucsx
3BD ucsy
BD elevation
BS orthotype
3BD extmin
3BD extmax
[18+] BL nviewports
H4 blockrecord
H4 activevp
H5 baseucs
H5 nameducs
[18+] H4 viewports[nviewports]
@ PLOTSETTINGS class O
use PLOTSETTINGS-DATA
@ DICTIONARYVAR class O
RC schema
TV value
@ ACDBDICTIONARYWDFLT class O
use DICTIONARY-DATA
H5 default
@ ACDBPLACEHOLDER class O
@ IMAGEDEF class O
BL classver
2RD size
TV file
B loaded
RC resunits
2RD pixelsize
@ IMAGEDEF_REACTOR class O
BL classver
@ RASTERVARIABLES class O
BL classver
BS frame
BS quality
BS units
@ WIPEOUTVARIABLES class O
BS frame
@ SORTENTSTABLE class O
BL n
HD sort[n]
H4 owner2
H4 ents[n]
@ SPATIAL_FILTER class O
BS n
2RD pts[n]
3BD ext
3BD origin
BS dispbound
BS frontclip
BD frontdist ? frontclip
BS backclip
BD backdist ? backclip
BD invmatrix[12]
BD clipmatrix[12]
@ LAYER_INDEX class O
BL time1
BL time2
BL n
for n:
  BL count
  TV layername
H3 entries[n]
@ IDBUFFER class O
RC unk
BL n
H4 ids[n]
@ SCALE class O
BS unk
TV name
BD paper
BD drawing
B unit
@ DBCOLOR class O
CMC color
@ FIELDLIST class O
BL n
B unk
H4 fields[n]
@ VALUE part P
[21+] BL vflags
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
[21+] BL units
[21+] TV vformat
[21+] TV vstring
@ FIELD class O
TV evaluator
TV code
BL nchild
H3 children[nchild]
BL nobj
H5 objects[nobj]
[-18] TV format
BL evaloption
BL filingoption
BL state
BL evalstatus
BL evalerror
TV errormsg
use VALUE
TV valuestring
BL valuelen
BL nvalues
for nvalues:
  TV key
  use VALUE
@ MLEADERSTYLE class O
[24+] BS version
BS content
BS draworder
BS leaderorder
BL maxpoints
BD segang1
BD segang2
BS leadertype
CMC linecolor
H5 ltype
BL lweight
B landing
BD landinggap
B dogleg
BD landingdist
TV description
H5 arrow
BD arrowsize
TV deftext
H5 textstyle
BS leftattach
BS rightattach
BS textangle
BS textalign
CMC textcolor
BD textheight
B frame
B alignleft
BD alignspace
H5 block
CMC blockcolor
BD blockscalex
BD blockscaley
BD blockscalez
B blockscaleon
BD blockrot
B blockroton
BS blockconn
BD scale
B annotative
B changed
BD breaksize
[24+] BS attachdir
[24+] BS topattach
[24+] BS bottomattach
[27+] B unk298
)";

} // namespace hostkit
