// Text of drawings: code pages, UTF-8 and the escapes for characters and controls; leaves out the display
// codes (%%c), which stay as they are.
#pragma once

#include "textencoding.h"

#include <string>
#include <string_view>

namespace hostkit {

/// How a drawing's texts stand in its bytes.
///
/// Reading: bytes are UTF-8 or of the code page; `\U+XXXX` is a character (two of them may be a surrogate
/// pair), `\M+nXXXX` a character of an eastern code page, `^I` a control character, "^ " the caret itself. A
/// byte that is no part of a UTF-8 character becomes U+DC00 + byte, and that same byte when written.
/// Writing: the reverse; a character without a place in the code page becomes `\U+XXXX`. No line end and no
/// NUL ever gets into a value, whatever the text holds.
class DrawingText {
public:
    DrawingText() = default;
    explicit DrawingText(CodePage page)
        : m_page(page) {}

    CodePage page() const { return m_page; }
    /// Replaces the content of `text`, which holds no NUL: those of the file are passed over.
    void decode(std::string_view bytes, std::wstring& text) const;
    std::wstring decode(std::string_view bytes) const;
    /// Appends to `bytes`.
    void encode(std::wstring_view text, std::string& bytes) const;

private:
    void decodeBytes(std::string_view bytes, std::wstring& text) const;

    CodePage m_page = CodePage::utf8;
};

} // namespace hostkit
