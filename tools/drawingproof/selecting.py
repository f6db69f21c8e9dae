"""Whether selections of a drawing take what ezdxf finds by itself: by type, layer, colour, linetype, space and extended
data in the whole drawing, by place in model space."""

import collections
import json
import os
import re

from judges import quoted
from picking import SIMPLE, Window, boxes, place_of

# A text that a pattern takes as it stands.
SPECIAL = re.compile(r"([#@.*?~\[\],`-])")
NUMBERED = {"CIRCLE", "ARC"}


def literal(text):
    return SPECIAL.sub(r"`\1", text).replace("\\", "\\\\").replace('"', '\\"')


def group(code, text):
    return f'({code} . "{text}")'


def common(entity, code, name, otherwise):
    """What every entity can have. Of kinds that ezdxf keeps as they stand it is looked up among their groups."""
    if entity.dxf.is_supported(name):
        return entity.dxf.get(name, otherwise)
    groups = (tag for subclass in entity.xtags.subclasses[:2] for tag in subclass)
    return next((tag.value for tag in groups if tag.code == code), otherwise)


class Entity:
    """What a filter can ask of an entity, by ezdxf."""

    def __init__(self, entity, in_paper):
        self.entity, self.handle, self.kind = entity, entity.dxf.handle.upper(), entity.dxftype()
        self.layer = common(entity, 8, "layer", "0")
        self.color = common(entity, 62, "color", 256)
        self.true_color = common(entity, 420, "true_color", None)
        self.linetype = common(entity, 6, "linetype", "BYLAYER")
        self.is_invisible = common(entity, 60, "invisible", 0) != 0
        self.in_paper = in_paper
        self.applications = {name.upper() for name in entity.xdata.data} if entity.xdata else set()
        self.radius = entity.dxf.radius if self.kind in NUMBERED else None


def entities_of(document):
    return [Entity(entity, layout is not document.modelspace())
            for layout in document.layouts for entity in layout if entity.is_alive]


class Question:
    """A filter, which entities it takes, and which it may take or leave."""

    def __init__(self, text, takes, is_open=lambda e: False):
        self.text, self.takes, self.is_open = text, takes, is_open


def same(text, other):
    return text.upper() == other.upper()


def value_questions(entities, layers):
    kinds = sorted({e.kind for e in entities})
    for kind in kinds:
        yield Question(group(0, literal(kind)), lambda e, k=kind: e.kind == k)
    yield Question(group(0, ",".join(map(literal, kinds[::2])) or "NONE"), lambda e: e.kind in kinds[::2])
    for layer in layers:
        yield Question(group(8, literal(layer)), lambda e, n=layer: same(e.layer, n))
    for start in sorted({layer[:2].upper() for layer in layers}):
        yield Question(group(8, literal(start) + "*"), lambda e, s=start: e.layer.upper().startswith(s))
    for color in sorted({e.color for e in entities}):
        # Beside a true colour the index is the nearest one, by whichever measure of nearness its writer has.
        yield Question(f"(62 . {color})", lambda e, c=color: e.true_color is None and e.color == c,
                       lambda e: e.true_color is not None)
    for color in sorted({e.true_color for e in entities} - {None}):
        yield Question(f"(420 . {color})", lambda e, c=color: e.true_color == c)
    for linetype in sorted({e.linetype.upper() for e in entities}):
        yield Question(group(6, literal(linetype)), lambda e, t=linetype: same(e.linetype, t))
    for application in sorted({name for e in entities for name in e.applications}):
        yield Question(f'(-3 ("{literal(application)}"))', lambda e, a=application: a in e.applications)


def joined_questions(entities, layers):
    yield Question("", lambda e: True)
    yield Question("(67 . 1)", lambda e: e.in_paper)
    pairs = collections.Counter((e.kind, e.layer.upper()) for e in entities).most_common(10)
    for (kind, layer), _ in pairs:
        both = f"{group(0, literal(kind))} {group(8, literal(layer))}"
        yield Question(both, lambda e, k=kind, n=layer: e.kind == k and same(e.layer, n))
        yield Question(f'(-4 . "<not") (-4 . "<and") {both} (-4 . "and>") (-4 . "not>")',
                       lambda e, k=kind, n=layer: not (e.kind == k and same(e.layer, n)))
    radii = sorted(e.radius for e in entities if e.radius is not None)
    if radii:
        # Between two of them, so that the last digits do not matter.
        middle = (radii[len(radii) // 2] + radii[-1]) / 2
        yield Question(f'(0 . "CIRCLE,ARC") (-4 . ">=") (40 . {middle!r})',
                       lambda e: e.radius is not None and e.radius >= middle)


def shown(handles):
    handles = sorted(handles)
    return " ".join(handles[:5]) + (" ..." if len(handles) > 5 else "")


def told(handles):
    return f"{len(handles)} ({shown(handles)})" if handles else "none"


class SelectedDrawing:
    """One drawing, all questions, one run of the console. `problems` is empty when both agree."""

    def __init__(self, console, path, folder, document):
        self.console, self.path, self.document = console, path, document
        self.report = os.path.join(folder, os.path.basename(path) + "-selected")
        self.problems, self.count, self.picked, self.words = [], 0, 0, ""
        self.entities = entities_of(document)
        # Where a drawing has no handles, each reader gives its own: only numbers can agree.
        self.has_handles = document.header.get("$HANDLING", 1) != 0
        self.off, self.frozen, self.locked = set(), set(), set()
        for layer in document.layers:
            for is_so, names in ((layer.is_off(), self.off), (layer.is_frozen(), self.frozen), (layer.is_locked(), self.locked)):
                if is_so:
                    names.add(layer.dxf.name.upper())

    def places(self):
        """Where windows are drawn: twice each, as the drawing is and after two layers were changed."""
        self.words = place_of(self.document)
        drawn = [] if self.words else boxes([e.entity for e in self.entities if not e.in_paper])
        return [Window(box, whole) for box in drawn for whole in (True, False)]

    def commands_for_places(self, places, turn):
        simple = group(0, ",".join(SIMPLE))
        commands = [f"SELECT {simple} {place.text()} JSON {quoted(f'{self.report}{turn}{i}')}" for i, place in enumerate(places)]
        return commands + [f"SELECT ALL JSON {quoted(f'{self.report}{turn}')}"]

    def changed_layers(self):
        """The layer with the most entities in model space, to be frozen, and the next one, to be locked. The current one
        cannot be frozen."""
        known = {layer.dxf.name.upper() for layer in self.document.layers} - {self.document.header.get("$CLAYER", "0").upper()}
        counts = collections.Counter(e.layer.upper() for e in self.entities if not e.in_paper)
        return [name for name, _ in counts.most_common() if name in known][:2]

    def check(self):
        layers = sorted({layer.dxf.name for layer in self.document.layers} | {e.layer for e in self.entities})
        questions = [*value_questions(self.entities, layers), *joined_questions(self.entities, layers)]
        places, changed = self.places(), self.changed_layers()
        commands = [f"SELECTWHOLE {question.text}" for question in questions]
        commands += self.commands_for_places(places, "before")
        commands += [f"{command} {name}" for command, name in zip(("FREEZENAMED", "LOCKNAMED"), changed)]
        commands += self.commands_for_places(places, "after")
        code, text = self.console.run(self.path, commands)
        answers = [set(line.split(":")[1].split()) for line in text.splitlines() if line.startswith("whole drawing ")]
        if code or len(answers) != len(questions):
            self.problems.append(f"selecting ends with code {code}, {len(answers)} of {len(questions)} answers: {text[-300:]}")
            return self
        for question, found in zip(questions, answers):
            self.compare(question.text or "no filter", found, {e.handle for e in self.entities if question.takes(e)},
                         {e.handle for e in self.entities if question.is_open(e)})
        self.check_places(places, "before")
        self.frozen |= set(changed[:1])
        self.locked |= set(changed[1:])
        self.check_places(places, "after")
        return self

    def compare(self, what, found, expected, may_be=frozenset()):
        self.count += 1
        lacks, has_more = expected - found, found - expected - may_be
        if not self.has_handles and len(expected) <= len(found) <= len(expected | may_be):
            return
        if lacks or has_more:
            self.problems.append(f"{what}: {len(found)} selected; lacking {told(lacks)}, too many {told(has_more)}")

    def selected(self, suffix):
        with open(self.report + suffix, encoding="utf-8") as file:
            handles = set(json.load(file)["handles"])
        os.remove(self.report + suffix)
        return handles

    def is_shown(self, entity, hiding):
        return not (entity.in_paper or entity.is_invisible or entity.layer.upper() in hiding)

    def check_places(self, places, turn):
        for i, place in enumerate(places):
            answers = {e.handle: place.takes(e.entity) for e in self.entities
                       if e.kind in SIMPLE and self.is_shown(e, self.off | self.frozen)}
            unsure = {handle for handle, answer in answers.items() if answer is None}
            self.picked += len(answers) - len(unsure)
            self.compare(f"{place.text()} {turn}", self.selected(f"{turn}{i}"), {h for h, answer in answers.items() if answer}, unsure)
        if self.document.header.get("$TILEMODE", 1):
            whole = {e.handle for e in self.entities if self.is_shown(e, self.frozen | self.locked)}
            self.compare(f"SELECT ALL {turn}", self.selected(turn), whole)
