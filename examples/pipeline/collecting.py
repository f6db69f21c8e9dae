"""One table of all drawings, totals by layer, the list of what was refused, and the page, from the records alone."""
import csv
import io
import json
import os
import time

from drawingfolder import exact_name, key_of, read_list, shown, write_whole
from working import MEASURES

HEADINGS = ("Contours", "Length", "Area", "Slabs", "Slab area", "Opening area", "Strips", "Strip area")
PAGE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "page.html")


def records_of(results):
    """A record for each drawing of the plan, in its order; of those that no run has come to, one that says so."""
    for name in read_list(os.path.join(results.work, "drawings.list")):
        yield (results.record_of(name) or {
            "drawing": exact_name(name), "name": shown(name), "outcome": "not worked", "message": "no run has come to it yet",
            "exitCode": None, "seconds": 0, "processorSeconds": 0, "peakKilobytes": 0, "version": "", "started": "",
            "outputs": {}, "summary": None}), key_of(name)


def table(headings, rows):
    text = io.StringIO()
    csv.writer(text, lineterminator="\n").writerows([headings, *rows])
    return text.getvalue()


def number(value):
    """As short as it reads back; whole numbers without a fraction."""
    return int(value) if value == int(value) and abs(value) < 1e15 else value


def measures(sums):
    return [number(sums.get(each, 0)) for each in MEASURES]


def add_up(into, sums):
    for each in MEASURES:
        into[each] = into.get(each, 0) + sums.get(each, 0)


class Collection:
    def __init__(self):
        self.drawings, self.layers, self.refused, self.page = [], [], [], []
        self.by_unit, self.by_layer, self.checks = {}, {}, {}
        self.outcomes = {}

    def add(self, record, key):
        summary = record["summary"] or {"unit": "", "layers": {}, "objects": 0, "faults": 0, "remarks": 0, "checks": {}, "proved": True}
        sums = {}
        for layer, own in sorted(summary["layers"].items()):
            add_up(sums, own)
            add_up(self.by_layer.setdefault((layer, summary["unit"]), {}), own)
            self.layers.append([record["name"], layer, summary["unit"], *measures(own)])
        if summary["layers"]:
            add_up(self.by_unit.setdefault(summary["unit"], {}), sums)
        for check, count in summary["checks"].items():
            self.checks[check] = self.checks.get(check, 0) + count
        self.outcomes[record["outcome"]] = self.outcomes.get(record["outcome"], 0) + 1
        proof = "" if not sums.get("slabs") else "proved" if summary["proved"] else "NOT PROVED"
        self.drawings.append([
            record["name"], record["outcome"], record["message"], record["exitCode"], record["seconds"],
            record["processorSeconds"], record["peakKilobytes"], record["version"], record["started"], summary["objects"],
            summary["faults"], summary["remarks"], summary["unit"], *measures(sums), proof, "results/" + key])
        if record["outcome"] != "done":
            self.refused.append([record["name"], record["outcome"], record["exitCode"], record["message"]])
        outputs = record["outputs"]
        self.page.append([
            record["name"], record["outcome"], record["message"], record["seconds"], record["peakKilobytes"], summary["objects"],
            summary["faults"], summary["remarks"], number(sums.get("contours", 0)), number(sums.get("slabs", 0)),
            sums.get("slabArea", 0), number(sums.get("strips", 0)), sums.get("stripArea", 0), summary["unit"], key,
            outputs.get("strips.svg", outputs.get("picture.svg", 0)), "strips.svg" in outputs, list(summary["checks"].items())])

    def drawings_table(self):
        headings = ("Drawing", "Outcome", "Message", "Exit code", "Seconds", "Processor seconds", "Peak kilobytes", "Version",
                    "Started", "Objects", "Faults", "Remarks", "Unit", *HEADINGS, "Check", "Results")
        blank = [""] * 11
        totals = [["TOTAL", *blank, unit, *measures(sums), "", ""] for unit, sums in sorted(self.by_unit.items())]
        return table(headings, self.drawings + totals)

    def layers_table(self):
        totals = [["TOTAL", layer, unit, *measures(sums)] for (layer, unit), sums in sorted(self.by_layer.items())]
        return table(("Drawing", "Layer", "Unit", *HEADINGS), self.layers + totals)

    def refused_table(self):
        return table(("Drawing", "Outcome", "Exit code", "Message"), self.refused)

    def page_text(self, title):
        data = {"title": title, "made": time.strftime("%Y-%m-%d %H:%M"), "drawings": self.page,
                "checks": sorted(self.checks.items(), key=lambda each: -each[1]), "outcomes": sorted(self.outcomes.items()),
                "totals": [[unit, *measures(sums)] for unit, sums in sorted(self.by_unit.items())]}
        with open(PAGE, encoding="utf-8") as file:
            head, tail = file.read().split("/*DATA*/null")
        # No text of a drawing can end the script that it stands in.
        return head + json.dumps(data, separators=(",", ":")).replace("<", "\\u003c") + tail


def collect(results, plan):
    """Writes drawings.csv, layers.csv, refused.csv and index.html. Gives the number of drawings by outcome."""
    collection = Collection()
    for record, key in records_of(results):
        collection.add(record, key)
    for name, content in (("drawings.csv", collection.drawings_table()), ("layers.csv", collection.layers_table()),
                          ("refused.csv", collection.refused_table()),
                          ("index.html", collection.page_text(shown(plan["folder"])))):
        write_whole(os.path.join(results.path, name), content)
    return collection.outcomes
