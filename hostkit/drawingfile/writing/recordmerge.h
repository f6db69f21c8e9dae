// Merging of records: putting an object's fields in the place of the groups they were read from; leaves out
// records that are new.
#pragma once

#include "recordwriter.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace hostkit {

/// Room that the merges of one drawing share.
struct MergeRoom {
    /// One or, for a point, up to three groups of the old record.
    struct OldItem {
        std::size_t first = 0;
        unsigned char count = 1;
        RecordPart part = nobodysPart; ///< of the old record's parts
        short code = 0;
        unsigned short region = 0;     ///< how many subclass marks stand before it, its own among them
        bool isBehindEmbedded = false; ///< the codes are those of another object
        std::size_t field = 0;         ///< the field that takes its place, or noField
        unsigned char filed = 0; ///< the dimension that its object files for it, where that must be known
    };
    struct Insertion {
        std::size_t behind = 0; ///< an old item
        std::size_t field = 0;
    };
    /// By group code, zero between merges.
    struct CodeCount {
        unsigned oldItems = 0;
        unsigned fields = 0;
        std::size_t lastItem = 0;
        std::size_t lastField = 0;
    };
    std::vector<OldItem> items;
    std::vector<std::vector<std::size_t>> itemsOfParts;
    std::vector<Insertion> insertions;
    std::vector<CodeCount> counts;
};

/// One merge of what a RecordWriter has gathered with the record that the object was read from, whose groups
/// a RecordReader has marked with the part that each was read for. Fields are matched with the groups of
/// their own part, wherever these stand:
/// - a group that nobody read stays as and where it stood;
/// - a group that was read is written once, at its place, with the field's value; where that is the value
/// which
///   stood there it keeps its spelling;
/// - a group that was read and that the object no longer files goes; so does one of two groups of a field
/// that has a
///   new value;
/// - a field that the record lacks goes behind the field that the object files before it, or takes the place
/// of a group
///   of its code and part whose value nobody could read;
/// - a point's z that the object does not file stays, and one of nought is not added, but where a point with
/// z takes the
///   place of one without or the other way round;
/// - groups keep the order of the old record where each code stands once in its part, else they have the
/// object's.
class RecordMerge {
public:
    /// `oldParts` are those of the reader. `readAgain` gives what the old record says, filed again, and marks
    /// the groups of `writer` that are as there (RecordWriter::markAsRead); it is called at most once, when a
    /// value differs. May be empty: values of equal meaning are then spelt anew.
    RecordMerge(RecordWriter& writer, const DrawingRecord& original, const RecordParts& oldParts,
                std::function<const RecordWriter&()> readAgain, MergeRoom& room, std::string& bytes);
    /// The record to be made is that of a copy: it gets the groups of every new record, and of what nobody
    /// read neither the groups of applications nor those that own something.
    void makeCopy() { m_isCopy = true; }
    void run();

private:
    using OldItem = MergeRoom::OldItem;
    using Presence = FieldGroup::Presence;
    using Role = FieldGroup::Role;

    /// The fields of one part, and the old items that were read for it.
    struct Part {
        std::size_t begin = 0;
        std::size_t end = 0;
        const std::vector<std::size_t>* items = nullptr;
    };
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

    void gatherOldItems();
    void mergePart(Part part);
    void insertPart(const Part& part);
    const RecordWriter* asRead();
    void keepDoubles(const Part& part);
    bool wasSingle(const FieldGroup& group);
    void count(const Part& part);
    void uncount(const Part& part);
    bool eachCodeIsOnce(const Part& part) const;
    void alignByCode(const Part& part);
    void alignInOrder(const Part& part);
    bool hasMixedPoints(const Part& part) const;
    void learnDimensions(const Part& part);
    bool isOtherPoint(const OldItem& item, const FieldGroup& group) const {
        return item.filed != 0 && item.filed != group.dimension;
    }
    bool stepInOrder(const Part& part, std::size_t& oldPlace, std::size_t& newPlace);
    std::size_t distanceInOld(const Part& part, std::size_t place, short code) const;
    std::size_t distanceInNew(const Part& part, std::size_t place, short code) const;
    void match(std::size_t item, std::size_t field);
    void insert(std::size_t field);
    bool replaceUnread(std::size_t field);
    std::size_t endOfRegion(std::size_t item) const;

    std::vector<std::size_t> orderInFile() const;
    void emit();
    void emitOld(const OldItem& item);
    void emitMatched(const OldItem& item);
    FieldGroup withDimensionOf(const OldItem& item, const FieldGroup& group) const;
    bool keepsOldBytes(const OldItem& item, const FieldGroup& group);
    bool hasEqualValue(const OldItem& item, const FieldGroup& group) const;
    bool hasEqualText(const RecordGroup& old, const FieldGroup& group) const;
    const FieldGroup& field(std::size_t place) const { return m_writer.m_groups[place]; }
    MergeRoom::CodeCount& countOf(short code) { return m_room.counts[static_cast<std::size_t>(code)]; }
    const MergeRoom::CodeCount& countOf(short code) const {
        return m_room.counts[static_cast<std::size_t>(code)];
    }

    RecordWriter& m_writer;
    const DrawingRecord& m_original;
    const RecordParts& m_oldParts;
    std::function<const RecordWriter&()> m_readAgain;
    const RecordWriter* m_asRead = nullptr;
    MergeRoom& m_room;
    std::string& m_bytes;
    bool isInserted(const FieldGroup& group) const;
    bool m_isCopy = false;
    bool m_hasNewColor = false; // a colour's name (430) then is another's
    std::size_t m_anchor = 0;   // the item behind which the next new field goes
};

} // namespace hostkit
