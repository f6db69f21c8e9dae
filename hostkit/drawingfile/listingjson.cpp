#include "drawinglisting.h"
#include "textencoding.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace hostkit {

namespace {

void appendString(std::wstring_view text, std::string& json) {
    json += '"';
    for (const wchar_t character : text) {
        if (character == L'"' || character == L'\\') {
            json += '\\';
            json += static_cast<char>(character);
        } else if (character >= 0 && character < 0x20) {
            constexpr char digits[] = "0123456789abcdef";
            json += "\\u00";
            json += digits[character >> 4];
            json += digits[character & 15];
        } else {
            appendUtf8(json, character);
        }
    }
    json += '"';
}

void appendNumber(double value, std::string& json) {
    if (!std::isfinite(value)) {
        json += "null";
        return;
    }
    char digits[32];
    json.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

template <std::size_t count>
void appendNumbers(const std::array<double, count>& values, std::string& json) {
    char separator = '[';
    for (const double value : values) {
        json += separator;
        appendNumber(value, json);
        separator = ',';
    }
    json += ']';
}

struct ValueAppender {
    std::string& json;
    void operator()(const std::wstring& text) const { appendString(text, json); }
    void operator()(double value) const { appendNumber(value, json); }
    void operator()(long long value) const { json += std::to_string(value); }
    void operator()(const std::array<double, 3>& point) const { appendNumbers(point, json); }
};

void appendField(std::string_view name, std::wstring_view text, std::string& json) {
    ((json += '"') += name) += "\":";
    appendString(text, json);
    json += ',';
}

void appendExtendedData(const ListedEntity& entity, std::string& json) {
    json += "\"xdata\":{";
    std::string_view separator;
    for (const auto& [application, values] : entity.extendedData) {
        json += separator;
        separator = ",";
        appendString(application, json);
        json += ":[";
        std::string_view inner;
        for (const ListedValue& value : values) {
            ((json += inner) += "[") += std::to_string(value.code) + ",";
            std::visit(ValueAppender{json}, value.value);
            json += ']';
            inner = ",";
        }
        json += ']';
    }
    json += '}';
}

void appendEntity(const ListedEntity& entity, std::string& json) {
    json += '{';
    appendField("type", entity.type, json);
    appendField("layer", entity.layer, json);
    appendField("handle", entity.handle, json);
    appendField("space", entity.space, json);
    json += "\"vertices\":[";
    std::string_view separator;
    for (const std::array<double, 4>& vertex : entity.vertices) {
        json += separator;
        separator = ",";
        appendNumbers(vertex, json);
    }
    json += "],";
    appendField("text", entity.text, json);
    appendField("name", entity.name, json);
    (json += "\"paths\":") += std::to_string(entity.paths) + ",";
    appendExtendedData(entity, json);
    json += '}';
}

} // namespace

std::string listingAsJson(const DrawingListing& listing) {
    std::string json = "{\"version\":";
    appendString(listing.version, json);
    json += ",\"entities\":[";
    std::string_view separator = "\n";
    for (const ListedEntity& entity : listing.entities) {
        json += separator;
        separator = ",\n";
        appendEntity(entity, json);
    }
    json += "\n]}\n";
    return json;
}

} // namespace hostkit
