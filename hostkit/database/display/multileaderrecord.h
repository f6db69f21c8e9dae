// What the record of a multileader says of its picture.
#pragma once

#include "dbid.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "leaderlines.h"

#include <string>
#include <vector>

class AcDbOpaqueEntity;

namespace hostkit {

/// A colour as these records pack it, in 32 bits: its kind in the highest ones.
using PackedColor = std::uint32_t;
constexpr PackedColor byBlockColor = 0xC1000000;

/// Values are those of the context, which has them in drawing units, scale and all.
struct MultileaderRecord {
    struct Line {
        std::vector<AcGePoint3d> points;
        std::vector<LeaderGap> gaps;
        PackedColor color = byBlockColor; ///< by block: the multileader's
        double arrowSize = 0.0;           ///< 0: the multileader's
        AcDbObjectId arrow;               ///< null: the multileader's
    };
    /// Lines that end at one landing.
    struct Branch {
        std::vector<Line> lines;
        AcGePoint3d landing;
        AcGeVector3d direction; ///< in which the landing leads to the contents
        double length = 0.0;
        bool hasLanding = false;     ///< else the lines end at their last points
        bool isLed = false;          ///< the landing has a length to be shown
        std::vector<LeaderGap> gaps; ///< of the landing
    };
    struct Text {
        std::wstring contents;
        AcGePoint3d location;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        AcGeVector3d direction = AcGeVector3d::kXAxis;
        AcDbObjectId style;
        PackedColor color = byBlockColor;
        double height = 0.0;
        double width = 0.0;
        double lineSpacing = 1.0;
        int alignment = 1; ///< 1 left, 2 centre, 3 right
        PackedColor groundColor = byBlockColor;
        double groundScale = 1.5; ///< as AcDbMText has it
        bool hasGround = false;
        bool isPaperGround = false; ///< the drawing's background, else the colour
        /// How landings meet its left and its right side; some kinds underline it.
        int attachments[2] = {1, 1};
    };
    struct Block {
        AcDbObjectId id;
        AcGePoint3d position;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        AcGeScale3d scale;
        double rotation = 0.0; ///< radians
        PackedColor color = byBlockColor;
        /// Definitions of attributes with their wordings here.
        std::vector<std::pair<AcDbObjectId, std::wstring>> attributes;
    };
    enum class Path { none, straight, curved };

    std::vector<Branch> branches;
    Text text;
    Block block;
    AcGeVector3d normal = AcGeVector3d::kZAxis; ///< of the plane of the lines
    AcDbObjectId arrow;
    double arrowSize = 0.0;
    double gap = 0.0; ///< around a frame
    PackedColor lineColor = byBlockColor;
    Path path = Path::straight;
    bool hasText = false;
    bool hasBlock = false;
    bool isLed = true;
    bool isFramed = false;
};

MultileaderRecord readMultileader(const AcDbOpaqueEntity& entity);

} // namespace hostkit
