// The keys that a style's file may have, by type of objects. Long tables, in the order in which the
// application gives them.
#include "vexodlgorstyle.h"

#include "cvxlogentry.h"

#include <span>

namespace {

enum class KeyKind : unsigned char { real, integer, name, textStyle, lineType, dimensionStyle };

struct KeyList {
    KeyKind kind;
    std::span<const wchar_t* const> keys;
};

constexpr const wchar_t* autosurfReals[] = {
    L"Angle",       L"CoverExt",      L"CoverInt",         L"MaxSize",
    L"OverlapLong", L"OverlapTransv", L"FirstPanelLength", L"FirstPanelWidth",
};
constexpr const wchar_t* autosurfIntegers[] = {
    L"Justification", L"NbLayers", L"Method", L"Trim", L"Overlap",
};
constexpr const wchar_t* autosurfNames[] = {
    L"Type",
    L"Label",
};
constexpr const wchar_t* repartitionReals[] = {
    L"LateralOffset", L"LateralOffsetExterior", L"FirstPanelWidth", L"Cover1", L"Cover2", L"Width",
    L"Overlap",       L"LastMeshLength",
};
constexpr const wchar_t* repartitionIntegers[] = {
    L"Justification", L"CustomWidth", L"CustomOverlap", L"CutType", L"Countable", L"MultiplicationFactor",
};
constexpr const wchar_t* representationReals[] = {
    L"SpanSymbolLength",
    L"VerticalDashLength",
    L"DiagonalOffset",
};
constexpr const wchar_t* representationIntegers[] = {
    L"Representation",
    L"Bubble",
    L"BubbleType",
    L"BubbleJustification",
    L"AnnotationShow",
    L"AnnotationWidthLength",
    L"AnnotationWidthLengthType",
    L"AnnotationShowType",
    L"AnnotationShowNbLayers",
    L"DiagonalInversed",
    L"SpanSymbolShow",
    L"SpanSymbolLineWeight",
    L"SpanSymbolColor",
    L"LineweightHorizontal",
    L"LineweightVertical",
    L"ShowDashes",
    L"ShowHoriz",
    L"ShowVert",
    L"ShowArrows",
    L"LitTrans",
    L"LitLong",
    L"ShowLitsRepresentation",
    L"ExtendedLines",
    L"Top or Front",
    L"Bottom or Back",
    L"ShowVerticalDashes",
    L"ShowBubbleInSecondaryMeshes",
    L"ShowAnnotationInSecondaryMeshes",
    L"ShowMainLine",
    L"ShowDistributionLine",
    L"ShowDashes8",
    L"ShowFirstAndLastPanels",
    L"ShowPanelTypeInBubble",
    L"ShowDimensionLineTextQuantities",
    L"ShowDimensionLineTextType",
    L"ShowDimensionLineTextOverlapping",
    L"MainLineColor",
    L"MainLineWeight",
    L"DistributionLineColor",
    L"DistributionLineWeight",
    L"DashLineColor",
    L"DashLineWeight",
};
constexpr const wchar_t* representationNames[] = {
    L"RepresentationStyleName",
    L"SpanSymbolName",
    L"Usertext1",
    L"Usertext2",
};
constexpr const wchar_t* representationTextStyles[] = {
    L"PositionTextStyle",
    L"AnnotationTextStyle",
};
constexpr const wchar_t* representationLineTypes[] = {
    L"Linetype", L"SpanSymbolLineType", L"MainLineType", L"DistributionLineType", L"DashLineType",
};
constexpr const wchar_t* representationDimensionStyles[] = {
    L"DimensionStyleRepStyle8",
};
constexpr const wchar_t* symbolElements[] = {
    L"StraightBar",
    L"PointBar",
    L"PolyBar",
    L"OthersBar",
    L"BentMesh",
    L"MeshCut",
    L"LinAndVarRepartSymbol",
    L"LinAndVarRepartRake",
    L"PointDevRepart",
    L"QuantitativeRepartSymbol",
    L"QuantitativeRepartRake",
};
constexpr const wchar_t* linearReals[] = {
    L"LinearRepartReinfSection",
    L"LinearRepartExtremityLeftValue",
    L"LinearRepartExtremityRightValue",
    L"LinearRepartOffset",
    L"LinearRepartAngle",
    L"LinearRepartSymbolScale",
    L"LinearRepartRepresentationScale",
};
constexpr const wchar_t* linearIntegers[] = {
    L"LinearRepartPosNumber",
    L"LinearRepartExtremityTypeValue",
    L"LinearRepartQuantityValue",
    L"LinearRepartHasCount",
    L"LinearRepartMultiplicatorFactor",
    L"LinearRepartDeviceType",
    L"LinearRepartLimitersType",
    L"LinearRepartitionHasCentralLine",
    L"LinearRepartColor",
    L"LinearRepartLineWeight",
    L"LinearRepartHasIntermediateLine",
    L"LinearRepartHasSwedishSymbol",
    L"LinearRepartExtremity1",
    L"LinearRepartExtremity2",
    L"LinearRepartHasSymbol",
    L"LinearRepartRepresentationType",
    L"LinearRepartUserType",
    L"LinearRepartPositionUp",
    L"LinearRepartPositionDown",
    L"LinearRepartHasPositionConsiderer",
};
constexpr const wchar_t* linearNames[] = {
    L"LinearRepartQuantityType",
    L"LinearRepartQuantityName",
    L"LinearRepartSymbolName",
};
constexpr const wchar_t* linearTextStyles[] = {
    L"LinearRepartDimStyle",
};
constexpr const wchar_t* linearLineTypes[] = {
    L"LinearRepartLineType",
    L"LinearRepartContinousLineTypeSwedishSymbol",
    L"LinearRepartDottedLineTypeSwedishSymbol",
};
constexpr const wchar_t* dimensionReals[] = {
    L"DimRepartSchemeScale",        L"DimRepartSchemeTextHeight",     L"DimRepartSchemeDataScale",
    L"DimRepartSchemeDataDimScale", L"DimRepartSchemeDataTextHeight",
};
constexpr const wchar_t* dimensionIntegers[] = {
    L"DimRepartHasDistanceBetweenBlocks",
    L"DimRepartHasSnapLine",
    L"DimRepartInfoPresence",
    L"DimRepartHasTextOnDimension",
    L"DimRepartHasDimensionExtension",
    L"DimRepartHasSymbol",
    L"DimRepartHasMirrorSymbol",
    L"DimRepartHasScheme",
    L"DimRepartSchemeHasText",
    L"DimRepartSchemeDataType",
    L"DimRepartSchemeDataHasOrthoDim",
    L"DimRepartSchemeDataHasSegmentsDim",
    L"DimRepartSchemeDataHasAngleDim",
    L"DimRepartSchemeDataHasText",
};
constexpr const wchar_t* dimensionNames[] = {
    L"DimRepartDimensionText",
    L"DimRepartDimensionTextContents",
    L"DimRepartSymbolName",
    L"DimRepartSymbolContents",
};
constexpr const wchar_t* dimensionTextStyles[] = {
    L"DimRepartDimensionStyle",
    L"DimRepartSchemeTextStyle",
    L"DimRepartSchemeDataDimStyleName",
    L"DimRepartSchemeDataTextStyle",
};
constexpr const wchar_t* closingReals[] = {
    L"UnitsX0", L"UnitsX1", L"UnitsY0", L"UnitsY1", L"RebarDwgScale",
};
constexpr const wchar_t* closingIntegers[] = {
    L"DisplayReinf",
};

// Each element of a drawing style has these.
constexpr const wchar_t* elementIntegers[] = {L"HasSymbol", L"HasRake", L"HasSnapLine", L"ArrowType",
                                              L"Justification"};
constexpr const wchar_t* elementNames[] = {L"SymbolType"};
constexpr const wchar_t* elementReals[] = {L"DistanceToTarget", L"DistanceBtwArrows"};

constexpr KeyList autosurf[] = {
    {KeyKind::real, autosurfReals},
    {KeyKind::integer, autosurfIntegers},
    {KeyKind::name, autosurfNames},
};
constexpr KeyList repartition[] = {
    {KeyKind::real, repartitionReals},
    {KeyKind::integer, repartitionIntegers},
};
constexpr KeyList representation[] = {
    {KeyKind::real, representationReals},         {KeyKind::integer, representationIntegers},
    {KeyKind::name, representationNames},         {KeyKind::textStyle, representationTextStyles},
    {KeyKind::lineType, representationLineTypes}, {KeyKind::dimensionStyle, representationDimensionStyles},
};
constexpr KeyList element[] = {
    {KeyKind::integer, elementIntegers},
    {KeyKind::name, elementNames},
    {KeyKind::real, elementReals},
};
constexpr KeyList linearRepartition[] = {
    {KeyKind::real, linearReals},         {KeyKind::integer, linearIntegers},
    {KeyKind::name, linearNames},         {KeyKind::textStyle, linearTextStyles},
    {KeyKind::lineType, linearLineTypes},
};
constexpr KeyList dimensionRepartition[] = {
    {KeyKind::real, dimensionReals},
    {KeyKind::integer, dimensionIntegers},
    {KeyKind::name, dimensionNames},
    {KeyKind::textStyle, dimensionTextStyles},
};
constexpr KeyList closing[] = {
    {KeyKind::real, closingReals},
    {KeyKind::integer, closingIntegers},
};

// What a text style and a linetype bring along behind their key.
struct Companion {
    const wchar_t* ending;
    VEXOORStyleDataItem::Kind kind;
};
constexpr Companion textStyleCompanions[] = {
    {L"", VEXOORStyleDataItem::kName},
    {L"Font", VEXOORStyleDataItem::kText},
    {L"BigFont", VEXOORStyleDataItem::kText},
    {L"Height", VEXOORStyleDataItem::kReal},
    {L"UpsideDown", VEXOORStyleDataItem::kInteger},
    {L"BackWards", VEXOORStyleDataItem::kInteger},
    {L"Vertical", VEXOORStyleDataItem::kInteger},
    {L"WidthFactor", VEXOORStyleDataItem::kReal},
    {L"ObliqueAngle", VEXOORStyleDataItem::kReal},
};
constexpr Companion lineTypeCompanions[] = {
    {L"", VEXOORStyleDataItem::kName},
    {L"Description", VEXOORStyleDataItem::kText},
    {L"PatternLength", VEXOORStyleDataItem::kReal},
};

template <class Keys>
void addCompanions(std::span<const Companion> companions, const CString& key, Keys& keys) {
    for (const Companion& each : companions) keys[key + each.ending] = each.kind;
}

} // namespace

struct VEXODlgORStyle::KeyTable {
    VEXODlgORStyle& dialog;
    KeyKinds& keys;

    void add(KeyKind kind, const CString& key) {
        switch (kind) {
        case KeyKind::real:
            keys[key] = VEXOORStyleDataItem::kReal;
            break;
        case KeyKind::integer:
            keys[key] = VEXOORStyleDataItem::kInteger;
            break;
        case KeyKind::name:
            keys[key] = VEXOORStyleDataItem::kName;
            break;
        case KeyKind::textStyle:
            return dialog.AddTextStyleToMap(key, keys);
        case KeyKind::lineType:
            return dialog.AddLineTypeToMap(key, keys);
        case KeyKind::dimensionStyle:
            return dialog.AddDimStyleToMap(key, keys);
        }
    }
    void addAll(std::span<const KeyList> lists, const CString& prefix) {
        for (const KeyList& list : lists)
            for (const wchar_t* key : list.keys) add(list.kind, prefix + key);
    }
    void addDrawingStyle(const CString& prefix) {
        for (const wchar_t* each : symbolElements) addAll(element, prefix + each);
        addAll(linearRepartition, prefix);
        addAll(dimensionRepartition, prefix);
        addAll(representation, prefix);
        addAll(closing, prefix);
    }
};

Acad::ErrorStatus VEXODlgORStyle::GetKeyMapToType(KeyKinds& keys) {
    CVxLogEntry entry(L"VEXODlgORStyle::GetKeyMapToType");
    keys.clear();
    if (!m_data) return Acad::eInvalidInput;
    KeyTable table{*this, keys};
    const bool isAutosurf = m_entityType == L"Autosurf";
    const bool isRepartition = m_entityType == L"BMRepartition";
    if (isAutosurf) table.addAll(autosurf, L"");
    if (isRepartition) table.addAll(repartition, L"");
    if (isAutosurf || isRepartition) table.addAll(representation, L"");
    if (m_entityType == L"DwgStyle") table.addDrawingStyle(m_data->getPrefix());
    return Acad::eOk;
}

void VEXODlgORStyle::AddTextStyleToMap(const CString& key, KeyKinds& keys) {
    addCompanions(textStyleCompanions, key, keys);
}

void VEXODlgORStyle::AddLineTypeToMap(const CString& key, KeyKinds& keys) {
    addCompanions(lineTypeCompanions, key, keys);
}

void VEXODlgORStyle::AddDimStyleToMap(const CString& key, KeyKinds& keys) {
    keys[key] = VEXOORStyleDataItem::kName;
}
