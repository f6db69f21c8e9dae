// Stand-in for the host's object pointers. Covers opening for a scope, with the class checked in the open; leaves out the forms that take an object which is already open.
#pragma once

#include "dbdatabase.h"
#include "dbobject.h"
#include "dbopen.h"

/// Opens in the constructor, closes in the destructor. After a failed open the pointer is null and openStatus
/// says why; eNullObjectPointer when nothing was opened.
template <typename T>
class AcDbObjectPointer {
public:
    AcDbObjectPointer() = default;
    AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        open(id, mode, openErased);
    }
    ~AcDbObjectPointer() { close(); }
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;

    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        close();
        m_status = acdbOpenObject(m_object, id, mode, openErased);
        return m_status;
    }
    /// A fresh non-resident object; it is deleted with the pointer unless a drawing has taken it.
    Acad::ErrorStatus create() {
        close();
        m_object = new T;
        return m_status = Acad::eOk;
    }
    Acad::ErrorStatus close() {
        if (!m_object) return m_status;
        if (m_object->objectId().isNull()) {
            delete m_object;
            m_status = Acad::eOk;
        } else {
            m_status = m_object->close();
        }
        m_object = nullptr;
        return m_status;
    }
    /// Gives the object away, open as it is.
    Acad::ErrorStatus release(T*& object) {
        object = m_object;
        m_object = nullptr;
        return object ? Acad::eOk : Acad::eNullObjectPointer;
    }

    Acad::ErrorStatus openStatus() const { return m_object ? Acad::eOk : m_status; }
    T* object() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    operator T*() const { return m_object; }

protected:
    T* m_object = nullptr;
    Acad::ErrorStatus m_status = Acad::eNullObjectPointer;
};

using AcDbEntityPointer = AcDbObjectPointer<class AcDbEntity>;

/// A symbol table of a drawing, opened for a scope.
template <typename T>
class AcDbSymbolTablePointer : public AcDbObjectPointer<T> {
public:
    AcDbSymbolTablePointer() = default;
    AcDbSymbolTablePointer(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false)
        : AcDbObjectPointer<T>(id, mode, openErased) {}
    AcDbSymbolTablePointer(AcDbDatabase* database, AcDb::OpenMode mode) { open(database, mode); }

    using AcDbObjectPointer<T>::open;
    Acad::ErrorStatus open(AcDbDatabase* database, AcDb::OpenMode mode) {
        this->close();
        if (!database) return this->m_status = Acad::eNoDatabase;
        return this->m_status = database->getSymbolTable(this->m_object, mode);
    }
};
