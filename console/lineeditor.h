#pragma once

#include "lineinput.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// What may stand for the word before the cursor: whole words, which take the place of what stands behind
/// `start`.
struct Completion {
    std::size_t start = 0;
    std::vector<std::wstring> words{};
};
/// Of the line up to the cursor.
using Completer = std::function<Completion(std::wstring_view line)>;

/// A person's line with the cursor keys, the lines before it, and the words that Tab may complete.
class LineEditor {
public:
    /// Null where standard input or output is no terminal that can do it, or this program was built without
    /// line editing.
    static std::unique_ptr<LineEditor> make();
    virtual ~LineEditor() = default;

    /// Lines of earlier runs, the oldest first, for commands.
    virtual void remember(const std::vector<std::wstring>& lines) = 0;
    /// The prompt is shown at the beginning of the terminal's last line, over what stands there. Commands and
    /// answers have each their own lines before. Escape and Ctrl-C are told at once, whatever stands in the
    /// line.
    virtual Typed read(std::wstring_view prompt, bool isCommand, const Completer& completer,
                       std::wstring& line) = 0;
};
