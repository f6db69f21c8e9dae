// Way from a drawing's display changes to the port; leaves out drawing anything.
#pragma once

#include "displaychanges.h"
#include "hostport.h"

class AcDbDatabase;

namespace hostkit {

/// Tells the port of what is to be shown anew in the drawing, as long as it lives. The drawing and the port
/// outlive it.
class DisplayWatch : public DisplayObserver {
public:
    DisplayWatch(AcDbDatabase& drawing, HostPort& port);
    ~DisplayWatch() override;
    DisplayWatch(const DisplayWatch&) = delete;
    DisplayWatch& operator=(const DisplayWatch&) = delete;

    void shownAnew(const ShownChange& change) override;

private:
    AcDbDatabase& m_drawing;
    HostPort& m_port;
};

} // namespace hostkit
