#include "sketchstore.h"

#include "dbdict.h"
#include "modulecommand.h"
#include "vexodatabasetools.h"
#include "vexosmartopen.h"

namespace {

constexpr wchar_t dictionaryName[] = L"EXAMPLE_SKETCHES";

bool isSketch(AcDbObjectId id) {
    return VEXOSmartOpen<ExampleSketch>(id, AcDb::kForRead, false).status() == Acad::eOk;
}

CString nameOf(const AcDbDictionary& dictionary, AcDbObjectId id) {
    wchar_t* text = nullptr;
    if (dictionary.nameAt(id, text) != Acad::eOk) return {};
    const CString name(text);
    acutDelString(text);
    return name;
}

} // namespace

std::vector<NamedSketch> allSketches() {
    std::vector<NamedSketch> found;
    AcDbObjectIdArray ids;
    VEXODatabaseTools::getFromDictionary(dictionaryName, ids, nullptr);
    AcDbDictionary* const dictionary =
        VEXODatabaseTools::openDictionary(dictionaryName, AcDb::kForRead, nullptr, 0);
    if (!dictionary) return found;
    for (const AcDbObjectId id : ids)
        if (isSketch(id)) found.push_back({nameOf(*dictionary, id), id});
    dictionary->close();
    return found;
}

AcDbObjectId findSketch(const CString& name) {
    AcDbObjectId id;
    if (VEXODatabaseTools::isEntryInDictionary(dictionaryName, name, id, nullptr) && isSketch(id)) return id;
    hostkit::failCommand(Acad::eKeyNotFound, (L"there is no sketch \"" + name + L"\"").view());
    return {};
}

AcDbObjectId findOrMakeSketch(const CString& name) {
    AcDbObjectId id;
    if (VEXODatabaseTools::isEntryInDictionary(dictionaryName, name, id, nullptr)) return findSketch(name);
    auto made = std::make_unique<ExampleSketch>();
    VEXODatabaseTools::appendToDictionary(dictionaryName, made.get(), id, nullptr, true, name);
    if (id.isNull()) {
        hostkit::failCommand(Acad::eInvalidKey, (L"\"" + name + L"\" cannot be the name of a sketch").view());
        return id;
    }
    (void)made.release(); // the drawing's from here on
    return id;
}
