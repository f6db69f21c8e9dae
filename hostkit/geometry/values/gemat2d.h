// Stand-in for the host's AcGeMatrix2d. Covers affine matrices: composition, inverse and the usual constructions; leaves out perspective (the bottom row is taken as 0 0 1 when points are transformed).
#pragma once

#include "gepnt2d.h"
#include "gevec2d.h"

/// A 3 x 3 matrix that acts on column vectors: entry[row][column], translation in column 2. Default is the
/// identity.
class AcGeMatrix2d {
public:
    constexpr AcGeMatrix2d() = default;

    static const AcGeMatrix2d kIdentity;

    AcGeMatrix2d& setToIdentity() { return *this = AcGeMatrix2d(); }
    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }

    /// The product applies the right operand first.
    AcGeMatrix2d operator*(const AcGeMatrix2d& right) const;
    AcGeMatrix2d& operator*=(const AcGeMatrix2d& right) { return *this = *this * right; }
    AcGeMatrix2d& preMultBy(const AcGeMatrix2d& left) { return *this = left * *this; }
    AcGeMatrix2d& postMultBy(const AcGeMatrix2d& right) { return *this = *this * right; }
    AcGeMatrix2d& setToProduct(const AcGeMatrix2d& left, const AcGeMatrix2d& right) {
        return *this = left * right;
    }

    /// Determinant of the linear part; negative for a mirroring matrix.
    double det() const;
    /// The linear part's determinant is at most tol.equalVector() times the product of its columns' lengths.
    Adesk::Boolean isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    /// Inverse of the affine map. A singular matrix (under the global tolerance) gives the identity from
    /// inverse() and stays as it is under invert().
    AcGeMatrix2d inverse() const;
    AcGeMatrix2d& invert();
    AcGeMatrix2d transpose() const;

    Adesk::Boolean isEqualTo(const AcGeMatrix2d& matrix, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean operator==(const AcGeMatrix2d& matrix) const { return isEqualTo(matrix); }
    Adesk::Boolean operator!=(const AcGeMatrix2d& matrix) const { return !isEqualTo(matrix); }
    Adesk::Boolean isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    /// The length of the longest column of the linear part.
    double scale() const;

    AcGeMatrix2d& setToTranslation(const AcGeVector2d& vector);
    AcGeMatrix2d& setToRotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToScaling(double factor, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToMirroring(const AcGePoint2d& point);
    AcGeMatrix2d& setToMirroring(const AcGeLine2d& line);
    static AcGeMatrix2d translation(const AcGeVector2d& vector) {
        return AcGeMatrix2d().setToTranslation(vector);
    }
    static AcGeMatrix2d rotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin) {
        return AcGeMatrix2d().setToRotation(angle, center);
    }
    static AcGeMatrix2d scaling(double factor, const AcGePoint2d& center = AcGePoint2d::kOrigin) {
        return AcGeMatrix2d().setToScaling(factor, center);
    }
    static AcGeMatrix2d mirroring(const AcGeLine2d& line) { return AcGeMatrix2d().setToMirroring(line); }

    AcGeVector2d translation() const { return {entry[0][2], entry[1][2]}; }
    AcGeMatrix2d& setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& xAxis,
                                 const AcGeVector2d& yAxis);
    void getCoordSystem(AcGePoint2d& origin, AcGeVector2d& xAxis, AcGeVector2d& yAxis) const;

    double entry[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
};

inline constexpr AcGeMatrix2d AcGeMatrix2d::kIdentity{};

inline AcGeVector2d operator*(const AcGeMatrix2d& m, const AcGeVector2d& v) {
    return {m.entry[0][0] * v.x + m.entry[0][1] * v.y, m.entry[1][0] * v.x + m.entry[1][1] * v.y};
}

inline AcGePoint2d operator*(const AcGeMatrix2d& m, const AcGePoint2d& p) {
    return {m.entry[0][0] * p.x + m.entry[0][1] * p.y + m.entry[0][2],
            m.entry[1][0] * p.x + m.entry[1][1] * p.y + m.entry[1][2]};
}

inline AcGeVector2d& AcGeVector2d::transformBy(const AcGeMatrix2d& matrix) { return *this = matrix * *this; }
inline AcGeVector2d& AcGeVector2d::setToProduct(const AcGeMatrix2d& matrix, const AcGeVector2d& vector) {
    return *this = matrix * vector;
}
inline AcGePoint2d& AcGePoint2d::transformBy(const AcGeMatrix2d& matrix) { return *this = matrix * *this; }
inline AcGePoint2d& AcGePoint2d::setToProduct(const AcGeMatrix2d& matrix, const AcGePoint2d& point) {
    return *this = matrix * point;
}
