#include "expressionevaluator.h"

#include "acutads.h"
#include "casefold.h"
#include "host.h"
#include "numbertext.h"

#include <limits>
#include <utility>
#include <vector>

namespace hostkit {
namespace {

// Deeper ones are refused, so that no text can exhaust the stack.
constexpr int deepestNesting = 100;

struct Expression {
    enum class Kind { list, symbol, text, integer, real };
    Kind kind = Kind::symbol;
    std::wstring text{};
    int integer = 0;
    double real = 0.0;
    std::vector<Expression> items{};
};

bool isBlank(wchar_t character) { return character == L' ' || (character >= L'\t' && character <= L'\r'); }

/// Reads expressions; the first fault ends it and stays as the problem.
class Reader {
public:
    explicit Reader(std::wstring_view text)
        : m_text(text) {}

    bool readAll(std::vector<Expression>& expressions) {
        for (;;) {
            skipBlanks();
            if (m_position == m_text.size()) return true;
            Expression expression;
            if (!read(expression, 0)) return false;
            expressions.push_back(std::move(expression));
        }
    }
    const wchar_t* problem() const { return m_problem; }

private:
    bool fail(const wchar_t* problem) {
        m_problem = problem;
        return false;
    }
    void skipBlanks() {
        while (m_position < m_text.size() && isBlank(m_text[m_position])) ++m_position;
    }
    bool read(Expression& expression, int depth) {
        const wchar_t first = m_text[m_position];
        if (first == L'(') return readList(expression, depth);
        if (first == L')') return fail(L"a closing parenthesis is too many");
        if (first == L'"') return readText(expression);
        return readAtom(expression);
    }
    bool readList(Expression& expression, int depth) {
        if (depth >= deepestNesting) return fail(L"the parentheses are nested too deeply");
        expression.kind = Expression::Kind::list;
        for (++m_position;;) {
            skipBlanks();
            if (m_position == m_text.size()) return fail(L"a closing parenthesis is missing");
            if (m_text[m_position] == L')') break;
            expression.items.emplace_back();
            if (!read(expression.items.back(), depth + 1)) return false;
        }
        ++m_position;
        return true;
    }
    bool readText(Expression& expression) {
        expression.kind = Expression::Kind::text;
        for (++m_position; m_position < m_text.size(); ++m_position) {
            const wchar_t character = m_text[m_position];
            if (character == L'"') {
                ++m_position;
                return true;
            }
            if (character != L'\\') {
                expression.text += character;
            } else if (++m_position == m_text.size() || !appendCode(m_text[m_position], expression.text)) {
                return fail(
                    L"a backslash in a text stands before no code; a backslash itself is written twice");
            }
        }
        return fail(L"a closing quotation mark is missing");
    }
    static bool appendCode(wchar_t code, std::wstring& text) {
        constexpr std::pair<wchar_t, wchar_t> codes[] = {{L'\\', L'\\'}, {L'"', L'"'},  {L'n', L'\n'},
                                                         {L'r', L'\r'},  {L't', L'\t'}, {L'e', L'\x1B'}};
        for (const auto& [letter, character] : codes)
            if (letter == code) {
                text += character;
                return true;
            }
        return false;
    }
    bool readAtom(Expression& expression) {
        const std::size_t start = m_position;
        while (m_position < m_text.size() && !isBlank(m_text[m_position]) &&
               std::wstring_view(L"()\"").find(m_text[m_position]) == std::wstring_view::npos)
            ++m_position;
        expression.text = m_text.substr(start, m_position - start);
        if (parseInteger(expression.text, expression.integer))
            expression.kind = Expression::Kind::integer;
        else if (parseReal(expression.text, expression.real))
            expression.kind = Expression::Kind::real;
        return true;
    }

    std::wstring_view m_text;
    std::size_t m_position = 0;
    const wchar_t* m_problem = L"";
};

/// Does what expressions say. A fault is one sentence in problem(); no value then.
class Evaluator {
public:
    explicit Evaluator(Host& host)
        : m_host(host) {}

    /// A value, or none: nil.
    bool evaluate(const Expression& expression, SystemValue& value) {
        value = {};
        switch (expression.kind) {
        case Expression::Kind::text:
            value.type = RTSTR;
            value.text = expression.text;
            return true;
        case Expression::Kind::integer:
            value.type = fitsShort(expression.integer) ? RTSHORT : RTLONG;
            value.integer = expression.integer;
            return true;
        case Expression::Kind::real:
            value.type = RTREAL;
            value.reals[0] = expression.real;
            return true;
        case Expression::Kind::symbol:
            return evaluateSymbol(expression.text, value);
        case Expression::Kind::list:
            return call(expression, value);
        }
        return false;
    }
    const std::wstring& problem() const { return m_problem; }

private:
    static bool fitsShort(int number) {
        return number >= std::numeric_limits<short>::min() && number <= std::numeric_limits<short>::max();
    }
    bool fail(std::wstring problem) {
        m_problem = std::move(problem);
        return false;
    }
    bool evaluateSymbol(const std::wstring& name, SystemValue& value) {
        if (equalFolded(name, L"nil")) return true;
        if (!equalFolded(name, L"T")) return fail(L"nothing is known by the name " + name);
        value.type = RTT;
        return true;
    }
    bool call(const Expression& expression, SystemValue& value) {
        if (expression.items.empty()) return true; // () is nil
        const Expression& head = expression.items.front();
        if (head.kind != Expression::Kind::symbol)
            return fail(L"an expression begins with the name of a function");
        using Function = bool (Evaluator::*)(const std::vector<SystemValue>&, SystemValue&);
        constexpr std::pair<const wchar_t*, Function> functions[] = {{L"setvar", &Evaluator::setVariable},
                                                                     {L"getvar", &Evaluator::getVariable},
                                                                     {L"command", &Evaluator::runCommand},
                                                                     {L"list", &Evaluator::makePoint},
                                                                     {L"progn", &Evaluator::takeLast}};
        for (const auto& [name, function] : functions) {
            if (!equalFolded(head.text, name)) continue;
            std::vector<SystemValue> arguments(expression.items.size() - 1);
            for (std::size_t i = 0; i < arguments.size(); ++i)
                if (!evaluate(expression.items[i + 1], arguments[i])) return false;
            return (this->*function)(arguments, value);
        }
        return fail(L"there is no function " + head.text);
    }

    bool setVariable(const std::vector<SystemValue>& arguments, SystemValue& value) {
        if (arguments.size() != 2 || arguments[0].type != RTSTR)
            return fail(L"setvar takes a name and a value");
        const VariableResult result = m_host.variables().set(arguments[0].text, arguments[1]);
        if (result != VariableResult::ok)
            return fail(L"setvar " + arguments[0].text + L": " + textOf(result));
        value = arguments[1];
        return true;
    }
    // A name that is not known gives nil.
    bool getVariable(const std::vector<SystemValue>& arguments, SystemValue& value) {
        if (arguments.size() != 1 || arguments[0].type != RTSTR) return fail(L"getvar takes a name");
        (void)m_host.variables().get(arguments[0].text, value);
        return true;
    }
    bool makePoint(const std::vector<SystemValue>& arguments, SystemValue& value) {
        if (arguments.size() < 2 || arguments.size() > 3) return fail(L"list takes two or three numbers");
        value.type = arguments.size() == 2 ? RTPOINT : RT3DPOINT;
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const bool isInteger = arguments[i].type == RTSHORT || arguments[i].type == RTLONG;
            if (!isInteger && arguments[i].type != RTREAL) return fail(L"list takes two or three numbers");
            value.reals[i] = isInteger ? arguments[i].integer : arguments[i].reals[0];
        }
        return true;
    }
    bool takeLast(const std::vector<SystemValue>& arguments, SystemValue& value) {
        if (!arguments.empty()) value = arguments.back();
        return true;
    }
    bool runCommand(const std::vector<SystemValue>& arguments, SystemValue&) {
        std::wstring line;
        for (const SystemValue& each : arguments) {
            if (each.type == 0) break; // cancels: what stands behind is not run
            if (each.type == RTT) return fail(L"command takes texts, numbers and points");
            appendCommandWord(line, each);
        }
        const CommandResult result = runCommandLine(m_host, line);
        if (result.status == Acad::eOk) return true;
        return fail((result.reason.empty() ? L"the command failed" : result.reason) + L" (" +
                    acadErrorStatusText(result.status) + L")");
    }

    Host& m_host;
    std::wstring m_problem;
};

} // namespace

void appendCommandWord(std::wstring& line, const SystemValue& value) {
    std::wstring word = formatValue(value);
    while (!word.empty() && (word.back() == L'\n' || word.back() == L'\r')) word.pop_back();
    if (word.find_first_not_of(L" \t\r\n") == std::wstring::npos) word.clear();
    // Enter where no command waits for an answer does nothing.
    if (word.empty() && line.empty()) return;
    if (!line.empty()) line += L' ';
    line += quotedWord(word);
}

CommandResult runCommandLine(Host& host, std::wstring_view line) {
    if (line.empty()) return {};
    SystemValue echo;
    if (host.variables().get(L"CMDECHO", echo) == VariableResult::ok && echo.integer != 0)
        host.port().print(L"Command: " + std::wstring(line) + L"\n");
    return host.runAll(line);
}

bool evaluateExpression(Host& host, std::wstring_view text, std::wstring& problem) {
    Reader reader(text);
    std::vector<Expression> expressions;
    if (!reader.readAll(expressions)) {
        problem = std::wstring(text) + L": " + reader.problem();
        return false;
    }
    Evaluator evaluator(host);
    SystemValue value;
    for (const Expression& each : expressions)
        if (!evaluator.evaluate(each, value)) {
            problem = std::wstring(text) + L": " + evaluator.problem();
            return false;
        }
    return true;
}

} // namespace hostkit
