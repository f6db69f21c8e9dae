#include "consoletext.h"
#include "exitcodes.h"
#include "interrupt.h"
#include "options.h"
#include "session.h"
#include "textencoding.h"

#include <cstdio>
#include <exception>

namespace {

void print(std::FILE* stream, const std::wstring& text) {
    const std::string bytes = hostkit::utf8FromWide(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
}

} // namespace

int main(int count, char** arguments) {
    const auto [options, problem] = parseOptions(std::vector<std::string>(arguments + 1, arguments + count));
    if (!problem.empty()) {
        print(stderr, L"vexohost: " + problem + L"\nTry vexohost --help.\n");
        return exitcode::usage;
    }
    if (options.wantsHelp) {
        print(stdout, helpText());
        return exitcode::ok;
    }
    if (options.wantsVersion) {
        print(stdout, L"vexohost " VEXO_VERSION L"\n");
        return exitcode::ok;
    }
    interrupt::install();
    try {
        return runSession(options);
    } catch (const std::exception& fault) {
        print(stderr, L"vexohost: " + hostkit::wideFromUtf8(fault.what()) + L"\n");
        return exitcode::commandFailed;
    }
}
