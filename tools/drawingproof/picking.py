"""Which lines, points, circles, arcs and light polylines a window takes, by plain geometry in the plane. Where an answer
hangs on the last digits, or the entity does not lie flat, there is none."""

import math

SIMPLE = ("LINE", "POINT", "CIRCLE", "ARC", "LWPOLYLINE")
FULL = 2.0 * math.pi


class Arc:
    """Counterclockwise from `start` by `sweep`."""

    def __init__(self, center, radius, start, sweep):
        self.center, self.radius, self.start, self.sweep = center, radius, start, sweep

    def at(self, angle):
        return self.center[0] + self.radius * math.cos(angle), self.center[1] + self.radius * math.sin(angle)

    def holds(self, angle):
        return (angle - self.start) % FULL <= self.sweep

    def ends(self):
        return [self.at(self.start), self.at(self.start + self.sweep)]

    def extremes(self):
        return self.ends() + [self.at(quarter * math.pi / 2) for quarter in range(4) if self.holds(quarter * math.pi / 2)]

    def touches(self, box):
        if any(is_in(end, box) for end in self.ends()):
            return True
        low, high = box
        for axis in (0, 1):
            for side in (low[axis], high[axis]):
                across = (side - self.center[axis]) / self.radius
                if abs(across) > 1:
                    continue
                angle = math.acos(across) if axis == 0 else math.asin(across)
                for each in (angle, -angle if axis == 0 else math.pi - angle):
                    other = self.at(each)[1 - axis]
                    if low[1 - axis] <= other <= high[1 - axis] and self.holds(each):
                        return True
        return False


class Segment:
    def __init__(self, start, end):
        self.start, self.end = start, end

    def extremes(self):
        return [self.start, self.end]

    def touches(self, box):
        begin, finish = 0.0, 1.0
        for axis in (0, 1):
            low, high = box[0][axis], box[1][axis]
            from_, along = self.start[axis], self.end[axis] - self.start[axis]
            if along == 0:
                if not low <= from_ <= high:
                    return False
                continue
            first, last = sorted(((low - from_) / along, (high - from_) / along))
            begin, finish = max(begin, first), min(finish, last)
        return begin <= finish


def is_in(point, box):
    return all(box[0][axis] <= point[axis] <= box[1][axis] for axis in (0, 1))


def bulged(start, end, bulge):
    if bulge == 0 or start == end:
        return Segment(start, end)
    half = (end[0] - start[0]) / 2, (end[1] - start[1]) / 2
    lift = (1 / bulge - bulge) / 2
    center = start[0] + half[0] - half[1] * lift, start[1] + half[1] + half[0] * lift
    first = start if bulge > 0 else end
    return Arc(center, math.dist(start, center), math.atan2(first[1] - center[1], first[0] - center[0]),
               4 * abs(math.atan(bulge)))


def polyline_pieces(entity):
    points = list(entity.get_points("xyseb"))
    if entity.dxf.get("const_width", 0) or any(p[2] or p[3] for p in points):
        return None
    ends = points[1:] + (points[:1] if entity.closed else [])
    return [bulged(p[:2], q[:2], p[4]) for p, q in zip(points, ends)] or [Segment(p[:2], p[:2]) for p in points]


def pieces(entity):
    """Null for what has no plain shape in the plan view."""
    dxf, kind = entity.dxf, entity.dxftype()
    if kind == "LINE":
        return [Segment(tuple(dxf.start)[:2], tuple(dxf.end)[:2])]
    if kind == "POINT":
        return [Segment(tuple(dxf.location)[:2], tuple(dxf.location)[:2])]
    if math.dist(tuple(dxf.extrusion), (0, 0, 1)) > 0:
        return None
    if kind == "LWPOLYLINE":
        return polyline_pieces(entity)
    if dxf.radius <= 0:
        return None
    start, end = (dxf.start_angle, dxf.end_angle) if kind == "ARC" else (0.0, 360.0)
    sweep = math.radians((end - start) % 360.0) or FULL
    return [Arc(tuple(dxf.center)[:2], dxf.radius, math.radians(start), sweep)]


class Window:
    """What lies within a box, or touches it."""

    def __init__(self, box, is_whole):
        self.box, self.is_whole = box, is_whole
        size = max(abs(value) for corner in box for value in corner)
        self.slack = 1e-9 * size

    def text(self):
        (left, low), (right, high) = self.box
        return f"{'Window' if self.is_whole else 'Crossing'} {left!r},{low!r} {right!r},{high!r}"

    def takes(self, entity):
        """None where it is not plain."""
        shape = pieces(entity)
        if shape is None:
            return None
        answers = {self.answer(shape, self.grown(by)) for by in (-self.slack, self.slack)}
        return answers.pop() if len(answers) == 1 else None

    def grown(self, by):
        (left, low), (right, high) = self.box
        return (left - by, low - by), (right + by, high + by)

    def answer(self, shape, box):
        if self.is_whole:
            return all(is_in(point, box) for piece in shape for point in piece.extremes())
        return any(piece.touches(box) for piece in shape)


def boxes(entities):
    """The middle quarter of what the plain ones cover, and parts around it; none without any."""
    points = [point for entity in entities if entity.dxftype() in SIMPLE
              for piece in pieces(entity) or [] for point in piece.extremes()]
    if not points:
        return []
    low, high = ([choose(point[axis] for point in points) for axis in (0, 1)] for choose in (min, max))

    def at(*parts):
        return tuple(low[axis] * (1 - parts[axis]) + high[axis] * parts[axis] for axis in (0, 1))

    corners = ((0.2513, 0.2513, 0.7489, 0.7489), (0.0171, 0.0313, 0.3119, 0.4337), (0.4931, 0.0271, 0.9733, 0.5171),
               (0.0291, 0.4177, 0.5273, 0.9629), (0.6119, 0.5813, 0.9871, 0.9911), (0.1373, 0.1117, 0.9177, 0.8839))
    return [(at(left, bottom), at(right, top)) for left, bottom, right, top in corners]


def place_of(document):
    """Why windows cannot be drawn in the plan of model space; empty where they can."""
    header = document.header
    if not header.get("$TILEMODE", 1):
        return "a sheet is current"
    axes = header.get("$UCSORG", (0, 0, 0)), header.get("$UCSXDIR", (1, 0, 0)), header.get("$UCSYDIR", (0, 1, 0))
    if [tuple(axis) for axis in axes] != [(0, 0, 0), (1, 0, 0), (0, 1, 0)]:
        return "it has a coordinate system of its own"
    for view in document.viewports.get("*Active") if "*Active" in document.viewports else []:
        x, y, z = view.dxf.direction
        if z <= 0 or math.hypot(x, y) > 1e-9 * z or view.dxf.get("view_twist", 0):
            return "it is looked at from elsewhere"
    return ""
