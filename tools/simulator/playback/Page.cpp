#include "simulator/playback/Page.h"

namespace qm::sim {

void read_page_head(ByteReader& reader, Page& page) {
    page.style = reader.u8();
    page.display_mode = reader.u8();
    page.clear_mode = reader.u8();
    page.speed = reader.u8();
    page.stay_time = reader.u16();
    page.repeat_time = reader.u8();
    page.valid_len = reader.u16();
}

} // namespace qm::sim
