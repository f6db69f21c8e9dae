// Classes of loaded modules by the names of their records; leaves out the classes of the kit.
#pragma once

#include "dbobject.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// The classes with a record name that modules have made known by the time it is built.
class ApplicationClasses {
public:
    enum class Kind : unsigned char { entity, object };

    ApplicationClasses();
    bool isEmpty() const { return m_classes.empty(); }
    /// A new object of the class of that record name; null where there is none of that kind.
    std::unique_ptr<AcDbObject> make(std::string_view recordName, Kind kind) const;

private:
    struct Named {
        std::string recordName;
        const AcRxClass* made;
        Kind kind;
    };
    std::vector<Named> m_classes;
};

/// Whether a module has made the class known: it files its fields in a way that the kit does not know.
inline bool isOfApplication(const AcRxClass& each) { return each.valueCopier() == nullptr; }

} // namespace hostkit
