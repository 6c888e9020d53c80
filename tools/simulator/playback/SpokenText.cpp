#include "simulator/playback/SpokenText.h"

namespace qm::sim {

bool read_sound(ByteReader& reader, std::optional<SpokenText>& sound) {
    if (reader.u8() == 0) return reader.ok();
    return read_sound_record(reader, sound.emplace());
}

bool read_sound_record(ByteReader& reader, SpokenText& sound) {
    sound = {reader.u8(),  reader.u8(), reader.u8(), reader.u8(), reader.u32(),
             reader.u32(), reader.u8(), reader.u8(), reader.u8(), reader.u8()};
    const Bytes text = reader.bytes(reader.u32());
    sound.text.assign(text.begin(), text.end());
    return reader.ok();
}

} // namespace qm::sim
