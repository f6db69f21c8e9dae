#include "textformat.h"

#include "textencoding.h"

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <locale.h>

namespace hostkit {

namespace {

// A width or precision beyond this is a fault of its format; it counts as this much.
constexpr int largestCount = 100'000'000;

enum class Length : unsigned char { plain, byte, narrow, wide, bits32, bits64 };

// One conversion of a format: %[flags][width][.precision][length]letter.
struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    bool hasPrecision = false;
    int width = 0;
    int precision = 0;
    Length length = Length::plain;
    wchar_t letter = 0;
};

// Numbers are written in the C locale, whatever the thread's locale is.
class NumberLocale {
public:
    NumberLocale()
        : m_previous(uselocale(plain())) {}
    ~NumberLocale() { uselocale(m_previous); }
    NumberLocale(const NumberLocale&) = delete;
    NumberLocale& operator=(const NumberLocale&) = delete;

private:
    static locale_t plain() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t m_previous;
};

class ArgumentSource {
public:
    virtual ~ArgumentSource() = default;
    virtual FormatArgument next(const Conversion& conversion) = 0;
    virtual FormatArgument nextCount() = 0;
};

class TypedArguments final : public ArgumentSource {
public:
    TypedArguments(const FormatArgument* arguments, std::size_t count)
        : m_arguments(arguments)
        , m_left(count) {}
    FormatArgument next(const Conversion&) override { return nextCount(); }
    FormatArgument nextCount() override {
        if (m_left == 0) return {};
        --m_left;
        return *m_arguments++;
    }

private:
    const FormatArgument* m_arguments;
    std::size_t m_left;
};

bool isIntegerLetter(wchar_t letter) { return letter != 0 && std::wcschr(L"diuxXo", letter) != nullptr; }
bool isSignedLetter(wchar_t letter) { return letter == L'd' || letter == L'i'; }
bool isRealLetter(wchar_t letter) { return letter != 0 && std::wcschr(L"eEfFgGaA", letter) != nullptr; }

// %s and %c are wide unless h is told, %S and %C narrow unless l is told.
bool isNarrowText(const Conversion& conversion) {
    const bool capital = conversion.letter == L'S' || conversion.letter == L'C';
    if (conversion.length == Length::narrow || conversion.length == Length::byte) return true;
    return capital && conversion.length != Length::bits64 && conversion.length != Length::wide;
}

// NOLINTBEGIN(clang-analyzer-valist.Uninitialized): the constructor copies the list, which is not seen.
class VariableArguments final : public ArgumentSource {
public:
    explicit VariableArguments(va_list arguments) { va_copy(m_arguments, arguments); }
    ~VariableArguments() override { va_end(m_arguments); }
    FormatArgument nextCount() override { return va_arg(m_arguments, int); }
    FormatArgument next(const Conversion& conversion) override {
        const wchar_t letter = conversion.letter;
        if (isRealLetter(letter)) return va_arg(m_arguments, double);
        if (letter == L's' || letter == L'S') {
            if (isNarrowText(conversion)) return static_cast<const char*>(va_arg(m_arguments, char*));
            return static_cast<const wchar_t*>(va_arg(m_arguments, wchar_t*));
        }
        if (letter == L'p' || letter == L'n') return static_cast<const void*>(va_arg(m_arguments, void*));
        if (conversion.length == Length::bits64 && isIntegerLetter(letter))
            return va_arg(m_arguments, long long);
        return va_arg(m_arguments, int);
    }

private:
    va_list m_arguments;
};

// NOLINTEND(clang-analyzer-valist.Uninitialized)

class Formatter {
public:
    Formatter(const wchar_t* format, ArgumentSource& arguments)
        : m_at(format)
        , m_arguments(arguments) {}

    std::wstring run() {
        while (*m_at) {
            if (*m_at != L'%') {
                const wchar_t* end = m_at;
                while (*end && *end != L'%') ++end;
                m_result.append(m_at, end);
                m_at = end;
                continue;
            }
            ++m_at;
            convert(parse());
        }
        return std::move(m_result);
    }

private:
    Conversion parse() {
        Conversion conversion;
        parseFlags(conversion);
        conversion.width = parseCount();
        if (conversion.width < 0) {
            conversion.left = true;
            conversion.width = -conversion.width;
        }
        if (*m_at == L'.') {
            ++m_at;
            conversion.precision = parseCount();
            conversion.hasPrecision = conversion.precision >= 0;
        }
        parseLength(conversion);
        conversion.letter = *m_at;
        if (*m_at) ++m_at;
        return conversion;
    }

    void parseFlags(Conversion& conversion) {
        for (;; ++m_at) {
            switch (*m_at) {
            case L'-':
                conversion.left = true;
                break;
            case L'+':
                conversion.plus = true;
                break;
            case L' ':
                conversion.blank = true;
                break;
            case L'#':
                conversion.alternate = true;
                break;
            case L'0':
                conversion.zero = true;
                break;
            default:
                return;
            }
        }
    }

    int parseCount() {
        if (*m_at == L'*') {
            ++m_at;
            const FormatArgument argument = m_arguments.nextCount();
            if (argument.kind != FormatArgument::Kind::integer) return 0;
            const auto count = static_cast<std::int64_t>(argument.integer);
            return static_cast<int>(count < -largestCount  ? -largestCount
                                    : count > largestCount ? largestCount
                                                           : count);
        }
        int count = 0;
        for (; *m_at >= L'0' && *m_at <= L'9'; ++m_at)
            if (count < largestCount) count = count * 10 + static_cast<int>(*m_at - L'0');
        return count < largestCount ? count : largestCount;
    }

    void parseLength(Conversion& conversion) {
        struct Prefix {
            const wchar_t* text;
            Length length;
        };
        static constexpr Prefix prefixes[] = {
            {L"hh", Length::byte},  {L"h", Length::narrow},   {L"ll", Length::bits64},
            {L"l", Length::bits64}, {L"I64", Length::bits64}, {L"I32", Length::bits32},
            {L"I", Length::bits64}, {L"j", Length::bits64},   {L"z", Length::bits64},
            {L"t", Length::bits64}, {L"w", Length::wide},     {L"L", Length::plain},
        };
        for (const Prefix& prefix : prefixes) {
            const std::size_t size = std::wcslen(prefix.text);
            if (std::wcsncmp(m_at, prefix.text, size) != 0) continue;
            conversion.length = prefix.length;
            m_at += size;
            return;
        }
    }

    void convert(const Conversion& conversion) {
        const wchar_t letter = conversion.letter;
        if (letter == 0) return;
        if (letter == L'%') {
            m_result += L'%';
        } else if (letter == L's' || letter == L'S') {
            convertText(conversion, m_arguments.next(conversion));
        } else if (letter == L'c' || letter == L'C') {
            convertCharacter(conversion, m_arguments.next(conversion));
        } else if (isIntegerLetter(letter)) {
            convertInteger(conversion, m_arguments.next(conversion));
        } else if (isRealLetter(letter)) {
            convertReal(conversion, m_arguments.next(conversion));
        } else if (letter == L'p') {
            convertPointer(conversion, m_arguments.next(conversion));
        } else if (letter == L'n') {
            m_arguments.next(conversion); // writing through a format's argument is refused
        } else {
            m_result += letter;
        }
    }

    void pad(const Conversion& conversion, std::wstring_view text) {
        const std::size_t width = static_cast<std::size_t>(conversion.width);
        const std::size_t missing = text.size() < width ? width - text.size() : 0;
        if (!conversion.left) m_result.append(missing, L' ');
        m_result += text;
        if (conversion.left) m_result.append(missing, L' ');
    }

    void convertText(const Conversion& conversion, const FormatArgument& argument) {
        using Kind = FormatArgument::Kind;
        const std::size_t limit =
            conversion.hasPrecision ? static_cast<std::size_t>(conversion.precision) : SIZE_MAX;
        if (argument.kind == Kind::wide) {
            // With a precision the text need not be terminated.
            if (!argument.wide) return pad(conversion, std::wstring_view(L"(null)").substr(0, limit));
            return pad(conversion, {argument.wide, wcsnlen(argument.wide, limit)});
        }
        if (argument.kind == Kind::narrow) {
            if (!argument.narrow) return pad(conversion, std::wstring_view(L"(null)").substr(0, limit));
            return pad(conversion,
                       wideFromAnsi(std::string_view(argument.narrow, strnlen(argument.narrow, limit))));
        }
        pad(conversion, L"?");
    }

    void convertCharacter(const Conversion& conversion, const FormatArgument& argument) {
        if (argument.kind != FormatArgument::Kind::integer) return pad(conversion, L"?");
        wchar_t character = static_cast<wchar_t>(argument.integer);
        if (isNarrowText(conversion)) character = wideFromAnsi(static_cast<unsigned char>(argument.integer));
        pad(conversion, {&character, 1});
    }

    // The value in the width that the conversion tells of.
    static std::uint64_t inWidth(const Conversion& conversion, std::uint64_t value) {
        const bool isSigned = isSignedLetter(conversion.letter);
        switch (conversion.length) {
        case Length::byte:
            return isSigned ? static_cast<std::uint64_t>(static_cast<std::int8_t>(value)) : value & 0xFF;
        case Length::narrow:
            return isSigned ? static_cast<std::uint64_t>(static_cast<std::int16_t>(value)) : value & 0xFFFF;
        case Length::bits64:
            return value;
        default:
            return isSigned ? static_cast<std::uint64_t>(static_cast<std::int32_t>(value))
                            : value & 0xFFFFFFFFu;
        }
    }

    void convertInteger(const Conversion& conversion, const FormatArgument& argument) {
        using Kind = FormatArgument::Kind;
        std::uint64_t value = argument.integer;
        if (argument.kind == Kind::real) {
            if (!(argument.real > -9.2e18 && argument.real < 9.2e18)) return pad(conversion, L"?");
            value = static_cast<std::uint64_t>(static_cast<std::int64_t>(argument.real));
        } else if (argument.kind == Kind::pointer) {
            value = reinterpret_cast<std::uintptr_t>(argument.pointer);
        } else if (argument.kind != Kind::integer) {
            return pad(conversion, L"?");
        }
        appendNumber(conversion, "ll", static_cast<long long>(inWidth(conversion, value)));
    }

    void convertReal(const Conversion& conversion, const FormatArgument& argument) {
        using Kind = FormatArgument::Kind;
        if (argument.kind == Kind::integer)
            return appendNumber(conversion, "",
                                static_cast<double>(static_cast<std::int64_t>(argument.integer)));
        if (argument.kind != Kind::real) return pad(conversion, L"?");
        appendNumber(conversion, "", argument.real);
    }

    void convertPointer(const Conversion& conversion, const FormatArgument& argument) {
        std::uint64_t value = argument.integer;
        if (argument.kind == FormatArgument::Kind::none || argument.kind == FormatArgument::Kind::real)
            return pad(conversion, L"?");
        if (argument.kind != FormatArgument::Kind::integer)
            value = reinterpret_cast<std::uintptr_t>(argument.pointer);
        wchar_t digits[16];
        for (int i = 15; i >= 0; --i, value >>= 4) digits[i] = L"0123456789ABCDEF"[value & 15];
        pad(conversion, {digits, 16});
    }

    template <class Value>
    void appendNumber(const Conversion& conversion, const char* length, Value value) {
        std::string format = "%";
        if (conversion.left) format += '-';
        if (conversion.plus) format += '+';
        if (conversion.blank) format += ' ';
        if (conversion.alternate) format += '#';
        if (conversion.zero) format += '0';
        format += "*.*";
        format += length;
        format += static_cast<char>(conversion.letter);
        const int precision = conversion.hasPrecision ? conversion.precision : -1;

        const NumberLocale locale;
        char buffer[128];
        const int size =
            std::snprintf(buffer, sizeof buffer, format.c_str(), conversion.width, precision, value);
        if (size < 0) return;
        if (static_cast<std::size_t>(size) < sizeof buffer) {
            m_result.append(buffer, buffer + size);
            return;
        }
        std::string large(static_cast<std::size_t>(size) + 1, '\0');
        std::snprintf(large.data(), large.size(), format.c_str(), conversion.width, precision, value);
        m_result.append(large.begin(), large.end() - 1);
    }

    const wchar_t* m_at;
    ArgumentSource& m_arguments;
    std::wstring m_result;
};

std::wstring formatFrom(const wchar_t* format, ArgumentSource& arguments) {
    return format ? Formatter(format, arguments).run() : std::wstring();
}

} // namespace

std::wstring formatText(const wchar_t* format, const FormatArgument* arguments, std::size_t count) {
    TypedArguments source(arguments, count);
    return formatFrom(format, source);
}

std::wstring formatText(const wchar_t* format, va_list arguments) {
    VariableArguments source(arguments);
    return formatFrom(format, source);
}

} // namespace hostkit
