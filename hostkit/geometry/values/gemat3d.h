// Stand-in for the host's AcGeMatrix3d. Covers affine matrices: composition, inverse, the usual constructions and axes; leaves out perspective (the bottom row is taken as 0 0 0 1 when points are transformed).
#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

/// A 4 x 4 matrix that acts on column vectors: entry[row][column], translation in column 3. Default is the
/// identity.
class AcGeMatrix3d {
public:
    constexpr AcGeMatrix3d() = default;

    static const AcGeMatrix3d kIdentity;

    AcGeMatrix3d& setToIdentity() { return *this = AcGeMatrix3d(); }
    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }

    /// The product applies the right operand first.
    AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d& setToProduct(const AcGeMatrix3d& left, const AcGeMatrix3d& right) {
        return *this = left * right;
    }

    /// Determinant of the linear part; negative for a mirroring matrix.
    double det() const;
    /// The linear part's determinant is at most tol.equalVector() times the product of its columns' lengths.
    Adesk::Boolean isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    /// Inverse of the affine map. A singular matrix (under the global tolerance) gives the identity from
    /// inverse() and stays as it is under invert().
    AcGeMatrix3d inverse() const;
    AcGeMatrix3d& invert();
    /// False, and `inv` untouched, when the matrix isSingular under tol.
    Adesk::Boolean inverse(AcGeMatrix3d& inv, const AcGeTol& tol) const;
    AcGeMatrix3d transpose() const;
    AcGeMatrix3d& transposeIt() { return *this = transpose(); }

    /// Every entry differs by at most tol.equalVector() in the linear part and passes the point test in the
    /// translation.
    Adesk::Boolean isEqualTo(const AcGeMatrix3d& matrix, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean operator==(const AcGeMatrix3d& matrix) const { return isEqualTo(matrix); }
    Adesk::Boolean operator!=(const AcGeMatrix3d& matrix) const { return !isEqualTo(matrix); }
    /// Columns perpendicular to each other and of one length; mirroring is allowed. False for a singular
    /// matrix.
    Adesk::Boolean isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    /// Columns perpendicular to each other, of any lengths but zero.
    Adesk::Boolean isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    /// The length of the longest column of the linear part.
    double scale() const;
    /// The largest sum of magnitudes along a row of the linear part.
    double norm() const;

    AcGeMatrix3d& setToTranslation(const AcGeVector3d& vector);
    /// Right-handed turn by `angle` radians about the axis, of any length, through `center`. A zero axis
    /// gives the identity.
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToMirroring(const AcGePlane& plane);
    AcGeMatrix3d& setToMirroring(const AcGePoint3d& point);
    /// Reflects through the line: a half turn about it.
    AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
    /// Projection on the plane along `direction`. A direction in the plane gives the identity.
    AcGeMatrix3d& setToProjection(const AcGePlane& plane, const AcGeVector3d& direction);
    /// Maps plane coordinates (of the arbitrary-axis system for a normal, of getCoordSystem for a plane) to
    /// the world.
    AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);
    AcGeMatrix3d& setToPlaneToWorld(const AcGePlane& plane);
    AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);
    AcGeMatrix3d& setToWorldToPlane(const AcGePlane& plane);
    /// Maps the first system on the second one. A singular first system gives the identity.
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                     const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                     const AcGeVector3d& toY, const AcGeVector3d& toZ);

    static AcGeMatrix3d translation(const AcGeVector3d& vector) {
        return AcGeMatrix3d().setToTranslation(vector);
    }
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d().setToRotation(angle, axis, center);
    }
    static AcGeMatrix3d scaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d().setToScaling(factor, center);
    }
    static AcGeMatrix3d mirroring(const AcGePlane& plane) { return AcGeMatrix3d().setToMirroring(plane); }
    static AcGeMatrix3d mirroring(const AcGePoint3d& point) { return AcGeMatrix3d().setToMirroring(point); }
    static AcGeMatrix3d mirroring(const AcGeLine3d& line) { return AcGeMatrix3d().setToMirroring(line); }
    static AcGeMatrix3d projection(const AcGePlane& plane, const AcGeVector3d& direction) {
        return AcGeMatrix3d().setToProjection(plane, direction);
    }
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal) {
        return AcGeMatrix3d().setToPlaneToWorld(normal);
    }
    static AcGeMatrix3d planeToWorld(const AcGePlane& plane) {
        return AcGeMatrix3d().setToPlaneToWorld(plane);
    }
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal) {
        return AcGeMatrix3d().setToWorldToPlane(normal);
    }
    static AcGeMatrix3d worldToPlane(const AcGePlane& plane) {
        return AcGeMatrix3d().setToWorldToPlane(plane);
    }
    static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                      const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                      const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                      const AcGeVector3d& toY, const AcGeVector3d& toZ) {
        return AcGeMatrix3d().setToAlignCoordSys(fromOrigin, fromX, fromY, fromZ, toOrigin, toX, toY, toZ);
    }

    AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
    AcGeMatrix3d& setTranslation(const AcGeVector3d& vector);
    /// Columns as they stand, not normalised.
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;
    /// The plane matrix that a flat thing with this normal and elevation has after this matrix moved it:
    /// `normal` and `elevation` are replaced by the moved ones, and the result maps the old plane's 2d
    /// coordinates to the new plane's.
    AcGeMatrix2d convertToLocal(AcGeVector3d& normal, double& elevation) const;

    double entry[4][4] = {
        {1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}};
};

inline constexpr AcGeMatrix3d AcGeMatrix3d::kIdentity{};

inline AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
    return {m.entry[0][0] * v.x + m.entry[0][1] * v.y + m.entry[0][2] * v.z,
            m.entry[1][0] * v.x + m.entry[1][1] * v.y + m.entry[1][2] * v.z,
            m.entry[2][0] * v.x + m.entry[2][1] * v.y + m.entry[2][2] * v.z};
}

inline AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
    return {m.entry[0][0] * p.x + m.entry[0][1] * p.y + m.entry[0][2] * p.z + m.entry[0][3],
            m.entry[1][0] * p.x + m.entry[1][1] * p.y + m.entry[1][2] * p.z + m.entry[1][3],
            m.entry[2][0] * p.x + m.entry[2][1] * p.y + m.entry[2][2] * p.z + m.entry[2][3]};
}

inline AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }
inline AcGeVector3d& AcGeVector3d::setToProduct(const AcGeMatrix3d& matrix, const AcGeVector3d& vector) {
    return *this = matrix * vector;
}
inline AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }
inline AcGePoint3d& AcGePoint3d::setToProduct(const AcGeMatrix3d& matrix, const AcGePoint3d& point) {
    return *this = matrix * point;
}
