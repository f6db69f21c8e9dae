#include "recordhead.h"

#include "groupcodes.h"

#include <algorithm>

namespace hostkit {

namespace {

// Classes that have no groups of the head's codes: where the head stands behind their mark, it is still the
// head.
constexpr std::string_view baseClasses[] = {"AcDbEntity", "AcDbSymbolTable", "AcDbSymbolTableRecord"};

class HeadReader {
public:
    HeadReader(DrawingRecord& record, RecordHead& head)
        : m_record(record)
        , m_head(head)
        , m_ownCode(handleCodeOf(record.name()))
        , m_end(record.extendedDataBegin) {}

    // Where nothing marks the end of the head, it ends at the first group that cannot belong to it.
    void run() {
        std::size_t place = 1;
        while (place < m_end && m_record.groups[place].code != subclassMarkCode) {
            const std::size_t next = read(place);
            if (next == place && !m_record.hasMarks && m_head.handle != 0) return;
            place = std::max(next, place + 1);
        }
        if (m_head.handle == 0 && m_record.hasMarks) readBehindMark(place);
    }

private:
    /// The place behind what belongs to the head; the same place where the group does not.
    std::size_t read(std::size_t place) {
        RecordGroup& group = m_record.groups[place];
        if (group.code == applicationGroupCode) return readApplicationGroup(place);
        if (group.code == m_ownCode && m_head.handle == 0) {
            takeHandle(group, m_head.handle);
            return place + 1;
        }
        if (group.code != ownerCode) return place;
        takeHandle(group, m_head.owner);
        return place + 1;
    }

    // Careless programs put the handle behind the first mark: right behind it, or anywhere in the part of a
    // class that has no handles of its own.
    void readBehindMark(std::size_t mark) {
        const std::string_view name = withoutBlanks(m_record.groups[mark].value);
        const bool isBase =
            std::find(std::begin(baseClasses), std::end(baseClasses), name) != std::end(baseClasses);
        for (std::size_t place = mark + 1;
             place < m_end && m_record.groups[place].code != subclassMarkCode;) {
            const std::size_t next = read(place);
            if (next == place && !isBase) return;
            place = std::max(next, place + 1);
        }
    }

    void takeHandle(RecordGroup& group, std::uint64_t& handle) {
        const std::optional<std::uint64_t> value = handleFromText(group.value);
        if (!value && !m_head.faulty) m_head.faulty = &group;
        handle = value.value_or(0);
        group.part = headPart;
    }

    // The place behind the group's closing brace, or behind its opening one where it is never closed.
    std::size_t readApplicationGroup(std::size_t begin) {
        const std::string_view name = withoutBlanks(m_record.groups[begin].value);
        std::size_t depth = 1;
        std::size_t end = begin + 1;
        bool isFlat = true;
        for (; end < m_end && depth > 0 && m_record.groups[end].code != subclassMarkCode; ++end) {
            if (m_record.groups[end].code != applicationGroupCode) continue;
            const bool opens = withoutBlanks(m_record.groups[end].value).substr(0, 1) == "{";
            isFlat = isFlat && !opens;
            depth = opens ? depth + 1 : depth - 1;
        }
        if (depth > 0) return begin + 1;
        for (std::size_t place = begin; place < end; ++place) m_record.groups[place].part = foreignPart;
        if (isFlat && name == "{ACAD_REACTORS" && hasReactors(begin, end)) takeReactors(begin, end);
        if (isFlat && name == "{ACAD_XDICTIONARY") takeExtensionDictionary(begin, end);
        return end;
    }

    // A group of null handles says nothing and stays as it is.
    bool hasReactors(std::size_t begin, std::size_t end) const {
        for (std::size_t place = begin; place < end; ++place) {
            const RecordGroup& group = m_record.groups[place];
            if (group.code == ownerCode && handleFromText(group.value).value_or(0) != 0) return true;
        }
        return false;
    }

    void takeReactors(std::size_t begin, std::size_t end) {
        for (std::size_t place = begin; place < end; ++place) {
            RecordGroup& group = m_record.groups[place];
            if (group.code != ownerCode && group.code != applicationGroupCode) continue;
            if (group.code == ownerCode) {
                std::uint64_t handle = 0;
                takeHandle(group, handle);
                m_head.reactors.push_back(handle);
            }
            group.part = reactorsPart;
        }
    }

    void takeExtensionDictionary(std::size_t begin, std::size_t end) {
        for (std::size_t place = begin; place < end; ++place) {
            RecordGroup& group = m_record.groups[place];
            if (group.code == hardOwnerCode)
                takeHandle(group, m_head.extensionDictionary);
            else if (group.code != applicationGroupCode)
                continue;
            group.part = dictionaryPart;
        }
    }

    DrawingRecord& m_record;
    RecordHead& m_head;
    short m_ownCode;
    std::size_t m_end;
};

} // namespace

short handleCodeOf(std::string_view recordName) {
    return recordName == "DIMSTYLE" ? dimStyleHandleCode : handleCode;
}

void readHead(DrawingRecord& record, RecordHead& head) {
    head.handle = head.owner = head.extensionDictionary = 0;
    head.reactors.clear();
    head.faulty = nullptr;
    HeadReader(record, head).run();
}

} // namespace hostkit
