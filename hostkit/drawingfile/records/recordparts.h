// Parts of a record: telling whose group is whose: the head's, a class', the extended data's; leaves out the
// groups themselves.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// Who files a group of a record.
using RecordPart = unsigned char;
constexpr RecordPart nobodysPart = 0;    ///< no class knows the group: it stays as and where it stands
constexpr RecordPart foreignPart = 1;    ///< as above, and no class is asked: another application's group
constexpr RecordPart headPart = 2;       ///< handle and owner
constexpr RecordPart reactorsPart = 3;   ///< the head's group of reactors
constexpr RecordPart dictionaryPart = 4; ///< the head's group of the extension dictionary
constexpr RecordPart extendedPart = 5;   ///< extended data
constexpr RecordPart firstClassPart = 6; ///< and on: the classes that file groups, in their order

/// The classes' parts of one record by their names, which are those of the subclass marks whether or not the
/// record has marks. A name that comes up again (a text has two parts of one name) is a part of its own.
class RecordParts {
public:
    void clear() {
        m_names.clear();
        m_ends.clear();
    }
    /// The next part, of that name. nobodysPart where a record has more than any record has.
    RecordPart add(std::wstring_view name);
    /// The last part goes again.
    void removeLast();
    std::size_t count() const { return m_ends.size(); }
    /// How many parts there are, those that every record has among them.
    std::size_t limit() const { return firstClassPart + m_ends.size(); }
    std::wstring_view nameOf(RecordPart part) const;
    /// The part of `others` that has the same name and is as manieth of it; nobodysPart where there is none.
    /// The parts that every record has are the same everywhere.
    RecordPart counterpart(RecordPart part, const RecordParts& others) const;

private:
    std::wstring m_names; // one behind the other: clearing keeps the room
    std::vector<std::size_t> m_ends;
};

} // namespace hostkit
