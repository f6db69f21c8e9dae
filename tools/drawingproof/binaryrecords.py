"""Records of a binary drawing as another program finds them, and what it says of them."""

import os
import sys

from judges import run

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
DRAWINGS = os.environ.get("VEXO_DRAWINGS", os.path.join(ROOT, "..", "shared", "drawings"))
# The folder of the decoder: check-binary, and the modules container, sections and bits that it stands on.
DECODER = os.environ.get("VEXO_DECODER", os.path.join(DRAWINGS, "..", "binary-drawings", "decode"))
WRITTEN = {"AC1015": "2000", "AC1018": "2004", "AC1024": "2010", "AC1027": "2013", "AC1032": "2018"}


def is_there():
    return os.path.exists(os.path.join(DECODER, "check-binary"))


def form_of(path):
    with open(path, "rb") as file:
        return file.read(6).decode("latin-1")


def faults(path):
    """What the decoder finds wrong."""
    code, words = run([os.path.join(DECODER, "check-binary"), "--quiet", path])
    found = [line.strip() for line in words.splitlines() if line.startswith("  fault:")]
    return found if found or code == 0 else [f"the decoder ends with {code}: {words[-200:]}"]


class BinaryRecords:
    """Bytes of each record by its handle, with the checksum that binds them, and the names of the sections."""

    def __init__(self, path):
        if DECODER not in sys.path:
            sys.path.append(DECODER)
        from bits import Bits
        import sections

        with open(path, "rb") as file:
            data = file.read()
        self.form = data[:6].decode("latin-1")
        version = int(self.form[4:])
        if version == 15:
            opened = sections.open15(data)
            self.sections = {f"section {number}" for number in opened["recs"]}
            objects, table = data, sections.sect(data, 15, opened, "", 2)
        else:
            opened = sections.open18(data)
            self.sections = {name for name in opened["secs"] if name}
            objects = sections.section18(data, opened, "AcDb:AcDbObjects")[0]
            table = sections.section18(data, opened, "AcDb:Handles")[0]
        self.records = {}
        for handle, place in sections.handles(table)[0].items():
            reader = Bits(objects, place * 8)
            size = reader.MS()
            if version >= 24:
                reader.UMC()
            self.records[handle] = objects[place:reader.p // 8 + size]


def changes(before, after):
    """Handles of records that are new, gone or of other bits."""
    one, other = before.records, after.records
    return {handle for handle in one.keys() | other.keys() if one.get(handle) != other.get(handle)}
