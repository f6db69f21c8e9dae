#include "byteedits.h"

#include <algorithm>
#include <iterator>

namespace hostkit {

void ByteEdits::reserve(std::size_t edits, std::size_t textSize) {
    m_edits.reserve(edits);
    m_texts.front().reserve(textSize);
}

void ByteEdits::replace(std::size_t begin, std::size_t end, std::string_view text) {
    std::string& own = m_texts.front();
    m_edits.push_back({begin, end, 0, own.size(), own.size() + text.size()});
    own += text;
}

void ByteEdits::take(ByteEdits&& other) {
    const std::size_t first = m_texts.size();
    m_edits.reserve(m_edits.size() + other.m_edits.size());
    for (Edit edit : other.m_edits) {
        edit.text += first;
        m_edits.push_back(edit);
    }
    std::move(other.m_texts.begin(), other.m_texts.end(), std::back_inserter(m_texts));
    other.m_edits.clear();
    other.m_texts.assign(1, {});
}

std::size_t ByteEdits::resultSize() const {
    std::size_t size = m_bytes.size();
    for (const std::string& text : m_texts) size += text.size();
    return size;
}

// Of two replacements that overlap the one that begins first counts.
std::string ByteEdits::apply() {
    const auto isBefore = [](const Edit& left, const Edit& right) {
        return left.begin != right.begin ? left.begin < right.begin
                                         : left.end == left.begin && right.end != right.begin;
    };
    if (!std::is_sorted(m_edits.begin(), m_edits.end(), isBefore))
        std::stable_sort(m_edits.begin(), m_edits.end(), isBefore);
    std::string result;
    result.reserve(resultSize());
    std::size_t copied = 0;
    for (const Edit& edit : m_edits) {
        if (edit.begin < copied) continue;
        result += m_bytes.substr(copied, edit.begin - copied);
        result.append(m_texts[edit.text], edit.textBegin, edit.textEnd - edit.textBegin);
        copied = edit.end;
    }
    result += m_bytes.substr(copied);
    return result;
}

} // namespace hostkit
