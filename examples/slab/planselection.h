#pragma once

#include "acarray.h"
#include "dbid.h"

#include <optional>

/// The entities that a command is for; nothing stands for all of model space.
using PlanSelection = std::optional<AcDbObjectIdArray>;

/// What the user selected before the command.
PlanSelection impliedPlan();
/// Asks for them, unless some were selected before. False, and the command has failed or was stopped, when
/// there are none.
[[nodiscard]] bool readPlan(PlanSelection& plan);
/// Tells a person that not all of the drawing was looked at; nothing for the whole of it.
void tellPlan(const PlanSelection& plan);
