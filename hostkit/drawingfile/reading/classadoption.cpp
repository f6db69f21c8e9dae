#include "classadoption.h"

#include "applicationclasses.h"
#include "drawingtext.h"
#include "recordhead.h"
#include "recordreader.h"
#include "textencoding.h"

#include "changelog.h"
#include "dbaccess.h"
#include "dbopaque.h"
#include "displaychanges.h"

namespace hostkit {
namespace {

class Adoption {
public:
    Adoption(AcDbDatabase& database, const DrawingSource& source)
        : m_source(source)
        , m_remembered(DatabaseAccess::changes(database).remembered())
        , m_reader(&database, DrawingText(static_cast<CodePage>(source.codePage)),
                   versionOfFiler(source.version)) {}

    bool isNeeded() const { return !m_classes.isEmpty(); }
    bool adopt(AcDbObject& opaque);

private:
    bool isUntouched(const AcDbObject& object) const;
    bool readInto(AcDbObject& made, SourceSpan span);

    const DrawingSource& m_source;
    std::unordered_set<const AcDbStub*> m_remembered;
    ApplicationClasses m_classes{};
    RecordReader m_reader;
    DrawingRecord m_record{};
    RecordHead m_head{};
};

// What undo remembers of an object is of its class.
bool Adoption::isUntouched(const AcDbObject& object) const {
    const AcDbStub& stub = *object.objectId().stub();
    return stub.readers == 0 && stub.openMode == 0 && !object.isChangedSinceRead() &&
           !m_remembered.contains(&stub);
}

bool Adoption::readInto(AcDbObject& made, SourceSpan span) {
    scanRecordAt(m_source.bytes, span.offset, span.length, m_record);
    readHead(m_record, m_head);
    m_reader.resetFilerStatus();
    m_reader.begin(m_record);
    if (made.dxfInFields(&m_reader) != Acad::eOk || m_reader.filerStatus() != Acad::eOk) return false;
    if (auto* const entity = AcDbEntity::cast(&made)) m_reader.readLooseLook(*entity);
    return true;
}

bool Adoption::adopt(AcDbObject& opaque) {
    const AcDbObjectId id = opaque.objectId();
    const auto* const entity = AcDbOpaqueEntity::cast(&opaque);
    if (!entity && !opaque.isKindOf(AcDbOpaqueObject::desc())) return false;
    if (opaque.sourceSpan().isEmpty() || !isUntouched(opaque)) return false;
    if (entity && entity->parts().count() > 0) return false;
    std::unique_ptr<AcDbObject> made =
        m_classes.make(utf8FromWide(opaque.dxfName()),
                       entity ? ApplicationClasses::Kind::entity : ApplicationClasses::Kind::object);
    if (!made || !readInto(*made, opaque.sourceSpan())) return false;
    if (entity) DatabaseAccess::setLayer(static_cast<AcDbEntity&>(*made), entity->layerId());
    DatabaseAccess::takePlace(std::move(made), opaque);
    DatabaseAccess::display(*id.database()).changed(*DatabaseAccess::object(id));
    return true;
}

} // namespace

std::size_t adoptApplicationClasses(AcDbDatabase& database) {
    const auto source = database.source();
    if (!source) return 0;
    Adoption adoption(database, *source);
    std::size_t count = 0;
    if (adoption.isNeeded())
        DatabaseAccess::forEachObject(database, [&](AcDbObject& object) { count += adoption.adopt(object); });
    return count;
}

} // namespace hostkit
