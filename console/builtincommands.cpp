#include "builtincommands.h"

#include "acdocman.h"
#include "aced.h"
#include "auditcommand.h"
#include "casefold.h"
#include "commandoutput.h"
#include "consolestate.h"
#include "consoletext.h"
#include "dbblocktable.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "dblayertable.h"
#include "dblinetypetablerecord.h"
#include "dbobjptr.h"
#include "dictcommand.h"
#include "drawinglisting.h"
#include "host.h"
#include "inventorycommands.h"
#include "modulecommand.h"
#include "plotcommand.h"
#include "runtimeservices.h"
#include "saveforms.h"
#include "undocommand.h"
#include "variablecommands.h"
#include "xdatacommand.h"

#include <memory>
#include <unordered_map>

namespace {

using Row = std::vector<std::wstring>;

struct Builtin {
    const wchar_t* name;
    AcRxFunctionPtr function;
    const wchar_t* arguments;
    const wchar_t* help;
    Adesk::Int32 flags = ACRX_CMD_MODAL;
};

void quit() { consoleState().wantsToQuit = true; }

std::wstring colorName(const AcCmEntityColor& color) {
    if (color.isByACI()) return std::to_wstring(color.colorIndex());
    const std::uint32_t rgb = color.rgb();
    return std::to_wstring(rgb >> 16 & 0xFF) + L"," + std::to_wstring(rgb >> 8 & 0xFF) + L"," +
           std::to_wstring(rgb & 0xFF);
}

std::wstring layerState(const AcDbLayerTableRecord& layer) {
    std::wstring state = layer.isOff() ? L"off" : L"on";
    if (layer.isFrozen()) state += L" frozen";
    if (layer.isLocked()) state += L" locked";
    if (!layer.isPlottable()) state += L" unplotted";
    return state;
}

// Of all spaces and blocks.
std::unordered_map<AcDbObjectId, std::size_t> entitiesByLayer(AcDbDatabase& database) {
    std::unordered_map<AcDbObjectId, std::size_t> counts;
    const AcDbSymbolTablePointer<AcDbBlockTable> blocks(&database, AcDb::kForRead);
    if (!blocks.object()) return counts;
    for (const AcDbObjectId id : blocks->records()) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
        if (!block.object()) continue;
        for (const AcDbObjectId each : block->entities()) {
            const AcDbObjectPointer<AcDbEntity> entity(each, AcDb::kForRead);
            if (entity.object()) ++counts[entity->layerId()];
        }
    }
    return counts;
}

void layers() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    const AcDbSymbolTablePointer<AcDbLayerTable> table(document->database(), AcDb::kForRead);
    if (!table.object()) return hostkit::failCommand(table.openStatus(), L"the layers cannot be read");
    auto counts = entitiesByLayer(*document->database());
    std::vector<Row> rows = {{L"Layer", L"Entities", L"Colour", L"Linetype", L"State"}};
    AcDbLayerTableIterator* opened = nullptr;
    table->newIterator(opened);
    for (const std::unique_ptr<AcDbLayerTableIterator> iterator(opened); !iterator->done();
         iterator->step()) {
        AcDbObjectId id;
        iterator->getRecordId(id);
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
        if (!layer.object()) continue;
        const AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(layer->linetypeObjectId(), AcDb::kForRead);
        rows.push_back({layer->name(), std::to_wstring(counts[id]), colorName(layer->color()),
                        linetype.object() ? linetype->name() : L"Continuous", layerState(*layer.object())});
    }
    printTable(rows, "lrrll");
}

void printListing(const hostkit::DrawingListing& listing) {
    std::vector<Row> rows = {{L"Type", L"Layer", L"Handle", L"Space", L"Vertices", L"Name or text"}};
    for (const hostkit::ListedEntity& entity : listing.entities) {
        if (acedUsrBrk()) return;
        std::wstring text = onOneLine(entity.name.empty() ? entity.text : entity.name);
        constexpr std::size_t longest = 60;
        if (text.size() > longest) text = text.substr(0, longest - 3) + L"...";
        rows.push_back({entity.type, entity.layer, entity.handle, entity.space,
                        std::to_wstring(entity.vertices.size()), std::move(text)});
    }
    printTable(rows, "llllrl");
    acutPrintf(L"%d entities, %s\n", static_cast<int>(listing.entities.size()), listing.version.c_str());
}

void list() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    const std::optional<ReportForm> form = readReportForm();
    if (!form) return;
    const hostkit::DrawingListing listing = hostkit::listDrawing(*document->database());
    if (*form == ReportForm::table) return printListing(listing);
    offerText(hostkit::listingAsJson(listing));
}

// The words behind the file name of SAVEAS, in any order; false when one of them is unknown.
bool readSaveWords(hostkit::WriteOptions& options, bool& mayReplace) {
    for (;;) {
        CString word;
        acedInitGet(0, (L"OVERWRITE FIELDS " + formWords()).c_str());
        const int answer = acedGetKword(L"[OVERWRITE/FIELDS/TEXT/BINARY/R12 to 2018] <save now>: ", word);
        if (answer == RTNONE) return true;
        if (answer != RTNORM) return false;
        if (word == L"OVERWRITE") mayReplace = true;
        if (word == L"FIELDS") options.everythingFromFields = true;
        (void)applyFormWord(word.GetString(), options);
    }
}

void saveAs() {
    AcApDocument* document = documentOrFail();
    CString name;
    if (!document || acedGetString(0, L"File: ", name) != RTNORM) return;
    if (name.IsEmpty()) return hostkit::failCommand(Acad::eInvalidInput, L"a file name is needed");
    hostkit::WriteOptions options;
    hostkit::FormChanges changes;
    options.changes = &changes;
    hostkit::OutputFile file{name.GetString()};
    if (!readSaveWords(options, file.mayReplace))
        return hostkit::failCommand(
            Acad::eInvalidInput,
            L"behind the file stand OVERWRITE, FIELDS, TEXT, BINARY or a form, R12 to 2018");
    if (!hostkit::acceptOutputFile(file, hostkit::OutputFiles::Kind::drawing)) return;
    hostkit::HostPort& port = hostkit::Host::current()->port();
    port.flush();
    const Acad::ErrorStatus status = hostkit::Host::current()->saveDocument(*document, file.name, options);
    if (status != Acad::eOk)
        return hostkit::failCommand(status, file.name + L": the drawing could not be saved");
    port.outputs().noteWritten(file.name);
    if (!hostkit::isStandardOutput(file.name)) printFormChanges(changes);
}

void help();

constexpr Builtin builtins[] = {
    {L"HELP", help, L"", L"this list"},
    {L"LIST", list, L"[TABLE | JSON [FILE [OVERWRITE]]]", L"all entities of the drawing"},
    {L"XDATA", xdataCommand, L"HANDLE [TABLE | JSON [FILE [OVERWRITE]]]",
     L"the extended data of an object, application by application"},
    {L"DICT", dictCommand, L"[CONTENTS] [TABLE | JSON [FILE [OVERWRITE]]]",
     L"the tree of dictionaries; with CONTENTS what stands in their records"},
    {L"AUDIT", auditCommand, L"[OF FILE] [TABLE | JSON [FILE [OVERWRITE]]]",
     L"checks the text as which the drawing would be saved, or a file as it is; fails where it has faults"},
    {L"LAYERS", layers, L"", L"the layers with their number of entities and state"},
    {L"PLOT", plotCommand, L"FILE.svg [OVERWRITE] [WIDTH HEIGHT] [FILL LAYER]...",
     L"a picture of the drawing; the page in millimetres; closed curves of these layers filled"},
    {L"SAVEAS", saveAs, L"FILE [OVERWRITE] [FIELDS] [TEXT | BINARY] [R12 | 2000 ... 2018]",
     L"saves the drawing; a file that is there, the opened one too, only with OVERWRITE"},
    {L"UNDO", undoCommand, L"[COUNT]", L"takes back the last commands that changed the drawing",
     ACRX_CMD_NO_UNDO_MARKER},
    {L"SETVAR", setVariableCommand, L"[NAME [VALUE]]",
     L"shows or sets a system variable; without a name, or with ?, lists all; . is the empty text"},
    {L"VERSION", versionCommand, L"", L"the versions of host and kit, and the product's key"},
    {L"MODULES", modulesCommand, L"[PROCESS]",
     L"the loaded modules in the order of loading; with PROCESS all files that the program has code from"},
    {L"COMMANDS", commandsCommand, L"", L"all commands with their groups, local names and flags"},
    {L"QUIT", quit, L"", L"ends the program; nothing is saved but by --output"},
};

void help() {
    std::vector<Row> rows = {{L"Command", L"Answers", L"What it does"}};
    for (const Builtin& each : builtins) rows.push_back({each.name, each.arguments, each.help});
    printTable(rows, "lll");
    std::wstring others;
    for (const AcEdCommand* command : acedRegCmds->commands())
        if (!hostkit::equalFolded(command->commandGroup(), L"CONSOLE") &&
            !hostkit::equalFolded(command->commandGroup(), L"HOST"))
            others += std::wstring(others.empty() ? L"" : L", ") + command->localName();
    if (!others.empty()) acutPrintf(L"Commands of modules: %s\n", others.c_str());
}

} // namespace

void registerBuiltinCommands(AcEdCommandStack& stack) {
    for (const Builtin& each : builtins)
        stack.addCommand(L"CONSOLE", each.name, each.name, each.flags, each.function);
}
