// Text filer that keeps its groups in memory: writing them and reading them back; leaves out what a class
// rejects.
#pragma once

#include "groupgatherer.h"

#include <optional>

namespace hostkit {

/// Groups in memory, written and then read after rewind(). Writing goes on behind the last group. Points keep
/// whether they have a z. Reading past the end, or past a class' part, gives eEndOfObject; a group that a
/// class rejects is passed over.
class MemoryDxfFiler final : public GroupGatherer {
public:
    explicit MemoryDxfFiler(AcDbDatabase* database = nullptr)
        : GroupGatherer(database) {}
    /// Groups that another filer gathered.
    explicit MemoryDxfFiler(GroupBlock groups, AcDbDatabase* database = nullptr)
        : GroupGatherer(database, std::move(groups)) {}

    /// The first group comes next. To be called between writing and reading, too. The status stays.
    void rewind();

    Acad::ErrorStatus readItem(AcDbDxfGroup& group) override;
    void pushBackItem() override { m_isWaiting = m_isWaiting || m_hasLast; }
    /// What a class left unread of its part is passed over.
    bool atSubclassData(const wchar_t* name) override;
    bool atEndOfObject() override { return !fetch() || isMark(); }
    AcDbObjectId objectIdOf(const AcDbDxfGroup& group) override;
    double angleOf(const AcDbDxfGroup& group) const override { return group.real; }
    void writeAngle(short code, double radians) override { writeReal(code, radians); }
    void writeSubclassMark(const wchar_t* name) override;

private:
    /// The next group is in the member, taken now or pushed back before.
    bool fetch();
    bool isMark() const;

    std::optional<GroupWalker> m_walker;
    AcDbDxfGroup m_group;
    bool m_isWaiting = false;
    bool m_hasLast = false;
};

} // namespace hostkit
