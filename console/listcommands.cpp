#include "listcommands.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "dbblocktable.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "dblayertable.h"
#include "dblinetypetablerecord.h"
#include "dbobjptr.h"
#include "drawinglisting.h"
#include "modulecommand.h"
#include "selectioninput.h"

#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace {

using Row = std::vector<std::wstring>;

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

void printListing(const hostkit::DrawingListing& listing) {
    std::vector<Row> rows = {{L"Type", L"Layer", L"Handle", L"Space", L"Vertices", L"Name or text"}};
    for (const hostkit::ListedEntity& entity : listing.entities) {
        if (acedUsrBrk()) return;
        std::wstring text = onOneLine(entity.name.empty() ? entity.text : entity.name);
        rows.push_back({entity.type, entity.layer, entity.handle, entity.space,
                        std::to_wstring(entity.vertices.size()), std::move(text)});
    }
    printTable(rows, "llllrl");
    acutPrintf(L"%d entities, %s\n", static_cast<int>(listing.entities.size()), listing.version.c_str());
}

// False, and the command has failed, where nothing is selected.
bool keepSelected(const AcApDocument& document, hostkit::DrawingListing& listing) {
    std::unordered_set<std::wstring> handles;
    for (const AcDbObjectId id : impliedSelectionOrFail(document)) handles.insert(handleText(id.handle()));
    std::erase_if(listing.entities,
                  [&](const hostkit::ListedEntity& each) { return !handles.contains(each.handle); });
    return !handles.empty();
}

} // namespace

void layersCommand() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    const AcDbSymbolTablePointer<AcDbLayerTable> table(document->database(), AcDb::kForRead);
    if (!table.object()) return hostkit::failCommand(table.openStatus(), L"the layers cannot be read");
    auto counts = entitiesByLayer(*document->database());
    std::vector<Row> rows = {{L"Layer", L"Entities", L"Colour", L"Linetype", L"State"}};
    AcDbLayerTableIterator* opened = nullptr;
    const Acad::ErrorStatus status = table->newIterator(opened);
    if (status != Acad::eOk) return hostkit::failCommand(status, L"the layers cannot be listed");
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

void listCommand() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    bool ofSelection = false;
    const std::optional<ReportForm> form = readReportForm(&ofSelection);
    if (!form) return;
    hostkit::DrawingListing listing = hostkit::listDrawing(*document->database());
    if (ofSelection && !keepSelected(*document, listing)) return;
    if (*form == ReportForm::table) return printListing(listing);
    offerText(hostkit::listingAsJson(listing));
}
