#include "bodyediting.h"

#include "binarytokens.h"
#include "bodydata.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace hostkit::modeler {

namespace {

struct Rows {
    AcGeVector3d x, y, z, shift;
};

bool isMotion(const Rows& rows) {
    constexpr double rounding = 1e-9;
    const auto isNear = [](double value, double wanted) { return std::abs(value - wanted) <= rounding; };
    return isNear(rows.x.lengthSqrd(), 1.0) && isNear(rows.y.lengthSqrd(), 1.0) &&
           isNear(rows.z.lengthSqrd(), 1.0) && isNear(rows.x.dotProduct(rows.y), 0.0) &&
           isNear(rows.x.dotProduct(rows.z), 0.0) && isNear(rows.y.dotProduct(rows.z), 0.0) &&
           rows.x.crossProduct(rows.y).dotProduct(rows.z) > 0.0;
}

Rows rowsOf(const AcGeMatrix3d& matrix) {
    const AcGePoint3d origin = matrix * AcGePoint3d::kOrigin;
    return {matrix * AcGeVector3d::kXAxis, matrix * AcGeVector3d::kYAxis, matrix * AcGeVector3d::kZAxis,
            origin - AcGePoint3d::kOrigin};
}

/// A transform's fields: the scale and what else stands behind it stay as they were.
void appendText(std::string& out, const Rows& rows, double scale) {
    for (const AcGeVector3d& row : {rows.x, rows.y, rows.z, rows.shift})
        for (const double value : {row.x, row.y, row.z}) {
            char buffer[32];
            out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value == 0.0 ? 0.0 : value,
                                             std::chars_format::general, 17)
                                   .ptr);
            out += ' ';
        }
    char buffer[32];
    out.append(buffer,
               std::to_chars(buffer, buffer + sizeof buffer, scale, std::chars_format::general, 17).ptr);
}

void appendReal(std::string& out, double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    for (int byte = 0; byte < 8; ++byte, bits >>= 8) out += static_cast<char>(bits & 0xFF);
}

void appendInteger(std::string& out, std::int32_t value) {
    for (int byte = 0; byte < 4; ++byte)
        out += static_cast<char>(static_cast<std::uint32_t>(value) >> (8 * byte) & 0xFF);
}

std::string transformRecord(const BodyRecords& records, const Rows& rows, double scale) {
    std::string out;
    if (records.form == BodyForm::text) {
        out = records.version >= 700 ? "transform $-1 -1 " : "transform $-1 ";
        appendText(out, rows, scale);
        return out + (records.version >= 200 ? " rotate no_reflect no_shear #\n" : " 1 0 0 #\n");
    }
    out += static_cast<char>(BinaryTag::nameEnd);
    (out += '\x09') += "transform";
    out += static_cast<char>(BinaryTag::pointer);
    appendInteger(out, -1);
    out += static_cast<char>(BinaryTag::integer);
    appendInteger(out, -1);
    for (const AcGeVector3d& row : {rows.x, rows.y, rows.z, rows.shift}) {
        out += static_cast<char>(BinaryTag::direction);
        for (const double value : {row.x, row.y, row.z}) appendReal(out, value);
    }
    out += static_cast<char>(BinaryTag::real);
    appendReal(out, scale);
    for (const BinaryTag tag :
         {BinaryTag::isTrue, BinaryTag::isFalse, BinaryTag::isFalse, BinaryTag::recordEnd})
        out += static_cast<char>(tag);
    return out;
}

/// The body's pointer to its transform leads to the record with that number.
bool pointTo(const BodyRecords& records, const BodyRecord& body, std::string_view data, std::size_t number,
             std::string& out) {
    const auto begin = static_cast<std::size_t>(body.fields.data() - data.data());
    if (records.form == BodyForm::text) {
        const std::size_t dollar = body.fields.rfind('$');
        if (dollar == std::string_view::npos) return false;
        std::size_t end = dollar + 1;
        while (end < body.fields.size() && body.fields[end] != ' ' && body.fields[end] != '\n' &&
               body.fields[end] != '\r')
            ++end;
        out.replace(begin + dollar + 1, end - dollar - 1, std::to_string(number));
        return true;
    }
    constexpr std::size_t size = 4;
    if (body.fields.size() < size + 1 ||
        body.fields[body.fields.size() - size - 1] != static_cast<char>(BinaryTag::pointer))
        return false;
    std::string bytes;
    appendInteger(bytes, static_cast<std::int32_t>(number));
    out.replace(begin + body.fields.size() - size, size, bytes);
    return true;
}

/// The count, second word of the first line, where there is one.
void countOneMore(std::string& data, std::size_t count) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t version = std::min(data.find_first_not_of(blanks), data.size());
    const std::size_t begin =
        std::min(data.find_first_not_of(blanks, data.find_first_of(blanks, version)), data.size());
    const std::size_t end = std::min(data.find_first_of(blanks, begin), data.size());
    const std::string_view digits = std::string_view(data).substr(begin, end - begin);
    if (digits.find_first_not_of('0') != std::string_view::npos && digits.front() != '-')
        data.replace(begin, end - begin, std::to_string(count + 1));
}

} // namespace

std::optional<std::string> movedBodyData(std::string_view data, const AcGeMatrix3d& matrix) {
    const BodyRecords records = readBodyRecords(data);
    const BodyRecord* body = nullptr;
    for (const BodyRecord& record : records.records) {
        if (record.name != "body") continue;
        if (body) return {};
        body = &record;
    }
    Rows rows = rowsOf(matrix);
    if (!body || records.hasHistory || !isMotion(rows)) return {};
    BodyFields fields(records, *body, true);
    (void)fields.pointer();
    (void)fields.pointer();
    const std::int64_t old = fields.pointer();
    if (!fields.isGood() || !fields.isAtEnd() || old >= static_cast<std::int64_t>(records.records.size()))
        return {};
    double scale = 1.0;
    if (old >= 0) {
        BodyFields transform(records, records.records[static_cast<std::size_t>(old)], false);
        transform.enterLongString();
        Rows before;
        for (AcGeVector3d* row : {&before.x, &before.y, &before.z, &before.shift}) *row = transform.vector();
        scale = transform.real();
        if (!transform.isGood() || records.records[static_cast<std::size_t>(old)].name != "transform")
            return {};
        rows = {matrix * before.x, matrix * before.y, matrix * before.z, matrix * before.shift + rows.shift};
        const bool keepsSense =
            transform.isAtEnd() || before.x.crossProduct(before.y).dotProduct(before.z) > 0.0;
        if (!keepsSense) return {};
    }
    std::string out(data);
    out.insert(records.end, transformRecord(records, rows, scale));
    if (records.form == BodyForm::text && records.end > 0 && data[records.end - 1] != '\n')
        out.insert(records.end, 1, '\n');
    if (!pointTo(records, *body, data, records.records.size(), out)) return {};
    if (records.form == BodyForm::text) countOneMore(out, records.records.size());
    // Of data with a damaged head the count cannot be told apart from what stands around it.
    if (readBodyRecords(out).records.size() != records.records.size() + 1) return {};
    return out;
}

} // namespace hostkit::modeler
