#include "stripreport.h"

#include "reporttext.h"

#include <map>

namespace {

constexpr int mostAlike = 5; // findings of one layer and reason that the text tells one by one

std::wstring proofText(const CutSlab& cut) { return cut.isProved() ? L"proved" : L"NOT PROVED"; }

// Strips less slab without openings.
double differenceOf(const CutSlab& cut) { return cut.stripsArea - cut.wantedArea(); }

std::wstring stripsTable(const StripRun& run) {
    std::vector<TableRow> rows = {{L"Slab", L"Strip", L"Handle", withUnit(L"Area", run.unit, L"\u00B2"),
                                   withUnit(L"Width", run.unit, L""), withUnit(L"Length", run.unit, L""),
                                   L"Arcs"}};
    double sum = 0.0;
    for (const SlabResult& each : run.slabs) {
        for (std::size_t i = 0; i < each.made.size(); ++i) {
            const Strip& strip = each.cut.strips[i];
            rows.push_back({each.slab->contour->path, std::to_wstring(each.made[i].number),
                            each.made[i].handle, fixedNumber(strip.area, run.decimals),
                            fixedNumber(strip.width, run.decimals), fixedNumber(strip.length, run.decimals),
                            std::to_wstring(strip.arcs)});
        }
        sum += each.cut.stripsArea;
    }
    const std::size_t last = rows.size() - 1;
    rows.push_back(
        {L"Total", std::to_wstring(stripCount(run)), L"", fixedNumber(sum, run.decimals), L"", L"", L""});
    return alignedTable(rows, "lrlrrrr", {0, last});
}

std::wstring checksTable(const StripRun& run) {
    const auto area = [&run](const wchar_t* heading) { return withUnit(heading, run.unit, L"\u00B2"); };
    std::vector<TableRow> rows = {{L"Slab", L"Layer", area(L"Area"), L"Openings", area(L"less openings"),
                                   area(L"= wanted"), area(L"Strips"), area(L"Difference"), L"Check"}};
    for (const SlabResult& each : run.slabs) {
        const CutSlab& cut = each.cut;
        rows.push_back(
            {each.slab->contour->path, each.slab->contour->layer, fixedNumber(cut.slabArea, run.decimals),
             std::to_wstring(each.slab->openings.size()), fixedNumber(cut.openingsArea, run.decimals),
             fixedNumber(cut.wantedArea(), run.decimals), fixedNumber(cut.stripsArea, run.decimals),
             fixedNumber(differenceOf(cut), run.decimals), proofText(cut)});
    }
    return alignedTable(rows, "llrrrrrrl", {0});
}

// What an array of blocks repeats is told a few times only; the other forms have it all.
std::wstring findingsText(const StripRun& run) {
    std::map<std::wstring, int> told;
    std::wstring text;
    for (const Finding& each : run.findings) {
        const std::wstring what = L" on layer " + each.layer + L": " + each.reason;
        if (++told[what] <= mostAlike) text += each.path + what + L"\n";
    }
    for (const auto& [what, count] : told)
        if (count > mostAlike) text += std::to_wstring(count - mostAlike) + L" more" + what + L"\n";
    if (run.isCut) text += L"The drawing repeats its blocks more than a walk can follow; there is more.\n";
    if (run.isByContainment)
        text +=
            L"No layers were named: the outermost contours are the slabs, also where one is the frame of a "
            L"sheet. OUTLINES and OPENINGS name the layers.\n";
    return text;
}

std::wstring jsonStrip(const Strip& strip, const MadeStrip& made) {
    return L"{\"number\": " + std::to_wstring(made.number) + L", \"handle\": " + jsonText(made.handle) +
           L", \"area\": " + jsonNumber(strip.area) + L", \"width\": " + jsonNumber(strip.width) +
           L", \"length\": " + jsonNumber(strip.length) + L", \"arcs\": " + std::to_wstring(strip.arcs) +
           L"}";
}

std::wstring jsonSlab(const SlabResult& result) {
    const CutSlab& cut = result.cut;
    std::wstring openings, strips;
    for (const Opening& each : result.slab->openings)
        openings += (openings.empty() ? L"" : L", ") + (L"{\"handle\": " + jsonText(each.contour->path)) +
                    L", \"layer\": " + jsonText(each.contour->layer) + L", \"area\": " +
                    jsonNumber(each.area) + L"}";
    for (std::size_t i = 0; i < result.made.size(); ++i)
        strips += (i ? L",\n    " : L"\n    ") + jsonStrip(cut.strips[i], result.made[i]);
    return L"{\"handle\": " + jsonText(result.slab->contour->path) + L", \"layer\": " +
           jsonText(result.slab->contour->layer) + L", \"area\": " + jsonNumber(cut.slabArea) +
           L", \"openings\": [" + openings + L"], \"openingsArea\": " + jsonNumber(cut.openingsArea) +
           L", \"stripsArea\": " + jsonNumber(cut.stripsArea) + L", \"difference\": " +
           jsonNumber(differenceOf(cut)) + L", \"proved\": " + (cut.isProved() ? L"true" : L"false") +
           L",\n   \"strips\": [" + strips + L"]}";
}

} // namespace

std::size_t stripCount(const StripRun& run) {
    std::size_t count = 0;
    for (const SlabResult& each : run.slabs) count += each.made.size();
    return count;
}

std::wstring checksAsText(const StripRun& run) { return checksTable(run) + findingsText(run); }

std::wstring stripsAsText(const StripRun& run) { return stripsTable(run) + L"\n" + checksAsText(run); }

std::wstring stripsAsCsv(const StripRun& run) {
    std::wstring text =
        csvLine({L"Kind", L"Slab", L"Strip", L"Layer", L"Handle", withUnit(L"Area", run.unit, L"\u00B2"),
                 withUnit(L"Width", run.unit, L""), withUnit(L"Length", run.unit, L""), L"Arcs", L"Note"});
    for (const SlabResult& each : run.slabs) {
        const std::wstring& slab = each.slab->contour->path;
        text += csvLine({L"slab", slab, L"", each.slab->contour->layer, slab, fullNumber(each.cut.slabArea),
                         L"", L"", L"", L""});
        for (const Opening& opening : each.slab->openings)
            text += csvLine({L"opening", slab, L"", opening.contour->layer, opening.contour->path,
                             fullNumber(opening.area), L"", L"", L"", L""});
        for (std::size_t i = 0; i < each.made.size(); ++i) {
            const Strip& strip = each.cut.strips[i];
            text += csvLine({L"strip", slab, std::to_wstring(each.made[i].number), L"", each.made[i].handle,
                             fullNumber(strip.area), fullNumber(strip.width), fullNumber(strip.length),
                             std::to_wstring(strip.arcs), L""});
        }
        text += csvLine({L"all openings", slab, L"", L"", L"", fullNumber(each.cut.openingsArea), L"", L"",
                         L"", L"what they share counts once"});
        text += csvLine({L"check", slab, L"", L"", L"", fullNumber(differenceOf(each.cut)), L"", L"", L"",
                         proofText(each.cut)});
    }
    for (const Finding& each : run.findings)
        text += csvLine({L"finding", L"", L"", each.layer, each.path, L"", L"", L"", L"", each.reason});
    return text;
}

std::wstring stripsAsJson(const StripRun& run) {
    std::wstring text = L"{\"unit\": " + (run.unit.empty() ? std::wstring(L"null") : jsonText(run.unit)) +
                        L",\n \"slabs\": [";
    for (std::size_t i = 0; i < run.slabs.size(); ++i)
        text += (i ? L",\n  " : L"\n  ") + jsonSlab(run.slabs[i]);
    text += L"],\n \"findings\": [";
    for (std::size_t i = 0; i < run.findings.size(); ++i)
        text += (i ? L",\n  " : L"\n  ") + (L"{\"handle\": " + jsonText(run.findings[i].path)) +
                L", \"layer\": " + jsonText(run.findings[i].layer) + L", \"reason\": " +
                jsonText(run.findings[i].reason) + L"}";
    return text + L"],\n \"complete\": " + (run.isCut ? L"false" : L"true") + L"}\n";
}
