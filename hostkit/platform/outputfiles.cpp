#include "outputfiles.h"

#include "atomicfile.h"
#include "hostport.h"
#include "systempath.h"
#include "textencoding.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace hostkit {

namespace {

std::optional<struct stat> statusOf(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return status;
}

bool isRegular(const std::optional<struct stat>& status) { return status && S_ISREG(status->st_mode); }

} // namespace

OutputFiles::Known OutputFiles::locate(std::wstring_view file) {
    Known known;
    known.path = targetOfLinks(mapPath(file));
    const std::size_t separator = known.path.rfind('/');
    const std::string folder = separator == std::string::npos ? "." : known.path.substr(0, separator + 1);
    char real[PATH_MAX];
    // A folder that is not there holds no file that could be lost.
    if (!realpath(folder.c_str(), real)) return known;
    known.folder = real;
    known.name = separator == std::string::npos ? known.path : known.path.substr(separator + 1);
    if (streamNumber(known.path) < 0) known.path = known.folder + '/' + known.name;
    return known;
}

// Asked anew each time: a file that is saved in one step is another one afterwards, and the numbers of files
// that are gone are given again.
bool OutputFiles::isSame(const Known& one, const Known& other) {
    if (!one.folder.empty() && one.folder == other.folder && one.name == other.name) return true;
    const auto first = statusOf(one.path);
    const auto second = statusOf(other.path);
    return isRegular(first) && isRegular(second) && first->st_dev == second->st_dev &&
           first->st_ino == second->st_ino;
}

OutputFiles::Protection OutputFiles::protect(std::wstring_view file, Role role, std::wstring what) {
    Known known = locate(file);
    known.role = role;
    known.what = std::move(what);
    m_protected.push_back(std::move(known));
    return m_protected.size() - 1;
}

void OutputFiles::release(Protection protection) { m_protected[protection].isActive = false; }

// The strictest that holds for the file. What a stream writes to is that stream's own affair, unless it is
// read.
const OutputFiles::Known* OutputFiles::findProtection(const Known& file, bool isStream) const {
    const Known* found = nullptr;
    for (const Known& each : m_protected) {
        if (!each.isActive || (isStream && each.role == Role::output) || !isSame(each, file)) continue;
        if (!found || each.role != Role::drawing) found = &each;
    }
    return found;
}

bool OutputFiles::isWrittenAlready(const Known& file) const {
    return std::any_of(m_written.begin(), m_written.end(),
                       [&](const Known& each) { return isSame(each, file); });
}

std::wstring OutputFiles::refusal(const OutputFile& file, Kind kind, std::wstring_view howToReplace) const {
    const Known known = locate(file.name);
    const auto status = statusOf(known.path);
    const bool isStream = streamNumber(known.path) >= 0;
    const auto because = [&](std::wstring_view reason, std::wstring_view advice) {
        return file.name + L": " + std::wstring(reason) + L"; " + std::wstring(advice);
    };
    if (status && S_ISDIR(status->st_mode)) return because(L"this is a folder", L"name a file in it");
    if (const Known* found = findProtection(known, isStream)) {
        const bool isSaving = kind == Kind::drawing && found->role == Role::drawing;
        if (isSaving && file.mayReplace) return {};
        return because(L"this is " + found->what, isSaving ? howToReplace : L"name another file");
    }
    if (isStream || file.mayReplace || !isRegular(status)) return {};
    if (isWrittenAlready(known)) return because(L"this run has written the file already", howToReplace);
    return m_mayReplaceExisting ? std::wstring() : because(L"the file is there already", howToReplace);
}

bool OutputFiles::asksForReplacing(const std::wstring& name) const {
    return !refusal({name, false}).empty() && refusal({name, true}).empty();
}

std::wstring OutputFiles::write(const OutputFile& file, std::string_view bytes,
                                std::wstring_view howToReplace) {
    std::wstring reason = refusal(file, Kind::file, howToReplace);
    if (!reason.empty()) return reason;
    const std::string path = mapPath(file.name);
    m_port.flush();
    const bool isFree = !statusOf(path);
    AtomicFile target(path, isFree ? AtomicFile::Existing::keep : AtomicFile::Existing::replace);
    target.write(bytes);
    if (!target.commit()) return file.name + L": " + wideFromUtf8(target.errorText());
    noteWritten(file.name);
    return {};
}

void OutputFiles::noteWritten(std::wstring_view file) {
    Known known = locate(file);
    if (!isWrittenAlready(known)) m_written.push_back(std::move(known));
}

bool isStandardOutput(std::wstring_view file) {
    return streamNumber(targetOfLinks(mapPath(file))) == STDOUT_FILENO;
}

} // namespace hostkit
