// Values that only controllers know: names of their files, passwords, times, addresses.
#pragma once

#include "arguments.h"

namespace qm::ctl {

[[nodiscard]] std::string read_name(const std::string& text);     // 4 bytes
[[nodiscard]] std::string read_password(const std::string& text); // 6 bytes

using Levels = std::array<Ouint8, 48>;
[[nodiscard]] Levels read_levels(const std::string& path); // a file of 48 numbers

[[nodiscard]] int read_signed(const std::string& text);           // -32768 to 32767
[[nodiscard]] std::string read_mac(const std::string& text);      // hex fields; gives them in decimal
[[nodiscard]] std::string read_ssid(const std::string& text);     // 1 to 32 bytes
[[nodiscard]] std::string read_wifi_key(const std::string& text); // 8 to 63 characters

} // namespace qm::ctl
