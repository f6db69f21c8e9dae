#include "displaywatch.h"

#include "dbaccess.h"

namespace hostkit {

namespace {

DisplayChange::Kind portKind(ShownChange::Kind kind) {
    switch (kind) {
    case ShownChange::Kind::entity:
        return DisplayChange::Kind::entity;
    case ShownChange::Kind::gone:
        return DisplayChange::Kind::gone;
    case ShownChange::Kind::redraw:
        return DisplayChange::Kind::redraw;
    case ShownChange::Kind::layer:
        return DisplayChange::Kind::layer;
    case ShownChange::Kind::block:
        break;
    }
    return DisplayChange::Kind::block;
}

} // namespace

DisplayWatch::DisplayWatch(AcDbDatabase& drawing, HostPort& port)
    : m_drawing(drawing)
    , m_port(port) {
    DatabaseAccess::display(drawing).add(*this);
}

DisplayWatch::~DisplayWatch() { DatabaseAccess::display(m_drawing).remove(*this); }

void DisplayWatch::shownAnew(const ShownChange& change) {
    m_port.displayChanged({&m_drawing, change.id.stub()->handle, portKind(change.kind)});
}

} // namespace hostkit
