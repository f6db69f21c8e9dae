"""The edits that are made of every drawing, and what each has to make of every record: worked out from the original's plain
groups alone.

What may differ, and why:
- A number is its value, a handle its number, a text its characters: how they are spelled is the writer's.
- Of a record that is written anew, a name is spelled as its table spells it: names are the same in any case, and with
  blanks around.
- What a motion works out is equal to 1e-12 of the numbers involved; an angle by whole turns; a height of 0 may come to a point that
  had none; sizes (thickness, scales) may be worked out anew by a turn. An angle or elevation that becomes 0 may go, as 0 is what its
  absence means.
- The picture of a moved dimension is another block or the old one, moved; its place (group 12) may be taken up by its contents.
- A true colour may be kept by its index alone in forms before 2004, which have no group for it.
- A copy is a new record: in the order of its class, without groups that have their default, without comments, reactors and extension
  dictionary; beside a true colour any index; its SEQEND has the look of what it ends and no
  data. Copied are the kinds that the host has a class for.
- A moved solid or region has its corners at their new places, whatever else its data say (bodies.py); its data are those of its
  entity in every form.
- Where something has gone, a reference to it may go or become 0, with the pair or the braces that it stood in, and counts may fall.
  What applications keep in records of their own (XRECORD, the section ACDSDATA) may stay.
- The count of a table and $HANDSEED follow new records; a section that a file lacked comes with its first record.
Kinds without a class (motion.kind_of gives None: meshes, leaders, viewports, images, surfaces, proxies and the like) stay as they are in
motions; their extended data too.
"""

from motion import DIMENSIONS, Z_AXIS, Motion, kind_of, moved, normal_of, number, triple
from names import R12_SPACES, is_entity, new_names, renamed, table_of
from records import (FREE, GONE, About, Either, Expected, Loose, Name, Record, compare_groups, is_reference, plain_handle,
                     same_value)

TRUE_COLOR = 254 << 16 | 127 << 8 | 1
COLOR_APPLICATION = "VEXO_TRUE_COLOR"
NEAREST_INDEX = "30"
INDEX = "3"
NEW_LAYER = "Edited"
MOTIONS = {
    "move": Motion(shift=(100.0, -50.0, 7.5)),
    "turn": Motion(turn=45.0, center=(10.0, 20.0, 0.0)),
    "scale": Motion(scale=2.0, center=(10.0, 20.0, 0.0)),
}
NO_ENTITY = {"BLOCK", "ENDBLK", "ENDSEC"}
PART_KINDS = {"VERTEX", "ATTRIB", "SEQEND"}


def is_space(name):
    return name.casefold().startswith(("*model_space", "*paper_space")) or name.casefold() in R12_SPACES


def stands_in_edited_block(record):
    if record.section == "ENTITIES":
        return True
    if record.section != "BLOCKS" or record.container is None:
        return False
    return is_space(record.container.strip()) or not record.container.strip().startswith("*")


def is_top_level(record):
    return is_entity(record) and record.kind not in NO_ENTITY and record.kind not in PART_KINDS


def is_edited(record):
    """The entity, or the one that owns it, is one that an edit of all entities meets."""
    return is_entity(record) and record.kind not in NO_ENTITY and record.kind != "SEQEND" and stands_in_edited_block(record)


def block_of(record):
    """What tells an entity's block: the container's place, and the space for the section of entities."""
    if record.section == "BLOCKS":
        return ("BLOCKS", record.container)
    return ("ENTITIES", "paper" if record.integer(67) else "model")


class Edit:
    """One edit: its name, the command of the module that makes it, and what it has to make of the drawing."""
    name = ""
    command = ""

    def expected(self, drawing):
        """A list of Expected or None (must have gone) for the drawing's records."""
        return [Expected(record) for record in drawing.records]

    def judge_added(self, drawing, result, added, say):
        for record in added:
            say(record, "record written that nobody asked for")

    def alternative(self, record):
        """Another Expected that a record may be instead; None where there is none."""
        return None

    def judge_result(self, drawing, pairs, result, say):
        """What is asked beyond the single records."""


class Touch(Edit):
    name, command = "touch", "TOUCHALL"


class Rename(Edit):
    name, command = "rename", "RENAMEALL"

    def expected(self, drawing):
        names, taken = new_names(drawing), set()
        return [renamed(drawing, record, names, taken) for record in drawing.records]


class Move(Edit):
    def __init__(self, name):
        self.name, self.command, self.motion = name, name.upper() + "ALL", MOTIONS[name]

    def expected(self, drawing):
        result = []
        pictures = {r.first(2, "").strip().casefold() for r in drawing.records if r.kind in DIMENSIONS and is_edited(r)}
        self.pictures = {name for name in pictures if name}
        for record in drawing.records:
            each = moved(record, self.motion) if is_edited(record) else None
            if each and record.kind in DIMENSIONS:
                each.groups = [(c, FREE if c == 2 and v.strip() or c in (12, 22, 32) else v) for c, v in each.groups]
            result.append(each or Expected(record))
        return result

    def alternative(self, record):
        """The block that shows a dimension may be moved in place."""
        if record.section == "BLOCKS" and record.container and record.container.strip().casefold() in self.pictures:
            return moved(record, self.motion)
        return None

    def judge_added(self, drawing, result, added, say):
        shown = {r.first(2, "").strip().casefold() for r in result.records if r.kind in DIMENSIONS}
        for record in added:
            name = record.container if record.section == "BLOCKS" else record.first(2, "")
            if record.kind in ("BLOCK", "ENDBLK", "BLOCK_RECORD") or record.section == "BLOCKS":
                if (name or "").strip().casefold() in shown:
                    continue
            if record.kind == "BLOCK" and record.first(2, "").strip().casefold() in shown:
                continue
            say(record, "record written that nobody asked for")

    def judge_result(self, drawing, pairs, result, say):
        """A moved dimension shows what it showed, moved."""
        before, after = contents_by_block(drawing), contents_by_block(result)
        for expected, actual in pairs:
            if expected.record.kind not in DIMENSIONS or not is_edited(expected.record):
                continue
            old = before.get(expected.record.first(2, "").strip().casefold())
            if old is None:
                if expected.record.first(2) is not None and expected.record.first(2) != actual.first(2):
                    say(actual, "names another block, though the drawing lacks the one that it named")
                continue
            new = after.get((actual.first(2) or "").strip().casefold())
            if new is None:
                say(actual, f"its picture is gone: block {actual.first(2)!r}")
                continue
            if [r.kind for r in old] != [r.kind for r in new]:
                say(actual, f"its picture has other entities: {len(old)} before, {len(new)} now")
                continue
            self.judge_picture(expected.record, actual, old, new, result, say)

    def judge_picture(self, before, after, old, new, result, say):
        """The contents of the block stand at the place in group 12; where that stays, and is not zero, or goes, the contents
        have taken up the difference."""
        place, new_place = place_of_picture(before), place_of_picture(after)
        moved_place = self.motion.vector(place)
        rest = tuple(moved_place[i] - new_place[i] for i in range(3))
        motion = Motion(tuple(self.motion.shift[i] + rest[i] for i in range(3)), self.motion.turn, self.motion.scale,
                        self.motion.center)
        for one, other in zip(old, new):
            want = moved(one, motion) or Expected(one)
            want.groups = [(c, FREE if c in (5, 330, 360) else v) for c, v in want.groups]
            words = compare_groups(want, other.groups, result.encoding)
            if words:
                say(other, "in the picture of a dimension: " + in_short(words), one)


def place_of_picture(dimension):
    """Group 12, in the world; the pictures at hand all lie in the world's plane."""
    for index, (code, _) in enumerate(dimension.groups):
        if code == 12:
            return triple(dimension.groups, index)[0]
    return (0.0, 0.0, 0.0)


def contents_by_block(drawing):
    blocks = {}
    for record in drawing.records:
        if record.section != "BLOCKS":
            continue
        if record.kind == "BLOCK":
            blocks.setdefault(record.first(2, "").strip().casefold(), [])
        elif record.kind not in ("ENDBLK", "ENDSEC") and record.container is not None:
            blocks.setdefault(record.container.strip().casefold(), []).append(record)
    return blocks


def common_groups_end(groups):
    """Where the class's own groups begin; for records without marks, the extended data."""
    marks = 0
    for index, (code, value) in enumerate(groups):
        if code == 100:
            marks += 1
            if marks > 1 or value.strip() != "AcDbEntity":
                return index
        if code >= 1000 or code == 101:
            return index
    return len(groups)


def data_begin(groups):
    return next((i for i, (code, _) in enumerate(groups) if code >= 1000 or code == 101), len(groups))


def place_of_common(record, code):
    end = common_groups_end(record.groups)
    in_braces = False
    for index in range(end):
        if record.groups[index][0] == 102:
            in_braces = record.groups[index][1].strip().startswith("{")
        elif record.groups[index][0] == code and not in_braces:
            return index
    if kind_of(record):  # the kinds that we know keep no such group of their own
        for index in range(end, data_begin(record.groups)):
            if record.groups[index][0] == code:
                return index
    return None


def with_common(record, values, gone=()):
    """The record with other common groups."""
    groups, loose, droppable = list(record.groups), [], set()
    has_part = any(code == 100 and value.strip() == "AcDbEntity" for code, value in groups)
    for code, value in values.items():
        index = place_of_common(record, code)
        if index is not None:
            groups[index] = (code, value)
        else:
            loose.append(Loose(code, value, "AcDbEntity" if has_part else ""))
        # Of two of a code that a record should have once, the second may have the old value or go.
        for again in range(0 if index is None else index + 1, common_groups_end(groups)):
            if groups[again][0] == code:
                groups[again] = (code, Either(groups[again][1], value))
                droppable.add(again)
    for code in gone:
        index = place_of_common(record, code)
        if index is not None:
            droppable.add(index)
            groups[index] = (code, GONE)
    return Expected(record, groups, loose, droppable)


class Color(Edit):
    name, command = "color", "COLORALL"

    def expected(self, drawing):
        return [with_common(r, {62: INDEX}, (420, 430)) if is_edited(r) else Expected(r) for r in drawing.records]


class TrueColor(Edit):
    name, command = "true color", "TRUECOLORALL"

    def expected(self, drawing):
        # Forms before 2004 have the index alone, unless the record had a true colour all the same; what they
        # have no group for stands in extended data, of an application that the drawing registers.
        has_form = drawing.version >= "AC1018"
        has_applications = has_table(drawing, "APPID")
        result = []
        for record in drawing.records:
            if not is_edited(record):
                result.append(Expected(record))
            elif has_form or place_of_common(record, 420) is not None:
                result.append(with_common(record, {62: NEAREST_INDEX, 420: str(TRUE_COLOR)}, (430,)))
            else:
                result.append(with_common(record, {62: NEAREST_INDEX}, (430,)))
                result[-1].loose.append(Loose(420, str(TRUE_COLOR), ("", "AcDbEntity"), is_needed=False))
                if has_applications:
                    add_extended(result[-1], [(1001, COLOR_APPLICATION), (1071, str(TRUE_COLOR))])
        return result

    def judge_added(self, drawing, result, added, say):
        is_registered = any(r.first(2) == COLOR_APPLICATION for r in drawing.table("APPID"))
        left = [r for r in added if (r.kind, r.first(2)) != ("APPID", COLOR_APPLICATION)]
        if len(added) - len(left) > (0 if is_registered else 1):
            say(None, f"{COLOR_APPLICATION} is registered twice")
        super().judge_added(drawing, result, left, say)


def has_table(drawing, name):
    return any(r.kind == "TABLE" and (r.first(2) or "").strip() == name for r in drawing.records)


def add_extended(expected, groups):
    """Behind the extended data that the record has, or at its end."""
    last = max((i for i, (code, _) in enumerate(expected.groups) if code >= 1000), default=len(expected.groups) - 1)
    expected.groups[last + 1:last + 1] = groups


def judge_layer(drawing, added, name, say):
    """One new layer; in a drawing without the table, the table with what every drawing has in it."""
    had_table = has_table(drawing, "LAYER")
    left, found = [], 0
    for record in added:
        if record.section == "TABLES" and record.kind == "LAYER" and record.first(2) == name:
            found += 1
        elif not had_table and (record.section == "TABLES" or record.kind == "SECTION"
                                or record.kind in ("TABLE", "ENDTAB", "ENDSEC")):
            continue
        else:
            left.append(record)
    if found != 1:
        say(None, f"{found} layers {name!r} written, 1 expected")
    return left


class Layer(Edit):
    name, command = "layer", "LAYERALL"

    def expected(self, drawing):
        return [with_common(r, {8: Name(NEW_LAYER)}) if is_edited(r) else Expected(r) for r in drawing.records]

    def judge_added(self, drawing, result, added, say):
        super().judge_added(drawing, result, judge_layer(drawing, added, NEW_LAYER, say), say)


class Line(Edit):
    name, command = "line", "ADDLINE"

    def judge_added(self, drawing, result, added, say):
        left = []
        lines = [r for r in added if r.kind == "LINE"]
        for record in added:
            if record.kind != "LINE" and not comes_with_first_record(drawing, record):
                left.append(record)
        if len(lines) != 1:
            say(None, f"{len(lines)} lines written, 1 expected")
        for line in lines:
            judge_owner(result, line, ("ENTITIES", "model"), say)
            words = compare_by_code(self.line(drawing), [g for g in line.groups if g[0] not in (5, 100, 330)], result.encoding)
            if words:
                say(line, in_short(words))
        super().judge_added(drawing, result, left, say)


    def line(self, drawing):
        """On the current layer, and as that has it in all else."""
        current = drawing.variables.get("CLAYER")
        groups = [(8, Name(drawing.text(current.first(8, "0")) if current else "0"))]
        groups += zip((10, 20, 30, 11, 21, 31), map(str, (1.5, 2.5, 3.5, 4.5, 5.5, 6.5)))
        return Expected(Record("LINE", groups))


def comes_with_first_record(drawing, record):
    """Sections and marks that a file lacked and that a new record needs."""
    sections = {(r.first(2) or "").strip() for r in drawing.records if r.kind == "SECTION"}
    if record.kind == "SECTION":
        return (record.first(2) or "").strip() not in sections
    if record.kind == "ENDSEC":
        return record.section not in sections
    return False


def has_space_by_name(drawing):
    """Where no record has the space's name, what is added there names no owner: none would be right."""
    return any(r.kind == "BLOCK_RECORD" and (r.first(2) or "").strip().upper() == "*MODEL_SPACE" for r in drawing.records)


def let_owner_be_missing(wanted):
    """Of the head, before the first class's mark."""
    for place, (code, _) in enumerate(wanted.groups):
        if code == 100:
            return
        if code == 330:
            wanted.droppable.add(place)


def judge_owner(result, record, place, say):
    """Where the form has owners, the entity's is a record of the file: its block's."""
    handles = {r.handle: r for r in result.records if r.handle}
    owner = record.first(330)
    if owner is None:
        return
    found = handles.get(plain_handle(owner))
    if found is None:
        say(record, f"its owner {owner} is not in the file")
    elif found.kind != "BLOCK_RECORD":
        say(record, f"its owner {owner} is a {found.kind}")
    elif place == ("ENTITIES", "model") and not is_space(found.first(2, "")):
        say(record, f"its owner {owner} is the block {found.first(2)!r}")
    elif place[0] == "BLOCKS" and found.first(2, "").casefold() != (place[1] or "").strip().casefold():
        say(record, f"its owner {owner} is the block {found.first(2)!r}, not {place[1]!r}")


class Copy(Edit):
    """Kinds that only their record describes cannot be copied. A copy has no reactors and no extension dictionary."""
    name, command = "copy", "COPYALL"

    def judge_added(self, drawing, result, added, say):
        wanted = {}
        for record in drawing.records:
            if is_entity(record) and record.kind not in NO_ENTITY and stands_in_edited_block(record):
                top = record.owner if record.kind in PART_KINDS else record
                if top is not None and kind_of(top):
                    wanted.setdefault(block_of(record if record.section == "BLOCKS" else top), []).append(record)
        written, left = {}, []
        for record in added:
            if is_entity(record) and record.kind not in NO_ENTITY and record.kind != "ENDSEC":
                top = record.owner if record.kind in PART_KINDS and record.owner is not None else record
                written.setdefault(block_of(record if record.section == "BLOCKS" else top), []).append(record)
            elif not comes_with_first_record(drawing, record):
                left.append(record)
        for place in sorted(set(wanted) | set(written), key=str):
            self.judge_block(drawing, result, place, wanted.get(place, []), written.get(place, []), say)
        super().judge_added(drawing, result, left, say)

    def judge_block(self, drawing, result, place, originals, copies, say):
        if [r.kind for r in originals] != [r.kind for r in copies]:
            say(None, f"copies in {place}: {len(originals)} records expected, {len(copies)} written")
            return
        for original, copy in zip(originals, copies):
            wanted = copied(drawing, original)
            if not copy.first(330) and not has_space_by_name(drawing):
                let_owner_be_missing(wanted)
            words = compare_by_code(wanted, copy.groups, result.encoding)
            if words:
                say(copy, "copy: " + in_short(words), original)
            if copy.kind not in PART_KINDS:
                judge_owner(result, copy, place, say)


# What a new record need not say.
DEFAULTS = {
    "LWPOLYLINE": {38: 0, 39: 0, 43: 0}, "MTEXT": {44: 1, 46: 0, 50: 0, 73: 1}, "SPLINE": {74: 0},
    "INSERT": {41: 1, 42: 1, 43: 1, 50: 0, 66: 0},
    "DIMENSION": {41: 1, 50: 0, 51: 0, 53: 0, 71: 5, 72: 1, 73: 0, 74: 0, 75: 0, 280: 0},
    "TEXT": {50: 0, 51: 0, 72: 0, 73: 0}, "POLYLINE": {70: 0}, "VERTEX": {70: 0}, "ATTDEF": {280: 0}, "ATTRIB": {280: 0},
}
COMMON_DEFAULTS = {39: 0, 48: 1, 60: 0, 62: 256, 370: -1, 67: 0, 210: 0, 220: 0, 230: 1}


def in_short(words):
    return "; ".join(words[:4]) + (f"; and {len(words) - 4} more" if len(words) > 4 else "")


COMMON = {6, 8, 48, 60, 62, 347, 370, 420, 430, 440}


def by_code(groups):
    """A new record has the order of its class: by part and code, the values of each in order."""
    values, part = {}, ""
    for index, (code, value) in enumerate(groups):
        if code == 100 and isinstance(value, str):
            part = value.strip()
        if code == 101 or code >= 1000:
            part = "behind"
        # The common groups of a new record stand where they belong.
        place = part
        if part != "behind" and (code in COMMON or code in (5, 330)):
            place = "AcDbEntity" if code in COMMON else ""
        values.setdefault((place, code), []).append((index, value))
    return values


def with_all_widths(groups):
    """Each vertex of a light polyline with its widths and bulge, also where they are 0 and left out. All that stands before
    the first vertex keeps its place."""
    result, vertex = [], None
    for code, value in [*groups, (1000, None)]:
        if vertex is not None and (code == 10 or code >= 100):
            result += [(each, vertex.get(each, "0")) for each in (40, 41, 42)]
            vertex = None
        if code == 10:
            vertex = {}
        if vertex is not None and code in (40, 41, 42):
            vertex[code] = value
        elif value is not None:
            result.append((code, value))
    return result


def compare_by_code(expected, actual, encoding):
    if expected.record.kind == "LWPOLYLINE":
        expected = Expected(expected.record, with_all_widths(expected.groups), expected.loose, expected.droppable)
        actual = with_all_widths(actual)
    wanted, written, words = by_code(expected.groups), by_code(actual), []
    for (part, code), values in wanted.items():
        others = [value for _, value in written.pop((part, code), [])]
        if not others and all(index in expected.droppable for index, _ in values):
            continue
        if code in COMMON and len(values) > len(others) > 0:
            values = [values[0] if same_value(code, values[0][1], others[0], encoding) else values[-1]]  # one of two
        if len(values) != len(others) or not all(same_value(code, v, w, encoding) for (_, v), w in zip(values, others)):
            shown = (f"{len(values)}, {len(others)} written" if len(values) != len(others) else f"{values[0][1]!r} ...")
            words.append(f"group {code} of {part or 'the head'}: expected {shown}" + ("" if others else ", missing"))
    for (part, code), values in written.items():
        value = values[0][1]
        loose = next((each for each in expected.loose if each.code == code), None)
        if loose is None or not same_value(code, loose.value, value, encoding):
            words.append(f"group {code} of {part or 'the head'} ({value.strip()}) written, not expected")
    return words


def copied(drawing, record):
    groups, droppable, skipping = [], set(), False
    defaults = {**COMMON_DEFAULTS, **DEFAULTS.get(record.kind, {})}
    if normal_of(record) != Z_AXIS:
        del defaults[210], defaults[220], defaults[230]
    for code, value in record.groups:
        if code == 102 and value.strip().startswith("{ACAD_"):
            skipping = True
        if not skipping and code != 999:
            if code in defaults and number(value) == defaults[code]:
                droppable.add(len(groups))
            if table_of(record, code):
                value = Name(drawing.text(value))
            elif 50 <= code <= 53:
                value = About(number(value), 1.0, 360.0)  # an angle is held in radians, within one turn
            elif code == 62 and record.first(420) is not None:
                value = FREE  # beside a true colour, any index near it
            elif code == 350 and record.kind == "3DSOLID":
                value = "0"  # the history of how it was made stays with the original
                droppable.add(len(groups))
            if (record.kind, code) != ("VIEWPORT", 361):  # the sun that it owns stays the original's alone
                groups.append((code, FREE if code in (5, 330) else value))
        if code == 102 and value == "}":
            skipping = False
    loose = [Loose(code, value) for code, value in ((5, FREE), (330, FREE), (30, "0"), (31, "0"), (66, "1"))]
    if record.kind == "SEQEND":  # it has the look of what it ends, and nothing else
        groups = [group for group in groups if group[0] < 1000]
        loose += [Loose(code, FREE) for code in (6, 48, 60, 62, 370, 420)]
    return Expected(record, groups, loose, droppable)


class Erase(Edit):
    """What an erased entity owns goes with it, and nothing that stays refers to what has gone."""
    name, command = "erase", "ERASEHALF"

    def expected(self, drawing):
        counts, gone, handles = {}, set(), set()
        for record in drawing.records:
            if not is_entity(record) or record.kind in NO_ENTITY or not stands_in_edited_block(record):
                continue
            if record.kind in PART_KINDS:
                if record.owner is not None and id(record.owner) in gone:
                    gone.add(id(record))
                    handles.add(record.handle)
                continue
            place = block_of(record)
            counts[place] = counts.get(place, 0) + 1
            if counts[place] % 2 == 0:
                gone.add(id(record))
                handles.add(record.handle)
        handles.discard("")
        self.owned_gone(drawing, gone, handles)
        self.handles = handles
        result = []
        for record in drawing.records:
            if id(record) in gone:
                result.append(None)
            elif any(is_reference(c) and plain_handle(v) in handles for c, v in record.groups):
                result.append(self.without_references(record, handles))
            else:
                result.append(Expected(record))
        return result

    def owned_gone(self, drawing, gone, handles):
        """Extension dictionaries of what has gone, and what they own, go along."""
        found = True
        while found:
            found = False
            for record in drawing.records:
                if record.section != "OBJECTS" or id(record) in gone or not record.handle:
                    continue
                owner = owner_of(record)
                if owner and owner in handles:
                    gone.add(id(record))
                    handles.add(record.handle)
                    found = True

    def without_references(self, record, handles):
        groups, droppable = list(record.groups), set()
        gone = {i for i, (c, v) in enumerate(groups) if is_reference(c) and plain_handle(v) in handles}
        counts = COUNTS_OF_REFERENCES.get(record.kind, ())
        for index, (code, value) in enumerate(groups):
            if index in gone:
                groups[index] = (code, Either("0", value) if is_own_data(record) else "0")
                droppable.add(index)
                if record.kind == "SORTENTSTABLE" and code == 331:
                    droppable.add(index + 1)
            elif code in counts and gone:
                groups[index] = (code, Either(*(str(int(value) - fewer) for fewer in range(len(gone) + 1))))
        droppable |= empty_braces(groups, gone)
        return Expected(record, groups, (), droppable)

    def judge_added(self, drawing, result, added, say):
        for record in added:
            if record.handle and record.handle in self.handles:
                say(record, "stays, though what owns it has gone")
            else:
                say(record, "record written that nobody asked for")


# Numbers of references, and what says that there are some.
COUNTS_OF_REFERENCES = {"HATCH": (97, 71), "FIELDLIST": (90,), "FIELD": (96, 97)}


def is_own_data(record):
    """What an application keeps for itself: nobody but it knows what a handle in there is for."""
    return record.kind == "XRECORD" or record.section == "ACDSDATA"


def empty_braces(groups, gone):
    """The places of the marks of a list whose references have all gone."""
    places, begin = set(), None
    for index, (code, value) in enumerate(groups):
        if code != 102:
            continue
        if value.strip().startswith("{"):
            begin = index
        elif begin is not None:
            if all(each in gone for each in range(begin + 1, index)):
                places |= {begin, index}
            begin = None
    return places


def owner_of(record):
    """The owner's handle: the first 330 outside of braces."""
    braces = False
    for code, value in record.groups:
        if code == 102:
            braces = value.strip().startswith("{")
        elif code == 330 and not braces:
            return plain_handle(value)
        elif code == 100:
            return None
    return None


EDITS = [Touch(), Rename(), Move("move"), Move("turn"), Move("scale"), Color(), TrueColor(), Layer(), Copy(), Erase(), Line()]
