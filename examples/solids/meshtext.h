#pragma once

#include "namedsolids.h"

#include <string>

/// Forms of triangle files.
enum class MeshForm { stl, obj, dxf };

/// The triangles of all solids, corners counter-clockwise seen from outside, numbers in full. STL: one part a
/// solid, as text. OBJ: one group a solid, each corner of a body once. DXF: 3DFACE entities in the oldest
/// form, on the solids' layers, edges within a flat face hidden.
std::string meshText(const std::vector<NamedSolid>& solids, MeshForm form, std::size_t& triangles);
