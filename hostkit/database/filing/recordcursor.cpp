#include "recordcursor.h"

#include "dbaccess.h"
#include "dbsource.h"
#include "fieldtable.h"
#include "groupcodes.h"

#include <cmath>

namespace hostkit {

namespace {

constexpr int recordCode = 0;

std::string_view bytesOf(const DrawingSource& source, SourceSpan span) {
    const std::string_view all = source.bytes;
    return span.offset > all.size() ? std::string_view() : all.substr(span.offset, span.length);
}

} // namespace

RecordCursor::RecordCursor(const AcDbObject& object)
    : m_source(object.database() ? object.database()->source() : nullptr)
    , m_database(object.database()) {
    if (!m_source || object.sourceSpan().isEmpty()) return;
    m_text = DrawingText(static_cast<CodePage>(m_source->codePage));
    m_scanner = GroupScanner(bytesOf(*m_source, object.sourceSpan()));
    m_scanner.next(m_group);
    enterClass();
}

void RecordCursor::enterClass() {
    const GroupScanner start = m_scanner;
    while (next())
        if (code() == subclassMarkCode && !is(subclassMarkCode, "AcDbEntity")) return;
    m_scanner = start;
}

bool RecordCursor::skipApplication() {
    while (m_scanner.next(m_group) == ScanResult::kGroup && code() != recordCode &&
           code() < firstExtendedCode)
        if (is(applicationGroupCode, "}")) return true;
    return false;
}

bool RecordCursor::next() {
    while (m_scanner.next(m_group) == ScanResult::kGroup) {
        if (code() == recordCode || code() >= firstExtendedCode) {
            m_scanner.returnTo(m_group);
            return false;
        }
        if (code() == commentCode) continue;
        if (code() != applicationGroupCode) return true;
        if (withoutBlanks(m_group.value).substr(0, 1) == "{" && !skipApplication()) return false;
    }
    return false;
}

double RecordCursor::realOf(const RawGroup& group, double otherwise) {
    constexpr double largest = 1e70;
    const double value = realFromText(group.value).value_or(otherwise);
    return std::abs(value) <= largest ? value : otherwise;
}

double RecordCursor::radians() const { return radiansFromDegrees(real()); }

AcDbObjectId RecordCursor::id() const {
    const AcDbHandleValue handle = handleFromText(m_group.value).value_or(0);
    const AcDbObjectId id = m_database ? DatabaseAccess::find(*m_database, handle) : AcDbObjectId();
    return DatabaseAccess::object(id) ? id : AcDbObjectId();
}

bool RecordCursor::takeAxis(int code, double& value) {
    RawGroup group;
    if (m_scanner.next(group) != ScanResult::kGroup) return false;
    if (group.code != code) {
        m_scanner.returnTo(group);
        return false;
    }
    value = realOf(group, 0.0);
    return true;
}

AcGePoint3d RecordCursor::point() {
    AcGePoint3d point(real(), 0.0, 0.0);
    const int x = code();
    if (takeAxis(x + 10, point.y)) takeAxis(x + 20, point.z);
    return point;
}

} // namespace hostkit
