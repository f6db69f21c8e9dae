#include "formtables.h"

#include "groupcodes.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace hostkit {

namespace {

using enum DrawingVersion;

/// Names and codes stand in rows of text: names separated by blanks, codes and their ranges likewise.
struct KindRow {
    DrawingVersion first;
    std::string_view names;
};

constexpr KindRow kindRows[] = {
    {kR13, "3DSOLID ACAD_PROXY_ENTITY ACAD_PROXY_OBJECT BODY DICTIONARY ELLIPSE GROUP IDBUFFER LEADER MLINE "
           "MLINESTYLE MTEXT OLEFRAME RAY REGION SPLINE TOLERANCE XLINE XRECORD BLOCK_RECORD"},
    {kR14,
     "DICTIONARYVAR HATCH IMAGE IMAGEDEF IMAGEDEF_REACTOR LAYER_FILTER LAYER_INDEX LWPOLYLINE OLE2FRAME "
     "RASTERVARIABLES SORTENTSTABLE SPATIAL_FILTER SPATIAL_INDEX"},
    {k2000, "ACDBDICTIONARYWDFLT ACDBPLACEHOLDER ARCALIGNEDTEXT ARC_DIMENSION DIMASSOC LAYOUT OBJECT_PTR "
            "PLOTSETTINGS RTEXT "
            "VBA_PROJECT WIPEOUT WIPEOUTVARIABLES"},
    {k2004, "ACAD_EVALUATION_GRAPH ACAD_TABLE ACDBASSOCNETWORK DBCOLOR FIELD FIELDLIST "
            "LARGE_RADIAL_DIMENSION TABLESTYLE"},
    {k2007,
     "CAMERA CELLSTYLEMAP DGNDEFINITION DGNUNDERLAY DWFDEFINITION DWFUNDERLAY EXTRUDEDSURFACE HELIX LIGHT "
     "LIGHTLIST LOFTEDSURFACE MATERIAL MENTALRAYRENDERSETTINGS MLEADERSTYLE MULTILEADER "
     "ACDB_MTEXTOBJECTCONTEXTDATA_CLASS ACDB_TEXTOBJECTCONTEXTDATA_CLASS "
     "ACDB_HATCHSCALECONTEXTDATA_CLASS ACDB_HATCHVIEWCONTEXTDATA_CLASS ACDB_BLKREFOBJECTCONTEXTDATA_CLASS "
     "ACDB_MLEADEROBJECTCONTEXTDATA_CLASS ACDB_ALDIMOBJECTCONTEXTDATA_CLASS "
     "ACDB_MTEXTATTRIBUTEOBJECTCONTEXTDATA_CLASS ACDB_LEADEROBJECTCONTEXTDATA_CLASS "
     "ACDB_ANGDIMOBJECTCONTEXTDATA_CLASS ACDB_DMDIMOBJECTCONTEXTDATA_CLASS "
     "ACDB_ORDDIMOBJECTCONTEXTDATA_CLASS ACDB_RADIMOBJECTCONTEXTDATA_CLASS "
     "ACDB_RADIMLGOBJECTCONTEXTDATA_CLASS ACDB_FCFOBJECTCONTEXTDATA_CLASS "
     "PLANESURFACE RENDERENVIRONMENT RENDERGLOBAL RENDERSETTINGS REVOLVEDSURFACE SCALE SECTION "
     "SECTIONMANAGER SECTIONSETTINGS SUN SUNSTUDY SURFACE SWEPTSURFACE TABLECONTENT TABLEGEOMETRY "
     "VISUALSTYLE"},
    {k2010,
     "BREAKDATA BREAKPOINTREF GEODATA MESH MOTIONPATH NURBSURFACE PDFDEFINITION PDFUNDERLAY POINTCLOUD "
     "POINTCLOUDDEF POINTCLOUDDEF_REACTOR"},
    {k2013,
     "ACDBDETAILVIEWSTYLE ACDBSECTIONVIEWSTYLE ACDB_DYNAMICBLOCKPURGEPREVENTER_VERSION ACDSRECORD "
     "ACDSSCHEMA ACSH_HISTORY_CLASS ACDBVIEWREP NAVISWORKSMODEL NAVISWORKSMODELDEF RAPIDRTRENDERSETTINGS"},
    {k2018, "COORDINATION_MODEL GEOMAPIMAGE POSITIONMARKER POINTCLOUDEX POINTCLOUDDEFEX"},
};

struct GroupRow {
    DrawingVersion first;
    std::string_view subclass;
    std::string_view codes;
};

constexpr GroupRow groupRows[] = {
    {kR13, "AcDbEntity", "48 60"},
    {k2000, "AcDbEntity", "370 390"},
    {k2004, "AcDbEntity", "420 430 440"},
    {k2007, "AcDbEntity", "284 347 348"},
    {k2010, "AcDbEntity", "160"},
    {k2000, "AcDbLayerTableRecord", "290 370 390"},
    {k2004, "AcDbLayerTableRecord", "420 430 440"},
    {k2007, "AcDbLayerTableRecord", "347 348"},
    {k2000, "AcDbBlockTableRecord", "310 340"},
    {k2007, "AcDbBlockTableRecord", "70 280 281"},
    {k2000, "AcDbViewportTableRecord", "65 79 110-132 146 281 345 346"},
    {k2007, "AcDbViewportTableRecord", "60 61 63 141 142 282 292 332-335 343 344 348 361 421 431"},
    {k2000, "AcDbViewTableRecord", "72 79 110-132 146 281 345 346"},
    {k2007, "AcDbViewTableRecord", "73 332 334 348 361"},
    {k2000, "AcDbDimStyleTableRecord", "148 179 271-280 340-344 371 372"},
    {k2007, "AcDbDimStyleTableRecord", "49 50 69 90 290 345-347"},
    {k2010, "AcDbDimStyleTableRecord", "294 295"},
    {k2004, "AcDbPlotSettings", "76-78"},
    {k2007, "AcDbPlotSettings", "333"},
    {k2007, "AcDbViewport", "61 63 91 141 142 282 292 335 343 344 348 361 421 431"},
    {k2004, "AcDbMText", "45 63 90 420-431 441"},
    {k2004, "AcDbMlineStyle", "420 430"},
    {k2004, "AcDbDimension", "74 75"},
    {k2010, "AcDbDimension", "280"},
    {k2004, "AcDbHatch", "421 450-470"},
    {k2010, "AcDbRasterImage", "290"},
    {k2010, "AcDbWipeout", "290"},
    {k2004, "CLASS", "91"},
};

struct VariableRow {
    DrawingVersion first;
    std::string_view names;
};

constexpr VariableRow variableRows[] = {
    {k2000,
     "CELWEIGHT CEPSNID CEPSNTYPE DIMADEC DIMALTRND DIMATFIT DIMAZIN DIMDSEP DIMFRAC DIMLDRBLK DIMLUNIT "
     "DIMLWD DIMLWE DIMTMOVE ENDCAPS EXTNAMES FINGERPRINTGUID HYPERLINKBASE INSUNITS JOINSTYLE LWDISPLAY "
     "OLESTARTUP PSTYLEMODE PSVPSCALE PUCSBASE PUCSORGBACK PUCSORGBOTTOM PUCSORGFRONT PUCSORGLEFT "
     "PUCSORGRIGHT PUCSORGTOP PUCSORTHOREF PUCSORTHOVIEW STYLESHEET TDUCREATE TDUUPDATE UCSBASE UCSORGBACK "
     "UCSORGBOTTOM UCSORGFRONT UCSORGLEFT UCSORGRIGHT UCSORGTOP UCSORTHOREF UCSORTHOVIEW VERSIONGUID "
     "XEDIT"},
    {k2004, "DIMASSOC HALOGAP HIDETEXT INDEXCTL INTERSECTIONCOLOR INTERSECTIONDISPLAY LASTSAVEDBY OBSCOLOR "
            "OBSLTYPE PROJECTNAME SORTENTS XCLIPFRAME"},
    {k2007,
     "3DDWFPREC CAMERADISPLAY CAMERAHEIGHT CMATERIAL CMLEADERSTYLE CSHADOW CVIEWDETAILSTYLE "
     "CVIEWSECTIONSTYLE DGNFRAME DIMARCSYM DIMFXL DIMFXLON DIMJOGANG DIMLTEX1 DIMLTEX2 DIMLTYPE DIMTFILL "
     "DIMTFILLCLR DRAGVS DWFFRAME INTERFERECOLOR INTERFEREOBJVS INTERFEREVPVS LATITUDE LENSLENGTH "
     "LIGHTGLYPHDISPLAY LOFTANG1 LOFTANG2 LOFTMAG1 LOFTMAG2 LOFTNORMALS LOFTPARAM LONGITUDE NORTHDIRECTION "
     "PSOLHEIGHT PSOLWIDTH REALWORLDSCALE SHADOWPLANELOCATION SHOWHIST SOLIDHIST STEPSIZE STEPSPERSEC "
     "TILEMODELIGHTSYNCH TIMEZONE"},
    {k2010, "DIMTXTDIRECTION"},
    {k2013, "REQUIREDVERSIONS"},
};

struct R12Row {
    std::string_view names;
    std::string_view codes;
};

constexpr std::string_view entityCodesOfR12 = "0 5 6 8 62 67 999";
constexpr std::string_view recordCodesOfR12 = "0 2 5 70 105 999";

// Sections, tables and what closes them have the codes of a table's record.
constexpr R12Row entityRows[] = {
    {"LINE", "10 11 20 21 30 31 39 210-230"},
    {"POINT", "10 20 30 39 50 210-230"},
    {"CIRCLE", "10 20 30 39 40 210-230"},
    {"ARC", "10 20 30 39 40 50 51 210-230"},
    {"TRACE SOLID", "10-13 20-23 30-33 39 210-230"},
    {"3DFACE", "10-13 20-23 30-33 70"},
    {"TEXT", "1 7 10 11 20 21 30 31 39-41 50 51 71-73 210-230"},
    {"ATTRIB", "1 2 7 10 11 20 21 30 31 39-41 50 51 70-74 210-230"},
    {"ATTDEF", "1-3 7 10 11 20 21 30 31 39-41 50 51 70-74 210-230"},
    {"SHAPE", "2 10 20 30 39-41 50 51 210-230"},
    {"INSERT", "2 10 20 30 41-45 50 66 70 71 210-230"},
    {"POLYLINE", "10 20 30 39-41 66 70-75 210-230"},
    {"VERTEX", "10 20 30 40-42 50 70-74"},
    {"SEQEND ENDBLK", ""},
    {"BLOCK", "1-3 10 20 30 70"},
    {"VIEWPORT", "10 20 30 40 41 68 69"},
    {"DIMENSION", "1-3 10-16 20-26 30-36 40 50-53 70 210-230"},
};
constexpr R12Row recordRows[] = {
    {"SECTION ENDSEC TABLE ENDTAB EOF APPID", ""},
    {"LTYPE", "3 40 49 72 73"},
    {"LAYER", "6 62"},
    {"STYLE", "3 4 40-42 50 71"},
    {"VIEW", "10-12 20-22 31 32 40-44 50 71"},
    {"UCS", "10-12 20-22 30-32"},
    {"VPORT", "10-17 20-27 36 37 40-44 50 51 68 69 71-78"},
    {"DIMSTYLE", "3-7 40-48 71-78 140-147 170-178"},
};

constexpr std::string_view variablesOfR12 = "ACADVER ANGBASE ANGDIR ATTDIA ATTMODE ATTREQ AUNITS AUPREC "
                                            "BLIPMODE CECOLOR CELTYPE CHAMFERA CHAMFERB CLAYER "
                                            "COORDS DIMALT DIMALTD DIMALTF DIMAPOST DIMASO DIMASZ DIMBLK "
                                            "DIMBLK1 DIMBLK2 DIMCEN DIMCLRD DIMCLRE DIMCLRT "
                                            "DIMDLE DIMDLI DIMEXE DIMEXO DIMGAP DIMLFAC DIMLIM DIMPOST "
                                            "DIMRND DIMSAH DIMSCALE DIMSE1 DIMSE2 DIMSHO DIMSOXD "
                                            "DIMSTYLE DIMTAD DIMTFAC DIMTIH DIMTIX DIMTM DIMTOFL DIMTOH "
                                            "DIMTOL DIMTP DIMTSZ DIMTVP DIMTXT DIMZIN DRAGMODE "
                                            "DWGCODEPAGE ELEVATION EXTMAX EXTMIN FILLETRAD FILLMODE HANDLING "
                                            "HANDSEED INSBASE LIMCHECK LIMMAX LIMMIN LTSCALE "
                                            "LUNITS LUPREC MAXACTVP MENU MIRRTEXT ORTHOMODE OSMODE PDMODE "
                                            "PDSIZE PELEVATION PEXTMAX PEXTMIN PLIMCHECK "
                                            "PLIMMAX PLIMMIN PLINEGEN PLINEWID PSLTSCALE PUCSNAME PUCSORG "
                                            "PUCSXDIR PUCSYDIR QTEXTMODE REGENMODE SHADEDGE "
                                            "SHADEDIF SKETCHINC SKPOLY SPLFRAME SPLINESEGS SPLINETYPE "
                                            "SURFTAB1 SURFTAB2 SURFTYPE SURFU SURFV TDCREATE "
                                            "TDINDWG TDUPDATE TDUSRTIMER TEXTSIZE TEXTSTYLE THICKNESS "
                                            "TILEMODE TRACEWID UCSNAME UCSORG UCSXDIR UCSYDIR "
                                            "UNITMODE USERI1 USERI2 USERI3 USERI4 USERI5 USERR1 USERR2 "
                                            "USERR3 USERR4 USERR5 USRTIMER VISRETAIN WORLDVIEW";

std::string_view nextWord(std::string_view& words) {
    const std::size_t end = std::min(words.find(' '), words.size());
    const std::string_view word = words.substr(0, end);
    words.remove_prefix(std::min(end + 1, words.size()));
    return word;
}

bool hasName(std::string_view names, std::string_view name) {
    while (!names.empty())
        if (nextWord(names) == name) return true;
    return false;
}

bool hasCode(std::string_view codes, int code) {
    while (!codes.empty()) {
        const std::string_view word = nextWord(codes);
        int low = 0;
        const char* const end = std::from_chars(word.data(), word.data() + word.size(), low).ptr;
        int high = low;
        if (end != word.data() + word.size()) std::from_chars(end + 1, word.data() + word.size(), high);
        if (code >= low && code <= high) return true;
    }
    return false;
}

template <class Rows>
const R12Row* rowOf(const Rows& rows, std::string_view name) {
    const auto found = std::find_if(std::begin(rows), std::end(rows),
                                    [&](const R12Row& row) { return hasName(row.names, name); });
    return found == std::end(rows) ? nullptr : &*found;
}

template <class Rows>
DrawingVersion firstFormByName(const Rows& rows, std::string_view name) {
    const auto found = std::find_if(std::begin(rows), std::end(rows),
                                    [&](const auto& row) { return hasName(row.names, name); });
    return found == std::end(rows) ? kR12 : found->first;
}

} // namespace

DrawingVersion firstFormOfKind(std::string_view name) { return firstFormByName(kindRows, name); }

DrawingVersion firstFormOfGroup(std::string_view subclass, int code) {
    for (const GroupRow& row : groupRows)
        if (row.subclass == subclass && hasCode(row.codes, code)) return row.first;
    return kR12;
}

bool hasLaterGroups(std::string_view subclass, DrawingVersion than) {
    return std::any_of(std::begin(groupRows), std::end(groupRows),
                       [&](const GroupRow& row) { return row.first > than && row.subclass == subclass; });
}

DrawingVersion firstFormOfVariable(std::string_view name) { return firstFormByName(variableRows, name); }

bool isKindOfR12(std::string_view name) { return rowOf(entityRows, name) || rowOf(recordRows, name); }

bool isGroupOfR12(std::string_view kind, int code) {
    if (code >= firstExtendedCode) return true;
    if (const R12Row* const row = rowOf(entityRows, kind))
        return hasCode(entityCodesOfR12, code) || hasCode(row->codes, code);
    const R12Row* const row = rowOf(recordRows, kind);
    return row && (hasCode(recordCodesOfR12, code) || hasCode(row->codes, code));
}

bool isVariableOfR12(std::string_view name) { return hasName(variablesOfR12, name); }

bool isStandingKind(std::string_view name) {
    return hasName(
        "ACDBDETAILVIEWSTYLE ACDBDICTIONARYWDFLT ACDBPLACEHOLDER ACDBSECTIONVIEWSTYLE CELLSTYLEMAP "
        "DICTIONARYVAR LAYOUT MATERIAL MENTALRAYRENDERSETTINGS MLEADERSTYLE MLINESTYLE "
        "RAPIDRTRENDERSETTINGS SCALE TABLESTYLE VISUALSTYLE",
        name);
}

bool isModelerKind(std::string_view name) {
    return hasName("3DSOLID BODY REGION SURFACE EXTRUDEDSURFACE LOFTEDSURFACE NURBSURFACE PLANESURFACE "
                   "REVOLVEDSURFACE SWEPTSURFACE",
                   name);
}

} // namespace hostkit
