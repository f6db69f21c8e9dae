#pragma once

#include "hostport.h"

/// The port of a rescue: it waits for nobody, knows where the application keeps its data, and says problems
/// with the system's own write.
class RescuePort final : public hostkit::HostPort {
public:
    /// As the settings of the port in use now have it; where they name no place, the user's own,
    /// $XDG_STATE_HOME/vexotools or ~/.local/state/vexotools, whose last folders are made when a rescue needs
    /// them.
    RescuePort();

    void reportProblem(std::wstring_view text) override;
    /// The clock goes by the system's, but says the first second from now on that no recovered drawing bears
    /// the name of: none takes the place of another.
    std::int64_t now() const override;

    /// The directory of recovered drawings, in the bytes of the file system; empty where there is no place.
    const std::string& recoverDirectory() const { return m_recoverDirectory; }
    /// The drawing that bears the name of the second that `now` said last; empty where it is not there.
    std::string recovered() const;
    /// Makes what of the user's own place is missing.
    void makePlace() const;

private:
    std::string nameOf(std::int64_t second) const;

    std::string m_recoverDirectory;
    std::string m_ownPlace; ///< empty where the settings name one
    mutable std::int64_t m_second = 0;
};
