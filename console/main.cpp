#include "consoletext.h"
#include "crashreport.h"
#include "exitcodes.h"
#include "interrupt.h"
#include "options.h"
#include "rescue.h"
#include "session.h"
#include "textencoding.h"
#include "timelimit.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

bool print(std::FILE* stream, const std::wstring& text) {
    const std::string bytes = hostkit::utf8FromWide(text);
    return std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size() && std::fflush(stream) == 0;
}

int printed(const std::wstring& text) {
    if (print(stdout, text)) return exitcode::ok;
    print(stderr, L"vexohost: what was printed could not be written to standard output\n");
    return exitcode::notWritten;
}

// A stream that the caller has closed must not be taken over by the first file that is opened. One that
// always is full stands for a closed output, so that what is printed there is told as lost.
void openMissingStreams() {
    const std::pair<int, const char*> streams[] = {
        {STDIN_FILENO, "/dev/null"}, {STDOUT_FILENO, "/dev/full"}, {STDERR_FILENO, "/dev/null"}};
    for (const auto& [stream, place] : streams) {
        if (fcntl(stream, F_GETFD) >= 0) continue;
        const int mode = stream == STDIN_FILENO ? O_RDONLY : O_WRONLY;
        if (open(place, mode) < 0) open("/dev/null", mode);
    }
}

} // namespace

int main(int count, char** arguments) {
    openMissingStreams();
    const auto [options, problem] = parseOptions(std::vector<std::string>(arguments + 1, arguments + count));
    if (!problem.empty()) {
        print(stderr, L"vexohost: " + problem + L"\nTry vexohost --help.\n");
        return exitcode::usage;
    }
    if (options.wantsHelp) return printed(helpText());
    if (options.wantsVersion) return printed(L"vexohost " VEXO_VERSION L"\n");
    interrupt::install();
    if (options.isRescued)
        rescue::install();
    else
        crashreport::installLastWord();
    if (options.timeout > 0 && !timelimit::set(options.timeout)) {
        print(stderr, L"vexohost: --timeout: the system has no timer for it\n");
        return exitcode::usage;
    }
    if (!options.isRescued) return runSession(options);
    try {
        return runSession(options);
    } catch (const std::exception& fault) {
        print(stderr, L"vexohost: " + hostkit::wideFromUtf8(fault.what()) + L"\n");
        return exitcode::commandFailed;
    }
}
