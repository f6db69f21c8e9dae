#include "bodyreport.h"

#include "reporttext.h"

namespace {

constexpr const wchar_t* square = L"\u00B2";
constexpr const wchar_t* cube = L"\u00B3";

std::wstring pointText(const AcGePoint3d& point, int decimals) {
    return fixedNumber(point.x, decimals) + L", " + fixedNumber(point.y, decimals) + L", " +
           fixedNumber(point.z, decimals);
}

std::wstring jsonPoint(const AcGePoint3d& point) {
    return L"[" + jsonNumber(point.x) + L", " + jsonNumber(point.y) + L", " + jsonNumber(point.z) + L"]";
}

BodyMeasures totalsOf(const BodyReport& report) {
    BodyMeasures totals;
    for (const BodyRow& row : report.rows) {
        totals.volume += row.measures.volume;
        totals.above += row.measures.above;
        totals.below += row.measures.below;
        totals.sides += row.measures.sides;
    }
    return totals;
}

std::wstring jsonFigures(const BodyMeasures& m) {
    return L"\"volume\": " + jsonNumber(m.volume) + L", \"areaAbove\": " + jsonNumber(m.above) +
           L", \"areaBelow\": " + jsonNumber(m.below) + L", \"areaSides\": " + jsonNumber(m.sides);
}

std::wstring jsonBody(const BodyRow& row) {
    const BodyMeasures& m = row.measures;
    const auto count = [](const wchar_t* name, int number) {
        return std::wstring(L", \"") + name + L"\": " + std::to_wstring(number);
    };
    return L"{\"name\": " + jsonText(row.name) + L", \"handle\": " + jsonText(row.handle) + L", \"layer\": " +
           jsonText(row.layer) + L", " + jsonFigures(m) + L", \"centroid\": " + jsonPoint(m.centre) +
           L", \"low\": " + jsonPoint(m.low) + L", \"high\": " + jsonPoint(m.high) +
           count(L"faces", m.faces) + count(L"loops", m.loops) + count(L"edges", m.edges) +
           count(L"vertices", m.vertices) + count(L"pieces", m.pieces) + count(L"genus", m.genus) +
           L", \"valid\": " + (m.isValid ? L"true" : L"false") + L"}";
}

} // namespace

std::wstring bodiesAsText(const BodyReport& report) {
    const std::wstring& unit = report.unit;
    const auto number = [&](double value) { return fixedNumber(value, report.decimals); };
    std::vector<TableRow> rows = {
        {L"Solid", L"Handle", L"Layer", withUnit(L"Volume", unit, cube), withUnit(L"Above", unit, square),
         withUnit(L"Below", unit, square), withUnit(L"Sides", unit, square), L"Faces", L"Loops", L"Edges",
         L"Vertices", L"Pieces", L"Genus", withUnit(L"From", unit, L""), withUnit(L"To", unit, L"")}};
    for (const BodyRow& row : report.rows) {
        const BodyMeasures& m = row.measures;
        rows.push_back({row.name, row.handle, row.layer, number(m.volume), number(m.above), number(m.below),
                        number(m.sides), std::to_wstring(m.faces), std::to_wstring(m.loops),
                        std::to_wstring(m.edges), std::to_wstring(m.vertices), std::to_wstring(m.pieces),
                        std::to_wstring(m.genus), pointText(m.low, report.decimals),
                        pointText(m.high, report.decimals)});
    }
    const std::size_t last = rows.size() - 1;
    const BodyMeasures totals = totalsOf(report);
    rows.push_back({L"Total", std::to_wstring(report.rows.size()) + L" solids", L"", number(totals.volume),
                    number(totals.above), number(totals.below), number(totals.sides), L"", L"", L"", L"", L"",
                    L"", L"", L""});
    std::wstring text = alignedTable(rows, "lllrrrrrrrrrrll", {0, last});
    for (const BodyRow& row : report.rows)
        if (!row.measures.isValid) text += row.name + L" is not valid: its figures say little.\n";
    return text;
}

std::wstring bodiesAsCsv(const BodyReport& report) {
    const std::wstring& unit = report.unit;
    std::wstring text = csvLine({L"Solid",
                                 L"Handle",
                                 L"Layer",
                                 withUnit(L"Volume", unit, cube),
                                 withUnit(L"Above", unit, square),
                                 withUnit(L"Below", unit, square),
                                 withUnit(L"Sides", unit, square),
                                 L"Centroid X",
                                 L"Centroid Y",
                                 L"Centroid Z",
                                 L"From X",
                                 L"From Y",
                                 L"From Z",
                                 L"To X",
                                 L"To Y",
                                 L"To Z",
                                 L"Faces",
                                 L"Loops",
                                 L"Edges",
                                 L"Vertices",
                                 L"Pieces",
                                 L"Genus",
                                 L"Valid"});
    for (const BodyRow& row : report.rows) {
        const BodyMeasures& m = row.measures;
        TableRow fields = {row.name, row.handle, row.layer};
        for (const double value : {m.volume, m.above, m.below, m.sides, m.centre.x, m.centre.y, m.centre.z,
                                   m.low.x, m.low.y, m.low.z, m.high.x, m.high.y, m.high.z})
            fields.push_back(fullNumber(value));
        for (const int value : {m.faces, m.loops, m.edges, m.vertices, m.pieces, m.genus})
            fields.push_back(std::to_wstring(value));
        fields.emplace_back(m.isValid ? L"yes" : L"no");
        text += csvLine(fields);
    }
    return text;
}

std::wstring bodiesAsJson(const BodyReport& report) {
    std::wstring text = L"{\"unit\": " +
                        (report.unit.empty() ? std::wstring(L"null") : jsonText(report.unit)) +
                        L",\n \"bodies\": [";
    for (std::size_t i = 0; i < report.rows.size(); ++i)
        text += (i ? L",\n  " : L"\n  ") + jsonBody(report.rows[i]);
    return text + L"],\n \"totals\": {\"solids\": " + std::to_wstring(report.rows.size()) + L", " +
           jsonFigures(totalsOf(report)) + L"}}\n";
}
