// Transcripts of fields and of the contents of tables, with their cells.
#include "recordtranscripts.h"

namespace hostkit {

const char* const cellTranscripts = R"(
@ CONTENT-FORMAT
300 'CONTENTFORMAT'
1 'CONTENTFORMAT_BEGIN'
90 ovflags
91 propflags
92 datatype
93 unittype
300 format
40 rotation
140 scale
94 align
62 ccolor color
340 textstyle
144 textheight
309 'CONTENTFORMAT_END'
@ CELL-STYLE
1 'TABLEFORMAT_BEGIN'
90 cstype
170 hasdata
if hasdata:
  91 csov
  92 mergeflags
  62 bgcolor color
  93 layoutflags
  use CONTENT-FORMAT
  171 marginflags
  if marginflags & 1:
    301 'MARGIN'
    1 'CELLMARGIN_BEGIN'
    40 margins*
    309 'CELLMARGIN_END'
  94 nborders
  for nborders:
    95 edge
    if edge:
      302 'GRIDFORMAT'
      1 'GRIDFORMAT_BEGIN'
      90 bov
      91 btype
      62 bcolor color
      92 blw
      340 bltype
      93 binvis
      40 bspacing
      309 'GRIDFORMAT_END'
309 'TABLEFORMAT_END'
@ CELLSTYLEMAP
100 AcDbCellStyleMap
90 ncs
for ncs:
  300 'CELLSTYLE'
  use CELL-STYLE
  1 'CELLSTYLE_BEGIN'
  90 csid
  91 csclass
  300 csname
  309 'CELLSTYLE_END'
@ VALUE
use VALUE-BODY
[21+] 304 'ACVALUE_END'
@ VALUE-BODY
[21+] 93 vflags
90 vtype
[-18] read vflags = 0
[-18] write vflags = 0
if !(vflags & 1):
  1 vbytes valuetext ? vtype == 4 || vtype == 512
  91 ival ? vtype == 0 || vtype == 1
  140 dval ? vtype == 2
  92 vsize ? vtype == 8
  310 vbytes hex ? vtype == 8
  if vtype == 16:
    11 vpt2
    write vsize = 16
  if vtype == 32:
    11 vpt3
    write vsize = 24
  330 vref ? vtype == 64
[21+] 94 units
[21+] 300 vformat
[21+] 302 vstring
@ FIELD
100 AcDbField
1 evaluator
2 code pieces 3
90 nchild
360 children*
97 nobj
331 objects*
[-18] 4 format
91 evaloption
92 filingoption
94 state
95 evalstatus
96 evalerror
300 errormsg
93 nvalues
for nvalues:
  6 key
  use VALUE
7 'ACFD_FIELD_VALUE'
use VALUE
301 valuestring
98 valuelen
@ CUSTOM-DATA
301 'CUSTOMDATA'
1 'DATAMAP_BEGIN'
90 ncd
for ncd:
  300 cdname
  301 'DATAMAP_VALUE'
  use VALUE
309 'DATAMAP_END'
@ CELL-DATA
300 'CELL'
1 'LINKEDTABLEDATACELL_BEGIN'
90 state
300 tooltip
91 custom
use CUSTOM-DATA
92 linked
if linked:
  340 datalink
  93 lrows
  94 lcols
  96 lunk
95 ncontent
for ncontent:
  302 'CONTENT'
  1 'CELLCONTENT_BEGIN'
  90 kind
  if kind == 1:
    300 'VALUE'
    use VALUE
  340 fieldref ? kind == 2
  340 blockref ? kind == 4
  91 natt
  for natt:
    330 attdef
    301 attvalue
    92 attindex
  309 'CELLCONTENT_END'
  1 'FORMATTEDCELLCONTENT_BEGIN'
  170 hasformat
  if hasformat:
    use CONTENT-FORMAT
  309 'FORMATTEDCELLCONTENT_END'
309 'LINKEDTABLEDATACELL_END'
1 'FORMATTEDTABLEDATACELL_BEGIN'
300 'CELLTABLEFORMAT'
use CELL-STYLE
309 'FORMATTEDTABLEDATACELL_END'
1 'TABLECELL_BEGIN'
90 styleid
91 hasgeom
if hasgeom:
  91 g91
  40 g40
  41 g41
  330 geomref
  92 geomflags
  if geomflags:
    10 topleft
    11 center
    43 contentw
    44 contenth
    45 gwidth
    46 gheight
    95 gunk
309 'TABLECELL_END'
@ TABLECONTENT
[-18] bars 304
[21+] needs 304
100 AcDbLinkedData
1 name
300 desc
100 AcDbLinkedTableData
90 ncols
for ncols:
  300 'COLUMN'
  1 'LINKEDTABLEDATACOLUMN_BEGIN'
  300 colname
  91 ccustom
  use CUSTOM-DATA
  309 'LINKEDTABLEDATACOLUMN_END'
  1 'FORMATTEDTABLEDATACOLUMN_BEGIN'
  300 'COLUMNTABLEFORMAT'
  use CELL-STYLE
  309 'FORMATTEDTABLEDATACOLUMN_END'
  1 'TABLECOLUMN_BEGIN'
  90 cstyleid
  40 cwidth
  309 'TABLECOLUMN_END'
91 nrows
for nrows:
  301 'ROW'
  1 'LINKEDTABLEDATAROW_BEGIN'
  90 ncells
  for ncells:
    use CELL-DATA
  91 rcustom
  use CUSTOM-DATA
  309 'LINKEDTABLEDATAROW_END'
  1 'FORMATTEDTABLEDATAROW_BEGIN'
  300 'ROWTABLEFORMAT'
  use CELL-STYLE
  309 'FORMATTEDTABLEDATAROW_END'
  1 'TABLEROW_BEGIN'
  90 rstyleid
  40 rheight
  309 'TABLEROW_END'
92 nfields
360 fields*
100 AcDbFormattedTableData
300 'TABLEFORMAT'
use CELL-STYLE
90 nmerged
for nmerged:
  91 mtop
  92 mleft
  93 mbottom
  94 mright
100 AcDbTableContent
340 tablestyle
)";

} // namespace hostkit
