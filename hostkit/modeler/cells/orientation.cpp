#include "orientation.h"

#include <array>
#include <cmath>
#include <limits>

namespace hostkit::modeler {

namespace {

/// A sum of doubles that do not overlap, the smallest first: an exact number.
class Expansion {
public:
    void add(double value) {
        double carried = value;
        int kept = 0;
        for (int i = 0; i < m_count; ++i) {
            const double part = m_parts[i];
            const double sum = carried + part;
            const double rounded = sum - carried;
            const double error = (carried - (sum - rounded)) + (part - rounded);
            if (error != 0) m_parts[kept++] = error;
            carried = sum;
        }
        if (carried != 0) m_parts[kept++] = carried;
        m_count = kept;
    }
    void addProduct(double first, double second) {
        const double product = first * second;
        add(std::fma(first, second, -product));
        add(product);
    }
    int sign() const { return m_count == 0 ? 0 : m_parts[m_count - 1] > 0 ? 1 : -1; }

private:
    std::array<double, 16> m_parts{};
    int m_count = 0;
};

int exactOrientation(const Planar& a, const Planar& b, const Planar& c) {
    Expansion sum;
    sum.addProduct(a.x, b.y);
    sum.addProduct(-a.y, b.x);
    sum.addProduct(b.x, c.y);
    sum.addProduct(-b.y, c.x);
    sum.addProduct(c.x, a.y);
    sum.addProduct(-c.y, a.x);
    return sum.sign();
}

} // namespace

int orientation(const Planar& a, const Planar& b, const Planar& c) {
    // Bound of the rounded determinant: (3 + 16 u) u with u half a unit in the last place of 1.
    constexpr double unit = std::numeric_limits<double>::epsilon() / 2;
    constexpr double bound = (3 + 16 * unit) * unit;
    const double left = (a.x - c.x) * (b.y - c.y);
    const double right = (a.y - c.y) * (b.x - c.x);
    const double determinant = left - right;
    const double error = bound * (std::abs(left) + std::abs(right));
    if (determinant > error) return 1;
    if (determinant < -error) return -1;
    return exactOrientation(a, b, c);
}

} // namespace hostkit::modeler
