// Records of binary drawings as groups of the exchange form.
#pragma once

#include "groupformat.h"
#include "recordfields.h"
#include "recordnames.h"

#include <memory>
#include <string>
#include <string_view>

namespace hostkit {

/// What an entity's record does not tell itself.
struct EntityPlace {
    std::uint64_t owner = 0; ///< of an entity whose record has none: the space that it stands in
    bool isInPaper = false;
    std::string_view layout; ///< the name of the layout of the space, or nothing
};

/// Writes records of one drawing as text groups in the drawing's own form. What it is given must outlive it.
/// Several threads take one each.
class RecordTranscription {
public:
    RecordTranscription(const RecordReading& reading, const RecordNames& names, const DrawingStyle& style);
    ~RecordTranscription();
    RecordTranscription(const RecordTranscription&) = delete;
    RecordTranscription& operator=(const RecordTranscription&) = delete;

    /// The record from its group 0 to its extended data. False, with no byte added, for a record that has no
    /// transcript or was not read whole: appendOpaque then writes its head alone.
    [[nodiscard]] bool append(const RecordFields& record, const EntityPlace& place, std::string& bytes);
    /// The variables of the header that its record tells, from the first group 9 on. Its texts must
    /// be bytes of their own.
    void appendVariables(const RecordFields& header, std::string& bytes);
    /// Name, handle, extension dictionary, reactors, owner, extended data.
    void appendOpaque(const RecordFields& record, std::string_view name, const EntityPlace& place,
                      std::string& bytes);

private:
    std::unique_ptr<class Transcribing> m_work;
};

} // namespace hostkit
