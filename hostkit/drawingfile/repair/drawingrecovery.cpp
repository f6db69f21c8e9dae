#include "drawingrecovery.h"

#include "drawingreader.h"
#include "drawingwriter.h"
#include "givenrecords.h"

#include "dbdatabase.h"

#include <new>

namespace hostkit {

namespace {

std::unique_ptr<AcDbDatabase> fail(Acad::ErrorStatus status, std::wstring_view name, std::wstring_view reason,
                                   RecoveryReport& report) {
    report.status = status;
    report.message = std::wstring(name) + L": " + std::wstring(reason);
    return nullptr;
}

bool isHostsOwnForm(std::string_view bytes) {
    constexpr std::size_t markSize = 32;
    return bytes.starts_with("AC10") && bytes.substr(0, markSize).find('\n') == std::string_view::npos;
}

std::unique_ptr<AcDbDatabase> opened(std::string text, std::wstring_view name, RecoveryReport& report) {
    ReadOptions reading;
    reading.tellPort = false;
    ReadReport read;
    std::unique_ptr<AcDbDatabase> database = openDrawingFromMemory(std::move(text), name, &read, reading);
    if (database) return database;
    report.status = read.status;
    report.message = read.fatalMessage();
    return nullptr;
}

bool isWritten(const AcDbDatabase& database, std::string& text) {
    WriteOptions writing;
    writing.tellPort = false;
    return writeDrawingToMemory(database, text, writing) == Acad::eOk;
}

std::unique_ptr<AcDbDatabase> recover(std::string_view bytes, std::wstring_view name,
                                      RecoveryReport& report) {
    if (isHostsOwnForm(bytes))
        return fail(Acad::eNotApplicable, name, L"binary drawings are not recovered", report);
    std::string text = repairDrawingText(bytes, report.repairs);
    if (auditDrawingText(text).objects == 0 && bytes.find("SECTION") == std::string_view::npos)
        return fail(Acad::eDwgObjectImproperlyRead, name, L"nothing of a drawing is in this file", report);
    std::unique_ptr<AcDbDatabase> database = opened(std::move(text), name, report);
    if (!database) return nullptr;
    (void)takeGiven(*database);
    // What came in may be named by what was there, and be put right by that.
    std::string whole;
    if (!isWritten(*database, whole)) return database;
    RepairReport again;
    std::string repaired = repairDrawingText(whole, again);
    report.repairs.notes.insert(report.repairs.notes.end(), again.notes.begin(), again.notes.end());
    std::unique_ptr<AcDbDatabase> result = opened(std::move(repaired), name, report);
    return result ? std::move(result) : std::move(database);
}

} // namespace

std::unique_ptr<AcDbDatabase> recoverDrawing(std::string_view bytes, std::wstring_view name,
                                             RecoveryReport& report) {
    report = {};
    try {
        return recover(bytes, name, report);
    } catch (const std::bad_alloc&) {
        return fail(Acad::eOutOfMemory, name, L"there is not enough memory to recover it", report);
    }
}

} // namespace hostkit
