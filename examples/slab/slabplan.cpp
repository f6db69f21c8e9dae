#include "slabplan.h"

#include "contouroverlay.h"
#include "tchar.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>

namespace {

constexpr double sameHeight = 1e-6; // drawing units between contours of one floor
constexpr double negligible = 1e-6; // of the smaller area: a common part below it is drawn by rounding
constexpr double sameLength = 1e-9; // of the box, between sides of the same outline

using Contours = std::vector<const PlanContour*>;

enum class Relation { apart, crosses, inside, same };

bool boxesMeetFromAbove(const PlanContour& a, const PlanContour& b) {
    return a.low.x <= b.high.x && b.low.x <= a.high.x && a.low.y <= b.high.y && b.low.y <= a.high.y;
}

bool boxesMeet(const PlanContour& a, const PlanContour& b) {
    return std::abs(a.elevation - b.elevation) <= sameHeight && boxesMeetFromAbove(a, b);
}

bool boxesAreSame(const PlanContour& a, const PlanContour& b) {
    const double allowed = sameLength * ((a.high - a.low).length() + a.high.largestCoordinate());
    return (a.low - b.low).length() <= allowed && (a.high - b.high).length() <= allowed;
}

double meetingArea(const PlanContour& a, const PlanContour& b) {
    return boxesMeet(a, b) ? commonArea(*a.outline, *b.outline) : 0.0;
}

// Of the smaller contour to the larger one, by the area that they have in common.
Relation relationOf(const PlanContour& smaller, const PlanContour& larger, double common) {
    const double smallest = std::min(smaller.area, larger.area);
    if (common <= negligible * smallest) return Relation::apart;
    if (smallest - common > negligible * smallest) return Relation::crosses;
    const bool isSame = std::max(smaller.area, larger.area) - common <= negligible * smallest;
    return isSame ? Relation::same : Relation::inside;
}

Relation relationOf(const PlanContour& smaller, const PlanContour& larger) {
    return relationOf(smaller, larger, meetingArea(smaller, larger));
}

Finding findingOf(const PlanContour& contour, std::wstring reason) {
    return {contour.layer, contour.path, std::move(reason)};
}

// Without those that repeat an earlier one.
Contours withoutRepeats(const Contours& contours, std::vector<Finding>& findings) {
    std::vector<std::size_t> order(contours.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return contours[a]->low.x < contours[b]->low.x; });
    std::vector<const PlanContour*> firstDrawn(contours.size(), nullptr);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const PlanContour& a = *contours[order[i]];
        const double reach = sameLength * ((a.high - a.low).length() + a.high.largestCoordinate());
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            const PlanContour& b = *contours[order[j]];
            if (b.low.x - a.low.x > reach) break;
            if (!boxesAreSame(a, b) || relationOf(a, b) != Relation::same) continue;
            const auto [earlier, later] = std::minmax(order[i], order[j]);
            if (!firstDrawn[later]) firstDrawn[later] = contours[earlier];
        }
    }
    Contours kept;
    for (std::size_t i = 0; i < contours.size(); ++i) {
        if (firstDrawn[i])
            findings.push_back(findingOf(*contours[i], L"the same outline as " + firstDrawn[i]->path));
        else
            kept.push_back(contours[i]);
    }
    return kept;
}

class Planner {
public:
    Planner(SlabPlan& plan, const std::function<bool(double)>& look)
        : m_plan(plan)
        , m_look(look) {}

    void byLayers(const Contours& outlines, const Contours& openings);
    void byContainment(const Contours& contours);
    Contours outermost(const Contours& contours);

private:
    struct Nested {
        const PlanContour* contour;
        std::size_t drawn; ///< place in the drawing's order
        bool isSlab = false;
    };

    std::vector<Nested> bySize(const Contours& contours) const;
    void addOpening(const PlanContour& slab, const PlanContour& opening);
    std::wstring reasonOfNoSlab(const PlanContour& opening) const;
    void findOverlap(const Slab& slab, const Slab& larger);
    void sortAsDrawn(const Contours& drawn);

    SlabPlan& m_plan;
    const std::function<bool(double)>& m_look;
};

void Planner::addOpening(const PlanContour& slab, const PlanContour& opening) {
    for (Slab& each : m_plan.slabs)
        if (each.contour == &slab) each.openings.push_back({&opening, meetingArea(slab, opening)});
}

// An outline within an opening is an island, which the opening does not touch.
void Planner::byLayers(const Contours& outlines, const Contours& openings) {
    for (const PlanContour* outline : outlines) m_plan.slabs.push_back({outline, {}});
    for (std::size_t i = 0; i < openings.size(); ++i) {
        if (!m_look(static_cast<double>(i) / static_cast<double>(openings.size()))) return;
        const PlanContour& opening = *openings[i];
        bool isUsed = false;
        for (Slab& slab : m_plan.slabs) {
            const double common = meetingArea(*slab.contour, opening);
            const Relation relation = relationOf(opening, *slab.contour, common);
            if (relation == Relation::apart) continue;
            if (relation == Relation::inside && opening.area > slab.contour->area) continue;
            slab.openings.push_back({&opening, common});
            isUsed = true;
        }
        if (!isUsed) m_plan.findings.push_back(findingOf(opening, reasonOfNoSlab(opening)));
    }
    for (std::size_t i = 0; i < m_plan.slabs.size(); ++i)
        for (std::size_t j = 0; j < m_plan.slabs.size(); ++j)
            if (i != j) findOverlap(m_plan.slabs[i], m_plan.slabs[j]);
}

std::wstring Planner::reasonOfNoSlab(const PlanContour& opening) const {
    for (const Slab& slab : m_plan.slabs)
        if (boxesMeetFromAbove(opening, *slab.contour) &&
            commonArea(*opening.outline, *slab.contour->outline) > negligible * opening.area)
            return L"lies in no slab of its height: the slab " + slab.contour->path + L" is at another";
    return L"lies in no slab";
}

// Of a slab with one that is as large or larger; an island in an opening of it is none.
void Planner::findOverlap(const Slab& slab, const Slab& larger) {
    const bool isFirst = slab.contour->area < larger.contour->area ||
                         (slab.contour->area == larger.contour->area && &slab < &larger);
    if (!isFirst || relationOf(*slab.contour, *larger.contour) == Relation::apart) return;
    for (const Opening& opening : larger.openings)
        if (relationOf(*slab.contour, *opening.contour) == Relation::inside) return;
    m_plan.findings.push_back(findingOf(*slab.contour, L"overlaps the slab " + larger.contour->path +
                                                           L": each is cut without regard to the other"));
}

std::vector<Planner::Nested> Planner::bySize(const Contours& contours) const {
    std::vector<Nested> sorted;
    for (std::size_t i = 0; i < contours.size(); ++i) sorted.push_back({contours[i], i});
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Nested& a, const Nested& b) { return a.contour->area > b.contour->area; });
    return sorted;
}

Contours Planner::outermost(const Contours& contours) {
    const std::vector<Nested> sorted = bySize(contours);
    std::vector<bool> isInside(contours.size(), false);
    for (std::size_t i = 0; i < sorted.size(); ++i)
        for (std::size_t j = 0; j < i && !isInside[sorted[i].drawn]; ++j)
            isInside[sorted[i].drawn] =
                relationOf(*sorted[i].contour, *sorted[j].contour) == Relation::inside;
    Contours result;
    for (std::size_t i = 0; i < contours.size(); ++i)
        if (!isInside[i]) result.push_back(contours[i]);
    return result;
}

// From the largest to the smallest, so that what a contour may lie in has its role already.
void Planner::byContainment(const Contours& contours) {
    std::vector<Nested> sorted = bySize(contours);
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (!m_look(static_cast<double>(i) / static_cast<double>(sorted.size()))) return;
        Nested& each = sorted[i];
        const Nested* around = nullptr; // the smallest contour that it lies in
        Contours crossed;               // slabs whose edges it crosses
        for (std::size_t j = 0; j < i; ++j) {
            const Relation relation = relationOf(*each.contour, *sorted[j].contour);
            if (relation == Relation::inside || relation == Relation::same) around = &sorted[j];
            if (relation == Relation::crosses && sorted[j].isSlab) crossed.push_back(sorted[j].contour);
        }
        if (around && around->isSlab) crossed.push_back(around->contour);
        each.isSlab = crossed.empty();
        if (each.isSlab) m_plan.slabs.push_back({each.contour, {}});
        for (const PlanContour* slab : crossed) addOpening(*slab, *each.contour);
    }
    sortAsDrawn(contours);
}

void Planner::sortAsDrawn(const Contours& drawn) {
    std::unordered_map<const PlanContour*, std::size_t> places;
    for (const PlanContour* contour : drawn) places.emplace(contour, places.size());
    const auto place = [&places](const PlanContour* contour) { return places.at(contour); };
    std::vector<std::pair<std::size_t, Slab>> slabs;
    for (Slab& slab : m_plan.slabs) {
        std::vector<std::pair<std::size_t, Opening>> openings;
        for (const Opening& opening : slab.openings) openings.emplace_back(place(opening.contour), opening);
        std::sort(openings.begin(), openings.end(),
                  [](const auto& a, const auto& b) { return a.first < b.first; });
        for (std::size_t i = 0; i < openings.size(); ++i) slab.openings[i] = openings[i].second;
        slabs.emplace_back(place(slab.contour), std::move(slab));
    }
    std::sort(slabs.begin(), slabs.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    m_plan.slabs.clear();
    for (auto& [drawnAt, slab] : slabs) m_plan.slabs.push_back(std::move(slab));
}

} // namespace

bool isListed(const std::vector<std::wstring>& layers, const std::wstring& name) {
    return std::any_of(layers.begin(), layers.end(),
                       [&](const std::wstring& each) { return _wcsicmp(each.c_str(), name.c_str()) == 0; });
}

SlabPlan planSlabs(std::vector<std::unique_ptr<PlanContour>> contours, const SlabRoles& roles,
                   const std::function<bool(double)>& look) {
    SlabPlan plan;
    plan.contours = std::move(contours);
    Contours outlines, openings;
    for (const auto& contour : plan.contours) {
        if (isListed(roles.openingLayers, contour->layer))
            openings.push_back(contour.get());
        else if (roles.outlineLayers.empty() || isListed(roles.outlineLayers, contour->layer))
            outlines.push_back(contour.get());
    }
    Planner planner(plan, look);
    outlines = withoutRepeats(outlines, plan.findings);
    openings = withoutRepeats(openings, plan.findings);
    if (roles.openingLayers.empty())
        planner.byContainment(outlines);
    else
        planner.byLayers(roles.outlineLayers.empty() ? planner.outermost(outlines) : outlines, openings);
    return plan;
}
