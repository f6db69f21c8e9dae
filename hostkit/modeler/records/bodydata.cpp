#include "bodydata.h"

#include "binarytokens.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace hostkit::modeler {

namespace {

constexpr int kFirstVersionWithHeader = 200;
constexpr int kFirstVersionWithIds = 700;
constexpr std::size_t kDeepest = 64;

bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\0'; }

std::string_view nextWord(std::string_view& rest) {
    std::size_t begin = 0;
    while (begin < rest.size() && isBlank(rest[begin])) ++begin;
    std::size_t end = begin;
    while (end < rest.size() && !isBlank(rest[end])) ++end;
    const std::string_view word = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return word;
}

template <class T>
std::optional<T> numberOf(std::string_view word) {
    T value{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size()) return {};
    return value;
}

bool isEndWord(std::string_view word) {
    return word == "End-of-ACIS-data" || word == "End-of-ASM-data" ||
           word.starts_with("Begin-of-ACIS-History");
}

BodyRecords faulty(BodyRecords result, const char* fault) {
    result.records.clear();
    result.fault = fault;
    return result;
}

void dropLine(std::string_view& rest) { rest.remove_prefix(std::min(rest.find('\n'), rest.size() - 1) + 1); }

// "@n text" may hold any signs; the blank before the text is no part of it. False where fewer follow.
bool dropCounted(std::string_view word, std::string_view& rest) {
    const std::optional<std::size_t> size = numberOf<std::size_t>(word.substr(1));
    if (!size) return true;
    if (*size >= rest.size()) return false;
    rest.remove_prefix(*size + 1);
    return true;
}

// From behind the name to the end sign; false where there is none.
bool takeFields(std::string_view& rest, BodyRecord& record) {
    const char* const begin = rest.data();
    for (;;) {
        const std::string_view word = nextWord(rest);
        if (word.empty()) return false;
        if (word == "#") {
            record.fields = {begin, static_cast<std::size_t>(word.data() - begin)};
            return true;
        }
        if (word.front() == '@' && word.size() > 1 && !dropCounted(word, rest)) return false;
    }
}

BodyRecords readText(std::string_view bytes) {
    BodyRecords result;
    std::string_view rest = bytes;
    const std::optional<int> version = numberOf<int>(nextWord(rest));
    if (!version || *version < 1) return faulty(std::move(result), "the first line has no version");
    const std::optional<std::int64_t> count = numberOf<std::int64_t>(nextWord(rest));
    if (!count) return faulty(std::move(result), "the first line has no count of records");
    result.version = *version;
    for (int line = *version < kFirstVersionWithHeader ? 1 : 3; line > 0 && !rest.empty(); --line)
        dropLine(rest);
    while (*count <= 0 || std::cmp_less(result.records.size(), *count)) {
        std::string_view name = nextWord(rest);
        if (!name.empty() && name.front() == '-' && numberOf<std::int64_t>(name)) name = nextWord(rest);
        if (name.empty()) break;
        if (isEndWord(name)) {
            result.hasHistory = name.starts_with("Begin");
            break;
        }
        BodyRecord record{std::string(name), {}};
        if (!takeFields(rest, record)) return faulty(std::move(result), "a record has no end");
        result.records.push_back(std::move(record));
        result.end = static_cast<std::size_t>(rest.data() - bytes.data());
    }
    return result;
}

// The name's parts, joined; false where no name stands.
bool takeName(std::string_view& rest, std::string& name) {
    name.clear();
    for (;;) {
        const std::optional<BinaryToken> token = takeBinaryToken(rest);
        if (!token || (token->tag != BinaryTag::namePart && token->tag != BinaryTag::nameEnd)) return false;
        name += token->bytes;
        if (token->tag == BinaryTag::nameEnd) return true;
        name += '-';
    }
}

bool takeBinaryFields(std::string_view& rest, BodyRecord& record) {
    const char* const begin = rest.data();
    for (std::size_t depth = 0;;) {
        const char* const place = rest.data();
        const std::optional<BinaryToken> token = takeBinaryToken(rest);
        if (!token) return false;
        if (token->tag == BinaryTag::begin && ++depth > kDeepest) return false;
        if (token->tag == BinaryTag::end && depth-- == 0) return false;
        if (token->tag == BinaryTag::recordEnd && depth == 0) {
            record.fields = {begin, static_cast<std::size_t>(place - begin)};
            return true;
        }
    }
}

BodyRecords readBinary(std::string_view bytes) {
    BodyRecords result;
    result.form = BodyForm::binary;
    std::string_view rest = bytes.substr(kBinarySignatureSize);
    constexpr std::size_t headSize = 16;
    if (rest.size() < headSize) return faulty(std::move(result), "the head is cut");
    result.version = binaryInteger(rest);
    rest.remove_prefix(headSize);
    for (int values = 6; values > 0; --values)
        if (!takeBinaryToken(rest)) return faulty(std::move(result), "the head is cut");
    while (!rest.empty()) {
        BodyRecord record;
        if (!takeName(rest, record.name)) return faulty(std::move(result), "a record has no name");
        if (isEndWord(record.name)) {
            result.hasHistory = record.name.starts_with("Begin");
            break;
        }
        if (!takeBinaryFields(rest, record)) return faulty(std::move(result), "a record has no end");
        result.records.push_back(std::move(record));
        result.end = static_cast<std::size_t>(rest.data() - bytes.data());
    }
    return result;
}

} // namespace

BodyRecords readBodyRecords(std::string_view bytes) {
    if (bytes.starts_with("ACIS BinaryFile") || bytes.starts_with("ASM BinaryFile4"))
        return readBinary(bytes);
    if (bytes.starts_with("ASM BinaryFile")) return faulty({}, "a kernel newer than those that are read");
    return readText(bytes);
}

void scramble(std::string& line) {
    for (char& c : line)
        if (c > ' ' && c < 0x7F) c = static_cast<char>(0x9F - c);
}

BodyFields::BodyFields(const BodyRecords& records, const BodyRecord& record, bool hasPattern)
    : m_rest(record.fields)
    , m_form(records.form) {
    (void)pointer();
    if (records.version < kFirstVersionWithIds) return;
    (void)real();
    if (hasPattern) (void)pointer();
}

// Makes the next token the one at hand. False at the end.
bool BodyFields::next() {
    if (m_isPeeked || !m_isGood) return m_isGood;
    if (m_form == BodyForm::text) {
        m_token = nextWord(m_rest);
        return m_isPeeked = !m_token.empty();
    }
    const std::optional<BinaryToken> token = takeBinaryToken(m_rest);
    if (!token) return false;
    m_tag = static_cast<std::uint8_t>(token->tag);
    m_token = token->bytes;
    m_coordinate = 0;
    return m_isPeeked = true;
}

bool BodyFields::isAtEnd() { return !next(); }

bool BodyFields::isAtPointer() {
    if (!next()) return false;
    return m_form == BodyForm::text ? m_token.front() == '$'
                                    : m_tag == static_cast<std::uint8_t>(BinaryTag::pointer);
}

bool BodyFields::isAtNumber() {
    if (!next()) return false;
    if (m_form == BodyForm::binary)
        return m_tag == static_cast<std::uint8_t>(BinaryTag::real) ||
               m_tag == static_cast<std::uint8_t>(BinaryTag::integer);
    return numberOf<double>(m_token).has_value();
}

std::int64_t BodyFields::pointer() {
    if (!isAtPointer()) return static_cast<std::int64_t>(fail()) - 1;
    m_isPeeked = false;
    if (m_form == BodyForm::binary) return binaryInteger(m_token);
    const std::optional<std::int64_t> number = numberOf<std::int64_t>(m_token.substr(1));
    return number ? *number : static_cast<std::int64_t>(fail()) - 1;
}

double BodyFields::real() {
    if (!next()) return fail();
    double value = 0.0;
    if (m_form == BodyForm::text) {
        const std::optional<double> number = numberOf<double>(m_token);
        m_isPeeked = false;
        if (!number) return fail();
        value = *number;
    } else {
        const auto tag = static_cast<BinaryTag>(m_tag);
        const bool isTriple = tag == BinaryTag::position || tag == BinaryTag::direction;
        if (tag == BinaryTag::integer || tag == BinaryTag::enumeration)
            value = binaryInteger(m_token);
        else if (tag == BinaryTag::real || isTriple)
            value = binaryReal(m_token.substr(static_cast<std::size_t>(m_coordinate) * sizeof value));
        else
            return fail();
        m_isPeeked = isTriple && ++m_coordinate < 3;
    }
    return std::isfinite(value) ? value : fail();
}

bool BodyFields::logical() {
    if (!next()) return fail() != 0.0;
    m_isPeeked = false;
    if (m_form == BodyForm::binary) {
        if (m_tag == static_cast<std::uint8_t>(BinaryTag::isTrue)) return true;
        if (m_tag == static_cast<std::uint8_t>(BinaryTag::isFalse)) return false;
        m_isPeeked = true;
        return real() != 0.0;
    }
    constexpr std::string_view yes[] = {"1", "reversed", "double",  "in",   "reverse_v",
                                        "F", "rotate",   "reflect", "shear"};
    constexpr std::string_view no[] = {"0", "forward",   "single",     "out",     "forward_v",
                                       "I", "no_rotate", "no_reflect", "no_shear"};
    if (std::find(std::begin(yes), std::end(yes), m_token) != std::end(yes)) return true;
    if (std::find(std::begin(no), std::end(no), m_token) == std::end(no)) fail();
    return false;
}

AcGePoint3d BodyFields::point() {
    const AcGeVector3d v = vector();
    return {v.x, v.y, v.z};
}

AcGeVector3d BodyFields::vector() {
    const double x = real();
    const double y = real();
    const double z = real();
    return {x, y, z};
}

void BodyFields::skipInterval() {
    for (int end = 0; end < 2; ++end)
        if (logical()) (void)real();
}

void BodyFields::enterLongString() {
    if (m_form == BodyForm::text || !next() || m_tag != static_cast<std::uint8_t>(BinaryTag::longString))
        return;
    m_rest = m_token;
    m_form = BodyForm::text;
    m_isPeeked = false;
}

std::string_view BodyFields::string() {
    if (!next()) return {};
    m_isPeeked = false;
    if (m_form == BodyForm::binary) return m_token;
    if (m_token.starts_with('@')) m_token.remove_prefix(1);
    const std::optional<std::size_t> size = numberOf<std::size_t>(m_token);
    if (!size || *size >= m_rest.size()) return {};
    const std::string_view text = m_rest.substr(1, *size);
    m_rest.remove_prefix(*size + 1);
    return text;
}

} // namespace hostkit::modeler
