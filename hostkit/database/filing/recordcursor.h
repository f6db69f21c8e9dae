// Walk over the groups of a kept record, for objects without a class of their own; leaves out what they mean.
#pragma once

#include "drawingtext.h"
#include "groupscanner.h"

#include "dbid.h"
#include "gepnt3d.h"

#include <memory>
#include <string>

class AcDbDatabase;
class AcDbObject;

namespace hostkit {

struct DrawingSource;

/// The groups of an object as its drawing's source bytes have them: those behind the first subclass mark that
/// is not the entities' own, or all of a record without such marks. Application groups, comments and extended
/// data are passed over; a damaged group ends the walk. Nothing is counted on beforehand and nothing kept:
/// what a count in the record promises is the caller's to believe. An object that was not read has no groups.
class RecordCursor {
public:
    explicit RecordCursor(const AcDbObject& object);

    /// To the next group; false behind the last one. Before the first call there is no group.
    bool next();
    int code() const { return m_group.code; }
    bool is(int code, std::string_view value) const { return m_group.is(code, value); }

    // The value of the group; what is no value of that kind is the other one.

    /// Never of a size whose fourth power is no number: whoever draws with it need not ask.
    double real(double otherwise = 0.0) const { return realOf(m_group, otherwise); }
    Adesk::Int64 integer(Adesk::Int64 otherwise = 0) const {
        return integerFromText(m_group.value).value_or(otherwise);
    }
    double radians() const;
    std::wstring text() const { return m_text.decode(m_group.value); }
    /// Null for what names no object.
    AcDbObjectId id() const;
    /// The group is the x; y and z (codes 10 and 20 higher) are taken with it where they follow, and 0
    /// otherwise.
    AcGePoint3d point();
    AcGeVector3d vector() { return point().asVector(); }

private:
    static double realOf(const RawGroup& group, double otherwise);
    void enterClass();
    bool skipApplication();
    bool takeAxis(int code, double& value);

    std::shared_ptr<const DrawingSource> m_source;
    const AcDbDatabase* m_database;
    DrawingText m_text;
    GroupScanner m_scanner{{}};
    RawGroup m_group;
};

} // namespace hostkit
