// Records of filed entities item by item, as they stand in drawings: written down by hand, put into filers,
// and read off what a filer is given.
#pragma once

#include "drawingparts.h"

#include "memorydwgfiler.h"
#include "memorydxffiler.h"

#include <sstream>

namespace filedrecords {

using drawingtest::narrow;
using drawingtest::textOf;

/// One item: its kind and its value. Kinds: I32, I16, R, P2, P3, V2, V3, S; N is an I32 that counts what
/// follows, E an I16 that says which edge follows.
struct Item {
    std::string kind, value;

    std::string kindOfFiler() const { return kind == "N" ? "I32" : kind == "E" ? "I16" : kind; }
    short code() const {
        const std::string plain = kindOfFiler();
        return plain == "I32" ? 90 : plain == "I16" ? 70 : plain == "R" ? 40 : plain == "S" ? 1 : 10;
    }
    double number(std::size_t place = 0) const {
        std::istringstream stream(value);
        std::string part;
        for (std::size_t i = 0; i <= place; ++i) std::getline(stream, part, '/');
        return std::stod(part);
    }
};
using Items = std::vector<Item>;

/// Of "I32 2, V3 0/0/1".
inline Items itemsOf(const std::string& text) {
    Items items;
    std::istringstream stream(text);
    for (std::string each; std::getline(stream, each, ',');) {
        std::istringstream words(each);
        Item item;
        words >> item.kind >> item.value;
        items.push_back(item);
    }
    return items;
}

inline std::string asBinary(const Items& items) {
    std::string text;
    for (const Item& each : items) text += each.kindOfFiler() + ' ' + each.value + '\n';
    return text;
}
inline std::string asText(const Items& items) {
    std::string text;
    for (const Item& each : items) text += std::to_string(each.code()) + ' ' + each.value + '\n';
    return text;
}

inline void put(const Item& item, hostkit::MemoryDwgFiler& filer) {
    const std::string kind = item.kindOfFiler();
    if (kind == "I32") filer.writeInt32(static_cast<Adesk::Int32>(item.number()));
    if (kind == "I16") filer.writeInt16(static_cast<Adesk::Int16>(item.number()));
    if (kind == "R") filer.writeDouble(item.number());
    if (kind == "P2") filer.writePoint2d({item.number(0), item.number(1)});
    if (kind == "V2") filer.writeVector2d({item.number(0), item.number(1)});
    if (kind == "P3") filer.writePoint3d({item.number(0), item.number(1), item.number(2)});
    if (kind == "V3") filer.writeVector3d({item.number(0), item.number(1), item.number(2)});
    if (kind == "S") filer.writeString(std::wstring(item.value.begin(), item.value.end()).c_str());
}

/// Under a code that may be another than its own.
inline void put(const Item& item, hostkit::MemoryDxfFiler& filer, short code) {
    const std::string kind = item.kindOfFiler();
    if (kind == "S") return filer.writeText(code, std::wstring(item.value.begin(), item.value.end()));
    if (kind == "R") return filer.writeReal(code, item.number());
    if (kind == "I32" || kind == "I16")
        return filer.writeInteger(code, static_cast<Adesk::Int64>(item.number()));
    const int dimension = kind[1] - '0';
    const double point[] = {item.number(0), item.number(1), dimension == 3 ? item.number(2) : 0.0};
    filer.writePoint(code, point, dimension);
}

/// A record in both filers, to be read. One item may be another than its kind: in the binary filer of another
/// size, in the text filer under the next code.
struct Filled {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    explicit Filled(const Items& items, std::size_t other = none) {
        for (std::size_t i = 0; i < items.size(); ++i) {
            const bool isOther = i == other;
            const Item instead{items[i].kindOfFiler() == "I32" ? "R" : "I32", "9"};
            put(isOther ? instead : items[i], binary);
            put(items[i], text, static_cast<short>(items[i].code() + (isOther ? 1 : 0)));
        }
        binary.seek(0, 0);
    }
    hostkit::MemoryDwgFiler binary{AcDb::kFileFiler};
    hostkit::MemoryDxfFiler text;
};

/// Tells what it is given, one item a line, as asBinary does.
class BinarySpy : public hostkit::MemoryDwgFiler {
public:
    BinarySpy()
        : MemoryDwgFiler(AcDb::kFileFiler) {}
    std::string told;

    Acad::ErrorStatus writeInt32(Adesk::Int32 value) override { return say("I32", std::to_string(value)); }
    Acad::ErrorStatus writeInt16(Adesk::Int16 value) override { return say("I16", std::to_string(value)); }
    Acad::ErrorStatus writeDouble(double value) override { return say("R", textOf(value)); }
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& p) override { return say("P2", pair(p.x, p.y)); }
    Acad::ErrorStatus writeVector2d(const AcGeVector2d& v) override { return say("V2", pair(v.x, v.y)); }
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& p) override {
        return say("P3", pair(p.x, p.y) + '/' + textOf(p.z));
    }
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& v) override {
        return say("V3", pair(v.x, v.y) + '/' + textOf(v.z));
    }
    Acad::ErrorStatus writeString(const wchar_t* text) override { return say("S", narrow(text)); }

private:
    static std::string pair(double x, double y) { return textOf(x) + '/' + textOf(y); }
    Acad::ErrorStatus say(const char* kind, const std::string& value) {
        told += std::string(kind) + ' ' + value + '\n';
        return filerStatus();
    }
};

/// Tells what it is given, one group a line, as asText does.
class TextSpy : public AcDbDxfFiler {
public:
    std::string told;

    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    void writeText(short code, std::wstring_view text) override { say(code, narrow(text)); }
    void writeReal(short code, double value) override { say(code, textOf(value)); }
    void writeInteger(short code, Adesk::Int64 value) override { say(code, std::to_string(value)); }
    void writePoint(short code, const double* coordinates, int dimension) override {
        std::string text = textOf(coordinates[0]);
        for (int i = 1; i < dimension; ++i) text += '/' + textOf(coordinates[i]);
        say(code, text);
    }

private:
    void say(short code, const std::string& value) { told += std::to_string(code) + ' ' + value + '\n'; }
};

} // namespace filedrecords
