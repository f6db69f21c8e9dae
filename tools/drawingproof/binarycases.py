"""Small drawings with more in them than is usual, by way of the binary form."""

import os

from binaryrecords import faults
from judges import run
from samples import as_file, form_2000, line, text


def write(path, drawing, encoding="cp1252", page=None):
    made = as_file(drawing)
    if page:
        made = made.replace("ANSI_1252", page)
    with open(path, "wb") as out:
        out.write(made.encode(encoding))


def both_ways(host, form, stem, drawing, **how):
    """The text drawing that comes back, and complaints."""
    source, binary, back = stem + ".dxf", stem + ".dwg", stem + "-back.dxf"
    write(source, drawing, **how)
    words = ""
    for one, other, arguments in ((source, binary, ["--form", form]), (binary, back, ["--form", "2018"])):
        code, said = run([host, one, *arguments, "--output", other])
        words += said
        if code or not os.path.exists(other):
            return "", words, [f"cannot be saved as {other} (exit code {code}): {said[-300:]}"]
    with open(back, encoding="utf-8") as file:
        return file.read().replace("\r\n", "\n"), words, faults(binary)


def groups_of(drawing, kind, handle, code):
    """Values of that code in the record."""
    lines = [each.strip("\r") for each in drawing.split("\n")]
    pairs = list(zip(map(str.strip, lines[::2]), lines[1::2]))
    found, inside, is_it = [], False, False
    for own, value in pairs:
        if own == "0":
            if is_it:
                return found
            inside, found = value == kind, []
        elif inside:
            is_it = is_it or own == "5" and value == handle
            if own == str(code):
                found.append(value)
    return found if is_it else []


def expect(what, got, wanted):
    return [] if got == wanted else [f"{what}: {str(got)[:100]} in place of {str(wanted)[:100]}"]


def paragraph(handle, contents):
    parts = [contents[at:at + 250] for at in range(0, len(contents), 250)]
    chunks = "".join(f"\n3 {each}" for each in parts[:-1]) + f"\n1 {parts[-1]}"
    return (f"\n0 MTEXT\n5 {handle}\n330 1F\n100 AcDbEntity\n8 Wall\n100 AcDbMText\n10 0.0\n20 0.0\n30 0.0\n40 2.5\n41 100.0\n71 1\n72 1"
            f"{chunks}\n7 Roman")


def long_text(host, form, stem):
    contents = "".join(f"word{number:05}-" for number in range(7000))  # 70,000 characters
    back, words, found = both_ways(host, form, stem, form_2000(paragraph("100", contents) + line("101")))
    if found:
        return found
    got = "".join(groups_of(back, "MTEXT", "100", 3) + groups_of(back, "MTEXT", "100", 1))
    # A text has room for 65535 characters, and what is lost is told.
    return expect("the text of 70,000 characters", got, contents[:65535]) + \
        ([] if "MTEXT text" in words and "65535" in words else ["nobody tells that a text was shortened"])


def code_page(page, encoding, words):
    def check(host, form, stem):
        back, _, found = both_ways(host, form, stem, form_2000(text("100", words) + line("101")), encoding=encoding, page=page)
        return found or expect("the text", groups_of(back, "TEXT", "100", 1), [words])
    return check


def extended_data(host, form, stem):
    data = "\n1001 TEST" + "".join(f"\n1000 {number:03}{'x' * 240}" for number in range(66))  # 16,236 bytes with their heads
    back, _, found = both_ways(host, form, stem, form_2000(line("100", xdata=data) + line("101")))
    wanted = [f"{number:03}{'x' * 240}" for number in range(66)]
    return found or expect("the extended data", groups_of(back, "LINE", "100", 1000), wanted)


def vertices(host, form, stem):
    count = 70000
    points = "".join(f"\n10 {at}.5\n20 {at * 3 % 1000}.25" for at in range(count))
    record = f"\n0 LWPOLYLINE\n5 100\n330 1F\n100 AcDbEntity\n8 Wall\n100 AcDbPolyline\n90 {count}\n70 0{points}"
    back, _, found = both_ways(host, form, stem, form_2000(record + line("101")))
    if found:
        return found
    return expect("vertices", [float(x) for x in groups_of(back, "LWPOLYLINE", "100", 10)], [at + 0.5 for at in range(count)]) + \
        expect("vertices", [float(y) for y in groups_of(back, "LWPOLYLINE", "100", 20)], [at * 3 % 1000 + 0.25 for at in range(count)])


def large_record(host, form, stem):
    values = [f"{number:04}{'y' * 246}" for number in range(400)]  # 100,000 bytes
    record = ("\n0 DICTIONARY\n5 5C\n330 C\n100 AcDbDictionary\n281 1\n3 NOTE\n350 5B"
              "\n0 XRECORD\n5 5B\n330 5C\n100 AcDbXrecord\n280 1" + "".join(f"\n1 {each}" for each in values) + "\n330 101\n70 -5")
    back, _, found = both_ways(host, form, stem, form_2000(line("101"), objects=record))
    return found or expect("values", groups_of(back, "XRECORD", "5B", 1), values) + \
        expect("the reference", groups_of(back, "XRECORD", "5B", 330)[-1:], ["101"]) + \
        expect("the number", [int(each) for each in groups_of(back, "XRECORD", "5B", 70)], [-5])


def dangling(host, form, stem):
    """References to what is not there, and a block without anything in it."""
    block = ("\n0 INSERT\n5 103\n330 1F\n100 AcDbEntity\n8 Wall\n100 AcDbBlockReference\n2 Door\n10 1.0\n20 2.0\n30 0.0")
    data = "\n1001 TEST\n1005 FFFF1\n1005 0\n1005 FFFFFFFFFFFFFF"
    reactors = line("101").replace("330 1F", "102 {ACAD_REACTORS\n330 FFFF0\n102 }\n330 1F")
    back, _, found = both_ways(host, form, stem, form_2000(line("100", xdata=data) + reactors + block))
    return found or expect("references", groups_of(back, "LINE", "100", 1005), ["FFFF1", "0", "FFFFFFFFFFFFFF"]) + \
        expect("the insert", groups_of(back, "INSERT", "103", 2), ["Door"])


CASES = {
    "long text": long_text,
    "Chinese text": code_page("ANSI_936", "cp936", "\u4e2d\u6587\u56fe\u7eb8"),
    "Japanese text": code_page("ANSI_932", "cp932", "\u56f3\u9762\u30c6\u30b9\u30c8"),
    "extended data": extended_data,
    "vertices": vertices,
    "large record": large_record,
    "dangling references": dangling,
}
