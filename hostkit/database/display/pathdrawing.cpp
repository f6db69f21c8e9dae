#include "pathgeometry.h"

#include "acgi.h"
#include "dbent.h"
#include "textplacing.h"

#include "letterface.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

constexpr int mostChords = 1000; // of one cubic piece

// Chords of equal steps lie off a cubic by at most 3/4 of its greater second difference over their square.
int chordsNeeded(const AcGePoint3d (&p)[4], double deviation) {
    const auto bend = [&](int i) { return ((p[i] - p[i + 1]) + (p[i + 2] - p[i + 1])).length(); };
    const double wanted = std::sqrt(0.75 * std::max(bend(0), bend(1)) / deviation);
    return wanted < mostChords ? std::max(1, static_cast<int>(std::ceil(wanted))) : mostChords;
}

void appendChords(std::vector<AcGePoint3d>& run, const AcGePoint3d (&p)[4], double deviation) {
    const int count = chordsNeeded(p, deviation);
    for (int i = 1; i <= count; ++i) {
        const double t = static_cast<double>(i) / count;
        const double s = 1.0 - t;
        run.push_back(i == count ? p[3]
                                 : p[0] + (p[1] - p[0]) * (3.0 * s * s * t) +
                                       (p[2] - p[0]) * (3.0 * s * t * t) + (p[3] - p[0]) * (t * t * t));
    }
}

double deviationOf(AcGiWorldDraw& draw, const PicturePath& path) {
    const double told = draw.deviation(kAcGiMaxDevForCurve, path.points().front());
    return told > 0.0 ? told : 1e-4;
}

const PathGeometry* pathGeometry(AcGiWorldDraw& draw) {
    return dynamic_cast<const PathGeometry*>(&draw.geometry());
}

class FillAlways {
public:
    explicit FillAlways(AcGiSubEntityTraits& traits)
        : m_traits(traits)
        , m_before(traits.fillType()) {
        traits.setFillType(kAcGiFillAlways);
    }
    ~FillAlways() { m_traits.setFillType(m_before); }
    FillAlways(const FillAlways&) = delete;
    FillAlways& operator=(const FillAlways&) = delete;

private:
    AcGiSubEntityTraits& m_traits;
    AcGiFillType m_before;
};

// The colour of a run, and afterwards what was there; traits that know no true colours take the nearest index
// and tell black as theirs.
class RunColor {
public:
    RunColor(AcGiSubEntityTraits& traits, const TextRun& run)
        : m_traits(traits)
        , m_isSet(run.hasOwnColor)
        , m_color(traits.trueColor())
        , m_index(traits.color()) {
        const auto part = [&run](int shift) { return static_cast<Adesk::UInt8>(run.rgb >> shift); };
        if (!m_isSet) return;
        traits.setColor(AcCmEntityColor::lookUpACI(part(16), part(8), part(0)));
        traits.setTrueColor(AcCmEntityColor(part(16), part(8), part(0)));
    }
    ~RunColor() {
        if (m_isSet)
            m_color.isByColor() && m_color.rgb() ? m_traits.setTrueColor(m_color)
                                                 : m_traits.setColor(m_index);
    }
    RunColor(const RunColor&) = delete;
    RunColor& operator=(const RunColor&) = delete;

private:
    AcGiSubEntityTraits& m_traits;
    bool m_isSet;
    AcCmEntityColor m_color;
    Adesk::UInt16 m_index;
};

} // namespace

double lengthScale(const AcGeMatrix3d& matrix) {
    return std::sqrt(std::abs(std::cbrt(matrix.det() * matrix.det())));
}

std::vector<std::vector<AcGePoint3d>> chordsOf(const PicturePath& path, double deviation) {
    std::vector<std::vector<AcGePoint3d>> runs;
    auto point = path.points().begin();
    for (const PicturePath::Step step : path.steps()) {
        switch (step) {
        case PicturePath::Step::move:
            runs.emplace_back(1, *point++);
            break;
        case PicturePath::Step::line:
            runs.back().push_back(*point++);
            break;
        case PicturePath::Step::curve: {
            const AcGePoint3d cubic[] = {runs.back().back(), point[0], point[1], point[2]};
            appendChords(runs.back(), cubic, deviation);
            point += 3;
            break;
        }
        case PicturePath::Step::close:
            if (runs.back().back() != runs.back().front()) runs.back().push_back(runs.back().front());
        }
    }
    return runs;
}

void drawPath(AcGiWorldDraw& draw, const PicturePath& path) {
    if (path.isEmpty()) return;
    if (const PathGeometry* geometry = pathGeometry(draw)) return geometry->path(path);
    for (const std::vector<AcGePoint3d>& run : chordsOf(path, deviationOf(draw, path)))
        draw.geometry().polyline(static_cast<Adesk::UInt32>(run.size()), run.data());
}

void drawArea(AcGiWorldDraw& draw, const PicturePath& path) {
    if (path.isEmpty()) return;
    if (const PathGeometry* geometry = pathGeometry(draw)) return geometry->area(path);
    const FillAlways fill(draw.subEntityTraits());
    std::vector<Adesk::UInt32> counts;
    std::vector<AcGePoint3d> points;
    for (std::vector<AcGePoint3d>& run : chordsOf(path, deviationOf(draw, path))) {
        if (run.size() > 1 && run.back() == run.front()) run.pop_back();
        // What is to become entities gets each contour as one.
        if (draw.regenType() == kAcGiForExplode)
            draw.geometry().polygon(static_cast<Adesk::UInt32>(run.size()), run.data());
        counts.push_back(static_cast<Adesk::UInt32>(run.size()));
        points.insert(points.end(), run.begin(), run.end());
    }
    if (draw.regenType() == kAcGiForExplode) return;
    const auto contours = static_cast<Adesk::UInt32>(counts.size());
    draw.geometry().polyPolygon(1, &contours, nullptr, counts.data(), points.data());
}

void drawLetters(AcGiWorldDraw& draw, const PlacedText& text, const AcGeVector3d& normal,
                 AcDbObjectId textStyle) {
    if (text.runs.empty()) return;
    if (const PathGeometry* geometry = pathGeometry(draw)) return geometry->letters(text);
    const double height = text.up.dotProduct(normal.crossProduct(text.along.normal()));
    const double width = text.along.length();
    if (!(std::abs(height) > 0.0) || !(width > 0.0)) return;
    AcGiSubEntityTraits& traits = draw.subEntityTraits();
    AcGePoint3d at = text.origin + text.along * reachOf(text).start;
    for (const TextRun& run : text.runs) {
        AcGiTextStyle style = styleOf(run, textStyle, std::abs(height), width / std::abs(height),
                                      std::atan(text.up.dotProduct(text.along.normal()) / height));
        style.setUpsideDown(height < 0.0);
        const RunColor color(traits, run);
        draw.geometry().text(at + text.up * run.rise, normal, text.along, run.text.c_str(),
                             static_cast<Adesk::Int32>(run.text.size()), Adesk::kTrue, style);
        at += text.along * (lineWidth(run.text, LetterFace::sans()) * run.heightFactor);
    }
}

void setLook(AcGiSubEntityTraits& traits, const AcDbEntity& entity) {
    if (entity.entityColor().isByColor())
        traits.setTrueColor(entity.entityColor());
    else
        traits.setColor(entity.colorIndex());
    traits.setLayer(entity.layerId());
    traits.setLineType(entity.linetypeId());
    traits.setLineTypeScale(entity.linetypeScale());
    traits.setLineWeight(entity.lineWeight());
}

void drawPart(AcGiWorldDraw& draw, AcDbEntity& part) {
    if (part.visibility() == AcDb::kInvisible) return;
    setLook(draw.subEntityTraits(), part);
    part.worldDraw(&draw);
}

} // namespace hostkit
