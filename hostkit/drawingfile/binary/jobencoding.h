// Records of a binary drawing from the groups of one drawing, or kept with their bits.
#pragma once

#include "encodingjob.h"
#include "objectmap.h"
#include "recordencoding.h"
#include "recordfields.h"

#include <optional>
#include <string>
#include <vector>

namespace hostkit {

/// Records one behind the other.
struct EncodedChunk {
    std::vector<std::uint8_t> bytes;
    std::vector<ObjectPlace> places;
    std::size_t kept = 0;
    std::vector<const EncodingJob*> failed, shortened, withoutData;
};

/// Writes the records of a drawing; one for each thread.
class JobEncoding {
public:
    /// The context must outlive it.
    explicit JobEncoding(const EncodingContext& context);
    /// Appends the job's record, or tells that it failed.
    void write(const EncodingJob& job, EncodedChunk& chunk);

private:
    [[nodiscard]] bool isAsItWas(const EncodingJob& job, const TranscribedRecord& before) const;
    bool copy(const TranscribedRecord& before, std::vector<std::uint8_t>& bytes) const;
    bool encode(const EncodingJob& job, const TranscribedRecord* before, std::vector<std::uint8_t>& bytes);
    void scan(const EncodingJob& job, const RecordLayout& layout);
    void dropReactors(const RecordLayout& layout);

    const EncodingContext& m_context;
    std::string m_dictionary;
    RecordGathering m_gathering;
    RecordEncoding m_encoding;
    std::optional<RecordReading> m_reading;
    RecordFields m_fields;
    DrawingRecord m_record;
    RecordScope m_values;
    std::vector<std::string> m_texts;
};

} // namespace hostkit
