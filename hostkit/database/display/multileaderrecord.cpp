#include "multileaderrecord.h"

#include "dbopaque.h"
#include "recordcursor.h"

namespace hostkit {

namespace {

// The same codes mean other things in the context, in its leaders, in their lines, and outside: each has its
// own reader, which ends at the closing brace.
class MultileaderReader {
public:
    MultileaderReader(const AcDbOpaqueEntity& entity, MultileaderRecord& record)
        : m_group(entity)
        , m_record(record) {}

    void read() {
        while (m_group.next()) m_group.is(300, "CONTEXT_DATA{") ? readContext() : takeOwn();
        const AcGeVector3d normal = m_x.crossProduct(m_y);
        if (!normal.isZeroLength()) m_record.normal = normal.normal();
        if (!(m_record.arrowSize > 0.0)) m_record.arrowSize = m_ownArrowSize;
    }

private:
    void readContext() {
        while (m_group.next() && !m_group.is(301, "}")) {
            if (m_group.is(302, "LEADER{"))
                readBranch();
            else if (!takeOfText() && !takeOfBlock())
                takeOfContext();
        }
    }
    void takeOfContext();
    bool takeOfText();
    bool takeOfBlock();
    void readBranch();
    void takeGap(std::vector<LeaderGap>& gaps, bool isBegin);
    void readLine(MultileaderRecord::Branch& branch);
    void takeOwn();
    PackedColor color() const { return static_cast<PackedColor>(m_group.integer(byBlockColor)); }

    RecordCursor m_group;
    MultileaderRecord& m_record;
    AcGeVector3d m_x = AcGeVector3d::kXAxis;
    AcGeVector3d m_y = AcGeVector3d::kYAxis;
    double m_ownArrowSize = 0.0;
};

void MultileaderReader::takeOfContext() {
    switch (m_group.code()) {
    case 140:
        m_record.arrowSize = m_group.real();
        break;
    case 145:
        m_record.gap = m_group.real();
        break;
    case 290:
        m_record.hasText = m_group.integer() != 0;
        break;
    case 296:
        m_record.hasBlock = m_group.integer() != 0;
        break;
    case 111:
        m_x = m_group.vector();
        break;
    case 112:
        m_y = m_group.vector();
        break;
    }
}

bool MultileaderReader::takeOfText() {
    MultileaderRecord::Text& text = m_record.text;
    switch (m_group.code()) {
    case 11:
        return text.normal = m_group.vector(), true;
    case 12:
        return text.location = m_group.point(), true;
    case 13:
        return text.direction = m_group.vector(), true;
    case 41:
        return text.height = m_group.real(), true;
    case 43:
        return text.width = m_group.real(), true;
    case 45:
        return text.lineSpacing = m_group.real(1.0), true;
    case 90:
        return text.color = color(), true;
    case 91:
        return text.groundColor = color(), true;
    case 141:
        return text.groundScale = m_group.real(1.5), true;
    case 291:
        return text.isPaperGround = m_group.integer() != 0, true;
    case 292:
        return text.hasGround = m_group.integer() != 0, true;
    case 171:
        return text.alignment = static_cast<int>(m_group.integer(1)), true;
    case 174:
    case 175:
        return text.attachments[m_group.code() - 174] = static_cast<int>(m_group.integer()), true;
    case 304:
        return text.contents = m_group.text(), true;
    case 340:
        return text.style = m_group.id(), true;
    }
    return false;
}

bool MultileaderReader::takeOfBlock() {
    MultileaderRecord::Block& block = m_record.block;
    switch (m_group.code()) {
    case 14:
        return block.normal = m_group.vector(), true;
    case 15:
        return block.position = m_group.point(), true;
    case 16: {
        const AcGeVector3d scale = m_group.vector();
        return block.scale = AcGeScale3d(scale.x, scale.y, scale.z), true;
    }
    case 46:
        return block.rotation = m_group.real(), true;
    case 93:
        return block.color = color(), true;
    case 341:
        return block.id = m_group.id(), true;
    }
    return false;
}

// A begin and an end in turn; an end without a begin is none.
void MultileaderReader::takeGap(std::vector<LeaderGap>& gaps, bool isBegin) {
    const AcGePoint3d point = m_group.point();
    if (isBegin)
        gaps.push_back({point, point});
    else if (!gaps.empty())
        gaps.back().to = point;
}

void MultileaderReader::readBranch() {
    constexpr Adesk::Int64 vertical = 1;
    MultileaderRecord::Branch& branch = m_record.branches.emplace_back();
    bool isVertical = false;
    while (m_group.next() && !m_group.is(303, "}")) {
        if (m_group.is(304, "LEADER_LINE{"))
            readLine(branch);
        else if (m_group.code() == 10)
            branch.landing = m_group.point();
        else if (m_group.code() == 11)
            branch.direction = m_group.vector();
        else if (m_group.code() == 12 || m_group.code() == 13)
            takeGap(branch.gaps, m_group.code() == 12);
        else if (m_group.code() == 40)
            branch.length = m_group.real();
        else if (m_group.code() == 271)
            isVertical = m_group.integer() == vertical;
        else if (m_group.code() == 290)
            branch.hasLanding = m_group.integer() != 0;
        else if (m_group.code() == 291)
            branch.isLed = m_group.integer() != 0;
    }
    branch.isLed = branch.isLed && !isVertical;
}

void MultileaderReader::readLine(MultileaderRecord::Branch& branch) {
    MultileaderRecord::Line& line = branch.lines.emplace_back();
    while (m_group.next() && !m_group.is(305, "}")) {
        if (m_group.code() == 10)
            line.points.push_back(m_group.point());
        else if (m_group.code() == 11 || m_group.code() == 12)
            takeGap(line.gaps, m_group.code() == 11);
        else if (m_group.code() == 40)
            line.arrowSize = m_group.real();
        else if (m_group.code() == 92)
            line.color = color();
        else if (m_group.code() == 341)
            line.arrow = m_group.id();
    }
}

// What stands behind the context.
void MultileaderReader::takeOwn() {
    switch (m_group.code()) {
    case 42:
        m_ownArrowSize = m_group.real();
        break;
    case 91:
        m_record.lineColor = color();
        break;
    case 170: {
        const Adesk::Int64 kind = m_group.integer(1);
        if (kind >= 0 && kind <= 2) m_record.path = static_cast<MultileaderRecord::Path>(kind);
        break;
    }
    case 291:
        m_record.isLed = m_group.integer(1) != 0;
        break;
    case 292:
        m_record.isFramed = m_group.integer() != 0;
        break;
    case 302:
        if (!m_record.block.attributes.empty()) m_record.block.attributes.back().second = m_group.text();
        break;
    case 330:
        m_record.block.attributes.emplace_back(m_group.id(), std::wstring());
        break;
    case 342:
        m_record.arrow = m_group.id();
        break;
    }
}

} // namespace

MultileaderRecord readMultileader(const AcDbOpaqueEntity& entity) {
    MultileaderRecord record;
    MultileaderReader(entity, record).read();
    return record;
}

} // namespace hostkit
