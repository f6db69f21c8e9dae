#include "namesinrecords.h"

#include <algorithm>
#include <iterator>

namespace hostkit {

namespace {

constexpr NamedKinds layer = bitOf(NamedKind::kLayer);
constexpr NamedKinds linetype = bitOf(NamedKind::kLinetype);
constexpr NamedKinds textStyle = bitOf(NamedKind::kTextStyle);
constexpr NamedKinds dimStyle = bitOf(NamedKind::kDimStyle);
constexpr NamedKinds block = bitOf(NamedKind::kBlock);
constexpr NamedKinds entry = bitOf(NamedKind::kEntry);

struct Naming {
    short code;
    NamedKinds kinds;
};

// What a code names wherever it names something. Layer and linetype are those of every entity.
constexpr Naming anyNaming[] = {{2, block | entry}, {3, dimStyle}, {6, linetype},
                                {7, textStyle},     {8, layer},    {1, entry}};

// Kinds whose records are published, with what they name beside layer and linetype: `B` a block in group 2,
// `D` a dimension style in group 3, `S` a text style in group 7, `E` an entry in group 2 or, of a variable of
// the dictionaries, 1.
struct KnownRecord {
    std::string_view name;
    std::string_view names;
};
constexpr KnownRecord knownRecords[] = {
    {"3DFACE", ""},
    {"3DSOLID", ""},
    {"ACAD_TABLE", "BS"},
    {"ACDBDICTIONARYWDFLT", ""},
    {"ACDBPLACEHOLDER", ""},
    {"APPID", ""},
    {"ARC", ""},
    {"ARCALIGNEDTEXT", "S"},
    {"ARC_DIMENSION", "BD"},
    {"ATTDEF", "S"},
    {"ATTRIB", "S"},
    {"BLOCK", ""},
    {"BLOCK_RECORD", ""},
    {"BODY", ""},
    {"CIRCLE", ""},
    {"DICTIONARY", ""},
    {"DICTIONARYVAR", "E"},
    {"DIMENSION", "BD"},
    {"ELLIPSE", ""},
    {"ENDBLK", ""},
    {"GROUP", ""},
    {"HATCH", ""},
    {"HELIX", ""},
    {"IMAGE", ""},
    {"IMAGEDEF", ""},
    {"INSERT", "B"},
    {"LARGE_RADIAL_DIMENSION", "BD"},
    {"LAYER", ""},
    {"LAYOUT", ""},
    {"LEADER", "D"},
    {"LINE", ""},
    {"LTYPE", ""},
    {"LWPOLYLINE", ""},
    {"MATERIAL", ""},
    {"MESH", ""},
    {"MLEADERSTYLE", ""},
    {"MLINE", "E"},
    {"MLINESTYLE", ""},
    {"MTEXT", "S"},
    {"MULTILEADER", ""},
    {"PLOTSETTINGS", ""},
    {"POINT", ""},
    {"POLYLINE", ""},
    {"RAY", ""},
    {"REGION", ""},
    {"RTEXT", "S"},
    {"SCALE", ""},
    {"SEQEND", ""},
    {"SHAPE", ""},
    {"SOLID", ""},
    {"SORTENTSTABLE", ""},
    {"SPLINE", ""},
    {"STYLE", ""},
    {"TABLESTYLE", "S"},
    {"TEXT", "S"},
    {"TOLERANCE", "D"},
    {"TRACE", ""},
    {"UCS", ""},
    {"VERTEX", ""},
    {"VIEW", ""},
    {"VIEWPORT", ""},
    {"VISUALSTYLE", ""},
    {"VPORT", ""},
    {"WIPEOUT", ""},
    {"XLINE", ""},
};

// Names in the R12 form and from careless programs in later ones; a handle is no record's name.
constexpr Naming dimStyleNaming[] = {
    {5, block},   {6, block},   {7, block},      {340, textStyle}, {341, block},    {342, block},
    {343, block}, {344, block}, {345, linetype}, {346, linetype},  {347, linetype},
};

struct HeaderNaming {
    std::wstring_view name;
    NamedKinds kinds;
};
constexpr HeaderNaming headerNaming[] = {
    {L"CLAYER", layer},       {L"CELTYPE", linetype},  {L"TEXTSTYLE", textStyle}, {L"DIMSTYLE", dimStyle},
    {L"DIMTXSTY", textStyle}, {L"DIMBLK", block},      {L"DIMBLK1", block},       {L"DIMBLK2", block},
    {L"DIMLDRBLK", block},    {L"DIMLTYPE", linetype}, {L"DIMLTEX1", linetype},   {L"DIMLTEX2", linetype},
    {L"CMLSTYLE", entry},     {L"CMATERIAL", entry},   {L"CTABLESTYLE", entry},   {L"CMLEADERSTYLE", entry},
};

template <class Namings>
NamedKinds in(const Namings& namings, int code) {
    for (const Naming& each : namings)
        if (each.code == code) return each.kinds;
    return 0;
}

const KnownRecord* knownRecord(std::string_view name) {
    const auto found =
        std::lower_bound(std::begin(knownRecords), std::end(knownRecords), name,
                         [](const KnownRecord& each, std::string_view wanted) { return each.name < wanted; });
    return found != std::end(knownRecords) && found->name == name ? &*found : nullptr;
}

NamedKinds namedByKnown(const KnownRecord& record, int code) {
    const auto has = [&](char letter) { return record.names.find(letter) != std::string_view::npos; };
    switch (code) {
    case 1:
        return has('E') ? entry : NamedKinds{0};
    case 2:
        return has('B') ? block : has('E') ? entry : NamedKinds{0};
    case 3:
        return has('D') ? dimStyle : NamedKinds{0};
    case 6:
        return linetype;
    case 7:
        return has('S') ? textStyle : NamedKinds{0};
    case 8:
        return layer;
    default:
        return 0;
    }
}

} // namespace

NamedKinds namedBy(std::string_view recordName, int code) {
    if (recordName == "DIMSTYLE") return in(dimStyleNaming, code);
    const KnownRecord* const known = knownRecord(recordName);
    return known ? namedByKnown(*known, code) : in(anyNaming, code);
}

NamedKinds namedByExtendedData(std::string_view application, int code) {
    if (code == 1001) return bitOf(NamedKind::kApplication);
    if (code == 1003) return layer;
    return code == 1000 && application == "ACAD" ? NamedKinds{block | textStyle | linetype} : NamedKinds{0};
}

NamedKinds namedByHeader(std::wstring_view variable) {
    for (const HeaderNaming& each : headerNaming)
        if (each.name == variable) return each.kinds;
    return 0;
}

} // namespace hostkit
