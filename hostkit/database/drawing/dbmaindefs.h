// Stand-in for the host's database enumerations. Covers those that contracts name; leaves out the rest.
#pragma once

namespace AcDb {

enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum Visibility { kInvisible = 1, kVisible = 0 };
/// Which of the two operands of an intersection count as prolonged beyond their ends.
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
/// Values are the bits of a vertex' flags in a drawing (group 70), 0 for a plain vertex.
enum Vertex2dType { k2dVertex = 0, k2dCurveFitVertex = 1, k2dSplineFitVertex = 8, k2dSplineCtlVertex = 16 };
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 16, k3dFitVertex = 8 };
enum TextHorzMode {
    kTextLeft = 0,
    kTextCenter = 1,
    kTextRight = 2,
    kTextAlign = 3,
    kTextMid = 4,
    kTextFit = 5
};
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

/// Hundredths of a millimetre, or one of the three rules.
enum LineWeight : int {
    kLnWt000 = 0,
    kLnWt005 = 5,
    kLnWt009 = 9,
    kLnWt013 = 13,
    kLnWt015 = 15,
    kLnWt018 = 18,
    kLnWt020 = 20,
    kLnWt025 = 25,
    kLnWt030 = 30,
    kLnWt035 = 35,
    kLnWt040 = 40,
    kLnWt050 = 50,
    kLnWt053 = 53,
    kLnWt060 = 60,
    kLnWt070 = 70,
    kLnWt080 = 80,
    kLnWt090 = 90,
    kLnWt100 = 100,
    kLnWt106 = 106,
    kLnWt120 = 120,
    kLnWt140 = 140,
    kLnWt158 = 158,
    kLnWt200 = 200,
    kLnWt211 = 211,
    kLnWtByLayer = -1,
    kLnWtByBlock = -2,
    kLnWtByLwDefault = -3
};

enum UnitsValue {
    kUnitsUndefined = 0,
    kUnitsInches = 1,
    kUnitsFeet = 2,
    kUnitsMiles = 3,
    kUnitsMillimeters = 4,
    kUnitsCentimeters = 5,
    kUnitsMeters = 6,
    kUnitsKilometers = 7,
    kUnitsMicroinches = 8,
    kUnitsMils = 9,
    kUnitsYards = 10,
    kUnitsAngstroms = 11,
    kUnitsNanometers = 12,
    kUnitsMicrons = 13,
    kUnitsDecimeters = 14,
    kUnitsDekameters = 15,
    kUnitsHectometers = 16,
    kUnitsGigameters = 17,
    kUnitsAstronomical = 18,
    kUnitsLightYears = 19,
    kUnitsParsecs = 20
};

enum FilerType {
    kFileFiler = 0,
    kCopyFiler = 1,
    kUndoFiler = 2,
    kBagFiler = 3,
    kIdXlateFiler = 4,
    kPageFiler = 5,
    kDeepCloneFiler = 6,
    kIdFiler = 7,
    kPurgeFiler = 8,
    kWblockCloneFiler = 9
};

/// The drawing forms, oldest first, by the numbers that programs save them with: 29 is the form 2010.
enum AcDbDwgVersion {
    kDHL_Unknown = 254,
    kDHL_1009 = 16,
    kDHL_1012 = 19,
    kDHL_1014 = 21,
    kDHL_1015 = 23,
    kDHL_1018 = 25,
    kDHL_1021 = 27,
    kDHL_1024 = 29,
    kDHL_1027 = 31,
    kDHL_1032 = 33,
    kDHL_CURRENT = kDHL_1027
};

/// How a merge of two dictionaries treats names that both have; as stored in group 281.
enum DuplicateRecordCloning {
    kDrcNotApplicable = 0,
    kDrcIgnore = 1,
    kDrcReplace = 2,
    kDrcXrefMangleName = 3,
    kDrcMangleName = 4,
    kDrcUnmangleName = 5
};

} // namespace AcDb
