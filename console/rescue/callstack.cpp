#include "callstack.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <unwind.h>

namespace callstack {
namespace {

struct Walk {
    const void** calls;
    std::size_t room;
    std::size_t count = 0;
};

_Unwind_Reason_Code take(_Unwind_Context* context, void* argument) {
    Walk& walk = *static_cast<Walk*>(argument);
    if (walk.count == walk.room) return _URC_END_OF_STACK;
    walk.calls[walk.count++] = reinterpret_cast<const void*>(_Unwind_GetIP(context));
    return _URC_NO_REASON;
}

// Lines of a file of the system, in a buffer of its own; what is longer is cut.
class Lines {
public:
    explicit Lines(const char* path)
        : m_descriptor(open(path, O_RDONLY | O_CLOEXEC)) {}
    ~Lines() {
        if (m_descriptor >= 0) close(m_descriptor);
    }
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;

    bool next(std::string_view& line) {
        for (;;) {
            char* const end =
                static_cast<char*>(std::memchr(m_begin, '\n', static_cast<std::size_t>(m_end - m_begin)));
            if (end) {
                line = std::string_view(m_begin, static_cast<std::size_t>(end - m_begin));
                m_begin = end + 1;
                return true;
            }
            std::memmove(m_buffer, m_begin, static_cast<std::size_t>(m_end - m_begin));
            m_end = m_buffer + (m_end - m_begin);
            m_begin = m_buffer;
            if (m_end == m_buffer + sizeof m_buffer) m_end = m_buffer; // too long for a line of ours
            const ssize_t count =
                m_descriptor < 0
                    ? 0
                    : read(m_descriptor, m_end, static_cast<std::size_t>(m_buffer + sizeof m_buffer - m_end));
            if (count <= 0) return false;
            m_end += count;
        }
    }

private:
    int m_descriptor;
    char m_buffer[8192];
    char* m_begin = m_buffer;
    char* m_end = m_buffer;
};

struct Mapping {
    std::uintptr_t begin = 0, end = 0, offset = 0;
    std::string_view file;
};

// "7f00-7f10 r-xp 00001000 08:01 123   /lib/a.so"
bool readMapping(std::string_view line, Mapping& mapping) {
    const char* at = line.data();
    const char* const last = at + line.size();
    const auto number = [&](std::uintptr_t& value) {
        const auto [end, error] = std::from_chars(at, last, value, 16);
        at = end;
        return error == std::errc();
    };
    if (!number(mapping.begin) || at == last || *at++ != '-' || !number(mapping.end)) return false;
    const std::size_t rights = static_cast<std::size_t>(at - line.data()) + 6;
    if (rights >= line.size()) return false;
    at = line.data() + rights;
    if (!number(mapping.offset)) return false;
    const std::size_t file = line.find('/');
    mapping.file = file == std::string_view::npos ? std::string_view() : line.substr(file);
    return true;
}

// A file in memory for as long as it lives.
class MappedFile {
public:
    explicit MappedFile(const char* path) {
        const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
        struct stat status {};
        if (descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
            m_size = static_cast<std::size_t>(status.st_size);
            void* const place = mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE, descriptor, 0);
            if (place != MAP_FAILED) m_bytes = static_cast<const char*>(place);
        }
        if (descriptor >= 0) close(descriptor);
    }
    ~MappedFile() {
        if (m_bytes) munmap(const_cast<char*>(m_bytes), m_size);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// `count` of them at the offset; null where the file is shorter.
    template <class T>
    const T* at(std::size_t offset, std::size_t count = 1) const {
        const bool isWithin = m_bytes && offset <= m_size && count <= (m_size - offset) / sizeof(T);
        return isWithin && offset % alignof(T) == 0 ? reinterpret_cast<const T*>(m_bytes + offset) : nullptr;
    }

private:
    const char* m_bytes = nullptr;
    std::size_t m_size = 0;
};

// The function of a table of symbols that holds the address of the image.
void lookInto(const MappedFile& file, const ElfW(Shdr) & table, const ElfW(Shdr) & names, Place& place,
              std::uintptr_t address) {
    const std::size_t count = table.sh_size / sizeof(ElfW(Sym));
    const auto* const symbols = file.at<ElfW(Sym)>(table.sh_offset, count);
    const char* const texts = file.at<char>(names.sh_offset, names.sh_size);
    if (!symbols || !texts || place.function[0]) return;
    for (std::size_t i = 0; i < count; ++i) {
        const ElfW(Sym)& symbol = symbols[i];
        const bool isFunction = (symbol.st_info & 0xF) == STT_FUNC && symbol.st_name < names.sh_size;
        if (!isFunction || address < symbol.st_value || address - symbol.st_value >= symbol.st_size) continue;
        const std::size_t room =
            std::min<std::size_t>(names.sh_size - symbol.st_name, sizeof place.function - 1);
        std::strncpy(place.function, texts + symbol.st_name, room);
        place.offset = address - symbol.st_value;
        return;
    }
}

void findFunction(const MappedFile& file, std::uintptr_t fileOffset, Place& place) {
    place.offset = fileOffset;
    const auto* const head = file.at<ElfW(Ehdr)>(0);
    if (!head || std::memcmp(head->e_ident, ELFMAG, SELFMAG) != 0) return;
    const auto* const segments = file.at<ElfW(Phdr)>(head->e_phoff, head->e_phnum);
    const auto* const sections = file.at<ElfW(Shdr)>(head->e_shoff, head->e_shnum);
    for (int i = 0; segments && i < head->e_phnum; ++i) {
        const ElfW(Phdr)& each = segments[i];
        if (each.p_type == PT_LOAD && fileOffset >= each.p_offset &&
            fileOffset - each.p_offset < each.p_filesz)
            place.offset = fileOffset - each.p_offset + each.p_vaddr;
    }
    const std::uintptr_t address = place.offset;
    for (const unsigned wanted : {SHT_SYMTAB, SHT_DYNSYM})
        for (int i = 0; sections && i < head->e_shnum; ++i)
            if (sections[i].sh_type == wanted && sections[i].sh_link < head->e_shnum)
                lookInto(file, sections[i], sections[sections[i].sh_link], place, address);
}

} // namespace

std::size_t capture(const void** calls, std::size_t room, const void* from) {
    Walk walk{calls, room};
    _Unwind_Backtrace(take, &walk);
    const void** const end = calls + walk.count;
    const void** const first = from ? std::find(calls, end, from) : end;
    return first == end ? walk.count : static_cast<std::size_t>(std::copy(first, end, calls) - calls);
}

bool find(const void* address, Place& place) {
    place = {};
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    Lines lines("/proc/self/maps");
    Mapping mapping;
    for (std::string_view line; lines.next(line);) {
        if (!readMapping(line, mapping) || wanted < mapping.begin || wanted >= mapping.end) continue;
        if (mapping.file.empty()) return false;
        mapping.file.copy(place.module, sizeof place.module - 1);
        findFunction(MappedFile(place.module), wanted - mapping.begin + mapping.offset, place);
        return true;
    }
    return false;
}

} // namespace callstack
