#include "registrytext.h"

#include "textencoding.h"
#include "winreg.h"

#include <cstring>
#include <optional>

namespace hostkit {

namespace {

// --- Values as bytes ---------------------------------------------------------------------------------------

std::string bytesOfText(std::wstring_view text) {
    std::string bytes((text.size() + 1) * sizeof(wchar_t), '\0');
    std::memcpy(bytes.data(), text.data(), text.size() * sizeof(wchar_t));
    return bytes;
}

// The text of a value that is whole wide characters of Unicode with one terminator, at the end.
std::optional<std::wstring> textOfBytes(const std::string& bytes) {
    if (bytes.empty() || bytes.size() % sizeof(wchar_t) != 0) return std::nullopt;
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), bytes.size());
    if (text.find(L'\0') != text.size() - 1) return std::nullopt;
    text.pop_back();
    for (const wchar_t character : text)
        if (static_cast<char32_t>(character) > 0x10FFFF) return std::nullopt;
    return text;
}

std::string bytesOfNumber(std::uint64_t number, std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(number >> (8 * i));
    return bytes;
}

int hexadecimalDigit(wchar_t character) {
    if (character >= L'0' && character <= L'9') return static_cast<int>(character - L'0');
    if (character >= L'a' && character <= L'f') return static_cast<int>(character - L'a') + 10;
    if (character >= L'A' && character <= L'F') return static_cast<int>(character - L'A') + 10;
    return -1;
}

// --- Reading -----------------------------------------------------------------------------------------------

// One line, read from its start. Every take tells whether it found what it wanted; the line behind it is
// rest.
class Line {
public:
    explicit Line(std::wstring_view rest)
        : m_rest(rest) {}

    void skipBlanks() {
        while (!m_rest.empty() && (m_rest[0] == L' ' || m_rest[0] == L'\t')) m_rest.remove_prefix(1);
    }
    bool isAtEnd() const { return m_rest.empty(); }
    bool take(std::wstring_view text) {
        if (!m_rest.starts_with(text)) return false;
        m_rest.remove_prefix(text.size());
        return true;
    }

    std::optional<std::wstring> takeQuoted() {
        if (!take(L"\"")) return std::nullopt;
        std::wstring text;
        while (!m_rest.empty()) {
            const wchar_t character = m_rest[0];
            m_rest.remove_prefix(1);
            if (character == L'"') return text;
            if (character != L'\\') {
                text += character;
            } else if (!takeEscape(text)) {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    // Up to the given number of digits; nothing when there is none or there are more.
    std::optional<std::uint64_t> takeHexadecimal(std::size_t mostDigits) {
        std::uint64_t number = 0;
        std::size_t digits = 0;
        for (int digit; !m_rest.empty() && (digit = hexadecimalDigit(m_rest[0])) >= 0; ++digits) {
            if (digits == mostDigits) return std::nullopt;
            number = number << 4 | static_cast<unsigned>(digit);
            m_rest.remove_prefix(1);
        }
        return digits ? std::optional(number) : std::nullopt;
    }

private:
    bool takeEscape(std::wstring& text) {
        if (take(L"\\")) return text += L'\\', true;
        if (take(L"\"")) return text += L'"', true;
        if (take(L"n")) return text += L'\n', true;
        if (take(L"r")) return text += L'\r', true;
        if (!take(L"u{")) return false;
        const auto code = takeHexadecimal(8);
        if (!code || *code == 0 || !take(L"}")) return false;
        text += static_cast<wchar_t>(static_cast<std::uint32_t>(*code));
        return true;
    }

    std::wstring_view m_rest;
};

constexpr const wchar_t* notAValue = L"the value is neither text, dword:, qword:, expand: nor hex(type):";

class TextReader {
public:
    explicit TextReader(RegistryTree& tree)
        : m_tree(tree) {}

    std::vector<RegistryTextProblem> run(std::string_view text) {
        if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
        while (!text.empty()) {
            const std::size_t end = text.find('\n');
            ++m_line;
            readLine(text.substr(0, end));
            if (end == std::string_view::npos) break;
            text.remove_prefix(end + 1);
        }
        return std::move(m_problems);
    }

private:
    void tell(const wchar_t* reason) { m_problems.push_back({m_line, reason}); }

    void readLine(std::string_view bytes) {
        if (bytes.ends_with('\r')) bytes.remove_suffix(1);
        std::optional<Utf8Fault> fault;
        const std::wstring text = wideFromUtf8(bytes, &fault);
        Line line(text);
        line.skipBlanks();
        if (line.isAtEnd() || line.take(L";")) return;
        const bool isKey = line.take(L"[");
        if (fault || text.find(L'\0') != std::wstring::npos) {
            tell(fault ? L"the line is not UTF-8 text" : L"the line holds a NUL character");
            if (isKey) m_key = nullptr, m_keyIsBad = true;
            return;
        }
        if (isKey)
            readKey(text);
        else
            readValue(line);
    }

    void readKey(std::wstring_view text) {
        m_key = nullptr;
        m_keyIsBad = true;
        const std::size_t start = text.find(L'[') + 1;
        const std::size_t end = text.find_last_not_of(L" \t");
        if (text[end] != L']' || end < start) return tell(L"a key line has to end with ]");
        const std::wstring_view path = text.substr(start, end - start);
        for (int i = 0; i < registryHiveCount; ++i) {
            const RegistryHive hive = static_cast<RegistryHive>(i);
            const std::wstring_view name = nameOfHive(hive);
            const std::wstring_view first = path.substr(0, path.find(L'\\'));
            if (!equalFolded(name, first)) continue;
            m_key = m_tree.make(hive, path.substr(name.size()));
            m_keyIsBad = m_key == nullptr;
            return m_keyIsBad ? tell(L"the key's name is none that a key can have") : void();
        }
        tell(L"the key does not begin with the name of a hive, such as HKEY_CURRENT_USER");
    }

    void readValue(Line& line) {
        std::optional<std::wstring> name = line.take(L"@") ? std::wstring() : line.takeQuoted();
        if (!name) return tell(L"the line is neither a [key], a \"name\"=value nor a comment");
        if (name->size() > RegistryTree::maximumValueName) return tell(L"the value's name is too long");
        line.skipBlanks();
        if (!line.take(L"=")) return tell(L"= is missing after the value's name");
        line.skipBlanks();
        std::optional<RegistryValue> value = takeValue(line);
        if (!value) return tell(notAValue);
        line.skipBlanks();
        if (!line.isAtEnd()) return tell(L"something stands behind the value");
        if (!m_key) return m_keyIsBad ? void() : tell(L"the value stands under no [key]");
        m_key->values[*name] = std::move(*value);
    }

    static std::optional<RegistryValue> takeValue(Line& line) {
        if (line.take(L"dword:")) return takeNumber(line, REG_DWORD, 4);
        if (line.take(L"qword:")) return takeNumber(line, REG_QWORD, 8);
        if (line.take(L"hex(")) return takeBytes(line);
        const std::uint32_t type = line.take(L"expand:") ? REG_EXPAND_SZ : REG_SZ;
        const auto text = line.takeQuoted();
        if (!text) return std::nullopt;
        return RegistryValue{type, bytesOfText(*text)};
    }

    static std::optional<RegistryValue> takeNumber(Line& line, std::uint32_t type, std::size_t size) {
        const auto number = line.takeHexadecimal(2 * size);
        if (!number) return std::nullopt;
        return RegistryValue{type, bytesOfNumber(*number, size)};
    }

    static std::optional<RegistryValue> takeBytes(Line& line) {
        const auto type = line.takeHexadecimal(8);
        if (!type || !line.take(L"):")) return std::nullopt;
        RegistryValue value{static_cast<std::uint32_t>(*type), {}};
        line.skipBlanks();
        if (line.isAtEnd()) return value;
        do {
            line.skipBlanks();
            const auto byte = line.takeHexadecimal(2);
            if (!byte) return std::nullopt;
            value.bytes += static_cast<char>(*byte);
            line.skipBlanks();
        } while (line.take(L","));
        return value;
    }

    RegistryTree& m_tree;
    RegistryKey* m_key = nullptr;
    bool m_keyIsBad = false;
    std::size_t m_line = 0;
    std::vector<RegistryTextProblem> m_problems;
};

// --- Writing -----------------------------------------------------------------------------------------------

void appendHexadecimal(std::string& out, std::uint64_t number, int digits) {
    for (int i = digits - 1; i >= 0; --i) out += "0123456789abcdef"[number >> (4 * i) & 15];
}

bool needsCode(wchar_t character) {
    const char32_t code = static_cast<char32_t>(character);
    return code < 0x20 || code == 0x7F || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000);
}

void appendQuoted(std::string& out, std::wstring_view text) {
    out += '"';
    for (const wchar_t character : text) {
        if (character == L'\\' || character == L'"') {
            out += {'\\', static_cast<char>(character)};
        } else if (character == L'\n') {
            out += "\\n";
        } else if (character == L'\r') {
            out += "\\r";
        } else if (needsCode(character)) {
            out += "\\u{";
            appendHexadecimal(out, static_cast<char32_t>(character), 8);
            out += '}';
        } else {
            appendUtf8(out, character);
        }
    }
    out += '"';
}

std::uint64_t numberOfBytes(const std::string& bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
}

void appendBytes(std::string& out, const RegistryValue& value) {
    out += "hex(";
    appendHexadecimal(out, value.type, value.type > 0xF ? 8 : 1);
    out += "):";
    for (std::size_t i = 0; i < value.bytes.size(); ++i) {
        if (i > 0) out += ',';
        appendHexadecimal(out, static_cast<unsigned char>(value.bytes[i]), 2);
    }
}

void appendValue(std::string& out, const RegistryValue& value) {
    if (value.type == REG_DWORD && value.bytes.size() == 4) {
        out += "dword:";
        return appendHexadecimal(out, numberOfBytes(value.bytes), 8);
    }
    if (value.type == REG_QWORD && value.bytes.size() == 8) {
        out += "qword:";
        return appendHexadecimal(out, numberOfBytes(value.bytes), 16);
    }
    const bool isText = value.type == REG_SZ || value.type == REG_EXPAND_SZ;
    const auto text = isText ? textOfBytes(value.bytes) : std::nullopt;
    if (!text) return appendBytes(out, value);
    if (value.type == REG_EXPAND_SZ) out += "expand:";
    appendQuoted(out, *text);
}

void appendKey(std::string& out, const std::string& path, const RegistryKey& key, bool isHive) {
    // A key that only leads to others is told by them.
    if (!key.values.empty() || (key.keys.empty() && !isHive)) {
        out += "\n[" + path + "]\n";
        for (const auto& [name, value] : key.values) {
            if (name.empty())
                out += '@';
            else
                appendQuoted(out, name);
            out += '=';
            appendValue(out, value);
            out += '\n';
        }
    }
    for (const auto& [name, below] : key.keys)
        appendKey(out, path + '\\' + utf8FromWide(name), *below, false);
}

} // namespace

std::vector<RegistryTextProblem> readRegistryText(std::string_view text, RegistryTree& tree) {
    return TextReader(tree).run(text);
}

bool isRegistryText(std::string_view text) {
    RegistryTree ignored;
    if (readRegistryText(text, ignored).empty()) return true;
    for (std::size_t at = 0; (at = text.find('[', at)) != std::string_view::npos; ++at) {
        const std::size_t end = text.substr(0, at).find_last_not_of(" \t\xEF\xBB\xBF");
        const bool isAtStart = end == std::string_view::npos || text[end] == '\n';
        if (isAtStart && equalFolded(wideFromUtf8(text.substr(at + 1, 5)), L"HKEY_")) return true;
    }
    return false;
}

std::string writeRegistryText(const RegistryTree& tree) {
    std::string out =
        "; Registry of the CAD host, UTF-8: a [key] a line, its values below it. Comments are not kept.\n";
    for (int i = 0; i < registryHiveCount; ++i) {
        const RegistryHive hive = static_cast<RegistryHive>(i);
        appendKey(out, utf8FromWide(nameOfHive(hive)), *tree.find(hive, {}), true);
    }
    return out;
}

} // namespace hostkit
