// Stand-in for the host's AcDbAbstractViewTableRecord. Covers what views and viewports show: middle, size, target, direction, twist, lens and clipping; leaves out render modes and coordinate systems of views.
#pragma once

#include "dbsymboltablerecord.h"
#include "groupblock.h"

#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

/// What views and viewports have in common. Target and direction are in world coordinates, the middle in
/// those of the display (its plane through the target, turned by the twist), lengths in drawing units, angles
/// in radians. A value that the record lacks is the plan view's: middle and target at the origin, direction
/// +Z, size 1 by 1, lens 50 mm, no clipping (and the front plane, if there were one, at the eye).
///
/// Setters take numbers that are finite alone: eInvalidInput otherwise, for a direction without length, and
/// for a height, width or lens length that is not above 0.
class AcDbAbstractViewTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord)

public:
    AcGePoint2d centerPoint() const;
    Acad::ErrorStatus setCenterPoint(const AcGePoint2d& middle);
    double height() const;
    Acad::ErrorStatus setHeight(double height);
    double width() const;
    Acad::ErrorStatus setWidth(double width);
    AcGePoint3d target() const;
    Acad::ErrorStatus setTarget(const AcGePoint3d& target);
    /// From the target to the eye; its length is the camera's distance.
    AcGeVector3d viewDirection() const;
    Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction);
    double viewTwist() const;
    Acad::ErrorStatus setViewTwist(double angle);
    /// Millimetres.
    double lensLength() const;
    Acad::ErrorStatus setLensLength(double length);

    /// From the target along the direction; looked at where the clipping is enabled.
    double frontClipDistance() const;
    Acad::ErrorStatus setFrontClipDistance(double distance);
    double backClipDistance() const;
    Acad::ErrorStatus setBackClipDistance(double distance);
    bool perspectiveEnabled() const { return (viewMode() & perspective) != 0; }
    Acad::ErrorStatus setPerspectiveEnabled(bool enabled) { return setModeBit(perspective, enabled); }
    bool frontClipEnabled() const { return (viewMode() & frontClip) != 0; }
    Acad::ErrorStatus setFrontClipEnabled(bool enabled) { return setModeBit(frontClip, enabled); }
    bool backClipEnabled() const { return (viewMode() & backClip) != 0; }
    Acad::ErrorStatus setBackClipEnabled(bool enabled) { return setModeBit(backClip, enabled); }
    /// The front clipping plane lies at the eye, whatever its distance says.
    bool frontClipAtEye() const { return (viewMode() & frontClipNotAtEye) == 0; }
    Acad::ErrorStatus setFrontClipAtEye(bool atEye) { return setModeBit(frontClipNotAtEye, !atEye); }
    /// The whole word of flags, as VIEWMODE has it.
    int viewMode() const;

    /// All groups beyond the name and the flags, in order. Those without a member here are kept as they are.
    const hostkit::GroupBlock& groups() const { return m_groups; }
    /// eInvalidInput for reals and coordinates that are infinite or no numbers.
    Acad::ErrorStatus setGroups(hostkit::GroupBlock groups);

protected:
    /// The codes by which a kind of record files the values above.
    struct Codes {
        short middle, height, width, target, direction, twist, lensLength, frontClip, backClip, mode;
        short otherHeight; ///< counts before the first one where it is there; 0: none
        bool widthIsRatio; ///< the width's group holds width / height
    };
    AcDbAbstractViewTableRecord() = default;
    AcDbAbstractViewTableRecord(const AcDbAbstractViewTableRecord&) = default;
    virtual const Codes& codes() const = 0;

    hostkit::GroupBlock m_groups;

private:
    friend class hostkit::DatabaseAccess;
    enum ModeBit { perspective = 1, frontClip = 2, backClip = 4, followsUcs = 8, frontClipNotAtEye = 16 };
    Acad::ErrorStatus setModeBit(int bit, bool isOn);
    bool find(short code, AcDbDxfGroup& group) const;
    short heightCode() const;
    double real(short code, double otherwise) const;
    Acad::ErrorStatus setReal(short code, double value);
    Acad::ErrorStatus put(const AcDbDxfGroup& group);
};
