// The compression of pages of binary drawings.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace hostkit {

/// What a page of the forms 2004, 2010, 2013 and 2018 holds, at most `capacity` bytes. False when the page is
/// damaged: it refers to what is before its beginning, ends early, or holds more; `out` then has what came
/// before the damage.
[[nodiscard]] bool unpackPage(std::span<const std::uint8_t> packed, std::size_t capacity,
                              std::vector<std::uint8_t>& out);
/// Its counterpart, for four bytes or more; what repeats within 48 KB is told by its distance.
[[nodiscard]] std::vector<std::uint8_t> packPage(std::span<const std::uint8_t> bytes);

/// The same of the form 2007, which is read alone.
[[nodiscard]] bool unpackPage2007(std::span<const std::uint8_t> packed, std::size_t capacity,
                                  std::vector<std::uint8_t>& out);

} // namespace hostkit
