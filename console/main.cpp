#include "consoletext.h"
#include "exitcodes.h"
#include "interrupt.h"
#include "options.h"
#include "session.h"
#include "textencoding.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <unistd.h>

namespace {

void print(std::FILE* stream, const std::wstring& text) {
    const std::string bytes = hostkit::utf8FromWide(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
}

// A stream that the caller has closed must not be taken over by the first file that is opened.
void openMissingStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0) open("/dev/null", stream == STDIN_FILENO ? O_RDONLY : O_WRONLY);
}

} // namespace

int main(int count, char** arguments) {
    openMissingStreams();
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
