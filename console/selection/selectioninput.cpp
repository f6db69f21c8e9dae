#include "selectioninput.h"

#include "acdocman.h"
#include "aced.h"
#include "documentselection.h"
#include "filtertext.h"
#include "host.h"
#include "modulecommand.h"
#include "selectionsets.h"

namespace {

bool refuseFilter(const std::wstring& reason) {
    hostkit::failCommand(Acad::eInvalidInput, L"the filter: " + reason);
    return false;
}

std::vector<AcDbObjectId> liveOnes(const std::vector<AcDbObjectId>& ids) {
    std::vector<AcDbObjectId> live;
    for (const AcDbObjectId id : ids)
        if (!id.isErased()) live.push_back(id);
    return live;
}

} // namespace

std::optional<hostkit::SelectionFilter> readTypedFilter(AcDbDatabase& database) {
    hostkit::CommandInput& input = hostkit::Host::current()->runningCommand()->input;
    std::size_t length = 0;
    const hostkit::FilterReading reading = hostkit::readFilterStart(input.rest(), length);
    if (!reading.isRead()) {
        refuseFilter(reading.problem + L" (at character " + std::to_wstring(reading.position + 1) + L")");
        return std::nullopt;
    }
    input.skip(length);
    std::wstring reason;
    std::optional<hostkit::SelectionFilter> filter =
        hostkit::SelectionFilter::compile(reading.list.get(), database, &reason);
    if (!filter) refuseFilter(reason);
    return filter;
}

void failSelection(int result) {
    if (result == RTREJ)
        hostkit::failCommand(Acad::eInvalidInput, L"an answer is no way to select objects; ? lists them");
    else if (result != RTCAN)
        hostkit::failCommand(Acad::eInvalidInput, L"nothing was selected");
}

std::vector<AcDbObjectId> selectionOrFail() {
    ads_name set = {0, 0};
    const int result = acedSSGet(nullptr, nullptr, nullptr, nullptr, set);
    if (result != RTNORM) {
        failSelection(result);
        return {};
    }
    const struct Freeing {
        ~Freeing() { acedSSFree(name); }
        ads_name& name;
    } freeing{set};
    return hostkit::Host::current()->selections().find(set)->ids();
}

std::vector<AcDbObjectId> impliedSelectionOrFail(const AcApDocument& document) {
    std::vector<AcDbObjectId> ids = liveOnes(document.selection().implied);
    if (ids.empty())
        hostkit::failCommand(Acad::eInvalidInput,
                             L"nothing is selected; SELECT selects for the next command");
    return ids;
}
