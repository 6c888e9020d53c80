// Speech that belongs to no area, and the strict parsers of the payloads that bring it.
#pragma once

#include "simulator/playback/SpokenText.h"
#include "simulator/protocol/ErrorValue.h"

#include <map>
#include <variant>
#include <vector>

namespace qm::sim {

// A text that is spoken: inserted, or an entry of the list of voices.
struct Voice {
    std::optional<std::uint8_t> id{}; // its number in the list; none: it was inserted
    std::uint8_t store_flag = 0;
    std::uint8_t flag = 0; // of an inserted one
    SpokenText sound{};
};

// What a controller keeps of them.
class Voices {
  public:
    // Bytes of text that there is room for.
    static constexpr std::size_t kCapacity = std::size_t{16} << 20U;

    // Takes them in, an entry in the place of that of the same number; all or none. False: there is no room.
    bool add(std::vector<Voice> voices);
    // Those that were to be stored stay.
    void restart();
    // The entries of the list in the order of their numbers, then what was inserted, oldest first.
    [[nodiscard]] std::vector<Voice> all() const;

  private:
    std::map<std::uint8_t, Voice> m_list;
    std::vector<Voice> m_inserted;
};

using ParsedVoices = std::variant<std::vector<Voice>, ErrorValue>;

// What follows the 5-byte command header of an insertion: StoreFlag 1, VoiceFlg 1, zero 3, Datelen 4 and a
// sound record of that length.
[[nodiscard]] ParsedVoices parse_voice_insertion(Bytes content);

// The same of an update: StoreFlag 1, VoiceNum 1 (the low byte of the number of entries), and for each entry
// VoiceID 1, Datalen 4 and a sound record of that length.
[[nodiscard]] ParsedVoices parse_voice_update(Bytes content);

} // namespace qm::sim
