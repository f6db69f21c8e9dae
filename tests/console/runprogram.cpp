#include "runprogram.h"

#include <charconv>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

std::string writtenFile(const TemporaryFolder& folder, const std::string& name, const std::string& content) {
    folder.write(name, content);
    return folder / name;
}

std::string readFile(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

void becomeProgram(const std::vector<std::string>& command,
                   const std::map<std::string, std::string>& environment) {
    for (const auto& [name, value] : environment) {
        if (value.empty())
            unsetenv(name.c_str());
        else
            setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> arguments;
    for (const std::string& each : command) arguments.push_back(const_cast<char*>(each.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

RunningProgram::RunningProgram(const std::vector<std::string>& command, const std::string& input,
                               const std::map<std::string, std::string>& environment) {
    int in[2], out[2], err[2];
    if (pipe2(in, O_CLOEXEC) || pipe2(out, O_CLOEXEC) || pipe2(err, O_CLOEXEC))
        throw std::runtime_error("no pipe");
    m_process = fork();
    if (m_process == 0) {
        dup2(in[0], 0);
        dup2(out[1], 1);
        dup2(err[1], 2);
        becomeProgram(command, environment);
    }
    for (const int end : {in[0], out[1], err[1]}) close(end);
    // Inputs of these tests fit into a pipe.
    std::string_view rest = input;
    while (!rest.empty()) {
        const ssize_t written = write(in[1], rest.data(), rest.size());
        if (written <= 0) break;
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    close(in[1]);
    m_output = out[0];
    m_problems = err[0];
}

RunningProgram::~RunningProgram() {
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    if (m_output >= 0) close(m_output);
    if (m_problems >= 0) close(m_problems);
}

bool RunningProgram::readSome() {
    pollfd watched[2] = {{m_output, POLLIN, 0}, {m_problems, POLLIN, 0}};
    std::string* const texts[2] = {&m_result.output, &m_result.problems};
    int* const descriptors[2] = {&m_output, &m_problems};
    if (poll(watched, 2, -1) <= 0) return false;
    for (int i = 0; i < 2; ++i) {
        if (*descriptors[i] < 0 || !watched[i].revents) continue;
        char buffer[65536];
        const ssize_t count = read(*descriptors[i], buffer, sizeof buffer);
        if (count > 0) {
            texts[i]->append(buffer, static_cast<std::size_t>(count));
            continue;
        }
        close(*descriptors[i]);
        *descriptors[i] = -1;
    }
    return m_output >= 0 || m_problems >= 0;
}

bool RunningProgram::waitForProblem(const std::string& text) {
    while (m_result.problems.find(text) == std::string::npos)
        if (!readSome()) return m_result.problems.find(text) != std::string::npos;
    return true;
}

void RunningProgram::sendSignal(int number) const { kill(m_process, number); }

ProgramResult RunningProgram::finish() {
    while ((m_output >= 0 || m_problems >= 0) && readSome()) {
    }
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = -1;
    m_result.code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return m_result;
}

ProgramResult runProgram(const std::vector<std::string>& command, const std::string& input,
                         const std::map<std::string, std::string>& environment) {
    RunningProgram program(command, input, environment);
    return program.finish();
}

namespace {

class JsonReader {
public:
    explicit JsonReader(std::string_view text)
        : m_text(text) {}

    bool readAll() {
        const bool isGood = readValue(0);
        skipBlanks();
        return isGood && m_text.empty();
    }

private:
    void skipBlanks() {
        while (!m_text.empty() && std::string_view(" \t\r\n").find(m_text[0]) != std::string_view::npos)
            m_text.remove_prefix(1);
    }
    bool take(std::string_view wanted) {
        skipBlanks();
        if (!m_text.starts_with(wanted)) return false;
        m_text.remove_prefix(wanted.size());
        return true;
    }
    bool readValue(int depth) {
        if (depth > 100) return false;
        if (take("{")) return readMembers('}', depth, true);
        if (take("[")) return readMembers(']', depth, false);
        skipBlanks();
        if (m_text.starts_with('"')) return readText();
        return take("true") || take("false") || take("null") || readNumber();
    }
    bool readMembers(char closing, int depth, bool hasNames) {
        if (take(std::string_view(&closing, 1))) return true;
        do {
            skipBlanks();
            if (hasNames && !(readText() && take(":"))) return false;
            if (!readValue(depth + 1)) return false;
        } while (take(","));
        return take(std::string_view(&closing, 1));
    }
    bool readText() {
        if (!m_text.starts_with('"')) return false;
        for (std::size_t i = 1; i < m_text.size(); ++i) {
            if (static_cast<unsigned char>(m_text[i]) < 0x20) return false;
            if (m_text[i] == '\\') {
                ++i;
            } else if (m_text[i] == '"') {
                m_text.remove_prefix(i + 1);
                return true;
            }
        }
        return false;
    }
    bool readNumber() {
        double number = NAN; // which no number in JSON is
        const auto [end, fault] = std::from_chars(m_text.data(), m_text.data() + m_text.size(), number);
        m_text.remove_prefix(static_cast<std::size_t>(end - m_text.data()));
        return fault == std::errc() && std::isfinite(number);
    }

    std::string_view m_text;
};

} // namespace

bool isJson(const std::string& text) { return JsonReader(text).readAll(); }
