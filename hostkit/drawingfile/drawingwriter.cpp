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
        if ((DatabaseAccess::stubAt(database, place)->openMode & kOpenForWrite) != 0) return true;
    return false;
}

bool writeBytes(const AcDbDatabase& database, const WriteOptions& options, std::string& bytes,
                WriteReport& report) {
    const auto source = database.source();
    const DrawingStyle style = styleOf(source.get(), options);
    ObjectWriting objects(database, style);
    const bool keepsForm = source && filerVersion(style.version) == source->version;
    bool isGood = false;
    if (keepsForm) {
        DrawingEdits edits(database, *source, objects, options.everythingFromFields);
        isGood = edits.run(bytes);
        report.status = edits.status();
        report.message = edits.message();
        report.recordsCopied = edits.recordsCopied();
    } else {
        CompleteWriting writing(database, objects);
        isGood = writing.run(bytes);
        report.status = writing.status();
        report.message = writing.message();
    }
    report.recordsWritten = objects.recordsWritten();
    report.groupsFromFields = objects.writer().groupsFromFields();
    report.groupsKept = objects.writer().groupsKept();
    return isGood;
}

Acad::ErrorStatus writeAll(const AcDbDatabase& database, const WriteOptions& options, std::wstring_view name,
                           std::string& bytes, WriteReport& report) {
    const std::wstring prefix = name.empty() ? std::wstring() : std::wstring(name) + L": ";
    if (isOpenForWrite(database))
        return finishReport(report, Acad::eWasOpenForWrite,
                            prefix + L"an object of the drawing is open for write", options);
    try {
        std::string written;
        if (!writeBytes(database, options, written, report))
            return finishReport(report, report.status, prefix + report.message, options);
        bytes.swap(written);
        report.byteCount = bytes.size();
        return report.status = Acad::eOk;
    } catch (const std::bad_alloc&) {
        return finishReport(report, Acad::eOutOfMemory, prefix + L"there is not enough memory", options);
    }
}

} // namespace

Acad::ErrorStatus writeDrawingToMemory(const AcDbDatabase& database, std::string& bytes,
                                       const WriteOptions& options, WriteReport* report) {
    WriteReport own;
    WriteReport& result = report ? *report : own;
    result = {};
    return writeAll(database, options, {}, bytes, result);
}

Acad::ErrorStatus writeDrawing(const AcDbDatabase& database, std::wstring_view file,
                               const WriteOptions& options, WriteReport* report) {
    WriteReport own;
    WriteReport& result = report ? *report : own;
    result = {};
    std::string bytes;
    const Acad::ErrorStatus status = writeAll(database, options, file, bytes, result);
    if (status != Acad::eOk) return status;
    AtomicFile output(mapPath(file));
    output.write(bytes);
    if (output.commit()) return Acad::eOk;
    const std::string reason = output.errorText();
    return finishReport(result, Acad::eFileAccessErr,
                        std::wstring(file) + L": " + std::wstring(reason.begin(), reason.end()), options);
}

} // namespace hostkit
