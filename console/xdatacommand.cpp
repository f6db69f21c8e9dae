#include "xdatacommand.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "dbdatabase.h"
#include "dbobjptr.h"
#include "groupcodes.h"
#include "host.h"
#include "jsontext.h"
#include "storedentries.h"

#include <memory>

namespace {

struct ListDeleter {
    void operator()(resbuf* list) const { acutRelRb(list); }
};
using RecordList = std::unique_ptr<resbuf, ListDeleter>;

std::vector<std::wstring> applicationsOf(const hostkit::GroupBlock& data) {
    std::vector<std::wstring> names;
    hostkit::GroupWalker walker(data);
    for (AcDbDxfGroup group; walker.next(group);)
        if (group.code == hostkit::applicationCode) names.emplace_back(group.text);
    return names;
}

// The object of the handle, or the command fails with a sentence that says why there is none.
bool findObject(AcDbDatabase& database, const CString& word, AcDbObjectId& id) {
    const AcDbHandle handle(word.GetString());
    const std::wstring name = word.GetString();
    if (handle.isNull())
        hostkit::failCommand(Acad::eInvalidInput, L"a handle is needed, such as 1F (LIST shows them)" +
                                                      (name.empty() ? L"" : L"; \"" + name + L"\" is none"));
    else if (database.getAcDbObjectId(id, false, handle) != Acad::eOk || !id.isResident())
        hostkit::failCommand(Acad::eUnknownHandle, L"the drawing has no object with the handle " + name);
    else if (id.isErased())
        hostkit::failCommand(Acad::eWasErased, L"the object with the handle " + name + L" is erased");
    else
        return true;
    return false;
}

std::wstring valuesText(const StoredEntry& entry) {
    std::wstring text;
    for (const resbuf* value : entry.values)
        text += (text.empty() ? L"" : L", ") + onOneLine(valueText(*value));
    return text;
}

void printEntries(const AcDbObject& object) {
    const std::wstring name = std::wstring(object.dxfName()) + L" " + handleText(object.handle());
    if (!object.extendedData()) {
        acutPrintf(L"%s has no extended data\n", name.c_str());
        return;
    }
    std::vector<std::vector<std::wstring>> rows = {{L"Application", L"Key", L"Kind", L"Value"}};
    for (const std::wstring& application : applicationsOf(*object.extendedData())) {
        const RecordList list(object.xData(application.c_str()));
        for (const StoredEntry& entry : storedEntries(list.get()))
            rows.push_back({application, onOneLine(entry.key), entry.kind, valuesText(entry)});
    }
    printTable(rows, "llll");
    acutPrintf(L"%s: %d of %d bytes\n", name.c_str(), static_cast<int>(object.extendedData()->size()),
               static_cast<int>(hostkit::GroupBlock::maxExtendedDataSize));
}

void appendValue(const resbuf& record, std::string& json) {
    switch (AcDb::groupKind(record.restype)) {
    case AcDb::GroupKind::kReal:
        return hostkit::appendJsonNumber(record.resval.rreal, json);
    case AcDb::GroupKind::kPoint:
        for (int axis = 0; axis < 3; ++axis) {
            json += axis == 0 ? '[' : ',';
            hostkit::appendJsonNumber(record.resval.rpoint[axis], json);
        }
        json += ']';
        return;
    case AcDb::GroupKind::kInt16:
        json += std::to_string(record.resval.rint);
        return;
    case AcDb::GroupKind::kInt32:
        json += std::to_string(record.resval.rlong);
        return;
    default:
        return hostkit::appendJsonText(valueText(record), json);
    }
}

// A flag is true; an array stays one also with a single element.
void appendEntry(const StoredEntry& entry, std::string& json) {
    appendField("key", entry.key, json += '{');
    appendField("kind", entry.kind, json += ',');
    json += ",\"value\":";
    const bool isArray = std::wstring_view(entry.kind) == L"long array";
    if (entry.values.empty()) json += "true";
    if (isArray) json += '[';
    for (std::size_t i = 0; i < entry.values.size(); ++i) {
        if (i > 0) json += ',';
        appendValue(*entry.values[i], json);
    }
    if (isArray) json += ']';
    json += '}';
}

void appendApplication(const AcDbObject& object, const std::wstring& application, std::string& json) {
    const RecordList list(object.xData(application.c_str()));
    appendField("name", application, json += '{');
    json += ",\"entries\":[";
    std::string_view separator;
    for (const StoredEntry& entry : storedEntries(list.get())) {
        json += separator;
        appendEntry(entry, json);
        separator = ",";
    }
    json += "],\"records\":";
    hostkit::GroupBlock records;
    (void)records.appendList(list ? list->rbnext : nullptr);
    hostkit::appendJsonGroups(records, json);
    json += '}';
}

std::string entriesAsJson(const AcDbObject& object) {
    std::string json = "{";
    appendField("handle", handleText(object.handle()), json);
    appendField("type", object.dxfName(), json += ',');
    json += ",\"bytes\":" + std::to_string(object.extendedData() ? object.extendedData()->size() : 0);
    json += ",\"applications\":[";
    std::string_view separator;
    if (object.extendedData())
        for (const std::wstring& application : applicationsOf(*object.extendedData())) {
            json += separator;
            appendApplication(object, application, json);
            separator = ",";
        }
    return json + "]}";
}

} // namespace

void xdataCommand() {
    const AcApDocument* document = documentOrFail();
    CString word;
    if (!document || acedGetString(0, L"Handle of the object: ", word) != RTNORM) return;
    AcDbObjectId id;
    if (!findObject(*document->database(), word, id)) return;
    const std::optional<ReportForm> form = readReportForm();
    if (!form) return;
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead);
    if (!object.object()) return hostkit::failCommand(object.openStatus(), L"the object cannot be read");
    if (*form == ReportForm::table) return printEntries(*object.object());
    offerText(entriesAsJson(*object.object()));
}
