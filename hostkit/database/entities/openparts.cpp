#include "openparts.h"

#include "dbopen.h"

namespace hostkit {

OpenParts::~OpenParts() {
    for (AcDbEntity* part : m_parts)
        if (!part->objectId().isNull()) part->close();
}

Acad::ErrorStatus OpenParts::open(const SubentityList& parts) {
    for (std::size_t i = 0; i < parts.count(); ++i) {
        AcDbEntity* part = parts.isErasedAt(i) ? nullptr : parts.at(i);
        if (!part) continue;
        if (parts.isResident()) {
            AcDbObject* object = nullptr;
            const Acad::ErrorStatus status = openPart(object, parts.idAt(i));
            if (status != Acad::eOk) return status;
        }
        m_parts.push_back(part);
    }
    return Acad::eOk;
}

Acad::ErrorStatus OpenParts::open(const std::vector<AcDbObjectId>& parts) {
    for (const AcDbObjectId id : parts) {
        if (id.isErased()) continue;
        AcDbObject* object = nullptr;
        const Acad::ErrorStatus status = openPart(object, id);
        if (status != Acad::eOk) return status;
        AcDbEntity* part = AcDbEntity::cast(object);
        if (!part) {
            object->close();
            return Acad::eNotThatKindOfClass;
        }
        m_parts.push_back(part);
    }
    return Acad::eOk;
}

Acad::ErrorStatus OpenParts::transformBy(const AcGeMatrix3d& matrix) {
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        const Acad::ErrorStatus status = m_parts[i]->transformBy(matrix);
        if (status == Acad::eOk) continue;
        const AcGeMatrix3d back = matrix.inverse();
        while (i > 0) (void)m_parts[--i]->transformBy(back);
        return status;
    }
    return Acad::eOk;
}

} // namespace hostkit
