// Records whose points stand under one code with and without z: each keeps the form that its object files,
// whatever list stood in the record before.
#include "drawingfiles.h"
#include "drawingparts.h"

#include "dbline.h"

#include <random>
#include <sstream>

using namespace hostkit;
using namespace drawingtest;

namespace {

/// One value: a whole number, or a point of the plane or of space.
struct Value {
    int dimension = 0; ///< 0: a number
    double x = 0.0, y = 0.0, z = 0.0;
};

class Cloud : public AcDbLine {
    ACRX_DECLARE_MEMBERS(Cloud)
public:
    std::vector<Value> values;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override {
        Acad::ErrorStatus status = AcDbLine::dxfInFields(filer);
        if (status != Acad::eOk || !filer->atSubclassData(L"Cloud")) return status;
        values.clear();
        int dimension = 0; // the number before a point tells
        for (AcDbDxfGroup group; (status = filer->readItem(group)) == Acad::eOk;) {
            if (group.code == 90) {
                values.push_back({0, static_cast<double>(group.integer), 0, 0});
                dimension = static_cast<int>(group.integer);
            } else {
                values.push_back({dimension, group.point[0], group.point[1], group.point[2]});
            }
        }
        return status == Acad::eEndOfObject ? Acad::eOk : status;
    }
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override {
        const Acad::ErrorStatus status = AcDbLine::dxfOutFields(filer);
        filer->writeSubclassMark(L"Cloud");
        for (const Value& each : values) {
            if (each.dimension == 0)
                filer->writeInt32(90, static_cast<Adesk::Int32>(each.x));
            else
                filer->writePoint(10, &each.x, each.dimension);
        }
        return status;
    }
};
ACRX_DXF_DEFINE_MEMBERS(Cloud, AcDbLine, 0, 0, 0, VEXOCLOUD, CLOUDS)

struct CloudModule {
    CloudModule() { Cloud::rxInit(); }
    ~CloudModule() { Cloud::rxExit(); }
};

std::string groupOf(int code, double value) {
    std::string number = textOf(value);
    if (code != 90 && number.find('.') == std::string::npos) number += ".0";
    return std::to_string(code) + ' ' + number + '\n';
}

std::string expectedOf(const std::vector<Value>& values) {
    std::string text;
    for (const Value& each : values) {
        text += groupOf(each.dimension == 0 ? 90 : 10, each.x);
        if (each.dimension > 1) text += groupOf(20, each.y);
        if (each.dimension > 2) text += groupOf(30, each.z);
    }
    return text;
}

/// What stands between the class' mark and the end of its record.
std::string recordIn(const std::string& bytes) {
    std::istringstream lines(bytes.substr(bytes.find("Cloud\r\n", bytes.find("ENTITIES")) + 7));
    std::string text;
    for (std::string code, value;
         std::getline(lines, code) && std::getline(lines, value) && std::stoi(code) != 0;)
        text += std::to_string(std::stoi(code)) + ' ' +
                value.substr(value.find_first_not_of(' '), value.find('\r') - value.find_first_not_of(' ')) +
                '\n';
    return text;
}

std::vector<Value> randomValues(std::mt19937& random) {
    std::vector<Value> values;
    const auto number = [&](int to) {
        return static_cast<double>(std::uniform_int_distribution<int>(0, to)(random));
    };
    for (int count = static_cast<int>(number(6)); count > 0; --count) {
        const int dimension = static_cast<int>(2 + number(1));
        values.push_back({0, static_cast<double>(dimension), 0, 0});
        for (int points = static_cast<int>(number(3)); points > 0; --points)
            values.push_back({dimension, number(2), number(2), dimension == 3 ? number(1) : 0.0});
    }
    return values;
}

} // namespace

TEST(MixedPoints, KeepTheFormThatTheirObjectFiles) {
    const CloudModule module;
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        std::vector<Value> values = randomValues(random);
        AcDbDatabase first;
        auto* cloud = new Cloud;
        cloud->values = values;
        appendToModelSpace(first, cloud);
        std::string bytes = saved(first);
        ASSERT_EQ(recordIn(bytes), expectedOf(values));
        for (int step = 0; step < 3; ++step) {
            const auto again = openDrawingFromMemory(bytes, L"again", nullptr, quietReading);
            ASSERT_TRUE(again);
            const AcDbObjectId id =
                AcDbObjectPointer<AcDbBlockTableRecord>(again->modelSpaceId(), AcDb::kForRead)
                    ->entities()
                    .front();
            // Some stay, some go, some come; points stay behind their number.
            auto cut = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
            while (cut != values.end() && cut->dimension != 0) ++cut;
            const std::vector<Value> others = randomValues(random);
            std::vector<Value> next(values.begin(), cut);
            next.insert(next.end(), others.begin(), others.end());
            if (step == 1) next.insert(next.end(), cut, values.end());
            values = next;
            drawingtest::change<Cloud>(id, [&](Cloud& each) {
                EXPECT_EQ(each.assertWriteEnabled(), Acad::eOk);
                each.values = values;
            });
            bytes = saved(*again);
            ASSERT_EQ(recordIn(bytes), expectedOf(values));
        }
    }
}
