#include "dimensionsizes.h"

#include <algorithm>
#include <limits>

namespace hostkit {

DimensionSizes::DimensionSizes(const DimensionVariables& variables, const DimensionWording& wording) {
    const double scale = variables.scale();
    isTicked = variables.dimtsz > 0.0;
    arrow = (isTicked ? variables.dimtsz : variables.dimasz) * scale;
    offset = variables.dimexo * scale;
    extension = variables.dimexe * scale;
    fixedLength = variables.dimfxlen * scale;
    beyond = variables.dimdle * scale;
    centre = variables.dimcen * scale;
    gap = std::abs(variables.dimgap) * scale;
    isFramed = variables.dimgap < 0.0;
    textHeight = wording.height;
    halfWidth = 0.5 * wording.ink.width;
    halfHeight = 0.5 * wording.ink.height;
    hasText = !wording.contents.empty();
    isParted = hasText && wording.isParted;
    partOffset = wording.offset;
}

double DimensionSizes::liftBy(const DimensionVariables& variables) const {
    constexpr int below = 4;
    // Read the other way round, what is above in the text is below the line.
    if (isParted) return variables.dimtxtdirection ? -partOffset : partOffset;
    if (isOnLine(variables)) return 0.0;
    return variables.dimtad == below ? -lift() : lift();
}

LineStretch stretchInText(const AcGePoint2d& start, const AcGeVector2d& direction,
                          const DimensionSizes& sizes, const AcGePoint2d& centre, double angle) {
    const AcGeVector2d along = directionOf(angle);
    const AcGeVector2d half(sizes.halfWidth + sizes.gap, sizes.halfHeight + sizes.gap);
    const AcGeVector2d axes[] = {along, along.perpVector()};
    LineStretch stretch{-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    for (unsigned int axis = 0; axis < 2; ++axis) {
        const double place = (start - centre).dotProduct(axes[axis]);
        const double speed = direction.dotProduct(axes[axis]);
        constexpr double parallel = 1e-9;
        if (std::abs(speed) < parallel) {
            if (std::abs(place) >= half[axis]) return {};
            continue;
        }
        const double first = (-half[axis] - place) / speed;
        const double second = (half[axis] - place) / speed;
        stretch.from = std::max(stretch.from, std::min(first, second));
        stretch.to = std::min(stretch.to, std::max(first, second));
    }
    return stretch.isEmpty() ? LineStretch() : stretch;
}

std::array<AcGePoint2d, 4> cornersAround(const DimensionSizes& sizes, const AcGePoint2d& centre,
                                         double angle) {
    const AcGeVector2d along = directionOf(angle);
    const AcGeVector2d right = along * (sizes.halfWidth + sizes.gap);
    const AcGeVector2d up = along.perpVector() * (sizes.halfHeight + sizes.gap);
    return {centre - right - up, centre + right - up, centre + right + up, centre - right + up};
}

AcGeVector2d unitOf(const AcGeVector2d& vector) {
    const double length = std::hypot(vector.x, vector.y);
    return length > 0.0 ? vector / length : AcGeVector2d();
}

AcGeVector2d readingDirection(const AcGeVector2d& direction, double horizontal) {
    const AcGeVector2d level = directionOf(horizontal);
    const double right = direction.dotProduct(level);
    const double up = level.crossProduct(direction);
    constexpr double upright = 1e-9;
    const bool isBackward = std::abs(right) <= upright ? up < 0.0 : right < 0.0;
    return isBackward ? -direction : direction;
}

bool isFinitePoint(const AcGePoint2d& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

DimensionPiece& PieceWriter::add(DimensionPiece::Form form, PieceLook look) {
    DimensionPiece& piece = m_layout.pieces.emplace_back();
    piece.form = form;
    piece.look = look;
    return piece;
}

void PieceWriter::line(PieceLook look, const AcGePoint2d& from, const AcGePoint2d& to) {
    DimensionPiece& piece = add(DimensionPiece::Form::line, look);
    piece.at[0] = from;
    piece.at[1] = to;
}

void PieceWriter::arc(PieceLook look, const AcGePoint2d& centre, double radius, double from, double to) {
    DimensionPiece& piece = add(DimensionPiece::Form::arc, look);
    piece.at[0] = centre;
    piece.size = radius;
    piece.startAngle = from;
    piece.endAngle = to;
}

void PieceWriter::arrow(int which, const AcGePoint2d& tip, const AcGeVector2d& direction,
                        const AcGeVector2d& up) {
    const double size = m_sizes.arrow;
    if (!(size > 0.0)) return;
    const AcGeVector2d across = direction.perpVector();
    if (m_sizes.isTicked) {
        const AcGeVector2d slant = (direction + across) * (0.5 * size);
        return line(PieceLook::dimensionLine, tip - slant, tip + slant);
    }
    const AcDbObjectId block = m_arrows.blocks[which];
    if (block.isNull()) {
        DimensionPiece& piece = add(DimensionPiece::Form::triangle, PieceLook::filledArrow);
        const AcGePoint2d base = tip - direction * size;
        const AcGeVector2d half = across * (across.dotProduct(up) < 0.0 ? -size / 6.0 : size / 6.0);
        piece.at[0] = base + half;
        piece.at[1] = base - half;
        piece.at[2] = tip;
        return;
    }
    DimensionPiece& piece = add(DimensionPiece::Form::insert, PieceLook::arrow);
    piece.at[0] = tip;
    piece.size = size;
    piece.startAngle = angleOf(direction);
    piece.block = block;
}

void PieceWriter::text(const AcGePoint2d& centre, double rotation) {
    m_layout.textCentre = centre;
    m_layout.textRotation = rotation;
    if (!m_sizes.hasText) return;
    DimensionPiece& piece = add(DimensionPiece::Form::paragraph, PieceLook::text);
    piece.at[0] = centre;
    piece.size = m_sizes.textHeight;
    piece.startAngle = rotation;
    if (m_sizes.isFramed) frame();
}

void PieceWriter::frame() {
    const auto corners = cornersAround(m_sizes, m_layout.textCentre, m_layout.textRotation);
    for (std::size_t i = 0; i < 4; ++i) line(PieceLook::dimensionLine, corners[i], corners[(i + 1) % 4]);
}

void PieceWriter::point(const AcGePoint2d& place, int code) {
    DimensionPiece& piece = add(DimensionPiece::Form::point, PieceLook::definition);
    piece.at[0] = place;
    piece.code = code;
}

} // namespace hostkit
