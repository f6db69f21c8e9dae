#include "drawingwriter.h"

#include "atomicfile.h"
#include "completewriting.h"
#include "drawingedits.h"
#include "hostport.h"
#include "objectwriting.h"
#include "systempath.h"

#include <new>

namespace hostkit {

namespace {

Acad::ErrorStatus finishReport(WriteReport& report, Acad::ErrorStatus status, std::wstring message,
                               const WriteOptions& options) {
    report.status = status;
    report.message = std::move(message);
    if (options.tellPort) currentPort()->reportProblem(report.message);
    return status;
}

// Whatever there is no room for is left out, the words too.
Acad::ErrorStatus failForMemory(WriteReport& report, std::wstring_view prefix,
                                const WriteOptions& options) noexcept {
    try {
        return finishReport(report, Acad::eOutOfMemory, std::wstring(prefix) + L"there is not enough memory",
                            options);
    } catch (const std::bad_alloc&) {
        return report.status = Acad::eOutOfMemory;
    }
}

DrawingStyle styleOf(const DrawingSource* source, const WriteOptions& options) {
    DrawingStyle style;
    if (source) {
        style.version = versionOfFiler(source->version);
        style.text = DrawingText(static_cast<CodePage>(source->codePage));
        style.newline = source->endsLinesWithCrLf ? "\r\n" : "\n";
    }
    if (!options.version || *options.version == style.version) {
        if (!source && !isUtf8(style.version)) style.text = DrawingText(CodePage::western1252);
        return style;
    }
    const bool hadPage = source && !isUtf8(style.version);
    style.version = *options.version;
    if (isUtf8(style.version))
        style.text = DrawingText(CodePage::utf8);
    else if (!hadPage)
        style.text = DrawingText(CodePage::western1252);
    return style;
}

bool isOpenForWrite(const AcDbDatabase& database) {
    for (std::size_t place = 0, count = DatabaseAccess::stubCount(database); place < count; ++place)
        if ((DatabaseAccess::stubAt(database, place)->openMode & (kOpenForWrite | kHeldForWrite)) != 0)
            return true;
    return false;
}

// What is to be written: the bytes that the drawing was read from, or new ones.
struct Output {
    std::shared_ptr<const DrawingSource> source;
    std::string written;
    bool isSource = false;
    std::string_view bytes() const {
        return isSource ? std::string_view(source->bytes) : std::string_view(written);
    }
};

template <class Writing>
bool runWriting(Writing& writing, Output& output, WriteReport& report) {
    const bool isGood = writing.run(output.written);
    report.status = writing.status();
    report.message = writing.message();
    return isGood;
}

// Of a save: the records, then the file.
constexpr double recordsShare = 0.9;

bool writeBytes(const AcDbDatabase& database, const WriteOptions& options, Output& output,
                WriteReport& report) {
    output.source = database.source();
    const DrawingStyle style = styleOf(output.source.get(), options);
    ObjectWriting objects(
        database, style,
        {options.progress, static_cast<std::size_t>(database.approxNumObjects()), 0.0, recordsShare});
    bool isGood = true;
    if (output.source && filerVersion(style.version) == output.source->version) {
        DrawingEdits edits(database, *output.source, objects, options.everythingFromFields);
        output.isSource = !edits.isNeeded();
        if (!output.isSource) isGood = runWriting(edits, output, report);
        report.recordsCopied = edits.recordsCopied();
    } else {
        CompleteWriting writing(database, objects);
        isGood = runWriting(writing, output, report);
    }
    report.recordsWritten = objects.recordsWritten();
    report.groupsFromFields = objects.writer().groupsFromFields();
    report.groupsKept = objects.writer().groupsKept();
    report.byteCount = isGood ? output.bytes().size() : 0;
    return isGood;
}

// `take` receives the bytes of a drawing that could be written; what it gives is the status of the whole.
template <class Take>
Acad::ErrorStatus writeAll(const AcDbDatabase& database, const WriteOptions& options, std::wstring_view name,
                           WriteReport& report, Take&& take) {
    std::wstring prefix;
    try {
        if (!name.empty()) prefix = std::wstring(name) + L": ";
        if (isOpenForWrite(database))
            return finishReport(report, Acad::eWasOpenForWrite,
                                prefix + L"an object of the drawing is open for write", options);
        Output output;
        if (!writeBytes(database, options, output, report))
            return finishReport(report, report.status, prefix + report.message, options);
        const Acad::ErrorStatus status = take(output);
        if (options.progress && status == Acad::eOk) options.progress->reach(1.0);
        return report.status = status;
    } catch (const std::bad_alloc&) {
        return failForMemory(report, prefix, options);
    }
}

} // namespace

Acad::ErrorStatus writeDrawingToMemory(const AcDbDatabase& database, std::string& bytes,
                                       const WriteOptions& options, WriteReport* report) {
    WriteReport own;
    WriteReport& result = report ? *report : own;
    result = {};
    return writeAll(database, options, {}, result, [&](Output& output) {
        if (output.isSource)
            bytes = output.source->bytes;
        else
            bytes.swap(output.written);
        return Acad::eOk;
    });
}

Acad::ErrorStatus writeDrawing(const AcDbDatabase& database, std::wstring_view file,
                               const WriteOptions& options, WriteReport* report) {
    WriteReport own;
    WriteReport& result = report ? *report : own;
    result = {};
    return writeAll(database, options, file, result, [&](Output& output) {
        AtomicFile target(mapPath(file));
        target.write(output.bytes());
        if (target.commit()) return Acad::eOk;
        const std::string reason = target.errorText();
        return finishReport(result, Acad::eFileAccessErr,
                            std::wstring(file) + L": " + std::wstring(reason.begin(), reason.end()), options);
    });
}

} // namespace hostkit
