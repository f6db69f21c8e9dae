#include "objectmap.h"

#include "binarychecksums.h"
#include "bitwriter.h"

namespace hostkit {
namespace {

constexpr std::size_t mostOfOnePart = 2032; // bytes of entries
const char* const mapName = "AcDb:Handles";

void readPart(ByteSpan part, std::size_t at, BinaryContainer& container, std::vector<ObjectPlace>& places) {
    const std::size_t objects = container.section("AcDb:AcDbObjects").size();
    BitReader reader(part.subspan(2));
    std::uint64_t handle = 0;
    std::int64_t offset = 0;
    while (reader.left() >= 16) {
        const std::uint64_t step = reader.unsignedModularChar();
        offset += reader.modularChar();
        handle += step;
        const bool ascends = step > 0 && (places.empty() || handle > places.back().handle);
        if (reader.failed() || !ascends)
            return container.addFault(at, mapName, L"a part of the map of objects is damaged");
        if (offset > 0 && static_cast<std::uint64_t>(offset) < objects)
            places.push_back({handle, static_cast<std::size_t>(offset)});
        else
            container.addFault(at, mapName, L"an object lies past the end of its section");
    }
}

} // namespace

std::vector<ObjectPlace> readObjectMap(BinaryContainer& container) {
    const std::vector<std::uint8_t> bytes(container.section(mapName).begin(),
                                          container.section(mapName).end());
    std::vector<ObjectPlace> places;
    for (std::size_t at = 0; at + 4 <= bytes.size();) {
        const std::size_t size = static_cast<std::size_t>(bytes[at] << 8 | bytes[at + 1]);
        if (size == 2) return places;
        if (size < 2 || size > 2040 || at + size + 2 > bytes.size()) break;
        const ByteSpan part = ByteSpan(bytes).subspan(at, size);
        const auto sum = static_cast<std::uint16_t>(bytes[at + size] << 8 | bytes[at + size + 1]);
        if (checksum16(part) != sum)
            container.addFault(at, mapName, L"the checksum of a part of the map is wrong");
        readPart(part, at, container, places);
        at += size + 2;
    }
    container.addFault(bytes.size(), mapName, L"the map of objects has no end");
    return places;
}

std::vector<std::uint8_t> writeObjectMap(std::span<const ObjectPlace> places) {
    std::vector<std::uint8_t> map;
    const auto finish = [&](const BitWriter& part) {
        const std::size_t begin = map.size(), size = part.bytes().size() + 2;
        map.insert(map.end(), {static_cast<std::uint8_t>(size >> 8), static_cast<std::uint8_t>(size)});
        map.insert(map.end(), part.bytes().begin(), part.bytes().end());
        const std::uint16_t sum = checksum16(ByteSpan(map).subspan(begin));
        map.insert(map.end(), {static_cast<std::uint8_t>(sum >> 8), static_cast<std::uint8_t>(sum)});
    };
    BitWriter part;
    ObjectPlace last;
    for (const ObjectPlace& place : places) {
        BitWriter entry;
        entry.unsignedModularChar(place.handle - last.handle);
        entry.modularChar(static_cast<std::int64_t>(place.offset) - static_cast<std::int64_t>(last.offset));
        if (part.bytes().size() + entry.bytes().size() > mostOfOnePart) {
            finish(part);
            part = entry = BitWriter();
            entry.unsignedModularChar(place.handle);
            entry.modularChar(static_cast<std::int64_t>(place.offset));
        }
        part.append(entry);
        last = place;
    }
    if (part.position() > 0) finish(part);
    finish(BitWriter());
    return map;
}

} // namespace hostkit
