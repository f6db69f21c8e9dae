// Kinds of data in binary records that no line of a transcript describes, each with its own code: the words
// that transcripts name.
#pragma once

#include "recordfields.h"

#include <cstdint>
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
    virtual void number(int code, double value) = 0;
    virtual void handle(int code, std::uint64_t handle) = 0;
    virtual void digits(int code, std::string_view bytes) = 0;

protected:
    ~NativeOutput() = default;
};

/// Throws std::logic_error for a word that is none.
void writeNative(std::string_view word, int code, NativeOutput& output);

} // namespace hostkit
