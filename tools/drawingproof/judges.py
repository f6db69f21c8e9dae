"""What other programs, and the console's own AUDIT, say of a drawing: their complaints by kind, counted."""

import collections
import json
import os
import re
import subprocess

from names import SUFFIX


def run(arguments, **options):
    done = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300, check=False, **options)
    return done.returncode, done.stdout.decode("utf-8", "replace")


def library_errors(path):
    """ezdxf's audit, by the kind of error. It is loaded once a process."""
    import ezdxf
    from ezdxf import recover

    found = collections.Counter()
    try:
        try:
            document = ezdxf.readfile(path)
        except (ezdxf.DXFError, UnicodeError, ValueError):
            document, first = recover.readfile(path)
            found.update(name_of(each) for each in first.errors + first.fixes)
        auditor = document.audit()
        found.update(name_of(each) for each in auditor.errors + auditor.fixes)
    except Exception as problem:  # whatever it stumbles over is a complaint
        found[f"cannot read it: {type(problem).__name__}: {problem}"[:120]] += 1
    return found


def name_of(entry):
    return getattr(entry.code, "name", None) or re.sub(r"#?\b[0-9A-F]+\b|'[^']*'|\([^)]*\)", "*", entry.message)[:80]


def ogr_errors(path):
    done = subprocess.run(["ogrinfo", "-al", path], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=300, check=False)
    return collections.Counter(re.sub(r"\b[0-9A-F]+\b", "*", line)
                               for line in done.stderr.decode("utf-8", "replace").splitlines() if line.startswith("ERROR"))


def faults_in(report_file):
    """What the console's AUDIT calls a fault, in the report that it wrote."""
    if not os.path.exists(report_file):
        return collections.Counter(["AUDIT did not finish"])
    with open(report_file, encoding="utf-8") as file:
        report = json.load(file)
    return collections.Counter(f"{f.get('check', '')} {f['type']}: {without_values(f['finding'])}"
                               for f in report["findings"] if f["severity"] == "fault")


def without_values(finding):
    """Without handles and numbers; a renamed record that a finding names is the same one."""
    return re.sub(r"\b[0-9A-F]+\b", "*", finding).replace(SUFFIX, "")


def quoted(path):
    return '"' + path.replace('"', '""') + '"'


class Console:
    """The console host with the module that makes the edits."""

    def __init__(self, host, module):
        self.host, self.module = host, module

    def run(self, drawing, commands, with_edits=True):
        arguments = [self.host, drawing, "--quiet"]
        if with_edits:
            arguments += ["--module", self.module]
        for command in commands:
            arguments += ["--command", command]
        return run(arguments)
