// The drawings that tests read and write: texts made by hand, and as they stand those of others, where they
// are there, and those of the examples.
#pragma once

#include "drawingreader.h"
#include "drawingwriter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace drawingtest {

/// The text of one group as our writer spells it.
std::string group(int code, const std::string& value);
std::string groups(std::initializer_list<std::pair<int, std::string>> pairs);
std::string section(const std::string& name, const std::string& content);
/// The header of a drawing of that form.
std::string header(const std::string& version);
std::string line(const std::string& extra = {});
std::string block(const std::string& name, const std::string& content);
/// The section of entities, and the end of the drawing.
std::string entities(const std::string& content);

inline constexpr hostkit::ReadOptions quietReading{.tellPort = false};
inline const hostkit::WriteOptions quietWriting{.version = {}, .tellPort = false};
inline const hostkit::WriteOptions fromFields{.version = {}, .everythingFromFields = true};

/// The bytes of a drawing that can be written.
std::string saved(const AcDbDatabase& database, const hostkit::WriteOptions& options = {},
                  hostkit::WriteReport* report = nullptr);
std::string saved(const AcDbDatabase& database, hostkit::DrawingVersion version);

std::wstring wide(const std::string& text);
std::size_t countOf(std::string_view text, std::string_view part);

/// Drawings from where VEXO_DRAWINGS says, or from beside the tree; skipped where there are none.
class DrawingsOfOthers : public testing::Test {
protected:
    void SetUp() override;
    template <class Check>
    void forEach(Check&& check) {
        for (const std::string& file : files()) {
            SCOPED_TRACE(file);
            const auto database = hostkit::openDrawing(wide(file), nullptr, quietReading);
            ASSERT_TRUE(database);
            check(*database);
            if (HasFatalFailure()) return;
        }
    }

private:
    /// Those of the examples too, sorted.
    static std::vector<std::string> files();
};

} // namespace drawingtest
