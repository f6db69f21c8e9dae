"""Bodies of solids and regions as one value: the places of their corners, read from the data by nothing but their layout.

In text forms before 2013 the data are lines of scrambled text within the record; from 2013 on a store beside the entities has
them, and `gathered` gives each entity its own.
"""

import math
import re
import struct

KINDS = ("3DSOLID", "REGION", "BODY")
HEAD = rb"(?:\$-?\d+\s+(?:-1\s+)?)+"
POINT = re.compile(rb"\bpoint\s+" + HEAD + rb"(\S+)\s+(\S+)\s+(\S+)\s+#")
TRANSFORM = re.compile(rb"\btransform\s+" + HEAD + rb"((?:\S+\s+){13})")


class Body:
    """The data of one entity; equal where the bytes are."""

    def __init__(self, data):
        self.data = data

    def __eq__(self, other):
        return isinstance(other, Body) and self.data == other.data

    def __repr__(self):
        return f"a body of {len(self.data)} bytes"

    def points(self):
        matrix = [1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1]
        if b"BinaryFile" in self.data[:15]:
            points = list(binary_vectors(self.data, b"\x0d\x05point", b"\x0c....\x04....\x0c....\x13(.{24})"))
            rows = list(binary_vectors(self.data, b"\x0d\x09transform", b"\x0c....\x04....\x14(.{24})\x14(.{24})\x14(.{24})\x14(.{24})\x06(.{8})"))
            matrix = rows[0] if rows else matrix
        else:
            points = [tuple(map(float, match.groups())) for match in POINT.finditer(self.data)]
            match = TRANSFORM.search(self.data)
            matrix = list(map(float, match[1].split())) if match else matrix
        return [tuple(matrix[12] * sum(p[k] * matrix[3 * k + i] for k in range(3)) + matrix[9 + i] for i in range(3)) for p in points]

    def moved(self, motion):
        return Corners([motion.point(p) for p in self.points()])


class Corners:
    """Where the corners of a body have to be, in any order, to 1e-11 of their coordinates."""

    def __init__(self, points):
        self.points = points

    def __repr__(self):
        return f"a body with {len(self.points)} corners at their places"

    def holds(self, body):
        left = body.points() if isinstance(body, Body) else []
        for point in self.points:
            reach = 1e-11 * max(1.0, *map(abs, point))
            near = next((p for p in left if math.dist(p, point) <= reach), None)
            if near is None:
                return False
            left.remove(near)
        return bool(self.points) and not left


def binary_vectors(data, name, fields):
    for match in re.finditer(re.escape(name) + fields, data, re.DOTALL):
        yield [x for group in match.groups() for x in struct.unpack(f"<{len(group) // 8}d", group)]


def unscrambled(text):
    data = text.replace("^ ", "^").encode("latin-1")
    return bytes(0x9F - byte if 0x21 <= byte <= 0x7E else byte for byte in data)


def with_body(groups):
    """The lines of the data as one group."""
    result, lines, place = [], [], None
    mark = ""
    for code, value in groups:
        mark = value.strip() if code == 100 else mark
        if mark == "AcDbModelerGeometry" and code in (1, 3):
            place = len(result) if place is None else place
            if code == 3 and lines:
                lines[-1] += value
            else:
                lines.append(value)
        else:
            result.append((code, value))
    if lines:
        result.insert(place, (1, Body(b"\n".join(map(unscrambled, lines)))))
    return result


def gathered(records):
    """The records, those of stored bodies as a last group of their entity."""
    entities = {}
    for record in records:
        if record.kind in KINDS:
            record.groups = with_body(record.groups)
            entities[record.handle] = record
    left = []
    for record in records:
        entity = entities.get((record.first(320) or "").strip().lstrip("0").upper()) if record.kind == "ACDSRECORD" else None
        columns = [value.strip() for code, value in record.groups if code == 2] if entity else ()
        if "ASM_Data" not in columns:
            left.append(record)
            continue
        data = bytes.fromhex("".join(value for code, value in record.groups if code == 310))
        own = next((i for i, (code, _) in enumerate(entity.groups) if code >= 1000), len(entity.groups))
        entity.groups.insert(own, (310, Body(data)))
    return left
