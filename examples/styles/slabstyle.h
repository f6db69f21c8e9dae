#pragma once

#include "vexoorstyledata.h"

/// The type of objects that the styles are for.
constexpr const wchar_t* repartitionType = L"BMRepartition";

/// The settings of the sheet's page as a style.
class SlabStyle : public VEXOORStyleData {
public:
    Acad::ErrorStatus WriteDataFromControls() override;
    /// Makes what the drawing lacks, and shows it in the page. A dimension style is looked for by its name.
    Acad::ErrorStatus UpdateControlsFromData() override;
};
