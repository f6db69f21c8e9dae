#include "dbmodelergeometry.h"

#include "bodydata.h"
#include "fielditems.h"
#include "fieldtable.h"
#include "modelercontent.h"

using namespace hostkit;

struct AcDbModelerGeometry::Filing {
    static constexpr short dataFormCode = 70;
    static constexpr short bodyFlagCode = 290;
    static constexpr short bodyIdCode = 2;
    static constexpr short lineCode = 1;
    static constexpr short moreCode = 3;
    static constexpr std::size_t longestPiece = 255;
    static constexpr const wchar_t* noBodyId = L"{00000000-0000-0000-0000-000000000000}";

    static constexpr GroupField<AcDbModelerGeometry> groups[] = {
        integerField<&AcDbModelerGeometry::m_dataForm>(dataFormCode),
        integerField<&AcDbModelerGeometry::m_hasBodyFlag>(bodyFlagCode),
        textField<&AcDbModelerGeometry::m_bodyId>(bodyIdCode),
    };

    // A caret that no blank follows comes as the control character that it seemed to escape.
    static void appendNarrow(std::wstring_view text, std::string& line) {
        for (const wchar_t c : text) {
            if (c < L' ') line += '^';
            line += c < L' ' ? static_cast<char>(c + L'@') : c < 0x100 ? static_cast<char>(c) : '?';
        }
    }

    // Characters are scrambled one by one, so that a line may be cut anywhere; the caret's blank counts.
    static void writeLine(AcDbDxfFiler& filer, std::string line) {
        modeler::scramble(line);
        short code = lineCode;
        std::wstring piece;
        std::size_t length = 0;
        for (const char c : line) {
            const std::size_t width = c == '^' ? 2 : 1;
            if (length + width > longestPiece) {
                filer.writeText(code, piece);
                piece.clear();
                length = 0;
                code = moreCode;
            }
            piece += static_cast<wchar_t>(static_cast<unsigned char>(c));
            length += width;
        }
        filer.writeText(code, piece);
    }

    static void writeLines(AcDbDxfFiler& filer, const std::string& data) {
        for (std::size_t begin = 0; begin < data.size();) {
            const std::size_t end = std::min(data.find('\n', begin), data.size());
            writeLine(filer, data.substr(begin, end - begin));
            begin = end + 1;
        }
    }

    // Objects that are filed outside of drawings have no store beside them.
    static bool hasStore(const AcDbDxfFiler& filer) {
        return filer.filerType() == AcDb::kFileFiler && filer.dwgVersion() >= AcDb::kDHL_1027;
    }
};

Acad::ErrorStatus AcDbModelerGeometry::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbModelerGeometry")) return status;
    std::string data;
    const Acad::ErrorStatus read = readFields(*filer, Filing::groups, *this, [&](const AcDbDxfGroup& group) {
        if (group.code != Filing::lineCode && group.code != Filing::moreCode) return false;
        if (group.code == Filing::moreCode && !data.empty()) data.pop_back(); // goes on with the line
        std::string line;
        Filing::appendNarrow(group.text, line);
        modeler::scramble(line);
        data += line;
        data += '\n';
        return true;
    });
    if (!data.empty()) m_content = std::make_shared<const ModelerContent>(std::move(data));
    return read;
}

// From 2013 on the data stand in a store of the drawing (modelerstore.h), which this names by a flag and an
// id. Text that is not understood goes on as text.
Acad::ErrorStatus AcDbModelerGeometry::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbModelerGeometry");
    const bool hasStore = Filing::hasStore(*filer);
    const std::string stored =
        hasStore && m_content ? m_content->dataFor(filer->dwgVersion()) : std::string();
    if (hasStore && (!m_content || !stored.empty())) {
        filer->writeInteger(Filing::bodyFlagCode, m_hasBodyFlag);
        filer->writeText(Filing::bodyIdCode, m_bodyId.empty() ? Filing::noBodyId : m_bodyId);
        return filer->filerStatus();
    }
    filer->writeInteger(Filing::dataFormCode, m_dataForm);
    if (!m_content) return filer->filerStatus();
    if (hasStore)
        Filing::writeLines(*filer, m_content->data());
    else
        Filing::writeLines(*filer, m_content->dataFor(std::min(filer->dwgVersion(), AcDb::kDHL_1024)));
    return filer->filerStatus();
}

// The data go as bytes: nothing is rewritten between memory and memory.
Acad::ErrorStatus AcDbModelerGeometry::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    (void)filer->writeInt16(m_dataForm);
    (void)filer->writeBool(m_hasBodyFlag);
    (void)filer->writeString(m_bodyId.c_str());
    const std::string none;
    const std::string& data = m_content ? m_content->data() : none;
    (void)filer->writeInt64(static_cast<Adesk::Int64>(data.size()));
    if (!data.empty()) (void)filer->writeBytes(data.data(), static_cast<Adesk::UInt32>(data.size()));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbModelerGeometry::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    (void)filer->readInt16(&m_dataForm);
    (void)filer->readBool(&m_hasBodyFlag);
    wchar_t* id = nullptr;
    if (filer->readString(&id) == Acad::eOk) {
        m_bodyId = id;
        acutDelString(id);
    }
    Adesk::Int64 size = 0;
    (void)filer->readInt64(&size);
    constexpr Adesk::Int64 largest = Adesk::Int64{1} << 31;
    if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
    if (size < 0 || size >= largest) return Acad::eInvalidInput;
    // In steps, so that no more is made room for than there is.
    std::string data;
    constexpr std::size_t step = 1 << 20;
    while (data.size() < static_cast<std::size_t>(size)) {
        const std::size_t begin = data.size();
        data.resize(std::min(begin + step, static_cast<std::size_t>(size)));
        const Acad::ErrorStatus read =
            filer->readBytes(data.data() + begin, static_cast<Adesk::UInt32>(data.size() - begin));
        if (read != Acad::eOk) return read;
    }
    m_content = data.empty() ? nullptr : std::make_shared<const ModelerContent>(std::move(data));
    return filer->filerStatus();
}
