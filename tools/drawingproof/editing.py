"""Edits every record of a drawing through the console and judges what is written."""

import collections
import os
import re
import shutil
import tempfile

from comparison import judge
from edits import EDITS, is_edited, is_top_level
from judges import faults_in, library_errors, ogr_errors, quoted
from motion import kind_of
from records import Drawing


def own_complaints(console, file):
    """What the console's AUDIT calls a fault."""
    with tempfile.TemporaryDirectory() as folder:
        report = os.path.join(folder, "report.json")
        console.run(file, [f"AUDIT JSON {quoted(report)}"], with_edits=False)
        return faults_in(report)


class Finding:
    def __init__(self, edit, record, words, before=None):
        self.edit, self.words, self.before = edit, words, before
        self.what = record.title() if record is not None else "drawing"
        self.kind = record.kind if record is not None else ""
        self.written = record


class EditedDrawing:
    """One drawing, all edits. `findings` is empty when the drawing is as whole after each as before."""

    def __init__(self, console, path, folder, wanted=None, with_judges=True):
        self.console, self.path, self.folder = console, path, folder
        self.edits = [edit for edit in EDITS if not wanted or edit.name in wanted]
        self.findings, self.records, self.with_judges = [], 0, with_judges
        self.still = set()  # kinds that a motion leaves where they are
        self.name = os.path.splitext(os.path.basename(path))[0]

    def say(self, edit, words, record=None, before=None):
        self.findings.append(Finding(edit, record, words, before))

    def file(self, edit, suffix):
        return os.path.join(self.folder, f"{self.name}-{edit.name.replace(' ', '-')}{suffix}")

    def commands_for(self, edit):
        edited, undone = self.file(edit, ".dxf"), self.file(edit, "-undone.dxf")
        return [edit.command, f"SAVEAS {quoted(edited)}", "UNDO", f"SAVEAS {quoted(undone)}"]

    def was_undone(self, edit):
        file = self.file(edit, "-undone.dxf")
        if not os.path.exists(file):
            return False
        with open(file, "rb") as written:
            return written.read() == self.original.bytes

    def make_edits(self):
        """All in one session, as each is taken back; where one is not, the rest in a session each."""
        commands = [command for edit in self.edits for command in self.commands_for(edit)]
        code, _ = self.console.run(self.path, commands)
        first_bad = next((i for i, edit in enumerate(self.edits) if not self.was_undone(edit)), len(self.edits))
        if code == 0 and first_bad >= len(self.edits) - 1:
            return
        for edit in self.edits[first_bad:]:
            for suffix in (".dxf", "-undone.dxf"):
                if os.path.exists(self.file(edit, suffix)):
                    os.remove(self.file(edit, suffix))
            code, text = self.console.run(self.path, self.commands_for(edit))
            if code and "eUndoOperationNotAvailable" in text and self.has_not_changed(edit):
                shutil.copyfile(self.path, self.file(edit, "-undone.dxf"))
            elif code and not os.path.exists(self.file(edit, ".dxf")):
                self.say(edit, f"cannot be made or saved: {' '.join(text.split())[-200:]}")
            elif code:
                self.say(edit, f"the session ends with code {code}: {' '.join(text.split())[-200:]}")

    def has_not_changed(self, edit):
        with open(self.file(edit, ".dxf"), "rb") as written:
            return written.read() == self.original.bytes

    def check(self):
        try:
            self.original = Drawing(self.path)
            self.still = {r.kind for r in self.original.records if is_top_level(r) and is_edited(r) and not kind_of(r)}
            self.make_edits()
            before = self.complaints(self.path, None) if self.with_judges else None
            for edit in self.edits:
                if os.path.exists(self.file(edit, ".dxf")):
                    self.check_edit(edit, before)
        finally:
            for edit in self.edits:
                for suffix in (".dxf", "-undone.dxf"):
                    if os.path.exists(self.file(edit, suffix)) and not os.environ.get("VEXO_KEEP"):
                        os.remove(self.file(edit, suffix))
        return self

    def check_edit(self, edit, before):
        written = self.file(edit, ".dxf")
        result = Drawing(written)
        self.records += len(result.records)
        judge(edit, self.original, result, lambda record, words, old=None: self.say(edit, words, record, old))
        if not self.was_undone(edit):
            self.say(edit, "UNDO does not give the original's bytes back")
        if not self.with_judges:
            return
        after = self.complaints(written, edit)
        for judge_name, new in after.items():
            for complaint, count in new.items():
                known = before[judge_name][complaint] * (2 if edit.name == "copy" else 1)
                if count > known:
                    self.say(edit, f"{judge_name}: {count - known} times more than of the original: {complaint}")

    def complaints(self, file, edit):
        again = os.path.join(self.folder, os.path.basename(file) + "-again.dxf")
        own = own_complaints(self.console, file)
        code, text = self.console.run(file, [f"SAVEAS {quoted(again)}"], with_edits=False)
        if edit:
            if code or not os.path.exists(again):
                self.say(edit, f"what was written cannot be opened and saved: {' '.join(text.split())[-200:]}")
            else:
                with open(again, "rb") as one, open(file, "rb") as other:
                    if one.read() != other.read():
                        self.say(edit, "opened and saved again, it has other bytes")
        if os.path.exists(again):
            os.remove(again)
        return {"AUDIT": own, "ezdxf audit": library_errors(file), "ogrinfo": ogr_errors(file)}


def grouped(findings):
    """By edit, kind of record and words without values: how many, and the first of them."""
    kinds = collections.OrderedDict()
    for finding in findings:
        words = re.sub(r"=.*?(?= (missing|expected|stands|written)|;|$)", "", finding.words)
        words = re.sub(r" expected, .*?(;|$)", r" has another value\1", words)
        kinds.setdefault((finding.edit.name, finding.kind, words), []).append(finding)
    return kinds
