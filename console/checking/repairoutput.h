#pragma once

#include "commandoutput.h"
#include "drawingrepair.h"

/// What was repaired, lost and left, as a table or JSON, and how much of each.
void showRepairs(const hostkit::RepairReport& report, ReportForm form);
