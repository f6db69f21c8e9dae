// What records of a drawing are called.
#pragma once

#include "drawingtext.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hostkit {

/// What records are called where others name them. Names are bytes of the drawing's coding: of its code page
/// up to 2004, from then on UTF-8.
class RecordNames {
public:
    explicit RecordNames(DrawingText text = {})
        : m_text(text) {}

    /// `kind` as in transcripts: "LAYER", "BLOCK_RECORD", "MLINESTYLE". The first of two equal names counts.
    void add(std::string_view kind, std::string name, std::uint64_t handle);
    /// Empty where there is none.
    [[nodiscard]] std::string_view nameOf(std::uint64_t handle) const;
    /// 0 where there is none. Upper and lower case are the same, in all alphabets.
    [[nodiscard]] std::uint64_t handleOf(std::string_view kind, std::string_view name) const;
    /// The same of a group's value, whose escapes are turned back.
    [[nodiscard]] std::uint64_t handleOfValue(std::string_view kind, std::string_view value) const;

    /// Of line types, in the order in which they were added, without those by layer and by block. 0 behind
    /// the last.
    [[nodiscard]] std::uint64_t linetypeAt(std::size_t index) const {
        return index < m_linetypes.size() ? m_linetypes[index] : 0;
    }

    /// Red, green and blue of a colour of a book, by its record.
    void addColor(std::uint64_t handle, std::uint32_t rgb) { m_colors.emplace(handle, rgb); }
    /// Null where none was added.
    [[nodiscard]] const std::uint32_t* colorOf(std::uint64_t handle) const {
        const auto found = m_colors.find(handle);
        return found == m_colors.end() ? nullptr : &found->second;
    }

private:
    std::vector<std::uint64_t> m_linetypes;
    std::unordered_map<std::uint64_t, std::uint32_t> m_colors;
    std::unordered_map<std::uint64_t, std::string> m_names;
    [[nodiscard]] std::wstring keyOf(std::string_view kind, std::string_view name) const;

    DrawingText m_text;
    std::unordered_map<std::string, std::uint64_t> m_handles;        ///< by kind and name as they stand
    std::unordered_map<std::wstring, std::uint64_t> m_foldedHandles; ///< for other spellings
};

} // namespace hostkit
