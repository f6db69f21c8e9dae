// Care for references in a save: names and handles in groups that no class reads; leaves out the fields of
// classes, which follow their ids.
#pragma once

#include "drawingrecord.h"
#include "drawingtext.h"

#include "casefold.h"
#include "dbaccess.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace hostkit {

/// What was renamed and erased since a drawing was read, as far as its file names it: a save lets the
/// references follow that stand in groups which no class reads.
class ReferenceChanges {
public:
    /// A record has another name. For an erased one the name that stands for none, as its users file it.
    void rename(TableKind kind, std::wstring_view oldName, std::wstring_view newName);
    /// The object with that handle leaves the file.
    void remove(std::uint64_t handle) { m_gone.insert(handle); }

    bool hasRenamed() const { return m_hasRenamed; }
    bool isEmpty() const { return !m_hasRenamed && m_gone.empty(); }
    bool isGone(std::uint64_t handle) const { return m_gone.contains(handle); }
    /// The new name of the record that had the name, or null where it keeps it.
    const std::wstring* newName(TableKind kind, std::wstring_view name) const;

    /// The table whose records such a group of such records names, wherever in the record it stands.
    static std::optional<TableKind> namedBy(std::string_view recordName, short code);

    /// What becomes of a group that stays in a record as it was read.
    enum class Fate : unsigned char { kStays, kGoes, kHasNewValue };
    /// With the new value, as bytes in that encoding, where there is one.
    Fate fateOf(const DrawingRecord& record, std::size_t place, const DrawingText& encoding,
                std::string& value) const;
    /// Whether a record that nobody changed has a group that does not stay.
    bool concern(const DrawingRecord& record, const DrawingText& encoding) const;

private:
    Fate fateOfHandle(const DrawingRecord& record, std::size_t place, std::string& value) const;
    Fate fateOfName(const DrawingRecord& record, std::size_t place, const DrawingText& encoding,
                    std::string& value) const;
    Fate fateOfCount(const DrawingRecord& record, std::size_t place, std::string& value) const;

    using Names = std::unordered_map<std::wstring, std::wstring, FoldedHash, FoldedEqual>;
    std::array<Names, tableCount> m_names;
    std::unordered_set<std::uint64_t> m_gone;
    bool m_hasRenamed = false;
};

} // namespace hostkit
