// Stand-in for the host's rare parts of objects. Covers extended data, extension dictionary, persistent reactors and names that no record has; leaves out what every object has.
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

/// Names of records that no table had when the object was read, by the group codes that name them. The fields' ids
/// are null then, and the names are what they file.
class UnknownNames {
public:
    UnknownNames() = default;
    UnknownNames(const UnknownNames& other)
        : m_names(other.m_names ? std::make_unique<Names>(*other.m_names) : nullptr) {}
    UnknownNames& operator=(const UnknownNames& other) {
        m_names = other.m_names ? std::make_unique<Names>(*other.m_names) : nullptr;
        return *this;
    }
    /// Null where the field has none.
    const std::wstring* find(short code) const {
        if (!m_names) return nullptr;
        for (const auto& [known, name] : *m_names)
            if (known == code) return &name;
        return nullptr;
    }
    void put(short code, std::wstring_view name) {
        remove(code);
        if (!m_names) m_names = std::make_unique<Names>();
        m_names->emplace_back(code, name);
    }
    void remove(short code) {
        if (m_names) std::erase_if(*m_names, [code](const auto& entry) { return entry.first == code; });
    }

private:
    using Names = std::vector<std::pair<short, std::wstring>>;
    std::unique_ptr<Names> m_names;
};

struct ObjectExtras {
    GroupBlock extendedData;
    AcDbObjectId extensionDictionary;
    std::vector<AcDbObjectId> persistentReactors;
    HandedReactors handedReactors;
    UnknownNames unknownNames;
};

} // namespace hostkit
