// A text that the controller speaks.
#pragma once

#include "support/bytes.h"

#include <cstdint>
#include <optional>

namespace qm::sim {

// The fields in the order of the record.
struct SpokenText {
    std::uint8_t person = 0, volume = 0, speed = 0, data_mode = 0;
    std::uint32_t replay_times = 0, replay_delay = 0;
    std::uint8_t reserved_para_len = 0, num_deal = 0, languages = 0, word_style = 0;
    ByteBuffer text{};
};

// Four single bytes, two counts of 4, four single bytes, the text's length 4 and the text.
bool read_sound_record(ByteReader& reader, SpokenText& sound);

// SoundFlag 1, and when it is not 0 the record.
bool read_sound(ByteReader& reader, std::optional<SpokenText>& sound);

} // namespace qm::sim
