#include "aced.h"
#include "cvxlogentry.h"
#include "layerchoice.h"
#include "layercommands.h"
#include "modulecommand.h"
#include "vexolayertools.h"

namespace {

/// A state that layers are put into.
struct Switching {
    const wchar_t* done;
    const wchar_t* whyNot; ///< what the drawing does not let happen
    bool (*isDone)(const AcDbObjectId& layer);
    void (*apply)(const AcDbObjectIdArray& layers);
};

AcDbObjectIdArray thoseNotYet(const Switching& switching, const AcDbObjectIdArray& layers) {
    AcDbObjectIdArray left;
    for (const AcDbObjectId layer : layers)
        if (!switching.isDone(layer)) left.append(layer);
    return left;
}

void report(const Switching& switching, int all, const AcDbObjectIdArray& before,
            const AcDbObjectIdArray& left) {
    const int already = all - before.length();
    CString text = countedLayers(before.length() - left.length()) + L" " + switching.done;
    if (already > 0) text.AppendFormat(L", %d already", already);
    acutPrintf(L"%s\n", text);
    if (!left.isEmpty())
        hostkit::failCommand(Acad::eNotApplicable, (namesOf(left) + L": " + switching.whyNot).view());
}

void switchLayers(const Switching& switching) {
    CVxLogEntry entry(L"LAYERS::switchLayers");
    AcDbObjectIdArray layers;
    if (!readLayers(layers)) return;
    const AcDbObjectIdArray before = thoseNotYet(switching, layers);
    switching.apply(layers);
    report(switching, layers.length(), before, thoseNotYet(switching, layers));
}

bool isShown(const AcDbObjectId& layer) {
    return VEXOLayerTools::isLayerActive(layer) && !VEXOLayerTools::isFrozenLayer(layer);
}

constexpr const wchar_t* cannotOpen = L"the layer is in use and stays as it is";

} // namespace

// The application's layers are on and thawed, or neither.
void switchLayersOn() {
    switchLayers({L"on and thawed", cannotOpen, isShown,
                  [](const AcDbObjectIdArray& layers) { VEXOLayerTools::activateLayers(true, layers); }});
}

void switchLayersOff() {
    switchLayers({L"off", cannotOpen,
                  [](const AcDbObjectId& layer) { return !VEXOLayerTools::isLayerActive(layer); },
                  [](const AcDbObjectIdArray& layers) { VEXOLayerTools::activateLayers(false, layers); }});
}

void freezeLayers() {
    switchLayers({L"frozen", L"the current layer cannot be frozen", VEXOLayerTools::isFrozenLayer,
                  [](const AcDbObjectIdArray& layers) { VEXOLayerTools::freezeLayers(layers, true); }});
}

void thawLayers() {
    switchLayers({L"thawed", cannotOpen,
                  [](const AcDbObjectId& layer) { return !VEXOLayerTools::isFrozenLayer(layer); },
                  [](const AcDbObjectIdArray& layers) { VEXOLayerTools::freezeLayers(layers, false); }});
}

void lockLayers() {
    switchLayers({L"locked", cannotOpen, VEXOLayerTools::isLockedLayer,
                  [](const AcDbObjectIdArray& layers) { VEXOLayerTools::lockLayers(layers, true); }});
}

void unlockLayers() {
    switchLayers({L"unlocked", cannotOpen,
                  [](const AcDbObjectId& layer) { return !VEXOLayerTools::isLockedLayer(layer); },
                  [](const AcDbObjectIdArray& layers) { VEXOLayerTools::lockLayers(layers, false); }});
}

void isolateLayers() {
    CVxLogEntry entry(L"LAYERS::isolateLayers");
    AcDbObjectIdArray layers;
    AcDbDatabase* const drawing = drawingOrFail();
    if (!drawing || !readLayers(layers)) return;
    AcDbObjectIdArray all;
    VEXOLayerTools::getAllLayers(all, drawing);
    VEXOLayerTools::activateLayersExclusively(false, layers);
    int shown = 0;
    for (const AcDbObjectId layer : all) shown += isShown(layer);
    acutPrintf(L"%s shown, %d hidden\n", countedLayers(shown), all.length() - shown);
}
