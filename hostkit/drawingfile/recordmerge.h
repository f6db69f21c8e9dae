// Stand-in for the host's merging of records. Covers putting an object's fields in the place of the groups they were read from; leaves out records that are new.
#pragma once

#include "recordwriter.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace hostkit {

/// One merge of what a RecordWriter has gathered with the record that the object was read from. The record is
/// a row of parts: the head, then one for each subclass mark, then the extended data; part is merged with
/// part of the same name.
class RecordMerge {
public:
    /// One or, for a point, up to three groups of the old record.
    struct OldItem {
        std::size_t first = 0;
        std::size_t count = 1;
        short code = 0;
        bool isTaken = false;
    };
    /// Room that the merges of one drawing share.
    struct Scratch {
        std::vector<FieldGroup> fields; ///< without marks where the old record has none
        std::vector<OldItem> oldItems;
        std::vector<int> oldCounts; ///< by code; zero between merges
        std::vector<int> newCounts;
    };

    RecordMerge(RecordWriter& writer, const DrawingRecord& original, Scratch& scratch, std::string& bytes);
    void run();
    std::size_t groupsFromFields() const { return m_groupsFromFields; }
    std::size_t groupsKept() const { return m_groupsKept; }

private:
    using Presence = FieldGroup::Presence;

    struct Part {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    /// Where an item of the one side stands on the other.
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

    void gatherOldItems();
    std::vector<Part> oldParts() const;
    std::vector<Part> newParts() const;
    bool isSamePart(const Part& oldPart, const Part& newPart) const;
    void mergePart(Part oldPart, Part newPart);
    bool eachCodeIsOnce(Part oldPart, Part newPart);
    void mergeInOldOrder(Part oldPart, Part newPart);
    void mergeInNewOrder(Part oldPart, Part newPart);
    bool stepNewOrder(std::size_t& oldPlace, Part oldPart, std::size_t& newPlace, Part newPart);
    std::size_t distanceInOld(std::size_t place, std::size_t end, short code) const;
    std::size_t distanceInNew(std::size_t place, std::size_t end, short code) const;
    int& oldCount(short code) { return m_oldCounts[static_cast<std::size_t>(code)]; }
    int& newCount(short code) { return m_newCounts[static_cast<std::size_t>(code)]; }
    void count(Part oldPart, Part newPart, int step);

    void emitOld(const OldItem& item);
    void emitNew(std::size_t place);
    void emitNewPart(Part newPart);
    void emitMatched(const OldItem& item, std::size_t place);
    bool hasEqualValue(const OldItem& item, const FieldGroup& group) const;
    bool hasEqualText(const RecordGroup& old, const FieldGroup& group) const;

    RecordWriter& m_writer;
    const DrawingRecord& m_original;
    std::string& m_bytes;
    std::vector<FieldGroup>& m_fields;
    std::vector<OldItem>& m_oldItems;
    std::vector<int>& m_oldCounts;
    std::vector<int>& m_newCounts;
    std::size_t m_groupsFromFields = 0;
    std::size_t m_groupsKept = 0;
};

} // namespace hostkit
