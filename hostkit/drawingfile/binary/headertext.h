// The header and the classes of a binary drawing as sections of the exchange form.
#pragma once

#include "binarytranscription.h"
#include "groupformat.h"
#include "textencoding.h"

namespace hostkit {

class RecordNames;

/// Of the container's own number; Windows-1252 for those that have no equal.
[[nodiscard]] CodePage codePageOf(const BinaryContainer& container);

/// In the order of exchange files. $DWGCODEPAGE names the page of the container, in all forms.
void appendHeaderSection(const TranscribedDrawing& drawing, const RecordNames& names,
                         const DrawingStyle& style, std::string& bytes);
void appendClassesSection(const TranscribedDrawing& drawing, const DrawingStyle& style, std::string& bytes);

} // namespace hostkit
