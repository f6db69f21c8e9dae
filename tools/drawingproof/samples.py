"""Small drawings of forms that few programs write and that real drawings have all the same. Each is told as lines of group code
and value."""

import os


def told(text):
    """Groups stand on a line each, or several on one, between semicolons."""
    return text.replace(" ; ", "\n")


HEADER_2000 = told("""
0 SECTION ; 2 HEADER
9 $ACADVER ; 1 {version}
9 $DWGCODEPAGE ; 3 ANSI_1252
9 $CLAYER ; 8 Wall
9 $CELTYPE ; 6 Dash
9 $TEXTSTYLE ; 7 Roman
9 $DIMSTYLE ; 2 Metric
9 $DIMBLK ; 1 Tick
9 $DIMTXSTY ; 7 Roman
9 $HANDSEED ; 5 FFF
0 ENDSEC
""")

TABLES_2000 = told("""
0 SECTION ; 2 TABLES
0 TABLE ; 2 LTYPE ; 5 5 ; 330 0 ; 100 AcDbSymbolTable ; 70 4
0 LTYPE ; 5 14 ; 330 5 ; 100 AcDbSymbolTableRecord ; 100 AcDbLinetypeTableRecord ; 2 ByBlock ; 70 0 ; 3 ; 72 65 ; 73 0
40 0.0
0 LTYPE ; 5 15 ; 330 5 ; 100 AcDbSymbolTableRecord ; 100 AcDbLinetypeTableRecord ; 2 ByLayer ; 70 0 ; 3 ; 72 65 ; 73 0
40 0.0
0 LTYPE ; 5 16 ; 330 5 ; 100 AcDbSymbolTableRecord ; 100 AcDbLinetypeTableRecord ; 2 Continuous ; 70 0 ; 3 Solid line
72 65 ; 73 0 ; 40 0.0
0 LTYPE ; 5 17 ; 330 5 ; 100 AcDbSymbolTableRecord ; 100 AcDbLinetypeTableRecord ; 2 Dash ; 70 0 ; 3 __ __ ; 72 65
73 2 ; 40 3.0 ; 49 2.0 ; 74 0 ; 49 -1.0 ; 74 0
0 ENDTAB
0 TABLE ; 2 LAYER ; 5 2 ; 330 0 ; 100 AcDbSymbolTable ; 70 3
0 LAYER ; 5 10 ; 330 2 ; 100 AcDbSymbolTableRecord ; 100 AcDbLayerTableRecord ; 2 0 ; 70 0 ; 62 7 ; 6 Continuous
0 LAYER ; 5 18 ; 330 2 ; 100 AcDbSymbolTableRecord ; 100 AcDbLayerTableRecord ; 2 Wall ; 70 0 ; 62 1 ; 6 Dash
0 LAYER ; 5 19 ; 330 2 ; 100 AcDbSymbolTableRecord ; 100 AcDbLayerTableRecord ; 2 Text Ebene ; 70 0 ; 62 2
6 Continuous ; 1001 TEST ; 1003 Wall ; 1000 named
0 ENDTAB
0 TABLE ; 2 STYLE ; 5 3 ; 330 0 ; 100 AcDbSymbolTable ; 70 2
0 STYLE ; 5 11 ; 330 3 ; 100 AcDbSymbolTableRecord ; 100 AcDbTextStyleTableRecord ; 2 Standard ; 70 0 ; 40 0.0
41 1.0 ; 50 0.0 ; 71 0 ; 42 0.2 ; 3 txt ; 4
0 STYLE ; 5 1A ; 330 3 ; 100 AcDbSymbolTableRecord ; 100 AcDbTextStyleTableRecord ; 2 Roman ; 70 0 ; 40 0.0 ; 41 1.0
50 0.0 ; 71 0 ; 42 0.2 ; 3 romans.shx ; 4
0 ENDTAB
0 TABLE ; 2 APPID ; 5 9 ; 330 0 ; 100 AcDbSymbolTable ; 70 2
0 APPID ; 5 12 ; 330 9 ; 100 AcDbSymbolTableRecord ; 100 AcDbRegAppTableRecord ; 2 ACAD ; 70 0
0 APPID ; 5 1B ; 330 9 ; 100 AcDbSymbolTableRecord ; 100 AcDbRegAppTableRecord ; 2 TEST ; 70 0
0 ENDTAB
0 TABLE ; 2 DIMSTYLE ; 5 A ; 330 0 ; 100 AcDbSymbolTable ; 70 2 ; 100 AcDbDimStyleTable
0 DIMSTYLE ; 105 27 ; 330 A ; 100 AcDbSymbolTableRecord ; 100 AcDbDimStyleTableRecord ; 2 Standard ; 70 0 ; 340 11
0 DIMSTYLE ; 105 28 ; 330 A ; 100 AcDbSymbolTableRecord ; 100 AcDbDimStyleTableRecord ; 2 Metric ; 70 0 ; 40 2.0
340 1A ; 342 2C
0 ENDTAB
0 TABLE ; 2 BLOCK_RECORD ; 5 1 ; 330 0 ; 100 AcDbSymbolTable ; 70 5 ; {spaces}
0 BLOCK_RECORD ; 5 2B ; 330 1 ; 100 AcDbSymbolTableRecord ; 100 AcDbBlockTableRecord ; 2 Door ; 340 0
0 BLOCK_RECORD ; 5 2C ; 330 1 ; 100 AcDbSymbolTableRecord ; 100 AcDbBlockTableRecord ; 2 Tick ; 340 0
0 BLOCK_RECORD ; 5 2D ; 330 1 ; 100 AcDbSymbolTableRecord ; 100 AcDbBlockTableRecord ; 2 *D1 ; 340 0
0 ENDTAB
0 ENDSEC
""")

SPACES = told("""
0 BLOCK_RECORD ; 5 1F ; 330 1 ; 100 AcDbSymbolTableRecord ; 100 AcDbBlockTableRecord ; 2 {model} ; 340 {layout}
0 BLOCK_RECORD ; 5 1E ; 330 1 ; 100 AcDbSymbolTableRecord ; 100 AcDbBlockTableRecord ; 2 *Paper_Space ; 340 59
""")

BLOCK_2000 = told("""
0 BLOCK ; 5 {handle}1 ; 330 {record} ; 100 AcDbEntity ; 8 {layer} ; 100 AcDbBlockBegin ; 2 {name} ; 70 0 ; 10 0.0
20 0.0 ; 30 0.0 ; 3 {name} ; 1 ; {contents}
0 ENDBLK ; 5 {handle}2 ; 330 {record} ; 100 AcDbEntity ; 8 {layer} ; 100 AcDbBlockEnd
""")

OBJECTS_2000 = told("""
0 SECTION ; 2 OBJECTS
0 DICTIONARY ; 5 C ; 330 0 ; 100 AcDbDictionary ; 281 1 ; 3 ACAD_GROUP ; 350 D ; 3 ACAD_LAYOUT ; 350 57
0 DICTIONARY ; 5 D ; 330 C ; 100 AcDbDictionary ; 281 1 ; 3 PAIR ; 350 5A
0 DICTIONARY ; 5 57 ; 330 C ; 100 AcDbDictionary ; 281 1 ; 3 Layout1 ; 350 59 ; 3 Model ; 350 58
0 LAYOUT ; 5 58 ; 330 57 ; 100 AcDbPlotSettings ; 1 ; 2 none_device ; 70 1024 ; 100 AcDbLayout ; 1 Model ; 70 1 ; 71 0
330 1F
0 LAYOUT ; 5 59 ; 330 57 ; 100 AcDbPlotSettings ; 1 ; 2 none_device ; 70 0 ; 100 AcDbLayout ; 1 Layout1 ; 70 1 ; 71 1
330 1E
0 GROUP ; 5 5A ; 330 D ; 100 AcDbGroup ; 300 two of them ; 70 0 ; 71 1 ; 340 100 ; 340 101 ; {objects}
0 ENDSEC
0 EOF
""")


def section(name, contents):
    return f"\n0 SECTION\n2 {name}\n{contents}\n0 ENDSEC\n"


def block(name, record, handle, contents="", layer="0"):
    return BLOCK_2000.format(name=name, record=record, handle=handle, contents=contents, layer=layer)


def line(handle, extra="", behind="", layer="Wall", owner="1F", xdata="", start="1.0"):
    return f"""
0 LINE
5 {handle}
330 {owner}
100 AcDbEntity
8 {layer}{extra}
100 AcDbLine{behind}
10 {start}
20 2.0
30 0.0
11 4.0
21 6.0
31 0.0{xdata}"""


def text(handle, contents="words", kind="TEXT", extra="", behind="\n100 AcDbText", owner="1F", layer="Wall"):
    return f"""
0 {kind}
5 {handle}
330 {owner}
100 AcDbEntity
8 {layer}{extra}
100 AcDbText
10 3.0
20 4.0
30 0.0
40 2.5
1 {contents}
7 Roman{behind}"""


def form_2000(entities, version="AC1015", blocks="", objects="", model="*Model_Space", header="", with_tables=True):
    definition = told("\n100 AcDbAttributeDefinition ; 3 Number? ; 2 NUMBER ; 70 0")
    door = line("200", owner="2B", layer="0") + text("201", "number", "ATTDEF", behind=definition, owner="2B")
    tick = line("202", owner="2C", layer="0")
    picture = line("203", owner="2D", layer="Wall") + text("204", "5.0", owner="2D")
    spaces = SPACES.format(model=model, layout="58" if model == "*Model_Space" else "0")
    result = header or HEADER_2000.format(version=version)
    if with_tables:
        result += TABLES_2000.format(spaces=spaces)
    result += section("BLOCKS", block(model, "1F", "30") + block("*Paper_Space", "1E", "31") + block("Door", "2B", "32", door) +
                      block("Tick", "2C", "33", tick) + block("*D1", "2D", "34", picture) + blocks)
    return result + section("ENTITIES", entities) + OBJECTS_2000.format(objects=objects)


DIMENSION = told("""
0 DIMENSION ; 5 {handle} ; 330 1F ; 100 AcDbEntity ; 8 Wall{extra} ; 100 AcDbDimension{block} ; 10 1.0 ; 20 9.0
30 0.0 ; 11 3.5 ; 21 9.0 ; 31 0.0 ; 70 {type} ; 42 5.0{style} ; 100 AcDbAlignedDimension ; 13 1.0 ; 23 2.0 ; 33 0.0
14 6.0 ; 24 2.0 ; 34 0.0{rotated}""")


def dimension(handle, picture="\n2 *D1", style="\n3 Metric", extra=""):
    return DIMENSION.format(handle=handle, block=picture, style=style, extra=extra, type=32,
                            rotated="\n50 0.0\n100 AcDbRotatedDimension")


INSERT = told("""
0 INSERT ; 5 {handle} ; 330 1F ; 100 AcDbEntity ; 8 Wall{extra} ; 100 AcDbBlockReference{attributes} ; 2 {name}
10 7.0 ; 20 8.0 ; 30 0.0 ; 50 30.0{xdata}""")


def insert(handle, name="Door", attributes="", extra="", xdata="", with_normal=""):
    head = INSERT.format(handle=handle, name=name, extra=extra, attributes="\n66 1" if attributes else "",
                         xdata=with_normal + xdata)
    return head + (attributes + f"\n0 SEQEND\n5 {handle}F\n330 {handle}\n100 AcDbEntity\n8 Wall" if attributes else "")


def attribute(handle, owner, contents="12"):
    return text(handle, contents, "ATTRIB", behind="\n100 AcDbAttribute\n2 NUMBER\n70 0", owner=owner)


EXTENDED_DATA = told("""
1001 TEST ; 1000 a text ; 1002 { ; 1003 WALL ; 1004 0AFF ; 1005 100 ; 1002 } ; 1010 1.0 ; 1020 2.0 ; 1030 3.0
1011 4.0 ; 1021 5.0 ; 1031 6.0 ; 1012 7.0 ; 1022 8.0 ; 1032 9.0 ; 1013 1.0 ; 1023 0.0 ; 1033 0.0 ; 1040 1.5 ; 1041 2.5
1042 3.5 ; 1070 12 ; 1071 123456""")

TILTED = """
210 0.6
220 0.0
230 0.8"""
DOWNWARD = """
210 0.0
220 0.0
230 -1.0"""


SPLINE = told("\n70 8 ; 71 3 ; 72 8 ; 73 4 ; 74 2 ; 42 0.000001 ; 43 0.000001 ; 44 0.0001 ; 12 0.6 ; 22 0.8 ; 32 0.0"
              " ; 13 1.0 ; 23 0.0 ; 33 0.0" + " ; 40 0.0" * 4 + " ; 40 1.0" * 4 +
              " ; 10 0.0 ; 20 0.0 ; 30 1.0 ; 10 1.0 ; 20 1.0 ; 30 1.0 ; 10 2.0 ; 20 4.0 ; 30 1.0 ; 10 3.0 ; 20 9.0 ; 30 1.0"
              " ; 11 0.0 ; 21 0.0 ; 31 1.0 ; 11 3.0 ; 21 9.0 ; 31 1.0")
HATCH = told("""
2 LINES ; 70 0 ; 71 0 ; 91 2 ; 92 2 ; 72 1 ; 73 1 ; 93 3 ; 10 0.0 ; 20 0.0 ; 42 0.0 ; 10 5.0 ; 20 0.0 ; 42 0.5
10 5.0 ; 20 5.0 ; 42 0.0 ; 97 0
92 1 ; 93 3 ; 72 1 ; 10 0.0 ; 20 0.0 ; 11 2.0 ; 21 0.0 ; 72 2 ; 10 1.0 ; 20 0.0 ; 40 1.0 ; 50 0.0 ; 51 180.0 ; 73 1
72 3 ; 10 1.0 ; 20 0.0 ; 11 1.0 ; 21 0.0 ; 40 0.5 ; 50 0.0 ; 51 180.0 ; 73 0 ; 97 0
75 0 ; 76 1 ; 52 30.0 ; 41 2.0 ; 77 0 ; 78 1 ; 53 30.0 ; 43 1.0 ; 44 2.0 ; 45 -0.5 ; 46 0.866 ; 79 2 ; 49 1.0 ; 49 -0.5
98 1 ; 10 1.0 ; 20 1.0""")


class Curves:
    """One of each kind that has a plane, in that plane, with handles from `first` on."""

    def __init__(self, first, normal):
        self.handles = (f"{first + i:X}" for i in range(100))
        self.normal = normal

    def head(self, kind, mark):
        return f"\n0 {kind}\n5 {next(self.handles)}\n330 1F\n100 AcDbEntity\n8 Wall\n100 {mark}"

    def polyline(self, kind, groups, mark, vertices):
        head = self.head("POLYLINE", kind)
        owner = head.split("\n")[2][2:]
        result = head + groups
        for vertex in vertices:
            result += (f"\n0 VERTEX\n5 {next(self.handles)}\n330 {owner}\n100 AcDbEntity\n8 Wall\n100 AcDbVertex\n100 {mark}"
                       + told("\n" + vertex))
        return result + f"\n0 SEQEND\n5 {next(self.handles)}\n330 {owner}\n100 AcDbEntity\n8 Wall"

    def polylines(self):
        flat = [f"10 {x} ; 20 {y} ; 30 2.0 ; 42 0.25" for x, y in ((0.0, 0.0), (4.0, 0.0), (4.0, 3.0))]
        spatial = [f"10 {x} ; 20 {y} ; 30 7.0" for x, y in ((0.0, 1.0), (4.0, 2.0), (4.0, 3.0))]
        groups = told("\n66 1 ; 10 0.0 ; 20 0.0 ; 30 ")
        return (self.polyline("AcDb2dPolyline", groups + told("2.0 ; 70 1 ; 40 0.5 ; 41 0.5") + self.normal, "AcDb2dVertex", flat) +
                self.polyline("AcDb3dPolyline", groups + "0.0\n70 9", "AcDb3dPolylineVertex", [v + " ; 70 32" for v in spatial]) +
                self.polyline("AcDbPolyFaceMesh", groups + "0.0\n70 64", "AcDbPolyFaceMeshVertex", [v + " ; 70 192" for v in spatial]))

    def all(self):
        normal, point = self.normal, told("\n10 3.0 ; 20 4.0 ; 30 5.0")
        circle = point + "\n40 2.0"
        corners = told(" ; ".join(f"\n1{i} {x} ; 2{i} {y} ; 3{i} 2.0".lstrip("\n" if i else "")
                                  for i, (x, y) in enumerate(((0.0, 0.0), (4.0, 0.0), (0.0, 3.0), (4.0, 3.0)))))
        kinds = [
            ("CIRCLE", "AcDbCircle", circle + normal),
            ("ARC", "AcDbCircle", circle + normal + told("\n100 AcDbArc ; 50 20.0 ; 51 110.0")),
            ("LWPOLYLINE", "AcDbPolyline", told("\n90 3 ; 70 1 ; 38 2.0 ; 39 1.5 ; 10 0.0 ; 20 0.0 ; 40 0.5 ; 41 1.0 ; 42 0.5"
                                                " ; 10 5.0 ; 20 0.0 ; 10 5.0 ; 20 5.0") + normal),
            ("TEXT", "AcDbText", point + told("\n40 2.5 ; 1 tilted ; 50 20.0 ; 72 1 ; 11 3.0 ; 21 4.0 ; 31 5.0") + normal +
             told("\n100 AcDbText ; 73 2")),
            ("SOLID", "AcDbTrace", corners + "\n39 1.5" + normal),
            ("TRACE", "AcDbTrace", corners + normal),
            ("POINT", "AcDbPoint", point + "\n39 1.0" + normal + "\n50 15.0"),
            ("INSERT", "AcDbBlockReference", "\n2 Tick" + point + told("\n41 2.0 ; 42 3.0 ; 43 1.0 ; 50 25.0") + normal),
            ("ELLIPSE", "AcDbEllipse", point + told("\n11 2.0 ; 21 0.0 ; 31 0.0") + (DOWNWARD if normal else "") +
             told("\n40 0.5 ; 41 0.0 ; 42 3.0")),
            ("MTEXT", "AcDbMText", point + told("\n40 2.0 ; 41 30.0 ; 71 1 ; 72 1 ; 1 paragraph ; 7 Roman") + normal +
             told("\n11 0.0 ; 21 1.0 ; 31 0.0")),
            ("LINE", "AcDbLine", "\n39 2.0" + point + told("\n11 9.0 ; 21 9.0 ; 31 9.0") + normal),
            ("3DFACE", "AcDbFace", corners),
            ("RAY", "AcDbRay", point + told("\n11 0.6 ; 21 0.8 ; 31 0.0")),
            ("XLINE", "AcDbXline", point + told("\n11 0.0 ; 21 1.0 ; 31 0.0")),
            ("SPLINE", "AcDbSpline", SPLINE),
            ("HATCH", "AcDbHatch", told("\n10 0.0 ; 20 0.0 ; 30 2.0") + (normal or told("\n210 0.0 ; 220 0.0 ; 230 1.0")) + HATCH),
        ]
        return "".join(self.head(kind, mark) + groups for kind, mark, groups in kinds) + self.polylines()


def curves(first, normal):
    return Curves(first, normal).all()


PLAIN_TWO = line("100") + line("101", extra="\n6 Dash\n62 3\n370 25\n48 2.0")

R12 = told("""
0 SECTION ; 2 HEADER
9 $ACADVER ; 1 AC1009 ; {handling}9 $CLAYER ; 8 WALL
9 $DIMBLK ; 1 TICK
0 ENDSEC
0 SECTION ; 2 TABLES
0 TABLE ; 2 LTYPE ; 70 2
0 LTYPE ; 2 CONTINUOUS ; 70 64 ; 3 Solid line ; 72 65 ; 73 0 ; 40 0.0
0 LTYPE ; 2 DASH ; 70 64 ; 3 __ __ ; 72 65 ; 73 2 ; 40 3.0 ; 49 2.0 ; 49 -1.0
0 ENDTAB
0 TABLE ; 2 LAYER ; 70 2
0 LAYER ; 2 0 ; 70 64 ; 62 7 ; 6 CONTINUOUS
0 LAYER ; 2 WALL ; 70 64 ; 62 1 ; 6 DASH
0 ENDTAB
0 TABLE ; 2 STYLE ; 70 1
0 STYLE ; 2 ROMAN ; 70 64 ; 40 0.0 ; 41 1.0 ; 50 0.0 ; 71 0 ; 42 0.2 ; 3 romans ; 4
0 ENDTAB
0 TABLE ; 2 DIMSTYLE ; 70 1
0 DIMSTYLE ; 2 METRIC ; 70 64 ; 3 ; 4 ; 5 TICK ; 6 ; 7 ; 40 1.0
0 ENDTAB
0 TABLE ; 2 APPID ; 70 1
0 APPID ; 2 TEST ; 70 64
0 ENDTAB
0 ENDSEC
0 SECTION ; 2 BLOCKS
0 BLOCK ; 8 0 ; 2 TICK ; 70 0 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 3 TICK
0 LINE ; 8 0 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 11 1.0 ; 21 1.0 ; 31 0.0
0 ENDBLK ; 8 0
0 BLOCK ; 8 0 ; 2 DOOR ; 70 2 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 3 DOOR
0 INSERT ; 8 0 ; 2 TICK ; 10 1.0 ; 20 1.0 ; 30 0.0
0 ATTDEF ; 8 0 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 40 2.0 ; 1 12 ; 3 Number? ; 2 NUMBER ; 70 0 ; 7 ROMAN
0 ENDBLK ; 8 0
0 BLOCK ; 8 0 ; 2 *D1 ; 70 1 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 3 *D1
0 LINE ; 8 WALL ; 10 1.0 ; 20 2.0 ; 30 0.0 ; 11 6.0 ; 21 2.0 ; 31 0.0
0 ENDBLK ; 8 0
0 ENDSEC
0 SECTION ; 2 ENTITIES
0 LINE ; 8 WALL ; 10 1.0 ; 20 2.0 ; 11 3.0 ; 21 4.0
0 LINE ; 8 wall ; 6 DASH ; 62 3 ; 10 1.0 ; 20 2.0 ; 30 3.0 ; 11 3.0 ; 21 4.0 ; 31 3.0
0 POLYLINE ; 8 WALL ; 66 1 ; 10 0.0 ; 20 0.0 ; 30 2.0 ; 70 1
0 VERTEX ; 8 WALL ; 10 0.0 ; 20 0.0 ; 30 2.0
0 VERTEX ; 8 WALL ; 10 5.0 ; 20 0.0 ; 30 2.0 ; 42 0.5
0 SEQEND ; 8 WALL
0 INSERT ; 8 WALL ; 66 1 ; 2 Door ; 10 7.0 ; 20 8.0 ; 30 0.0
0 ATTRIB ; 8 0 ; 10 7.0 ; 20 8.0 ; 30 0.0 ; 40 2.0 ; 1 13 ; 2 NUMBER ; 70 0 ; 7 ROMAN
0 SEQEND ; 8 WALL
0 TEXT ; 8 WALL ; 10 1.0 ; 20 1.0 ; 30 0.0 ; 40 2.5 ; 1 words ; 7 roman ; 1001 TEST ; 1003 WALL ; 1011 1.0 ; 1021 2.0
1031 3.0
0 DIMENSION ; 8 WALL ; 2 *D1 ; 10 1.0 ; 20 9.0 ; 30 0.0 ; 11 3.5 ; 21 9.0 ; 31 0.0 ; 70 0 ; 3 METRIC ; 13 1.0 ; 23 2.0
33 0.0 ; 14 6.0 ; 24 2.0 ; 34 0.0
0 DIMENSION ; 8 WALL ; 10 1.0 ; 20 9.0 ; 30 0.0 ; 11 3.5 ; 21 9.0 ; 31 0.0 ; 70 1 ; 3 MISSING ; 13 1.0 ; 23 2.0
33 0.0 ; 14 6.0 ; 24 2.0 ; 34 0.0
0 SOLID ; 8 WALL ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 11 1.0 ; 21 0.0 ; 31 0.0 ; 12 0.0 ; 22 1.0 ; 32 0.0 ; 13 1.0 ; 23 1.0
33 0.0
0 ENDSEC
0 EOF
""")


def behind_first_mark(entities):
    """The handle and the owner stand behind the mark of the entity."""
    lines, result, held = entities.split("\n"), [], []
    for each in lines:
        if each.startswith("0 "):
            held = []
        if each.startswith(("5 ", "330 ")):
            held.append(each)
        else:
            result.append(each)
            if each == "100 AcDbEntity":
                result += held
    return "\n".join(result)


ALL_KINDS = (PLAIN_TWO + text("102") + insert("103", attributes=attribute("104", "103") + attribute("105", "103", "13")) +
             dimension("106") + curves(0x110, ""))


def changed(*replacements):
    """The drawing of all kinds with some texts in place of others."""
    drawing = form_2000(ALL_KINDS)
    for old, new in replacements:
        drawing = drawing.replace(told(old), told(new))
    return drawing


def forms():
    """Headers, tables and marks other than the version has them."""
    return {
        "whole": form_2000(ALL_KINDS),
        "tilted": form_2000(PLAIN_TWO + curves(0x110, TILTED) + curves(0x150, DOWNWARD)),
        "header-without-version": changed(("9 $ACADVER ; 1 AC1015\n", "")),
        "header-says-r12": form_2000(ALL_KINDS, version="AC1009"),
        "handle-behind-mark": form_2000(behind_first_mark(ALL_KINDS)),
        "handle-behind-mark-2010": form_2000(behind_first_mark(ALL_KINDS), version="AC1024"),
        "model-space-without-name": form_2000(ALL_KINDS, model="*U"),
        "entities-only": section("ENTITIES", ALL_KINDS) + "0 EOF\n",
        "entities-only-r12": "0 SECTION\n2 ENTITIES\n" + R12.split("2 ENTITIES\n")[1],
        "no-tables": form_2000(ALL_KINDS, with_tables=False),
        "r12": R12.format(handling=""),
        "r12-handles-off": R12.format(handling="9 $HANDLING\n70 0\n"),
    }


def names():
    return {
        "two-of-a-name": changed(("2 Text Ebene ; 70 0", "2 WALL ; 70 0")),
        "names-by-case": changed(("2 Door ; 10", "2 DOOR ; 10"), ("\n8 Wall ; 100 AcDbLine", "\n8 WALL ; 100 AcDbLine"),
                                 ("\n7 Roman ; 100", "\n7 roman ; 100"), ("3 Metric", "3 METRIC")),
        "names-by-escape": changed(("2 Wall\n", "2 W\xe4nde \u20ac\n"), ("8 Wall ; 100 AcDbLine", "8 W\\U+00E4nde \\U+20AC ; 100 AcDbLine"),
                                   ("8 Wall", "8 W\xc4NDE \u20ac"), ("1003 Wall", "1003 W\xe4nde \u20ac"), ("2 Door", "2 T\xfcr"),
                                   ("3 Door", "3 T\xfcr")),
        "names-with-blanks": changed(("\n8 Wall ; 100 AcDbLine", "\n8  Wall  ; 100 AcDbLine"), ("2 Door ; 10", "2  Door  ; 10")),
    }


def records():
    """Groups where few records have them, twice, or of kinds that nobody knows."""
    behind = told("\n62 5 ; 6 Dash ; 370 50 ; 48 0.5")
    opaque = told("\n0 WIDGET ; 5 HANDLE ; 330 1F ; 100 AcDbEntity ; 8 Wall ; 6 Dash ; 62 4 ; 100 AcDbWidget ; 8 Wall ; 10 1.0 ; 20 2.0"
                  " ; 30 3.0 ; 62 4 ; 330 100 ; 1 text") + EXTENDED_DATA
    leader = told("\n0 LEADER ; 5 10B ; 330 1F ; 100 AcDbEntity ; 8 Wall ; 100 AcDbLeader ; 3 Metric ; 71 1 ; 72 0 ; 73 3 ; 76 2 ; 10 0.0"
                  " ; 20 0.0 ; 30 0.0 ; 10 5.0 ; 20 5.0 ; 30 0.0 ; 340 102")
    sorted_entities = told("\n0 SORTENTSTABLE ; 5 5B ; 330 5C ; 100 AcDbSortentsTable ; 330 1F ; 331 100 ; 5 101 ; 331 101 ; 5 100"
                           "\n0 DICTIONARY ; 5 5C ; 330 1F ; 100 AcDbDictionary ; 281 1 ; 3 ACAD_SORTENTS ; 350 5B"
                           "\n0 LAYER_FILTER ; 5 5D ; 330 0 ; 100 AcDbFilter ; 100 AcDbLayerFilter ; 8 Wall ; 8 0")
    return {
        "common-groups-behind-mark": form_2000(
            line("100", behind=behind) + line("101", behind="\n62 256") + insert("102", xdata=behind) +
            text("103", behind=behind + "\n100 AcDbText") + dimension("104", style=behind + "\n3 Metric")),
        "true-colour-2000": form_2000(
            line("100", told("\n62 30 ; 420 16678656 ; 430 BOOK$ORANGE ; 440 33554559")) + line("101", "\n420 255") +
            text("102", extra="\n62 5\n420 255")),
        "two-of-a-group": form_2000(line("100", told("\n8 0 ; 62 1 ; 62 2")) + line("101", told("\n6 Dash ; 6 Continuous")) +
                                    text("102")),
        "comments": changed(("\n8 Wall\n", "\n999 between the groups ; 8 Wall\n"), ("\n0 LINE\n", "\n999 before a record ; 0 LINE\n")),
        "opaque-kinds": form_2000(PLAIN_TWO + opaque.replace("HANDLE", "109") + text("102") + opaque.replace("HANDLE", "10A") + leader,
                                  objects=sorted_entities),
    }


def parts_and_data():
    on_all = curves(0x110, "").replace("\n0 ", EXTENDED_DATA + "\n0 ").removeprefix(EXTENDED_DATA)
    reactor = told("102 {ACAD_REACTORS ; 330 100 ; 102 }")
    dictionary = told("102 {ACAD_XDICTIONARY ; 360 5B ; 102 }")
    note = told("\n0 DICTIONARY ; 5 5B ; 330 101 ; 100 AcDbDictionary ; 281 1 ; 3 NOTE ; 360 5C"
                " ; 0 XRECORD ; 5 5C ; 330 5B ; 100 AcDbXrecord ; 280 1 ; 1 a note ; 330 101")
    return {
        "extended-data": form_2000(
            line("100", xdata=EXTENDED_DATA) + line("101", xdata=told("\n1001 TEST ; 1000 x ; 1001 ACAD ; 1070 1")) +
            insert("102", xdata=EXTENDED_DATA, attributes=attribute("103", "102") + EXTENDED_DATA) + text("104") + EXTENDED_DATA +
            dimension("105") + EXTENDED_DATA + on_all),
        "extended-data-in-the-middle": form_2000(PLAIN_TWO + curves(0x110, EXTENDED_DATA)),
        "attributes": form_2000(
            insert("100", attributes=attribute("101", "100") + attribute("102", "100", "two")) +
            insert("103", attributes=attribute("104", "103")) + insert("105", with_normal=DOWNWARD) + insert("106", "Missing")),
        "dimensions": form_2000(
            dimension("100") + dimension("101", style="") + dimension("102", style="\n3 Missing") + dimension("103", picture="") +
            dimension("104", picture="\n2 *D9") + dimension("105", picture=told("\n2 *D1 ; 12 100.0 ; 22 50.0 ; 32 0.0")) +
            dimension("106", style="\n3 METRIC", extra="\n62 1")),
        # One entity has an extension dictionary with a record in it; it is known to another as a reactor.
        "extension-dictionary": form_2000(
            line("100") + line("101").replace("330 1F", f"{reactor}\n{dictionary}\n330 1F") +
            line("107").replace("330 1F", told("102 {ACAD_REACTORS ; 330 101 ; 330 100 ; 102 } ; 330 1F")), objects=note),
    }


def samples():
    """By name, as lines of code and value."""
    return {**forms(), **names(), **records(), **parts_and_data()}


def as_file(drawing):
    lines = []
    for each in drawing.strip().split("\n"):
        if each.strip():
            code, _, value = each.partition(" ")
            lines += [f"{code:>3}", value]
    return "\r\n".join(lines) + "\r\n"


def write_samples(folder):
    files = []
    for name, drawing in samples().items():
        file = os.path.join(folder, f"{name}.dxf")
        with open(file, "wb") as out:
            out.write(as_file(drawing).encode("cp1252"))
        files.append(file)
    return files
