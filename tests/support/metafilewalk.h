// Enhanced metafiles as a reader of its own sees them: the walk checks sizes and counts, what stands in the
// records is the test's to ask.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace metafiletest {

struct Record {
    std::uint32_t type;
    std::vector<std::int32_t> data;
};

/// Reads by offsets of its own.
struct Walked {
    std::string bytes;
    std::vector<Record> records{};

    explicit Walked(std::string whole)
        : bytes(std::move(whole)) {
        for (std::size_t at = 0; at + 8 <= bytes.size();) {
            const std::uint32_t size = static_cast<std::uint32_t>(word(at + 4));
            EXPECT_EQ(size % 4, 0u);
            if (size < 8 || at + size > bytes.size()) break;
            records.push_back({static_cast<std::uint32_t>(word(at)), {}});
            for (std::size_t i = 8; i < size; i += 4) records.back().data.push_back(word(at + i));
            at += size;
        }
        EXPECT_EQ(static_cast<std::size_t>(word(48)), bytes.size());
        EXPECT_EQ(static_cast<std::size_t>(word(52)), records.size());
        EXPECT_EQ(records.back().type, 14u) << "nothing behind the end";
    }
    static Walked ofFile(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return Walked({std::istreambuf_iterator<char>(stream), {}});
    }
    std::int32_t word(std::size_t at) const {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value |= std::uint32_t{static_cast<unsigned char>(bytes.at(at + i))} << 8 * i;
        return static_cast<std::int32_t>(value);
    }
    std::vector<int> rect(std::size_t at) const {
        return {word(at), word(at + 4), word(at + 8), word(at + 12)};
    }
    std::vector<int> bounds() const { return rect(8); }
    std::vector<int> frame() const { return rect(24); }
    int handles() const { return word(56); }
    std::vector<std::uint32_t> types() const {
        std::vector<std::uint32_t> all;
        for (const Record& each : records) all.push_back(each.type);
        return all;
    }
};

} // namespace metafiletest
