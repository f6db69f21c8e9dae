// Packed group lists: appending, walking and record lists; leaves out looking values up.
#pragma once

#include "dbdxfgroup.h"

#include "acadstrc.h"
#include "adsdef.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// A list of groups in one run of bytes: two bytes of code, then the value by the code's kind: reals and
/// points as doubles, integers in the width of the kind, handles in 8 bytes, texts and binaries as two bytes
/// of length (65,535 and four more bytes for longer ones) and UTF-16 or bytes. This is the drawing's own
/// binary form, and the size limit of extended data counts it.
class GroupBlock {
public:
    /// Of an object's extended data, all applications together.
    static constexpr std::size_t maxExtendedDataSize = 16383;

    bool isEmpty() const { return m_bytes.empty(); }
    std::size_t size() const { return m_bytes.size(); }
    void clear() { m_bytes.clear(); }
    void reserve(std::size_t bytes) { m_bytes.reserve(bytes); }
    void shrinkToFit() { m_bytes.shrink_to_fit(); }
    bool operator==(const GroupBlock&) const = default;
    /// No real and no coordinate is infinite or no number; no drawing form can hold one that is.
    bool isFinite() const;

    /// The kind must be that of the code.
    void append(const AcDbDxfGroup& group);
    void appendText(short code, std::wstring_view text);
    void appendReal(short code, double value);
    void appendPoint(short code, const double* coordinates, int dimension = 3);
    /// Cut to the width of the code's kind.
    void appendInteger(short code, Adesk::Int64 value);
    void appendHandle(short code, Adesk::UInt64 handle);
    void appendBinary(short code, const void* bytes, std::size_t size);
    void appendAll(const GroupBlock& other);
    /// A binary given as hexadecimal digits, read as bytesOfHexadecimal does.
    void appendHexadecimal(short code, std::wstring_view digits);
    /// The part of another block between two of its walker's positions.
    void appendPart(const GroupBlock& other, std::size_t from, std::size_t to);
    /// A record as the lists have it; texts of handle codes are taken as hexadecimal. eInvalidResBuf for a
    /// type above the group codes, eInvalidDxfCode for a negative one.
    Acad::ErrorStatus appendRecord(const resbuf& record);
    Acad::ErrorStatus appendList(const resbuf* list);

    /// A list that belongs to the caller; null for an empty block. Handles come as text.
    resbuf* toList() const { return toList(0, m_bytes.size()); }
    resbuf* toList(std::size_t from, std::size_t to) const;

private:
    friend class GroupWalker;
    template <typename T>
    void put(T value);

    std::vector<unsigned char> m_bytes;
};

/// Walks a block from its start. The block must outlive it and stay as it is meanwhile.
class GroupWalker {
public:
    explicit GroupWalker(const GroupBlock& block, std::size_t from = 0)
        : m_block(block)
        , m_position(from) {}
    /// The next group; false at the end. The group's text lives until the next call.
    bool next(AcDbDxfGroup& group);
    /// The next group as a record that belongs to the caller; null at the end, and where memory is short.
    resbuf* nextRecord();
    /// The next group's code, without reading its value; false at the end.
    bool peek(short& code) const;
    /// Passes over the next group, which there is.
    void skip();
    /// Where the next group begins.
    std::size_t position() const { return m_position; }

private:
    template <typename T>
    T take();
    std::size_t takeLength();
    void skipBytes(std::size_t count) { m_position += count; }
    void takeText();
    void takeBinary();
    void takeHandle(AcDbDxfGroup& group);

    const GroupBlock& m_block;
    std::size_t m_position;
    std::wstring m_text;
};

} // namespace hostkit
