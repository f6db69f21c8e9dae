#include "applicationclasses.h"

#include "dbent.h"
#include "rxdict.h"
#include "textencoding.h"

namespace hostkit {

ApplicationClasses::ApplicationClasses() {
    for (const auto& [name, entry] : *acrxClassDictionary()) {
        const auto* each = static_cast<const AcRxClass*>(entry);
        if (!isOfApplication(*each) || !each->dxfName() || !each->isDerivedFrom(AcDbObject::desc())) continue;
        const Kind kind = each->isDerivedFrom(AcDbEntity::desc()) ? Kind::entity : Kind::object;
        m_classes.push_back({utf8FromWide(each->dxfName()), each, kind});
    }
}

std::unique_ptr<AcDbObject> ApplicationClasses::make(std::string_view recordName, Kind kind) const {
    for (const Named& each : m_classes)
        if (each.kind == kind && each.recordName == recordName)
            return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(each.made->create()));
    return nullptr;
}

} // namespace hostkit
