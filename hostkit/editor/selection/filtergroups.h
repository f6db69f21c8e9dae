// Tests of groups that only an entity's filing tells: which codes are looked at, and a filer that looks;
// leaves out the fields that every entity has.
#pragma once

#include "filtervalue.h"

#include <cstddef>
#include <vector>

class AcDbEntity;

namespace hostkit {

class GroupTests {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /// The test's number. The code is one of 0 to 998.
    std::size_t add(short code, ValueTest test);
    std::size_t size() const { return m_entries.size(); }
    /// For each test whether the entity files a group that it takes. The owner's handle counts as filed.
    std::vector<bool> run(const AcDbEntity& entity) const;

    // The tests of one code, each by its number.

    std::size_t first(short code) const {
        const auto place = static_cast<std::size_t>(code);
        return place < m_first.size() ? m_first[place] : none;
    }
    std::size_t next(std::size_t test) const { return m_entries[test].next; }
    const ValueTest& test(std::size_t test) const { return m_entries[test].test; }

private:
    struct Entry {
        ValueTest test;
        std::size_t next; ///< of the same code
    };
    std::vector<Entry> m_entries;
    std::vector<std::size_t> m_first; ///< by code
};

} // namespace hostkit
