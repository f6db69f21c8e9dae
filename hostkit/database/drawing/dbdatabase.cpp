#include "dbdatabase.h"

#include "databasecontents.h"
#include "dbapserv.h"
#include "dbdictionary.h"
#include "dbsymtb.h"

#include "casefold.h"
#include "useraxes.h"

#include <algorithm>

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(AcDbDatabase, AcRxObject)

using hostkit::DatabaseAccess;
using hostkit::TableKind;

namespace {
void deleteObjects(const hostkit::StubPool& stubs) {
    for (std::size_t i = 0; i < stubs.count(); ++i) delete stubs.at(i)->object;
}
} // namespace

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool)
    : m_contents(std::make_unique<hostkit::DatabaseContents>(*this)) {
    if (!buildDefaultDrawing) return;
    try {
        DatabaseAccess::completeDrawing(*this);
    } catch (...) {
        deleteObjects(m_contents->stubs);
        throw;
    }
}

AcDbDatabase::~AcDbDatabase() {
    AcDbHostApplicationServices* services = acdbHostApplicationServices();
    if (services && services->workingDatabase() == this) services->setWorkingDatabase(nullptr);
    deleteObjects(m_contents->stubs);
}

// Objects.

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object) {
    if (!object) return Acad::eNullObjectPointer;
    if (!object->objectId().isNull()) return Acad::eAlreadyInDb;
    if (!mayWrite()) return Acad::eLockViolation;
    id = DatabaseAccess::addOpen(*this, object, object->ownerId());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* object) {
    AcDbObjectId id;
    return addAcDbObject(id, object);
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                                const AcDbHandle& handle, Adesk::UInt32) {
    if (handle.isNull()) return Acad::eNullHandle;
    const AcDbObjectId found = createIfNotFound ? DatabaseAccess::reserve(*this, handle.value())
                                                : DatabaseAccess::find(*this, handle.value());
    if (found.isNull()) return Acad::eUnknownHandle;
    id = found;
    return Acad::eOk;
}

AcDbHandle AcDbDatabase::handseed() const {
    AcDbHandleValue seed = m_contents->nextHandle;
    while (m_contents->handles.find(seed)) ++seed;
    return AcDbHandle(seed);
}

Acad::ErrorStatus AcDbDatabase::setHandseed(const AcDbHandle& handle) {
    if (handle.value() > hostkit::DatabaseContents::highestCounted) return Acad::eOutOfRange;
    m_contents->nextHandle = std::max(m_contents->nextHandle, handle.value());
    return Acad::eOk;
}

Adesk::Int32 AcDbDatabase::approxNumObjects() const {
    Adesk::Int32 count = 0;
    DatabaseAccess::forEachObject(*this, [&](AcDbObject&) { ++count; });
    return count;
}

int AcDbDatabase::numOpenObjects() const {
    int count = 0;
    DatabaseAccess::forEachObject(*this, [&](AcDbObject& object) {
        const AcDbStub& stub = *object.objectId().stub();
        if (stub.readers > 0 || stub.openMode != 0) ++count;
    });
    return count;
}

// Undo and transactions.

bool AcDbDatabase::undoRecording() const { return m_contents->changes.isRecording(); }
void AcDbDatabase::disableUndoRecording(bool disable) { m_contents->changes.setRecording(!disable); }
AcDbTransactionManager* AcDbDatabase::transactionManager() const { return &m_contents->transactions; }

// Tables and dictionaries.

AcDbObjectId AcDbDatabase::blockTableId() const { return DatabaseAccess::table(*this, TableKind::kBlock); }
AcDbObjectId AcDbDatabase::layerTableId() const { return DatabaseAccess::table(*this, TableKind::kLayer); }
AcDbObjectId AcDbDatabase::textStyleTableId() const {
    return DatabaseAccess::table(*this, TableKind::kTextStyle);
}
AcDbObjectId AcDbDatabase::linetypeTableId() const {
    return DatabaseAccess::table(*this, TableKind::kLinetype);
}
AcDbObjectId AcDbDatabase::viewTableId() const { return DatabaseAccess::table(*this, TableKind::kView); }
AcDbObjectId AcDbDatabase::UCSTableId() const { return DatabaseAccess::table(*this, TableKind::kUcs); }
AcDbObjectId AcDbDatabase::viewportTableId() const {
    return DatabaseAccess::table(*this, TableKind::kViewport);
}
AcDbObjectId AcDbDatabase::regAppTableId() const { return DatabaseAccess::table(*this, TableKind::kRegApp); }
AcDbObjectId AcDbDatabase::dimStyleTableId() const {
    return DatabaseAccess::table(*this, TableKind::kDimStyle);
}
AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return m_contents->namedObjectsDictionary; }

namespace {

AcDbObjectId rootEntry(const AcDbDatabase& database, const wchar_t* name) {
    AcDbObjectId id;
    const auto* root = DatabaseAccess::objectOf<AcDbDictionary>(database.namedObjectsDictionaryId());
    if (root) root->getAt(name, id);
    return id;
}

AcDbObjectId recordNamed(AcDbObjectId table, std::wstring_view name) {
    const auto* found = DatabaseAccess::objectOf<AcDbSymbolTable>(table);
    return found ? found->find(name) : AcDbObjectId();
}

std::wstring_view recordName(AcDbObjectId id) {
    const auto* record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
    return record ? std::wstring_view(record->name()) : std::wstring_view();
}

} // namespace

AcDbObjectId AcDbDatabase::layoutDictionaryId() const { return rootEntry(*this, L"ACAD_LAYOUT"); }
AcDbObjectId AcDbDatabase::groupDictionaryId() const { return rootEntry(*this, L"ACAD_GROUP"); }

template <typename Table>
Acad::ErrorStatus AcDbDatabase::openTable(Table*& table, AcDbObjectId id, AcDb::OpenMode mode) {
    return acdbOpenObject(table, id, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return openTable(table, blockTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return openTable(table, layerTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
    return openTable(table, textStyleTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return openTable(table, linetypeTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbViewTable*& table, AcDb::OpenMode mode) {
    return openTable(table, viewTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbUCSTable*& table, AcDb::OpenMode mode) {
    return openTable(table, UCSTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbViewportTable*& table, AcDb::OpenMode mode) {
    return openTable(table, viewportTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
    return openTable(table, regAppTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode) {
    return openTable(table, dimStyleTableId(), mode);
}
Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return getSymbolTable(table, mode);
}
Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return getSymbolTable(table, mode);
}
Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
    return getSymbolTable(table, mode);
}
Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return getSymbolTable(table, mode);
}
Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
    return getSymbolTable(table, mode);
}
Acad::ErrorStatus AcDbDatabase::getDimStyleTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode) {
    return getSymbolTable(table, mode);
}
Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    return openTable(dictionary, namedObjectsDictionaryId(), mode);
}

// Standing records.

AcDbObjectId AcDbDatabase::byLayerLinetype() const { return recordNamed(linetypeTableId(), L"ByLayer"); }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return recordNamed(linetypeTableId(), L"ByBlock"); }
AcDbObjectId AcDbDatabase::continuousLinetype() const {
    return recordNamed(linetypeTableId(), L"Continuous");
}
AcDbObjectId AcDbDatabase::layerZero() const { return recordNamed(layerTableId(), L"0"); }
AcDbObjectId AcDbDatabase::modelSpaceId() const { return recordNamed(blockTableId(), L"*Model_Space"); }
AcDbObjectId AcDbDatabase::paperSpaceId() const { return recordNamed(blockTableId(), L"*Paper_Space"); }
AcDbObjectId AcDbDatabase::textStyleStandard() const { return recordNamed(textStyleTableId(), L"Standard"); }
AcDbObjectId AcDbDatabase::dimStyleStandard() const { return recordNamed(dimStyleTableId(), L"Standard"); }
AcDbObjectId AcDbDatabase::currentSpaceId() const { return tilemode() ? modelSpaceId() : paperSpaceId(); }

// Header variables.

hostkit::HeaderVariables& AcDbDatabase::header() { return m_contents->header; }
const hostkit::HeaderVariables& AcDbDatabase::header() const { return m_contents->header; }

// A name that the header has wrong gives the record that every drawing has.
AcDbObjectId AcDbDatabase::clayer() const {
    const AcDbObjectId id = recordNamed(layerTableId(), header().text(L"CLAYER", L"0"));
    return id.isNull() ? layerZero() : id;
}

AcDbObjectId AcDbDatabase::celtype() const {
    const AcDbObjectId id = recordNamed(linetypeTableId(), header().text(L"CELTYPE", L"ByLayer"));
    return id.isNull() ? byLayerLinetype() : id;
}

AcDbObjectId AcDbDatabase::textstyle() const {
    const AcDbObjectId id = recordNamed(textStyleTableId(), header().text(L"TEXTSTYLE", L"Standard"));
    return id.isNull() ? textStyleStandard() : id;
}

AcDbObjectId AcDbDatabase::dimstyle() const {
    const AcDbObjectId id = recordNamed(dimStyleTableId(), header().text(L"DIMSTYLE", L"Standard"));
    return id.isNull() ? dimStyleStandard() : id;
}

Acad::ErrorStatus AcDbDatabase::setCurrent(const wchar_t* variable, short code, AcDbObjectId table,
                                           AcDbObjectId record) {
    const auto* records = DatabaseAccess::objectOf<AcDbSymbolTable>(table);
    if (!records || !records->has(record)) return Acad::eInvalidInput;
    header().setText(variable, recordName(record), code);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
    return setCurrent(L"CLAYER", 8, layerTableId(), layer);
}
Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId linetype) {
    return setCurrent(L"CELTYPE", 6, linetypeTableId(), linetype);
}
Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId style) {
    return setCurrent(L"TEXTSTYLE", 7, textStyleTableId(), style);
}
Acad::ErrorStatus AcDbDatabase::setDimstyle(AcDbObjectId style) {
    return setCurrent(L"DIMSTYLE", 2, dimStyleTableId(), style);
}

AcCmColor AcDbDatabase::cecolor() const {
    AcCmColor color;
    const Adesk::Int64 index = header().integer(L"CECOLOR", AcCmColor::kACIbyLayer);
    if (index >= 0) color.setColorIndex(static_cast<Adesk::UInt16>(index & 0xFFFF));
    return color;
}

Acad::ErrorStatus AcDbDatabase::setCecolor(const AcCmColor& color) {
    header().setInteger(L"CECOLOR", color.colorIndex(), 62);
    return Acad::eOk;
}

AcDb::LineWeight AcDbDatabase::celweight() const {
    return static_cast<AcDb::LineWeight>(header().integer(L"CELWEIGHT", AcDb::kLnWtByLayer));
}

Adesk::Int16 AcDbDatabase::smallInteger(const wchar_t* variable, Adesk::Int16 otherwise) const {
    return static_cast<Adesk::Int16>(header().integer(variable, otherwise));
}

double AcDbDatabase::celtscale() const { return header().real(L"CELTSCALE", 1.0); }
double AcDbDatabase::ltscale() const { return header().real(L"LTSCALE", 1.0); }
double AcDbDatabase::textsize() const { return header().real(L"TEXTSIZE", 2.5); }
Adesk::Int16 AcDbDatabase::insunits() const { return smallInteger(L"INSUNITS", 0); }
Adesk::Int16 AcDbDatabase::measurement() const { return smallInteger(L"MEASUREMENT", 0); }
Adesk::Int16 AcDbDatabase::lunits() const { return smallInteger(L"LUNITS", 2); }
Adesk::Int16 AcDbDatabase::luprec() const { return smallInteger(L"LUPREC", 4); }
Adesk::Int16 AcDbDatabase::aunits() const { return smallInteger(L"AUNITS", 0); }
Adesk::Int16 AcDbDatabase::auprec() const { return smallInteger(L"AUPREC", 0); }
double AcDbDatabase::angbase() const { return header().real(L"ANGBASE"); }
bool AcDbDatabase::angdir() const { return smallInteger(L"ANGDIR", 0) != 0; }
bool AcDbDatabase::tilemode() const { return smallInteger(L"TILEMODE", 1) != 0; }
AcGePoint3d AcDbDatabase::extmin() const { return header().point(L"EXTMIN"); }
AcGePoint3d AcDbDatabase::extmax() const { return header().point(L"EXTMAX"); }
AcGePoint3d AcDbDatabase::limmin() const { return header().point(L"LIMMIN"); }
AcGePoint3d AcDbDatabase::limmax() const { return header().point(L"LIMMAX"); }
AcGePoint3d AcDbDatabase::insbase() const { return header().point(L"INSBASE"); }

AcGePoint3d AcDbDatabase::ucsorg() const { return hostkit::userAxes(header(), false).origin; }
AcGeVector3d AcDbDatabase::ucsxdir() const { return hostkit::userAxes(header(), false).x; }
AcGeVector3d AcDbDatabase::ucsydir() const { return hostkit::userAxes(header(), false).y; }
AcGePoint3d AcDbDatabase::pucsorg() const { return hostkit::userAxes(header(), true).origin; }
AcGeVector3d AcDbDatabase::pucsxdir() const { return hostkit::userAxes(header(), true).x; }
AcGeVector3d AcDbDatabase::pucsydir() const { return hostkit::userAxes(header(), true).y; }

Acad::ErrorStatus AcDbDatabase::setInsunits(Adesk::Int16 unit) {
    constexpr Adesk::Int16 lastUnit = 24;
    if (unit < 0 || unit > lastUnit) return Acad::eInvalidInput;
    header().setInteger(L"INSUNITS", unit);
    return Acad::eOk;
}

// Origin.

Acad::ErrorStatus AcDbDatabase::getFilename(const wchar_t*& name) const {
    name = originalFileName();
    return *name ? Acad::eOk : Acad::eFileNotFound;
}

const wchar_t* AcDbDatabase::originalFileName() const { return m_contents->fileName.c_str(); }

AcDb::AcDbDwgVersion AcDbDatabase::originalFileVersion() const {
    return m_contents->source ? m_contents->source->version : AcDb::kDHL_Unknown;
}

std::shared_ptr<const hostkit::DrawingSource> AcDbDatabase::source() const { return m_contents->source; }
