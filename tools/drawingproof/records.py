"""Drawings as rows of records of plain groups, and their comparison value by value.

Nothing is repaired, left out or put in order: a record is what stands between one group 0 and the next, a variable of the
header what stands between one group 9 and the next. Values are the file's own texts; they are read only to be compared.
"""

import math
import re

import bodies

class Free:
    """A value that may be any."""

    def __repr__(self):
        return "any"


FREE = Free()
GONE = ()  # no value is this one


class Record:
    """One record. `container` is the table or block that it stands in, `owner` the entity that a vertex, an attribute or an
    end of a sequence belongs to."""

    __slots__ = ("kind", "groups", "section", "container", "owner", "line", "_handle")

    def __init__(self, kind, groups, section="", container=None, owner=None, line=0):
        self.kind, self.groups, self.section, self.container = kind, groups, section, container
        self.owner, self.line, self._handle = owner, line, None

    @property
    def handle(self):
        """Upper case without leading zeros; empty where the record has none."""
        if self._handle is None:
            self._handle = ""
            code = 105 if self.kind == "DIMSTYLE" else 5
            if self.section not in ("HEADER", "CLASSES") and self.kind != "SECTION":
                for group_code, value in self.groups:
                    if group_code == code:
                        self._handle = plain_handle(value)
                        break
                    if group_code >= 1000 and group_code != 1001:
                        break
        return self._handle

    def first(self, code, otherwise=None):
        for group_code, value in self.groups:
            if group_code == code:
                return value
        return otherwise

    def integer(self, code, otherwise=0):
        value = self.first(code)
        try:
            return int(value) if value is not None else otherwise
        except ValueError:
            return otherwise

    def title(self):
        name = self.first(2) if self.section in ("TABLES", "BLOCKS") and self.kind in NAMED else None
        return f"{self.kind} {self.handle or '(no handle)'}" + (f" '{name}'" if name else "")


NAMED = {"LAYER", "STYLE", "DIMSTYLE", "LTYPE", "BLOCK_RECORD", "BLOCK", "TABLE", "APPID", "VPORT", "VIEW", "UCS"}
PARTS = {"VERTEX", "ATTRIB", "SEQEND"}


def plain_handle(value):
    return value.strip().lstrip("0").upper() or "0"


class Drawing:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.bytes = file.read()
        self.path = path
        self.records = bodies.gathered(list(records_of(groups_of(self.bytes))))
        self.variables = {r.kind[1:]: r for r in self.records if r.section == "HEADER" and r.kind.startswith("$")}
        version = self.variables.get("ACADVER")
        self.version = (version.first(1) or "").strip() if version else ""
        page = self.variables.get("DWGCODEPAGE")
        self.encoding = encoding_of(self.version, (page.first(3) or "") if page else "")

    def text(self, value):
        """A value's text as a person reads it: code page, escapes for characters and control characters resolved."""
        return decoded(value, self.encoding)

    def table(self, name):
        return [r for r in self.records if r.section == "TABLES" and r.kind == name and r.container == name]


def encoding_of(version, page):
    if version >= "AC1021":
        return "utf-8"
    number = re.sub(r"\D", "", page)
    try:
        "".encode("cp" + number)
        return "cp" + number
    except LookupError:
        return "cp1252"


def decoded(value, encoding):
    if not value.isascii():
        value = value.encode("latin-1").decode(encoding, "surrogateescape")
    if "\\" in value:
        value = re.sub(r"\\U\+([0-9A-Fa-f]{4})", lambda match: chr(int(match[1], 16)), value)
    if "^" in value:
        value = re.sub(r"\^([ A-_])", lambda match: "^" if match[1] == " " else chr(ord(match[1]) - 64), value)
    return value


def groups_of(data):
    """(code, value, line). Values are kept byte for byte, as characters of Latin-1."""
    lines = data.decode("latin-1").split("\n")
    for index in range(0, len(lines) - 1, 2):
        code = lines[index].strip()
        if not code and index + 2 >= len(lines) - 1:
            return
        yield int(code), lines[index + 1].rstrip("\r"), index + 1


def records_of(groups):
    section, container, record, sequence = "", None, None, None
    for code, value, line in groups:
        is_variable = code == 9 and (section == "HEADER" or (
            record is not None and record.kind == "SECTION" and (record.first(2) or "").strip() == "HEADER"))
        if code == 0 or is_variable:
            if record:
                yield record
                section, container, sequence = context_behind(record, section, container, sequence)
            kind = value.strip()
            owner = sequence if kind in PARTS else None
            record = Record(kind, [], "" if kind in ("SECTION", "EOF") else section, container, owner, line)
        else:
            if record is None:
                record = Record("(start)", [], "", None, None, line)
            record.groups.append((code, value))
    if record:
        yield record


def context_behind(record, section, container, sequence):
    kind = record.kind
    if kind == "SECTION":
        return (record.first(2) or "").strip(), None, None
    if kind == "ENDSEC":
        return "", None, None
    if kind in ("ENDTAB", "ENDBLK"):
        return section, None, None
    if kind == "TABLE":
        return section, (record.first(2) or "").strip(), None
    if kind == "BLOCK":
        return section, (record.first(2) or ""), None
    if kind == "SEQEND":
        return section, container, None
    if kind in PARTS:
        return section, container, sequence
    return section, container, record if kind in ("POLYLINE", "INSERT") else None


# Values.


def is_real(code):
    return 10 <= code <= 59 or 110 <= code <= 149 or 210 <= code <= 239 or 460 <= code <= 469 or 1010 <= code <= 1059


def is_integer(code):
    return (60 <= code <= 99 or 160 <= code <= 179 or 270 <= code <= 289 or 370 <= code <= 389 or 400 <= code <= 409
            or 420 <= code <= 429 or 440 <= code <= 459 or 1060 <= code <= 1071)


def is_handle(code):
    return code in (5, 105, 1005, 480, 481) or 320 <= code <= 369 or 390 <= code <= 399


def is_reference(code):
    return is_handle(code) and code not in (5, 105)


class About:
    """A real that has been worked out: equal to 1e-12 of itself or of `size`, the largest number that it comes from; an
    angle by whole periods."""

    def __init__(self, value, size=1.0, period=0.0):
        self.value, self.size, self.period = value, size, period

    def __repr__(self):
        return f"{self.value:.15g}"

    def holds(self, other):
        if not math.isfinite(self.value):
            return False
        distance = abs(self.value - other)
        if self.period:
            distance = abs((distance + self.period / 2) % self.period - self.period / 2)
        return distance <= 1e-12 * max(1.0, abs(self.value), self.size)


class Either:
    def __init__(self, *values):
        self.values = values

    def __repr__(self):
        return " or ".join(map(repr, self.values))


class Name:
    """A name, upper and lower case apart: an entity names a record as its table spells it."""

    def __init__(self, text):
        self.text = text

    def __repr__(self):
        return repr(self.text)


def same_value(code, expected, actual, encoding):
    if expected is FREE or expected == actual:
        return True
    if expected is GONE:
        return False
    if isinstance(expected, bodies.Corners):
        return expected.holds(actual)
    if isinstance(expected, bodies.Body) or isinstance(actual, bodies.Body):
        return False
    if isinstance(expected, Either):
        return any(same_value(code, value, actual, encoding) for value in expected.values)
    if isinstance(expected, Name):
        return decoded(actual, encoding).strip().casefold() == expected.text.strip().casefold()
    try:
        if isinstance(expected, About):
            return expected.holds(float(actual))
        if is_real(code):
            return float(expected) == float(actual)
        if is_integer(code):
            return int(expected) == int(actual)
    except ValueError:
        return False
    if is_handle(code):
        return plain_handle(expected) == plain_handle(actual)
    return decoded(expected, encoding) == decoded(actual, encoding)


class Loose:
    """A group that the record did not have and now must have: once, anywhere between the mark `part` (or one of several) and
    the next mark; anywhere at all where `part` is empty."""

    def __init__(self, code, value, part="", is_needed=True):
        self.code, self.value, self.is_needed = code, value, is_needed
        self.parts = (part,) if isinstance(part, str) else part


class Expected:
    """What a record has to be. `groups` in order; where a value is Optional it may be missing."""

    __slots__ = ("record", "groups", "loose", "droppable")

    def __init__(self, record, groups=None, loose=(), droppable=()):
        self.record = record
        self.groups = record.groups if groups is None else groups
        self.loose = list(loose)
        self.droppable = set(droppable)  # places of groups that may be missing, as they hold what stands for no group

    @property
    def is_unchanged(self):
        return self.groups is self.record.groups and not self.loose


def shown(group):
    return f"{group[0]}={group[1]!r}" if not isinstance(group[1], str) else f"{group[0]}={group[1]}"


def compare_groups(expected, actual, encoding):
    """Differences in words; empty when the record is as expected."""
    if expected.groups == actual and not any(loose.is_needed for loose in expected.loose):
        return []
    return Alignment(expected, actual, encoding).differences()


class Alignment:
    """Lays the written groups along the expected ones with as few differences as there are."""

    LARGEST = 250_000  # of the table; longer records are compared place by place from their first difference on

    def __init__(self, expected, actual, encoding):
        self.wanted, self.droppable, self.loose = expected.groups, expected.droppable, list(expected.loose)
        self.actual, self.encoding = actual, encoding
        self.parts, part = [], ""
        for code, value in actual:
            part = value.strip() if code == 100 else part
            self.parts.append(part)

    def same(self, i, j):
        return self.wanted[i][0] == self.actual[j][0] and same_value(self.wanted[i][0], self.wanted[i][1], self.actual[j][1],
                                                                     self.encoding)

    def loose_at(self, j):
        code, value = self.actual[j]
        return next((each for each in self.loose if each.code == code and (each.parts == ("",) or self.parts[j] in each.parts)
                     and same_value(code, each.value, value, self.encoding)), None)

    def differences(self):
        begin, end_wanted, end_actual = 0, len(self.wanted), len(self.actual)
        while begin < end_wanted and begin < end_actual and self.same(begin, begin):
            begin += 1
        while end_wanted > begin and end_actual > begin and self.same(end_wanted - 1, end_actual - 1):
            end_wanted, end_actual = end_wanted - 1, end_actual - 1
        words = self.between(begin, end_wanted, begin, end_actual)
        return words + [f"group {each.code}={each.value!r} missing" for each in self.loose if each.is_needed]

    def between(self, i0, i1, j0, j1):
        steps = self.steps(i0, i1, j0, j1)
        words, missing, extra = [], [], []
        for i, j in steps:
            if i is not None and j is not None:
                continue
            if i is not None:
                if i not in self.droppable:
                    missing.append(i)
                continue
            loose = self.loose_at(j)
            if loose:
                self.loose.remove(loose)
            else:
                extra.append(j)
        for i in missing:
            code = self.wanted[i][0]
            other = next((j for j in extra if self.actual[j][0] == code), None)
            if other is None:
                words.append(f"group {shown(self.wanted[i])} missing")
            else:
                extra.remove(other)
                moved = same_value(code, self.wanted[i][1], self.actual[other][1], self.encoding)
                words.append(f"group {shown(self.wanted[i])} stands elsewhere" if moved
                             else f"group {shown(self.wanted[i])} expected, {shown(self.actual[other])} written")
        return words + [f"group {shown(self.actual[j])} written, not expected here" for j in extra]

    def steps(self, i0, i1, j0, j1):
        rows, columns = i1 - i0, j1 - j0
        if rows * columns > self.LARGEST:
            return self.place_by_place(i0, i1, j0, j1)
        best = [[0] * (columns + 1) for _ in range(rows + 1)]
        for i in range(rows - 1, -1, -1):
            for j in range(columns - 1, -1, -1):
                best[i][j] = (1 + best[i + 1][j + 1] if self.same(i0 + i, j0 + j)
                              else max(best[i + 1][j], best[i][j + 1]))
        i = j = 0
        result = []
        while i < rows or j < columns:
            if i < rows and j < columns and self.same(i0 + i, j0 + j) and best[i][j] == 1 + best[i + 1][j + 1]:
                result.append((i0 + i, j0 + j))
                i, j = i + 1, j + 1
            elif i < rows and (j == columns or best[i + 1][j] >= best[i][j + 1]):
                result.append((i0 + i, None))
                i += 1
            else:
                result.append((None, j0 + j))
                j += 1
        return result

    def place_by_place(self, i0, i1, j0, j1):
        result = []
        for k in range(max(i1 - i0, j1 - j0)):
            i, j = (i0 + k if i0 + k < i1 else None), (j0 + k if j0 + k < j1 else None)
            if i is not None and j is not None and self.same(i, j):
                result.append((i, j))
            else:
                result += [(i, None)] * (i is not None) + [(None, j)] * (j is not None)
        return result
