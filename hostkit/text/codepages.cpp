#include "casefold.h"
#include "textencoding.h"

#include <array>
#include <cerrno>
#include <iconv.h>
#include <map>
#include <memory>
#include <unordered_map>

namespace hostkit {

namespace {

constexpr wchar_t replacement = 0xFFFD;

// How the system's converter calls a code page, and how drawings call it.
struct PageNames {
    CodePage page;
    const char* converter;
    const wchar_t* drawing;
};

constexpr PageNames pageNames[] = {
    {CodePage::thai874, "CP874", L"ANSI_874"},
    {CodePage::japanese932, "CP932", L"ANSI_932"},
    {CodePage::chinese936, "CP936", L"ANSI_936"},
    {CodePage::korean949, "CP949", L"ANSI_949"},
    {CodePage::chinese950, "CP950", L"ANSI_950"},
    {CodePage::centralEurope1250, "CP1250", L"ANSI_1250"},
    {CodePage::cyrillic1251, "CP1251", L"ANSI_1251"},
    {CodePage::western1252, "CP1252", L"ANSI_1252"},
    {CodePage::greek1253, "CP1253", L"ANSI_1253"},
    {CodePage::turkish1254, "CP1254", L"ANSI_1254"},
    {CodePage::hebrew1255, "CP1255", L"ANSI_1255"},
    {CodePage::arabic1256, "CP1256", L"ANSI_1256"},
    {CodePage::baltic1257, "CP1257", L"ANSI_1257"},
    {CodePage::vietnamese1258, "CP1258", L"ANSI_1258"},
    {CodePage::utf8, "UTF-8", L"UTF-8"},
};

// Other names that drawings use for the same pages.
struct PageAlias {
    const wchar_t* name;
    CodePage page;
};

constexpr PageAlias pageAliases[] = {
    {L"ascii", CodePage::western1252},
    {L"iso8859-1", CodePage::western1252},
    {L"iso8859-2", CodePage::centralEurope1250},
    {L"iso8859-5", CodePage::cyrillic1251},
    {L"iso8859-6", CodePage::arabic1256},
    {L"iso8859-7", CodePage::greek1253},
    {L"iso8859-8", CodePage::hebrew1255},
    {L"iso8859-9", CodePage::turkish1254},
    {L"dos932", CodePage::japanese932},
    {L"gb2312", CodePage::chinese936},
    {L"big5", CodePage::chinese950},
    {L"ksc5601", CodePage::korean949},
    {L"johab", CodePage::korean949},
    {L"utf8", CodePage::utf8},
    {L"ANSI_65001", CodePage::utf8},
};

const PageNames& namesOf(CodePage page) {
    for (const PageNames& names : pageNames)
        if (names.page == page) return names;
    return pageNames[7];
}

class Converter {
public:
    Converter(const char* to, const char* from)
        : m_handle(iconv_open(to, from)) {}
    ~Converter() {
        if (isOpen()) iconv_close(m_handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool isOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    // Bytes written for one character's input, 0 when it converts to nothing that is whole.
    std::size_t convert(const char* input, std::size_t size, char* output, std::size_t room) {
        char* in = const_cast<char*>(input);
        char* out = output;
        std::size_t left = room;
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(m_handle, &in, &size, &out, &left) == static_cast<std::size_t>(-1) || size != 0) return 0;
        // Some pages hold a letter back to join it with a mark that may follow; here each character stands
        // alone.
        if (iconv(m_handle, nullptr, nullptr, &out, &left) == static_cast<std::size_t>(-1)) return 0;
        return room - left;
    }

private:
    iconv_t m_handle;
};

// A code page as two tables, filled once from the system's converter.
struct PageTable {
    std::array<wchar_t, 256> single{};
    std::array<bool, 256> isLead{};
    std::unordered_map<unsigned, wchar_t> pairs;
    std::unordered_map<wchar_t, unsigned> bytes;
};

wchar_t decodeOne(Converter& converter, const char* bytes, std::size_t count) {
    wchar_t wide[4];
    const std::size_t written = converter.convert(bytes, count, reinterpret_cast<char*>(wide), sizeof wide);
    return written == sizeof(wchar_t) ? wide[0] : replacement;
}

void fillPairs(PageTable& table, Converter& converter, unsigned lead) {
    for (unsigned trail = 0x40; trail < 0x100; ++trail) {
        const char bytes[2] = {static_cast<char>(lead), static_cast<char>(trail)};
        const wchar_t character = decodeOne(converter, bytes, 2);
        if (character == replacement) continue;
        table.isLead[lead] = true;
        table.pairs.emplace(lead << 8 | trail, character);
        table.bytes.emplace(character, lead << 8 | trail);
    }
}

std::unique_ptr<PageTable> makeTable(CodePage page) {
    auto table = std::make_unique<PageTable>();
    Converter converter("WCHAR_T", namesOf(page).converter);
    const bool pairs = isMultiByte(page);
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char bytes[1] = {static_cast<char>(byte)};
        wchar_t character = byte < 0x80 ? static_cast<wchar_t>(byte) : replacement;
        if (byte >= 0x80 && converter.isOpen()) character = decodeOne(converter, bytes, 1);
        if (character == replacement && !pairs) character = static_cast<wchar_t>(byte);
        table->single[byte] = character;
        if (character != replacement) table->bytes.emplace(character, byte);
        if (character == replacement && converter.isOpen()) fillPairs(*table, converter, byte);
    }
    return table;
}

const PageTable& tableOf(CodePage page) {
    static std::map<CodePage, std::unique_ptr<PageTable>> tables;
    std::unique_ptr<PageTable>& table = tables[page];
    if (!table) table = makeTable(page);
    return *table;
}

void appendUnmappable(std::string& bytes, wchar_t character, const UnmappableHandler& unmappable) {
    if (unmappable)
        unmappable(bytes, character);
    else
        bytes += '?';
}

bool isUnicode(wchar_t character) {
    const char32_t code = static_cast<char32_t>(character);
    return code <= 0x10FFFF && !(code >= 0xD800 && code < 0xE000);
}

std::string encodeUtf8(std::wstring_view text, const UnmappableHandler& unmappable) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        if (isUnicode(character))
            appendUtf8(bytes, character);
        else
            appendUnmappable(bytes, character, unmappable);
    }
    return bytes;
}

std::string encodeAnsi(std::wstring_view text, const UnmappableHandler& unmappable) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        if (const auto byte = ansiFromWide(character))
            bytes += static_cast<char>(*byte);
        else
            appendUnmappable(bytes, character, unmappable);
    }
    return bytes;
}

} // namespace

std::optional<CodePage> codePageFromName(std::wstring_view name) {
    for (const PageNames& names : pageNames)
        if (equalFolded(names.drawing, name)) return names.page;
    for (const PageAlias& alias : pageAliases)
        if (equalFolded(alias.name, name)) return alias.page;
    return std::nullopt;
}

std::wstring nameOfCodePage(CodePage page) { return namesOf(page).drawing; }

bool isMultiByte(CodePage page) {
    return page == CodePage::japanese932 || page == CodePage::chinese936 || page == CodePage::korean949 ||
           page == CodePage::chinese950;
}

std::wstring decodeText(CodePage page, std::string_view bytes) {
    if (page == CodePage::utf8) return wideFromUtf8(bytes);
    if (page == CodePage::western1252) return wideFromAnsi(bytes);
    const PageTable& table = tableOf(page);
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned lead = static_cast<unsigned char>(bytes[at]);
        wchar_t character = table.single[lead];
        if (table.isLead[lead] && at + 1 < bytes.size()) {
            const auto pair = table.pairs.find(lead << 8 | static_cast<unsigned char>(bytes[at + 1]));
            if (pair != table.pairs.end()) {
                character = pair->second;
                ++at;
            }
        }
        text += character;
    }
    return text;
}

std::string encodeText(CodePage page, std::wstring_view text, const UnmappableHandler& unmappable) {
    if (page == CodePage::utf8) return encodeUtf8(text, unmappable);
    if (page == CodePage::western1252) return encodeAnsi(text, unmappable);
    const PageTable& table = tableOf(page);
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        const auto found = table.bytes.find(character);
        if (found == table.bytes.end()) {
            appendUnmappable(bytes, character, unmappable);
            continue;
        }
        if (found->second > 0xFF) bytes += static_cast<char>(found->second >> 8);
        bytes += static_cast<char>(found->second);
    }
    return bytes;
}

} // namespace hostkit
