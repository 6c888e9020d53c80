#include "Speech.h"

namespace qm::ctl {

std::string read_speech(const std::string& text) {
    constexpr std::size_t kLongest = 65515;
    if (text.empty() || text.size() > kLongest) expected("a text of 1 to 65515 bytes");
    return text;
}

void SpeechOptions::add_to(ArgumentList& command) {
    constexpr unsigned kByte = 0xFF, kMost = 0x7FFFFFFF;
    add_number(command, "--voice", m_settings.voice, 0, kByte, "Voice of the speech unit (default 0)");
    add_number(command, "--volume", m_settings.volume, 0, kByte, "Volume (default 10)");
    add_number(command, "--speech-speed", m_settings.speed, 0, kByte, "Speed of speech (default 5)");
    add_number(command, "--encoding", m_settings.encoding, 0, kByte,
               "How the speech unit reads the bytes of the text (default 0)");
    add_number(command, "--speech-repeat", m_settings.repeat, 0, kMost, "Repetitions (default 0)");
    add_number(command, "--delay", m_settings.delay, 0, kMost, "Pause between them (default 0)");
    add_number(command, "--digits", m_settings.digits, 0, kByte, "How digits are spoken (default 0)");
    add_number(command, "--language", m_settings.language, 0, kByte, "Language (default 0)");
    add_number(command, "--word-style", m_settings.word_style, 0, kByte, "Word style (default 0)");
}

Sound SpeechOptions::sound(const std::string& text) const {
    Sound sound = m_settings;
    sound.text = text;
    return sound;
}

HVSound_6G record_of(const Sound& sound) {
    const auto byte = [](unsigned value) { return static_cast<Oint8>(value); };
    HVSound_6G record{};
    record.SoundFlag = 1;
    record.SoundPerson = byte(sound.voice);
    record.SoundVolum = byte(sound.volume);
    record.SoundSpeed = byte(sound.speed);
    record.SoundDataMode = byte(sound.encoding);
    record.SoundReplayTimes = static_cast<Oint32>(sound.repeat);
    record.SoundReplayDelay = static_cast<Oint32>(sound.delay);
    record.Soundnumdeal = byte(sound.digits);
    record.Soundlanguages = byte(sound.language);
    record.Soundwordstyle = byte(sound.word_style);
    record.SoundDataLen = static_cast<Ouint32>(sound.text.size());
    record.SoundData = reinterpret_cast<const Ouint8*>(sound.text.data());
    return record;
}

} // namespace qm::ctl
