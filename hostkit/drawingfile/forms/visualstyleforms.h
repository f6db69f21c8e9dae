// Visual styles in the groups of another form.
#pragma once

#include "groupformat.h"

#include <string>
#include <string_view>

namespace hostkit {

/// The groups of a VISUALSTYLE as the form of `style` has them: named ones with a mark each from 2010 on, a
/// list of 58 from 2013 on. The 28 values that all have are kept; of the others a list that is new has those
/// of a new drawing, and a form that has no place for them loses them. Empty where the record has that form
/// already, or there is none: before 2010 their records are not known.
/// Groups of 2007 tell no marks: all are 1 then.
[[nodiscard]] std::string visualStyleInForm(std::string_view record, const DrawingStyle& style);

} // namespace hostkit
