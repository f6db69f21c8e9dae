// What an object files, as lines that a test can compare.
#pragma once

#include "dbfiler.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace drawingtest {

/// Gathers groups as text, reals to the bit. One code may be left out.
class GroupList final : public AcDbDxfFiler {
public:
    explicit GroupList(AcDbDatabase* database, short without = -1)
        : m_database(database)
        , m_without(without) {}
    const std::vector<std::string>& lines() const { return m_lines; }
    std::vector<std::string> sorted() const {
        std::vector<std::string> lines = m_lines;
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
    AcDbDatabase* database() const override { return m_database; }
    void writeText(short code, std::wstring_view text) override {
        std::string units;
        for (const wchar_t c : text)
            units += c > L' ' && c < 127 ? std::string(1, static_cast<char>(c))
                                         : "<" + std::to_string(static_cast<long>(c)) + ">";
        add(code, units);
    }
    void writeReal(short code, double value) override { add(code, exact(value)); }
    void writeAngle(short code, double radians) override { add(code, exact(radians) + " rad"); }
    void writePoint(short code, const double* coordinates, int dimension) override {
        std::string all;
        for (int axis = 0; axis < dimension; ++axis) all += exact(coordinates[axis]) + " ";
        add(code, all);
    }
    void writeInteger(short code, Adesk::Int64 value) override { add(code, std::to_string(value)); }
    void writeHandle(short code, Adesk::UInt64 handle) override {
        add(code, "handle " + std::to_string(handle));
    }
    void writeBinary(short code, const void* bytes, std::size_t size) override {
        add(code, std::string(static_cast<const char*>(bytes), size));
    }

private:
    static std::string exact(double value) {
        std::ostringstream text;
        text << std::hexfloat << value;
        return text.str();
    }
    void add(short code, const std::string& value) {
        if (code != m_without) m_lines.push_back(std::to_string(code) + ": " + value);
    }

    AcDbDatabase* m_database;
    short m_without;
    std::vector<std::string> m_lines;
};

} // namespace drawingtest
