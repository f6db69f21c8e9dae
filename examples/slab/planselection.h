#pragma once

#include "acarray.h"
#include "dbid.h"

#include <optional>
#include <string>
#include <vector>

class AcDbDatabase;

/// The entities that a command is for; nothing stands for all of model space.
using PlanSelection = std::optional<AcDbObjectIdArray>;

/// What the user selected before the command.
PlanSelection impliedPlan();
/// Asks for them, unless some were selected before. False, and the command has failed or was stopped, when
/// there are none.
[[nodiscard]] bool readPlan(PlanSelection& plan);
/// Tells a person that not all of the drawing was looked at; nothing for the whole of it.
void tellPlan(const PlanSelection& plan);
/// Asks for names of layers that are there, with commas between them. False, and the command has failed, for
/// others.
[[nodiscard]] bool readLayerNames(const AcDbDatabase& database, const wchar_t* prompt,
                                  std::vector<std::wstring>& layers);
