// Meter over opening and saving: one meter for one work; leaves out breaking off.
#pragma once

#include "drawingprogress.h"

#include <string_view>

namespace hostkit {

class Host;

/// Shows in the status bar how far the reading or writing of a drawing has come, from its making to its end.
/// A meter that somebody shows already, over a longer work, stays as it is.
class StatusBarProgress final : public DrawingProgress {
public:
    /// The caption is the verb and the file's name without its folders.
    StatusBarProgress(Host& host, std::wstring_view verb, std::wstring_view file);
    ~StatusBarProgress() override;

    void reach(double share) override;

private:
    bool m_isOurs;
};

} // namespace hostkit
