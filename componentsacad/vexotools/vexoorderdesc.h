#pragma once

/// The colours in which orders are shown, as host colour indices. Read from the user's settings when the
/// module is loaded; the values here are the built-in ones.
class VEXOOrderDesc {
public:
    static short m_nClrIdxCurrentOrder;
    static short m_nClrIdxNotOrdered;
    static short m_nClrIdxOrderedElsewhere;
};
