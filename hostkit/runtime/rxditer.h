// Stand-in for the host's walk of a run-time dictionary. Covers walking forward, sorted by name; leaves out walking back and in the order of adding.
#pragma once

#include "rxobject.h"

#include <string>
#include <utility>
#include <vector>

/// Walks the entries that the dictionary had when the walk began, in the order of their names without regard
/// to case. Entries may come and go meanwhile; the objects must not.
class AcRxDictionaryIterator : public AcRxObject {
public:
    using Entry = std::pair<std::wstring, AcRxObject*>;
    explicit AcRxDictionaryIterator(std::vector<Entry> entries)
        : m_entries(std::move(entries)) {}

    bool done() const { return m_index >= m_entries.size(); }
    /// True when there is one more.
    bool next() { return !done() && ++m_index < m_entries.size(); }
    /// Null when done.
    const wchar_t* key() const { return done() ? nullptr : m_entries[m_index].first.c_str(); }
    AcRxObject* object() const { return done() ? nullptr : m_entries[m_index].second; }

private:
    std::vector<Entry> m_entries;
    std::size_t m_index = 0;
};
