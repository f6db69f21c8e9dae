#include "contourreport.h"

#include "reporttext.h"

namespace {

struct Totals {
    std::size_t contours = 0;
    std::size_t withArea = 0;
    double length = 0.0;
    double signedArea = 0.0;
    double trueArea = 0.0;
};

Totals totalsOf(const ContourReport& report) {
    Totals totals;
    totals.contours = report.rows.size();
    for (const ContourRow& row : report.rows) {
        totals.length += row.measures.length;
        if (!row.measures.hasArea) continue;
        ++totals.withArea;
        totals.signedArea += row.measures.signedArea;
        totals.trueArea += row.measures.trueArea;
    }
    return totals;
}

std::wstring pointText(const AcGePoint3d& point, int decimals) {
    return fixedNumber(point.x, decimals) + L", " + fixedNumber(point.y, decimals) + L", " +
           fixedNumber(point.z, decimals);
}

std::wstring directionText(const AcGeVector3d& direction) {
    const auto component = [](double value) {
        std::wstring text = fixedNumber(value, 3);
        text.erase(text.find_last_not_of(L'0') + 1);
        if (text.ends_with(L'.')) text.pop_back();
        return text;
    };
    return component(direction.x) + L", " + component(direction.y) + L", " + component(direction.z);
}

template <class Triple>
std::wstring jsonTriple(const Triple& value) {
    return L"[" + jsonNumber(value.x) + L", " + jsonNumber(value.y) + L", " + jsonNumber(value.z) + L"]";
}

std::wstring jsonContour(const ContourRow& row) {
    const ContourMeasures& m = row.measures;
    const std::wstring none = L"null";
    return L"{\"layer\": " + jsonText(row.layer) + L", \"handle\": " + jsonText(row.path) + L", \"kind\": " +
           jsonText(row.kind) + L", \"vertices\": " + std::to_wstring(m.vertices) + L", \"arcs\": " +
           std::to_wstring(m.arcs) + L", \"length\": " + jsonNumber(m.length) + L", \"signedArea\": " +
           (m.hasArea ? jsonNumber(m.signedArea) : none) + L", \"trueArea\": " +
           (m.hasArea ? jsonNumber(m.trueArea) : none) + L", \"sense\": " +
           (m.hasArea ? jsonText(m.sense) : none) + L", \"gravityCenter\": " +
           (m.hasArea ? jsonTriple(m.gravityCenter) : none) + L", \"centroid\": " +
           (m.hasArea ? jsonTriple(m.centroid) : none) + L", \"normal\": " + jsonTriple(m.normal) +
           L", \"note\": " + (m.note.empty() ? none : jsonText(m.note)) + L"}";
}

} // namespace

std::wstring reportAsText(const ContourReport& report) {
    const int decimals = report.decimals;
    std::vector<TableRow> rows = {
        {L"Layer", L"Handle", L"Kind", L"Vertices", L"Arcs", withUnit(L"Length", report.unit, L""),
         withUnit(L"Signed area", report.unit, L"\u00B2"), withUnit(L"True area", report.unit, L"\u00B2"),
         L"Sense", withUnit(L"Gravity centre", report.unit, L""), withUnit(L"Centroid", report.unit, L""),
         L"Normal", L"Note"}};
    for (const ContourRow& row : report.rows) {
        const ContourMeasures& m = row.measures;
        rows.push_back({row.layer, row.path, row.kind, std::to_wstring(m.vertices), std::to_wstring(m.arcs),
                        fixedNumber(m.length, decimals),
                        m.hasArea ? fixedNumber(m.signedArea, decimals) : L"-",
                        m.hasArea ? fixedNumber(m.trueArea, decimals) : L"-", m.hasArea ? m.sense : L"-",
                        m.hasArea ? pointText(m.gravityCenter, decimals) : L"-",
                        m.hasArea ? pointText(m.centroid, decimals) : L"-", directionText(m.normal), m.note});
    }
    const Totals totals = totalsOf(report);
    const std::size_t lastContour = rows.size() - 1;
    rows.push_back({L"Total", std::to_wstring(totals.contours) + L" contours", L"", L"", L"",
                    fixedNumber(totals.length, decimals), fixedNumber(totals.signedArea, decimals),
                    fixedNumber(totals.trueArea, decimals), L"", L"", L"", L"", L""});
    std::wstring text = alignedTable(rows, "lllrrrrrlllll", {0, lastContour});
    if (totals.withArea != totals.contours)
        text += std::to_wstring(totals.contours - totals.withArea) +
                L" of them enclose no area; see their notes.\n";
    if (report.openCurves)
        text += L"Open polylines, which are no contours: " + std::to_wstring(report.openCurves) + L"\n";
    if (report.isCut) text += L"The walk was cut short; there are more contours.\n";
    return text;
}

std::wstring reportAsCsv(const ContourReport& report) {
    const std::wstring& unit = report.unit;
    std::wstring text =
        csvLine({L"Layer", L"Handle", L"Kind", L"Vertices", L"Arcs", withUnit(L"Length", unit, L""),
                 withUnit(L"Signed area", unit, L"\u00B2"), withUnit(L"True area", unit, L"\u00B2"), L"Sense",
                 withUnit(L"Gravity centre X", unit, L""), withUnit(L"Gravity centre Y", unit, L""),
                 withUnit(L"Gravity centre Z", unit, L""), withUnit(L"Centroid X", unit, L""),
                 withUnit(L"Centroid Y", unit, L""), withUnit(L"Centroid Z", unit, L""), L"Normal X",
                 L"Normal Y", L"Normal Z", L"Note"});
    for (const ContourRow& row : report.rows) {
        const ContourMeasures& m = row.measures;
        const auto known = [&m](double value) { return m.hasArea ? fullNumber(value) : std::wstring(); };
        text +=
            csvLine({row.layer, row.path, row.kind, std::to_wstring(m.vertices), std::to_wstring(m.arcs),
                     fullNumber(m.length), known(m.signedArea), known(m.trueArea), m.hasArea ? m.sense : L"",
                     known(m.gravityCenter.x), known(m.gravityCenter.y), known(m.gravityCenter.z),
                     known(m.centroid.x), known(m.centroid.y), known(m.centroid.z), fullNumber(m.normal.x),
                     fullNumber(m.normal.y), fullNumber(m.normal.z), m.note});
    }
    return text;
}

std::wstring reportAsJson(const ContourReport& report) {
    const Totals totals = totalsOf(report);
    std::wstring text = L"{\"unit\": " +
                        (report.unit.empty() ? std::wstring(L"null") : jsonText(report.unit)) +
                        L",\n \"contours\": [";
    for (std::size_t i = 0; i < report.rows.size(); ++i)
        text += (i ? L",\n  " : L"\n  ") + jsonContour(report.rows[i]);
    text += L"],\n \"totals\": {\"contours\": " + std::to_wstring(totals.contours) + L", \"withArea\": " +
            std::to_wstring(totals.withArea) + L", \"length\": " + jsonNumber(totals.length) +
            L", \"signedArea\": " + jsonNumber(totals.signedArea) + L", \"trueArea\": " +
            jsonNumber(totals.trueArea) + L"},\n \"openPolylines\": " + std::to_wstring(report.openCurves) +
            L", \"complete\": " + (report.isCut ? L"false" : L"true") + L"}\n";
    return text;
}
