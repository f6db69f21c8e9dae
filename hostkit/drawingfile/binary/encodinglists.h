// What records of a binary drawing list, from a drawing of the exchange form: neighbours, parts, inserts,
// names, and what the header refers to.
#pragma once

#include "exchangeoutline.h"
#include "recordgathering.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace hostkit {

class EncodingLists {
public:
    EncodingLists() = default;
    /// `form`: 15 for the one that links neighbours. The outline must outlive the lists.
    EncodingLists(const ExchangeOutline& outline, const RecordNames& names, int form);

    /// Of a block; null where the table lacks it.
    [[nodiscard]] const OutlinedRecord* blockRecord(std::uint64_t handle) const;
    /// 2 model space, 1 the active paper space, else 0.
    [[nodiscard]] int modeOf(std::uint64_t block) const;
    /// Tells the neighbours of an entity or part, in the form that has them.
    void link(std::uint64_t handle, RecordLinks& links) const;
    /// Its neighbours are those that it has in the others' drawing.
    [[nodiscard]] bool isLinkedAs(const EncodingLists& others, std::uint64_t handle) const;
    /// The parts of an entity with the end of their sequence, in their order.
    [[nodiscard]] std::vector<std::uint64_t> partsOf(std::uint64_t entity) const;
    [[nodiscard]] bool isSequenceEnd(std::uint64_t handle) const { return m_ends.contains(handle); }
    /// The inserts of a block, in the order of the drawing.
    [[nodiscard]] const std::vector<std::uint64_t>& insertsOf(std::uint64_t block) const;
    /// The field of a table's record that refers to an entry which its list leaves out; empty for others.
    [[nodiscard]] std::string_view standsApart(std::string_view table, const OutlinedRecord& record) const;
    /// Of the header: dictionaries, spaces and line types by their variables.
    [[nodiscard]] const std::vector<std::pair<std::string, std::uint64_t>>& roots() const { return m_roots; }

private:
    struct Neighbours {
        std::uint64_t handle = 0, previous = 0, next = 0;
    };

    void readEntities(const RecordNames& names, int form);
    void addChain(const std::vector<std::uint64_t>& handles);
    void readRoots();
    [[nodiscard]] const Neighbours* neighboursOf(std::uint64_t handle) const;

    const ExchangeOutline* m_outline = nullptr;
    std::unordered_map<std::uint64_t, const OutlinedRecord*> m_blockRecords;
    std::unordered_map<std::uint64_t, std::vector<std::uint64_t>> m_inserts;
    std::unordered_map<std::uint64_t, std::pair<std::uint32_t, std::uint32_t>> m_parts;
    std::unordered_set<std::uint64_t> m_ends;
    std::vector<Neighbours> m_neighbours; ///< by handle; in the form 2000
    std::vector<std::pair<std::string, std::uint64_t>> m_roots;
};

/// Names of table records, and of what the dictionaries ACAD_... hold.
[[nodiscard]] RecordNames namesIn(const ExchangeOutline& outline, const DrawingText& text);

/// What strict readers ask of a new record and its groups lack: the plot style and line type of a layer, the
/// text style of a dimension style.
void completeReferences(const RecordNames& names, const RecordLayout& layout, RecordScope& values);
/// The viewports of a layout, which are those of its block.
void addViewports(const ExchangeOutline& outline, const RecordLayout& layout, RecordScope& values);

/// The entries of a dictionary's groups, in their order.
[[nodiscard]] std::vector<std::pair<std::string_view, std::uint64_t>> entriesIn(std::string_view dictionary);

/// The value of a variable of the header; empty where it is missing.
[[nodiscard]] std::string_view headerValueIn(const ExchangeOutline& outline, std::string_view variable);

} // namespace hostkit
