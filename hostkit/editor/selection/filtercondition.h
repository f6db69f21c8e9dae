// Conditions of a filter: what an entity is asked, and how the answers are joined; leaves out reading a
// filter.
#pragma once

#include "filtergroups.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace hostkit {

/// An entity while one filter looks at it. It is filed once, when the first condition asks for its groups.
class FilterCandidate {
public:
    FilterCandidate(const AcDbEntity& entity, const GroupTests& tests)
        : m_entity(entity)
        , m_tests(tests) {}

    const AcDbEntity& entity() const { return m_entity; }
    /// Whether the entity files a group that the test takes.
    bool files(std::size_t test);

private:
    const AcDbEntity& m_entity;
    const GroupTests& m_tests;
    std::vector<bool> m_met; ///< by test; empty until the entity was filed
};

class FilterCondition {
public:
    FilterCondition() = default;
    virtual ~FilterCondition() = default;
    FilterCondition(const FilterCondition&) = delete;
    FilterCondition& operator=(const FilterCondition&) = delete;

    virtual bool holds(FilterCandidate& candidate) const = 0;
    /// What an answer takes: a look at a field that every entity has, at a name, or a filing of the entity.
    enum class Cost : unsigned char { field, name, filing };
    virtual Cost cost() const { return Cost::field; }
};

using ConditionPointer = std::unique_ptr<const FilterCondition>;
using Conditions = std::vector<ConditionPointer>;

enum class Joining : unsigned char { kAll, kAny, kEitherOne, kNone };

/// All, at least one, exactly one or none of them holds. A single one of kAll or kAny is given back as it is.
/// Which is asked first makes no difference to the answer, so the quick ones are.
ConditionPointer joined(Joining joining, Conditions conditions);
/// The entity files a group that the test of that number takes.
ConditionPointer groupCondition(std::size_t test);

} // namespace hostkit
