// What holds of the text record of a filed entity whatever stands in it; asked by the fuzz target and, of its
// corpus, by the tests.
#pragma once

#include "vexoentityfiler.h"

#include "dbent.h"
#include "memorydxffiler.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace entityrecordinvariants {

/// Lines of code and value, "10 1/2/3"; a line that is none ends the record.
inline void fill(hostkit::MemoryDxfFiler& filer, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string line(bytes.substr(0, bytes.find('\n')));
        bytes.remove_prefix(std::min(bytes.size(), line.size() + 1));
        char* at = nullptr;
        const long code = std::strtol(line.c_str(), &at, 10);
        if (at == line.c_str()) return;
        const char* const value = *at ? at + 1 : at;
        switch (code) {
        case 1:
            filer.writeText(1, std::wstring(value, line.c_str() + line.size()));
            break;
        case 10: {
            double point[3] = {};
            int dimension = 0;
            for (const char* next = value; dimension < 3; next = at + 1) {
                point[dimension++] = std::strtod(next, &at);
                if (*at != '/') break;
            }
            filer.writePoint(10, point, dimension);
            break;
        }
        case 40:
            filer.writeReal(40, std::strtod(value, nullptr));
            break;
        case 70:
        case 90:
            filer.writeInteger(static_cast<short>(code), std::strtoll(value, nullptr, 10));
            break;
        default:
            return;
        }
    }
}

inline std::string codesOf(hostkit::MemoryDxfFiler& filer) {
    std::string codes;
    filer.rewind();
    for (AcDbDxfGroup group; filer.readItem(group) == Acad::eOk;) codes += std::to_string(group.code) + ' ';
    filer.rewind();
    return codes;
}

/// Empty, or what does not hold: an entity that is read well is filed, read again and filed with the same
/// groups; one that is not fails its filer, or its class or version is told.
inline std::string faultOf(std::string_view bytes) {
    hostkit::MemoryDxfFiler given, first, second;
    fill(given, bytes);
    AcDbEntity* entity = nullptr;
    const Acad::ErrorStatus status = VEXOEntityFiler::dxfInFieldsEntity(&given, entity);
    const std::unique_ptr<AcDbEntity> read(entity);
    if (status != Acad::eOk) {
        const bool isTold = given.filerStatus() == status || status == Acad::eMakeMeProxy ||
                            status == Acad::eInvalidSymbolTableName || status == Acad::eNullEntityPointer;
        return isTold ? "" : "a status that nobody told";
    }
    if (VEXOEntityFiler::dxfOutFieldsEntity(&first, read.get()) != Acad::eOk) return "it cannot be filed";
    const std::string codes = codesOf(first);
    if (VEXOEntityFiler::dxfInFieldsEntity(&first, entity) != Acad::eOk)
        return "what was filed cannot be read";
    const std::unique_ptr<AcDbEntity> again(entity);
    if (VEXOEntityFiler::dxfOutFieldsEntity(&second, again.get()) != Acad::eOk)
        return "it cannot be filed again";
    return codesOf(second) == codes ? "" : "filed again it has other groups";
}

} // namespace entityrecordinvariants
