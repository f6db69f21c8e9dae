// What every record of a drawing has in common when it is read: head, fields, extended data, handle and
// place.

#include "drawingreading.h"
#include "keptcolors.h"

#include "dbopaque.h"
#include "fieldtable.h"
#include "groupcodes.h"

#include <algorithm>

namespace hostkit {

// Handles given by the drawing itself must lie above every handle that the file has, wherever it stands:
// tables are not read in the file's order.
void DrawingReading::makeRoomForHandles() {
    if (m_handlesAreCounted) return;
    m_handlesAreCounted = true;
    std::uint64_t highest = 0;
    GroupScanner scanner(m_source->bytes, startOfGroups(m_source->bytes));
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup)
        if (group.code == handleCode || group.code == dimStyleHandleCode)
            if (const std::uint64_t handle = handleFromText(group.value).value_or(0); handle < handleLimit)
                highest = std::max(highest, handle);
    (void)m_database.setHandseed(AcDbHandle(highest + 1));
}

AcDbObjectId DrawingReading::add(AcDbObject* object, std::uint64_t handle, AcDbObjectId owner) {
    if (handle == 0) makeRoomForHandles();
    return DatabaseAccess::add(m_database, object, handle, owner);
}

bool DrawingReading::readFieldsInto(AcDbObject& object) {
    m_filer.begin(m_record);
    if (object.dxfInFields(&m_filer) != Acad::eOk || m_filer.filerStatus() != Acad::eOk) return false;
    if (auto* const entity = AcDbEntity::cast(&object)) m_filer.readLooseLook(*entity);
    return true;
}

void DrawingReading::attachHead(AcDbObject& object) {
    if (m_head.extensionDictionary != 0)
        DatabaseAccess::setExtensionDictionary(
            object, DatabaseAccess::reserve(m_database, m_head.extensionDictionary));
    if (m_head.reactors.empty()) return;
    std::vector<AcDbObjectId> reactors;
    reactors.reserve(m_head.reactors.size());
    for (const std::uint64_t reactor : m_head.reactors)
        reactors.push_back(DatabaseAccess::reserve(m_database, reactor));
    DatabaseAccess::setPersistentReactors(object, std::move(reactors));
}

void DrawingReading::attachExtendedData(AcDbObject& object) {
    if (m_record.extendedDataBegin == m_record.groups.size()) return;
    GroupBlock data;
    if (!readExtendedData(m_record, m_filer, &data))
        return warn(m_record.groups[m_record.extendedDataBegin].start,
                    L"damaged extended data was kept as it stands");
    if (m_version < DrawingVersion::k2004) dropTakenColor(object, data);
    if (!data.isEmpty()) DatabaseAccess::setExtendedData(object, std::move(data));
}

std::wstring DrawingReading::faultInRecord() const {
    const std::wstring name = shown(m_record.name());
    if (!m_filer.errorMessage().empty()) return name + L" was kept as it stands: " + m_filer.errorMessage();
    const RecordGroup* const group = m_filer.faultyGroup();
    if (!group) return name + L" was kept as it stands";
    return name + L" was kept as it stands: " + shown(group->value) + L" is no value for group " +
           std::to_wstring(group->code);
}

std::unique_ptr<AcDbObject> DrawingReading::withFields(std::unique_ptr<AcDbObject> object) {
    readHead(m_record, m_head);
    if (m_head.faulty) warn(m_head.faulty->start, shown(m_head.faulty->value) + L" is no handle");
    if (readFieldsInto(*object)) {
        if (m_version < DrawingVersion::k2004) takeKeptColor(m_record, m_filer.drawingText(), *object);
        return object;
    }
    const RecordGroup* const fault = m_filer.faultyGroup();
    warn(fault ? fault->start : m_record.begin(), faultInRecord());
    if (!m_filer.errorMessage().empty()) m_filer.resetFilerStatus();
    const std::wstring name = m_filer.drawingText().decode(m_record.name());
    if (object->isKindOf(AcDbEntity::desc())) return std::make_unique<AcDbOpaqueEntity>(name);
    return std::make_unique<AcDbOpaqueObject>(name);
}

AcDbObject* DrawingReading::addRead(std::unique_ptr<AcDbObject> object, AcDbObjectId owner) {
    const AcDbObjectId id = add(object.get(), m_head.handle, owner);
    if (id.isNull()) {
        fail(Acad::eHandleInUse, m_record.begin(),
             L"two objects have the handle of this " + shown(m_record.name()));
        return nullptr;
    }
    AcDbObject* const added = object.release();
    attachHead(*added);
    attachExtendedData(*added);
    const std::string_view bytes = m_record.bytes();
    DatabaseAccess::setSource(*added,
                              {m_scanner.offsetOf(bytes.data()), static_cast<Adesk::UInt32>(bytes.size())});
    return added;
}

} // namespace hostkit
