#pragma once

#include "acadstrc.h"
#include "amodeler.h"
#include "dbid.h"

#include <memory>
#include <string>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

/// A solid of model space with a body of its own, which may be worked on.
struct NamedSolid {
    std::wstring name; ///< that RAISE gave it, or its handle
    std::wstring handle;
    std::wstring layer;
    AModeler::Body body;
};

/// Solids that a command is for.
struct SolidChoice {
    std::vector<std::wstring> names; ///< without regard to case; none: those that were selected, or all
    std::vector<NamedSolid> solids;
    std::vector<std::wstring> faults; ///< of solids whose body is not understood: "2F: why"
};

/// Asks for a name behind the word NAME. False, and the command has failed, without one.
[[nodiscard]] bool readSolidName(SolidChoice& choice);
/// Finds the bodies. False, and the command has failed, for a name that no solid bears, and where there is no
/// solid.
[[nodiscard]] bool findSolids(AcDbDatabase& database, SolidChoice& choice);
/// Tells of solids that were left out.
void tellFaults(const SolidChoice& choice);

/// Erases the solids of that name, so that a run replaces what an earlier one made.
Acad::ErrorStatus eraseSolid(AcDbDatabase& database, const std::wstring& name);
/// Puts the entity into model space on the layer, which is made in that colour where it is missing, and names
/// it unless the name is empty.
Acad::ErrorStatus addToModel(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity,
                             const std::wstring& layer, unsigned short layerColor, const std::wstring& name,
                             AcDbObjectId& id);
