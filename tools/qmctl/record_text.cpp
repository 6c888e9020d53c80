#include "record_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

namespace qm::ctl {

std::string printable(Octets bytes) {
    std::string text(bytes.begin(), std::ranges::find(bytes, 0));
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

std::string printable(const std::string& text) {
    return printable(Octets(reinterpret_cast<const unsigned char*>(text.data()), text.size()));
}

std::string hex(Octets bytes, const char* separator) {
    std::string text;
    for (const unsigned char byte : bytes) {
        if (!text.empty()) text.append(separator);
        text.append(hex(byte, 2), 2);
    }
    return text;
}

std::string dotted(Octets address) {
    std::string text;
    for (const unsigned char byte : address) {
        if (!text.empty()) text.push_back('.');
        text.append(std::to_string(byte));
    }
    return text;
}

std::string iso_time(const Time& time) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04u-%02u-%02uT%02u:%02u:%02u", time.date.year, time.date.month,
                  time.date.day, time.hour, time.minute, time.second);
    return text.data();
}

std::string model_name(const ControllerType& type) {
    return (type.model.empty() ? "unknown" : type.model) + " (" + hex(type.code & 0xFFU, 2) + ")";
}

Report& list_files(Report& report, const std::vector<FileEntry>& files) {
    std::vector<std::vector<std::string>> lines{{"Name", "Type", "Bytes", "CRC-32"}};
    auto values = nlohmann::ordered_json::array();
    for (const auto& [full_name, type, size, checksum] : files) {
        const std::string name = printable(full_name);
        lines.push_back({name, std::to_string(type), std::to_string(size), hex(checksum, 8)});
        values.push_back({{"name", name}, {"type", type}, {"size", size}, {"crc32", checksum}});
    }
    return report.list(std::move(lines), "files", std::move(values));
}

std::string local_time(std::time_t time, const char* format) {
    std::tm local{};
    ::localtime_r(&time, &local);
    char text[64];
    return {text, std::strftime(text, sizeof text, format, &local)};
}

std::string timestamp(std::time_t time) {
    std::string text = local_time(time, "%FT%T%z");
    return text.insert(text.size() - 2, ":");
}

} // namespace qm::ctl
