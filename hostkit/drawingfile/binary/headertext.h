// The header and the classes of a binary drawing as sections of the exchange form.
#pragma once

#include "binarytranscription.h"
#include "groupformat.h"

namespace hostkit {

class RecordNames;

/// In the order of exchange files. $DWGCODEPAGE names the page of the container, in all forms.
void appendHeaderSection(TranscribedDrawing& drawing, const RecordNames& names, const DrawingStyle& style,
                         std::string& bytes);
void appendClassesSection(const TranscribedDrawing& drawing, const DrawingStyle& style, std::string& bytes);

} // namespace hostkit
