#include "axlock.h"

#include "acdocman.h"

AcAxDocLock::AcAxDocLock() {
    AcApDocManager* manager = acDocManagerPtr();
    if (manager) lock(manager->curDocument(), kNormal);
}

AcAxDocLock::AcAxDocLock(AcDbDatabase* database, DocLockType type) {
    if (!database) return;
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager ? manager->document(database) : nullptr;
    if (document)
        lock(document, type);
    else
        m_status = Acad::eOk;
}

AcAxDocLock::AcAxDocLock(AcDbObjectId object, DocLockType type)
    : AcAxDocLock(object.database(), type) {}

void AcAxDocLock::lock(AcApDocument* document, DocLockType type) {
    AcApDocManager& manager = *acDocManagerPtr();
    m_status = manager.lockDocument(document, AcAp::kWrite);
    if (m_status != Acad::eOk) return;
    m_document = document;
    if (type != kCurDocSwitch || manager.curDocument() == document) return;
    m_earlierCurrent = manager.curDocument();
    m_hasSwitched = manager.setCurDocument(document) == Acad::eOk;
}

// A document that was closed meanwhile, or a host that went, has nothing to give back.
AcAxDocLock::~AcAxDocLock() {
    AcApDocManager* manager = acDocManagerPtr();
    if (!manager || !m_document) return;
    if (m_hasSwitched && manager->curDocument() == m_document) manager->setCurDocument(m_earlierCurrent);
    manager->unlockDocument(m_document);
}
