#include "auditrules.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace hostkit {

namespace {

// A part's groups, apart by blanks: the code, then
//   *  a point (^ one without a third coordinate)    +  may repeat    !  required
//   =N tells how often group N follows               >T the handle of a record of type T
//   @  a name: L layer, T linetype, S text style, D dimension style, B block
//   #  a limit: c colour, l layer's colour, t true colour, w lineweight, p positive, n not negative, z not
//   zero,
//      r ratio, v no zero vector
struct PartText {
    std::string_view mark, groups;
};
constexpr PartText partTexts[] = {
    {"AcDbEntity",
     "8!@L 6@T 62#c 370#w 48#p 60 67 92 160 310+ 284 347>MATERIAL 348 380 390>ACDBPLACEHOLDER 410 "
     "420#t 430 440"},
    // Entities.
    {"AcDbLine", "10*! 11*! 39 210*#v"},
    {"AcDbPoint", "10*! 39 50 210*#v"},
    {"AcDbCircle", "10*! 40!#p 39 210*#v"},
    {"AcDbArc", "50! 51! 210*#v"},
    {"AcDbEllipse", "10*! 11*!#v 40!#r 41 42 210*#v"},
    {"AcDbSpline", "70! 71! 72=40 73=10 74=11 42 43 44 12* 13* 40+ 41+ 10*+ 11*+ 210*#v"},
    {"AcDbTrace", "10*! 11*! 12*! 13* 39 210*#v"},
    {"AcDbFace", "10*! 11*! 12*! 13* 70"},
    {"AcDbRay", "10*! 11*!#v"},
    {"AcDbXline", "10*! 11*!#v"},
    {"AcDbText", "1 10* 40#p 7@S 11* 41#p 50 51 71 72 73 74 39 210*#v"},
    {"AcDbAttribute", "2! 70! 71 72 73 74 11* 280+ 210*#v 50 51"},
    {"AcDbAttributeDefinition", "2! 3 70! 71 72 73 74 11* 280+ 210*#v 50 51"},
    {"AcDbMText",
     "10*! 40!#p 1! 3+ 7@S 11*#v 41 42 43 44 45 46 48 49 50+ 63 71! 72 73 75 76 78 79 90 420 421 422 423 "
     "424 425 426 427 428 429 430 431 441 210*#v"},
    {"AcDbBlockReference", "2!@B 10*! 66 41#z 42#z 43#z 50 70#n 71#n 44 45 210*#v"},
    {"AcDbMInsertBlock", "2@B 10* 66 41#z 42#z 43#z 50 70#n 71#n 44 45 210*#v"},
    {"AcDbPolyline", "90!=10 70 43 38 39 10^+ 40+ 41+ 42+ 91+ 210*#v"},
    {"AcDb2dPolyline", "66 10* 38 39 70 40 41 71 72 73 74 75 210*#v"},
    {"AcDb3dPolyline", "66 10* 39 70 71 72 73 74 75 210*#v"},
    {"AcDbPolygonMesh", "66 10* 39 70! 71! 72! 73 74 75 210*#v"},
    {"AcDbPolyFaceMesh", "66 10* 39 70! 71 72 73 74 75 210*#v"},
    {"AcDbVertex", ""},
    {"AcDb2dVertex", "10*! 40 41 42 70 50 91"},
    {"AcDb3dPolylineVertex", "10*! 70"},
    {"AcDbPolygonMeshVertex", "10*! 70 40 41 42 50"},
    {"AcDbPolyFaceMeshVertex", "10*! 70 40 41 42 50"},
    {"AcDbFaceRecord", "10* 70! 71 72 73 74"},
    {"AcDbHatch",
     "10*+ 210*#v 2! 70! 71! 91! 92+ 93+ 72+ 73+ 97+ 330+ 40+ 50+ 51+ 11*+ 12^+ 13^+ 42+ 94+ 95+ 96+ 74+ "
     "75 76 52 41 77 78 53+ 43+ 44+ 45+ 46+ 79+ 49+ 47 98 450 451 452 453 460 461 462 463+ 470 63+ "
     "421+ 431+"},
    {"AcDbDimension", "280 2@B 10*! 11* 12* 70! 71 72 41 42 73 74 75 1 51 52 53 54 3@D 210*#v"},
    {"AcDbAlignedDimension", "12* 13*! 14*! 40 50 52"},
    {"AcDbRotatedDimension", "50 52"},
    {"AcDbRadialDimension", "15*! 40"},
    {"AcDbDiametricDimension", "15*! 40"},
    {"AcDb2LineAngularDimension", "13*! 14*! 15*! 16*! 40"},
    {"AcDb3PointAngularDimension", "13*! 14*! 15*! 16* 40"},
    {"AcDbOrdinateDimension", "13*! 14*! 70"},
    {"AcDbArcDimension", "13* 14* 15* 16* 17* 40 41 70 71"},
    {"AcDbRadialDimensionLarge", "13* 14* 15* 40"},
    {"AcDbLeader", "3@D 71 72 73 74 40 41 75 76=10 10*+ 77 340 210*#v 211*#v 212* 213*"},
    {"AcDbFcf", "3@D 10*! 1! 11*#v 210*#v"},
    {"AcDbMline", "2! 340!>MLINESTYLE 40 70 71 72!=11 73! 10* 11*+ 12*+ 13*+ 74+ 41+ 75+ 42+ 210*#v"},
    {"AcDbViewport",
     "10* 40 41 68 69 12* 13* 14* 15* 16* 17* 42 43 44 45 50 51 60 61 63 65 70 71 72 73 74 75 76 77 78 "
     "79 90 1 110* 111* 112* 141 142 146 170 281 282 292 331+ 332 333 334 335 340 341+ 345 346 348 361 "
     "421 431"},
    {"AcDbRasterImage",
     "90 10*! 11*!#v 12*!#v 13* 340!>IMAGEDEF 70 280 281 282 283 290 360>IMAGEDEF_REACTOR 71 91=14 "
     "14*+"},
    {"AcDbWipeout", "90 10*! 11*!#v 12*!#v 13* 340 70 280 281 282 283 290 360 71 91=14 14*+"},
    {"AcDbShape", "10*! 40!#p 2! 39 41 50 51 210*#v"},
    {"AcDbSubDMesh", "71 72 90+ 91 92=10 93 94 95 10*+ 140+ 62+ 63+ 40+ 70+ 421+ 420+"},
    {"AcDb3dSolid", "350"},
    // Records of tables.
    {"AcDbSymbolTableRecord", ""},
    {"AcDbLayerTableRecord", "2! 70! 62#l 420#t 430 440 6@T 290 370#w 390>ACDBPLACEHOLDER 347>MATERIAL 348"},
    {"AcDbLinetypeTableRecord", "2! 70! 3 72 73=49 40 49+ 74+ 75+ 340+ 46+ 50+ 44+ 45+ 9+"},
    {"AcDbTextStyleTableRecord", "2! 70! 40#n 41 50 71 42 3 4"},
    {"AcDbRegAppTableRecord", "2! 70 71"},
    {"AcDbBlockTableRecord", "2! 340>LAYOUT 70 280 281 310+"},
    {"AcDbUCSTableRecord", "2! 70 10*! 11*!#v 12*!#v 79 146 346 13*+ 71+"},
    {"AcDbViewTableRecord",
     "2! 70 40!#p 41#p 10* 11*!#v 12* 42 43 44 50 71 72 73 74 79 281 110* 111* 112* 146 332 333 "
     "334 335 345 346 348 361"},
    {"AcDbViewportTableRecord",
     "2! 70 10* 11* 12* 13* 14* 15* 16*#v 17* 40 41 42 43 44 45 50 51 60 61 63 65 68 69 71 72 "
     "73 74 75 76 77 78 79 110* 111* 112* 141 142 146 170 281 282 292 331+ 332 333 334 335 "
     "345 346 348 361 421 431"},
    {"AcDbDimStyleTableRecord",
     "2! 70+ 3 4 5 6 7 40 41 42 43 44 45 46 47 48 49 50 69 71 72 73 74 75 76 77 78 "
     "79 90 140 141 142 143 144 145 146 147 "
     "148 170 171 172 173 174 175 176#c 177#c 178#c 179 270 271 272 273 274 275 "
     "276 277 278 279 280 281 282 283 284 285 "
     "286 287 288 289 290 294 340>STYLE 341>BLOCK_RECORD 342>BLOCK_RECORD "
     "343>BLOCK_RECORD 344>BLOCK_RECORD 345>LTYPE "
     "346>LTYPE 347>LTYPE 371#w 372#w"},
    {"AcDbBlockBegin", "2! 70 10*! 3 1 4"},
    {"AcDbBlockEnd", ""},
    // Objects.
    {"AcDbDictionary", "280 281 3+ 350+ 360+"},
    {"AcDbDictionaryWithDefault", "340!>ACDBPLACEHOLDER"},
    {"AcDbGroup", "300 70 71 340+"},
    {"AcDbMlineStyle", "2! 70 3 62+#c 420+#t 430+ 51 52 71!=49 49+ 6+@T"},
    {"AcDbPlotSettings",
     "1 2 4 5 6 7 40 41 42 43 44 45 46 47 48 49 70 72 73 74 75 76 77 78 140 141 142 143 147 148 149 "
     "333"},
    {"AcDbLayout", "1! 70 71 10* 11* 12* 14* 15* 146 13* 16*#v 17*#v 76 330!+>BLOCK_RECORD 331 333 345 346"},
    {"AcDbRasterImageDef", "90 1! 10* 11* 280 281"},
    {"AcDbSymbolTable", "70"},
    {"AcDbDimStyleTable", "71 340+>DIMSTYLE"},
};

// The marks of each kind behind those that its whole family has; | parts what may stand instead, ? may be
// missing.
enum class Family : unsigned char { kEntity, kTableRecord, kObject };
struct KindText {
    std::string_view name;
    int since;
    Family family;
    std::string_view marks;
};
constexpr int r12 = 1009;
constexpr int r13 = 1012;
constexpr int r14 = 1014;
constexpr int r2000 = 1015;
constexpr KindText kindTexts[] = {
    {"3DFACE", r12, Family::kEntity, "AcDbFace"},
    {"3DSOLID", r13, Family::kEntity, "AcDbModelerGeometry AcDb3dSolid?"},
    {"ARC", r12, Family::kEntity, "AcDbCircle AcDbArc"},
    {"ARC_DIMENSION", r2000, Family::kEntity, "AcDbDimension AcDbArcDimension"},
    {"ATTDEF", r12, Family::kEntity, "AcDbText AcDbAttributeDefinition AcDbXrecord?"},
    {"ATTRIB", r12, Family::kEntity, "AcDbText AcDbAttribute AcDbXrecord?"},
    {"BLOCK", r12, Family::kEntity, "AcDbBlockBegin"},
    {"BODY", r13, Family::kEntity, "AcDbModelerGeometry"},
    {"CIRCLE", r12, Family::kEntity, "AcDbCircle"},
    {"DIMENSION", r12, Family::kEntity,
     "AcDbDimension AcDbAlignedDimension|AcDbDimension AcDbAlignedDimension "
     "AcDbRotatedDimension|AcDbDimension "
     "AcDbRadialDimension|AcDbDimension AcDbDiametricDimension|AcDbDimension "
     "AcDb2LineAngularDimension|AcDbDimension "
     "AcDb3PointAngularDimension|AcDbDimension AcDbOrdinateDimension"},
    {"ELLIPSE", r13, Family::kEntity, "AcDbEllipse"},
    {"ENDBLK", r12, Family::kEntity, "AcDbBlockEnd"},
    {"HATCH", r14, Family::kEntity, "AcDbHatch"},
    {"HELIX", r13, Family::kEntity, "AcDbSpline AcDbHelix"},
    {"IMAGE", r14, Family::kEntity, "AcDbRasterImage"},
    {"INSERT", r12, Family::kEntity, "AcDbBlockReference|AcDbMInsertBlock"},
    {"LARGE_RADIAL_DIMENSION", r2000, Family::kEntity, "AcDbDimension AcDbRadialDimensionLarge"},
    {"LEADER", r13, Family::kEntity, "AcDbLeader"},
    {"LINE", r12, Family::kEntity, "AcDbLine"},
    {"LWPOLYLINE", r14, Family::kEntity, "AcDbPolyline"},
    {"MESH", r2000, Family::kEntity, "AcDbSubDMesh"},
    {"MLINE", r13, Family::kEntity, "AcDbMline"},
    {"MTEXT", r13, Family::kEntity, "AcDbMText"},
    {"POINT", r12, Family::kEntity, "AcDbPoint"},
    {"POLYLINE", r12, Family::kEntity, "AcDb2dPolyline|AcDb3dPolyline|AcDbPolygonMesh|AcDbPolyFaceMesh"},
    {"RAY", r13, Family::kEntity, "AcDbRay"},
    {"REGION", r13, Family::kEntity, "AcDbModelerGeometry"},
    {"SEQEND", r12, Family::kEntity, ""},
    {"SHAPE", r12, Family::kEntity, "AcDbShape"},
    {"SOLID", r12, Family::kEntity, "AcDbTrace"},
    {"SPLINE", r13, Family::kEntity, "AcDbSpline"},
    {"TEXT", r12, Family::kEntity, "AcDbText AcDbText"},
    {"TOLERANCE", r13, Family::kEntity, "AcDbFcf"},
    {"TRACE", r12, Family::kEntity, "AcDbTrace"},
    {"VERTEX", r12, Family::kEntity,
     "AcDbVertex AcDb2dVertex|AcDbVertex AcDb3dPolylineVertex|AcDbVertex AcDbPolygonMeshVertex|AcDbVertex "
     "AcDbPolyFaceMeshVertex|AcDbVertex? AcDbFaceRecord"},
    {"VIEWPORT", r12, Family::kEntity, "AcDbViewport"},
    {"WIPEOUT", r14, Family::kEntity, "AcDbWipeout|AcDbRasterImage AcDbWipeout"},
    {"XLINE", r13, Family::kEntity, "AcDbXline"},

    {"APPID", r12, Family::kTableRecord, "AcDbRegAppTableRecord"},
    {"BLOCK_RECORD", r13, Family::kTableRecord, "AcDbBlockTableRecord"},
    {"DIMSTYLE", r12, Family::kTableRecord, "AcDbDimStyleTableRecord"},
    {"LAYER", r12, Family::kTableRecord, "AcDbLayerTableRecord"},
    {"LTYPE", r12, Family::kTableRecord, "AcDbLinetypeTableRecord"},
    {"STYLE", r12, Family::kTableRecord, "AcDbTextStyleTableRecord"},
    {"TABLE", r12, Family::kObject, "AcDbSymbolTable AcDbDimStyleTable?"},
    {"UCS", r12, Family::kTableRecord, "AcDbUCSTableRecord"},
    {"VIEW", r12, Family::kTableRecord, "AcDbViewTableRecord"},
    {"VPORT", r12, Family::kTableRecord, "AcDbViewportTableRecord"},

    {"ACDBDICTIONARYWDFLT", r13, Family::kObject, "AcDbDictionary AcDbDictionaryWithDefault"},
    {"ACDBPLACEHOLDER", r13, Family::kObject, "AcDbPlaceHolder?"},
    {"DICTIONARY", r13, Family::kObject, "AcDbDictionary"},
    {"DICTIONARYVAR", r13, Family::kObject, "DictionaryVariables"},
    {"GROUP", r13, Family::kObject, "AcDbGroup"},
    {"IDBUFFER", r13, Family::kObject, "AcDbIdBuffer"},
    {"IMAGEDEF", r13, Family::kObject, "AcDbRasterImageDef"},
    {"IMAGEDEF_REACTOR", r13, Family::kObject, "AcDbRasterImageDefReactor"},
    {"LAYOUT", r13, Family::kObject, "AcDbPlotSettings AcDbLayout"},
    {"MATERIAL", r13, Family::kObject, "AcDbMaterial"},
    {"MLINESTYLE", r13, Family::kObject, "AcDbMlineStyle"},
    {"PLOTSETTINGS", r13, Family::kObject, "AcDbPlotSettings"},
    {"RASTERVARIABLES", r13, Family::kObject, "AcDbRasterVariables"},
    {"SCALE", r13, Family::kObject, "AcDbScale"},
    {"SORTENTSTABLE", r13, Family::kObject, "AcDbSortentsTable"},
    {"VISUALSTYLE", r13, Family::kObject, "AcDbVisualStyle"},
    {"XRECORD", r13, Family::kObject, "AcDbXrecord"},
};

std::string_view nextWord(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return word;
}

short takeNumber(std::string_view& text) {
    short number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

AuditTable tableOf(char letter) {
    switch (letter) {
    case 'L':
        return AuditTable::kLayer;
    case 'T':
        return AuditTable::kLinetype;
    case 'S':
        return AuditTable::kStyle;
    case 'D':
        return AuditTable::kDimStyle;
    default:
        return AuditTable::kBlock;
    }
}

AuditLimit limitOf(char letter) {
    switch (letter) {
    case 'c':
        return AuditLimit::kColor;
    case 'l':
        return AuditLimit::kLayerColor;
    case 't':
        return AuditLimit::kTrueColor;
    case 'w':
        return AuditLimit::kLineweight;
    case 'p':
        return AuditLimit::kPositive;
    case 'n':
        return AuditLimit::kNotNegative;
    case 'z':
        return AuditLimit::kNotZero;
    case 'r':
        return AuditLimit::kRatio;
    default:
        return AuditLimit::kNotZeroVector;
    }
}

AuditGroupRule ruleFrom(std::string_view text) {
    AuditGroupRule rule;
    rule.code = takeNumber(text);
    while (!text.empty()) {
        const char sign = text.front();
        text.remove_prefix(1);
        if (sign == '*' || sign == '^') rule.isPoint = true;
        if (sign == '^') rule.isFlat = true;
        if (sign == '+') rule.mayRepeat = true;
        if (sign == '!') rule.isRequired = true;
        if (sign == '=') rule.counted = takeNumber(text);
        if (sign == '>') rule.target = std::exchange(text, {});
        if (sign == '@') rule.table = tableOf(text.front()), text.remove_prefix(1);
        if (sign == '#') rule.limit = limitOf(text.front()), text.remove_prefix(1);
    }
    return rule;
}

void add(AuditPart& part, const AuditGroupRule& rule) {
    unsigned char& place = part.places[static_cast<std::size_t>(rule.code)];
    if (place != 0) {
        part.rules[place - 1U].mayRepeat |= rule.mayRepeat;
        return;
    }
    part.rules.push_back(rule);
    place = static_cast<unsigned char>(part.rules.size());
}

/// All that is known, put together once.
class Rules {
public:
    Rules() {
        for (const PartText& each : partTexts) {
            AuditPart& part = m_parts[each.mark];
            part.mark = each.mark;
            for (std::string_view rest = each.groups; !rest.empty();)
                add(part, ruleFrom(nextWord(rest, ' ')));
        }
        for (const KindText& each : kindTexts) addKind(each);
    }

    const AuditKind* find(std::string_view type) const {
        const auto found = m_kinds.find(type);
        return found == m_kinds.end() ? nullptr : &found->second;
    }
    const AuditPart* part(std::string_view mark) const {
        const auto found = m_parts.find(mark);
        return found == m_parts.end() ? nullptr : &found->second;
    }

private:
    void addKind(const KindText& text) {
        AuditKind& kind = m_kinds[text.name];
        kind.name = text.name;
        kind.since = text.since;
        kind.isEntity = text.family == Family::kEntity;
        std::string_view rest = text.marks;
        do {
            std::vector<AuditMark>& variant = kind.variants.emplace_back();
            if (text.family == Family::kEntity) variant.push_back({"AcDbEntity", part("AcDbEntity")});
            if (text.family == Family::kTableRecord)
                variant.push_back({"AcDbSymbolTableRecord", part("AcDbSymbolTableRecord")});
            for (std::string_view marks = nextWord(rest, '|'); !marks.empty();) {
                std::string_view mark = nextWord(marks, ' ');
                const bool isOptional = mark.ends_with('?');
                if (isOptional) mark.remove_suffix(1);
                variant.push_back({mark, part(mark), isOptional});
            }
        } while (!rest.empty());
        addUnmarked(kind);
    }

    // Required is what every variant asks for.
    static void addUnmarked(AuditKind& kind) {
        for (const std::vector<AuditMark>& variant : kind.variants)
            for (const AuditMark& mark : variant) {
                if (!mark.part) kind.isAnyAllowed = true;
                if (mark.part)
                    for (const AuditGroupRule& rule : mark.part->rules) add(kind.unmarked, rule);
            }
        if (kind.isEntity)
            for (const std::string_view each : {"38", "39"}) add(kind.unmarked, ruleFrom(each));
        if (kind.name == "TABLE") add(kind.unmarked, ruleFrom("2"));
        for (AuditGroupRule& rule : kind.unmarked.rules)
            rule.isRequired = rule.isRequired &&
                              std::all_of(kind.variants.begin(), kind.variants.end(),
                                          [&](const auto& variant) { return asksFor(variant, rule.code); });
    }

    static bool asksFor(const std::vector<AuditMark>& variant, int code) {
        return std::any_of(variant.begin(), variant.end(), [&](const AuditMark& mark) {
            const AuditGroupRule* const rule = mark.part ? mark.part->find(code) : nullptr;
            return rule && rule->isRequired;
        });
    }

    std::unordered_map<std::string_view, AuditPart> m_parts;
    std::unordered_map<std::string_view, AuditKind> m_kinds;
};

const Rules& rules() {
    static const Rules only;
    return only;
}

} // namespace

const AuditKind* findAuditKind(std::string_view type) { return rules().find(type); }

const AuditPart& auditEntityPart() { return *rules().part("AcDbEntity"); }

} // namespace hostkit
