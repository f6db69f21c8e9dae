#pragma once

#include <string>
#include <string_view>

/// A last word on a program that a fault ends: whose code ran then. The program ends by the signal all the
/// same.
namespace crashreport {

/// Takes SIGSEGV, SIGFPE, SIGABRT, SIGILL and SIGBUS over for the life of the process.
void install();

/// While it lives, a fault is told as that of `who`, whose beginning is kept: "BEAM of /opt/beam.so". Scopes
/// nest.
class Scope {
public:
    explicit Scope(std::string_view who);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    std::string m_earlier;
};

} // namespace crashreport
