"""An edited drawing against what its edit expects: every record, every group."""

from edits import in_short
from names import table_of
from records import Either, Name, compare_groups


def keys_of(records):
    """Records are the same by kind and handle; those without a handle by kind, section and the block's place."""
    keys, block = [], 0
    for record in records:
        if record.kind == "BLOCK":
            block += 1
        if record.handle:
            keys.append((record.kind, record.handle))
        elif record.kind == "ACDSRECORD":
            keys.append((record.kind, (record.first(320) or "").strip()))
        elif record.kind in ("SECTION", "TABLE", "CLASS"):
            keys.append((record.kind, (record.first(2) or record.first(1) or "").strip()))
        elif record.kind == "ENDSEC":
            keys.append((record.kind, record.section))  # however many blocks came in
        else:
            keys.append((record.kind, record.section, block if record.section == "BLOCKS" else record.container))
    return keys


def pair_records(expected, actual, say, added):
    """Pairs in the file's order. What is only in the one has been lost, what is only in the other has been added."""
    wanted = [e for e in expected if e is not None]
    wanted_keys, actual_keys = keys_of([e.record for e in wanted]), keys_of(actual)
    ahead_wanted, ahead_actual = counted(wanted_keys), counted(actual_keys)
    pairs, lost, i, j = [], [], 0, 0
    while i < len(wanted) and j < len(actual):
        if wanted_keys[i] == actual_keys[j]:
            pairs.append((wanted[i], actual[j]))
            ahead_wanted[wanted_keys[i]] -= 1
            ahead_actual[actual_keys[j]] -= 1
            i, j = i + 1, j + 1
        elif not ahead_wanted.get(actual_keys[j]):
            added.append(actual[j])
            ahead_actual[actual_keys[j]] -= 1
            j += 1
        elif not ahead_actual.get(wanted_keys[i]):
            lost.append(wanted[i])
            ahead_wanted[wanted_keys[i]] -= 1
            i += 1
        else:
            say(actual[j], f"stands elsewhere than before: here {wanted[i].record.title()} stood")
            ahead_actual[actual_keys[j]] -= 1
            j += 1
    added += actual[j:]
    lost += wanted[i:]
    return pairs, lost


def counted(keys):
    counts = {}
    for key in keys:
        counts[key] = counts.get(key, 0) + 1
    return counts


def adjust_counts(drawing, result, expected, added):
    """Counts of tables and the next free handle follow what came and went."""
    highest = max((int(r.handle, 16) for r in result.records if is_hexadecimal(r.handle)), default=0)
    for each in expected:
        if each is None:
            continue
        record = each.record
        if record.kind == "$HANDSEED" and added:
            each.groups = [(c, Seed(v, highest) if c == 5 else v) for c, v in each.groups]
        if record.kind == "TABLE" and added:
            name = (record.first(2) or "").strip()
            now = len(result.table(name))
            was = len(drawing.table(name))
            if now != was:
                each.groups = [(c, Either(str(now), str(int(v) + now - was)) if c == 70 else v) for c, v in each.groups]


def is_hexadecimal(text):
    try:
        int(text, 16)
        return True
    except ValueError:
        return False


class Seed(Either):
    """The old seed where it is above every handle, else one that is."""

    def __init__(self, old, highest):
        super().__init__(old)
        self.highest = highest


def judge(edit, drawing, result, say):
    """`say(record, words, record before)` takes the differences."""
    expected, added = edit.expected(drawing), []
    pairs, lost = pair_records(expected, result.records, say, added)
    for each in lost:
        say(each.record, "record is gone")
    adjust_counts(drawing, result, expected, added)
    for each, actual in pairs:
        if each.groups is actual.groups or each.groups == actual.groups and not each.loose:
            continue
        if actual.kind == "$HANDSEED" and added:
            judge_seed(each, actual, say)
            continue
        words = compare_groups(each, actual.groups, result.encoding)
        if words:
            other = edit.alternative(each.record)
            if other and not compare_groups(other, actual.groups, result.encoding):
                continue
        if words:
            # Of a record that is written anew, names are spelled as their table spells them.
            each.groups = [(c, Name(drawing.text(v)) if isinstance(v, str) and table_of(each.record, c) else v)
                           for c, v in each.groups]
            words = compare_groups(each, actual.groups, result.encoding)
        if words:
            say(actual, in_short(words), each.record)
    edit.judge_added(drawing, result, added, say)
    edit.judge_result(drawing, pairs, result, say)


def judge_seed(each, actual, say):
    value = actual.first(5, "0")
    seed = next((v for c, v in each.groups if c == 5), None)
    if len(actual.groups) != len(each.groups):
        say(actual, "has other groups than before")
    elif seed is None or not is_hexadecimal(value) or (int(value, 16) <= seed.highest and value != seed.values[0]):
        say(actual, f"the next free handle is {value}, which is in use")
