#include "groupblock.h"

#include "dbhandle.h"
#include "groupkinds.h"
#include "hexadecimal.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

using AcDb::GroupKind;

namespace hostkit {
namespace {

constexpr std::size_t longLengthMark = 0xFFFF;
constexpr wchar_t replacementCharacter = 0xFFFD;

std::size_t utf16Length(std::wstring_view text) {
    std::size_t units = text.size();
    for (const wchar_t character : text) units += character > 0xFFFF && character < 0x110000;
    return units;
}

unsigned char* putUnit(unsigned char* at, char32_t value) {
    const auto unit = static_cast<char16_t>(value);
    std::memcpy(at, &unit, sizeof unit);
    return at + sizeof unit;
}

void toUtf16(std::wstring_view text, unsigned char* at) {
    for (const wchar_t character : text) {
        const auto code = static_cast<char32_t>(character);
        if (code < 0x10000)
            at = putUnit(at, code);
        else if (code < 0x110000)
            at = putUnit(putUnit(at, 0xD7C0 + (code >> 10)), 0xDC00 + (code & 0x3FF));
        else
            at = putUnit(at, replacementCharacter);
    }
}

bool isHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Room for as many characters as there are units; the number of characters.
std::size_t fromUtf16(const unsigned char* bytes, std::size_t units, wchar_t* text) {
    wchar_t* end = text;
    char16_t high = 0;
    for (std::size_t i = 0; i < units; ++i) {
        char16_t unit;
        std::memcpy(&unit, bytes + 2 * i, 2);
        if (isLow(unit) && isHigh(high)) {
            end[-1] = static_cast<wchar_t>(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
            high = 0;
            continue;
        }
        *end++ = static_cast<wchar_t>(unit);
        high = unit;
    }
    return static_cast<std::size_t>(end - text);
}

char hexDigit(unsigned value) { return "0123456789ABCDEF"[value & 15]; }

} // namespace

template <typename T>
void GroupBlock::put(T value) {
    const std::size_t begin = m_bytes.size();
    m_bytes.resize(begin + sizeof value);
    std::memcpy(m_bytes.data() + begin, &value, sizeof value);
}

namespace {

// Room for so many elements of that size behind their number.
unsigned char* putLength(std::vector<unsigned char>& bytes, std::size_t length, std::size_t elementSize) {
    const std::size_t begin = bytes.size();
    const bool isLong = length >= longLengthMark;
    const std::size_t lengthSize = sizeof(std::uint16_t) + (isLong ? sizeof(std::uint32_t) : 0);
    bytes.resize(begin + lengthSize + length * elementSize);
    const auto small = static_cast<std::uint16_t>(isLong ? longLengthMark : length);
    const auto whole = static_cast<std::uint32_t>(length);
    std::memcpy(bytes.data() + begin, &small, sizeof small);
    if (isLong) std::memcpy(bytes.data() + begin + sizeof small, &whole, sizeof whole);
    return bytes.data() + begin + lengthSize;
}

} // namespace

void GroupBlock::appendText(short code, std::wstring_view text) {
    put(code);
    toUtf16(text, putLength(m_bytes, utf16Length(text), sizeof(char16_t)));
}

void GroupBlock::appendReal(short code, double value) {
    put(code);
    put(value);
}

void GroupBlock::appendPoint(short code, const double* coordinates, int dimension) {
    put(code);
    put(static_cast<unsigned char>(dimension));
    for (int i = 0; i < dimension; ++i) put(coordinates[i]);
}

void GroupBlock::appendInteger(short code, Adesk::Int64 value) {
    put(code);
    switch (kindOfCode(code)) {
    case GroupKind::kInt64:
        return put(value);
    case GroupKind::kInt32:
        return put(static_cast<Adesk::Int32>(value));
    case GroupKind::kBool:
        return put(static_cast<unsigned char>(value != 0));
    default:
        return put(static_cast<Adesk::Int16>(value));
    }
}

void GroupBlock::appendHandle(short code, Adesk::UInt64 handle) {
    put(code);
    put(handle);
}

void GroupBlock::appendBinary(short code, const void* bytes, std::size_t size) {
    put(code);
    unsigned char* const at = putLength(m_bytes, size, 1);
    if (size) std::memcpy(at, bytes, size);
}

void GroupBlock::append(const AcDbDxfGroup& group) {
    switch (group.kind) {
    case GroupKind::kText:
        return appendText(group.code, group.text);
    case GroupKind::kPoint:
        return appendPoint(group.code, group.point, group.dimension == 2 ? 2 : 3);
    case GroupKind::kReal:
        return appendReal(group.code, group.real);
    case GroupKind::kHandle:
        return appendHandle(group.code, group.handle());
    case GroupKind::kBinary:
        return appendHexadecimal(group.code, group.text);
    default:
        return appendInteger(group.code, group.integer);
    }
}

void GroupBlock::appendHexadecimal(short code, std::wstring_view digits) {
    const std::vector<unsigned char> bytes = bytesOfHexadecimal(digits);
    appendBinary(code, bytes.data(), bytes.size());
}

void GroupBlock::appendAll(const GroupBlock& other) { appendPart(other, 0, other.size()); }

void GroupBlock::appendPart(const GroupBlock& other, std::size_t from, std::size_t to) {
    const std::size_t begin = m_bytes.size();
    m_bytes.resize(begin + (to - from)); // also where the other block is this one
    if (to > from) std::memcpy(m_bytes.data() + begin, other.m_bytes.data() + from, to - from);
}

Acad::ErrorStatus GroupBlock::appendRecord(const resbuf& record) {
    const short code = record.restype;
    if (code < 0) return Acad::eInvalidDxfCode;
    if (code >= RTNONE) return Acad::eInvalidResBuf;
    const ads_u_val& value = record.resval;
    switch (kindOfCode(code)) {
    case GroupKind::kText:
        appendText(code, value.rstring ? value.rstring : L"");
        break;
    case GroupKind::kHandle:
        appendHandle(code, value.rstring ? AcDbHandle(value.rstring).value() : 0);
        break;
    case GroupKind::kPoint:
        appendPoint(code, value.rpoint);
        break;
    case GroupKind::kReal:
        appendReal(code, value.rreal);
        break;
    case GroupKind::kInt64:
        appendInteger(code, value.mnInt64);
        break;
    case GroupKind::kInt32:
        appendInteger(code, value.rlong);
        break;
    case GroupKind::kBinary:
        if (value.rbinary.clen < 0 || (value.rbinary.clen > 0 && !value.rbinary.buf))
            return Acad::eInvalidResBuf;
        appendBinary(code, value.rbinary.buf, static_cast<std::size_t>(value.rbinary.clen));
        break;
    default:
        appendInteger(code, value.rint);
    }
    return Acad::eOk;
}

Acad::ErrorStatus GroupBlock::appendList(const resbuf* list) {
    const std::size_t before = m_bytes.size();
    for (; list; list = list->rbnext) {
        const Acad::ErrorStatus status = appendRecord(*list);
        if (status == Acad::eOk) continue;
        m_bytes.resize(before);
        return status;
    }
    return Acad::eOk;
}

namespace {

void setHandleText(resbuf& record, Adesk::UInt64 handle) {
    wchar_t buffer[17];
    AcDbHandle(handle).getIntoAsciiBuffer(buffer);
    record.resval.rstring = acutNewString(buffer);
}

void setValue(resbuf& record, const AcDbDxfGroup& group) {
    ads_u_val& value = record.resval;
    switch (group.kind) {
    case GroupKind::kHandle:
        setHandleText(record, group.handle());
        break;
    case GroupKind::kPoint:
        std::copy_n(group.point, 3, value.rpoint);
        break;
    case GroupKind::kReal:
        value.rreal = group.real;
        break;
    case GroupKind::kInt64:
        value.mnInt64 = group.integer;
        break;
    case GroupKind::kInt32:
        value.rlong = static_cast<Adesk::Int32>(group.integer);
        break;
    case GroupKind::kBinary:
        value.rbinary = binaryOfHexadecimal(group.text);
        break;
    default:
        value.rint = static_cast<short>(group.integer);
    }
}

} // namespace

resbuf* GroupBlock::toList(std::size_t from, std::size_t to) const {
    resbuf* head = nullptr;
    resbuf** tail = &head;
    GroupWalker walker(*this, from);
    while (walker.position() < to) {
        resbuf* record = walker.nextRecord();
        if (!record) {
            acutRelRb(head); // half a list would be taken for the whole
            throw std::bad_alloc();
        }
        *tail = record;
        tail = &record->rbnext;
    }
    return head;
}

template <typename T>
T GroupWalker::take() {
    T value{};
    std::memcpy(&value, m_block.m_bytes.data() + m_position, sizeof(T));
    m_position += sizeof(T);
    return value;
}

std::size_t GroupWalker::takeLength() {
    const std::size_t length = take<std::uint16_t>();
    return length == longLengthMark ? take<std::uint32_t>() : length;
}

void GroupWalker::takeText() {
    const std::size_t units = takeLength();
    m_text.resize(units);
    m_text.resize(fromUtf16(m_block.m_bytes.data() + m_position, units, m_text.data()));
    m_position += 2 * units;
}

void GroupWalker::takeBinary() {
    const std::size_t size = takeLength();
    m_text.clear();
    m_text.reserve(2 * size);
    for (std::size_t i = 0; i < size; ++i) {
        const unsigned byte = m_block.m_bytes[m_position + i];
        m_text.push_back(static_cast<wchar_t>(hexDigit(byte >> 4)));
        m_text.push_back(static_cast<wchar_t>(hexDigit(byte)));
    }
    m_position += size;
}

void GroupWalker::takeHandle(AcDbDxfGroup& group) {
    const auto handle = take<Adesk::UInt64>();
    wchar_t buffer[17];
    AcDbHandle(handle).getIntoAsciiBuffer(buffer);
    m_text = buffer;
    group.integer = static_cast<Adesk::Int64>(handle);
}

// Texts go straight into the record: they are most of what lists hold.
resbuf* GroupWalker::nextRecord() {
    short code = 0;
    if (!peek(code)) return nullptr;
    resbuf* const record = acutNewRb(code);
    if (!record) return nullptr;
    if (kindOfCode(code) != GroupKind::kText) {
        AcDbDxfGroup group;
        next(group);
        setValue(*record, group);
        return record;
    }
    skipBytes(sizeof code);
    const std::size_t units = takeLength();
    auto* const text = static_cast<wchar_t*>(std::malloc((units + 1) * sizeof(wchar_t)));
    if (!text) {
        acutRelRb(record);
        return nullptr;
    }
    text[fromUtf16(m_block.m_bytes.data() + m_position, units, text)] = 0;
    record->resval.rstring = text;
    skipBytes(2 * units);
    return record;
}

bool GroupWalker::peek(short& code) const {
    if (m_position >= m_block.size()) return false;
    std::memcpy(&code, m_block.m_bytes.data() + m_position, sizeof code);
    return true;
}

void GroupWalker::skip() {
    switch (kindOfCode(take<short>())) {
    case GroupKind::kText:
        skipBytes(2 * takeLength());
        break;
    case GroupKind::kBinary:
        skipBytes(takeLength());
        break;
    case GroupKind::kPoint:
        skipBytes(take<unsigned char>() * sizeof(double));
        break;
    case GroupKind::kHandle:
    case GroupKind::kReal:
    case GroupKind::kInt64:
        skipBytes(sizeof(double));
        break;
    case GroupKind::kInt32:
        skipBytes(sizeof(Adesk::Int32));
        break;
    case GroupKind::kBool:
        skipBytes(1);
        break;
    default:
        skipBytes(sizeof(Adesk::Int16));
    }
}

bool GroupBlock::isFinite() const {
    GroupWalker walker(*this);
    AcDbDxfGroup group;
    for (short code = 0; walker.peek(code);) {
        const GroupKind kind = kindOfCode(code);
        if (kind != GroupKind::kReal && kind != GroupKind::kPoint) {
            walker.skip();
            continue;
        }
        walker.next(group);
        const int count = kind == GroupKind::kReal ? 1 : group.dimension;
        if (!std::all_of(group.point, group.point + count, [](double value) { return std::isfinite(value); }))
            return false;
    }
    return true;
}

bool GroupWalker::next(AcDbDxfGroup& group) {
    if (m_position >= m_block.size()) return false;
    group = AcDbDxfGroup();
    group.code = take<short>();
    group.kind = kindOfCode(group.code);
    switch (group.kind) {
    case GroupKind::kText:
        takeText();
        group.text = m_text;
        break;
    case GroupKind::kBinary:
        takeBinary();
        group.text = m_text;
        break;
    case GroupKind::kHandle:
        takeHandle(group);
        group.text = m_text;
        break;
    case GroupKind::kPoint:
        group.dimension = take<unsigned char>();
        for (int i = 0; i < group.dimension; ++i) group.point[i] = take<double>();
        break;
    case GroupKind::kReal:
        group.real = take<double>();
        break;
    case GroupKind::kInt64:
        group.integer = take<Adesk::Int64>();
        break;
    case GroupKind::kInt32:
        group.integer = take<Adesk::Int32>();
        break;
    case GroupKind::kBool:
        group.integer = take<unsigned char>();
        break;
    default:
        group.integer = take<Adesk::Int16>();
    }
    return true;
}

} // namespace hostkit
