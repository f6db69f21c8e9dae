#include "saveforms.h"

#include "casefold.h"
#include "commandoutput.h"

#include <optional>
#include <vector>

namespace {

struct FormWord {
    std::wstring_view word;
    std::optional<hostkit::DrawingVersion> version;
    std::optional<hostkit::DrawingCoding> coding;
};

using hostkit::DrawingCoding;
using hostkit::DrawingVersion;

constexpr FormWord words[] = {
    {L"R12", DrawingVersion::kR12, {}},      {L"2000", DrawingVersion::k2000, {}},
    {L"2004", DrawingVersion::k2004, {}},    {L"2007", DrawingVersion::k2007, {}},
    {L"2010", DrawingVersion::k2010, {}},    {L"2013", DrawingVersion::k2013, {}},
    {L"2018", DrawingVersion::k2018, {}},    {L"TEXT", {}, DrawingCoding::kText},
    {L"BINARY", {}, DrawingCoding::kBinary}, {L"DWG", {}, DrawingCoding::kDrawing},
};

std::wstring firstHandles(const std::vector<std::uint64_t>& handles) {
    constexpr std::size_t most = 8;
    std::wstring text;
    for (std::size_t place = 0; place < handles.size() && place < most; ++place)
        (text += text.empty() ? L"" : L" ") += handleText(AcDbHandle(handles[place]));
    return handles.size() > most ? text + L" ..." : text;
}

} // namespace

std::wstring formWords() {
    std::wstring all;
    for (const FormWord& each : words) (all += all.empty() ? L"" : L" ") += each.word;
    return all;
}

bool applyFormWord(std::wstring_view word, hostkit::WriteOptions& options) {
    for (const FormWord& each : words) {
        if (!hostkit::equalFolded(each.word, word)) continue;
        if (each.version) options.version = each.version;
        if (each.coding) options.coding = each.coding;
        return true;
    }
    return false;
}

void printFormChanges(const hostkit::FormChanges& changes) {
    if (changes.all().empty()) return;
    std::vector<std::vector<std::wstring>> rows = {{L"Number", L"Kind", L"Became", L"Handles"}};
    for (const hostkit::FormChange& change : changes.all())
        rows.push_back({std::to_wstring(change.handles.size()), change.kind,
                        change.isLeftOut() ? L"(left out)" : change.became, firstHandles(change.handles)});
    printTable(rows, "rlll");
}
