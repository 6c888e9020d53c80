// Fields of the controllers' records as text.
#pragma once

#include "Report.h"
#include "sign/values.h"

#include <ctime>
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
[[nodiscard]] std::string printable(const std::string& text);
using options::hex;
[[nodiscard]] std::string hex(Octets bytes, const char* separator);
[[nodiscard]] std::string dotted(Octets address); // 192.168.0.199

[[nodiscard]] std::string iso_time(const Time& time);             // 2024-01-31T23:59:59
[[nodiscard]] std::string model_name(const ControllerType& type); // "G6-T0 (0x62)"

Report& list_files(Report& report, const std::vector<FileEntry>& files);

[[nodiscard]] std::string timestamp(std::time_t time); // 2024-01-31T23:59:59+01:00
// As strftime's format says, at most 63 bytes.
[[nodiscard]] std::string local_time(std::time_t time, const char* format);

} // namespace qm::ctl
