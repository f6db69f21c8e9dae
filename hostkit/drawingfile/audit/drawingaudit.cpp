#include "drawingaudit.h"

#include "auditwalk.h"
#include "binaryform.h"
#include "binarytranscription.h"
#include "drawingwriter.h"
#include "textencoding.h"

#include <algorithm>
#include <new>
#include <numeric>

namespace hostkit {

namespace {

constexpr std::size_t longestQuote = 60;

} // namespace

const wchar_t* auditCheckName(AuditCheck check) {
    constexpr const wchar_t* names[auditCheckCount] = {L"structure",  L"record",    L"handle",
                                                       L"owner",      L"reference", L"table",
                                                       L"dictionary", L"block",     L"extended data"};
    return names[static_cast<std::size_t>(check)];
}

std::size_t AuditReport::faultCount() const {
    return std::accumulate(faults.begin(), faults.end(), std::size_t{0});
}

std::size_t AuditReport::remarkCount() const {
    return std::accumulate(remarks.begin(), remarks.end(), std::size_t{0});
}

// Words.

void appendWords(std::wstring& text, std::wstring_view words) { text += words; }

void appendWords(std::wstring& text, std::string_view bytes) {
    const std::wstring characters = isValidUtf8(bytes) ? wideFromUtf8(bytes) : wideFromAnsi(bytes);
    text += characters.substr(0, longestQuote);
    if (characters.size() > longestQuote) text += L"...";
}

void appendWords(std::wstring& text, AuditHandleText handle) {
    wchar_t digits[17] = {};
    (void)AcDbHandle(handle.value).getIntoAsciiBuffer(digits);
    text += digits;
}

// Findings.

bool AuditFindings::count(AuditCheck check, AuditSeverity severity) {
    const auto place = static_cast<std::size_t>(check);
    const bool isFault = severity == AuditSeverity::kFault;
    ++(isFault ? m_report.faults : m_report.remarks)[place];
    return m_listed[place * 2 + isFault]++ < m_limit;
}

void AuditFindings::add(AuditCheck check, AuditSeverity severity, const AuditRecord* record,
                        std::uint32_t line, std::wstring text) {
    std::wstring type;
    if (record) appendWords(type, record->type);
    m_report.findings.push_back(
        {check, severity, record ? record->handle : 0, std::move(type), std::move(text), line, 0, 0});
}

AuditReport AuditFindings::take() {
    std::stable_sort(m_report.findings.begin(), m_report.findings.end(),
                     [](const AuditFinding& a, const AuditFinding& b) {
                         return a.severity != b.severity ? a.severity < b.severity : a.check < b.check;
                     });
    return std::move(m_report);
}

// Groups.

const AuditGroup* AuditContent::find(int code, std::size_t first, std::size_t end) const {
    for (std::size_t i = first; i < end; ++i)
        if (groups[i].code == code) return &groups[i];
    return nullptr;
}

std::size_t AuditContent::countOf(int code, std::size_t first, std::size_t end) const {
    return static_cast<std::size_t>(std::count_if(groups.begin() + static_cast<std::ptrdiff_t>(first),
                                                  groups.begin() + static_cast<std::ptrdiff_t>(end),
                                                  [&](const AuditGroup& each) { return each.code == code; }));
}

std::optional<std::int64_t> AuditContent::integer(int code) const {
    const AuditGroup* const group = find(code);
    return group ? auditInteger(group->value) : std::nullopt;
}

std::pair<std::size_t, std::size_t> AuditContent::partOf(std::string_view mark) const {
    constexpr int markCode = 100;
    std::size_t first = 0;
    for (; first < extendedBegin; ++first)
        if (groups[first].code == markCode && groups[first].value == mark) break;
    if (first == extendedBegin) return {find(markCode) ? extendedBegin : 0, extendedBegin};
    std::size_t end = ++first;
    while (end < extendedBegin && groups[end].code != markCode) ++end;
    return {first, end};
}

// The run.

namespace {

ByteSpan bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// False where nothing can be made of the drawing. Its records that have no groups are passed over.
bool transcribe(std::string_view bytes, std::string& text, TranscribedDrawing& drawing,
                AuditFindings& findings) {
    const bool isOpen = textFromDrawing(bytesOf(bytes), text, drawing);
    for (const BinaryFault& fault : drawing.container.faults)
        findings.fault(AuditCheck::kStructure, nullptr, 0, L"byte ", fault.offset,
                       fault.section.empty() ? L"" : L" of the section ", std::string_view(fault.section),
                       L": ", std::wstring_view(fault.reason));
    for (const TranscribedRecord& record : drawing.records)
        if (record.isOpaque) findings.passOver(record.handle);
    return isOpen;
}

} // namespace

AuditReport auditDrawingText(std::string_view bytes, std::size_t findingLimit) {
    AuditRun run{{}, AuditFindings(findingLimit)};
    std::string turned;
    TranscribedDrawing drawing;
    if (isBinaryDrawing(bytesOf(bytes))) {
        if (!transcribe(bytes, turned, drawing, run.findings)) return run.findings.take();
        bytes = turned;
    } else if (isBinaryForm(bytes)) {
        if (const std::optional<FormFault> fault = textFromBinary(bytes, turned)) {
            run.findings.fault(AuditCheck::kStructure, nullptr, 0, L"byte ", fault->offset,
                               L" of the binary form: ", std::wstring_view(fault->reason));
            return run.findings.take();
        }
        bytes = turned;
    }
    run.drawing.makeRoom(bytes.size());
    AuditWalk(run, bytes).walk();
    auditHandles(run);
    auditOwners(run);
    auditReferences(run);
    auditTables(run);
    auditDictionaries(run);
    auditBlocks(run);
    return run.findings.take();
}

AuditReport auditDrawing(const AcDbDatabase& database, std::size_t findingLimit) {
    WriteOptions options;
    options.tellPort = false;
    options.coding = DrawingCoding::kText;
    WriteReport written;
    std::string bytes;
    const Acad::ErrorStatus status = writeDrawingToMemory(database, bytes, options, &written);
    if (status == Acad::eOk) return auditDrawingText(bytes, findingLimit);
    // That says nothing of the drawing.
    if (status == Acad::eOutOfMemory) throw std::bad_alloc();
    AuditFindings findings(findingLimit);
    findings.fault(AuditCheck::kStructure, nullptr, 0, L"it cannot be saved: ",
                   std::wstring_view(written.message));
    return findings.take();
}

} // namespace hostkit
