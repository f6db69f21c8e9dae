#include "metafilerecorder.h"

#include "hostport.h"
#include "winuser.h"

#include <algorithm>
#include <cerrno>
#include <numbers>

namespace hostkit {

namespace {

constexpr std::uint32_t pieceSize = 1U << 20;

std::int32_t cut(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

constexpr std::uint32_t roundUp4(std::uint32_t bytes) { return (bytes + 3) & ~3U; }

// Halves away from zero, as the platform's frames are.
std::int32_t hundredths(std::int64_t pixels, int millimetres, int devicePixels) {
    const std::int64_t value = pixels * millimetres * 200;
    const std::int64_t half = value < 0 ? -devicePixels : devicePixels;
    return cut((value + half) / (2 * static_cast<std::int64_t>(devicePixels)));
}

std::uint32_t realBits(double value) {
    const auto real = static_cast<float>(value);
    std::uint32_t bits;
    static_assert(sizeof bits == sizeof real);
    std::copy_n(reinterpret_cast<const char*>(&real), sizeof bits, reinterpret_cast<char*>(&bits));
    return bits;
}

RECT ordered(const RECT& box) {
    return {std::min(box.left, box.right), std::min(box.top, box.bottom), std::max(box.left, box.right),
            std::max(box.top, box.bottom)};
}

constexpr std::uint32_t unitsOf(wchar_t character) {
    return static_cast<std::uint32_t>(character) > 0xFFFF ? 2 : 1;
}

void writeUnits(RecordBytes& bytes, wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    if (unitsOf(character) == 2)
        bytes.u16(0xD800 + ((code - 0x10000) >> 10)).u16(0xDC00 + (code & 0x3FF));
    else
        bytes.u16(code);
}

struct Ellipse {
    double x, y, xRadius, yRadius;

    explicit Ellipse(const RECT& box)
        : x((static_cast<double>(box.left) + box.right) / 2)
        , y((static_cast<double>(box.top) + box.bottom) / 2)
        , xRadius(x - box.left)
        , yRadius(y - box.top) {}
    /// Of the ray from the centre, on the ellipse drawn out to a circle, anticlockwise as seen.
    double angleTo(POINT to) const { return std::atan2((y - to.y) / yRadius, (to.x - x) / xRadius); }
    void addPoint(double angle, DrawnBox& drawn, std::int64_t margin) const {
        drawn.add(std::lround(x + xRadius * std::cos(angle)), std::lround(y - yRadius * std::sin(angle)),
                  margin);
    }
};

DrawnBox boxOfArc(const Ellipse& ellipse, POINT start, POINT end, std::int64_t margin) {
    constexpr double quarter = std::numbers::pi / 2;
    DrawnBox drawn;
    const double first = ellipse.angleTo(start);
    double last = ellipse.angleTo(end);
    if (last <= first) last += 2 * std::numbers::pi;
    ellipse.addPoint(first, drawn, margin);
    ellipse.addPoint(last, drawn, margin);
    for (double angle = std::ceil(first / quarter) * quarter; angle < last; angle += quarter)
        ellipse.addPoint(angle, drawn, margin);
    return drawn;
}

} // namespace

char* RecordBuffer::takeFromNewPiece(std::uint32_t bytes) {
    if (m_isOverfull || size() + bytes + metafile::endSize > metafile::largestFile) {
        m_isOverfull = true;
        m_room = 0;
        return nullptr;
    }
    if (!m_pieces.empty()) m_filled += m_pieces.back().used;
    const std::uint32_t room = std::max(bytes, pieceSize);
    m_pieces.push_back({std::unique_ptr<char[]>(new char[room]), bytes});
    m_room = room - bytes;
    return m_pieces.back().bytes.get();
}

std::uint64_t RecordBuffer::size() const { return m_pieces.empty() ? 0 : m_filled + m_pieces.back().used; }

MetafileDevice MetafileDevice::screen() {
    const ScreenSize size = currentPort()->screenSize();
    return {std::max(GetSystemMetrics(SM_CXSCREEN), 1), std::max(GetSystemMetrics(SM_CYSCREEN), 1),
            size.width, size.height};
}

RECT DrawnBox::rect() const {
    return left > right ? RECT{0, 0, -1, -1} : RECT{cut(left), cut(top), cut(right), cut(bottom)};
}

// --- Recording ---------------------------------------------------------------------------------------------

MetafileRecorder::MetafileRecorder(const MetafileDevice& device, std::optional<RECT> frame,
                                   std::wstring_view description)
    : m_device(device)
    , m_frame(frame)
    , m_description(description) {
    for (const int stock : {SYSTEM_FONT, BLACK_PEN, WHITE_BRUSH}) {
        const HostGdiObject& object = *GetStockObject(stock);
        take(object, metafile::stockBit | static_cast<std::uint32_t>(stock));
    }
}

bool MetafileRecorder::writeToFile(const std::string& path) {
    auto file = std::make_unique<AtomicFile>(path);
    errno = file->error();
    if (!file->isGood()) return false;
    m_file = std::move(file);
    return true;
}

void MetafileRecorder::start() {
    m_hasStarted = true;
    for (const int stock : {BLACK_PEN, WHITE_BRUSH})
        begin(MetafileRecord::selectObject, metafile::valueSize)
            .u32(metafile::stockBit | static_cast<std::uint32_t>(stock));
}

void MetafileRecorder::selectPenAgain() {
    m_isPenLost = false;
    value(MetafileRecord::selectObject, m_penNumber);
}

RecordBytes MetafileRecorder::begin(MetafileRecord record, std::uint32_t size) {
    if (!m_hasStarted) start();
    RecordBytes bytes(m_records.take(size));
    if (!bytes) return bytes;
    ++m_count;
    return bytes.u32(static_cast<std::uint32_t>(record)).u32(size);
}

BOOL MetafileRecorder::point(MetafileRecord record, POINT point) {
    return begin(record, metafile::pointSize).i32(point.x).i32(point.y) ? TRUE : FALSE;
}

BOOL MetafileRecorder::value(MetafileRecord record, std::uint32_t value) {
    return begin(record, metafile::valueSize).u32(value) ? TRUE : FALSE;
}

BOOL MetafileRecorder::box(MetafileRecord record, const RECT& box, const DrawnBox& drawn) {
    keepPen();
    m_isPenLost = m_brushColor == m_penColor;
    m_drawn.add(drawn);
    return begin(record, metafile::boxSize).rect({box.left, box.top, box.right - 1, box.bottom - 1}) ? TRUE
                                                                                                     : FALSE;
}

BOOL MetafileRecorder::rectangle(const RECT& given) {
    const RECT rect = ordered(given);
    if (isEmpty(rect)) return TRUE;
    DrawnBox drawn;
    drawn.add(rect.left, rect.top, m_penMargin);
    drawn.add(rect.right - 1, rect.bottom - 1, m_penMargin);
    return box(MetafileRecord::rectangle, rect, drawn);
}

BOOL MetafileRecorder::ellipse(const RECT& given) {
    const RECT rect = ordered(given);
    if (isEmpty(rect)) return TRUE;
    DrawnBox drawn;
    drawn.add(rect.left, rect.top, m_penMargin);
    drawn.add(rect.right, rect.bottom, m_penMargin);
    return box(MetafileRecord::ellipse, rect, drawn);
}

BOOL MetafileRecorder::arc(const RECT& given, POINT start, POINT end) {
    const RECT rect = ordered(given);
    if (isEmpty(rect)) return TRUE;
    keepPen();
    m_drawn.add(boxOfArc(Ellipse(rect), start, end, m_penMargin));
    return begin(MetafileRecord::arc, metafile::arcSize)
                   .rect({rect.left, rect.top, rect.right - 1, rect.bottom - 1})
                   .i32(start.x)
                   .i32(start.y)
                   .i32(end.x)
                   .i32(end.y)
               ? TRUE
               : FALSE;
}

BOOL MetafileRecorder::polygon(const POINT* points, int count, bool isClosed) {
    constexpr int mostPoints = 1 << 28;
    if (!points || count < 2 || count > mostPoints) return FALSE;
    keepPen();
    m_isPenLost = isClosed && m_brushColor == m_penColor;
    DrawnBox drawn;
    bool isShort = true;
    for (const POINT* at = points; at != points + count; ++at) {
        drawn.add(at->x, at->y, m_penMargin);
        isShort =
            isShort && at->x == static_cast<std::int16_t>(at->x) && at->y == static_cast<std::int16_t>(at->y);
    }
    m_drawn.add(drawn);
    const auto size = static_cast<std::uint32_t>(count) * (isShort ? 4 : 8) + metafile::polygonStart;
    const MetafileRecord record = isClosed
                                      ? (isShort ? MetafileRecord::polygon16 : MetafileRecord::polygon)
                                      : (isShort ? MetafileRecord::polyline16 : MetafileRecord::polyline);
    RecordBytes bytes = begin(record, size);
    bytes.rect(drawn.rect()).u32(static_cast<std::uint32_t>(count));
    for (const POINT* at = points; bytes && at != points + count; ++at) {
        if (isShort)
            bytes.u16(static_cast<std::uint32_t>(at->x)).u16(static_cast<std::uint32_t>(at->y));
        else
            bytes.i32(at->x).i32(at->y);
    }
    return bytes ? TRUE : FALSE;
}

// --- Text --------------------------------------------------------------------------------------------------

// A level cell leaves out its last column and row, a turned one is rounded outwards.
DrawnBox MetafileRecorder::cell(POINT at, int width, UINT align) const {
    const std::int64_t before =
        (align & TA_CENTER) == TA_CENTER ? (std::int64_t{width} + 1) / 2 : (align & TA_RIGHT ? width : 0);
    std::int64_t up = m_face.ascent(), down = m_face.descent();
    if ((align & TA_BASELINE) == TA_BOTTOM) up = m_face.height(), down = 0;
    if ((align & TA_BASELINE) == TA_TOP) up = 0, down = m_face.height();
    DrawnBox box;
    if (m_textAngle == 0.0) {
        box.add(at.x - before, at.y - up);
        box.add(at.x - before + width - 1, at.y + down - 1);
        return box;
    }
    const double cosine = std::cos(m_textAngle), sine = std::sin(m_textAngle);
    // A right angle stays one, whatever the last digits of its cosine.
    const auto outward = [](double value, bool isUp) {
        constexpr double rounding = 1e-6;
        return static_cast<std::int64_t>(isUp ? std::ceil(value - rounding) : std::floor(value + rounding));
    };
    for (const std::int64_t along : {-before, width - before})
        for (const std::int64_t above : {up, -down}) {
            const double x = at.x + static_cast<double>(along) * cosine - static_cast<double>(above) * sine;
            const double y = at.y - static_cast<double>(along) * sine - static_cast<double>(above) * cosine;
            box.add(outward(x, false), outward(y, false));
            box.add(outward(x, true), outward(y, true));
        }
    return box;
}

BOOL MetafileRecorder::text(POINT at, std::wstring_view text, UINT align) {
    constexpr std::size_t mostCharacters = 1U << 28;
    if (text.size() > mostCharacters) return FALSE;
    if (text.empty()) return TRUE;
    std::uint32_t units = 0;
    std::int64_t width = 0;
    for (const wchar_t character : text) {
        units += unitsOf(character);
        width += characterAdvance(m_face, character);
    }
    const DrawnBox drawn = cell(at, cut(width), align);
    m_drawn.add(drawn);
    const std::uint32_t advances = metafile::textStart + roundUp4(2 * units);
    RecordBytes bytes = begin(MetafileRecord::textOut, advances + 4 * units);
    bytes.rect(drawn.rect()).u32(1);
    bytes.u32(realBits(100.0 * m_device.widthMillimetres() / m_device.widthPixels));
    bytes.u32(realBits(100.0 * m_device.heightMillimetres() / m_device.heightPixels));
    bytes.i32(at.x).i32(at.y).u32(units).u32(metafile::textStart).u32(0).rect({0, 0, -1, -1}).u32(advances);
    for (const wchar_t character : text) writeUnits(bytes, character);
    bytes.zeros(roundUp4(2 * units) - 2 * units);
    for (const wchar_t character : text) {
        bytes.i32(characterAdvance(m_face, character));
        if (unitsOf(character) == 2) bytes.u32(0);
    }
    return bytes ? TRUE : FALSE;
}

// --- Objects -----------------------------------------------------------------------------------------------

// What drawing calls need of a selected object, so that it may be deleted.
void MetafileRecorder::take(const HostGdiObject& object, std::uint32_t number) {
    if (object.kind == HostGdiObject::Kind::pen) {
        const auto& pen = static_cast<const HostPen&>(object);
        m_penNumber = number;
        m_penColor = pen.color;
        m_isPenLost = false;
        const bool isThin = pen.color == noColor || pen.width <= 1;
        m_penMargin = isThin ? 0 : (std::int64_t{pen.width} + 1) / 2 + 1;
    } else if (object.kind == HostGdiObject::Kind::brush) {
        m_brushColor = static_cast<const HostBrush&>(object).color;
    } else {
        const auto& font = static_cast<const HostFont&>(object);
        m_face = font.face;
        m_textAngle = font.logical.lfEscapement % 3600 * std::numbers::pi / 1800;
    }
}

std::uint32_t MetafileRecorder::freeIndex() const {
    const auto found = std::find(m_isTaken.begin(), m_isTaken.end(), false);
    return static_cast<std::uint32_t>(found - m_isTaken.begin()) + 1;
}

bool MetafileRecorder::select(HostGdiObject& object) {
    std::uint32_t number = metafile::stockBit | static_cast<std::uint32_t>(object.stockNumber);
    if (object.stockNumber < 0) {
        const auto known = m_indexes.find(&object);
        number = known != m_indexes.end() ? known->second : freeIndex();
        if (number > metafile::lastObject) return false;
        if (known == m_indexes.end()) {
            create(object, number);
            m_isTaken.resize(std::max<std::size_t>(m_isTaken.size(), number));
            m_isTaken[number - 1] = true;
            m_indexes.emplace(&object, number);
            object.recordedBy.push_back(weak_from_this());
        }
    }
    take(object, number);
    return value(MetafileRecord::selectObject, number) != FALSE;
}

void MetafileRecorder::forget(const HostGdiObject& object) {
    const auto known = m_indexes.find(&object);
    if (known == m_indexes.end()) return;
    if (known->second == m_penNumber)
        m_isPenLost = false, m_penColor = noColor; // it cannot be selected again
    value(MetafileRecord::deleteObject, known->second);
    m_isTaken[known->second - 1] = false;
    m_indexes.erase(known);
}

namespace {

void writeFont(RecordBytes bytes, const LOGFONTW& font) {
    bytes.i32(font.lfHeight)
        .i32(font.lfWidth)
        .i32(font.lfEscapement)
        .i32(font.lfOrientation)
        .i32(font.lfWeight);
    const auto four = [](BYTE a, BYTE b, BYTE c, BYTE d) {
        return std::uint32_t{a} | std::uint32_t{b} << 8 | std::uint32_t{c} << 16 | std::uint32_t{d} << 24;
    };
    bytes.u32(four(font.lfItalic, font.lfUnderline, font.lfStrikeOut, font.lfCharSet));
    bytes.u32(four(font.lfOutPrecision, font.lfClipPrecision, font.lfQuality, font.lfPitchAndFamily));
    bool isOver = false;
    for (const wchar_t character : font.lfFaceName) {
        isOver = isOver || character == 0;
        bytes.u16(isOver ? 0 : static_cast<std::uint32_t>(unitsOf(character) == 2 ? L'?' : character));
    }
    bytes.zeros(metafile::fontNamesSize).u32(metafile::fontMark).u32(0);
}

} // namespace

void MetafileRecorder::create(const HostGdiObject& object, std::uint32_t index) {
    switch (object.kind) {
    case HostGdiObject::Kind::font:
        writeFont(begin(MetafileRecord::createFont, metafile::fontSize).u32(index),
                  static_cast<const HostFont&>(object).logical);
        break;
    case HostGdiObject::Kind::brush: {
        LOGBRUSH brush;
        GetObjectW(const_cast<HostGdiObject*>(&object), sizeof brush, &brush);
        begin(MetafileRecord::createBrush, metafile::brushSize)
            .u32(index)
            .u32(brush.lbStyle)
            .u32(brush.lbColor)
            .u32(0);
        break;
    }
    case HostGdiObject::Kind::pen: {
        LOGPEN pen;
        GetObjectW(const_cast<HostGdiObject*>(&object), sizeof pen, &pen);
        begin(MetafileRecord::createPen, metafile::penSize)
            .u32(index)
            .u32(pen.lopnStyle)
            .i32(pen.lopnWidth.x)
            .u32(0)
            .u32(pen.lopnColor);
        break;
    }
    }
}

// --- The end -----------------------------------------------------------------------------------------------

std::string MetafileRecorder::header() const {
    const RECT bounds = m_drawn.rect();
    const auto frameOf = [&](const RECT& box) -> RECT {
        const int width = m_device.widthMillimetres(), height = m_device.heightMillimetres();
        return {hundredths(box.left, width, m_device.widthPixels),
                hundredths(box.top, height, m_device.heightPixels),
                hundredths(box.right, width, m_device.widthPixels),
                hundredths(box.bottom, height, m_device.heightPixels)};
    };
    std::uint32_t units = m_description.empty() ? 0 : 2;
    for (const wchar_t character : m_description) units += unitsOf(character);
    const std::uint32_t size = metafile::headerSize + roundUp4(2 * units);
    const auto fileSize = static_cast<std::uint32_t>(size + m_records.size());
    std::string header(size, '\0');
    RecordBytes bytes(header.data());
    bytes.u32(static_cast<std::uint32_t>(MetafileRecord::header)).u32(size);
    bytes.rect(bounds).rect(m_frame ? *m_frame : frameOf(bounds));
    bytes.u32(metafile::signature).u32(metafile::version).u32(fileSize).u32(m_count + 1);
    bytes.u16(static_cast<std::uint32_t>(m_isTaken.size()) + 1).u16(0);
    bytes.u32(units).u32(units ? metafile::headerSize : 0).u32(0);
    bytes.i32(m_device.widthPixels).i32(m_device.heightPixels);
    bytes.i32(m_device.widthMillimetres()).i32(m_device.heightMillimetres());
    bytes.zeros(12).i32(m_device.widthMicrometres).i32(m_device.heightMicrometres);
    for (const wchar_t character : m_description) writeUnits(bytes, character);
    return header;
}

bool MetafileRecorder::finish(std::string& bytes) {
    constexpr std::uint32_t noPaletteOffset = 16;
    m_hasStarted = true;
    begin(MetafileRecord::endOfFile, metafile::endSize).u32(0).u32(noPaletteOffset).u32(metafile::endSize);
    errno = EFBIG;
    const std::string start = header();
    if (m_records.isOverfull() || m_records.size() + start.size() > metafile::largestFile) return false;
    if (!m_file) {
        bytes = start;
        m_records.writeTo([&](std::string_view piece) { bytes += piece; });
        return true;
    }
    m_file->write(start);
    m_records.writeTo([&](std::string_view piece) { m_file->write(piece); });
    const bool isWritten = m_file->commit();
    errno = m_file->error();
    return isWritten;
}

} // namespace hostkit
