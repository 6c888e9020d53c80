#include "program/TimeArea.h"

namespace qm {

// Area header 9; no border; kind 0 (digital); no units and no glyph sets.
void TimeArea::AssembleData(Frame& program) const {
    ByteWriter out(program);
    m_aHeader.append(out);
    out.zeros(4);
}

} // namespace qm
