// Transcripts of common shapes, texts, inserts and polylines.
#include "recordtranscripts.h"

namespace hostkit {

// Texts, vertices and polylines of one name in the exchange form are told from each other by their marks.
// Names with an x, y or z behind them are ordinates; 10 zx,zy,zz is a point that no record has. Programs
// differ in the class that has a dimension's group 52.
const char* const entityTranscripts = R"(
@ TEXT-PLACE
100 AcDbText
39 thickness = 0
10 ins,elevation
40 height
1 text
50 rotation deg = 0
41 wfactor = 1
51 oblique deg = 0
7 style name = 'Standard'
71 generation = 0
72 halign = 0
read alignz = elevation
11 align,alignz ~ 0 ?> halign || valign || !(df & 2)
210 ext = 0,0,1
@ TEXT-END
write df = (elevation == 0) + (align.x == 0 && align.y == 0) * 2 + (oblique == 0) * 4 + (rotation == 0) * 8 + (wfactor == 1) * 16 + (generation == 0) * 32 + (halign == 0) * 64 + (valign == 0) * 128
@ TEXT
use TEXT-PLACE
100 AcDbText
73 valign = 0
use TEXT-END
@ ATTRIB
use TEXT-PLACE
100 AcDbAttribute
[24+] 280 version ~ 0
2 tag
use ATTRIBUTE-END
@ ATTDEF
use TEXT-PLACE
100 AcDbAttributeDefinition
[24+] 280 version ~ 0
3 prompt
2 tag
use ATTRIBUTE-END
@ ATTRIBUTE-END
70 flags
73 fieldlen = 0
74 valign = 0
[21+] 280 lockpos ~ 0
[32+] 71 atttype = 1
[32+] if atttype > 1:
  72 (0)
  11 align,alignz
  101 'Embedded Object'
  use PARAGRAPH as m
  use PARAGRAPH-TWIN as m
  new m.notanno = 1
  new m.ver = 4
  new m.defflag = 1
  new m.noxdic = 1
  new m.ltscale = 1
  new m.lweight = 29
  new m.layer = layer
use TEXT-END
@ BLOCK
100 AcDbBlockBegin
2 name
@ ENDBLK
100 AcDbBlockEnd
@ SEQEND
@ INSERT-PLACE
66 hasattr = 0
2 block name BLOCK_RECORD
10 ins
41 (sx + (sf & 1)) as sx = 1
42 (sy + (sf == 2) * sx + (sf == 3)) as sy = 1
43 (sz + (sf == 2) * sx + (sf == 3)) as sz = 1
write sf = (sx == sy && sx == sz) * 2 + (sx == 1)
@ INSERT
100 AcDbBlockReference
use INSERT-PLACE
50 rotation deg = 0
210 ext = 0,0,1
@ MINSERT | INSERT
100 AcDbMInsertBlock
use INSERT-PLACE
50 rotation deg = 0
70 ncols ~ 1
71 nrows ~ 1
44 colspace = 0
45 rowspace = 0
210 ext = 0,0,1
@ VERTEX_2D | VERTEX
100 AcDbVertex
100 AcDb2dVertex
10 pt
40 (startw * (1 - 2 * (startw < 0))) as startw = 0
41 (endw - startw * (startw < 0)) as endw = 0
42 bulge = 0
[24+] 91 id = 0
70 flags = 0
50 tangent deg = 0
write startw = startw * (1 - 2 * (startw == endw && startw > 0))
@ VERTEX_3D | VERTEX
100 AcDbVertex
100 AcDb3dPolylineVertex
10 pt
70 flags ~ 32
@ VERTEX_MESH | VERTEX
100 AcDbVertex
100 AcDbPolygonMeshVertex
10 pt
70 flags ~ 64
@ VERTEX_PFACE | VERTEX
100 AcDbVertex
100 AcDbPolyFaceMeshVertex
10 pt
70 flags ~ 192
@ VERTEX_PFACE_FACE | VERTEX
100 AcDbFaceRecord
10 zx,zy,zz
70 (128)
71 v1 = 0
72 v2 = 0
73 v3 = 0
74 v4 = 0
@ POLYLINE_2D | POLYLINE
100 AcDb2dPolyline
66 (1)
10 zx,zy,elevation
39 thickness = 0
70 flags ~ 0
40 startw = 0
41 endw = 0
75 curvetype = 0
210 ext = 0,0,1
@ POLYLINE_3D | POLYLINE
100 AcDb3dPolyline
66 (1)
10 zx,zy,zz
70 (8 + (flags & 1) + ((curveflags & 3) != 0) * 4) as g70
75 ((curveflags & 1) * 5 + ((curveflags & 3) == 2) * 6) as g75 = 0
write flags = g70 & 1
write curveflags = (g75 == 5) + (g75 == 6) * 2
@ POLYLINE_PFACE | POLYLINE
100 AcDbPolyFaceMesh
66 (1)
10 zx,zy,zz
70 (64)
71 nverts
72 nfaces
@ POLYLINE_MESH | POLYLINE
100 AcDbPolygonMesh
66 (1)
10 zx,zy,zz
70 (flags | 16) as flags
71 m
72 n
73 mdensity = 0
74 ndensity = 0
75 curvetype = 0
@ ARC
100 AcDbCircle
39 thickness = 0
10 center
40 radius
210 ext = 0,0,1
100 AcDbArc
50 start deg
51 end deg
@ CIRCLE
100 AcDbCircle
39 thickness = 0
10 center
40 radius
210 ext = 0,0,1
@ LINE
100 AcDbLine
39 thickness = 0
10 x1,y1,z1
11 x2,y2,z2
210 ext = 0,0,1
write zzero = z1 == 0 && z2 == 0
@ POINT
100 AcDbPoint
39 thickness = 0
10 pt
210 ext = 0,0,1
50 xang deg = 0
@ 3DFACE
100 AcDbFace
10 x1,y1,z1
11 p2
12 p3
13 p4
70 invis = 0
write zzero = z1 == 0
write noflag = invis == 0
@ SOLID
100 AcDbTrace
39 thickness = 0
10 p1,elevation
11 p2,elevation
12 p3,elevation
13 p4,elevation
210 ext = 0,0,1
@ TRACE
100 AcDbTrace
39 thickness = 0
10 p1,elevation
11 p2,elevation
12 p3,elevation
13 p4,elevation
210 ext = 0,0,1
@ SHAPE
100 AcDbShape
39 thickness = 0
10 ins
40 size
2 shapeno shapename
50 rotation deg = 0
41 wfactor = 1
51 oblique deg = 0
210 ext = 0,0,1
@ ELLIPSE
100 AcDbEllipse
10 center
11 major
210 ext ~ 0,0,1
40 ratio
41 start
42 end
@ RAY
100 AcDbRay
10 pt
11 dir
@ XLINE
100 AcDbXline
10 pt
11 dir
@ SPLINE
100 AcDbSpline
[-24] 70 (closed + periodic * 2 + rational * 4) as g70
[27+] 70 (closed | periodic * 2 | rational * 4 | (flags1 & 4) >> 2 | (flags1 & 15) << 7) as g70
71 degree
72 (nknots) as nknots
73 (nctrl) as nctrl
74 (nfit) as nfit
42 knottol ~ 0.0000001 ?> nctrl
43 ctrltol ~ 0.0000001 ?> nctrl
44 fittol ~ 0.0000000001 ?> nfit
12 begtan = 0
13 endtan = 0
40 knots*
for nctrl + 0:
  41 weight@nctrl ?> weighted
write weighted = weight != 0
for nctrl + 0:
  10 pt@nctrl
11 fitpts*
write closed = g70 & 1
write periodic = (g70 & 2) >> 1
write rational = (g70 & 4) >> 2
[-24] write scenario = 1 + (nctrl == 0)
[27+] write scenario = 1
[27+] write flags1 = (g70 >> 7) & 15 | nctrl == 0
[27+] new knotparam = (nctrl != 0) * 15
@ LWPOLYLINE
100 AcDbPolyline
90 npts
70 ((flag & 512) >> 9 | (flag & 256) >> 1) as g70
43 constw ~ 0 ?> !nwidth
38 elevation = 0
39 thickness = 0
for npts:
  10 pts[]
  40 startw@nwidth ~ 0 ?> nwidth
  41 endw@nwidth ~ 0 ?> nwidth
  42 bulges[] = 0
  [24+] 91 ids[] = 0
  write haswidth = haswidth || startw != 0 || endw != 0
  write hasbulge = hasbulge || bulges != 0
  [24+] write hasid = hasid || ids != 0
210 ext = 0,0,1
write nwidth = npts * haswidth
write nbulge = npts * hasbulge
[24+] write nid = npts * hasid
write flag = (ext.x != 0 || ext.y != 0 || ext.z != 1) + (thickness != 0) * 2 + (constw != 0) * 4 + (elevation != 0) * 8 + hasbulge * 16 + haswidth * 32 + (g70 & 128) * 2 + (g70 & 1) * 512 + hasid * 1024
@ DIMENSION-HEAD
100 AcDbDimension
[24+] 280 version ~ 0
2 block name BLOCK_RECORD = ''
10 pt10
11 textmid,elevation
read pt12z = elevation
12 pt12,pt12z = 0 ?> pt12.x || pt12.y
70 (kind + ((flags & 2) << 4) + (flags2 & 1) * 64 + ((flags & 1) == 0) * 128) as g70
1 usertext = ''
71 attach ~ 5
72 lsstyle = 1
41 lsfactor = 1
42 measurement ~ 0
[21+] 73 unk73 ~ 0
[21+] 74 flip1 ~ 0
[21+] 75 flip2 ~ 0
53 textrot deg = 0
52 extrot deg = 0 ?> 0
54 insrot deg = 0
51 horizdir deg = 0
3 dimstyle name ~ 'Standard'
210 ext = 0,0,1
write flags = 8 | (g70 & 32) >> 4 | (g70 & 128) == 0
new insx = 1
new insy = 1
new insz = 1
@ DIMENSION_LINEAR | DIMENSION
read kind = 0
use DIMENSION-HEAD
100 AcDbAlignedDimension
13 pt13
14 pt14
50 rotation deg = 0
52 extrot deg ?> extrot
100 AcDbRotatedDimension
@ DIMENSION_ALIGNED | DIMENSION
read kind = 1
use DIMENSION-HEAD
100 AcDbAlignedDimension
13 pt13
14 pt14
52 extrot deg ?> extrot
@ DIMENSION_ORDINATE | DIMENSION
read kind = 6
use DIMENSION-HEAD
100 AcDbOrdinateDimension
13 pt13
14 pt14
write flags2 = (g70 & 64) >> 6
@ DIMENSION_ANG3PT | DIMENSION
read kind = 5
use DIMENSION-HEAD
100 AcDb3PointAngularDimension
13 pt13
14 pt14
15 pt15
@ DIMENSION_ANG2LN | DIMENSION
read kind = 2
use DIMENSION-HEAD
100 AcDb2LineAngularDimension
13 pt13
14 pt14
15 pt15
read pt16z = elevation
16 pt16,pt16z
@ DIMENSION_RADIUS | DIMENSION
read kind = 4
use DIMENSION-HEAD
100 AcDbRadialDimension
15 pt15
40 leaderlen
@ DIMENSION_DIAMETER | DIMENSION
read kind = 3
use DIMENSION-HEAD
100 AcDbDiametricDimension
15 pt15
40 leaderlen
@ ARC_DIMENSION
read kind = 5
use DIMENSION-HEAD
100 AcDbArcDimension
13 pt13
14 pt14
15 center
70 partial
40 start
41 end
71 hasleader
16 pt16
17 pt17
@ LARGE_RADIAL_DIMENSION
read kind = 9
use DIMENSION-HEAD
100 AcDbRadialDimensionLarge
13 override
14 jogpoint
15 pt15
40 jogangle
)";

} // namespace hostkit
