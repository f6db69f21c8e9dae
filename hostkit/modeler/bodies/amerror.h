// Stand-in for the host's modeller: ErrorCode, errorString and its exceptions. Covers all codes; leaves out what four numbers that stand for nothing once meant.
#pragma once

#include <exception>
#include <string>

// clang-format off
/// Each code once: X(number, name).
#define AMODELER_ERROR_CODES(X) \
    X(1, eFail) X(2, eViewPointLiesInsideScene) X(3, eBadBodyGeometry) X(4, eBadSurfaceType) \
    X(5, eBadCurveType) X(6, eBadInput) X(7, eNullVector) X(8, eNullNormalVector) X(9, eBadPlane) \
    X(10, eBadLine) X(11, eBadAxis) X(12, eBadTransform) X(14, eInputBodiesMustNotBeNegated) \
    X(15, eRadiusMustBePositive) X(16, eRadiusMustBeNonNegative) X(17, eRadiusMustNotBeZero) \
    X(18, eApproximationMustBeAtLeastFour) X(19, eScaleFactorMustBePositive) X(20, eAngleMustNotBeZero) \
    X(21, eBodyPointerIsNull) X(22, eFacePointerIsNull) X(23, eEdgePointerIsNull) \
    X(24, eVertexPointerIsNull) X(25, ePolygonPointerIsNull) X(26, eProfilePolygonPointerIsNull) \
    X(27, ePathPolygonPointerIsNull) X(28, eBodyIsNegative) X(30, eFileNameIsNull) X(31, eBadFile) \
    X(33, eFilePointerIsNull) X(34, eFileOpenError) X(35, eFileReadError) X(36, eFileWriteError) \
    X(37, eSaveError) X(38, eRestoreError) X(39, eBadDataRestored) \
    X(40, eFileIsNewerThanCurrentVersionOfModeler) X(41, eBoxSizesMustNotBeZero) \
    X(42, eMajorRadiusMustBeGreaterThanMinorRadius) X(43, eInnerRadiusMustBeSmallerThanOuterRadius) \
    X(44, eInnerRadiusCanBeZeroOnlyIfOuterRadiusIsZero) X(45, eViewPointCoincidesWithTargetPoint) \
    X(46, eEpsilonMustBePositive) X(47, eCallbackObjectPointerIsNull) X(48, ePickingNotPossible) \
    X(49, eAtLeast4NonCoplanarPointsRequired) X(50, ePointsDoNotDefineConvexPolyhedron) \
    X(51, eApexMustNotLieInPolygon) X(52, eExtrusionVectorMustNotBeParallelToPolygon) \
    X(53, eAxisOfRevolutionMustLieInPolygonPlane) X(54, eAxisOfRevolutionIntersectsPolygon) \
    X(55, eBadNormal) X(56, eBadPolygon) X(57, ePolygonIsSelfIntersectingOrTouching) \
    X(58, eBadRelativePolygonPosition) X(59, eCannotCreateFillet) X(60, eBadArcCenter) \
    X(61, eRadiusTooSmall) X(62, eFilletRadiusMustBePositive) X(63, eCannotFilletVerticesBelongingToArcs) \
    X(64, eFirstAndLastVertexInEndpointRevolutionMustNotBeFilleted) \
    X(65, eArcBetweenLastAndFirstVertexNotAllowedForEndpointRevolution) \
    X(66, eEntitiesSectionNotFoundInDxfFile) X(67, ePolylineEntityNotFoundInDxfFile) \
    X(68, ePolylineMustBeClosed) X(69, e3dPolylineOrMeshNotAllowed) X(70, eBadDxfFile) \
    X(71, ePointsAreColinearOrCoincident) X(72, eSourceArgumentsAreColinearOrCoincident) \
    X(73, eDestinationArgumentsAreColinearOrCoincident) X(74, ePointsAreCoplanar) \
    X(75, eChamferingDistanceMustBePositive) X(76, eOnlyManifoldEdgesCanBeFilletedAndChamfered) \
    X(77, eOnlyStraightAndCircularEdgesCanBeFilletedAndChamfered) \
    X(78, ePlanarEdgesCannotBeFilletedAndChamfered) X(79, eAtLeastOneEdgeExpected) \
    X(80, eFilletRadiusTooLarge) X(81, eChamferDistanceTooLarge) X(82, eCannotFilletEdge) \
    X(83, eCannotMitreEdgesOfDifferentConvexity) X(84, eTooComplexMixedConvexityCap) \
    X(85, eNotYetImplemented) X(86, eCircleIsNotValid) X(87, eBaseNormalPerpendicularToAxisVector) \
    X(88, eEndCentersMustHaveEqualDistance) X(89, eFaceMustNotBelongToABody) X(90, eFaceHasNoEdges) \
    X(91, eOneSidedFaceExpected) X(92, eProfileFacesMustHaveTheSameNumberOfEdges) \
    X(93, eAtLeastTwoProfilesExpected) X(94, eBodyProfileMustContainExactlyOneFace) \
    X(95, eProfileFaceHasNoEdges) X(96, eBadMorphingMap) \
    X(97, eEdgesOfFirstProfileCannotBeMarkedApproximating) X(98, eBaseSizesMustBePositive) \
    X(99, eTopCircleMustLieAboveBaseRectangle) X(100, eFilletByRadiusOrArcByBulgeTypeExpected) \
    X(101, eArcByRadiusTypeExpected) X(102, eArc3dTypeExpected) X(103, eCannotCreateTouchingCircle) \
    X(104, eNonPlanarPolygon) X(105, eNonPlanarProfileFace) X(106, eFaceMustHaveAtLeastThreeEdges) \
    X(107, ePolygonPointsCoincide) X(108, eBadPath) X(109, eBadProfileAndPathOrientation) \
    X(110, eFirstPathPointMustLieInStartProfilePlane) X(111, eLastPathPointMustLieInEndProfilePlane) \
    X(112, eWidthTooSmall) X(113, eHeightTooSmall) X(114, eEndProfileNotAllowedWhenPathIsClosed) \
    X(115, eScaleFactorNotAllowedWhenPathIsClosed) X(116, eTwistAngleNotAllowedWhenPathIsClosed) \
    X(117, eMorphingMustBeIdentityWhenPathIsClosed) X(118, eExtrusionBodyLooksSelfIntersecting) \
    X(119, eMorphingMapRequiresEndProfile) X(120, eNegativeIndexInMorphingMap) \
    X(121, eFixedPointMustLieInPolygonPlane) X(122, eTriStripsMayBeGeneratedOnlyWhenCachingTriangles) \
    X(123, eStartProfileNormalHasOppositeDirectionThanFirstPathSegment) \
    X(124, eEndProfileNormalHasOppositeDirectionThanLastPathSegment) \
    X(125, eStartProfileIsParallelWithFirstPathSegment) X(126, eEndProfileIsParallelWithLastPathSegment) \
    X(128, eArcByRadiusNotAllowedForPathPolygons_UseArc3d) \
    X(129, eArcByBulgeNotAllowedForPathPolygons_UseArc3d) X(130, eNumberOfLinearSegmentsMustBeAtLeastOne) \
    X(131, eZeroBulgeNotAllowed) X(132, eFixedPointMustLieInStartProfilePlane) X(1000, eInternalError)
// clang-format on

namespace AModeler {

enum ErrorCode : int {
    eOk = 0,
#define AMODELER_ENUMERATOR(number, name) name = number,
    AMODELER_ERROR_CODES(AMODELER_ENUMERATOR)
#undef AMODELER_ENUMERATOR
};

/// The code in words, "Radius must be positive"; "No error" for eOk and "Unknown error" for a number that is
/// no code. Never null.
[[nodiscard]] const wchar_t* errorString(ErrorCode code);

/// What every operation of the modeller throws when it fails.
class Error : public std::exception {
public:
    explicit Error(ErrorCode code);
    [[nodiscard]] ErrorCode code() const { return m_code; }
    [[nodiscard]] const char* what() const noexcept override { return m_text.c_str(); }

private:
    ErrorCode m_code;
    std::string m_text;
};

} // namespace AModeler
