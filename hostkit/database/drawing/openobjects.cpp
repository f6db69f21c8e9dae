#include "openobjects.h"

#include "dbaccess.h"
#include "dbdatabase.h"

namespace hostkit {
namespace {

OpenObject described(AcDbStub& stub) {
    const AcDbObject& object = *stub.object;
    wchar_t handle[17] = {};
    (void)object.handle().getIntoAsciiBuffer(handle);
    const wchar_t* const mode = object.isWriteEnabled()  ? L"write"
                                : object.isReadEnabled() ? L"read"
                                                         : L"notify";
    return {object.objectId(), std::wstring(object.isA()->name()) + L" " + handle, mode};
}

} // namespace

std::vector<OpenObject> openObjects(const AcDbDatabase& database) {
    std::vector<OpenObject> open;
    for (std::size_t i = 0, count = DatabaseAccess::stubCount(database); i < count; ++i) {
        AcDbStub& stub = *DatabaseAccess::stubAt(database, i);
        if (stub.object && (stub.readers > 0 || stub.openMode != 0)) open.push_back(described(stub));
    }
    return open;
}

void closeOpenObjects(AcDbDatabase& database) {
    for (std::size_t i = 0, count = DatabaseAccess::stubCount(database); i < count; ++i) {
        const AcDbStub& stub = *DatabaseAccess::stubAt(database, i);
        constexpr unsigned byClosing = kOpenForWrite | kOpenForNotify;
        while (stub.object && (stub.readers > 0 || (stub.openMode & byClosing) != 0))
            if (stub.object->close() == Acad::eInvalidOpenState) break;
    }
}

} // namespace hostkit
