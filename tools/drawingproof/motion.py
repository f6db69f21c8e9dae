"""What a move, a turn or a uniform scale makes of an entity's groups, by the published meaning of each group.

`moved(record, motion, drawing)` gives what the record has to be, or None for a kind whose geometry only its maker knows: such
an entity stays as it is. Coordinates of an entity's own plane follow the arbitrary-axis rule.
"""

import math

from bodies import Body
from records import About, Either, Expected, Loose

Z_AXIS = (0.0, 0.0, 1.0)


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(a):
    length = math.sqrt(dot(a, a))
    return tuple(x / length for x in a) if length else Z_AXIS


def axes_of(normal):
    if normal == Z_AXIS:
        return ((1.0, 0.0, 0.0), (0.0, 1.0, 0.0), Z_AXIS)
    normal = unit(normal)
    near = abs(normal[0]) < 1 / 64 and abs(normal[1]) < 1 / 64
    x = unit(cross((0.0, 1.0, 0.0) if near else Z_AXIS, normal))
    return (x, cross(normal, x), normal)


def to_world(axes, point):
    return tuple(sum(point[k] * axes[k][i] for k in range(3)) for i in range(3))


def to_own(axes, point):
    return tuple(dot(point, axes[k]) for k in range(3))


class Motion:
    """A turn about the vertical, then a uniform scale, both about `center`, then a shift."""

    def __init__(self, shift=(0.0, 0.0, 0.0), turn=0.0, scale=1.0, center=(0.0, 0.0, 0.0)):
        self.shift, self.turn, self.scale, self.center = shift, turn, scale, center
        self.cos, self.sin = math.cos(math.radians(turn)), math.sin(math.radians(turn))

    def direction(self, v):
        if not self.turn:
            return v
        return (v[0] * self.cos - v[1] * self.sin, v[0] * self.sin + v[1] * self.cos, v[2])

    def vector(self, v):
        return tuple(x * self.scale for x in self.direction(v))

    def point(self, p):
        moved = self.vector(tuple(p[i] - self.center[i] for i in range(3)))
        return tuple(moved[i] + self.center[i] + self.shift[i] for i in range(3))


class Plane:
    """An entity's own plane before and after."""

    def __init__(self, motion, normal):
        self.motion, self.before, self.normal_after = motion, axes_of(normal), motion.direction(normal)
        self.after = axes_of(self.normal_after)

    def point(self, p):
        return to_own(self.after, self.motion.point(to_world(self.before, p)))

    def vector(self, p):
        return to_own(self.after, self.motion.vector(to_world(self.before, p)))

    def angle(self, degrees):
        radians = math.radians(degrees)
        d = to_own(self.after, self.motion.direction(to_world(self.before, (math.cos(radians), math.sin(radians), 0.0))))
        return math.degrees(math.atan2(d[1], d[0]))


class Kind:
    """Which groups of a kind are what. `absent` are groups that mean their default where a record has none."""

    def __init__(self, world=(), own=(), vectors=(), directions=(), lengths=(), angles=(), absent=(), part="", tangents=()):
        self.world, self.own, self.vectors, self.directions = set(world), set(own), set(vectors), set(directions)
        self.lengths, self.angles, self.absent, self.part, self.tangents = set(lengths), set(angles), absent, part, set(tangents)


DIMENSIONS = ("DIMENSION", "ARC_DIMENSION")
TEXT = Kind(own=(10, 11), lengths=(39, 40), angles=(50,), absent=((50, 0.0),), part="AcDbText")
KINDS = {
    "LINE": Kind(world=(10, 11), lengths=(39,)),
    "POINT": Kind(world=(10,), lengths=(39,), angles=(50,), absent=((50, 0.0),), part="AcDbPoint"),
    "RAY": Kind(world=(10,), directions=(11,)),
    "XLINE": Kind(world=(10,), directions=(11,)),
    "CIRCLE": Kind(own=(10,), lengths=(39, 40)),
    "ARC": Kind(own=(10,), lengths=(39, 40), angles=(50, 51)),
    "ELLIPSE": Kind(world=(10,), vectors=(11,)),
    "TEXT": TEXT,
    "ATTRIB": TEXT,
    "ATTDEF": TEXT,
    "MTEXT": Kind(world=(10,), directions=(11,), lengths=(40, 41, 42, 43, 46), angles=(50,), absent=((50, 0.0),),
                  part="AcDbMText"),
    "LWPOLYLINE": Kind(own=(10,), lengths=(39, 40, 41, 43)),
    "SOLID": Kind(own=(10, 11, 12, 13), lengths=(39,)),
    "TRACE": Kind(own=(10, 11, 12, 13), lengths=(39,)),
    "3DFACE": Kind(world=(10, 11, 12, 13)),
    "SPLINE": Kind(world=(10, 11), tangents=(12, 13)),
    "INSERT": Kind(own=(10,), lengths=(41, 42, 43, 44, 45), angles=(50,),
                   absent=((41, 1.0), (42, 1.0), (43, 1.0), (50, 0.0)), part=("AcDbBlockReference", "AcDbMInsertBlock")),
    # Its group 12 is the place of its picture, which is judged with the picture.
    "DIMENSION": Kind(world=(10, 13, 14, 15), own=(11, 16), lengths=(40,)),
    "ARC_DIMENSION": Kind(world=(10, 13, 14, 15, 16, 17), own=(11,)),
    "POLYLINE 2D": Kind(lengths=(39, 40, 41)),
    "VERTEX 2D": Kind(own=(10,), lengths=(40, 41), angles=(50,)),
    "POLYLINE 3D": Kind(),
    "VERTEX 3D": Kind(world=(10,)),
    "HATCH": Kind(),
    "VIEWPORT": Kind(world=(10,), lengths=(40, 41)),
    "3DSOLID": Kind(),
    "REGION": Kind(),
    "BODY": Kind(),
}


def kind_of(record):
    if record.kind in ("POLYLINE", "VERTEX"):
        polyline = record if record.kind == "POLYLINE" else record.owner
        if polyline is None or polyline.kind != "POLYLINE":
            return None
        flags = polyline.integer(70)
        if flags & (16 | 64):
            return None
        return KINDS[record.kind + (" 3D" if flags & 8 else " 2D")]
    if record.kind == "ATTRIB" and (record.owner is None or record.owner.kind != "INSERT"):
        return None
    return KINDS.get(record.kind)


def number(text):
    try:
        return float(text)
    except (TypeError, ValueError):
        return 0.0


def triple(groups, index):
    """The point that begins at `index`, and how many groups it has."""
    code, value = groups[index]
    values, count = [number(value)], 1
    while count < 3 and index + count < len(groups) and groups[index + count][0] == code + 10 * count:
        values.append(number(groups[index + count][1]))
        count += 1
    return tuple(values + [0.0] * (3 - len(values))), count


def end_of_own_groups(groups):
    """Behind the last group of the record's own; extended data may stand in the middle, an embedded object ends them."""
    end = 0
    for index, (code, _) in enumerate(groups):
        if code == 101:
            return index
        if code < 1000:
            end = index + 1
    return end


def normal_of(record):
    groups = record.groups
    for index in range(end_of_own_groups(groups)):
        if groups[index][0] == 210:
            point, _ = triple(groups, index)
            return unit(point) if any(point) else Z_AXIS
    return Z_AXIS


class Writer:
    """Puts worked-out values in the place of the file's."""

    def __init__(self, record, motion):
        self.motion, self.groups = motion, list(record.groups)
        self.loose, self.droppable = [], set()

    def point(self, index, count, moved, original, part=""):
        size = max(1.0, *(abs(x) for x in original), *(abs(x) for x in moved))
        code = self.groups[index][0]
        for place in range(count):
            self.groups[index + place] = (code + 10 * place, About(moved[place], size))
        if count < 3:
            # A point without a height is worked out in space; 0 may be written.
            self.loose.append(Loose(code + 20, About(moved[2], size), part, abs(moved[2]) > 1e-12 * size))

    def real(self, index, value, period=0.0):
        code, old = self.groups[index]
        # A value that does not change keeps its digits.
        if value != number(old):
            self.groups[index] = (code, About(value, 1.0, period))


def is_position_only(motion):
    return not motion.turn and motion.scale == 1.0


def move_own_groups(writer, kind, record, plane, elevation):
    motion, groups = writer.motion, writer.groups
    index, end = 0, end_of_own_groups(groups)
    while index < end:
        code = groups[index][0]
        if code == 210:
            point, count = triple(groups, index)
            if motion.turn:
                writer.point(index, count, motion.direction(point), point)
            index += count
        elif code in kind.world or code in kind.own:
            point, count = triple(groups, index)
            if code in kind.own:
                if elevation is not None:
                    point = (point[0], point[1], elevation)
                moved = plane.point(point)
            else:
                moved = motion.point(point)
            has_room = elevation is None or count == 3
            writer.point(index, count, moved if has_room else (moved[0], moved[1], 0.0), point, kind.part)
            index += count
        elif code in kind.vectors or code in kind.directions or code in kind.tangents:
            point, count = triple(groups, index)
            if not is_position_only(motion):
                if code in kind.tangents and motion.scale != 1.0:
                    moved = motion.vector(point)  # a direction, whatever its length
                    for place in range(count):
                        groups[index + place] = (code + 10 * place, Either(About(point[place]), About(moved[place])))
                else:
                    moved = motion.vector(point) if code in kind.vectors else motion.direction(point)
                    writer.point(index, count, moved, point)
            index += count
        else:
            if code in kind.lengths and not is_position_only(motion):
                # A turn may work sizes out anew from the turned axes.
                writer.groups[index] = (code, About(number(groups[index][1]) * motion.scale))
            elif code in kind.angles and not is_position_only(motion):
                # An angle may be written by whole turns more or less.
                angle = number(groups[index][1])
                groups[index] = (code, About(plane.angle(angle), 1.0, 360.0))
                # An angle of 0 is the default.
                if abs((plane.angle(angle) + 180.0) % 360.0 - 180.0) < 1e-9:
                    writer.droppable.add(index)
            index += 1


def add_defaults(writer, kind, record, plane):
    present = {code for code, _ in record.groups[:end_of_own_groups(record.groups)]}
    has_marks = 100 in present
    motion = writer.motion
    for code, default in kind.absent:
        if code in present or (record.kind == "MTEXT" and 11 in present):
            continue
        if code in kind.lengths and not is_position_only(motion):
            writer.loose.append(Loose(code, About(default * motion.scale), kind.part if has_marks else "", motion.scale != 1.0))
        if code in kind.angles and motion.turn:
            angle = plane.angle(default)
            if abs(angle) > 1e-9:
                writer.loose.append(Loose(code, About(angle, 1.0, 360.0), kind.part if has_marks else ""))


def move_extended_data(writer):
    motion, groups, index = writer.motion, writer.groups, 0
    while index < len(groups):
        code = groups[index][0]
        count = 1
        if code in (1011, 1012, 1013):
            point, count = triple(groups, index)
            moved = {1011: motion.point, 1012: motion.vector, 1013: motion.direction}[code](point)
            if code == 1011 or (motion.turn or (code == 1012 and motion.scale != 1.0)):
                writer.point(index, count, moved, point)
        elif code in (1041, 1042) and motion.scale != 1.0:
            writer.real(index, number(groups[index][1]) * motion.scale)
        index += count


def move_embedded_text(writer, record):
    """The newer form of a paragraph within a record: direction, place, width, heights of its columns."""
    groups, motion = writer.groups, writer.motion
    begin = next((i for i, (code, _) in enumerate(groups) if code == 101), None)
    if begin is None:
        return
    end = next((i for i in range(begin, len(groups)) if groups[i][0] >= 1000), len(groups))
    # Of a paragraph it begins with the direction, and has widths and heights of columns; of an attribute it is a paragraph.
    is_paragraph = record.kind == "MTEXT"
    place, direction = (11, 10) if is_paragraph else (10, 11)
    lengths = (40, 41, 42, 43, 44, 45, 46) if is_paragraph else (40, 41, 42, 43, 46)
    index = begin + 1
    while index < end:
        code, count = groups[index][0], 1
        if code in (10, 11):
            point, count = triple(groups, index)
            if code == place:
                writer.point(index, count, motion.point(point), point)
            elif code == direction and motion.turn:
                writer.point(index, count, motion.direction(point), point)
        elif code in lengths and motion.scale != 1.0:
            writer.real(index, number(groups[index][1]) * motion.scale)
        index += count


def move_light_polyline(writer, record, plane):
    elevation = number(record.first(38, "0"))
    first = next((i for i, (code, _) in enumerate(record.groups) if code == 10), None)
    origin = triple(record.groups, first)[0] if first is not None else (0.0, 0.0, 0.0)
    moved = plane.point((origin[0], origin[1], elevation))[2]
    size = max(1.0, *(abs(x) for x in origin), abs(elevation))
    for index, (code, value) in enumerate(record.groups[:end_of_own_groups(record.groups)]):
        if code == 38:
            writer.groups[index] = (38, About(moved, size))
            if abs(moved) < 1e-12 * size:
                writer.droppable.add(index)
    if record.first(38) is None and abs(moved) > 1e-12 * size:
        writer.loose.append(Loose(38, About(moved, size), "AcDbPolyline"))


def move_polyline_elevation(writer, record, plane):
    """The point of a 2d polyline is 0, 0 and its elevation."""
    groups = writer.groups
    index = next((i for i in range(end_of_own_groups(groups)) if groups[i][0] == 10), None)
    elevation = elevation_of_polyline(record)
    moved = plane.point((0.0, 0.0, elevation))[2]
    if index is not None:
        point, count = triple(groups, index)
        if count == 3:
            groups[index + 2] = (30, About(moved, max(1.0, abs(elevation))))
            return
    if abs(moved) > 1e-12:
        writer.loose.append(Loose(30, About(moved)))


def elevation_of_polyline(record):
    for index, (code, _) in enumerate(record.groups):
        if code == 10:
            return triple(record.groups, index)[0][2]
    return number(record.first(30, "0"))


def move_dimension(writer, record, plane):
    groups, motion = writer.groups, writer.motion
    kind = record.integer(70) & 7
    is_arc_length = record.kind == "ARC_DIMENSION"
    part = ""
    end = end_of_own_groups(groups)
    present = {code for code, _ in groups[:end]}
    for index in range(end):
        code, value = groups[index]
        part = value if code == 100 else part
        if code in (40, 41) and part == "AcDbArcDimension" and not is_position_only(motion):
            groups[index] = (code, About(math.radians(plane.angle(math.degrees(number(value)))), 1.0, 2 * math.pi))
        if code == 42 and motion.scale != 1.0 and (is_arc_length or kind not in (2, 5)):
            writer.real(index, number(value) * motion.scale)
        if code == 50 and not is_position_only(motion) and kind in (0, 1):
            turned = About(plane.angle(number(value)), 1.0, 360.0)
            groups[index] = (50, turned if kind == 0 else Either(value, turned))
        if code == 51 and not is_position_only(motion):
            groups[index] = (51, About(-plane.angle(-number(value)), 1.0, 360.0))
    if motion.turn:
        marked = 100 in present
        # The horizontal that texts stand along turns too.
        if 51 not in present:
            writer.loose.append(Loose(51, About(-plane.angle(0.0), 1.0, 360.0), "AcDbDimension" if marked else ""))
        if 50 not in present and kind in (0, 1):
            writer.loose.append(Loose(50, About(plane.angle(0.0), 1.0, 360.0), "", kind == 0))


class HatchWalk:
    """Goes through a hatch's groups in the order that the format lays down."""

    def __init__(self, writer, plane):
        self.writer, self.groups, self.plane, self.index = writer, writer.groups, plane, 0
        self.end = end_of_own_groups(writer.groups)
        self.elevation = 0.0

    def code(self):
        return self.groups[self.index][0] if self.index < self.end else None

    def until(self, *codes):
        while self.code() is not None and self.code() not in codes:
            self.index += 1
        return self.code()

    def count(self):
        value = int(number(self.groups[self.index][1]))
        self.index += 1
        return value

    def point(self, function=None, z=True):
        point, count = triple(self.groups, self.index)
        count = min(count, 2)
        place = (point[0], point[1], self.elevation if z else 0.0)
        self.writer.point(self.index, count, (function or self.plane.point)(place)[:2] + (0.0,), place)
        self.index += count

    def length(self):
        if self.writer.motion.scale != 1.0:
            self.writer.real(self.index, number(self.groups[self.index][1]) * self.writer.motion.scale)
        self.index += 1

    def turned(self, sign=1.0):
        if not is_position_only(self.writer.motion):
            angle = number(self.groups[self.index][1])
            self.writer.groups[self.index] = (self.code(), About(sign * self.plane.angle(sign * angle), 1.0, 360.0))
        self.index += 1

    def walk(self):
        if self.until(10) is None:
            return
        point, count = triple(self.groups, self.index)
        self.elevation = point[2]
        moved = self.plane.point(point)
        if count == 3:
            self.groups[self.index + 2] = (30, About(moved[2], max(1.0, *map(abs, point))))
        self.index += count
        if self.until(91) is None:
            return
        for _ in range(self.count()):
            if self.until(92) is None:
                return
            flags = self.count()
            (self.polyline if flags & 2 else self.edges)()
        self.pattern()

    def polyline(self):
        self.until(93)
        for _ in range(self.count()):
            self.until(10)
            self.point()

    def edges(self):
        self.until(93)
        for _ in range(self.count()):
            self.until(72)
            {1: self.line, 2: self.arc, 3: self.ellipse, 4: self.spline}.get(self.count(), lambda: None)()

    def line(self):
        self.until(10)
        self.point()
        self.until(11)
        self.point()

    def arc(self):
        self.until(10)
        self.point()
        self.until(40)
        self.length()
        first = self.index
        ccw = next((number(self.groups[i][1]) for i in range(first, min(first + 4, self.end)) if self.groups[i][0] == 73), 1)
        for code in (50, 51):
            self.until(code)
            # Angles of a clockwise edge are counted the other way round.
            self.turned(1.0 if ccw else -1.0)

    def ellipse(self):
        self.until(10)
        self.point()
        self.until(11)
        self.point(self.plane.vector, z=False)
        self.until(73)

    def spline(self):
        self.until(95)
        knots = self.count()
        self.until(96)
        points = self.count()
        for _ in range(knots):
            self.until(40)
            self.index += 1
        for _ in range(points):
            self.until(10)
            self.point()
            if self.code() == 42:
                self.index += 1
        if self.code() == 97 and self.index + 1 < self.end and self.groups[self.index + 1][0] in (11, 12):
            fit = self.count()
            for _ in range(fit):
                self.until(11)
                self.point()
            for code in (12, 13):
                if self.code() == code:
                    self.point(self.plane.vector, z=False)

    def pattern(self):
        while self.until(52, 41, 53, 98) is not None:
            code = self.code()
            if code in (52, 53):
                self.turned()
                if code == 53:
                    self.pattern_line()
            elif code == 41:
                self.length()
            else:
                for _ in range(self.count()):
                    if self.until(10) is None:
                        return
                    self.point()
                return

    def pattern_line(self):
        for pair, function in (((43, 44), self.plane.point), ((45, 46), self.plane.vector)):
            if self.code() != pair[0] or self.groups[self.index + 1][0] != pair[1]:
                return
            x, y = number(self.groups[self.index][1]), number(self.groups[self.index + 1][1])
            moved = function((x, y, self.elevation if pair[0] == 43 else 0.0))
            size = max(1.0, abs(x), abs(y), *map(abs, moved))
            self.groups[self.index] = (pair[0], About(moved[0], size))
            self.groups[self.index + 1] = (pair[1], About(moved[1], size))
            self.index += 2
        if self.code() == 79:
            for _ in range(self.count()):
                if self.code() == 49:
                    self.length()


def moved(record, motion):
    """What the record has to be; None where the kind stays as it is."""
    kind = kind_of(record)
    if kind is None:
        return None
    writer = Writer(record, motion)
    normal = normal_of(record.owner if record.kind == "VERTEX" else record)
    plane = Plane(motion, normal)
    elevation = None
    if record.kind == "LWPOLYLINE":
        elevation = number(record.first(38, "0"))
        move_light_polyline(writer, record, plane)
    elif record.kind == "POLYLINE" and kind is KINDS["POLYLINE 2D"]:
        move_polyline_elevation(writer, record, plane)
    elif record.kind == "VERTEX" and kind is KINDS["VERTEX 2D"]:
        elevation = elevation_of_polyline(record.owner)
    if record.kind == "HATCH":
        HatchWalk(writer, plane).walk()
        move_normal(writer)
    else:
        move_own_groups(writer, kind, record, plane, elevation)
    if record.kind in DIMENSIONS:
        move_dimension(writer, record, plane)
    add_defaults(writer, kind, record, plane)
    writer.groups = [(code, value.moved(motion) if isinstance(value, Body) else value) for code, value in writer.groups]
    move_embedded_text(writer, record)
    move_extended_data(writer)
    return Expected(record, writer.groups, writer.loose, writer.droppable)


def move_normal(writer):
    for index in range(end_of_own_groups(writer.groups)):
        if writer.groups[index][0] == 210 and writer.motion.turn:
            point, count = triple(writer.groups, index)
            writer.point(index, count, writer.motion.direction(point), point)
            return
