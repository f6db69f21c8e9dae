#include "capturecommand.h"

#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "dbblocktablerecord.h"
#include "dbobjptr.h"
#include "dbopaque.h"
#include "escaping.h"
#include "host.h"
#include "librarywork.h"
#include "ownedparts.h"
#include "selectioninput.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string_view>

namespace {

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

Parts owned(hostkit::OwnedParts& entities) {
    Parts parts;
    parts.reserve(static_cast<std::size_t>(entities.list.length()));
    for (void*& each : entities.list) parts.push_back(entities.take(each));
    return parts;
}

Parts captured(const LibraryWork& work, AcDbEntity& entity) {
    hostkit::OwnedParts drawn;
    work.capture(entity, drawn.list);
    return owned(drawn);
}

std::wstring colorText(const AcDbEntity& entity) {
    const AcCmColor color = entity.color();
    if (color.isByLayer()) return L"ByLayer";
    return color.isByBlock() ? L"ByBlock" : std::to_wstring(color.colorIndex());
}

std::wstring pointText(const AcGePoint3d& point) {
    CString text;
    text.Format(L"%.4g,%.4g,%.4g", point.x, point.y, point.z);
    return text.GetString();
}

/// A part of what an entity draws.
struct DrawnPart {
    AcDbHandle source;
    std::wstring type;
    std::wstring color;
    AcDbExtents box; ///< empty where it has none
};

DrawnPart drawnPart(AcDbHandle source, const AcDbEntity& part) {
    DrawnPart drawn{source, part.dxfName(), colorText(part), {}};
    (void)part.getGeomExtents(drawn.box);
    return drawn;
}

void printParts(const std::vector<DrawnPart>& parts) {
    std::vector<std::vector<std::wstring>> rows = {{L"Of", L"Draws", L"Colour", L"From", L"To"}};
    for (const DrawnPart& part : parts) {
        const bool hasBox = !part.box.isEmpty();
        rows.push_back({handleText(part.source), part.type, part.color,
                        hasBox ? pointText(part.box.minPoint()) : L"",
                        hasBox ? pointText(part.box.maxPoint()) : L""});
    }
    if (rows.size() > 1) printTable(rows, "lllll");
}

void appendCorner(const char* name, const AcGePoint3d& point, std::string& json) {
    json += std::string(", \"") + name + "\": [";
    for (unsigned int axis = 0; axis < 3; ++axis) {
        if (axis > 0) json += ", ";
        hostkit::appendJsonNumber(point[axis], json);
    }
    json += "]";
}

// An array of {"of", "type", "colour", "from", "to"}; the box is missing where a part has none.
std::string partsAsJson(const std::vector<DrawnPart>& parts) {
    std::string json = "[";
    for (const DrawnPart& part : parts) {
        json += json.size() > 1 ? ",\n  {" : "\n  {";
        appendField("of", handleText(part.source), json);
        json += ", ";
        appendField("type", part.type, json);
        json += ", ";
        appendField("colour", part.color, json);
        if (!part.box.isEmpty()) {
            appendCorner("from", part.box.minPoint(), json);
            appendCorner("to", part.box.maxPoint(), json);
        }
        json += "}";
    }
    return json + (parts.empty() ? "]\n" : "\n]\n");
}

// Those of the host have parts of their own, or are simple enough.
bool isOfApplication(const AcDbEntity& entity) {
    return !std::wstring_view(entity.isA()->name()).starts_with(L"AcDb");
}

// Kinds without a class that a person takes apart: what they draw is all that is known of them. Images and
// the like are more than what they draw.
bool isTakenApartAsDrawn(const AcDbEntity& entity) {
    constexpr std::wstring_view names[] = {L"ACAD_TABLE",  L"ARC_DIMENSION", L"LARGE_RADIAL_DIMENSION",
                                           L"LEADER",      L"MLEADER",       L"MLINE",
                                           L"MULTILEADER", L"TOLERANCE"};
    return AcDbOpaqueEntity::cast(&entity) &&
           std::find(std::begin(names), std::end(names), std::wstring_view(entity.dxfName())) !=
               std::end(names);
}

Parts partsOf(const LibraryWork& work, AcDbEntity& entity) {
    hostkit::OwnedParts parts;
    const Acad::ErrorStatus status = entity.explode(parts.list);
    if (status == Acad::eNotApplicable && (isOfApplication(entity) || isTakenApartAsDrawn(entity)))
        return captured(work, entity);
    return owned(parts);
}

// False, with all as it was, where the entity has no parts or cannot be changed.
bool explodeInPlace(const LibraryWork& work, AcDbObjectId id, std::size_t& made) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity.object()) return false;
    Parts parts = partsOf(work, *entity);
    const AcDbObjectPointer<AcDbBlockTableRecord> block(entity->ownerId(), AcDb::kForWrite);
    if (parts.empty() || !block.object()) return false;
    std::vector<AcDbObjectId> taken;
    taken.reserve(parts.size());
    for (std::unique_ptr<AcDbEntity>& part : parts) {
        if (block->appendAcDbEntity(part.get()) != Acad::eOk) break;
        taken.push_back(part->objectId());
        part.release()->close();
    }
    if (taken.size() == parts.size() && entity->erase() == Acad::eOk) {
        made += taken.size();
        return true;
    }
    for (const AcDbObjectId part : taken) {
        const AcDbObjectPointer<AcDbEntity> dropped(part, AcDb::kForWrite);
        if (dropped.object()) (void)dropped->erase();
    }
    return false;
}

} // namespace

void captureCommand() {
    const LibraryWork* const work = documentOrFail() ? libraryWorkOrFail() : nullptr;
    if (!work) return;
    const std::vector<AcDbObjectId> ids = selectionOrFail();
    if (ids.empty()) return;
    std::optional<ReportForm> form = ReportForm::table;
    if (!hostkit::Host::current()->runningCommand()->input.rest().empty()) form = readReportForm();
    if (!form) return;
    std::vector<DrawnPart> parts;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity.object()) continue;
        for (const std::unique_ptr<AcDbEntity>& part : captured(*work, *entity))
            parts.push_back(drawnPart(id.handle(), *part));
        if (acedUsrBrk()) return;
    }
    if (form == ReportForm::json) return offerText(partsAsJson(parts));
    printParts(parts);
    acutPrintf(L"%s drawn by %s\n", counted(parts.size(), L"entity", L"entities").c_str(),
               counted(ids.size(), L"entity", L"entities").c_str());
}

void explodeCommand() {
    const LibraryWork* const work = documentOrFail() ? libraryWorkOrFail() : nullptr;
    if (!work) return;
    std::size_t exploded = 0, made = 0;
    const std::vector<AcDbObjectId> ids = selectionOrFail();
    if (ids.empty()) return;
    for (const AcDbObjectId id : ids) exploded += explodeInPlace(*work, id, made);
    std::wstring text =
        counted(exploded, L"entity", L"entities") + L" exploded into " + std::to_wstring(made);
    if (exploded < ids.size()) text += L", " + std::to_wstring(ids.size() - exploded) + L" left as they are";
    acutPrintf(L"%s\n", text.c_str());
}
