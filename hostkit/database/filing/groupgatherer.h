// Filing of an object into a record list: every kind of group; leaves out subclass marks, which lists do not
// have.
#pragma once

#include "dbfiler.h"
#include "groupblock.h"

namespace hostkit {

/// Gathers the groups that an object files.
class GroupGatherer : public AcDbDxfFiler {
public:
    explicit GroupGatherer(AcDbDatabase* database)
        : m_database(database) {}
    GroupGatherer(AcDbDatabase* database, GroupBlock groups)
        : m_database(database)
        , m_groups(std::move(groups)) {}
    const GroupBlock& groups() const { return m_groups; }

    AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
    AcDbDatabase* database() const override { return m_database; }
    void writeText(short code, std::wstring_view text) override {
        if (AcDb::groupKind(code) == AcDb::GroupKind::kBinary)
            m_groups.appendHexadecimal(code, text);
        else
            m_groups.appendText(code, text);
    }
    void writeReal(short code, double value) override { m_groups.appendReal(code, value); }
    void writePoint(short code, const double* coordinates, int dimension) override {
        m_groups.appendPoint(code, coordinates, dimension > 2 ? 3 : 2);
    }
    void writeInteger(short code, Adesk::Int64 value) override { m_groups.appendInteger(code, value); }
    void writeHandle(short code, Adesk::UInt64 handle) override { m_groups.appendHandle(code, handle); }
    void writeBinary(short code, const void* bytes, std::size_t size) override {
        m_groups.appendBinary(code, bytes, size);
    }
    void writeSubclassMark(const wchar_t*) override {}

private:
    AcDbDatabase* m_database;
    GroupBlock m_groups;
};

} // namespace hostkit
