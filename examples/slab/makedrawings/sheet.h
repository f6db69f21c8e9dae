#pragma once

#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "dbmtext.h"
#include "dbtext.h"
#include "gepnt2d.h"

#include <memory>
#include <string>
#include <vector>

/// A vertex of a contour with the host's bulge of the segment that begins there.
struct Corner {
    double x;
    double y;
    double bulge = 0.0;
};

/// A drawing that is being made: layers by name, and entities put into the block that is at work, model space
/// at first. Millimetres throughout. Throws std::runtime_error when the drawing refuses something.
class Sheet {
public:
    Sheet();

    AcDbDatabase& database() { return *m_database; }
    void addLayer(const wchar_t* name, int color, const wchar_t* linetype = L"Continuous",
                  int lineweight = -3);
    /// What is drawn from now on stands on this layer.
    void useLayer(const wchar_t* name);
    /// What is drawn from now on has this linetype.
    void useLinetype(const wchar_t* name);
    /// A new block; what is drawn until endBlock goes into it.
    AcDbObjectId beginBlock(const wchar_t* name);
    void endBlock();

    /// Takes the entity in on the layer in use.
    AcDbObjectId add(AcDbEntity* entity);
    void line(double x1, double y1, double x2, double y2);
    void circle(double x, double y, double radius);
    void arc(double x, double y, double radius, double startAngle, double endAngle);
    void contour(const std::vector<Corner>& corners, double elevation = 0.0);
    void oldContour(const std::vector<Corner>& corners);
    void rectangle(double x, double y, double width, double height);
    void text(double x, double y, double height, const std::wstring& text,
              AcDb::TextHorzMode across = AcDb::kTextLeft, AcDb::TextVertMode upwards = AcDb::kTextBase,
              double rotation = 0.0);
    void paragraphs(double x, double y, double height, double width, const std::wstring& contents,
                    AcDbMText::AttachmentPoint attachment = AcDbMText::kTopLeft);
    void solidHatch(const std::vector<std::vector<Corner>>& loops);
    /// Lines at 45 degrees, so far apart.
    void lineHatch(const std::vector<std::vector<Corner>>& loops, double spacing);
    AcDbObjectId insert(AcDbObjectId block, double x, double y, double scaleX = 1.0, double scaleY = 1.0,
                        double rotation = 0.0, double elevation = 0.0);
    /// A reference with one attribute in its middle.
    void insertLabelled(AcDbObjectId block, double x, double y, const wchar_t* tag, const std::wstring& value,
                        double height);
    /// What an insertion of the block at work asks for, in the block's middle.
    void attributeDefinition(const wchar_t* tag, const wchar_t* prompt, double height);
    void insertArray(AcDbObjectId block, double x, double y, int rows, int columns, double rowSpacing,
                     double columnSpacing, double rotation = 0.0);
    /// A dimension along x (or along y) between two points, its line at this ordinate, with the block that
    /// shows it.
    void dimension(double from, double to, double start, double line, bool isUpright, double textHeight);

    void save(const std::string& file);

private:
    void addLinetype(const wchar_t* name, const wchar_t* description, const std::vector<double>& dashes);
    void hatch(const std::vector<std::vector<Corner>>& loops, double spacing);

    std::unique_ptr<AcDbDatabase> m_database;
    AcDbObjectId m_layer;
    AcDbObjectId m_linetype;
    AcDbObjectId m_block;
};

std::vector<Corner> rectangleCorners(double x, double y, double width, double height);
/// Corners rounded by this radius.
std::vector<Corner> roundedCorners(double x, double y, double width, double height, double radius);
