// Records of binary drawings as groups of the exchange form.
#pragma once

#include "groupformat.h"
#include "recordfields.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hostkit {

/// What records are called where others name them. Names are bytes of the drawing's coding: of its code page
/// up to 2004, from then on UTF-8.
class RecordNames {
public:
    /// `kind` as in transcripts: "LAYER", "BLOCK_RECORD", "MLINESTYLE". The first of two equal names counts.
    void add(std::string_view kind, std::string name, std::uint64_t handle);
    /// Empty where there is none.
    [[nodiscard]] std::string_view nameOf(std::uint64_t handle) const;
    /// 0 where there is none. Upper and lower case are the same.
    [[nodiscard]] std::uint64_t handleOf(std::string_view kind, std::string_view name) const;

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
    std::unordered_map<std::string, std::uint64_t> m_handles; ///< by kind and folded name
};

/// What an entity's record does not tell itself.
struct EntityPlace {
    std::uint64_t owner = 0; ///< of an entity whose record has none: the space that it stands in
    bool isInPaper = false;
    std::string_view layout; ///< the name of the layout of the space, or nothing
};

/// Writes records of one drawing as text groups in the drawing's own form. What it is given must outlive it.
/// Several threads take one each.
class RecordTranscription {
public:
    RecordTranscription(const RecordReading& reading, const RecordNames& names, const DrawingStyle& style);
    ~RecordTranscription();
    RecordTranscription(const RecordTranscription&) = delete;
    RecordTranscription& operator=(const RecordTranscription&) = delete;

    /// The record from its group 0 to its extended data. False, with no byte added, for a record that has no
    /// transcript or was not read whole: appendOpaque then writes its head alone.
    [[nodiscard]] bool append(const RecordFields& record, const EntityPlace& place, std::string& bytes);
    /// The variables of the header that its record tells, from the first group 9 on. Its texts must
    /// be bytes of their own.
    void appendVariables(const RecordFields& header, std::string& bytes);
    /// Name, handle, extension dictionary, reactors, owner, extended data.
    void appendOpaque(const RecordFields& record, std::string_view name, const EntityPlace& place,
                      std::string& bytes);

private:
    std::unique_ptr<class Transcribing> m_work;
};

} // namespace hostkit
