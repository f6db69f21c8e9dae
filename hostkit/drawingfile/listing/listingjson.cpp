#include "drawinglisting.h"
#include "jsontext.h"

#include <string_view>

namespace hostkit {

namespace {

template <std::size_t count>
void appendNumbers(const std::array<double, count>& values, std::string& json) {
    char separator = '[';
    for (const double value : values) {
        json += separator;
        appendJsonNumber(value, json);
        separator = ',';
    }
    json += ']';
}

struct ValueAppender {
    std::string& json;
    void operator()(const std::wstring& text) const { appendJsonText(text, json); }
    void operator()(double value) const { appendJsonNumber(value, json); }
    void operator()(long long value) const { json += std::to_string(value); }
    void operator()(const std::array<double, 3>& point) const { appendNumbers(point, json); }
};

void appendField(std::string_view name, std::wstring_view text, std::string& json) {
    ((json += '"') += name) += "\":";
    appendJsonText(text, json);
    json += ',';
}

void appendExtendedData(const ListedEntity& entity, std::string& json) {
    json += "\"xdata\":{";
    std::string_view separator;
    for (const auto& [application, values] : entity.extendedData) {
        json += separator;
        separator = ",";
        appendJsonText(application, json);
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
    appendJsonText(listing.version, json);
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
