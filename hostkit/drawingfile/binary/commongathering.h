// What every record has, from its groups: handle, owner, reactors, the look of entities, extended data.
#pragma once

#include "extendeddatacoding.h"
#include "gatheredvalues.h"
#include "recordhead.h"

namespace hostkit {

class CommonGathering : public GatheredValues {
public:
    /// Extended data of an application without a record.
    [[nodiscard]] bool hasLostData() const { return m_hasLostData; }

protected:
    CommonGathering(DrawingVersion version, unsigned codePage, const RecordNames& names)
        : GatheredValues(version, codePage, names)
        , m_extendedBytes(m_form, codePage, names) {}
    ~CommonGathering() = default;

    void head(const RecordLinks& links);
    void entity(const RecordLinks& links);
    void extendedData();
    /// What follows finds its groups behind the mark of that name, in `m_region`.
    virtual void findMark(std::string_view name) = 0;

private:
    [[nodiscard]] const RecordLayout::CommonSlots& slots() const { return m_layout->common; }
    /// Nothing where the record has no such field.
    void whole(std::uint16_t slot, std::int64_t value);
    void link(std::uint16_t slot, std::uint64_t handle);
    /// The number that a group of that code has, or the one given.
    std::int64_t wholeOf(int code, std::int64_t otherwise);
    std::uint64_t handleOf(int code);
    /// A reference that a number tells the way of: 3 where it is stored.
    void ruled(std::uint16_t rule, std::uint16_t slot, std::uint64_t target);
    void layer();
    void linetype();
    void color();
    void picture();

    RecordHead m_head;
    ExtendedDataBytes m_extendedBytes;
    bool m_hasLostData = false;
};

} // namespace hostkit
