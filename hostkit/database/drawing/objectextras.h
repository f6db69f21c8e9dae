// Rare parts of objects: extended data, extension dictionary, persistent reactors and what has no field;
// leaves out what every object has.
#pragma once

#include "groupblock.h"

#include "acarray.h"
#include "dbid.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hostkit {

/// What AcDbObject::reactors handed out last; a copy of an object has handed out nothing.
struct HandedReactors {
    HandedReactors() = default;
    HandedReactors(const HandedReactors&) {}
    HandedReactors& operator=(const HandedReactors&) { return *this; }
    std::unique_ptr<AcArray<void*>> list{};
};

/// What an object read that has no place in its fields, and files again.
struct UnplacedFields {
    /// Names of records that no table had, by the group codes that name them; the fields' ids are null.
    std::vector<std::pair<short, std::wstring>> names;
    /// The groups of an object within the record, from its mark (101) on: of a paragraph its columns.
    GroupBlock embedded;
};

/// Those of an object, made when they are needed; few objects have some.
class UnplacedFieldsPointer {
public:
    UnplacedFieldsPointer() = default;
    UnplacedFieldsPointer(const UnplacedFieldsPointer& other)
        : m_fields(other.m_fields ? std::make_unique<UnplacedFields>(*other.m_fields) : nullptr) {}
    UnplacedFieldsPointer& operator=(const UnplacedFieldsPointer& other) {
        m_fields = other.m_fields ? std::make_unique<UnplacedFields>(*other.m_fields) : nullptr;
        return *this;
    }
    /// Null where there are none.
    UnplacedFields* get() const { return m_fields.get(); }
    UnplacedFields& made() {
        if (!m_fields) m_fields = std::make_unique<UnplacedFields>();
        return *m_fields;
    }

private:
    std::unique_ptr<UnplacedFields> m_fields;
};

struct ObjectExtras {
    GroupBlock extendedData;
    AcDbObjectId extensionDictionary;
    std::vector<AcDbObjectId> persistentReactors;
    HandedReactors handedReactors;
    UnplacedFieldsPointer unplaced;
};

} // namespace hostkit
