// One command with one fault in it: what it must leave behind.
#pragma once

#include "faultcases.h"
#include "faultpoints.h"

#include <array>
#include <string>

namespace faults {

/// What a command does where nothing fails.
struct Reference {
    std::string before; ///< the drawing, as text
    std::string after;
    std::wstring printed;
    std::vector<std::string> files; ///< in the folder, when the command has ended
    std::array<std::size_t, sortCount> counts{};
    std::int64_t blocks = 0; ///< more or less than before, when all is gone
    bool hasFailed = false;
};

/// How a trial ended, for the sums.
enum class Outcome : unsigned char { kAsBefore, kAsAfter, kPartly, kNotReached, kWrong };
constexpr std::size_t outcomeCount = 5;

struct Trial {
    Outcome outcome = Outcome::kWrong;
    bool isSilent = false; ///< it printed or did something else, and neither a status nor a problem told
    std::string problem{}; ///< of kWrong
};

/// A host with the drawing, the modules and what the case prepares; runs the command once.
class Stage {
public:
    Stage(const Case& each, const std::string& drawing, const std::string& folder);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// A sentence where the stage cannot be set.
    const std::string& refusal() const { return m_refusal; }
    /// The command without a fault. The stage is gone afterwards.
    Reference runWhole();
    /// With one; the stage is gone afterwards.
    Trial run(Sort sort, std::size_t number, const Reference& reference);

private:
    struct Parts;
    std::string judge(Trial& trial, const Reference& reference);
    std::string judgeUndo(const Reference& reference);
    std::string judgeFiles(const Reference& reference) const;
    std::string text();
    bool isReadAgain() const;

    const Case& m_case;
    std::string m_folder;
    std::string m_refusal;
    Parts* m_parts; ///< by hand: what is counted goes with it
};

/// Empties the folder.
void clearFolder(const std::string& folder);

} // namespace faults
