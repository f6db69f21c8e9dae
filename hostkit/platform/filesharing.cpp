#include "filesharing.h"

#include "cfile.h"
#include "hostport.h"

#include <list>

namespace hostkit {
namespace {

constexpr unsigned reading = 1;
constexpr unsigned writing = 2;

struct OpenFile {
    dev_t device;
    ino_t number;
    unsigned access;
    unsigned denied;
};

// Shared, since a file may be closed after the host is gone.
struct OpenFiles {
    std::shared_ptr<std::list<OpenFile>> list = std::make_shared<std::list<OpenFile>>();
};

unsigned accessOf(UINT flags) {
    switch (flags & 3u) {
    case CFile::modeRead:
        return reading;
    case CFile::modeWrite:
        return writing;
    default:
        return reading | writing;
    }
}

unsigned deniedBy(UINT flags) {
    constexpr UINT shareMask = 0x70;
    switch (flags & shareMask) {
    case CFile::shareDenyNone:
        return 0;
    case CFile::shareDenyRead:
        return reading;
    case CFile::shareDenyWrite:
        return writing;
    default:
        return reading | writing;
    }
}

} // namespace

FileShare shareFile(dev_t device, ino_t number, UINT flags) {
    const auto list = currentPort()->kept<OpenFiles>().list;
    const OpenFile wanted{device, number, accessOf(flags), deniedBy(flags)};
    for (const OpenFile& each : *list)
        if (each.device == device && each.number == number &&
            ((each.access & wanted.denied) || (each.denied & wanted.access)))
            return nullptr;
    list->push_front(wanted);
    return {static_cast<const void*>(&list->front()),
            [list, place = list->begin()](const void*) { list->erase(place); }};
}

} // namespace hostkit
