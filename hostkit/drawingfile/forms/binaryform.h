// Binary forms of drawings: turning the groups of the binary exchange form into those of a text drawing and
// back, and binary drawings into text drawings; leaves out what the groups mean.
#pragma once

#include "drawingversion.h"

#include "acadstrc.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace hostkit {

struct DrawingSource;
struct TranscribedDrawing;

/// Where and why a drawing could not be turned into the other form.
struct FormFault {
    Acad::ErrorStatus status = Acad::eOk;
    std::size_t offset = 0; ///< of the group in the bytes that were read, from 0
    std::wstring reason;
};

/// Whether the bytes begin with the binary form's first line. What follows may still be damaged.
bool isBinaryForm(std::string_view bytes);

/// The groups of a binary drawing as a text drawing, up to the end mark or the end of the bytes; `text` is
/// only changed by a success. Reals become the shortest text that reads back to the same bits (infinities and
/// not-a-numbers, which no sound drawing has, "inf" and "nan"), chunks of bytes hexadecimal digits. A string
/// with a line end, for which a text group has no place, gets the escape of that character, ^J or ^M.
///
/// eBadDxfSequence for what is no group code, eEndOfFile where the bytes end within a group.
std::optional<FormFault> textFromBinary(std::string_view bytes, std::string& text);

/// The source of a drawing with these bytes, whose form they tell: those of a text drawing as they are, those
/// of the binary exchange form as text, with the bytes as they came beside it, and those of a binary drawing
/// as text with what it was transcribed from. Null, with the fault, where that cannot be.
std::shared_ptr<DrawingSource> sourceFromBytes(std::string bytes, FormFault& fault);
/// The bytes of the binary exchange form that the source's text was made from; null for other drawings.
const std::string* binaryBytesOf(const std::shared_ptr<const DrawingSource>& source);
/// The binary drawing that the source's text was made from; null for other drawings.
const TranscribedDrawing* binaryDrawingOf(const std::shared_ptr<const DrawingSource>& source);

/// The offset of the group that became the text's group of that number, counted from 0; the end of the bytes
/// where there are fewer.
std::size_t offsetOfBinaryGroup(std::string_view bytes, std::size_t number);

/// The reverse, up to the text's end mark. Codes take one byte in R12 and older forms, two in later ones. An
/// integer that only the unsigned range of its width holds keeps its bits; hexadecimal digits for more than
/// 255 bytes become several groups of 127. The escape of a line end stays an escape.
///
/// eInvalidInput where a value is none of its code's kind, so that a damaged text drawing is not made a
/// binary one that says something else; eBadDxfSequence for a code below 0 or above the published ones.
std::optional<FormFault> binaryFromText(std::string_view text, DrawingVersion version, std::string& bytes);

} // namespace hostkit
