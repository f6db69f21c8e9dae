#include "handletext.h"

#include "dbaccess.h"
#include "dbdatabase.h"

namespace hostkit {

AcDbObjectId entityOfHandleText(const AcDbDatabase& database, std::wstring_view text) {
    const AcDbHandle handle(std::wstring(text).c_str());
    const AcDbObjectId id = DatabaseAccess::find(database, handle.value());
    const AcDbObject* object = id.isErased() ? nullptr : DatabaseAccess::object(id);
    return object && object->isKindOf(AcDbEntity::desc()) ? id : AcDbObjectId();
}

} // namespace hostkit
