#include "aced.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "layerchoice.h"
#include "layercommands.h"
#include "modulecommand.h"
#include "vexolayertools.h"

namespace {

constexpr unsigned short colorOfHost = 65535;

constexpr const wchar_t* nameRules =
    L"names have 1 to 255 characters, none of < > / \\ \" : ; ? * | , = ` and no control characters";

void refuseName(const CString& name) {
    hostkit::failCommand(Acad::eInvalidSymbolTableName,
                         (L"\"" + name + L"\" cannot be the name of a layer: " + nameRules).view());
}

struct NewLayer {
    CString name;
    int isOn = 1;
    int isCurrent = 0;
    unsigned short color = colorOfHost;
    bool isRenamed = false; ///< under a free name, where the name is taken
};

bool readColor(unsigned short& color) {
    int index = 0;
    if (acedGetInt(L"Colour 1 to 255: ", &index) != RTNORM || index < 1 || index > 255) {
        hostkit::failCommand(Acad::eInvalidInput, L"a layer's colour is a number from 1 to 255");
        return false;
    }
    color = static_cast<unsigned short>(index);
    return true;
}

bool readOptions(NewLayer& layer) {
    for (;;) {
        CString option;
        acedInitGet(0, L"Colour CUrrent Off New");
        const int result = acedGetKword(L"Option [Colour/CUrrent/Off/New]: ", option);
        if (result == RTNONE) return true;
        if (result == RTREJ)
            hostkit::failCommand(Acad::eInvalidInput, L"the options are COLOUR, CURRENT, OFF and NEW");
        if (result != RTNORM) return false;
        if (option == L"Colour" && !readColor(layer.color)) return false;
        if (option == L"CUrrent") layer.isCurrent = 1;
        if (option == L"Off") layer.isOn = 0;
        if (option == L"New") layer.isRenamed = true;
    }
}

} // namespace

void makeLayer() {
    CVxLogEntry entry(L"LAYERS::makeLayer");
    AcDbDatabase* const drawing = drawingOrFail();
    NewLayer layer;
    if (!drawing || acedGetString(0, L"Name: ", layer.name) != RTNORM || !readOptions(layer)) return;
    AcDbObjectId id;
    const bool wasThere = VEXOLayerTools::existLayer(layer.name, id) && !layer.isRenamed;
    const auto add = layer.isRenamed ? VEXOLayerTools::addNewLayer : VEXOLayerTools::addLayer;
    if (!add(layer.name, id, drawing, layer.isOn, layer.isCurrent, layer.color))
        return refuseName(layer.name);
    acutPrintf(wasThere ? L"\"%s\" was there; it stays as it was%s\n" : L"\"%s\" made%s\n", nameOf(id),
               layer.isCurrent ? L", and is current" : L"");
}

void renameLayers() {
    CVxLogEntry entry(L"LAYERS::renameLayers");
    AcDbObjectIdArray layers;
    CString oldText, newText;
    if (!readLayers(layers) || acedGetString(0, L"Text to replace: ", oldText) != RTNORM ||
        acedGetString(0, L"By the text <none>: ", newText) != RTNORM)
        return;
    int having = 0;
    CString refused;
    for (const AcDbObjectId layer : layers) {
        const CString before = nameOf(layer);
        CString wanted = before;
        wanted.Replace(oldText, newText);
        if (!VEXOLayerTools::replaceTextFromLayerName(layer, oldText, newText)) continue;
        ++having;
        const CString after = nameOf(layer);
        if (after == before && wanted != before)
            refused += L"\"" + before + L"\" cannot become \"" + wanted + L"\"; ";
        else
            acutPrintf(L"\"%s\" is now \"%s\"\n", before, after);
    }
    if (having == 0)
        hostkit::failCommand(Acad::eKeyNotFound,
                             (L"none of these names holds the text \"" + oldText + L"\"").view());
    if (!refused.IsEmpty())
        hostkit::failCommand(Acad::eInvalidSymbolTableName,
                             (refused + nameRules + L"; layer 0 keeps its own").view());
}

namespace {

/// Takes out of the list what every drawing keeps, and gives it.
AcDbObjectIdArray takeStanding(AcDbObjectIdArray& layers, const AcDbDatabase& drawing) {
    AcDbObjectIdArray standing;
    for (const AcDbObjectId each : {drawing.layerZero(), drawing.clayer()}) {
        if (!layers.contains(each)) continue;
        layers.remove(each);
        standing.append(each);
    }
    return standing;
}

int entitiesOn(const AcDbObjectIdArray& layers) {
    AcDbObjectIdArray entities;
    VEXOLayerTools::getEntitiesFromLayers(layers, entities);
    return entities.length();
}

/// False, and the command has failed or was left, without an answer.
bool readFate(bool& isErasing) {
    CString fate(L"Move");
    acedInitGet(0, L"Move Erase");
    const int result = acedGetKword(L"Their entities [Move/Erase] <Move>: ", fate);
    if (result == RTREJ)
        hostkit::failCommand(Acad::eInvalidInput,
                             L"entities are moved to layer 0 with MOVE, or erased with ERASE");
    isErasing = fate == L"Erase";
    return result == RTNORM || result == RTNONE;
}

} // namespace

void deleteLayers() {
    CVxLogEntry entry(L"LAYERS::deleteLayers");
    const AcDbDatabase* const drawing = drawingOrFail();
    AcDbObjectIdArray layers;
    bool isErasing = false;
    if (!drawing || !readLayers(layers) || !readFate(isErasing)) return;
    const AcDbObjectIdArray standing = takeStanding(layers, *drawing);
    const int before = entitiesOn(layers);
    VEXOLayerTools::delLayers(layers, isErasing);
    AcDbObjectIdArray left;
    for (const AcDbObjectId layer : layers)
        if (!layer.isErased()) left.append(layer);
    acutPrintf(L"%s deleted, %s %s\n", countedLayers(layers.length() - left.length()),
               countedEntities(before - entitiesOn(left)), isErasing ? L"erased" : L"moved to layer 0");
    if (!left.isEmpty())
        hostkit::failCommand(Acad::eCannotBeErasedByCaller,
                             (namesOf(left) + L": the layer or an entity on it is in use").view());
    if (!standing.isEmpty())
        hostkit::failCommand(Acad::eCannotBeErasedByCaller,
                             (namesOf(standing) + L": layer 0 and the current layer stay").view());
}
