// Account of a save in another form: what was turned and what was left out; leaves out how that is shown.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// Records of one kind that met one fate on the way into another form.
struct FormChange {
    std::wstring kind;                  ///< the record's name in the old form
    std::wstring became;                ///< what stands for it in the new form; empty: it was left out
    std::vector<std::uint64_t> handles; ///< of the records in the drawing, in its order

    bool isLeftOut() const { return became.empty(); }
};

/// The changes of one save, by kind and fate in the order in which the first of each was met.
class FormChanges {
public:
    void add(std::wstring_view kind, std::wstring_view became, std::uint64_t handle) {
        const auto found = std::find_if(m_all.begin(), m_all.end(), [&](const FormChange& change) {
            return change.kind == kind && change.became == became;
        });
        FormChange& change =
            found == m_all.end()
                ? m_all.emplace_back(FormChange{std::wstring(kind), std::wstring(became), {}})
                : *found;
        change.handles.push_back(handle);
    }
    const std::vector<FormChange>& all() const { return m_all; }

private:
    std::vector<FormChange> m_all;
};

} // namespace hostkit
