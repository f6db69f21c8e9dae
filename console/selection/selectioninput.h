#pragma once

#include "selectionfilter.h"

#include "dbid.h"

#include <optional>
#include <vector>

class AcApDocument;

/// The filter that the running command's line begins with, "(0 . \"LINE\") (8 . \"WALL*\")"; one that takes
/// everything where there is none. Nothing, and the command has failed, for one that is none.
std::optional<hostkit::SelectionFilter> readTypedFilter(AcDbDatabase& database);

/// The implied selection, or what the user selects. Empty when the command ends here, stopped or failed.
std::vector<AcDbObjectId> selectionOrFail();
/// The implied selection; empty, and the command has failed, where there is none.
std::vector<AcDbObjectId> impliedSelectionOrFail(const AcApDocument& document);
/// Fails the command for a selection that ended with that result of acedSSGet; not for one that the user
/// broke off.
void failSelection(int result);
