// List of system variables: names, types, bounds and first values; leaves out variables that only steer a
// screen.
#pragma once

#include "systemvariables.h"

#include <cstddef>

class AcApDocument;

namespace hostkit {

class Host;

/// What a computed variable is worked out from. The document is null for variables that need none.
struct VariableSource {
    Host* host;
    AcApDocument* document;
};

/// One of the host's own variables as the table has it.
struct VariableRow {
    const wchar_t* name;
    short type;
    short code; ///< of header variables
    VariablePlace place;
    bool isReadOnly;
    double minimum;
    double maximum;
    double first;             ///< of numbers
    const wchar_t* firstText; ///< of texts
};

extern const VariableRow variableRows[];
extern const std::size_t variableRowCount;

/// A variable that the host tells by itself.
struct ComputedRow {
    const wchar_t* name;
    short type;
    bool needsDocument;
    void (*get)(const VariableSource& source, SystemValue& value);
    /// Null: read-only.
    VariableResult (*set)(const VariableSource& source, const SystemValue& value);
};

extern const ComputedRow computedRows[];
extern const std::size_t computedRowCount;

/// A header variable that no row names and that only the host or a save sets.
bool isKeptByHost(std::wstring_view headerVariable);

} // namespace hostkit
