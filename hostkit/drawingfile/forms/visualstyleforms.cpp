#include "visualstyleforms.h"

#include "groupscanner.h"

#include <array>
#include <optional>
#include <vector>

namespace hostkit {
namespace {

constexpr int markCode = 176, listCode = 70, kindCode = 70, internalCode = 291, formCode = 177;
constexpr std::string_view listLength = "58";

/// A value of the named groups, and its code where it stands in a list.
struct Property {
    int code, inList;
};
constexpr std::array<Property, 28> properties{
    {{71, 90}, {72, 90}, {73, 90},  {90, 90},  {40, 40},   {41, 40}, {63, 62}, {74, 90}, {91, 90}, {64, 62},
     {65, 62}, {75, 90}, {175, 90}, {42, 40},  {92, 90},   {66, 62}, {43, 40}, {76, 90}, {77, 90}, {78, 90},
     {67, 62}, {79, 90}, {170, 90}, {171, 90}, {290, 290}, {93, 90}, {44, 40}, {173, 90}}};

constexpr bool isColour(const Property& one) { return one.inList == 62; }
constexpr int trueColourOf(const Property& one) { return one.code - 63 + 421; }
constexpr int trueColourInList = 420;

/// What the list has behind those: code and value; a colour's true one; the mark.
struct Extra {
    int code;
    std::string_view value, trueColour, mark = "1";
};
constexpr std::array<Extra, 30> extras{{{290, "0", ""},       {290, "1", ""},   {290, "1", ""},
                                        {290, "0", ""},       {290, "0", ""},   {290, "0", ""},
                                        {290, "0", ""},       {290, "0", ""},   {290, "0", ""},
                                        {90, "50", ""},       {40, "0.0", ""},  {40, "1.0", ""},
                                        {90, "0", ""},        {62, "18", "0"},  {90, "50", ""},
                                        {90, "3", ""},        {62, "5", "255"}, {290, "0", ""},
                                        {90, "50", ""},       {90, "50", ""},   {90, "50", ""},
                                        {290, "0", ""},       {90, "50", ""},   {62, "256", "", "0"},
                                        {40, "1.0", "", "0"}, {90, "2", ""},    {1, "strokes_ogs.tif", ""},
                                        {290, "0", ""},       {40, "1.0", ""},  {40, "1.0", ""}}};
constexpr std::string_view wireframeKind = "4"; // in two dimensions: the first and third of these turned over

struct Value {
    std::string_view text, trueColour, mark = "1";
};

/// A record taken to pieces: the head with the class's mark, the values, the extended data.
struct VisualStyle {
    std::string_view head, name, kind, form, internal = "0", tail;
    std::array<std::optional<Value>, properties.size()> values;

    [[nodiscard]] bool isWhole() const {
        for (const auto& value : values)
            if (!value) return false;
        return true;
    }
};

class Reading {
public:
    explicit Reading(std::string_view record)
        : m_record(record) {}

    [[nodiscard]] std::optional<VisualStyle> run() {
        GroupScanner scanner(m_record);
        RawGroup group;
        bool isInside = false;
        m_made.tail = m_record.substr(m_record.size());
        while (scanner.next(group) == ScanResult::kGroup) {
            if (isInside && (group.code == 1001 || group.code == 100)) {
                m_made.tail = m_record.substr(scanner.offsetOf(group.start));
                break;
            }
            if (isInside) take(group);
            if (group.is(100, "AcDbVisualStyle")) {
                isInside = true;
                m_made.head = m_record.substr(0, scanner.offset());
            }
        }
        // Forms that name no form of their own have a negative length or angle where it is turned off.
        if (m_made.form.empty())
            for (const std::size_t at : {4, 5})
                if (std::optional<Value>& value = m_made.values[at]; value && value->text.starts_with('-'))
                    value->text.remove_prefix(1);
        return m_made.isWhole() ? std::optional(m_made) : std::nullopt;
    }

private:
    void take(const RawGroup& group) {
        const std::string_view value = withoutBlanks(group.value);
        if (group.code == 2 && m_made.name.empty())
            m_made.name = group.value;
        else if (group.code == formCode)
            m_made.form = value;
        else if (group.code == kindCode && m_made.kind.empty())
            m_made.kind = value;
        else if (group.code == listCode && value == listLength && m_made.form == "3")
            m_isList = true;
        else if (group.code == internalCode)
            m_made.internal = value;
        else if (m_isList)
            takeListed(group.code, value);
        else
            takeNamed(group.code, value);
    }

    void takeListed(int code, std::string_view value) {
        if (m_next >= properties.size()) return;
        const Property& one = properties[m_next];
        if (code == one.inList) m_made.values[m_next] = Value{value, {}};
        std::optional<Value>& own = m_made.values[m_next];
        if (own && isColour(one) && code == trueColourInList) own->trueColour = value;
        if (code != markCode) return;
        if (own) own->mark = value;
        ++m_next;
    }

    void takeNamed(int code, std::string_view value) {
        if (code == markCode) {
            if (m_last) m_last->mark = value;
            return;
        }
        for (std::size_t i = 0; i < properties.size(); ++i) {
            std::optional<Value>& own = m_made.values[i];
            if (own && isColour(properties[i]) && trueColourOf(properties[i]) == code)
                own->trueColour = value;
            if (own || properties[i].code != code) continue;
            own = Value{value, {}};
            m_last = &*own;
        }
    }

    std::string_view m_record;
    VisualStyle m_made;
    bool m_isList = false;
    std::size_t m_next = 0;
    Value* m_last = nullptr;
};

class Writing {
public:
    Writing(const VisualStyle& visual, const DrawingStyle& style)
        : m_visual(visual)
        , m_style(style)
        , m_text(visual.head) {}

    std::string named() {
        front("2");
        for (std::size_t i = 0; i < properties.size(); ++i)
            value(properties[i].code, *m_visual.values[i], trueColourOf(properties[i]));
        return m_text.append(m_visual.tail);
    }

    std::string listed() {
        front("3");
        group(listCode, listLength);
        for (std::size_t i = 0; i < properties.size(); ++i)
            value(properties[i].inList, *m_visual.values[i], trueColourInList);
        for (std::size_t i = 0; i < extras.size(); ++i) {
            Value own{extras[i].value, extras[i].trueColour, extras[i].mark};
            if (m_visual.kind == wireframeKind && (i == 0 || i == 2)) own.text = i == 0 ? "1" : "0";
            value(extras[i].code, own, trueColourInList);
        }
        return m_text.append(m_visual.tail);
    }

private:
    void group(int code, std::string_view text) { appendGroup(code, text, m_style, m_text); }

    void front(std::string_view form) {
        group(2, m_visual.name);
        group(kindCode, m_visual.kind);
        group(formCode, form);
        group(internalCode, m_visual.internal);
    }

    void value(int code, const Value& value, int trueColourCode) {
        group(code, value.text);
        if (!value.trueColour.empty()) group(trueColourCode, value.trueColour);
        group(markCode, value.mark);
    }

    const VisualStyle& m_visual;
    const DrawingStyle& m_style;
    std::string m_text;
};

} // namespace

std::string visualStyleInForm(std::string_view record, const DrawingStyle& style) {
    if (style.version < DrawingVersion::k2010) return {};
    const std::optional<VisualStyle> visual = Reading(record).run();
    const bool isList = style.version >= DrawingVersion::k2013;
    if (!visual || visual->form == (isList ? "3" : "2")) return {};
    return isList ? Writing(*visual, style).listed() : Writing(*visual, style).named();
}

} // namespace hostkit
