// Fields of the controllers' records as text.
#pragma once

#include "qm_sdk_dual.h"

#include <optional>
#include <span>
#include <string>

namespace qm::ctl {

using Octets = std::span<const unsigned char>;

// The bytes of a field, whatever their type.
template <class Type, std::size_t Size> Octets octets(const Type (&field)[Size]) {
    static_assert(sizeof(Type) == 1);
    return {reinterpret_cast<const unsigned char*>(field), Size};
}

// Up to the first zero byte. A controller's text may hold anything; a terminal and JSON get printable ASCII.
[[nodiscard]] std::string printable(Octets bytes);
[[nodiscard]] std::string hex(unsigned value, int digits); // 0x0262
[[nodiscard]] std::string hex(Octets bytes, const char* separator);
[[nodiscard]] std::string dotted(Octets address); // 192.168.0.199

// A controller's clock; every field is in BCD.
struct BcdClock {
    unsigned year, month, day, hour, minute, second;
};
[[nodiscard]] BcdClock clock_of(const ControllerStatus_G56& status);
// "2024-01-31T23:59:59", or nothing for what is no time.
[[nodiscard]] std::optional<std::string> iso_time(const BcdClock& clock);

} // namespace qm::ctl
