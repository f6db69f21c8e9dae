#include "selectioncommands.h"

#include "acdocman.h"
#include "aced.h"
#include "casefold.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "documentselection.h"
#include "escaping.h"
#include "host.h"
#include "modulecommand.h"
#include "numbertext.h"
#include "selectioninput.h"
#include "selectionprompt.h"

#include <functional>
#include <map>

namespace {

// --- SELECT -----------------------------------------------------------------------------------------------

struct Tally {
    std::map<std::wstring, std::size_t> byType{};
    std::map<std::wstring, std::size_t> byLayer{};
    std::map<std::pair<std::wstring, std::wstring>, std::size_t> byBoth{};
};

std::wstring layerNameOf(const AcDbEntity& entity) {
    wchar_t* name = entity.layer();
    std::wstring text = name ? name : L"";
    acutDelString(name);
    return text;
}

Tally tallyOf(const std::vector<AcDbObjectId>& ids) {
    Tally tally;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity.object()) continue;
        const std::wstring type = entity->dxfName(), layer = layerNameOf(*entity);
        ++tally.byType[type];
        ++tally.byLayer[layer];
        ++tally.byBoth[{type, layer}];
    }
    return tally;
}

void printTally(const std::vector<AcDbObjectId>& ids) {
    std::vector<std::vector<std::wstring>> rows = {{L"Type", L"Layer", L"Entities"}};
    for (const auto& [kind, count] : tallyOf(ids).byBoth)
        rows.push_back({kind.first, kind.second, std::to_wstring(count)});
    if (!ids.empty()) printTable(rows, "llr");
    acutPrintf(L"%s selected\n", counted(ids.size(), L"entity", L"entities").c_str());
}

void appendCounts(const char* name, const std::map<std::wstring, std::size_t>& counts, std::string& json) {
    json += std::string(",\n  \"") + name + "\": {";
    const char* separator = "";
    for (const auto& [key, count] : counts) {
        json += separator;
        hostkit::appendJsonText(key, json);
        json += ": " + std::to_string(count);
        separator = ", ";
    }
    json += "}";
}

std::string selectionAsJson(const std::vector<AcDbObjectId>& ids) {
    const Tally tally = tallyOf(ids);
    std::string json = "{\n  \"selected\": " + std::to_string(ids.size());
    appendCounts("byType", tally.byType, json);
    appendCounts("byLayer", tally.byLayer, json);
    json += ",\n  \"handles\": [";
    const char* separator = "";
    for (const AcDbObjectId id : ids) {
        json += separator;
        hostkit::appendJsonText(handleText(id.handle()), json);
        separator = ", ";
    }
    return json + "]\n}";
}

// RTNORM also for a selection without entities. A word that begins the report ends it; behind an Enter of the
// line, and behind the one way of Single, it comes as an answer of its own.
int selectByPrompt(AcApDocument& document, const hostkit::SelectionFilter& filter,
                   std::vector<AcDbObjectId>& ids, ReportForm& form) {
    const hostkit::SelectionMode mode;
    hostkit::SelectionPrompt prompt(document, mode, filter);
    prompt.setKeywords(L"Table Json");
    hostkit::SelectionSet selection;
    const int result = prompt.run(selection);
    if (result == RTCAN || result == RTREJ) return result;
    CString word;
    if (result == RTKWORD) {
        selection = prompt.takeSelection();
        acedGetInput(word);
    }
    form = word == L"Json" ? ReportForm::json : ReportForm::table;
    if (result != RTKWORD && !hostkit::Host::current()->runningCommand()->input.rest().empty()) {
        const std::optional<ReportForm> named = readReportForm();
        if (!named) return RTCAN;
        form = *named;
    }
    ids = selection.ids();
    return RTNORM;
}

// --- ERASE and CHPROP -------------------------------------------------------------------------------------

// Calls change(entity) for each that can be written, and tells how many were changed and how many not.
void changeEach(const std::vector<AcDbObjectId>& ids, const wchar_t* done,
                const std::function<Acad::ErrorStatus(AcDbEntity&)>& change) {
    std::map<Acad::ErrorStatus, std::size_t> counts;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        ++counts[entity.object() ? change(*entity) : entity.openStatus()];
    }
    const std::size_t changed = counts[Acad::eOk], locked = counts[Acad::eOnLockedLayer];
    const std::size_t others = ids.size() - changed - locked;
    std::wstring text = counted(changed, L"entity", L"entities") + L" " + done;
    if (locked > 0) text += L", " + std::to_wstring(locked) + L" on locked layers left as they are";
    if (others > 0) text += L", " + std::to_wstring(others) + L" could not be changed";
    acutPrintf(L"%s\n", text.c_str());
}

struct Properties {
    AcDbObjectId layer{};
    AcDbObjectId linetype{};
    std::optional<AcCmColor> color{};
    bool isEmpty() const { return layer.isNull() && linetype.isNull() && !color; }
};

bool refuse(Acad::ErrorStatus status, const std::wstring& reason) {
    hostkit::failCommand(status, reason);
    return false;
}

template <class Table>
bool readRecord(AcDbDatabase& database, const wchar_t* prompt, const wchar_t* what, AcDbObjectId& id) {
    CString name;
    if (acedGetString(0, prompt, name) != RTNORM) return false;
    const AcDbSymbolTablePointer<Table> table(&database, AcDb::kForRead);
    if (!name.IsEmpty() && table.object() && table->getAt(name, id) == Acad::eOk) return true;
    return refuse(Acad::eKeyNotFound,
                  std::wstring(L"there is no ") + what + L" \"" + name.GetString() + L"\" in the drawing");
}

// An index, ByLayer, ByBlock, or red,green,blue.
bool parseColor(const CString& text, AcCmColor& color) {
    constexpr int byBlock = 0, byLayer = 256;
    if (text.CompareNoCase(L"BYLAYER") == 0 || text.CompareNoCase(L"BYBLOCK") == 0)
        return color.setColorIndex(text.CompareNoCase(L"BYLAYER") == 0 ? byLayer : byBlock) == Acad::eOk;
    double parts[3] = {-1.0, -1.0, -1.0};
    int index = -1;
    if (hostkit::parseInteger(text.view(), index))
        return index >= byBlock && index <= byLayer &&
               color.setColorIndex(static_cast<Adesk::UInt16>(index)) == Acad::eOk;
    if (text.Find(L',') == text.ReverseFind(L',') || !hostkit::parsePoint(text.view(), parts)) return false;
    constexpr double brightest = 255.0;
    for (const double part : parts)
        if (part < 0.0 || part > brightest || part != static_cast<int>(part)) return false;
    color.setRGB(static_cast<Adesk::UInt8>(parts[0]), static_cast<Adesk::UInt8>(parts[1]),
                 static_cast<Adesk::UInt8>(parts[2]));
    return true;
}

bool readColor(std::optional<AcCmColor>& color) {
    CString text;
    if (acedGetString(0, L"Colour (0 to 256, ByLayer, ByBlock or r,g,b): ", text) != RTNORM) return false;
    AcCmColor parsed;
    if (!parseColor(text, parsed))
        return refuse(Acad::eInvalidInput, std::wstring(L"\"") + text.GetString() +
                                               L"\" is no colour: 0 to 256, ByLayer, ByBlock or r,g,b");
    color = parsed;
    return true;
}

bool readProperties(AcDbDatabase& database, Properties& properties) {
    for (;;) {
        CString word;
        acedInitGet(0, L"LAyer Color LType");
        const int answer = acedGetKword(L"Property [LAyer/Color/LType] <done>: ", word);
        if (answer == RTNONE) break;
        if (answer == RTREJ) return refuse(Acad::eInvalidInput, L"the properties are LAYER, COLOR and LTYPE");
        if (answer != RTNORM) return false;
        const bool isRead =
            word == L"LAyer" ? readRecord<AcDbLayerTable>(database, L"Layer: ", L"layer", properties.layer)
            : word == L"LType"
                ? readRecord<AcDbLinetypeTable>(database, L"Linetype: ", L"linetype", properties.linetype)
                : readColor(properties.color);
        if (!isRead) return false;
    }
    return !properties.isEmpty() ||
           refuse(Acad::eInvalidInput, L"no property was given: LAYER, COLOR or LTYPE");
}

Acad::ErrorStatus give(const Properties& properties, AcDbEntity& entity) {
    Acad::ErrorStatus status = Acad::eOk;
    if (!properties.layer.isNull()) status = entity.setLayer(properties.layer);
    if (status == Acad::eOk && !properties.linetype.isNull())
        status = entity.setLinetype(properties.linetype);
    if (status == Acad::eOk && properties.color) status = entity.setColor(*properties.color);
    return status;
}

} // namespace

void selectCommand() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    const auto filter = readTypedFilter(*document->database());
    if (!filter) return;
    std::vector<AcDbObjectId> ids;
    ReportForm form = ReportForm::table;
    const int result = selectByPrompt(*document, *filter, ids, form);
    if (result != RTNORM) return failSelection(result);
    if (!ids.empty()) document->selection().previous = ids;
    document->selection().implied = ids;
    if (form == ReportForm::json) return offerText(selectionAsJson(ids));
    printTally(ids);
}

void eraseCommand() {
    if (!documentOrFail()) return;
    const std::vector<AcDbObjectId> ids = selectionOrFail();
    if (!ids.empty()) changeEach(ids, L"erased", [](AcDbEntity& entity) { return entity.erase(); });
}

void changePropertiesCommand() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    const std::vector<AcDbObjectId> ids = selectionOrFail();
    Properties properties;
    if (ids.empty() || !readProperties(*document->database(), properties)) return;
    changeEach(ids, L"changed", [&](AcDbEntity& entity) { return give(properties, entity); });
}
