#include "simulator/playback/SpokenText.h"

namespace qm::sim {

bool read_sound(ByteReader& reader, std::optional<SpokenText>& sound) {
    if (reader.u8() == 0) return reader.ok();
    return read_sound_record(reader, sound.emplace());
}

bool read_sound_record(ByteReader& reader, SpokenText& sound) {
    sound.person = reader.u8();
    sound.volume = reader.u8();
    sound.speed = reader.u8();
    sound.data_mode = reader.u8();
    sound.replay_times = reader.u32();
    sound.replay_delay = reader.u32();
    sound.reserved_para_len = reader.u8();
    sound.num_deal = reader.u8();
    sound.languages = reader.u8();
    sound.word_style = reader.u8();
    const Bytes text = reader.bytes(reader.u32());
    sound.text.assign(text.begin(), text.end());
    return reader.ok();
}

} // namespace qm::sim
