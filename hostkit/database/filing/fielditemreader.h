// Text filer over a binary one, reading: what FieldItemWriter files; leaves out keeping what a class does not
// know.
#pragma once

#include "dbfiler.h"

#include <string>

namespace hostkit {

/// Hands the groups of a binary filer to a class. A group that the class rejects is lost.
class FieldItemReader final : public AcDbDxfFiler {
public:
    FieldItemReader(AcDbDwgFiler& items, AcDbDatabase* database)
        : m_items(items)
        , m_database(database) {}
    /// Passes over what is left, up to and with the end mark; the status of the whole.
    Acad::ErrorStatus finish();

    AcDb::FilerType filerType() const override { return m_items.filerType(); }
    AcDbDatabase* database() const override { return m_database; }

    Acad::ErrorStatus readItem(AcDbDxfGroup& group) override;
    void pushBackItem() override { m_isWaiting = m_isWaiting || m_hasLast; }
    /// The mark must come next; what a class left unread of its part is passed over.
    bool atSubclassData(const wchar_t* name) override;
    bool atEndOfObject() override;
    AcDbObjectId objectIdOf(const AcDbDxfGroup& group) override;
    double angleOf(const AcDbDxfGroup& group) const override { return group.real; }
    bool recordOf(const AcDbDxfGroup& group, AcDbObjectId& record) const override;

private:
    /// The next item is in the members, read now or pushed back before.
    bool fetch();
    void readValue(int form);
    void readByCode();
    void readText();
    void readChunk();
    void readReference();
    void setHandle(AcDbHandleValue handle);
    template <class Value, class Read>
    Value valueOf(Read read);

    AcDbDwgFiler& m_items;
    AcDbDatabase* m_database;
    AcDbDxfGroup m_group;
    std::wstring m_text;
    AcDbObjectId m_id;
    int m_form = 0;
    bool m_isWaiting = false; ///< the item in the members has yet to be handed out
    bool m_hasLast = false;
};

} // namespace hostkit
