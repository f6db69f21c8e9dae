// Progress of reading and writing drawings: the share of the work that is done; leaves out captions and
// breaking off.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>

namespace hostkit {

/// Hears how far the reading or writing of a drawing has come.
class DrawingProgress {
public:
    DrawingProgress() = default;
    virtual ~DrawingProgress() = default;
    DrawingProgress(const DrawingProgress&) = delete;
    DrawingProgress& operator=(const DrawingProgress&) = delete;

    /// The share is between 0 and 1 and never falls within one work. Called some hundred times at most, and
    /// not at all for the end of a work that failed.
    virtual void reach(double share) = 0;
};

/// One stage of such a work, of a known size: tells the listener of whole steps only, so that it may be asked
/// at every record.
class ProgressStage {
public:
    /// Without a listener nothing is told. The stage leads from one share of the work to another.
    ProgressStage(DrawingProgress* listener, std::size_t size, double from, double to)
        : m_listener(listener)
        , m_size(std::max<std::size_t>(size, 1))
        , m_from(from)
        , m_to(to) {
        if (m_listener) m_next = stepAfter(0);
    }

    void reach(std::size_t done) {
        if (done >= m_next) tell(std::min(done, m_size));
    }
    /// For stages that count what they do.
    void advance(std::size_t count = 1) { reach(m_done += count); }

private:
    static constexpr std::size_t steps = 200;
    std::size_t stepAfter(std::size_t done) const {
        return std::min(done + std::max<std::size_t>(m_size / steps, 1), m_size);
    }
    void tell(std::size_t done) {
        m_next = done < m_size ? stepAfter(done) : std::numeric_limits<std::size_t>::max();
        m_listener->reach(m_from + (m_to - m_from) * static_cast<double>(done) / static_cast<double>(m_size));
    }

    DrawingProgress* m_listener;
    std::size_t m_size;
    double m_from;
    double m_to;
    std::size_t m_done = 0;
    std::size_t m_next = std::numeric_limits<std::size_t>::max();
};

} // namespace hostkit
