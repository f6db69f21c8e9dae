#include "drawingreader.h"

#include "atomicfile.h"
#include "binaryform.h"
#include "binarytranscription.h"
#include "drawingreading.h"
#include "fieldtable.h"
#include "groupcodes.h"
#include "hostport.h"
#include "systempath.h"

#include <cerrno>
#include <cstring>
#include <new>

namespace hostkit {

namespace {

constexpr int nameCode = 2;
constexpr int variableCode = 9;

Acad::ErrorStatus failBeforeReading(ReadReport& report, Acad::ErrorStatus status, std::wstring reason,
                                    const ReadOptions& options,
                                    std::optional<std::size_t> offset = std::nullopt) {
    report.status = status;
    report.problems.push_back({0, offset, std::move(reason), true});
    report.problemCount = 1;
    if (options.tellPort) currentPort()->reportProblem(report.fatalMessage());
    return status;
}

// Whatever there is no room for is left out, the words too.
Acad::ErrorStatus failForMemory(ReadReport& report, const ReadOptions& options) noexcept {
    try {
        return failBeforeReading(report, Acad::eOutOfMemory, L"there is not enough memory for this drawing",
                                 options);
    } catch (const std::bad_alloc&) {
        return report.status = Acad::eOutOfMemory;
    }
}

// A drawing holds tables as soon as something was read into it or made in it.
bool isFresh(const AcDbDatabase& database) { return database.approxNumObjects() == 0 && !database.source(); }

} // namespace

std::wstring ReadReport::messageOf(const DrawingProblem& problem) const {
    if (problem.offset) return file + L": byte " + std::to_wstring(*problem.offset) + L": " + problem.reason;
    if (problem.line == 0) return file + L": " + problem.reason;
    return file + L":" + std::to_wstring(problem.line) + L": " + problem.reason;
}

std::wstring ReadReport::fatalMessage() const {
    return problems.empty() || !problems.back().isFatal ? std::wstring() : messageOf(problems.back());
}

DrawingReading::DrawingReading(AcDbDatabase& database, std::shared_ptr<DrawingSource> source,
                               ReadReport& report, const ReadOptions& options)
    : m_database(database)
    , m_source(std::move(source))
    , m_report(report)
    , m_options(options)
    , m_scanner(m_source->bytes)
    , m_progress(options.progress, m_source->bytes.size(), 0.0, 1.0)
    , m_filer(&database, DrawingText(CodePage::western1252), DrawingVersion::kR12) {}

bool DrawingReading::run() {
    tellTranscription();
    if (!checkForm()) return false;
    findVersion();
    if (!readSections() || !finish()) return false;
    m_progress.reach(m_source->bytes.size());
    return true;
}

// Faults of a binary drawing cost the records that have them. Where sections are packed, their addresses are
// those within.
void DrawingReading::tellTranscription() {
    const TranscribedDrawing* const binary = binaryDrawingOf(m_source);
    if (!binary) return;
    for (const BinaryFault& fault : binary->container.faults) {
        ++m_report.problemCount;
        if (m_report.problems.size() >= m_options.problemLimit) continue;
        std::wstring reason = fault.reason;
        const bool isOfFile = fault.section.empty() || (fault.section == "AcDb:AcDbObjects" &&
                                                        binary->container.version == DrawingVersion::k2000);
        if (!isOfFile) reason = std::wstring(fault.section.begin(), fault.section.end()) + L": " + reason;
        m_report.problems.push_back({0, fault.offset, std::move(reason), false});
        if (m_options.tellPort) currentPort()->reportProblem(m_report.messageOf(m_report.problems.back()));
    }
}

bool DrawingReading::checkForm() {
    const std::string_view bytes = m_source->bytes;
    if (bytes.find_first_not_of(" \t\r\n") == std::string_view::npos)
        return fail(Acad::eEndOfFile, bytes.data(), L"the file is empty");
    m_scanner = GroupScanner(bytes, startOfGroups(bytes));
    return true;
}

// Form and code page stand in the header but decide how the header's own texts are read.
void DrawingReading::findVersion() {
    GroupScanner scanner = m_scanner;
    CodePage page = CodePage::western1252;
    std::string_view variable;
    std::size_t records = 0;
    RawGroup group;
    while (records < 3 && scanner.next(group) == ScanResult::kGroup) {
        if (group.code == 0) ++records; // SECTION, then ENDSEC at the latest
        if (group.code == variableCode) variable = withoutBlanks(group.value);
        if (variable == "$ACADVER" && group.code == 1)
            m_version = versionFromName(withoutBlanks(group.value)).value_or(DrawingVersion::kR12);
        if (variable == "$DWGCODEPAGE" && group.code == 3) {
            const std::string_view name = withoutBlanks(group.value);
            page = codePageFromName(std::wstring(name.begin(), name.end())).value_or(CodePage::western1252);
        }
    }
    if (isUtf8(m_version)) page = CodePage::utf8;
    m_report.version = m_version;
    m_source->version = filerVersion(m_version);
    m_source->codePage = static_cast<int>(page);
    const std::size_t newline = m_source->bytes.find('\n');
    m_source->endsLinesWithCrLf =
        newline != std::string::npos && newline > 0 && m_source->bytes[newline - 1] == '\r';
    m_filer.setForm(DrawingText(page), m_version);
}

bool DrawingReading::next(RawGroup& group) {
    switch (m_scanner.next(group)) {
    case ScanResult::kGroup:
        return true;
    case ScanResult::kEnd:
        return fail(Acad::eEndOfFile, m_scanner.position(),
                    L"the file ends without its end mark: it was cut");
    case ScanResult::kMissingValue:
        return fail(Acad::eEndOfFile, m_scanner.position(), L"the file ends behind a group code: it was cut");
    case ScanResult::kBadCode:
        break;
    }
    const char* const place = m_scanner.position();
    const char* const end = m_source->bytes.data() + m_source->bytes.size();
    const char* const lineEnd =
        static_cast<const char*>(std::memchr(place, '\n', static_cast<std::size_t>(end - place)));
    const std::string_view line(place, static_cast<std::size_t>((lineEnd ? lineEnd : end) - place));
    return fail(Acad::eBadDxfSequence, place, L"a group code was expected, not " + shown(line));
}

bool DrawingReading::nextRecord(const RawGroup& first) {
    RawGroup ignored;
    m_progress.reach(m_scanner.offset());
    return scanRecord(m_scanner, first, m_record) == ScanResult::kGroup || next(ignored);
}

bool DrawingReading::readSections() {
    RawGroup group;
    for (;;) {
        if (!next(group)) return false;
        if (group.code == commentCode) continue;
        if (group.is(0, "EOF")) return true;
        if (!group.is(0, "SECTION"))
            return fail(Acad::eBadDxfSequence, group.start,
                        L"a section was expected, not " + shown(group.value));
        if (!readSection(group)) return false;
    }
}

bool DrawingReading::readSection(const RawGroup& opening) {
    RawGroup group;
    do {
        if (!next(group)) return false;
    } while (group.code == commentCode);
    if (group.code != nameCode)
        return fail(Acad::eBadDxfSequence, group.start,
                    L"a section's name was expected, not " + shown(group.value));
    const std::string_view name = withoutBlanks(group.value);
    const std::size_t begin = m_scanner.offsetOf(opening.start);
    bool isRead = false;
    if (name == "HEADER")
        isRead = readHeader();
    else if (name == "TABLES")
        isRead = readTables(opening);
    else if (name == "BLOCKS")
        isRead = readBlocks(opening);
    else if (name == "ENTITIES")
        isRead = readEntities(opening);
    else if (name == "OBJECTS")
        isRead = readObjects(opening);
    else
        isRead = readUnknownSection(opening);
    if (isRead)
        m_source->sections.push_back({m_filer.drawingText().decode(name), begin, m_scanner.offset() - begin});
    return isRead;
}

bool DrawingReading::readUnknownSection(const RawGroup& opening) {
    RawGroup group;
    for (;;) {
        if (!next(group)) return false;
        if (group.code != 0) continue;
        if (group.is(0, "ENDSEC")) return true;
        if (group.is(0, "SECTION") || group.is(0, "EOF"))
            return fail(Acad::eBadDxfSequence, opening.start, L"this section is not closed");
    }
}

bool DrawingReading::readHeader() {
    RawGroup group;
    m_variable = nullptr;
    for (;;) {
        if (!next(group)) return false;
        if (group.is(0, "ENDSEC")) return true;
        if (group.code == 0)
            return fail(Acad::eBadDxfSequence, group.start,
                        shown(group.value) + L" has no place in the header");
        if (group.code != commentCode && !addHeaderGroup(group)) return false;
    }
}

// A damaged value is left out of the drawing's variables; its bytes stay in the file.
bool DrawingReading::addHeaderGroup(const RawGroup& group) {
    if (group.code == variableCode) {
        std::wstring name = m_filer.drawingText().decode(withoutBlanks(group.value));
        if (!name.empty() && name.front() == L'$') name.erase(0, 1);
        m_variable = &m_database.header().put(name);
        return true;
    }
    if (!m_variable)
        return fail(Acad::eBadDxfSequence, group.start, L"a header variable's name was expected");
    RecordGroup parts[3];
    std::size_t count = 0;
    RawGroup part = group;
    do {
        parts[count++] = {part.value, part.start, m_scanner.position(), static_cast<short>(part.code)};
    } while (count < 3 && AcDb::groupKind(group.code) == AcDb::GroupKind::kPoint &&
             m_scanner.next(part) == ScanResult::kGroup &&
             part.code == group.code + static_cast<int>(count) * 10);
    m_scanner = GroupScanner(m_source->bytes, m_scanner.offsetOf(parts[count - 1].end));
    AcDbDxfGroup item;
    std::size_t used = 0;
    if (m_filer.valueOf(parts, parts + count, item, used) == Acad::eOk && isStorable(item))
        m_variable->groups.append(item);
    else
        warn(group.start,
             L"header variable $" + m_variable->name + L" cannot have the value " + shown(group.value));
    return true;
}

std::wstring DrawingReading::shown(std::string_view value) const {
    constexpr std::size_t longest = 40;
    std::wstring text = m_filer.drawingText().decode(withoutBlanks(value.substr(0, longest)));
    for (wchar_t& character : text)
        if (character < L' ') character = L' ';
    return L"'" + text + (value.size() > longest ? L"...'" : L"'");
}

void DrawingReading::tell(const char* place, std::wstring reason, bool isFatal) {
    ++m_report.problemCount;
    if (isFatal && !m_report.problems.empty() && m_report.problems.size() >= m_options.problemLimit)
        m_report.problems.pop_back();
    if (!isFatal && m_report.problems.size() >= m_options.problemLimit) return;
    const std::size_t line = place ? lineNumberAt(m_source->bytes, m_scanner.offsetOf(place)) : 0;
    std::optional<std::size_t> offset;
    constexpr std::size_t linesOfAGroup = 2;
    if (const std::string* const binary = place ? binaryBytesOf(m_source) : nullptr)
        offset = offsetOfBinaryGroup(*binary, (line - 1) / linesOfAGroup);
    if (const TranscribedDrawing* const binary = place ? binaryDrawingOf(m_source) : nullptr)
        if (const TranscribedRecord* const record = binary->recordAt(m_scanner.offsetOf(place)))
            offset = record->offset;
    m_report.problems.push_back({offset ? 0 : line, offset, std::move(reason), isFatal});
    if (m_options.tellPort) currentPort()->reportProblem(m_report.messageOf(m_report.problems.back()));
}

void DrawingReading::warn(const char* place, std::wstring reason) { tell(place, std::move(reason), false); }

bool DrawingReading::fail(Acad::ErrorStatus status, const char* place, std::wstring reason) {
    m_report.status = status;
    tell(place, std::move(reason), true);
    return false;
}

Acad::ErrorStatus readDrawingFromMemory(AcDbDatabase& database, std::string bytes, std::wstring_view name,
                                        ReadReport* report, const ReadOptions& options) {
    ReadReport own;
    ReadReport& result = report ? *report : own;
    result = {};
    try {
        result.file = name;
        if (!isFresh(database))
            return failBeforeReading(result, Acad::eInvalidInput,
                                     L"the drawing to read into holds something already", options);
        FormFault fault;
        auto source = sourceFromBytes(std::move(bytes), fault);
        if (!source) return failBeforeReading(result, fault.status, fault.reason, options, fault.offset);
        if (DrawingReading(database, std::move(source), result, options).run())
            return result.status = Acad::eOk;
        return result.status;
    } catch (const std::bad_alloc&) {
        return failForMemory(result, options);
    }
}

Acad::ErrorStatus readDrawing(AcDbDatabase& database, std::wstring_view file, ReadReport* report,
                              const ReadOptions& options) {
    ReadReport own;
    ReadReport& result = report ? *report : own;
    result = {};
    std::string bytes;
    errno = 0;
    try {
        result.file = file;
        if (!readWholeFile(mapPath(file), bytes)) {
            const bool isMissing = errno == ENOENT || errno == ENOTDIR;
            const char* const reason = std::strerror(errno);
            return failBeforeReading(result, isMissing ? Acad::eFileNotFound : Acad::eFileAccessErr,
                                     std::wstring(reason, reason + std::strlen(reason)), options);
        }
    } catch (const std::bad_alloc&) {
        return failForMemory(result, options);
    }
    return readDrawingFromMemory(database, std::move(bytes), file, report ? report : &own, options);
}

namespace {

template <class Read>
std::unique_ptr<AcDbDatabase> openBy(ReadReport* report, const ReadOptions& options, Read&& read) {
    try {
        auto database = std::make_unique<AcDbDatabase>(false, true);
        return read(*database) == Acad::eOk ? std::move(database) : nullptr;
    } catch (const std::bad_alloc&) {
        ReadReport own;
        (void)failForMemory(report ? *report : own, options);
        return nullptr;
    }
}

} // namespace

std::unique_ptr<AcDbDatabase> openDrawing(std::wstring_view file, ReadReport* report,
                                          const ReadOptions& options) {
    return openBy(report, options,
                  [&](AcDbDatabase& database) { return readDrawing(database, file, report, options); });
}

std::unique_ptr<AcDbDatabase> openDrawingFromMemory(std::string bytes, std::wstring_view name,
                                                    ReadReport* report, const ReadOptions& options) {
    return openBy(report, options, [&](AcDbDatabase& database) {
        return readDrawingFromMemory(database, std::move(bytes), name, report, options);
    });
}

} // namespace hostkit
