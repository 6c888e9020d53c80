// Spoken texts: options, and the library's record.
#pragma once

#include "ProgramDescription.h"

namespace qm::ctl {

[[nodiscard]] std::string read_speech(const std::string& text); // of a length that can be sent

class SpeechOptions {
  public:
    void add_to(ArgumentList& command);

    [[nodiscard]] Sound sound(const std::string& text) const;

  private:
    Sound m_settings;
};

// Points to the text of sound, which outlives it.
[[nodiscard]] HVSound_6G record_of(const Sound& sound);

} // namespace qm::ctl
