// Kinds of data in binary records that no line of a transcript describes, each with its own code: the words
// that transcripts name.
#pragma once

#include "drawingrecord.h"
#include "recordfields.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

class RecordNames;

/// Where a native word takes its values from and writes its groups to.
class NativeOutput {
public:
    [[nodiscard]] virtual const RecordReading& reading() const = 0;
    [[nodiscard]] virtual const RecordNames& names() const = 0;
    [[nodiscard]] virtual const RecordFields& fields() const = 0;
    /// Of the present pass of a loop, or outside of it; null where there is none.
    [[nodiscard]] virtual const RecordValue* value(std::string_view name) const = 0;
    [[nodiscard]] virtual const std::vector<RecordValue>* array(std::string_view name) const = 0;
    [[nodiscard]] virtual std::size_t index() const = 0; ///< of the present pass

    virtual void text(int code, std::string_view text) = 0;
    /// A long one: 250 characters in each group before the last.
    virtual void pieces(int code, int pieceCode, std::string_view text) = 0;
    virtual void number(int code, double value) = 0;
    virtual void handle(int code, std::uint64_t handle) = 0;
    virtual void digits(int code, std::string_view bytes) = 0;

protected:
    ~NativeOutput() = default;
};

/// Where a native word takes its groups from and puts its values.
class NativeInput {
public:
    [[nodiscard]] virtual int form() const = 0; ///< 15, 18, 24, 27, 32
    [[nodiscard]] virtual unsigned codePage() const = 0;
    [[nodiscard]] virtual const RecordNames& names() const = 0;
    /// The next group of that code behind the present mark; null where none is left.
    virtual const RecordGroup* take(int code) = 0;
    /// The values of the next group of that code and of those of `pieceCode` right before it, as one text;
    /// empty where none is left.
    virtual std::string takePieces(int code, int pieceCode) = 0;
    /// All groups behind the present mark that nothing has taken. They count as taken then.
    virtual std::vector<const RecordGroup*> takeAll() = 0;
    /// A field of bytes or a text; the bytes are kept as long as the record is at work.
    virtual void setBytes(std::string_view name, std::string bytes) = 0;
    virtual void setNumber(std::string_view name, double number) = 0;
    virtual void setPoint(std::string_view name, const double (&ordinates)[3]) = 0;
    /// One more element of an array of references.
    virtual void addReference(std::string_view name, std::uint64_t handle, unsigned code) = 0;
    virtual RecordScope& scope() = 0;       ///< of the present pass of a loop
    virtual RecordScope& recordScope() = 0; ///< outside of all loops
    /// Null where no record is changed.
    [[nodiscard]] virtual const RecordScope* original() const = 0;
    [[nodiscard]] virtual const RecordReading* originalReading() const = 0;
    [[nodiscard]] virtual std::uint16_t slotOf(std::string_view name) const = 0;
    virtual ValueRun kept(std::string bytes) = 0;

protected:
    ~NativeInput() = default;
};

/// Throw std::logic_error for a word that is none.
void writeNative(std::string_view word, int code, NativeOutput& output);
void readNative(std::string_view word, int code, NativeInput& input);

} // namespace hostkit
