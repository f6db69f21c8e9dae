#include "binarycontainer.h"

#include "binarychecksums.h"
#include "sectionframe.h"

#include <algorithm>
#include <array>

namespace hostkit {

ByteSpan BinaryContainer::section(std::string_view name) const {
    const auto found = sections.find(name);
    return found == sections.end() ? ByteSpan() : ByteSpan(found->second);
}

void BinaryContainer::addFault(std::size_t offset, std::string section, std::wstring reason) {
    if (faults.size() < faultLimit) faults.push_back({offset, std::move(section), std::move(reason)});
}

std::uint64_t littleEndian(ByteSpan bytes, std::size_t at, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count && at + i < bytes.size(); ++i)
        value |= static_cast<std::uint64_t>(bytes[at + i]) << (8 * i);
    return value;
}

ByteSpan partOf(ByteSpan bytes, std::size_t at, std::size_t count) {
    if (at >= bytes.size()) return {};
    return bytes.subspan(at, std::min(count, bytes.size() - at));
}

namespace {

bool isDigit(std::uint8_t byte) { return byte >= '0' && byte <= '9'; }

} // namespace

bool isBinaryDrawing(ByteSpan file) {
    return file.size() >= 7 && file[0] == 'A' && file[1] == 'C' && isDigit(file[2]) && isDigit(file[3]) &&
           isDigit(file[4]) && isDigit(file[5]) && file[6] == 0;
}

bool openContainer(ByteSpan file, BinaryContainer& container) {
    const std::string name(file.begin(),
                           file.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(file.size(), 6)));
    if (!isBinaryDrawing(file)) {
        container.addFault(0, {}, L"it is no binary drawing");
        return false;
    }
    container.maintenance = static_cast<unsigned>(littleEndian(file, 0x0B, 1));
    container.writer = static_cast<unsigned>(littleEndian(file, 0x11, 1));
    container.writerMaintenance = static_cast<unsigned>(littleEndian(file, 0x12, 1));
    container.codePage = static_cast<unsigned>(littleEndian(file, 0x13, 2));
    using Opener = bool (*)(ByteSpan, BinaryContainer&);
    constexpr std::array<std::pair<std::string_view, Opener>, 6> openers{{{"AC1015", openContainer2000},
                                                                          {"AC1018", openContainer2004},
                                                                          {"AC1021", openContainer2007},
                                                                          {"AC1024", openContainer2004},
                                                                          {"AC1027", openContainer2004},
                                                                          {"AC1032", openContainer2004}}};
    for (const auto& [form, open] : openers)
        if (name == form) {
            container.version = *versionFromName(form);
            return open(file, container);
        }
    container.addFault(
        0, {}, L"binary drawings of the form " + std::wstring(name.begin(), name.end()) + L" are not read");
    return false;
}

// --- The form 2000: sections at addresses in the file
// ------------------------------------------------------------------

namespace {

/// From its mark to its end mark; nothing where the address leads to none.
ByteSpan previewAt(ByteSpan file, std::size_t address) {
    const ByteSpan head = partOf(file, address, previewMark.size() + 4);
    if (address == 0 || head.size() < previewMark.size() + 4 ||
        !std::equal(previewMark.begin(), previewMark.end(), head.begin()))
        return {};
    const std::size_t size = head.size() + longAt(head, previewMark.size()) + previewMark.size();
    const ByteSpan preview = partOf(file, address, size);
    return preview.size() < size ? ByteSpan() : preview;
}

} // namespace

bool openContainer2000(ByteSpan file, BinaryContainer& container) {
    constexpr std::array names{"AcDb:Header",       "AcDb:Classes",  "AcDb:Handles",
                               "AcDb:ObjFreeSpace", "AcDb:Template", "AcDb:AuxHeader"};
    const std::size_t count = std::min<std::size_t>(longAt(file, 0x15), names.size());
    const std::size_t end = 0x19 + 9 * count;
    if (file.size() < end + 2) {
        container.addFault(0x15, {}, L"the file ends within its header");
        return false;
    }
    if (checksum16(file.first(end)) != littleEndian(file, end, 2))
        container.addFault(end, {}, L"the checksum of the file's header is wrong");
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t number = file[0x19 + 9 * i];
        const std::size_t address = longAt(file, 0x1A + 9 * i), size = longAt(file, 0x1E + 9 * i);
        if (number >= names.size() || size == 0) continue;
        const ByteSpan part = partOf(file, address, size);
        if (part.size() < size)
            container.addFault(address, names[number], L"the section goes past the end of the file");
        container.sections[names[number]].assign(part.begin(), part.end());
    }
    container.sections["AcDb:AcDbObjects"].assign(file.begin(), file.end());
    if (const ByteSpan preview = previewAt(file, longAt(file, 0x0D)); !preview.empty())
        container.sections["AcDb:Preview"].assign(preview.begin(), preview.end());
    if (container.section("AcDb:Handles").empty()) {
        container.addFault(0x19, {}, L"the file has no map of its objects");
        return false;
    }
    return true;
}

} // namespace hostkit
