#pragma once

#include "dbapserv.h"
#include "dbdatabase.h"

/// Suspends a drawing's undo recording for a scope; at its end recording is as it was, so guards nest. A null
/// database means the host's working database; without one nothing is done. What is done meanwhile stays when
/// the user takes the command back. It neither traces nor shows anything.
class VEXOSmartUndoRecording {
public:
    explicit VEXOSmartUndoRecording(AcDbDatabase* database = nullptr)
        : m_database(database) {
        if (!m_database && acdbHostApplicationServices())
            m_database = acdbHostApplicationServices()->workingDatabase();
        if (!m_database) return;
        m_wasDisabled = !m_database->undoRecording();
        m_database->disableUndoRecording(true);
    }
    virtual ~VEXOSmartUndoRecording() {
        if (m_database) m_database->disableUndoRecording(m_wasDisabled);
    }
    VEXOSmartUndoRecording(const VEXOSmartUndoRecording&) = delete;
    VEXOSmartUndoRecording& operator=(const VEXOSmartUndoRecording&) = delete;

private:
    bool m_wasDisabled = false;
    AcDbDatabase* m_database; ///< not owned
};
