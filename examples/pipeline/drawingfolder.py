"""A folder of drawings, what it asks for, and the folder of its results: names, options, layout and locks.

Paths are str as os.fsdecode gives them, so that names of any bytes survive; what is shown or filed goes through shown()
and exact_name().
"""
import errno
import fcntl
import hashlib
import json
import os
import re
import socket
import time

OPTIONS_FILE = "drawings.options"
ENDINGS = (".dxf", ".dwg")
FORMS = {"R12", "2000", "2004", "2007", "2010", "2013", "2018", "TEXT", "BINARY"}
FORMAT = 1  # of plans and records: those of another one are made anew

EXIT_OK, EXIT_USAGE, EXIT_CONSOLE, EXIT_NOT_WRITTEN, EXIT_LOCKED, EXIT_STOPPED = 0, 2, 4, 5, 6, 130


class PipelineError(Exception):
    """What ends the program, with its exit code and a sentence that a user can act on."""

    def __init__(self, code, message):
        super().__init__(message)
        self.code = code


def shown(name):
    """A name for people: bytes that are no UTF-8 as \\xNN, control characters as \\n, \\t and \\xNN."""
    text = os.fsencode(name).decode("utf-8", "backslashreplace")
    return "".join(c if c.isprintable() else c.encode("unicode_escape").decode("ascii") for c in text)


def exact_name(name):
    """The bytes of a name, those that are not plain as %NN: one text a name, and the name can be had back."""
    return "".join(chr(b) if chr(b).isalnum() and b < 128 or b in b"/._-" else "%%%02X" % b for b in os.fsencode(name))


def key_of(name):
    """The folder of a drawing's results: letters, digits, '.', '_' and '-' alone, another one for every name."""
    raw = os.fsencode(name)
    plain = re.sub(rb"[^A-Za-z0-9._-]+", b"_", os.path.basename(raw)).decode("ascii").lstrip(".-")
    return plain[-60:] + "-" + hashlib.blake2b(raw, digest_size=8).hexdigest()


def write_whole(path, content):
    """Writes a file beside and renames it: under the name stands the old content or the whole new one."""
    beside = path + ".new-%d" % os.getpid()
    try:
        with open(beside, "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode("utf-8"))
        os.rename(beside, path)
    except OSError as fault:
        try:
            os.unlink(beside)
        except OSError:
            pass
        raise PipelineError(EXIT_NOT_WRITTEN, "%s: %s" % (shown(path), fault.strerror)) from fault


# What an option's text must be, and the value that it has where no file names it.
def _number(text, lowest, highest):
    if text == "none":
        return None
    value = float(text)
    if not lowest <= value <= highest:
        raise ValueError
    return value


OPTIONS = {
    "outlines": ("names of layers", None, str),
    "openings": ("names of layers", None, str),
    "layer": ("the name of a layer", "SLABSTRIPS", str),
    "angle": ("degrees from -360 to 360, or none", None, lambda text: _number(text, -360, 360)),
    "form": ("one of " + ", ".join(sorted(FORMS)), None, lambda text: {form: form for form in FORMS}[text.upper()]),
    "seconds": ("a time limit from 1 to 604800, or none", 300.0, lambda text: _number(text, 1, 604800)),
    "megabytes": ("a memory limit from 64 to 1048576, or none", 4096.0, lambda text: _number(text, 64, 1048576)),
}


def default_options():
    return {name: default for name, (_, default, _) in OPTIONS.items()}


def parse_options(content, where):
    """Lines "name = value"; empty ones and those with ';' in front count for nothing. ValueError says what is wrong."""
    options = default_options()
    try:
        lines = content.decode("utf-8-sig").splitlines()
    except UnicodeDecodeError:
        raise ValueError("%s: this is no UTF-8 text" % where) from None
    for number, line in enumerate(lines, 1):
        line = line.strip()
        if not line or line.startswith(";"):
            continue
        name, equals, text = (part.strip() for part in line.partition("="))
        if not equals or name not in OPTIONS:
            raise ValueError("%s:%d: none of %s stands in front of a '='" % (where, number, ", ".join(OPTIONS)))
        meaning, _, read = OPTIONS[name]
        if not text or not text.isprintable():
            raise ValueError("%s:%d: %s wants %s" % (where, number, name, meaning))
        try:
            options[name] = read(text)
        except (ValueError, KeyError):
            raise ValueError("%s:%d: %s wants %s, not %s" % (where, number, name, meaning, text)) from None
    return options


def _answer(text):
    return '"' + text.replace('"', '""') + '"'


def commands_of(options):
    """The console's lines for a drawing, in the order in which they run. Outputs stand in the current folder."""
    roles = "".join(" %s %s" % (name.upper(), _answer(options[name]))
                    for name in ("outlines", "openings", "layer") if options[name])
    if options["angle"] is not None:
        roles += " ANGLE %r" % options["angle"]
    return ["AUDIT JSON audit.json",
            "CONTOURS CSV contours.csv",
            "PLOT picture.svg",
            "SLABSTRIPS%s NUMBERS CSV strips.csv" % roles,
            "PLOT strips.svg FILL " + _answer(options["layer"]),
            "SAVEAS strips.dxf" + (" " + options["form"] if options["form"] else "")]


class Results:
    """The folder that the results of one folder of drawings go to."""

    def __init__(self, path):
        self.path = os.path.abspath(path)
        self.results = os.path.join(self.path, "results")
        self.work = os.path.join(self.path, "work")
        self.temporary = os.path.join(self.work, "temporary")
        self.plan = os.path.join(self.work, "plan.json")
        self.collected = os.path.join(self.work, "collected")

    def make(self):
        """The folder must be new, empty or one of these: among other files nothing is made, and nothing removed."""
        if not os.path.exists(self.work) and os.path.isdir(self.path) and any(
                not each.startswith(".") for each in os.listdir(self.path)):
            raise PipelineError(EXIT_USAGE, "%s: it holds other things; results want a folder of their own" % shown(self.path))
        # What tells the folder from others comes first: a run may be killed between the two.
        for folder in (self.temporary, self.results):
            try:
                os.makedirs(folder, exist_ok=True)
            except OSError as fault:
                raise PipelineError(EXIT_NOT_WRITTEN, "%s: %s" % (shown(folder), fault.strerror)) from fault

    def read_plan(self):
        try:
            with open(self.plan, "rb") as file:
                plan = json.loads(file.read())
        except (OSError, ValueError) as fault:
            raise PipelineError(EXIT_USAGE, "%s: there is no plan (%s); plan first" % (shown(self.plan), fault)) from fault
        if plan.get("format") != FORMAT:
            raise PipelineError(EXIT_USAGE, "%s: another version has made it; plan again" % shown(self.plan))
        return plan

    def chunk_list(self, number):
        return os.path.join(self.work, "chunk-%05d.list" % number)

    def record_of(self, name):
        """What the last run over the drawing has filed, or None where there is none that can be read."""
        try:
            with open(os.path.join(self.results, key_of(name), "record.json"), "rb") as file:
                record = json.loads(file.read())
            return record if record["format"] == FORMAT and record["drawing"] == exact_name(name) else None
        except (OSError, ValueError, KeyError, TypeError):
            return None


class Lock:
    """Held until the process ends, however it ends: the system itself lets it go.

    exclusive: for who plans and collects; shared: for who works drawings.
    """

    def __init__(self, path, exclusive, doing):
        self.file = os.open(path, os.O_RDWR | os.O_CREAT | os.O_CLOEXEC, 0o666)
        try:
            fcntl.flock(self.file, (fcntl.LOCK_EX if exclusive else fcntl.LOCK_SH) | fcntl.LOCK_NB)
        except OSError as fault:
            holder = os.read(self.file, 400).decode("utf-8", "replace").strip()
            os.close(self.file)
            if fault.errno not in (errno.EWOULDBLOCK, errno.EACCES):
                raise PipelineError(EXIT_LOCKED, "%s: it cannot be locked: %s" % (shown(path), fault.strerror)) from fault
            raise PipelineError(EXIT_LOCKED, "%s: another run is at work here: %s; wait until it has ended" %
                                (shown(os.path.dirname(path)), holder or "it has not said who it is")) from fault
        try:
            os.ftruncate(self.file, 0)
            os.pwrite(self.file, ("process %d on %s, %s since %s\n" % (
                os.getpid(), socket.gethostname(), doing, time.strftime("%Y-%m-%d %H:%M:%S"))).encode(), 0)
        except OSError:
            pass  # on a full disk nobody is named; the lock holds all the same

    def release(self):
        os.close(self.file)


def read_list(path):
    with open(path, "rb") as file:
        return [os.fsdecode(name) for name in file.read().split(b"\0") if name]


def write_list(path, names):
    write_whole(path, b"".join(os.fsencode(name) + b"\0" for name in names))
