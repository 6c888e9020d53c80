// Records that program files and dynamic areas have in common.
#pragma once

#include "simulator/playback/DynamicArea.h"

#include <optional>

namespace qm::sim {

// PageStyle, DisplayMode, ClearMode, Speed 1 each, StayTime 2, RepeatTime 1, ValidLen 2: the beginning of
// every page header.
void read_page_head(ByteReader& reader, Page& page);

// Four single bytes, two counts of 4, four single bytes, the text's length 4 and the text.
bool read_sound_record(ByteReader& reader, Sound& sound);

// SoundFlag 1, and when it is not 0 the record.
bool read_sound(ByteReader& reader, std::optional<Sound>& sound);

} // namespace qm::sim
