#include "paragraphparts.h"

#include "dbcolor.h"
#include "dbline.h"
#include "dbmtext.h"
#include "dbtext.h"
#include "paragraphlayout.h"
#include "paragraphstack.h"

#include <algorithm>

namespace hostkit {
namespace {

// Without the blanks around, which nobody sees.
ParagraphPiece trimmed(const ParagraphPiece& piece) {
    ParagraphPiece shorter = piece;
    const std::size_t first = std::min(piece.text.find_first_not_of(L' '), piece.text.size());
    shorter.text = piece.text.substr(first, piece.text.find_last_not_of(L' ') + 1 - first);
    shorter.x += advanceOf(piece.text.substr(0, first), piece.look);
    shorter.width = advanceOf(shorter.text, piece.look);
    return shorter;
}

std::wstring withLines(const ParagraphPiece& piece) {
    std::wstring text;
    if (piece.look.isUnderlined) text += L"%%u";
    if (piece.look.isOverlined) text += L"%%o";
    if (piece.look.isStruckOut) text += L"%%k";
    return text + piece.text;
}

class PartMaker {
public:
    explicit PartMaker(const AcDbMText& paragraph)
        : m_paragraph(paragraph)
        , m_plain(ParagraphLook::ofStyle(paragraph.textStyle(), paragraph.textHeight()))
        , m_x(paragraph.direction())
        , m_y(paragraph.normal().crossProduct(m_x)) {}

    std::unique_ptr<AcDbEntity> make(const ParagraphPiece& piece, double base) const {
        std::unique_ptr<AcDbEntity> entity;
        if (piece.kind == ParagraphPiece::Kind::letters)
            entity = text(trimmed(piece), base);
        else
            entity = line(piece, base);
        if (entity) takeLook(*entity, piece.look);
        return entity;
    }

private:
    AcGePoint3d at(double x, double y) const { return m_paragraph.location() + m_x * x + m_y * y; }

    std::unique_ptr<AcDbEntity> text(const ParagraphPiece& piece, double base) const {
        if (piece.text.empty()) return nullptr;
        auto text = std::make_unique<AcDbText>(AcGePoint3d::kOrigin, withLines(piece).c_str(),
                                               m_paragraph.textStyle(), piece.look.height, 0.0);
        (void)text->setNormal(m_paragraph.normal());
        (void)text->setPosition(at(piece.x, base + piece.rise));
        (void)text->setRotation(m_paragraph.rotation());
        ParagraphLook plain = m_plain;
        plain.height = piece.look.height;
        plain.widthFactor = 1.0;
        (void)text->setWidthFactor(piece.width / advanceOf(piece.text, plain));
        (void)text->setOblique(piece.look.oblique);
        return text;
    }

    std::unique_ptr<AcDbEntity> line(const ParagraphPiece& piece, double base) const {
        const double up = piece.kind == ParagraphPiece::Kind::slash ? piece.look.height : 0.0;
        const double from = base + piece.rise;
        auto line = std::make_unique<AcDbLine>(at(piece.x, from), at(piece.x + piece.width, from + up));
        (void)line->setNormal(m_paragraph.normal());
        return line;
    }

    void takeLook(AcDbEntity& entity, const ParagraphLook& look) const {
        (void)entity.setPropertiesFrom(&m_paragraph);
        if (look.colorIndex) (void)entity.setColorIndex(static_cast<Adesk::UInt16>(*look.colorIndex));
        if (!look.rgb) return;
        AcCmColor color;
        color.setRGB(static_cast<Adesk::UInt8>(*look.rgb >> 16), static_cast<Adesk::UInt8>(*look.rgb >> 8),
                     static_cast<Adesk::UInt8>(*look.rgb));
        (void)entity.setColor(color);
    }

    const AcDbMText& m_paragraph;
    ParagraphLook m_plain;
    AcGeVector3d m_x;
    AcGeVector3d m_y;
};

} // namespace

std::vector<std::unique_ptr<AcDbEntity>> partsOf(const AcDbMText& paragraph) {
    std::vector<std::unique_ptr<AcDbEntity>> parts;
    const ParagraphLayout layout = paragraph.layout();
    const PartMaker maker(paragraph);
    const double top = paragraph.topOf(layout);
    for (const ParagraphLine& line : layout.lines)
        for (const ParagraphPiece& piece : line.pieces)
            if (auto part = maker.make(piece, top + line.base)) parts.push_back(std::move(part));
    return parts;
}

} // namespace hostkit
