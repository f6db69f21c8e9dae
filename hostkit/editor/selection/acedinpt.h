// Stand-in for the host's input point manager. Covers the switch for picks within inserts; leaves out filters, monitors and cursors.
#pragma once

#include "acadstrc.h"

/// A document's input of points.
class AcEdInputPointManager {
public:
    /// Picks of a selection go into block references, to the innermost entity. The calls count: picks go
    /// there until each has been taken back. eInvalidInput for taking back what was not switched on.
    Acad::ErrorStatus turnOnSubentitySelection();
    Acad::ErrorStatus turnOffSubentitySelection();
    bool isSubentitySelectionOn() const { return m_subentitySelections > 0; }

private:
    int m_subentitySelections = 0;
};
