// What the vectors and the matrices of the plane and of space share. Internal to the geometry kit.
#pragma once

#include "gegbl.h"

#include <cmath>
#include <iterator>

namespace AcGeKernel {

template <class Vector>
bool isParallel(const Vector& u, const Vector& v, const AcGeTol& tol) {
    if (u.isZeroLength(tol) || v.isZeroLength(tol)) return false;
    const Vector a = u / u.length(), b = v / v.length();
    return (a - b).isZeroLength(tol) || (a + b).isZeroLength(tol);
}

template <class Vector>
bool isCodirectional(const Vector& u, const Vector& v, const AcGeTol& tol) {
    if (u.isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return (u / u.length() - v / v.length()).isZeroLength(tol);
}

template <class Vector>
bool isPerpendicular(const Vector& u, const Vector& v, const AcGeTol& tol) {
    if (u.isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::abs((u / u.length()).dotProduct(v / v.length())) <= tol.equalVector();
}

/// Rows and columns of a matrix in homogeneous form; the last column is the translation.
template <class Matrix>
constexpr int sizeOf(const Matrix& m) {
    return static_cast<int>(std::size(m.entry));
}

template <class Matrix>
Matrix product(const Matrix& left, const Matrix& right) {
    Matrix result;
    for (int row = 0; row < sizeOf(left); ++row)
        for (int column = 0; column < sizeOf(left); ++column) {
            double sum = 0.0;
            for (int k = 0; k < sizeOf(left); ++k) sum += left.entry[row][k] * right.entry[k][column];
            result.entry[row][column] = sum;
        }
    return result;
}

template <class Matrix>
Matrix transposed(const Matrix& m) {
    Matrix result;
    for (int row = 0; row < sizeOf(m); ++row)
        for (int column = 0; column < sizeOf(m); ++column) result.entry[row][column] = m.entry[column][row];
    return result;
}

/// The linear parts entry by entry, the translations as points.
template <class Point, class Matrix>
bool areEqual(const Matrix& a, const Matrix& b, const AcGeTol& tol) {
    const int last = sizeOf(a) - 1;
    for (int row = 0; row <= last; ++row)
        for (int column = 0; column <= last; ++column) {
            if (column == last && row < last) continue;
            if (!(std::abs(a.entry[row][column] - b.entry[row][column]) <= tol.equalVector())) return false;
        }
    return (Point::kOrigin + a.translation()).isEqualTo(Point::kOrigin + b.translation(), tol);
}

} // namespace AcGeKernel
