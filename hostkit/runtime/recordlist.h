// A record list with its owner; leaves out what stands in it.
#pragma once

#include "adsdef.h"

#include <memory>
#include <new>

namespace hostkit {

struct RecordListDeleter {
    void operator()(resbuf* list) const { acutRelRb(list); }
};
/// Frees the whole list with its texts.
using RecordList = std::unique_ptr<resbuf, RecordListDeleter>;

/// Makes a list, one record behind the other.
class RecordListMaker {
public:
    /// A record of that type with a zero value; throws std::bad_alloc where there is no room for it.
    resbuf& append(int type) {
        resbuf* const record = acutNewRb(type);
        if (!record) throw std::bad_alloc();
        if (m_last)
            m_last->rbnext = record;
        else
            m_list.reset(record);
        return *(m_last = record);
    }
    RecordList take() {
        m_last = nullptr;
        return std::move(m_list);
    }

private:
    RecordList m_list{};
    resbuf* m_last = nullptr;
};

} // namespace hostkit
