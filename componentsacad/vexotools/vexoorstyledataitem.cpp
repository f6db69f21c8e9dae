#include "vexoorstyledataitem.h"

#include <cstdint>
#include <cstring>
#include <cwchar>

namespace {

// Styles have many items, and most use a few bytes of their kilobyte.
void copyValue(const VEXOORStyleDataItem& from, VEXOORStyleDataItem& to) {
    std::memcpy(to.m_value, from.m_value, from.usedSize());
    to.m_kind = from.m_kind;
}

} // namespace

VEXOORStyleDataItem::VEXOORStyleDataItem(const VEXOORStyleDataItem& other)
    : m_key(other.m_key) {
    copyValue(other, *this);
}

VEXOORStyleDataItem& VEXOORStyleDataItem::operator=(const VEXOORStyleDataItem& other) {
    if (this == &other) return *this;
    m_key = other.m_key;
    copyValue(other, *this);
    return *this;
}

void VEXOORStyleDataItem::setReal(double value) {
    std::memcpy(m_value, &value, sizeof value);
    m_kind = kReal;
}

void VEXOORStyleDataItem::setInteger(int value) {
    const std::int32_t stored = value;
    std::memcpy(m_value, &stored, sizeof stored);
    m_kind = kInteger;
}

void VEXOORStyleDataItem::setText(const CString& text, Kind kind) {
    const std::size_t length = wcsnlen(text.GetString(), maximumText);
    std::wmemcpy(m_value, text.GetString(), length);
    m_value[length] = L'\0';
    m_kind = kind;
}

double VEXOORStyleDataItem::real() const {
    double value = 0.0;
    std::memcpy(&value, m_value, sizeof value);
    return value;
}

int VEXOORStyleDataItem::integer() const {
    std::int32_t value = 0;
    std::memcpy(&value, m_value, sizeof value);
    return value;
}

CString VEXOORStyleDataItem::text() const {
    return {m_value, static_cast<int>(wcsnlen(m_value, maximumText))};
}

std::size_t VEXOORStyleDataItem::usedSize() const {
    if (m_kind == kReal) return sizeof(double);
    if (m_kind == kInteger) return sizeof(std::int32_t);
    if (m_kind == kName || m_kind == kText) return (wcsnlen(m_value, maximumText) + 1) * sizeof(wchar_t);
    return sizeof m_value;
}
