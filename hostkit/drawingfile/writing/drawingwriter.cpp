#include "drawingwriter.h"

#include "atomicfile.h"
#include "binaryform.h"
#include "blockcircles.h"
#include "casefold.h"
#include "completewriting.h"
#include "dbaccess.h"
#include "drawingedits.h"
#include "drawingoutput.h"
#include "exchangeoutline.h"
#include "formtransfer.h"
#include "headervariables.h"
#include "hostport.h"
#include "keptcolors.h"
#include "objectwriting.h"
#include "systempath.h"

#include <cstdio>
#include <new>
#include <optional>

#include <unistd.h>

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

// In the code page that the drawing had, or that its header names beside UTF-8.
DrawingStyle styleInForm(const DrawingStyle& style, DrawingVersion version, const AcDbDatabase& database) {
    DrawingStyle result = style;
    result.version = version;
    if (isUtf8(version))
        result.text = DrawingText(CodePage::utf8);
    else if (isUtf8(style.version))
        result.text = DrawingText(
            codePageFromName(database.header().text(L"DWGCODEPAGE")).value_or(CodePage::western1252));
    return result;
}

// What is to be written: the bytes that the drawing was read from, or new ones.
struct Output {
    std::shared_ptr<const DrawingSource> source;
    std::string written;
    const std::string* asRead = nullptr;    ///< of the source
    std::optional<ExchangeOutline> outline; ///< of the bytes, where somebody asked
    std::string_view bytes() const { return asRead ? *asRead : written; }
};

template <class Writing>
bool runWriting(Writing& writing, Output& output, WriteReport& report) {
    const bool isGood = writing.run(output.written);
    report.status = writing.status();
    report.message = writing.message();
    return isGood;
}

DrawingCoding codingOf(const WriteOptions& options, const std::shared_ptr<const DrawingSource>& source) {
    if (options.coding) return *options.coding;
    if (binaryDrawingOf(source)) return DrawingCoding::kDrawing;
    return binaryBytesOf(source) ? DrawingCoding::kBinary : DrawingCoding::kText;
}

bool giveDrawing(const DrawingStyle& style, Output& output, WriteReport& report) {
    DrawingOrigin origin;
    origin.drawing = binaryDrawingOf(output.source);
    if (origin.drawing) origin.text = output.source->bytes;
    std::string bytes;
    if (binaryDrawingFromText(output.outline ? *output.outline : ExchangeOutline(output.bytes()),
                              style.version, origin, bytes, report.changes, report.message)) {
        output.written = std::move(bytes);
        output.asRead = nullptr;
        return true;
    }
    report.status = Acad::eInvalidInput;
    return false;
}

// All is written as text; another coding is made of that, or is the one that was read.
bool giveCoding(DrawingCoding coding, const DrawingStyle& style, Output& output, WriteReport& report) {
    if (coding == DrawingCoding::kText) return true;
    if (coding == DrawingCoding::kDrawing) return giveDrawing(style, output, report);
    const std::string* const binary = binaryBytesOf(output.source);
    if (output.asRead && binary) {
        output.asRead = binary;
        return true;
    }
    const std::string_view text = output.bytes();
    const std::optional<FormFault> fault = binaryFromText(text, style.version, output.written);
    if (!fault) {
        output.asRead = nullptr;
        return true;
    }
    report.status = fault->status;
    report.message = L"line " + std::to_wstring(lineNumberAt(text, fault->offset)) + L": " + fault->reason;
    return false;
}

// Records that a binary drawing alone can hold, where another form or coding is written.
std::unordered_set<std::uint64_t> unheldRecords(const Output& output, DrawingCoding coding,
                                                const DrawingStyle& target) {
    const TranscribedDrawing* const drawing = binaryDrawingOf(output.source);
    const bool staysAsItIs =
        coding == DrawingCoding::kDrawing && versionOfFiler(output.source->version) == target.version;
    if (!drawing || staysAsItIs) return {};
    return opaqueRecordsOf(*drawing);
}

// By the ending of the name, where nothing else tells the coding.
WriteOptions withCodingOf(std::wstring_view file, const WriteOptions& options, const AcDbDatabase& database) {
    WriteOptions result = options;
    if (result.coding) return result;
    const auto endsWith = [&](std::wstring_view ending) {
        return file.size() >= ending.size() && equalFolded(file.substr(file.size() - ending.size()), ending);
    };
    if (endsWith(L".dwg")) result.coding = DrawingCoding::kDrawing;
    if (endsWith(L".dxf") && binaryDrawingOf(database.source())) result.coding = DrawingCoding::kText;
    return result;
}

// Of a save: the records, then the file.
constexpr double recordsShare = 0.9;

// In the form that the drawing was read in.
bool writeInOwnForm(const AcDbDatabase& database, ObjectWriting& objects, const WriteOptions& options,
                    const DrawingStyle& style, DrawingCoding coding, Output& output, WriteReport& report) {
    DrawingEdits edits(database, *output.source, objects,
                       options.everythingFromFields ? RewritingScope::kEverything : RewritingScope::kChanged,
                       options.threads);
    bool isGood = true;
    if (!edits.isNeeded())
        output.asRead = &output.source->bytes;
    else
        isGood = runWriting(edits, output, report);
    report.recordsCopied = edits.recordsCopied();
    std::unordered_set<std::uint64_t> unheld = unheldRecords(output, coding, style);
    if (isGood && !unheld.empty()) {
        output.written = FormTransfer(output.bytes(), style, style, report.changes, std::move(unheld)).run();
        output.asRead = nullptr;
    }
    return isGood;
}

// Before 2004 there are indices alone; the true colours go into extended data (keptcolors.h).
void tellTrueColors(const AcDbDatabase& database, FormChanges& changes) {
    DatabaseAccess::forEachObject(database, [&](const AcDbObject& object) {
        if (trueColorOf(object) && !object.isErased())
            changes.add(std::wstring(object.dxfName()) + L" true colour", L"nearest index",
                        object.handle().value());
    });
}

// Everything from the objects, without what no class knows.
bool writeAnew(const AcDbDatabase& database, ObjectWriting& objects, const DrawingStyle& source,
               const DrawingStyle& target, DrawingCoding coding, Output& output, WriteReport& report) {
    output.asRead = nullptr;
    output.written.clear();
    CompleteWriting writing(database, objects, report.changes);
    if (!runWriting(writing, output, report)) return false;
    // What was made here has no records of unknown kinds, and its classes know what each form has from R13
    // on.
    const bool isPlain = !output.source && hasSubclassMarkers(target.version);
    if (isPlain) return true;
    output.written =
        FormTransfer(output.written, source, target, report.changes, unheldRecords(output, coding, target))
            .run();
    return true;
}

// Between forms with subclass marks the records of the file are merged with the fields, so that what no class
// knows goes along. To and from R12, and for a drawing without a file, all is written anew. Both write in the
// source's code page, which the records of unknown kinds have; the transfer encodes all of it.
bool writeInOtherForm(const AcDbDatabase& database, ObjectWriting& objects, const WriteOptions& options,
                      const DrawingStyle& source, const DrawingStyle& target, DrawingCoding coding,
                      Output& output, WriteReport& report) {
    if (target.version < DrawingVersion::k2004) tellTrueColors(database, report.changes);
    const bool isMerged =
        output.source && hasSubclassMarkers(source.version) && hasSubclassMarkers(target.version);
    if (!isMerged) return writeAnew(database, objects, source, target, coding, output, report);
    const bool isFrom2000 = std::min(source.version, target.version) >= DrawingVersion::k2000;
    const bool takesAll = options.everythingFromFields || !isFrom2000;
    DrawingEdits edits(database, *output.source, objects,
                       takesAll ? RewritingScope::kEverything : RewritingScope::kOtherForm, options.threads);
    if (!runWriting(edits, output, report)) return false;
    output.written =
        FormTransfer(output.written, source, target, report.changes, unheldRecords(output, coding, target))
            .run();
    return true;
}

// Files of other programs may lack spaces and tables, which every binary drawing has.
bool lacksSpaces(Output& output) {
    if (!output.source || binaryDrawingOf(output.source)) return false;
    output.outline.emplace(output.bytes());
    return !output.outline->hasSpaces();
}

// No reader takes a drawing with a block that contains itself.
bool hasNoCircle(const AcDbDatabase& database, WriteReport& report) {
    const AcDbBlockTableRecord* const circle = findBlockInItself(database);
    if (!circle) return true;
    report.status = Acad::eCyclicReference;
    report.message = L"the block " + circle->name() + L" contains itself";
    return false;
}

// A reader of the R12 form takes a block of that name for the space.
bool hasNoSpaceOfR12(const AcDbDatabase& database, DrawingVersion target, WriteReport& report) {
    if (hasSubclassMarkers(target)) return true;
    const auto* const blocks = DatabaseAccess::objectOf<AcDbSymbolTable>(database.blockTableId());
    for (const wchar_t* const name : {L"$MODEL_SPACE", L"$PAPER_SPACE"}) {
        if (!blocks || !blocks->has(name)) continue;
        report.status = Acad::eDuplicateKey;
        report.message = std::wstring(L"the block ") + name + L" has the name that a space has in R12";
        return false;
    }
    return true;
}

bool writeBytes(const AcDbDatabase& database, const WriteOptions& options, Output& output,
                WriteReport& report) {
    if (!hasNoCircle(database, report)) return false;
    output.source = database.source();
    const DrawingStyle source = styleOf(output.source.get());
    const DrawingCoding coding = codingOf(options, output.source);
    DrawingVersion version = options.version.value_or(source.version);
    if (coding == DrawingCoding::kDrawing && version != formOfBinaryDrawing(version)) {
        if (options.version) {
            report.status = Acad::eInvalidInput;
            report.message = L"binary drawings are written in the forms 2000, 2004, 2010, 2013 and 2018";
            return false;
        }
        version = formOfBinaryDrawing(version);
    }
    const DrawingStyle target = styleInForm(source, version, database);
    if (!hasNoSpaceOfR12(database, target.version, report)) return false;
    const bool isOwnForm = output.source && target.version == source.version;
    DrawingStyle written = target;
    if (output.source) written.text = source.text;
    ObjectWriting objects(
        database, written,
        {options.progress, static_cast<std::size_t>(database.approxNumObjects()), 0.0, recordsShare});
    DrawingStyle spelt = source;
    if (!output.source) spelt = target;
    bool isGood = isOwnForm
                      ? writeInOwnForm(database, objects, options, source, coding, output, report)
                      : writeInOtherForm(database, objects, options, spelt, target, coding, output, report);
    report.recordsWritten = objects.recordsWritten();
    report.groupsFromFields = objects.writer().groupsFromFields();
    report.groupsKept = objects.writer().groupsKept();
    if (isGood && coding == DrawingCoding::kDrawing && lacksSpaces(output)) {
        ObjectWriting anew(database, written, {nullptr, 0, recordsShare, recordsShare});
        isGood = writeAnew(database, anew, spelt, target, coding, output, report);
        output.outline.reset();
    }
    isGood = isGood && giveCoding(coding, target, output, report);
    if (options.changes) *options.changes = report.changes;
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
        if (!options.writesOpenObjects && isOpenForWrite(database))
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

/// A second name for what stands there; the first one is replaced in one step afterwards.
void keepBackup(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t dot = path.rfind('.');
    const bool hasEnding = dot != std::string::npos && (slash == std::string::npos || dot > slash + 1);
    const std::string backup = (hasEnding ? path.substr(0, dot) : path) + ".bak";
    if (backup == path || ::access(path.c_str(), F_OK) != 0) return;
    const std::string waiting = backup + ".new";
    (void)::unlink(waiting.c_str());
    if (::link(path.c_str(), waiting.c_str()) == 0) (void)::rename(waiting.c_str(), backup.c_str());
}

} // namespace

Acad::ErrorStatus writeDrawingToMemory(const AcDbDatabase& database, std::string& bytes,
                                       const WriteOptions& options, WriteReport* report) {
    WriteReport own;
    WriteReport& result = report ? *report : own;
    result = {};
    return writeAll(database, options, {}, result, [&](Output& output) {
        if (output.asRead)
            bytes = *output.asRead;
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
    return writeAll(database, withCodingOf(file, options, database), file, result, [&](Output& output) {
        const std::string path = mapPath(file);
        AtomicFile target(path);
        target.write(output.bytes());
        if (options.keepsBackup && target.isGood()) keepBackup(path);
        if (target.commit()) return Acad::eOk;
        const std::string reason = target.errorText();
        return finishReport(result, Acad::eFileAccessErr,
                            std::wstring(file) + L": " + std::wstring(reason.begin(), reason.end()), options);
    });
}

} // namespace hostkit
