#include "contourreport.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

using Row = std::vector<std::wstring>;

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

std::wstring wide(const char* begin, const char* end) { return std::wstring(begin, end); }

std::wstring fixedNumber(double value, int decimals) {
    char text[400];
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc()) return L"?";
    const std::wstring number = wide(text, result.ptr);
    // What rounds to nothing has no sign.
    const bool isZero = number.find_first_of(L"123456789") == std::wstring::npos;
    return isZero && number.starts_with(L'-') ? number.substr(1) : number;
}

std::wstring fullNumber(double value) {
    char text[64];
    return wide(text, std::to_chars(text, text + sizeof text, value).ptr);
}

std::wstring jsonNumber(double value) { return std::isfinite(value) ? fullNumber(value) : L"null"; }

std::wstring withUnit(const std::wstring& heading, const std::wstring& unit, const wchar_t* power) {
    return heading + L" [" + (unit.empty() ? L"units" : unit) + power + L"]";
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

std::wstring alignedTable(const std::vector<Row>& rows, const std::string& alignment,
                          const std::vector<std::size_t>& ruled) {
    std::vector<std::size_t> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::wstring text;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        std::wstring line;
        for (std::size_t i = 0; i < rows[r].size(); ++i) {
            const std::wstring blanks(widths[i] - rows[r][i].size(), L' ');
            line += (i ? L"  " : L"") + (alignment[i] == 'r' ? blanks + rows[r][i] : rows[r][i] + blanks);
        }
        line.erase(line.find_last_not_of(L' ') + 1);
        text += line + L"\n";
        if (std::find(ruled.begin(), ruled.end(), r) == ruled.end()) continue;
        for (std::size_t i = 0; i < widths.size(); ++i)
            text += (i ? L"  " : L"") + std::wstring(widths[i], L'-');
        text += L"\n";
    }
    return text;
}

std::wstring csvField(const std::wstring& text) {
    if (text.find_first_of(L",\"\r\n") == std::wstring::npos) return text;
    std::wstring quoted = L"\"";
    for (const wchar_t character : text) {
        if (character == L'"') quoted += L'"';
        quoted += character;
    }
    return quoted + L"\"";
}

std::wstring csvLine(const Row& fields) {
    std::wstring line;
    for (std::size_t i = 0; i < fields.size(); ++i) line += (i ? L"," : L"") + csvField(fields[i]);
    return line + L"\n";
}

std::wstring jsonText(const std::wstring& text) {
    std::wstring quoted = L"\"";
    for (const wchar_t character : text) {
        constexpr const wchar_t* digits = L"0123456789abcdef";
        if (character == L'"' || character == L'\\')
            (quoted += L'\\') += character;
        else if (character >= L' ')
            quoted += character;
        else
            ((quoted += L"\\u00") += digits[character >> 4 & 1]) += digits[character & 15];
    }
    return quoted + L"\"";
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

std::wstring unitName(int insunits) {
    constexpr const wchar_t* names[] = {L"",   L"in",  L"ft",  L"mi", L"mm", L"cm", L"m",
                                        L"km", L"uin", L"mil", L"yd", L"A",  L"nm", L"um",
                                        L"dm", L"dam", L"hm",  L"Gm", L"au", L"ly", L"pc"};
    constexpr int count = static_cast<int>(std::size(names));
    return insunits > 0 && insunits < count ? names[insunits] : L"";
}

std::wstring reportAsText(const ContourReport& report) {
    const int decimals = report.decimals;
    std::vector<Row> rows = {
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
