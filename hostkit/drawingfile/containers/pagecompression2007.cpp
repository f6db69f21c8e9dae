// The compression of the form 2007: literals stand in another order than they are written in.
#include "pagecompression.h"

#include <algorithm>
#include <array>

namespace hostkit {
namespace {

/// The order of a rest of less than 32 literals: runs of bytes by count and first place, ascending, or from
/// the last to the first.
struct LiteralRun {
    std::uint8_t count, first;
    bool isReversed = false;
};

// clang-format off
constexpr std::array<std::array<LiteralRun, 6>, 32> orders{{
    {}, {{{1, 0}}}, {{{2, 0, true}}}, {{{3, 0, true}}}, {{{4, 0}}}, {{{1, 4}, {4, 0}}}, {{{1, 5}, {4, 1}, {1, 0}}},
    {{{2, 5, true}, {4, 1}, {1, 0}}}, {{{8, 0}}}, {{{1, 8}, {8, 0}}}, {{{1, 9}, {8, 1}, {1, 0}}},
    {{{2, 9, true}, {8, 1}, {1, 0}}}, {{{4, 8}, {8, 0}}}, {{{1, 12}, {4, 8}, {8, 0}}},
    {{{1, 13}, {4, 9}, {8, 1}, {1, 0}}}, {{{2, 13, true}, {4, 9}, {8, 1}, {1, 0}}}, {{{8, 8}, {8, 0}}},
    {{{8, 9}, {1, 8}, {8, 0}}}, {{{1, 17}, {8, 9}, {8, 1}, {1, 0}}}, {{{3, 16, true}, {8, 8}, {8, 0}}},
    {{{4, 16}, {8, 8}, {8, 0}}}, {{{1, 20}, {4, 16}, {8, 8}, {8, 0}}}, {{{2, 20, true}, {4, 16}, {8, 8}, {8, 0}}},
    {{{3, 20, true}, {4, 16}, {8, 8}, {8, 0}}}, {{{8, 16}, {8, 8}, {8, 0}}}, {{{8, 17}, {1, 16}, {8, 8}, {8, 0}}},
    {{{1, 25}, {8, 17}, {1, 16}, {8, 8}, {8, 0}}}, {{{2, 25, true}, {8, 17}, {1, 16}, {8, 8}, {8, 0}}},
    {{{4, 24}, {8, 16}, {8, 8}, {8, 0}}}, {{{1, 28}, {4, 24}, {8, 16}, {8, 8}, {8, 0}}},
    {{{2, 28, true}, {4, 24}, {8, 16}, {8, 8}, {8, 0}}}, {{{1, 30}, {4, 26}, {8, 18}, {8, 10}, {8, 2}, {2, 0, true}}},
}};
// clang-format on

class Unpacking2007 {
public:
    Unpacking2007(std::span<const std::uint8_t> packed, std::size_t capacity, std::vector<std::uint8_t>& out)
        : m_in(packed)
        , m_capacity(capacity)
        , m_out(out) {
        m_out.clear();
        m_out.reserve(capacity);
    }

    [[nodiscard]] bool run() {
        std::uint8_t op = next();
        std::size_t count = 0;
        if ((op & 0xF0) == 0x20) {
            next();
            next();
            count = next() & 7;
        }
        while (!m_failed && m_at < m_in.size()) {
            literals(count == 0 ? literalCount(op) : count);
            if (m_at >= m_in.size()) break;
            op = next();
            count = matches(op);
        }
        return !m_failed;
    }

private:
    std::uint8_t next() {
        if (m_at < m_in.size()) return m_in[m_at++];
        m_failed = true;
        return 0;
    }
    std::size_t nextWord() {
        const std::size_t low = next();
        return low | static_cast<std::size_t>(next()) << 8;
    }

    std::size_t literalCount(std::uint8_t op) {
        std::size_t count = op + 8U;
        if (count != 0x17) return count;
        std::size_t more = next();
        count += more;
        if (more != 0xFF) return count;
        do {
            more = nextWord();
            count += more;
        } while (more == 0xFFFF && !m_failed);
        return count;
    }

    void literals(std::size_t count) {
        if (count > m_in.size() - m_at || count > m_capacity - m_out.size()) {
            m_failed = true;
            return;
        }
        for (; count >= 32; count -= 32, m_at += 32)
            for (std::size_t group : {24U, 16U, 8U, 0U}) copyRun({8, static_cast<std::uint8_t>(group)});
        for (LiteralRun run : orders[count]) copyRun(run);
        m_at += count;
    }

    void copyRun(LiteralRun run) {
        const auto from = m_in.begin() + static_cast<std::ptrdiff_t>(m_at + run.first);
        m_out.insert(m_out.end(), from, from + run.count);
        if (run.isReversed) std::reverse(m_out.end() - run.count, m_out.end());
    }

    /// Matches one after the other, until literals follow: their number, or 0 where `op` tells it.
    std::size_t matches(std::uint8_t& op) {
        while (!m_failed) {
            match(op);
            const std::size_t count = op & 7;
            if (count != 0 || m_at >= m_in.size()) return count;
            op = next();
            if (op >> 4 == 0) return 0;
            if (op >> 4 == 15) op &= 15;
        }
        return 0;
    }

    void match(std::uint8_t& op) {
        std::size_t length = 0, distance = 0;
        const std::size_t low = op & 15;
        if (op >> 4 == 2) {
            distance = nextWord();
            if (op & 8) {
                const std::size_t more = next();
                op = next();
                length = (low & 7) + (more << 3) + ((op & 0xF8U) << 8) + 0x100;
                ++distance;
            } else {
                op = next();
                length = (low & 7) + (op & 0xF8U);
            }
        } else if (op >> 4 <= 1) {
            const std::size_t near = next();
            const bool isLong = op >> 4 == 0;
            op = next();
            length = low + (isLong ? 0x13 + (op >> 3 & 0x10U) : 3);
            distance = near + ((op & (isLong ? 0x78U : 0xF8U)) << 5) + 1;
        } else {
            length = op >> 4;
            op = next();
            distance = low + ((op & 0xF8U) << 1) + 1;
        }
        copyBack(distance, length);
    }

    void copyBack(std::size_t distance, std::size_t length) {
        if (m_failed || distance == 0 || distance > m_out.size() || length > m_capacity - m_out.size()) {
            m_failed = true;
            return;
        }
        for (; length > 0; --length) m_out.push_back(m_out[m_out.size() - distance]);
    }

    std::span<const std::uint8_t> m_in;
    std::size_t m_at = 0;
    std::size_t m_capacity;
    std::vector<std::uint8_t>& m_out;
    bool m_failed = false;
};

} // namespace

bool unpackPage2007(std::span<const std::uint8_t> packed, std::size_t capacity,
                    std::vector<std::uint8_t>& out) {
    return Unpacking2007(packed, capacity, out).run();
}

} // namespace hostkit
