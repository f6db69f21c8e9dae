// Incremental save: replacements and insertions in the bytes of a drawing; leaves out what they say.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// Replacements and insertions in the bytes of a drawing, in any order; at one place in the order in which
/// they came.
class ByteEdits {
public:
    explicit ByteEdits(std::string_view bytes)
        : m_bytes(bytes)
        , m_texts(1) {}

    /// Room for what is to come: a guess that spares moving it about.
    void reserve(std::size_t edits, std::size_t textSize);
    void replace(std::size_t begin, std::size_t end, std::string_view text);
    void insert(std::size_t place, std::string_view text) { replace(place, place, text); }
    /// The other's edits of the same bytes come behind the own ones.
    void take(ByteEdits&& other);
    std::string apply();

private:
    struct Edit {
        std::size_t begin = 0;
        std::size_t end = 0;
        std::size_t text = 0; // the text in m_texts, and there the part
        std::size_t textBegin = 0;
        std::size_t textEnd = 0;
    };
    std::size_t resultSize() const;

    std::string_view m_bytes;
    std::vector<Edit> m_edits;
    std::vector<std::string> m_texts; // the own one first
};

} // namespace hostkit
