#pragma once

#include "picturesink.h"
#include "plotlook.h"

#include <string>

/// The box around all that was drawn, seen from above. Coordinates that are no numbers, or beyond what a
/// drawing can mean, count for nothing.
class PictureExtents final : public PictureSink {
public:
    bool isEmpty() const { return m_box.isEmpty(); }
    double minX() const { return m_box.minX; }
    double minY() const { return m_box.minY; }
    double maxX() const { return m_box.maxX; }
    double maxY() const { return m_box.maxY; }

    void stroke(const hostkit::PicturePath& path, const StrokeStyle& style) override;
    void fill(const hostkit::PicturePath& path, std::uint32_t rgb, double opacity) override;
    void text(const hostkit::PlacedText& text) override;
    void dot(const AcGePoint3d& point, std::uint32_t rgb) override;
    void endlessLine(const AcGePoint3d&, const AcGeVector3d&, bool, const StrokeStyle&) override {}
    /// What lies beyond the box of the clip counts as on its edge.
    void beginClip(const hostkit::PicturePath& path) override;
    void endClip() override;
    double scale() const override { return 0.0; }

private:
    struct Box {
        double minX = 1.0;
        double minY = 1.0;
        double maxX = 0.0;
        double maxY = 0.0;
        bool isEmpty() const { return minX > maxX; }
    };
    void add(double x, double y, double margin = 0.0);

    Box m_box;
    std::vector<Box> m_clips;
};

/// The paper: a size in millimetres, and the box of the drawing that is fitted on it inside the margin.
struct PictureFrame {
    double width = 0.0;
    double height = 0.0;
    double scale = 1.0;   ///< millimetres for a drawing unit
    double originX = 0.0; ///< drawing coordinates of the paper's lower left corner
    double originY = 0.0;

    /// The page of at most that size which fits the extents' shape, or exactly that size with the drawing in
    /// its middle. Extents without width or height get a page all the same.
    static PictureFrame fitted(const PictureExtents& extents, double width, double height, bool isExactSize);
    /// The page that the extents need at that scale, with a margin.
    static PictureFrame scaled(const PictureExtents& extents, double scale);
};

/// The picture as an SVG document in UTF-8, y upwards turned down, in millimetres. On light paper lines and
/// texts in a light colour are darkened until they can be read. Lines are thin, weights count up to half a
/// millimetre, unless they are to be as they are.
class SvgPicture final : public PictureSink {
public:
    SvgPicture(const PictureFrame& frame, const std::wstring& title, const Paper& paper = {},
               bool hasWeights = false);

    void stroke(const hostkit::PicturePath& path, const StrokeStyle& style) override;
    void fill(const hostkit::PicturePath& path, std::uint32_t rgb, double opacity) override;
    void text(const hostkit::PlacedText& text) override;
    void dot(const AcGePoint3d& point, std::uint32_t rgb) override;
    void endlessLine(const AcGePoint3d& point, const AcGeVector3d& direction, bool isBothWays,
                     const StrokeStyle& style) override;
    void beginClip(const hostkit::PicturePath& path) override;
    void endClip() override;
    double scale() const override { return m_frame.scale; }

    /// The whole document; nothing can be drawn after it.
    std::string finish();

private:
    double pageX(double x) const { return (x - m_frame.originX) * m_frame.scale; }
    double pageY(double y) const { return m_frame.height - (y - m_frame.originY) * m_frame.scale; }
    void appendNumber(double value);
    /// In thousandths of a millimetre.
    struct PagePoint {
        long long x = 0;
        long long y = 0;
    };
    PagePoint onPage(const AcGePoint3d& point) const;
    void appendPoint(const PagePoint& point);
    void appendLine(const PagePoint& from, const PagePoint& to);
    bool appendPath(const hostkit::PicturePath& path);
    void appendRun(const hostkit::TextRun& run, double size, double& rise);
    void openGroup(const std::string& attributes);
    void closeGroup();
    std::string strokeAttributes(const StrokeStyle& style) const;

    std::uint32_t readable(std::uint32_t rgb) const;

    PictureFrame m_frame;
    Paper m_paper;
    bool m_hasWeights;
    std::string m_body;
    std::string m_group; ///< attributes of the open group of paths; empty when none is open
    int m_clips = 0;
    int m_openClips = 0;
};
