#include "gatheredvalues.h"

#include "adscodes.h"
#include "transcriptvalues.h"

#include <algorithm>
#include <stdexcept>

namespace hostkit {

void GatheredValues::begin(DrawingRecord& record, const RecordLayout& layout, RecordScope& values) {
    m_record = &record;
    m_layout = &layout;
    m_values.assign(layout.slots, 0.0);
    m_isSet.assign(layout.slots, 0);
    m_isTaken.assign(record.groups.size(), 0);
    m_texts.clear();
    m_outermost = m_scope = m_arrays = &values;
    m_before = m_original && m_original->layout == &layout ? &m_original->values : nullptr;
    loadBefore();
}

std::string GatheredValues::takePieces(int code, int pieceCode) {
    const std::size_t last = findGroup(code, m_region.begin);
    std::size_t first = last;
    const auto isPiece = [&](std::size_t i) {
        return !m_isTaken[i] && m_record->groups[i].code == pieceCode;
    };
    while (first > m_region.begin && isPiece(first - 1)) --first;
    std::string text;
    for (std::size_t i = first; i < std::min(last + 1, m_region.end); ++i) {
        m_isTaken[i] = 1;
        text += m_record->groups[i].value;
    }
    return text;
}

std::vector<const RecordGroup*> GatheredValues::takeAll() {
    std::vector<const RecordGroup*> all;
    for (std::size_t i = m_region.begin; i < m_region.end; ++i)
        if (!m_isTaken[i]) {
            m_isTaken[i] = 1;
            all.push_back(&m_record->groups[i]);
        }
    return all;
}

void GatheredValues::setBytes(std::string_view name, std::string bytes) {
    set(slotOf(name)).run = kept(std::move(bytes));
}

void GatheredValues::setNumber(std::string_view name, double number) {
    const std::uint16_t slot = slotOf(name);
    setValue(slot, kindOf(slot), number);
}

void GatheredValues::setPoint(std::string_view name, const double (&ordinates)[3]) {
    TranscriptLine::Part part;
    part.slot = slotOf(name);
    part.kind = ValueKind::real;
    put(part, ordinates, 3);
}

void GatheredValues::addReference(std::string_view name, std::uint64_t handle, unsigned code) {
    m_scope->array(slotOf(name)).emplace_back().reference = {static_cast<std::uint8_t>(code), handle};
}

std::uint16_t GatheredValues::slotOf(std::string_view name) const {
    std::uint16_t slot = 0;
    if (!m_layout->findSlot(name, slot)) throw std::logic_error("no field: " + std::string(name));
    return slot;
}

ValueRun GatheredValues::kept(std::string bytes) {
    const std::string& text = m_texts.emplace_back(std::move(bytes));
    return {text.data(), 0, text.size()};
}

const RecordLayout::SlotField& GatheredValues::fieldOf(std::uint16_t slot) const {
    static const RecordLayout::SlotField none;
    return slot < m_layout->slotFields.size() ? m_layout->slotFields[slot] : none;
}

ValueKind GatheredValues::kindOf(std::uint16_t slot) const {
    const RecordLayout::SlotField& field = fieldOf(slot);
    return field.isField ? valueKindOf(static_cast<std::uint8_t>(field.code)) : ValueKind::none;
}

void GatheredValues::loadBefore() {
    if (!m_before) return;
    for (const RecordScope::Item& item : m_before->items()) {
        const ValueKind kind = kindOf(item.slot);
        if (kind == ValueKind::whole) m_values[item.slot] = static_cast<double>(item.value.whole);
        if (kind == ValueKind::real) m_values[item.slot] = item.value.real[0];
    }
}

RecordValue& GatheredValues::set(std::uint16_t slot) {
    m_isSet[slot] = 1;
    return m_scope->set(slot);
}

void GatheredValues::setValue(std::uint16_t slot, ValueKind kind, double number) {
    m_values[slot] = number;
    m_isSet[slot] = 1;
    switch (kind) {
    case ValueKind::whole:
        set(slot).whole = static_cast<std::int64_t>(number);
        break;
    case ValueKind::real:
        set(slot).real[0] = number;
        break;
    case ValueKind::reference:
        set(slot).reference = {0, static_cast<std::uint64_t>(number)};
        break;
    default:
        break;
    }
}

RecordValue& GatheredValues::place(const TranscriptLine::Part& part) {
    m_isSet[part.slot] = 1;
    if (part.isAll) return m_scope->array(part.slot).emplace_back();
    if (part.isElement) {
        std::vector<RecordValue>& values = m_arrays->array(part.slot);
        if (values.size() <= currentIndex()) values.resize(currentIndex() + 1);
        return values[currentIndex()];
    }
    if (!part.loopSlot) return set(part.slot);
    RecordScope::Loop& loop = m_scope->loop(part.loopSlot);
    while (loop.count <= currentIndex()) RecordScope::addPass(loop);
    return loop.passes[currentIndex()]->add(part.slot);
}

void GatheredValues::put(const TranscriptLine::Part& part, const double* values, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) m_values[part.slot + i] = values[i];
    m_isSet[part.slot] = 1;
    if (part.kind == ValueKind::none) return;
    RecordValue& value = place(part);
    if (part.kind == ValueKind::whole)
        value.whole = static_cast<std::int64_t>(values[0]);
    else
        std::copy_n(values, count, value.real);
}

RecordGroup* GatheredValues::takeGroup(int code) {
    const std::size_t found = findGroup(code, m_region.begin);
    if (found == m_region.end) return nullptr;
    m_isTaken[found] = 1;
    return &m_record->groups[found];
}

std::size_t GatheredValues::findGroup(int code, std::size_t from, std::string_view value) const {
    for (std::size_t i = from; i < m_region.end; ++i)
        if (m_record->groups[i].code == code && !m_isTaken[i] &&
            (value.empty() || withoutBlanks(m_record->groups[i].value) == value))
            return i;
    return m_region.end;
}

std::size_t GatheredValues::firstLeft(std::size_t from) const {
    while (from < m_region.end && m_isTaken[from]) ++from;
    return from;
}

double GatheredValues::numberOf(const RecordGroup& group) {
    switch (AcDb::groupKind(group.code)) {
    case AcDb::GroupKind::kReal:
    case AcDb::GroupKind::kPoint:
        return realFromText(group.value).value_or(0.0);
    case AcDb::GroupKind::kHandle:
        return static_cast<double>(handleFromText(group.value).value_or(0));
    default:
        return static_cast<double>(integerFromText(group.value).value_or(0));
    }
}

ValueRun GatheredValues::textRun(std::string_view value) {
    if (value.find('^') == std::string_view::npos) return {value.data(), 0, value.size()};
    std::string text;
    appendUnescaped(value, text);
    return kept(std::move(text));
}

} // namespace hostkit
