// Whatever stands in a drawing file, checking and reading it come to an end, without an object left open;
// what was read can be written from its fields, and what was written can be read.
#include "dbdatabase.h"
#include "drawingaudit.h"
#include "drawinglisting.h"
#include "drawingreader.h"
#include "drawingwriter.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace hostkit;
    const AuditReport audit = auditDrawingText({reinterpret_cast<const char*>(data), size});
    ReadOptions reading;
    reading.tellPort = false;
    const auto database = openDrawingFromMemory(std::string(data, data + size), L"fuzz", nullptr, reading);
    if (!database) return 0;
    if (database->numOpenObjects() != 0) std::abort();
    (void)listingAsJson(listDrawing(*database));
    if (auditDrawing(*database).faultCount() != audit.faultCount()) std::abort();
    WriteOptions writing;
    writing.tellPort = false;
    std::string same;
    if (writeDrawingToMemory(*database, same, writing) != Acad::eOk || same != std::string(data, data + size))
        std::abort();
    writing.everythingFromFields = true;
    std::string fromFields;
    if (writeDrawingToMemory(*database, fromFields, writing) != Acad::eOk) return 0;
    if (!openDrawingFromMemory(fromFields, L"again", nullptr, reading)) std::abort();
    return 0;
}
