#include "pagecompression.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace hostkit {
namespace {

constexpr std::uint8_t endMark = 0x11;

/// Bytes in, bytes out, neither past its end.
class Unpacking {
public:
    Unpacking(std::span<const std::uint8_t> packed, std::size_t capacity, std::vector<std::uint8_t>& out)
        : m_in(packed)
        , m_capacity(capacity)
        , m_out(out) {
        m_out.clear();
        m_out.reserve(capacity);
    }

    [[nodiscard]] bool run() {
        std::uint8_t op = next();
        op = literals(op);
        while (!m_failed && op != endMark) op = match(op);
        return !m_failed;
    }

private:
    std::uint8_t next() {
        if (m_at < m_in.size()) return m_in[m_at++];
        m_failed = true;
        return endMark;
    }

    /// FF for each zero byte, and the first other one.
    std::size_t extension() {
        std::size_t sum = 0;
        std::uint8_t byte = next();
        for (; byte == 0 && !m_failed; byte = next()) sum += 0xFF;
        return sum + byte;
    }

    /// A run whose length the byte tells, and the opcode behind it. A byte that begins no run is the opcode.
    std::uint8_t literals(std::uint8_t length) {
        if (length >= 0x10) return length;
        copyLiterals(length == 0 ? 0x0F + 3 + extension() : length + 3U);
        return next();
    }

    void copyLiterals(std::size_t count) {
        if (count > m_in.size() - m_at || count > m_capacity - m_out.size()) {
            m_failed = true;
            return;
        }
        m_out.insert(m_out.end(), m_in.begin() + static_cast<std::ptrdiff_t>(m_at),
                     m_in.begin() + static_cast<std::ptrdiff_t>(m_at + count));
        m_at += count;
    }

    void copyBack(std::size_t distance, std::size_t length) {
        if (distance > m_out.size() || length > m_capacity - m_out.size()) {
            m_failed = true;
            return;
        }
        const std::size_t from = m_out.size() - distance;
        m_out.resize(m_out.size() + length);
        std::uint8_t* to = m_out.data() + from + distance;
        if (distance >= length)
            std::memcpy(to, m_out.data() + from, length);
        else
            for (std::size_t i = 0; i < length; ++i) // what is copied may be what was just written
                to[i] = m_out[from + i];
    }

    std::uint8_t match(std::uint8_t op) {
        std::size_t length = 0, distance = 0;
        std::uint8_t tail = op; // its lowest two bits count the literals that follow
        if (op >= 0x40) {
            length = (op >> 4) - 1U;
            distance = (static_cast<std::size_t>(next()) << 2 | (op >> 2 & 3)) + 1;
        } else {
            if (op >= 0x20)
                length = op == 0x20 ? extension() + 0x21 : op - 0x1EU;
            else
                length = (op & 7) == 0 ? extension() + 9 : (op & 7) + 2U;
            tail = next();
            distance = (tail >> 2 | static_cast<std::size_t>(next()) << 6) + 1;
            if (op < 0x20) distance += 0x3FFF + (static_cast<std::size_t>(op & 8) << 11);
        }
        if (op < 0x10) m_failed = true;
        if (!m_failed) copyBack(distance, length);
        if (m_failed) return endMark;
        if ((tail & 3) == 0) return literals(next());
        copyLiterals(tail & 3);
        return next();
    }

    std::span<const std::uint8_t> m_in;
    std::size_t m_at = 0;
    std::size_t m_capacity;
    std::vector<std::uint8_t>& m_out;
    bool m_failed = false;
};

/// Greedy: the longest of the last places where the same four bytes stood.
class Packing {
public:
    explicit Packing(std::span<const std::uint8_t> bytes)
        : m_in(bytes)
        , m_last(tables().last)
        , m_before(tables().before) {
        m_last.assign(tableSize, -1);
        if (m_before.size() < bytes.size()) m_before.resize(bytes.size());
        m_out.reserve(bytes.size() / 2 + 16);
    }

    [[nodiscard]] std::vector<std::uint8_t> run() {
        std::size_t at = 0;
        while (at + leastMatch <= m_in.size()) {
            const Match found = at - m_done >= 4 || m_hasMatch ? longestAt(at) : Match{};
            if (found.length == 0) {
                remember(at++);
                continue;
            }
            literals(at - m_done);
            match(found);
            for (const std::size_t end = at + found.length; at < end; ++at) remember(at);
            m_done = at;
        }
        literals(m_in.size() - m_done);
        m_out.insert(m_out.end(), {endMark, 0, 0});
        return std::move(m_out);
    }

private:
    static constexpr std::size_t tableSize = 1U << 14;
    static constexpr std::size_t leastMatch = 4;
    static constexpr std::size_t farthest = 0xBFFF;
    static constexpr int mostTries = 16;

    struct Match {
        std::size_t distance = 0, length = 0;
    };

    /// Taken again from page to page: they are larger than a page.
    struct Tables {
        std::vector<std::int32_t> last, before;
    };
    static Tables& tables() {
        thread_local Tables own;
        return own;
    }

    [[nodiscard]] std::size_t slot(std::size_t at) const {
        std::uint32_t four = 0;
        std::memcpy(&four, m_in.data() + at, 4);
        return four * 2654435761U >> 18;
    }

    void remember(std::size_t at) {
        if (at + 4 > m_in.size()) return;
        std::int32_t& last = m_last[slot(at)];
        m_before[at] = last;
        last = static_cast<std::int32_t>(at);
    }

    /// How many bytes are the same from both places on.
    [[nodiscard]] std::size_t lengthOf(std::size_t at, std::size_t from) const {
        const std::uint8_t* const bytes = m_in.data();
        const std::size_t most = m_in.size() - at;
        std::size_t length = 0;
        for (; length + 8 <= most; length += 8) {
            std::uint64_t one = 0, other = 0;
            std::memcpy(&one, bytes + at + length, 8);
            std::memcpy(&other, bytes + from + length, 8);
            if (one != other) return length + static_cast<std::size_t>(std::countr_zero(one ^ other)) / 8;
        }
        while (length < most && bytes[at + length] == bytes[from + length]) ++length;
        return length;
    }

    [[nodiscard]] Match longestAt(std::size_t at) const {
        Match best;
        int tries = mostTries;
        for (std::int32_t last = m_last[slot(at)]; last >= 0 && tries-- > 0;
             last = m_before[static_cast<std::size_t>(last)]) {
            const auto from = static_cast<std::size_t>(last);
            if (at - from > farthest || at + best.length == m_in.size()) break;
            if (m_in[at + best.length] != m_in[from + best.length]) continue; // no longer one
            const std::size_t length = lengthOf(at, from);
            if (length >= leastMatch && length > best.length) best = {at - from, length};
        }
        return best;
    }

    void extension(std::size_t rest) {
        for (; rest > 0xFF; rest -= 0xFF) m_out.push_back(0);
        m_out.push_back(static_cast<std::uint8_t>(rest));
    }

    /// Up to three stand in the low bits of the match before.
    void literals(std::size_t count) {
        if (count == 0) return;
        if (count <= 3)
            m_out[m_tail] = static_cast<std::uint8_t>(m_out[m_tail] | count);
        else if (count <= 0x0F + 3)
            m_out.push_back(static_cast<std::uint8_t>(count - 3));
        else {
            m_out.push_back(0);
            extension(count - 0x0F - 3);
        }
        const auto from = m_in.begin() + static_cast<std::ptrdiff_t>(m_done);
        m_out.insert(m_out.end(), from, from + static_cast<std::ptrdiff_t>(count));
    }

    void match(Match m) {
        m_hasMatch = true;
        if (m.length <= 14 && m.distance <= 0x400) {
            m_tail = m_out.size();
            const std::size_t distance = m.distance - 1;
            m_out.push_back(static_cast<std::uint8_t>((m.length + 1) << 4 | (distance & 3) << 2));
            m_out.push_back(static_cast<std::uint8_t>(distance >> 2));
            return;
        }
        const bool isFar = m.distance > 0x4000;
        const std::size_t distance = isFar ? m.distance - 0x4000 : m.distance - 1;
        const std::size_t shortest = isFar ? 2 : 0x1E, longest = isFar ? 9 : 0x21;
        const auto op = static_cast<std::uint8_t>(isFar ? 0x10 | (distance >> 14 & 1) << 3 : 0x00);
        // 0x11 is the end mark: a near length of three is told as none has it.
        if (m.length <= longest)
            m_out.push_back(
                static_cast<std::uint8_t>(isFar ? op | (m.length - shortest) : m.length + shortest));
        else {
            m_out.push_back(isFar ? op : 0x20);
            extension(m.length - longest);
        }
        m_tail = m_out.size();
        m_out.push_back(static_cast<std::uint8_t>((distance & 0x3F) << 2));
        m_out.push_back(static_cast<std::uint8_t>(distance >> 6 & 0xFF));
    }

    std::span<const std::uint8_t> m_in;
    std::vector<std::int32_t>&m_last, &m_before;
    std::vector<std::uint8_t> m_out;
    std::size_t m_done = 0; ///< all before it is written
    std::size_t m_tail = 0; ///< the byte that counts the literals behind the last match
    bool m_hasMatch = false;
};

} // namespace

bool unpackPage(std::span<const std::uint8_t> packed, std::size_t capacity, std::vector<std::uint8_t>& out) {
    return Unpacking(packed, capacity, out).run();
}

std::vector<std::uint8_t> packPage(std::span<const std::uint8_t> bytes) { return Packing(bytes).run(); }

} // namespace hostkit
