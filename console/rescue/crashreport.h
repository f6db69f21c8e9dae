#pragma once

#include <string>
#include <string_view>

/// Whose code runs, for whoever has to tell of its failure.
namespace crashreport {

/// While it lives, a failure is told as that of `who`, whose beginning is kept: "BEAM of /opt/beam.so".
/// Scopes nest; the outermost one is what the time limit counts (timelimit.h).
class Scope {
public:
    explicit Scope(std::string_view who);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    std::string m_earlier;
};

/// The innermost scope's; "the program" outside of all. For a signal handler, too: what stands there was
/// there before the fault, and a name that is just being changed is empty.
std::string_view who();
/// "memory that is not its own was used (SIGSEGV)"; empty for a signal that is no fault.
std::string_view textOf(int signal);
/// To standard error, as it stands, with nothing but the system's own write.
void say(std::string_view text);

/// For runs that are not rescued: takes SIGSEGV, SIGFPE, SIGABRT, SIGILL and SIGBUS over for the life of the
/// process, and says as the last word whose code ran. The program ends by the signal all the same.
void installLastWord();

/// The signals of faults, and how many they are.
struct FaultSignals {
    static constexpr int count = 5;
    static const int numbers[count];
};

} // namespace crashreport
