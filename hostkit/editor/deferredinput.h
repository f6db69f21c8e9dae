// Input that waits: texts, characters and expressions that run behind the running command, in order; leaves
// out scripts, which are the console's.
#pragma once

#include <deque>
#include <string>
#include <string_view>

class AcDbDatabase;

namespace hostkit {

/// Longest expression that is taken, with its end: the buffers of those who queue them have this size.
constexpr std::size_t expressionBufferLength = 512;

/// What waits to run behind the running command.
struct DeferredItem {
    enum class Kind { text, expression, cancel };
    Kind kind = Kind::text;
    std::wstring text{};
    /// Whose document it is for; null: for whichever is current then. A drawing that is closed by then takes
    /// its text along.
    const AcDbDatabase* database = nullptr;
    bool activates = false;
    bool echoes = false;
};

/// The queue of one host, and the line that its texts have begun.
class DeferredInput {
public:
    void add(DeferredItem item) { m_items.push_back(std::move(item)); }
    bool isEmpty() const { return m_items.empty(); }
    /// The oldest.
    DeferredItem take();
    /// Forgets all that waits; gives how many items that were.
    std::size_t drop();

    /// Puts a text behind the line that is begun, up to and with the first line end (\n, \r or both). True
    /// when there was one: `line` is whole then, and `text` what is left.
    bool takeLine(std::wstring& text, std::wstring& line);
    /// What was typed without its end; dropLine forgets it.
    const std::wstring& begunLine() const { return m_line; }
    void dropLine() { m_line.clear(); }

private:
    std::deque<DeferredItem> m_items;
    std::wstring m_line;
};

} // namespace hostkit
