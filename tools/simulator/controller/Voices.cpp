#include "simulator/controller/Voices.h"

namespace qm::sim {
namespace {

// Length 4, then a sound record of that length.
bool read_measured_sound(ByteReader& reader, SpokenText& sound) {
    ByteReader record(reader.bytes(reader.u32()));
    return reader.ok() && read_sound_record(record, sound) && record.left() == 0;
}

} // namespace

bool Voices::add(std::vector<Voice> voices) {
    std::size_t bytes = 0;
    for (const auto* kept : {&voices, &m_inserted})
        for (const Voice& voice : *kept) bytes += voice.sound.text.size() + sizeof voice;
    for (const auto& [id, voice] : m_list) bytes += voice.sound.text.size();
    if (bytes > kCapacity) return false;
    for (Voice& voice : voices) {
        if (voice.id)
            m_list[*voice.id] = std::move(voice);
        else
            m_inserted.push_back(std::move(voice));
    }
    return true;
}

void Voices::restart() {
    std::erase_if(m_list, [](const auto& entry) { return entry.second.store_flag == 0; });
    std::erase_if(m_inserted, [](const Voice& voice) { return voice.store_flag == 0; });
}

std::vector<Voice> Voices::all() const {
    std::vector<Voice> all;
    for (const auto& [id, voice] : m_list) all.push_back(voice);
    all.insert(all.end(), m_inserted.begin(), m_inserted.end());
    return all;
}

ParsedVoices parse_voice_insertion(Bytes content) {
    ByteReader reader(content);
    std::vector<Voice> voices(1);
    Voice& voice = voices.front();
    voice.store_flag = reader.u8();
    voice.flag = reader.u8();
    reader.skip(3);
    if (!read_measured_sound(reader, voice.sound) || reader.left() != 0) return ErrorValue::malformed;
    return voices;
}

ParsedVoices parse_voice_update(Bytes content) {
    ByteReader reader(content);
    const std::uint8_t store_flag = reader.u8(), count = reader.u8();
    std::vector<Voice> voices;
    while (reader.left() != 0) {
        Voice& voice = voices.emplace_back();
        voice.store_flag = store_flag;
        voice.id = reader.u8();
        if (!read_measured_sound(reader, voice.sound)) return ErrorValue::malformed;
    }
    if (voices.empty() || (voices.size() & 0xFFU) != count) return ErrorValue::malformed;
    return voices;
}

} // namespace qm::sim
