// Chains of random operations on bodies, and what must hold of each: for tests and for the long run of the
// benchmarks.
#pragma once

#include "combination.h"
#include "polyhedra.h"

#include <array>
#include <optional>
#include <random>
#include <sstream>
#include <string>

namespace polyhedra {

using hostkit::modeler::Operation;

/// Boxes, prisms, faceted arcs and cylinders on a grid, upright or lying: most of what two of them share is
/// flush.
class RandomBodies {
public:
    explicit RandomBodies(std::uint64_t seed)
        : m_engine(seed) {}

    int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    double real(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    AcGePoint3d place(double low, double high) { return {real(low, high), real(low, high), real(low, high)}; }

    AcGeMatrix3d turn() {
        const AcGeVector3d axis(real(-1, 1), real(-1, 1), real(-1, 1));
        return AcGeMatrix3d::rotation(real(0, 6), axis.normal());
    }

    /// The facets of arcs share the address of an object that is never looked at.
    Polyhedron body() {
        Polyhedron shape = upright();
        if (whole(0, 3) == 0) {
            constexpr std::array<AcGeVector3d, 3> axes{AcGeVector3d(1, 0, 0), AcGeVector3d(0, 1, 0),
                                                       AcGeVector3d(0, 0, 1)};
            shape =
                moved(shape, AcGeMatrix3d::rotation(std::numbers::pi / 2 * whole(1, 3),
                                                    axes[static_cast<std::size_t>(whole(0, 2))], {3, 3, 3}));
        }
        return shape;
    }

private:
    static const AModeler::Surface* surface(int number) {
        static const std::array<char, 4> marks{};
        return reinterpret_cast<const AModeler::Surface*>(&marks[static_cast<std::size_t>(number)]);
    }

    Outline outline(int kind, int x, int y) {
        const auto at = [&](std::initializer_list<std::pair<int, int>> steps) {
            Outline corners;
            for (const auto& [dx, dy] : steps) corners.emplace_back(x + dx, y + dy);
            return corners;
        };
        if (kind == 0) return at({{0, 0}, {3, 0}, {3, 1}, {1, 1}, {1, 3}, {0, 3}});
        if (kind == 1) return at({{0, 0}, {2, 0}, {2 + whole(0, 1), 2}, {1, 1}, {0, 2}});
        Outline quarter = at({{0, 0}, {2, 0}});
        const int facets = whole(2, 6);
        for (int i = 1; i <= facets; ++i) {
            const double angle = i * std::numbers::pi / 2 / facets;
            quarter.emplace_back(x + 2 * std::cos(angle), y + 2 * std::sin(angle));
        }
        return quarter;
    }

    Polyhedron upright() {
        const int x = whole(0, 5);
        const int y = whole(0, 5);
        const int z = whole(0, 5);
        const int kind = whole(0, 7);
        const int height = whole(1, 4);
        if (kind <= 2) return box(x, y, z, x + whole(1, 4), y + whole(1, 4), z + height);
        if (kind <= 4) return prism(outline(kind - 3, x, y), z, z + height);
        if (kind == 5) return prism(outline(2, x, y), z, z + height, 1, surface(0));
        const double start = kind == 6 ? 0 : 0.1 * whole(0, 3);
        return prism(circle(x + 1, y + 1, whole(1, 2), 4 * whole(2, 4), start), z, z + height, 0,
                     surface(kind - 5));
    }

    std::mt19937_64 m_engine;
};

struct ChainReport {
    long operations = 0;
    long refused = 0;
    std::string wrong; ///< the first contradiction, in words
};

/// Ten steps: a body meets a new one by all operations, and goes on as one of the results. `tolerance` is
/// what the operations take.
class Chain {
public:
    Chain(std::uint64_t seed, ChainReport& report)
        : m_seed(seed)
        , m_random(seed)
        , m_report(report) {
        // Upright; turned; far away; both. The last two have rounded coordinates of 1e6.
        const int mode = static_cast<int>(seed % 4);
        if (mode % 2 == 1) m_frame = m_random.turn();
        if (mode >= 2) m_frame = AcGeMatrix3d::translation(AcGeVector3d(1e6, -2e6, 5e5)) * m_frame;
        m_slack = mode >= 2 ? 1e-6 : 1e-9;
    }

    void run() {
        constexpr int steps = 10;
        Polyhedron a = moved(m_random.body(), m_frame);
        for (m_step = 0; m_step < steps && m_report.wrong.empty(); ++m_step) {
            const Polyhedron b = m_random.whole(0, 9) == 0 ? a : moved(m_random.body(), m_frame);
            const auto sum = apply(Operation::unite, a, b);
            const auto rest = apply(Operation::subtract, a, b);
            const auto common = apply(Operation::intersect, a, b);
            if (!sum || !rest || !common) return;
            judge(a, b, *sum, *rest, *common);
            const std::array<const Polyhedron*, 4> next{&*sum, &*sum, &*rest, &*common};
            const Polyhedron* chosen = next[static_cast<std::size_t>(m_random.whole(0, 3))];
            a = chosen->empty() ? *sum : *chosen;
        }
    }

private:
    std::optional<Polyhedron> apply(Operation operation, const Polyhedron& a, const Polyhedron& b) {
        const std::array<const Polyhedron*, 1> others{&b};
        ++m_report.operations;
        auto result = hostkit::modeler::combine(operation, a, others, 1e-6);
        if (!result)
            ++m_report.refused;
        else
            judgeForm(*result);
        return result;
    }

    void expect(bool holds, const char* what) {
        if (holds || !m_report.wrong.empty()) return;
        std::ostringstream text;
        text << "seed " << m_seed << ", step " << m_step << ": " << what;
        m_report.wrong = text.str();
    }

    void judgeForm(const Polyhedron& body) {
        expect(body.partners.size() == body.corners.size(), "partners are missing");
        for (Index corner = 0; corner < body.partners.size(); ++corner)
            expect(body.partners[body.partners[corner]] == corner, "partners are not mutual");
        Polyhedron bare = body;
        bare.partners.clear();
        expect(isClosed(bare), "not closed");
        expect(eulerCharacteristic(body) % 2 == 0, "Euler's characteristic is odd");
        for (const Polyhedron::Face& f : body.faces)
            for (Index i = body.loopStarts[f.firstLoop]; i < body.loopStarts[f.firstLoop + f.loopCount]; ++i)
                expect(std::abs(f.normal.dotProduct(body.points[body.corners[i]].asVector()) - f.distance) <
                           1e-6,
                       "a point is out of its plane");
    }

    void judge(const Polyhedron& a, const Polyhedron& b, const Polyhedron& sum, const Polyhedron& rest,
               const Polyhedron& common) {
        const double first = content(a);
        const double slack = m_slack * (1 + first + content(b));
        expect(std::abs(first + content(b) - content(sum) - content(common)) < slack,
               "V(a)+V(b) is not V(a+b)+V(a*b)");
        expect(std::abs(first - content(rest) - content(common)) < slack, "V(a)-V(a*b) is not V(a-b)");
        for (int i = 0; i < 4; ++i) {
            AcGePoint3d p = m_random.place(-1, 9);
            p.transformBy(m_frame);
            const double inA = windings(a, p);
            const double inB = windings(b, p);
            // Nearer to a surface the sum of angles is no longer whole.
            if (std::abs(inA - std::round(inA)) > 1e-3 || std::abs(inB - std::round(inB)) > 1e-3) continue;
            expect(std::lround(windings(sum, p)) == (inA > 0.5 || inB > 0.5), "a point is wrong in a+b");
            expect(std::lround(windings(rest, p)) == (inA > 0.5 && inB < 0.5), "a point is wrong in a-b");
            expect(std::lround(windings(common, p)) == (inA > 0.5 && inB > 0.5), "a point is wrong in a*b");
        }
        if (m_seed % 5 == 0) judgeLaws(a, b, sum, common, slack);
    }

    // Commuted results are the same but for whose surface a flush face has: surfaces are left out.
    void judgeLaws(const Polyhedron& a, const Polyhedron& b, const Polyhedron& sum, const Polyhedron& common,
                   double slack) {
        const auto bare = [](Polyhedron body) {
            for (Polyhedron::Face& f : body.faces) f.surface = nullptr;
            return body;
        };
        const Polyhedron first = bare(a);
        const Polyhedron second = bare(b);
        for (const Operation operation : {Operation::unite, Operation::intersect}) {
            const auto there = apply(operation, first, second);
            const auto back = apply(operation, second, first);
            if (!there || !back) continue;
            expect(there->faces.size() == back->faces.size() && there->corners.size() == back->corners.size(),
                   "commuted, other faces");
            expect(std::abs(content(*there) - content(operation == Operation::unite ? sum : common)) < slack,
                   "without surfaces, another volume");
        }
        const auto same = apply(Operation::unite, a, a);
        const auto none = apply(Operation::subtract, a, a);
        const auto shared = apply(Operation::intersect, a, a);
        expect(!same || std::abs(content(*same) - content(a)) < slack, "a+a is not a");
        expect(!shared || std::abs(content(*shared) - content(a)) < slack, "a*a is not a");
        expect(!none || none->empty(), "a-a is not empty");
    }

    std::uint64_t m_seed;
    RandomBodies m_random;
    ChainReport& m_report;
    AcGeMatrix3d m_frame;
    double m_slack = 0;
    int m_step = 0;
};

} // namespace polyhedra
