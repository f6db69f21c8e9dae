"""Enhanced metafiles record by record: what does not hold of sizes, counts, objects, texts, bounds and frame.

Reads the published layout by itself; nothing of the recorder is known here but the files."""

import math
import struct

HEADER, END, MOVE, LINE, ARC, SELECT, DELETE, TEXT = 1, 14, 27, 54, 45, 37, 40, 84
CREATES = {38: 28, 39: 24, 82: 368}
FIXED = {12: {18, 22, 24, 25, SELECT, DELETE}, 16: {MOVE, LINE}, 20: {END}, 24: {42, 43}, 40: {ARC}}
POLYGONS = {3: 8, 4: 8, 86: 4, 87: 4}
STROKES = {LINE, ARC, 42, 43, *POLYGONS}
STOCK = 0x80000000


class Walk:
    def __init__(self, data):
        self.data, self.problems = data, []
        self.records = list(self.split())
        self.objects, self.drawn, self.position = {}, None, (0, 0)
        self.highest, self.selected, self.align, self.pen_margin = 0, set(), 0, 0
        if self.records and not self.problems:
            for kind, at, size in self.records[1:]:
                self.look_at(kind, at, size)
            self.look_at_header()

    def fault(self, words):
        self.problems.append(words)

    def u32(self, at):
        return struct.unpack_from("<I", self.data, at)[0]

    def i32(self, at, count=1):
        return struct.unpack_from(f"<{count}i", self.data, at)

    def split(self):
        at = 0
        while at + 8 <= len(self.data):
            kind, size = struct.unpack_from("<II", self.data, at)
            if size < 8 or size % 4 or at + size > len(self.data):
                return self.fault(f"record {kind} at {at} has size {size}")
            yield kind, at, size
            at += size
            if kind == END:
                break
        if at != len(self.data):
            self.fault(f"{len(self.data) - at} bytes behind the end")
        return None

    def add(self, *points, margin=0):
        for x, y in points:
            box = (x - margin, y - margin, x + margin, y + margin)
            old = self.drawn or box
            self.drawn = (min(old[0], box[0]), min(old[1], box[1]), max(old[2], box[2]), max(old[3], box[3]))

    def look_at(self, kind, at, size):
        for wanted, kinds in FIXED.items():
            if kind in kinds and size != wanted:
                return self.fault(f"record {kind} has {size} bytes, not {wanted}")
        if kind in STROKES and not {STOCK + 7, STOCK} <= self.selected:
            self.fault(f"record {kind} before the stock pen and brush are selected")
        if kind == MOVE:
            self.position = self.i32(at + 8, 2)
        elif kind == LINE:
            end = self.i32(at + 8, 2)
            self.add(self.position, end, margin=self.pen_margin)
            self.position = end
        elif kind == ARC:
            self.look_at_arc(at)
        elif kind in POLYGONS:
            self.look_at_polygon(kind, at, size)
        elif kind in CREATES or kind in (SELECT, DELETE):
            self.look_at_object(kind, at, size)
        elif kind == TEXT:
            self.look_at_text(at, size)
        elif kind == 22:
            self.align = self.u32(at + 8)
        elif kind == END and (self.u32(at + 8), self.u32(at + 16)) != (0, 20):
            self.fault("the end record does not tell its size")
        elif kind not in (END, 18, 24, 25, 42, 43):
            self.fault(f"record {kind} is none that we write")
        return None

    def look_at_arc(self, at):
        left, top, right, bottom, *ends = self.i32(at + 8, 8)
        right, bottom = right + 1, bottom + 1
        if left >= right or top >= bottom:
            return self.fault("an arc's box is empty")
        x, y, across, up = (left + right) / 2, (top + bottom) / 2, (right - left) / 2, (bottom - top) / 2
        first, last = (math.atan2((y - ends[i + 1]) / up, (ends[i] - x) / across) for i in (0, 2))
        last += 2 * math.pi if last <= first else 0
        turns = [first, last] + [q * math.pi / 2 for q in range(-2, 9) if first < q * math.pi / 2 < last]
        return self.add(*((x + across * math.cos(a), y - up * math.sin(a)) for a in turns), margin=self.pen_margin)

    def look_at_polygon(self, kind, at, size):
        count, width = self.u32(at + 24), POLYGONS[kind]
        if size != 28 + count * width or count < 2:
            return self.fault(f"a polygon of {count} points has {size} bytes")
        numbers = struct.unpack_from(f"<{2 * count}{'h' if width == 4 else 'i'}", self.data, at + 28)
        if width == 8 and all(-32768 <= number <= 32767 for number in numbers):
            self.fault("a polygon's points would fit into 16 bits")
        points = list(zip(numbers[::2], numbers[1::2]))
        xs, ys = [p[0] for p in points], [p[1] for p in points]
        margin = self.pen_margin
        box = (min(xs) - margin, min(ys) - margin, max(xs) + margin, max(ys) + margin)
        if box != self.i32(at + 8, 4):
            self.fault(f"a polygon's box is {self.i32(at + 8, 4)}, its points reach {box}")
        return self.add(*points, margin=margin)

    def look_at_object(self, kind, at, size):
        index = self.u32(at + 8)
        if kind in CREATES:
            free = next(i for i in range(1, len(self.objects) + 2) if i not in self.objects)
            if size != CREATES[kind] or index != free:
                self.fault(f"object {index} of {size} bytes, the lowest free index is {free}")
            self.objects[index] = (kind, at)
            self.highest = max(self.highest, index)
        elif index & STOCK:
            if kind == DELETE or (index & ~STOCK) not in (0, 4, 5, 7, 8, 13, 17):
                self.fault(f"stock object {index & ~STOCK} is deleted or unknown")
        elif index not in self.objects:
            self.fault(f"object {index} is not there")
        if kind == DELETE:
            self.objects.pop(index, None)
        if kind == SELECT:
            self.selected.add(index)
            if self.objects.get(index, (0, 0))[0] == 38:
                width = self.i32(self.objects[index][1] + 16)[0]
                self.pen_margin = (width + 1) // 2 + 1 if width > 1 else 0
            elif index in (STOCK + 7, STOCK + 8):
                self.pen_margin = 0

    def look_at_text(self, at, size):
        box, mode = self.i32(at + 8, 4), self.u32(at + 24)
        scales = struct.unpack_from("<2f", self.data, at + 28)
        count, text_at, options = self.u32(at + 44), self.u32(at + 48), self.u32(at + 52)
        advances_at = self.u32(at + 72)
        device, millimetres = self.i32(72, 2), self.i32(80, 2)
        if (mode, text_at, options) != (1, 76, 0) or self.i32(at + 56, 4) != (0, 0, -1, -1):
            self.fault("a text's fixed fields differ")
        if any(abs(scales[i] - 100 * millimetres[i] / device[i]) > 1e-4 for i in (0, 1)):
            self.fault(f"a text's scales are {scales}")
        if advances_at != 76 + (2 * count + 3) // 4 * 4 or size != advances_at + 4 * count or count == 0:
            return self.fault(f"a text of {count} units has {size} bytes")
        advances = self.i32(at + advances_at, count)
        if min(advances) < 0:
            self.fault("a letter goes backwards")
        try:
            self.data[at + 76:at + 76 + 2 * count].decode("utf-16-le")
        except UnicodeDecodeError:
            self.fault("a text is no UTF-16")
        x, y = self.i32(at + 36, 2)
        if self.align == 0x1E and not (box[0] <= x <= box[2] + 1 and box[1] <= y <= box[3] + 1):
            self.fault(f"a centred text at {x}, {y} has the box {box}")
        span = math.hypot(box[2] - box[0] + 1, box[3] - box[1] + 1)
        if span < sum(advances) - 2:
            self.fault(f"a text {sum(advances)} long has a box of {span:.0f} across")
        return self.add((box[0], box[1]), (box[2], box[3]))

    def look_at_header(self):
        kind, at, size = self.records[0]
        names = ("signature", "version", "bytes", "records")
        told = struct.unpack_from("<4I", self.data, 40)
        found = (0x464D4520, 0x10000, len(self.data), len(self.records))
        self.problems += [f"the header tells {name} {a}, found {b}" for name, a, b in zip(names, told, found) if a != b]
        if (kind, at) != (HEADER, 0) or self.records[-1][0] != END or size < 108:
            self.fault("the file does not begin with a header of 108 bytes and end with its end")
        if struct.unpack_from("<H", self.data, 56)[0] != self.highest + 1:
            self.fault("the number of handles is not the highest index and one")
        bounds, frame = self.i32(8, 4), self.i32(24, 4)
        drawn = self.drawn or (0, 0, -1, -1)
        if any(abs(a - min(max(b, -2**31), 2**31 - 1)) > 0.75 for a, b in zip(bounds, drawn)):
            self.fault(f"bounds {bounds}, drawn {drawn}")
        device, millimetres, micrometres = self.i32(72, 2), self.i32(80, 2), self.i32(100, 2)
        for i in range(4):
            exact = bounds[i] * 100 * millimetres[i % 2] / device[i % 2]
            if abs(frame[i] - exact) > 0.5000001 and abs(exact) < 2**31:
                self.fault(f"frame {frame[i]}, by the bounds {exact}")
        if any(abs(1000 * millimetres[i] - micrometres[i]) > 500 for i in (0, 1)):
            self.fault("millimetres and micrometres differ")


def faults_of(data):
    return Walk(data).problems
