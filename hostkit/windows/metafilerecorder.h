// The recorder of an enhanced metafile: one record a call, bounds, objects and the finished bytes; leaves out
// mappings, paths, regions and bitmaps.
#pragma once

#include "atomicfile.h"
#include "metafilerecords.h"
#include "wingdi.h"

#include <cmath>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace hostkit {

/// Bytes of a record in their order; what is written to a null place is dropped.
class RecordBytes {
public:
    explicit RecordBytes(char* at)
        : m_at(at) {}
    explicit operator bool() const { return m_at != nullptr; }

    RecordBytes& u32(std::uint32_t value) {
        if (m_at) m_at = little<4>(value);
        return *this;
    }
    RecordBytes& u16(std::uint32_t value) {
        if (m_at) m_at = little<2>(value);
        return *this;
    }
    RecordBytes& i32(std::int64_t value) { return u32(static_cast<std::uint32_t>(value)); }
    RecordBytes& rect(const RECT& rect) {
        return i32(rect.left).i32(rect.top).i32(rect.right).i32(rect.bottom);
    }
    RecordBytes& zeros(std::size_t bytes) {
        for (; m_at && bytes > 0; --bytes) *m_at++ = 0;
        return *this;
    }

private:
    template <int Bytes>
    char* little(std::uint32_t value) {
        for (int i = 0; i < Bytes; ++i) m_at[i] = static_cast<char>(value >> (8 * i));
        return m_at + Bytes;
    }

    char* m_at;
};

/// Records one after another in pieces that never move, so that a record costs its bytes alone.
class RecordBuffer {
public:
    /// Room behind what stands there. Null once all of it would be more than a metafile's size can say; from
    /// then on nothing is taken.
    char* take(std::uint32_t bytes) {
        if (bytes > m_room) return takeFromNewPiece(bytes);
        m_room -= bytes;
        return m_pieces.back().bytes.get() + (m_pieces.back().used += bytes) - bytes;
    }
    bool isOverfull() const { return m_isOverfull; }
    /// All that was taken, in order. From this on nothing is added.
    template <class Sink>
    void writeTo(Sink&& sink) const {
        for (const Piece& piece : m_pieces) sink(std::string_view(piece.bytes.get(), piece.used));
    }
    std::uint64_t size() const;

private:
    struct Piece {
        std::unique_ptr<char[]> bytes;
        std::size_t used;
    };
    char* takeFromNewPiece(std::uint32_t bytes);

    std::vector<Piece> m_pieces;
    std::uint64_t m_filled = 0; ///< of all pieces but the last
    std::uint32_t m_room = 0;
    bool m_isOverfull = false;
};

/// The device that a metafile is recorded for.
struct MetafileDevice {
    int widthPixels;
    int heightPixels;
    int widthMicrometres;
    int heightMicrometres;

    int widthMillimetres() const { return (widthMicrometres + 500) / 1000; }
    int heightMillimetres() const { return (heightMicrometres + 500) / 1000; }
    /// From the port.
    static MetafileDevice screen();
};

/// The box around what was drawn, all edges inclusive.
struct DrawnBox {
    std::int64_t left = INT64_MAX;
    std::int64_t top = INT64_MAX;
    std::int64_t right = INT64_MIN;
    std::int64_t bottom = INT64_MIN;

    void add(std::int64_t x, std::int64_t y, std::int64_t margin = 0) {
        left = x - margin < left ? x - margin : left;
        right = x + margin > right ? x + margin : right;
        top = y - margin < top ? y - margin : top;
        bottom = y + margin > bottom ? y + margin : bottom;
    }
    void add(const DrawnBox& other) {
        if (other.left > other.right) return;
        add(other.left, other.top);
        add(other.right, other.bottom);
    }
    /// 0, 0, -1, -1 for an empty one; cut to 32 bits.
    RECT rect() const;
};

/// What one recording context has recorded. Each call gives one record at once. Units are device pixels.
///
/// The first record is preceded by the selection of the stock pen and brush, which changes nothing by itself:
/// programs that draw nothing until a pen was selected show the picture then. Some also lose the pen once
/// they have filled a figure in its colour: then its selection is recorded anew before the next stroke.
///
/// A call that would make the file larger than its header can tell (4 GiB) fails, and so does finish().
class MetafileRecorder : public std::enable_shared_from_this<MetafileRecorder> {
public:
    /// `description` as CreateEnhMetaFileW takes it, without the two closing zeros.
    MetafileRecorder(const MetafileDevice& device, std::optional<RECT> frame, std::wstring_view description);

    /// The bytes go to that file, at finish() and in one step. False, with errno, where it cannot be made.
    bool writeToFile(const std::string& path);

    BOOL moveTo(POINT to) { return point(MetafileRecord::moveTo, to); }
    BOOL lineTo(POINT from, POINT to) {
        keepPen();
        m_drawn.add(from.x, from.y, m_penMargin);
        m_drawn.add(to.x, to.y, m_penMargin);
        return point(MetafileRecord::lineTo, to);
    }
    /// The box in any order of its corners; one without width or height gives no record.
    BOOL arc(const RECT& box, POINT start, POINT end);
    BOOL rectangle(const RECT& box);
    BOOL ellipse(const RECT& box);
    /// Fails below two points.
    BOOL polygon(const POINT* points, int count, bool isClosed);
    /// At that point by the alignment; no text gives no record.
    BOOL text(POINT at, std::wstring_view text, UINT align);
    BOOL value(MetafileRecord record, std::uint32_t value);

    /// The create record at an object's first selection. False where the header could not count the object.
    bool select(HostGdiObject& object);
    /// The object goes. What was selected stays in force for what is drawn.
    void forget(const HostGdiObject& object);

    /// Ends the recording: completes the header and writes the file where there is one; else `bytes` takes
    /// all. False, with errno for a file, where that failed: then no file was made or replaced.
    bool finish(std::string& bytes);

private:
    void start();
    void keepPen() {
        if (m_isPenLost) selectPenAgain();
    }
    void selectPenAgain();
    RecordBytes begin(MetafileRecord record, std::uint32_t size);
    BOOL point(MetafileRecord record, POINT point);
    BOOL box(MetafileRecord record, const RECT& box, const DrawnBox& drawn);
    void create(const HostGdiObject& object, std::uint32_t index);
    void take(const HostGdiObject& object, std::uint32_t number);
    std::uint32_t freeIndex() const;
    std::string header() const;
    DrawnBox cell(POINT at, int width, UINT align) const;

    MetafileDevice m_device;
    std::optional<RECT> m_frame;
    std::wstring m_description;
    std::unique_ptr<AtomicFile> m_file;
    RecordBuffer m_records;
    std::uint32_t m_count = 0;
    DrawnBox m_drawn;
    std::unordered_map<const HostGdiObject*, std::uint32_t> m_indexes;
    std::vector<bool> m_isTaken; ///< by index, from 1 on
    std::int64_t m_penMargin = 0;
    std::uint32_t m_penNumber = 0;
    COLORREF m_penColor = 0;
    COLORREF m_brushColor = 0;
    bool m_isPenLost = false; ///< a figure was filled in the pen's colour
    FontFace m_face;
    double m_textAngle = 0.0;
    bool m_hasStarted = false;
};

} // namespace hostkit
