"""Which groups of a drawing are references by name, and what a new name of all records makes of them."""

from motion import kind_of
from records import Expected, Loose, Name

STANDING = {"0", "bylayer", "byblock", "continuous"}
NO_NAME = set('<>/\\":;?*|,=`')
SUFFIX = "-new"
R12_SPACES = {"$model_space", "$paper_space"}

HEADER = {"CLAYER": "LAYER", "CELTYPE": "LTYPE", "TEXTSTYLE": "STYLE", "DIMSTYLE": "DIMSTYLE", "DIMTXSTY": "STYLE",
          "DIMBLK": "BLOCK", "DIMBLK1": "BLOCK", "DIMBLK2": "BLOCK", "DIMLDRBLK": "BLOCK", "DIMLTYPE": "LTYPE",
          "DIMLTEX1": "LTYPE", "DIMLTEX2": "LTYPE"}
# Beyond layer (8) and linetype (6), which all entities have.
OF_KIND = {
    ("TEXT", 7): "STYLE", ("ATTRIB", 7): "STYLE", ("ATTDEF", 7): "STYLE", ("MTEXT", 7): "STYLE", ("RTEXT", 7): "STYLE",
    ("ARCALIGNEDTEXT", 7): "STYLE", ("ACAD_TABLE", 7): "STYLE", ("TABLESTYLE", 7): "STYLE",
    ("INSERT", 2): "BLOCK", ("BLOCK", 2): "BLOCK", ("BLOCK", 3): "BLOCK", ("ACAD_TABLE", 2): "BLOCK",
    ("DIMENSION", 2): "BLOCK", ("ARC_DIMENSION", 2): "BLOCK", ("LARGE_RADIAL_DIMENSION", 2): "BLOCK",
    ("DIMENSION", 3): "DIMSTYLE", ("ARC_DIMENSION", 3): "DIMSTYLE", ("LARGE_RADIAL_DIMENSION", 3): "DIMSTYLE",
    ("LEADER", 3): "DIMSTYLE", ("TOLERANCE", 3): "DIMSTYLE",
    ("LAYER", 2): "LAYER", ("LAYER", 6): "LTYPE", ("STYLE", 2): "STYLE", ("LTYPE", 2): "LTYPE", ("DIMSTYLE", 2): "DIMSTYLE",
    ("DIMSTYLE", 5): "BLOCK", ("DIMSTYLE", 6): "BLOCK", ("DIMSTYLE", 7): "BLOCK", ("BLOCK_RECORD", 2): "BLOCK",
    ("MLINESTYLE", 6): "LTYPE", ("LAYER_FILTER", 8): "LAYER", ("LAYER_INDEX", 8): "LAYER",
}
# What an entity without the group has.
WHERE_ABSENT = {("TEXT", 7): "AcDbText", ("ATTRIB", 7): "AcDbText", ("ATTDEF", 7): "AcDbText", ("MTEXT", 7): "AcDbMText",
                ("DIMENSION", 3): "AcDbDimension"}


def is_entity(record):
    return record.section in ("BLOCKS", "ENTITIES")


def table_of(record, code):
    """The table whose record's name the group holds; None for other groups."""
    if record.section == "HEADER":
        return HEADER.get(record.kind[1:])
    if code == 1003:
        return "LAYER"
    if is_entity(record) and code in (6, 8):
        return "LAYER" if code == 8 else "LTYPE"
    return OF_KIND.get((record.kind, code))


def new_names(drawing):
    """By table: the folded old name, and the new one. Of two records of one name the first bears the references."""
    names = {"LAYER": {}, "STYLE": {}, "DIMSTYLE": {}, "LTYPE": {}, "BLOCK": {}}
    for record in drawing.records:
        table = "BLOCK" if record.kind in ("BLOCK", "BLOCK_RECORD") else record.kind
        if table not in names or record.section not in ("TABLES", "BLOCKS"):
            continue
        name = drawing.text(record.first(2, "")).strip()
        folded = name.casefold()
        if not name or folded in STANDING or name.startswith("*") or folded in R12_SPACES:
            continue
        clean = "".join("_" if c in NO_NAME or c < " " else c for c in name)
        names[table].setdefault(folded, clean + SUFFIX)
    return names


def bears_name(record):
    return record.section in ("TABLES", "BLOCKS") and record.kind in ("LAYER", "STYLE", "DIMSTYLE", "LTYPE", "BLOCK_RECORD")


def renamed(drawing, record, names, taken):
    """`taken` has the names that records of the tables had before: the host refuses the second of one name."""
    groups, loose, seen, marks = [], [], set(), 0
    is_known = kind_of(record) is not None or record.kind in ("BLOCK", "ENDBLK", "SEQEND", "VERTEX")
    for code, value in record.groups:
        marks += code == 100
        table = table_of(record, code)
        if code in (6, 8) and marks > 1 and is_entity(record) and not is_known:
            table = None  # what a class that we do not know keeps there is its own
        if bears_name(record) and code == 2:
            own = (record.kind, drawing.text(value).strip().casefold())
            if own in taken:
                table = None
            taken.add(own)
        new = names[table].get(drawing.text(value).strip().casefold()) if table else None
        groups.append((code, Name(new) if new else value))
        seen.add(code)
    if is_entity(record):
        for (kind, code), part in WHERE_ABSENT.items():
            if kind == record.kind and code not in seen and "standard" in names["STYLE"]:
                loose.append(Loose(code, Name(names["STYLE"]["standard"]), part if 100 in seen else ""))
    if not loose and groups == record.groups:
        return Expected(record)
    return Expected(record, groups, loose)
