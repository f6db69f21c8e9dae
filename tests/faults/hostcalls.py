#!/usr/bin/env python3
"""Writes the list of the kit's calls that can fail: every function of its libraries that gives a status, a result code of
the editor's functions, a list of records or a transaction, as its headers declare them.

hostcalls.py NM OUTPUT HEADER_FOLDER LIBRARY...
"""

import pathlib
import re
import subprocess
import sys

# What gives back does not fail: an object that cannot be closed is open.
GIVES_BACK = {"close", "cancel", "endTransaction", "abortTransaction", "unlockDocument", "subClose", "downgradeOpen",
              "acedSSFree", "acutRelRb", "removeCmd", "removeGroup", "abortAndCount", "undoLastGroup", "upgradeFromNotify",
              "downgradeToNotify", "unloadModule", "remove", "disableUndoRecording", "unlockApplication", "xData", "topTransaction"}
DECLARED = re.compile(r"(?:(Acad::ErrorStatus)|(int)|((?:struct )?resbuf ?\*|AcTransaction ?\*))\s+(\w+)\(")


def declared_calls(folder):
    """(class or "", name) to the way in which it fails."""
    calls = {}
    for header in sorted(pathlib.Path(folder).rglob("*.h")):
        owner = ""
        for line in header.read_text(encoding="utf-8").splitlines():
            opened = re.match(r"(?:class|struct)\s+(?:[A-Z_]+\s+)?(\w+)[^;]*$", line)
            if opened:
                owner = opened.group(1)
            if line.startswith("}"):
                owner = ""
            for status, number, pointer, name in DECLARED.findall(line):
                if number and not re.match(r"ac(ed|db|ut)[A-Z]", name):
                    continue
                calls[owner, name] = "status" if status else "result" if number else "nothing"
    return calls


def way_of(demangled, calls):
    """How the function fails; nothing for one that cannot."""
    head = demangled.split("(")[0]
    if "<" in head:
        return None
    parts = head.split("::")
    name = parts[-1]
    if name in GIVES_BACK:
        return None
    owner = parts[-2] if len(parts) > 1 and parts[-2] != "hostkit" else ""
    way = calls.get((owner, name))
    if way == "nothing" and "hostkit::" in demangled:
        return None
    if way == "status" and name.startswith("acdbOpen"):
        return "opening"
    return way


def main():
    nm, output, headers, *libraries = sys.argv[1:]
    calls = declared_calls(headers)
    entries = {}
    for library in libraries:
        def listed(*more):
            text = subprocess.run([nm, "-D", "--defined-only", *more, library], check=True, capture_output=True, text=True)
            return [line.split(" ", 2) for line in text.stdout.splitlines()]
        for (_, kind, symbol), (_, _, demangled) in zip(listed(), listed("-C")):
            way = way_of(demangled, calls) if kind == "T" else None
            if way:
                entries[symbol.split("@")[0]] = way
    lines = [f"HOST_CALL {symbol}, {way}\n" for symbol, way in sorted(entries.items())]
    pathlib.Path(output).write_text("".join(lines), encoding="utf-8")


main()
