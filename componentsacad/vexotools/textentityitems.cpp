#include "textentityitems.h"

namespace vexo {

TextItemReader::TextItemReader(AcDbDxfFiler& filer)
    : m_filer(filer)
    , m_record(acutNewRb(itemcodes::int32))
    , m_isGood(m_record && filer.filerStatus() == Acad::eOk) {}

void TextItemReader::refuse(const wchar_t* format, int value) {
    m_filer.setError(Acad::eBadDxfSequence, format, value);
    m_isGood = false;
}

bool TextItemReader::read(short code) {
    if (!m_isGood) return false;
    const bool isRead = m_filer.readResBuf(m_record.get()) == Acad::eOk;
    if (isRead && m_record->restype == code) return true;
    if (isRead) m_filer.pushBackItem(); // at the end there is nothing to give back
    refuse(L"\nError: expected group code %d", code);
    return false;
}

void TextItemReader::item(Adesk::Int32& value) {
    if (read(itemcodes::int32)) value = m_record->resval.rlong;
}

void TextItemReader::item(Adesk::Int16& value) {
    if (read(itemcodes::int16)) value = m_record->resval.rint;
}

void TextItemReader::item(double& value) {
    if (read(itemcodes::real)) value = m_record->resval.rreal;
}

void TextItemReader::item(AcGePoint2d& value) {
    if (read(itemcodes::point)) value.set(m_record->resval.rpoint[0], m_record->resval.rpoint[1]);
}

void TextItemReader::item(AcGePoint3d& value) {
    const ads_real* const at = m_record->resval.rpoint;
    if (read(itemcodes::point)) value.set(at[0], at[1], at[2]);
}

void TextItemReader::item(AcGeVector2d& value) {
    if (read(itemcodes::point)) value.set(m_record->resval.rpoint[0], m_record->resval.rpoint[1]);
}

void TextItemReader::item(AcGeVector3d& value) {
    const ads_real* const at = m_record->resval.rpoint;
    if (read(itemcodes::point)) value.set(at[0], at[1], at[2]);
}

// The record owns its text only while it says that it is one; the next group is read over it.
void TextItemReader::item(CString& value) {
    if (!read(itemcodes::text)) return;
    value = m_record->resval.rstring;
    acutDelString(m_record->resval.rstring);
    m_record->restype = itemcodes::int32;
}

} // namespace vexo
