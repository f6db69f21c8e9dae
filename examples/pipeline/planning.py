"""Which drawings of a folder are to be worked: new and changed ones, and those whose last run could not end."""
import hashlib
import json
import os
import shutil
import subprocess

from drawingfolder import (ENDINGS, EXIT_CONSOLE, EXIT_USAGE, FORMAT, OPTIONS_FILE, PipelineError, commands_of,
                           default_options, exact_name, key_of, parse_options, shown, write_list, write_whole)

# What another run over the same bytes may end otherwise.
PASSING = {"changed", "killed"}
LARGEST_CHUNK = 64 << 20  # bytes of drawings, but one larger drawing is a chunk too


def find_drawings(folder, results):
    """Names from the folder on, in order, with the file of options that each goes by (or None)."""
    found = []
    skipped = os.path.realpath(results)
    problems = []
    for place, folders, files in os.walk(folder, onerror=problems.append):
        folders[:] = sorted(each for each in folders if os.path.realpath(os.path.join(place, each)) != skipped)
        found += [os.path.relpath(os.path.join(place, name), folder) for name in files
                  if os.path.splitext(name)[1].lower() in ENDINGS]
    if problems:
        raise PipelineError(EXIT_USAGE, "%s: %s" % (shown(problems[0].filename or folder), problems[0].strerror))
    return sorted(found, key=os.fsencode)


class FolderOptions:
    """Options by folder: those of the nearest file beside or above a drawing, up to the folder of the run."""

    def __init__(self, folder):
        self.folder = folder
        self.known = {}

    def of_drawing(self, name):
        return self.of_folder(os.path.dirname(name))

    def of_folder(self, place):
        """The options, or a text that says why there are none."""
        if place not in self.known:
            self.known[place] = self.read(place)
        return self.known[place]

    def read(self, place):
        file = os.path.join(place, OPTIONS_FILE)
        try:
            with open(os.path.join(self.folder, file), "rb") as opened:
                return parse_options(opened.read(), shown(file))
        except FileNotFoundError:
            return self.of_folder(os.path.dirname(place)) if place else default_options()
        except (OSError, ValueError) as fault:
            return "%s: %s" % (shown(file), fault.strerror) if isinstance(fault, OSError) else str(fault)


def work_of(options, console):
    """One text for all that the result hangs on besides the drawing's bytes."""
    asked = options if isinstance(options, str) else commands_of(options) + [options["seconds"], options["megabytes"]]
    return hashlib.blake2b(json.dumps([FORMAT, asked, console["identity"]]).encode(), digest_size=12).hexdigest()


def identify(program, module, image):
    """What runs: paths, version, and a text that is another one for other programs. In a container its name stands for all."""
    if image:
        return {"program": program, "module": module, "version": "of " + image, "identity": "image " + image}
    stamps = []
    for file in (program, module):
        try:
            state = os.stat(file)
        except OSError as fault:
            raise PipelineError(EXIT_CONSOLE, "%s: %s" % (shown(file), fault.strerror)) from fault
        stamps.append([state.st_size, state.st_mtime_ns])
    try:
        answer = subprocess.run([program, "--version"], stdin=subprocess.DEVNULL, capture_output=True, timeout=60, check=True)
    except (OSError, subprocess.SubprocessError) as fault:
        raise PipelineError(EXIT_CONSOLE, "%s: it does not tell its version: %s" % (shown(program), fault)) from fault
    version = answer.stdout.decode("utf-8", "replace").strip()
    return {"program": os.path.abspath(program), "module": os.path.abspath(module), "version": version,
            "identity": json.dumps([version, stamps])}


def input_of(path):
    """Size and time of a drawing; None where it cannot be looked at."""
    try:
        state = os.stat(path)
    except OSError:
        return None
    return {"size": state.st_size, "changed": state.st_mtime_ns}


def is_up_to_date(results, name, state, work):
    record = results.record_of(name)
    if not record or record["input"] != state or record["work"] != work or record["outcome"] in PASSING:
        return False
    place = os.path.join(results.results, key_of(name))
    try:
        return all(os.stat(os.path.join(place, file)).st_size == size for file, size in record["outputs"].items())
    except OSError:
        return False


def split(names, sizes, most):
    """Chunks of at most `most` drawings; large drawings first, so that no core waits long for the last one."""
    chunks, size = [], 0
    for name in sorted(names, key=lambda each: -sizes[each]):
        if not chunks or len(chunks[-1]) >= most or size + sizes[name] > LARGEST_CHUNK:
            chunks.append([])
            size = 0
        chunks[-1].append(name)
        size += sizes[name]
    return chunks


def remove_stale(results, names):
    """Results of drawings that are no longer there; true where there were any."""
    kept = {key_of(name) for name in names}
    stale = [each for each in os.listdir(results.results) if each not in kept]
    for each in stale:
        shutil.rmtree(os.path.join(results.results, each), ignore_errors=True)
    return bool(stale)


def plan_run(folder, results, console, most):
    """Looks at all drawings and files the plan. Gives the number of chunks; the plan before stays where all is done.

    The caller holds the locks. A folder without drawings is taken for a mistake: results stay.
    """
    folder = os.path.abspath(folder)
    if not os.path.isdir(folder):
        raise PipelineError(EXIT_USAGE, "%s: there is no such folder" % shown(folder))
    names = find_drawings(folder, results.path)
    if not names:
        raise PipelineError(EXIT_USAGE, "%s: there is no drawing (%s)" % (shown(folder), ", ".join("*" + e for e in ENDINGS)))
    results.make()
    shutil.rmtree(results.temporary, ignore_errors=True)
    os.makedirs(results.temporary, exist_ok=True)
    chooser = FolderOptions(folder)
    asked, sizes, due = [], {}, []
    for name in names:
        options = chooser.of_drawing(name)
        state, work = input_of(os.path.join(folder, name)), work_of(options, console)
        sizes[name] = state["size"] if state else 0
        asked.append((name, options, work))
        if not is_up_to_date(results, name, state, work):
            due.append(name)
    if not remove_stale(results, names) and not due and os.path.exists(results.collected):
        return results.read_plan()["chunks"]
    file_plan(folder, results, console, asked, split(due, sizes, most))
    return results.read_plan()["chunks"]


def file_plan(folder, results, console, asked, chunks):
    """In place of the plan before. asked: each drawing's name, options (or why it has none) and work."""
    for old in os.listdir(results.work):
        if old.startswith(("chunk-", "collected")):
            os.unlink(os.path.join(results.work, old))
    for number, chunk in enumerate(chunks):
        write_list(results.chunk_list(number), chunk)
    write_list(os.path.join(results.work, "drawings.list"), [name for name, _, _ in asked])
    due = {name for chunk in chunks for name in chunk}
    write_whole(results.plan, json.dumps({
        "format": FORMAT, "folder": folder, "console": console, "chunks": len(chunks),
        "choices": {work: options for _, options, work in asked},  # each set of options once
        "work": {exact_name(name): work for name, _, work in asked if name in due}}))
