#pragma once

#include "dbid.h"
#include "gemat3d.h"
#include "picturepath.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

/// The paper of a layout, by its plot settings.
struct Sheet {
    AcDbObjectId block{};
    std::wstring name{};
    double width = 0.0; ///< millimetres; 0 where the layout names no paper
    double height = 0.0;
    double originX = 0.0; ///< millimetres from the paper's lower left corner to the sheet's origin
    double originY = 0.0;
    double scale = 1.0; ///< millimetres for a unit of the sheet
};

/// The layout of that name, without regard to case. None: there is no such layout.
std::optional<Sheet> sheetOfName(AcDbDatabase& database, std::wstring_view name);
/// Of all layouts, the model's too, in their order.
std::vector<std::wstring> sheetNames(AcDbDatabase& database);

/// What a viewport shows of the model.
struct SheetView {
    hostkit::PicturePath outline; ///< on the sheet
    AcGeMatrix3d modelToSheet;
    double scale = 1.0;                 ///< sheet units for a unit of the model
    std::vector<AcDbObjectId> frozen{}; ///< layers that it does not show
};

/// None: the entity is no viewport, or one that is off, is the sheet itself, or shows nothing. Perspective
/// and clips in depth are not looked at.
std::optional<SheetView> sheetViewOf(const AcDbEntity& entity);
