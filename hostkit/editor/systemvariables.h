// System variables: session, settings, document and header variables with types, ranges and read-only ones;
// leaves out variables that only steer a screen.
#pragma once

#include "casefold.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hostkit {

/// A value with its record type: RTSHORT, RTLONG, RTREAL, RTSTR, RTPOINT or RT3DPOINT.
struct SystemValue {
    short type = 0;
    int integer = 0;
    double reals[3] = {0.0, 0.0, 0.0}; ///< the first one is that of RTREAL
    std::wstring text{};
};

/// Where a variable's value is kept.
enum class VariablePlace : unsigned char {
    computed, ///< the host tells it; nothing is kept
    session,  ///< until the host ends
    settings, ///< in the registry, below the product's key of the user; without such a key as session
    header,   ///< in the drawing, and saved with it
};

struct SystemVariableInfo {
    std::wstring name;
    short type = 0;
    VariablePlace place = VariablePlace::session;
    bool isReadOnly = false;
    /// Of integers and reals; equal bounds: any value. A real above 0 has the smallest normal number as its
    /// minimum, one without an upper bound the largest as its maximum.
    double minimum = 0.0;
    double maximum = 0.0;
};

/// How getting or setting a variable ended.
enum class VariableResult : unsigned char { ok, unknown, noDocument, readOnly, wrongType, outOfRange };
/// One sentence for a person, without the variable's name.
const wchar_t* textOf(VariableResult result);

/// The variables of one host, by name without regard to case. A name that is not among the host's own is a
/// variable of the current drawing's header, with the type that its group has there: reals and angles RTREAL,
/// 16-bit numbers and flags RTSHORT, 32-bit ones RTLONG, texts and handles RTSTR, points RTPOINT or RT3DPOINT
/// by their coordinates. Handles, times and what the host works out by itself (extents, coordinate system)
/// are read-only there. The names of current layer, linetype, text style and dimension style must be those of
/// records.
class SystemVariables {
public:
    SystemVariables();
    ~SystemVariables();
    SystemVariables(const SystemVariables&) = delete;
    SystemVariables& operator=(const SystemVariables&) = delete;

    /// The value is untouched unless the result is ok.
    VariableResult get(std::wstring_view name, SystemValue& value) const;
    /// The value of a whole number; `otherwise` for any other variable and one that cannot be read.
    int integer(std::wstring_view name, int otherwise) const;
    /// A real takes whole numbers too; a whole number takes RTSHORT and RTLONG; a point of three coordinates
    /// takes one of two, at height 0, and the reverse drops the height. Nothing else is converted. A number
    /// that is not finite is out of range.
    VariableResult set(std::wstring_view name, const SystemValue& value);
    /// The host's own word on one of its session variables, read-only ones too: ACADVER, REFEDITNAME.
    /// VariableResult::unknown for any other; wrongType and outOfRange as above.
    VariableResult setByHost(std::wstring_view name, const SystemValue& value);
    /// False when there is none of that name now.
    bool describe(std::wstring_view name, SystemVariableInfo& info) const;
    /// The names of the host's own variables and those of the current header, sorted.
    std::vector<std::wstring> names() const;

private:
    struct Own; ///< a variable of the tables, with its value where the host keeps it
    Own* find(std::wstring_view name) const;
    VariableResult setOwn(Own& own, const SystemValue& value);

    std::vector<std::unique_ptr<Own>> m_own;
    std::unordered_map<std::wstring_view, Own*, FoldedHash, FoldedEqual> m_index;
};

/// As a person writes it: 1, 2.5, "1,2,0", or the text.
std::wstring formatValue(const SystemValue& value);
/// The reverse, for a variable of that type. False, with the value untouched, where the text is none.
bool parseValue(std::wstring_view text, short type, SystemValue& value);

} // namespace hostkit
