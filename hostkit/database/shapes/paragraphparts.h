// A paragraph taken apart into texts and lines of their own.
#pragma once

#include <memory>
#include <vector>

class AcDbEntity;
class AcDbMText;

namespace hostkit {

/// A text for each run of one look, from its first to its last letter, and a line for the bar of each stack.
/// Texts have the paragraph's style; where a run has another face or spacing, its width factor makes it as
/// wide. Lines below, above and through letters are codes of the text. Colours are the run's.
std::vector<std::unique_ptr<AcDbEntity>> partsOf(const AcDbMText& paragraph);

} // namespace hostkit
