// The values of a binary record from the groups of the exchange form: the way back of a transcript.
#pragma once

#include "drawingrecord.h"
#include "recordfields.h"
#include "recordlayout.h"
#include "recordtranscription.h"
#include "recordvalues.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

namespace hostkit {

/// What a record tells of its place among others, where its groups tell it otherwise or not at all.
struct RecordLinks {
    std::uint64_t owner = 0;
    int entityMode = 0;                   ///< 0: the owner is stored; 1, 2: paper space, model space
    std::uint64_t previous = 0, next = 0; ///< in the form 2000
    bool isInChain = false;               ///< of the form 2000: not a block's begin or end, or a sequence's
};

/// Gathers for one form; used again from one record to the next.
class RecordGathering {
public:
    /// `codePage` is the number of the binary form, for texts within extended data.
    RecordGathering(DrawingVersion version, unsigned codePage, const RecordNames& names);
    ~RecordGathering();
    RecordGathering(const RecordGathering&) = delete;
    RecordGathering& operator=(const RecordGathering&) = delete;

    /// The record that is changed by those gathered next, of the same layout, and what read it; null for new
    /// ones. Its numbers stand for what the groups do not tell.
    void setOriginal(const RecordReading* reading, const RecordFields* record);
    /// Fills `values` with all that the groups and the links tell; what is there already stays. They refer to
    /// the record's bytes and to this object until the next call. `record` gets its head marked. A layout
    /// without transcript gets the common fields alone.
    void gather(DrawingRecord& record, const RecordLayout& layout, const RecordLinks& links,
                RecordScope& values);

    /// The last record had extended data of an application that the drawing does not name.
    [[nodiscard]] bool hasLostData() const;
    /// The same of the variables of a header: `groups` are its groups, without a first group 0.
    void gatherVariables(DrawingRecord& groups, const RecordLayout& layout, RecordScope& values);

private:
    std::unique_ptr<class Gathering> m_work;
};

} // namespace hostkit
