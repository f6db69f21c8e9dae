// What a drawing was before it was changed, where it was a binary one.
#pragma once

#include <string_view>

namespace hostkit {

struct TranscribedDrawing;

struct DrawingOrigin {
    const TranscribedDrawing* drawing = nullptr; ///< null: it never was a binary drawing
    std::string_view text;                       ///< that was made of it
};

} // namespace hostkit
