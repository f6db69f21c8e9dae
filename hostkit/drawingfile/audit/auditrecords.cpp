// The check of a record by itself: its values, its head and its class marks. What stands behind each mark is
// looked at by auditPart.

#include "auditing.h"

#include "textencoding.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int markCode = 100;
constexpr int embeddedCode = 101;
constexpr int controlCode = 102;
constexpr int extendedCode = 1000;
constexpr std::size_t longestLine = 2049;

/// The record that the walk stands at, with what its checks need.
struct Subject {
    AuditRun& run;
    const AuditContent& content;
    AuditIndex index;

    AuditRecord& record() const { return run.drawing.records[index]; }
    const std::vector<AuditGroup>& groups() const { return content.groups; }
    template <class... Pieces>
    void fault(AuditCheck check, std::uint32_t line, const Pieces&... pieces) const {
        run.findings.fault(check, &record(), line, pieces...);
    }
    template <class... Pieces>
    void remark(AuditCheck check, std::uint32_t line, const Pieces&... pieces) const {
        run.findings.remark(check, &record(), line, pieces...);
    }
};

// Values.

bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char each) { return static_cast<signed char>(each) > 0; });
}

void checkText(const Subject& subject, const AuditGroup& group) {
    if (group.value.size() > longestLine)
        subject.remark(AuditCheck::kRecord, group.line, L"group ", group.code, L" is a line of ",
                       group.value.size(), L" bytes; programs may read ", longestLine, L" of them");
    if (isPlain(group.value)) return;
    if (group.value.find('\0') != std::string_view::npos)
        subject.remark(AuditCheck::kRecord, group.line, L"group ", group.code,
                       L" holds a byte 0, where programs may end the text");
    if (subject.run.drawing.isUtf8() && !isValidUtf8(group.value))
        subject.remark(AuditCheck::kRecord, group.line, L"group ", group.code, L" is no valid UTF-8");
}

void checkValues(const Subject& subject) {
    for (std::size_t i = 0; i < subject.content.extendedBegin; ++i) {
        const AuditGroup& group = subject.groups()[i];
        const AuditValue kind = auditValueOf(group.code);
        if (kind == AuditValue::kText)
            checkText(subject, group);
        else if (kind == AuditValue::kNone && group.code < extendedCode)
            subject.fault(AuditCheck::kRecord, group.line, L"the format has no group ", group.code);
        else if (!isAuditValue(kind, group.value))
            subject.fault(AuditCheck::kRecord, group.line, L"group ", group.code, L" is ", group.value,
                          L", which is not ", auditValueName(kind));
    }
}

// The head: what stands before the first class mark.

void takeHandle(const Subject& subject, const AuditGroup& group) {
    AuditRecord& record = subject.record();
    const std::optional<AcDbHandleValue> handle = auditHandle(group.value);
    if (!handle || *handle == 0)
        return subject.fault(AuditCheck::kHandle, group.line, L"its handle is ", group.value,
                             L", which is none");
    record.handle = *handle;
    const auto [place, isNew] = subject.run.drawing.handles.try_emplace(*handle, subject.index);
    if (isNew) return;
    const AuditRecord& other = subject.run.drawing.records[place->second];
    subject.fault(AuditCheck::kHandle, group.line, L"its handle is also that of the ", other.type,
                  L" in line ", other.line);
}

void takeOwner(const Subject& subject, const AuditGroup& group) {
    subject.record().owner = auditHandle(group.value).value_or(0);
    subject.record().ownerLine = group.line;
}

bool isHandleCode(const Subject& subject, int code) {
    return code == (subject.record().type == "DIMSTYLE" ? 105 : 5);
}

// Handle and owner that stand behind the first mark, where programs that read by classes do not look.
void takeLate(const Subject& subject, std::size_t headEnd) {
    bool isInFirstPart = true;
    for (std::size_t i = headEnd + 1; i < subject.content.extendedBegin && isInFirstPart; ++i) {
        const AuditGroup& group = subject.groups()[i];
        isInFirstPart = group.code != markCode && group.code != embeddedCode && group.code != controlCode;
        const bool isHandle = isHandleCode(subject, group.code) && subject.record().handle == 0;
        const bool isOwner = group.code == 330 && subject.record().ownerLine == 0;
        if (!subject.record().kind || (!isHandle && !isOwner)) continue;
        isHandle ? takeHandle(subject, group) : takeOwner(subject, group);
        subject.fault(AuditCheck::kRecord, group.line, isHandle ? L"its handle stands" : L"its owner stands",
                      L" behind the class mark ", subject.groups()[headEnd].value, L"; it belongs before it");
    }
}

void checkHead(const Subject& subject, std::size_t headEnd, bool isMarked) {
    bool hasHandle = false;
    bool isInControl = false;
    for (std::size_t i = 0; i < headEnd; ++i) {
        const AuditGroup& group = subject.groups()[i];
        if (group.code == controlCode) isInControl = group.value.starts_with('{');
        if (isInControl || group.code == controlCode) continue;
        if (isHandleCode(subject, group.code)) {
            if (hasHandle)
                subject.fault(AuditCheck::kRecord, group.line, L"its group ", group.code, L" stands twice");
            else
                takeHandle(subject, group);
            hasHandle = true;
        } else if (group.code == 330 && isMarked) {
            if (subject.record().ownerLine != 0)
                subject.fault(AuditCheck::kRecord, group.line, L"its group 330 stands twice");
            else
                takeOwner(subject, group);
        } else if (isMarked && (group.code != 2 || subject.record().type != "TABLE")) {
            return subject.fault(AuditCheck::kRecord, group.line, L"group ", group.code,
                                 L" stands before the first class mark");
        }
    }
    if (isMarked && headEnd < subject.content.extendedBegin) takeLate(subject, headEnd);
    if (!hasHandle && subject.record().handle == 0 && subject.run.drawing.hasMarks())
        subject.fault(AuditCheck::kHandle, subject.record().line, L"it has no handle");
}

// Application groups, 102, which hold reactors and the extension dictionary.

void checkControlGroups(const Subject& subject) {
    const AuditGroup* open = nullptr;
    for (std::size_t i = 0; i < subject.content.extendedBegin; ++i) {
        const AuditGroup& group = subject.groups()[i];
        // What an xrecord holds is its owner's affair.
        if (group.code == embeddedCode || (group.code == markCode && group.value == "AcDbXrecord")) break;
        const bool isControl = group.code == controlCode;
        if (isControl && group.value.starts_with('{')) {
            if (open)
                subject.fault(AuditCheck::kRecord, group.line, L"the group ", group.value, L" begins within ",
                              open->value);
            open = &group;
        } else if (isControl) {
            if (!open) subject.fault(AuditCheck::kRecord, group.line, L"a group 102 ends that did not begin");
            open = nullptr;
        } else if (open && group.code >= 330 && group.code < 370) {
            const AuditLink link = open->value == "{ACAD_REACTORS"      ? AuditLink::kReactor
                                   : open->value == "{ACAD_XDICTIONARY" ? AuditLink::kExtension
                                                                        : AuditLink::kReference;
            subject.run.drawing.handleReferences.push_back({auditHandle(group.value).value_or(0),
                                                            {},
                                                            subject.index,
                                                            group.line,
                                                            static_cast<short>(group.code),
                                                            link});
        }
    }
    if (open) subject.fault(AuditCheck::kRecord, open->line, L"the group ", open->value, L" has no end");
}

// Class marks.

struct Marks {
    std::vector<const AuditGroup*> found;
    std::size_t headEnd; ///< the first mark's place, or where the record's own groups end

    explicit Marks(const Subject& subject)
        : headEnd(subject.content.extendedBegin) {
        for (std::size_t i = 0; i < subject.content.extendedBegin; ++i) {
            const AuditGroup& group = subject.groups()[i];
            if (group.code == embeddedCode) break;
            if (group.code != markCode) continue;
            headEnd = std::min(headEnd, i);
            found.push_back(&group);
            if (subject.record().type == "XRECORD") break;
        }
    }
};

std::size_t countOf(const std::vector<AuditMark>& variant, std::string_view name, bool optionalToo) {
    return static_cast<std::size_t>(std::count_if(variant.begin(), variant.end(), [&](const AuditMark& each) {
        return each.name == name && (optionalToo || !each.isOptional);
    }));
}

std::size_t countOf(const std::vector<const AuditGroup*>& found, std::string_view name) {
    return static_cast<std::size_t>(std::count_if(
        found.begin(), found.end(), [&](const AuditGroup* each) { return each->value == name; }));
}

// How far the marks are from a variant: those that lack and those that are too many.
struct Difference {
    std::vector<std::string_view> missing;
    std::vector<const AuditGroup*> extra;

    Difference(const std::vector<AuditMark>& variant, const std::vector<const AuditGroup*>& found) {
        for (const AuditMark& mark : variant) {
            const bool isTold = std::find(missing.begin(), missing.end(), mark.name) != missing.end();
            if (!isTold && countOf(found, mark.name) < countOf(variant, mark.name, false))
                missing.push_back(mark.name);
        }
        for (auto each = found.begin(); each != found.end(); ++each) {
            const auto before =
                static_cast<std::size_t>(std::count_if(found.begin(), each, [&](const AuditGroup* other) {
                    return other->value == (*each)->value;
                }));
            if (before >= countOf(variant, (*each)->value, true)) extra.push_back(*each);
        }
    }
    std::size_t size() const { return missing.size() + extra.size(); }
};

bool isInOrder(const std::vector<AuditMark>& variant, const std::vector<const AuditGroup*>& found) {
    auto wanted = variant.begin();
    for (const AuditGroup* const each : found) {
        while (wanted != variant.end() && wanted->name != each->value) ++wanted;
        if (wanted++ == variant.end()) return false;
    }
    return true;
}

void tellOfMarks(const Subject& subject, const std::vector<AuditMark>& variant,
                 const Difference& difference) {
    if (difference.missing.size() == 1 && difference.extra.size() == 1)
        return subject.fault(AuditCheck::kRecord, difference.extra[0]->line, L"the class mark ",
                             difference.extra[0]->value, L" stands where ", difference.missing[0],
                             L" belongs");
    for (const std::string_view name : difference.missing)
        subject.fault(AuditCheck::kRecord, subject.record().line, L"its class mark ", name, L" is missing");
    for (const AuditGroup* const each : difference.extra)
        subject.fault(AuditCheck::kRecord, each->line, L"its class mark ", each->value,
                      countOf(variant, each->value, true) > 0 ? L" stands twice" : L" does not belong to it");
}

/// True where the parts behind the marks can be looked at by the marks' rules.
bool checkMarks(const Subject& subject, const Marks& marks) {
    const AuditRecord& record = subject.record();
    if (!record.kind) {
        if (!record.isEntity || countOf(marks.found, "AcDbEntity") == 1) return true;
        subject.fault(AuditCheck::kRecord, record.line,
                      marks.found.empty() ? L"it has no class marks"
                                          : L"its class mark AcDbEntity is missing or stands twice");
        return false;
    }
    if (marks.found.empty()) {
        const auto needsNone = [](const AuditMark& mark) { return mark.isOptional; };
        const auto& first = record.kind->variants.front();
        if (std::all_of(first.begin(), first.end(), needsNone)) return true;
        subject.fault(AuditCheck::kRecord, record.line, L"it has no class marks");
        return false;
    }
    const std::vector<AuditMark>* best = &record.kind->variants.front();
    std::size_t least = ~std::size_t{0};
    for (const auto& variant : record.kind->variants)
        if (const std::size_t size = Difference(variant, marks.found).size(); size < least) {
            least = size;
            best = &variant;
        }
    if (least > 0) {
        tellOfMarks(subject, *best, Difference(*best, marks.found));
        return false;
    }
    if (isInOrder(*best, marks.found)) return true;
    subject.fault(AuditCheck::kRecord, marks.found.front()->line,
                  L"its class marks stand in another order than programs read");
    return false;
}

const AuditPart* partOf(const AuditKind* kind, std::string_view mark) {
    if (mark == "AcDbEntity") return &auditEntityPart();
    if (!kind) return nullptr;
    for (const auto& variant : kind->variants)
        for (const AuditMark& each : variant)
            if (each.name == mark) return each.part;
    return nullptr;
}

const AuditPart& openPart() {
    static const AuditPart part;
    return part;
}

void checkParts(const Subject& subject, bool areMarksSound) {
    const std::size_t count = subject.content.extendedBegin;
    const bool isXrecord = subject.record().type == "XRECORD";
    std::string_view mark;
    std::size_t first = 0;
    const auto close = [&](std::size_t end) {
        const AuditPart* const part = areMarksSound ? partOf(subject.record().kind, mark) : nullptr;
        if (!mark.empty())
            auditPart(subject.run, subject.content, subject.index, part ? *part : openPart(), first, end);
    };
    for (std::size_t i = 0; i < count; ++i) {
        const AuditGroup& group = subject.groups()[i];
        if (group.code == embeddedCode) return close(i);
        if (group.code != markCode || (isXrecord && !mark.empty())) continue;
        close(i);
        mark = group.value;
        first = i + 1;
    }
    close(count);
}

void checkForm(const Subject& subject) {
    const int form = subject.run.drawing.form;
    const AuditRecord& record = subject.record();
    if (record.kind && form != 0 && record.kind->since > form)
        subject.fault(AuditCheck::kRecord, record.line, L"the form AC", form,
                      L" of the drawing has no such records; they came with AC", record.kind->since);
}

void checkStructureOf(const Subject& subject) {
    const Marks marks(subject);
    const bool isMarked = subject.run.drawing.hasMarks() || !marks.found.empty();
    checkHead(subject, isMarked ? marks.headEnd : subject.content.extendedBegin, isMarked);
    checkControlGroups(subject);
    checkForm(subject);
    if (isMarked) return checkParts(subject, checkMarks(subject, marks));
    const AuditKind* const kind = subject.record().kind;
    auditPart(subject.run, subject.content, subject.index,
              kind && !kind->isAnyAllowed ? kind->unmarked : openPart(), 0, subject.content.extendedBegin);
}

void gatherEntries(const Subject& subject) {
    std::string_view key;
    std::uint32_t line = 0;
    for (std::size_t i = 0; i < subject.content.extendedBegin; ++i) {
        const AuditGroup& group = subject.groups()[i];
        if (group.code == 3) {
            if (line != 0)
                subject.fault(AuditCheck::kDictionary, line, L"its entry ", key, L" has no handle");
            key = group.value;
            line = group.line;
        } else if ((group.code == 350 || group.code == 360) && line != 0) {
            subject.run.drawing.entries.push_back(
                {subject.index, line, key, auditHandle(group.value).value_or(0)});
            line = 0;
        }
    }
    if (line != 0) subject.fault(AuditCheck::kDictionary, line, L"its entry ", key, L" has no handle");
}

void gatherLayout(const Subject& subject) {
    const auto [first, end] = subject.content.partOf("AcDbLayout");
    const AuditGroup* const block = subject.content.find(330, first, end);
    if (block)
        subject.run.drawing.layouts.emplace(subject.index,
                                            AuditHandleReference{auditHandle(block->value).value_or(0),
                                                                 {},
                                                                 subject.index,
                                                                 block->line,
                                                                 330,
                                                                 AuditLink::kReference});
}

} // namespace

void auditRecord(AuditRun& run, const AuditContent& content, AuditIndex index) {
    const Subject subject{run, content, index};
    AuditRecord& record = subject.record();
    record.isOnPaper = record.isEntity && content.integer(67).value_or(0) == 1;
    checkStructureOf(subject);
    checkValues(subject);
    auditTableRecord(run, content, index);
    auditCounts(run, content, record);
    if (record.type == "HATCH") auditHatch(run, content, record);
    if (record.type == "DICTIONARY" || record.type == "ACDBDICTIONARYWDFLT") gatherEntries(subject);
    if (record.type == "LAYOUT") gatherLayout(subject);
    if (content.extendedBegin < content.groups.size()) auditExtendedData(run, content, index);
}

} // namespace hostkit
