#include "acedads.h"

#include "acdocman.h"
#include "answerreading.h"
#include "dbdatabase.h"
#include "documentselection.h"
#include "entitypicking.h"
#include "handletext.h"
#include "host.h"
#include "selectionpicks.h"
#include "selectionsets.h"

namespace {

using hostkit::Found;
using hostkit::SelectionPicks;

// A point, or an entity that was named.
struct PickAnswer {
    AcDbObjectId named{};
    ads_point point{};
    bool isPoint = false;
};

int readPick(const AcApDocument& document, const SelectionPicks& picks, const wchar_t* prompt,
             PickAnswer& answer) {
    return hostkit::readAnswer(
        prompt ? prompt : L"Select object: ", false, L"point or object",
        [&](const std::wstring& text, const hostkit::AnswerRequest& request,
            hostkit::RunningCommand& command) {
            if (hostkit::takeKeyword(text, request, command) == RTKWORD) return RTKWORD;
            answer.isPoint = hostkit::parseAnsweredPoint(text, nullptr, answer.point);
            if (answer.isPoint) return RTNORM;
            std::wstring word;
            const Found last = hostkit::findKeyword(L"Last", text, word) ? picks.last() : Found();
            answer.named =
                last.ids.empty() ? hostkit::entityOfHandleText(*document.database(), text) : last.ids.front();
            return answer.named.isNull() ? RTREJ : RTNORM;
        });
}

void give(const ads_point from, ads_point to) {
    for (int i = 0; i < 3 && to; ++i) to[i] = from[i];
}

void giveMatrix(const AcGeMatrix3d& from, ads_matrix to) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) to[row][column] = from(row, column);
}

} // namespace

int acedEntSel(const wchar_t* prompt, ads_name entity, ads_point point) {
    AcApDocument* document = hostkit::currentDocument();
    if (!document || !entity) return RTERROR;
    const hostkit::SelectionMode mode;
    const auto filter = hostkit::SelectionFilter::compile(nullptr, *document->database());
    const SelectionPicks picks(*document, mode, *filter);
    PickAnswer answer;
    const int status = readPick(*document, picks, prompt, answer);
    if (status != RTNORM) return status;
    AcDbObjectId id = answer.named;
    if (answer.isPoint) {
        const Found found = picks.at(hostkit::fromUser(*document, answer.point));
        if (found.ids.empty()) return RTERROR;
        id = found.ids.front();
    }
    if (!hostkit::nameEntity(id, entity)) return RTERROR;
    give(answer.point, point);
    return RTNORM;
}

int acedNEntSelP(const wchar_t* prompt, ads_name entity, ads_point point, int pickFlag, ads_matrix matrix,
                 resbuf** containers) {
    AcApDocument* document = hostkit::currentDocument();
    if (!document || !entity || !point) return RTERROR;
    hostkit::SelectionMode mode;
    mode.isNested = true;
    const auto filter = hostkit::SelectionFilter::compile(nullptr, *document->database());
    const SelectionPicks picks(*document, mode, *filter);
    PickAnswer answer;
    if (pickFlag != 0) {
        give(point, answer.point);
        answer.isPoint = true;
    } else if (const int status = readPick(*document, picks, prompt, answer); status != RTNORM) {
        return status;
    }
    Found found;
    if (answer.isPoint)
        found = picks.at(hostkit::fromUser(*document, answer.point));
    else
        found.ids = {answer.named};
    if (found.ids.empty() || !hostkit::nameEntity(found.ids.front(), entity)) return RTERROR;
    give(answer.point, point);
    static const hostkit::SelectionWay whole;
    const hostkit::SelectionWay& way = found.way ? *found.way : whole;
    if (matrix) giveMatrix(way.toWorld, matrix);
    if (containers) {
        hostkit::RecordListMaker list;
        hostkit::addEntities(list, way.containers);
        *containers = list.take().release();
    }
    return RTNORM;
}
