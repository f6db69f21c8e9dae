"""Works a chunk of drawings: each in a process of the console with its limits; its results come to their place at once."""
import csv
import json
import os
import resource
import select
import shutil
import signal
import tempfile
import time

from drawingfolder import (EXIT_CONSOLE, EXIT_NOT_WRITTEN, EXIT_STOPPED, FORMAT, PipelineError, commands_of, exact_name,
                           key_of, read_list, shown, write_whole)

# Exit codes of the console (docs/console.md) that are not the drawing's doing.
CONSOLE_USAGE, CONSOLE_UNREADABLE, CONSOLE_NOT_LOADED, CONSOLE_NOT_WRITTEN, CONSOLE_NO_SCRIPT = 2, 3, 4, 5, 6
NOT_WRITTEN = "eFileAccessErr"
NO_MEMORY = "eOutOfMemory"
OUTPUTS = ("audit.json", "contours.csv", "picture.svg", "strips.csv", "strips.svg", "strips.dxf", "messages.txt")
# What is summed up of a layer; all but the counts in the drawing's unit.
MEASURES = ("contours", "contourLength", "contourArea", "slabs", "slabArea", "openingArea", "strips", "stripArea")
LONGEST_MESSAGE = 2000  # of messages that the console left, in a record


class Child:
    """The running console, which a request to end must not leave behind."""
    process = 0


def _stop(number, _):
    if Child.process:
        os.kill(Child.process, signal.SIGKILL)
    raise SystemExit(EXIT_STOPPED)


def run_limited(arguments, seconds, megabytes):
    """The status of the process as of waitpid, whether its time ran out, and what it used. Output goes to messages.txt.

    The limit of processor time holds also where this process is killed; the one of memory is of addresses.
    """
    into = os.open("messages.txt", os.O_WRONLY | os.O_CREAT | os.O_TRUNC | os.O_CLOEXEC, 0o666)
    environment = dict(os.environ, VEXO_REGISTRY=os.path.abspath("registry.txt"))
    try:
        Child.process = os.posix_spawn(
            arguments[0], arguments, environment, setsigdef=[signal.SIGPIPE],
            file_actions=[(os.POSIX_SPAWN_OPEN, 0, "/dev/null", os.O_RDONLY, 0),
                          (os.POSIX_SPAWN_DUP2, into, 1), (os.POSIX_SPAWN_DUP2, into, 2)])
    except OSError as fault:
        raise PipelineError(EXIT_CONSOLE, "%s: it cannot be started: %s" % (shown(arguments[0]), fault.strerror)) from fault
    finally:
        os.close(into)
    process = Child.process
    is_late = False
    try:
        if megabytes is not None:
            resource.prlimit(process, resource.RLIMIT_AS, 2 * (int(megabytes * (1 << 20)),))
        if seconds is not None:
            resource.prlimit(process, resource.RLIMIT_CPU, (int(seconds) + 1, int(seconds) + 6))
        watch = os.pidfd_open(process)
        try:
            ended = select.poll()
            ended.register(watch, select.POLLIN)
            is_late = not ended.poll(None if seconds is None else seconds * 1000)
        finally:
            os.close(watch)
    except ProcessLookupError:
        pass  # it has ended already
    finally:
        if is_late:
            os.kill(process, signal.SIGKILL)
        _, status, used = os.wait4(process, 0)
        Child.process = 0
    return status, is_late, used


def read_console_record():
    try:
        with open("console.json", "rb") as file:
            return json.loads(file.read())
    except (OSError, ValueError):
        return None


def read_messages():
    """The end of what the console printed."""
    with open("messages.txt", "rb") as file:
        file.seek(max(0, os.fstat(file.fileno()).st_size - LONGEST_MESSAGE))
        return file.read().decode("utf-8", "replace").strip()


def judge(status, is_late, options, console):
    """What became of the drawing: the outcome and a message for people. PipelineError where it is not the drawing's doing."""
    messages = read_messages()
    if is_late:
        return "time limit", "it took longer than %g seconds" % options["seconds"]
    number = os.WTERMSIG(status) if os.WIFSIGNALED(status) else 0
    if number == signal.SIGXCPU:
        return "time limit", "it took more processor time than %g seconds" % options["seconds"]
    failed = [each for each in console["commands"] if each["status"] != "eOk"] if console else []
    lacks_memory = any(each["status"] == NO_MEMORY for each in failed) or "(%s)" % NO_MEMORY in messages
    if lacks_memory or number == signal.SIGABRT and "bad_alloc" in messages:
        limit = options["megabytes"]
        return "memory limit", "it needs more memory than " + ("there is" if limit is None else "%g megabytes" % limit)
    if number == signal.SIGKILL:
        return "killed", "something ended the console (SIGKILL), as a system does that is short of memory"
    if number in (signal.SIGTERM, signal.SIGINT) or not number and os.WEXITSTATUS(status) == 130:
        raise SystemExit(EXIT_STOPPED)
    if number:
        return "crashed", "%s: %s" % (signal.Signals(number).name, messages.splitlines()[-1] if messages else "")
    code = os.WEXITSTATUS(status)
    unwritten = [each for each in failed if each["status"] == NOT_WRITTEN]
    if unwritten or code == CONSOLE_NOT_WRITTEN:
        raise PipelineError(EXIT_NOT_WRITTEN, "results cannot be written: " + (unwritten[0]["reason"] if unwritten else messages))
    if code in (CONSOLE_USAGE, CONSOLE_NOT_LOADED, CONSOLE_NO_SCRIPT) or not console:
        raise PipelineError(EXIT_CONSOLE, "the console does not work (exit code %d): %s" % (code, messages))
    if code == CONSOLE_UNREADABLE:
        return "refused", "; ".join(console["problems"])
    # Faults are counted by themselves; a drawing that has some is worked all the same.
    others = [each for each in failed if not each["command"].startswith("AUDIT ")]
    if any(each["command"].startswith("SLABSTRIPS") for each in others):  # no strips, no picture of them
        others = [each for each in others if not each["command"].startswith("PLOT strips.svg")]
    if code and not failed:
        return "partly", "; ".join(console["problems"])
    reasons = "; ".join(each["command"].split()[0] + ": " + each["reason"] for each in others)
    return ("partly" if others else "done"), reasons


def _rows(file):
    """The heading, then the rows; nothing where there is no such table."""
    try:
        with open(file, encoding="utf-8", newline="") as opened:
            yield from csv.reader(opened)
    except FileNotFoundError:
        return


def sum_layers():
    """By layer the contours, slabs and strips of the tables that the console wrote; the unit; whether all slabs are proved."""
    layers, layer_of, unit, proved = {}, {}, "", True

    def of_layer(name):
        if name not in layers:
            layers[name] = dict.fromkeys(MEASURES, 0)
        return layers[name]

    rows = _rows("contours.csv")
    for heading in rows:
        unit = heading[5].partition("[")[2].rstrip("]")
        break
    for layer, _, _, _, _, length, _, area, *_ in rows:
        sums = of_layer(layer)
        sums["contours"] += 1
        sums["contourLength"] += float(length or 0)
        sums["contourArea"] += float(area or 0)
    rows = _rows("strips.csv")
    next(rows, None)
    for kind, slab, _, layer, _, area, _, _, _, note in rows:
        if kind == "slab":
            layer_of[slab] = sums = of_layer(layer)
            sums["slabs"] += 1
            sums["slabArea"] += float(area or 0)
        elif kind == "strip":
            sums = layer_of[slab]
            sums["strips"] += 1
            sums["stripArea"] += float(area or 0)
        elif kind == "all openings":
            layer_of[slab]["openingArea"] += float(area or 0)
        elif kind == "check":
            proved = proved and note == "proved"
    return layers, unit, proved


def sum_up():
    """What is filed of the tables and the audit, and the audit's findings."""
    layers, unit, proved = sum_layers()
    summary = {"unit": unit, "layers": layers, "proved": proved, "objects": 0, "faults": 0, "remarks": 0, "checks": {}}
    if not os.path.exists("audit.json"):
        return summary, []
    with open("audit.json", "rb") as file:
        audit = json.loads(file.read())
    summary.update((name, audit[name]) for name in ("objects", "faults", "remarks"))
    for each in audit["findings"]:
        if each["severity"] == "fault":
            summary["checks"][each["check"]] = summary["checks"].get(each["check"], 0) + 1
    return summary, audit["findings"]


def state_of(path):
    """All that tells whether a file is the same one still; None where it cannot be looked at."""
    try:
        state = os.stat(path)
    except OSError:
        return None
    return state.st_size, state.st_mtime_ns, state.st_ctime_ns, state.st_ino, state.st_mode


class Worker:
    def __init__(self, results, plan):
        self.results = results
        self.plan = plan
        self.console = plan["console"]

    def arguments(self, path, commands):
        arguments = [self.console["program"], "--quiet", "--no-rescue", "--keep-going", "--record", "console.json",
                     "--module", self.console["module"]]
        for command in commands:
            arguments += ["--command", command.encode("utf-8")]
        return arguments + ["--", path]

    def run_console(self, path, options, record):
        """Fills in the record. The working folder is the drawing's own."""
        record["command"] = [shown(each) for each in self.arguments(path, commands_of(options))]
        start = time.monotonic()
        status, is_late, used = run_limited(self.arguments(path, commands_of(options)), options["seconds"], options["megabytes"])
        console = read_console_record()
        record.update(
            seconds=round(time.monotonic() - start, 4), processorSeconds=round(used.ru_utime + used.ru_stime, 4),
            peakKilobytes=console["peakKilobytes"] if console else used.ru_maxrss,
            exitCode=128 + os.WTERMSIG(status) if os.WIFSIGNALED(status) else os.WEXITSTATUS(status),
            version=console["version"] if console else self.console["version"], console=console)
        record["outcome"], message = judge(status, is_late, options, console)
        record["message"] = message.replace(os.path.join(self.plan["folder"], ""), "")

    def new_record(self, name, work, state):
        return {"format": FORMAT, "drawing": exact_name(name), "name": shown(name), "work": work,
                "input": {"size": state[0], "changed": state[1]} if state else None,
                "started": time.strftime("%Y-%m-%d %H:%M:%S"), "version": self.console["version"], "command": [],
                "seconds": 0, "processorSeconds": 0, "peakKilobytes": 0, "exitCode": None, "console": None,
                "outputs": {}, "summary": None}

    def work(self, name):
        """One drawing, in a folder of its own beside the results, which is then renamed to its place. Gives the record."""
        path = os.path.join(self.plan["folder"], name)
        work = self.plan["work"][exact_name(name)]
        options = self.plan["choices"][work]
        before = state_of(path)
        record = self.new_record(name, work, before)
        place = tempfile.mkdtemp(dir=self.results.temporary)
        os.chmod(place, 0o777 & ~self.mask)
        os.chdir(place)
        try:
            self.fill(path, options, before, record)
            self.put(place, key_of(name))
        finally:
            os.chdir(self.results.path)
            shutil.rmtree(place, ignore_errors=True)  # is gone where all went well
        return record

    def fill(self, path, options, before, record):
        findings = []
        if isinstance(options, str):
            record["outcome"], record["message"] = "refused", options
        elif not before or not os.path.isfile(path) or not os.access(path, os.R_OK):
            record["input"] = None  # may be another thing at any time
            record["outcome"], record["message"] = "refused", "this is no file that can be read"
        else:
            self.run_console(path, options, record)
            if state_of(path) != before:
                record["outcome"] = "changed"
                record["message"] = "it was replaced or changed while it was worked; the next run takes it again"
        if record["outcome"] in ("done", "partly"):
            record["summary"], findings = sum_up()
            has_strips = any(each["strips"] for each in record["summary"]["layers"].values())
            kept = OUTPUTS if has_strips else OUTPUTS[:OUTPUTS.index("strips.svg")] + ("messages.txt",)
        else:
            kept = ("messages.txt",)
        for each in os.listdir("."):
            if each not in kept:
                os.unlink(each)
        record["outputs"] = {each: os.stat(each).st_size for each in os.listdir(".")}
        write_whole("details.js", "showDetails(%s);\n" % json.dumps(
            {"record": dict(record, summary=None), "findings": findings}).replace("<", "\\u003c"))
        record["outputs"]["details.js"] = os.stat("details.js").st_size
        write_whole("record.json", json.dumps(record, indent=1))

    def put(self, place, key):
        """Where results stand, they make room first: in between there are none, never a part."""
        target = os.path.join(self.results.results, key)
        old = place + "-old"
        try:
            os.rename(target, old)
        except FileNotFoundError:
            pass
        os.rename(place, target)
        shutil.rmtree(old, ignore_errors=True)

    def work_chunk(self, number, tell):
        """All drawings of the chunk, one after the other. Stops where going on would be in vain."""
        self.mask = os.umask(0)
        os.umask(self.mask)
        names = read_list(self.results.chunk_list(number))
        parent = os.getppid()
        signal.signal(signal.SIGTERM, _stop)
        signal.signal(signal.SIGINT, _stop)
        try:
            for place, name in enumerate(names, 1):
                if os.getppid() != parent:
                    raise PipelineError(EXIT_STOPPED, "what started this run has ended; the next run goes on here")
                record = self.work(name)
                tell("%d/%d %s: %s%s" % (place, len(names), shown(name), record["outcome"],
                                         ": " + record["message"] if record["message"] else ""))
            write_whole(self.results.chunk_list(number)[:-5] + ".done", "%d drawings\n" % len(names))
        except OSError as fault:
            raise PipelineError(EXIT_NOT_WRITTEN, "%s: %s" % (shown(fault.filename or self.results.path), fault.strerror)) from fault
