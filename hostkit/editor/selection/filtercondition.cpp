#include "filtercondition.h"

#include <algorithm>

namespace hostkit {

bool FilterCandidate::files(std::size_t test) {
    if (m_met.empty()) m_met = m_tests.run(m_entity);
    return m_met[test];
}

namespace {

class JoinedConditions final : public FilterCondition {
public:
    JoinedConditions(Joining joining, Conditions conditions)
        : m_joining(joining)
        , m_conditions(std::move(conditions)) {
        std::stable_sort(m_conditions.begin(), m_conditions.end(),
                         [](const ConditionPointer& one, const ConditionPointer& other) {
                             return one->cost() < other->cost();
                         });
    }

    bool holds(FilterCandidate& candidate) const override {
        const auto isMet = [&](const ConditionPointer& each) { return each->holds(candidate); };
        switch (m_joining) {
        case Joining::kAll:
            return std::all_of(m_conditions.begin(), m_conditions.end(), isMet);
        case Joining::kAny:
            return std::any_of(m_conditions.begin(), m_conditions.end(), isMet);
        case Joining::kEitherOne:
            return std::count_if(m_conditions.begin(), m_conditions.end(), isMet) == 1;
        default:
            return std::none_of(m_conditions.begin(), m_conditions.end(), isMet);
        }
    }

    Cost cost() const override { return m_conditions.empty() ? Cost::field : m_conditions.back()->cost(); }

private:
    Joining m_joining;
    Conditions m_conditions; ///< the costly ones last
};

class GroupCondition final : public FilterCondition {
public:
    explicit GroupCondition(std::size_t test)
        : m_test(test) {}
    bool holds(FilterCandidate& candidate) const override { return candidate.files(m_test); }
    Cost cost() const override { return Cost::filing; }

private:
    std::size_t m_test;
};

} // namespace

ConditionPointer joined(Joining joining, Conditions conditions) {
    const bool isItself = joining == Joining::kAll || joining == Joining::kAny;
    if (conditions.size() == 1 && isItself) return std::move(conditions.front());
    return std::make_unique<JoinedConditions>(joining, std::move(conditions));
}

ConditionPointer groupCondition(std::size_t test) { return std::make_unique<GroupCondition>(test); }

} // namespace hostkit
