#include "recordchoice.h"

#include "exchangeoutline.h"

#include <algorithm>
#include <array>

namespace hostkit {
namespace {

int wholeIn(std::string_view record, int code) {
    return static_cast<int>(integerFromText(valueIn(record, code)).value_or(0));
}

constexpr int isSpatial = 8, isMesh = 16, isPolyface = 64;

std::string_view polyline(std::string_view record) {
    const int flags = wholeIn(record, 70);
    if (flags & isSpatial) return "POLYLINE_3D";
    if (flags & isMesh) return "POLYLINE_MESH";
    return flags & isPolyface ? "POLYLINE_PFACE" : "POLYLINE_2D";
}

std::string_view vertex(std::string_view record, std::string_view owner) {
    const int ownerFlags = wholeIn(owner, 70);
    if (ownerFlags & isSpatial) return "VERTEX_3D";
    if (ownerFlags & isMesh) return "VERTEX_MESH";
    if (!(ownerFlags & isPolyface)) return "VERTEX_2D";
    constexpr int isPlace = 64;
    return wholeIn(record, 70) & isPlace ? "VERTEX_PFACE" : "VERTEX_PFACE_FACE";
}

std::string_view dimension(std::string_view record) {
    constexpr std::array<std::string_view, 7> kinds{
        "DIMENSION_LINEAR", "DIMENSION_ALIGNED", "DIMENSION_ANG2LN",  "DIMENSION_DIAMETER",
        "DIMENSION_RADIUS", "DIMENSION_ANG3PT",  "DIMENSION_ORDINATE"};
    const auto kind = static_cast<std::size_t>(wholeIn(record, 70) & 7);
    return kinds[kind < kinds.size() ? kind : 0];
}

std::string_view insertion(std::string_view record) {
    return wholeIn(record, 70) > 1 || wholeIn(record, 71) > 1 ? "MINSERT" : "INSERT";
}

bool hasGroup(std::string_view record, int code, std::string_view value) {
    GroupScanner scanner(record);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup)
        if (group.code == code && (value.empty() || withoutBlanks(group.value) == value)) return true;
    return false;
}

} // namespace

const RecordLayout* layoutForGroups(const RecordLayouts& layouts, std::string_view record,
                                    std::string_view owner) {
    std::string_view name = valueIn(record, 0);
    if (name == "POLYLINE")
        name = polyline(record);
    else if (name == "VERTEX")
        name = vertex(record, owner);
    else if (name == "DIMENSION")
        name = dimension(record);
    else if (name == "INSERT")
        name = insertion(record);
    else if (name == "BLOCK_RECORD")
        name = "BLOCK_HEADER";
    else if (name == "ACDBDATATABLE")
        name = "DATATABLE";
    const RecordLayout* const layout = layouts.byName(name);
    return layout && layout->hasTranscript ? layout : nullptr;
}

const RecordLayout* replacementOf(const RecordLayouts& layouts, const RecordLayout& layout) {
    return layout.name == "ACAD_TABLE" ? layouts.byName("INSERT") : nullptr;
}

bool canBeNew(const RecordLayout& layout, std::string_view record) {
    const Transcript& transcript = layout.transcript;
    return transcript.canBeNew &&
           std::all_of(transcript.needs.begin(), transcript.needs.end(), [&](const Transcript::Need& need) {
               return hasGroup(record, need.code, need.value) != need.isBarred;
           });
}

} // namespace hostkit
