#include "simulator/controller/state_json.h"

#include "simulator/controller/state_fields.h"

#include <arpa/inet.h>
#include <charconv>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <system_error>

namespace qm::sim {
namespace {

using nlohmann::json;

constexpr char kDigits[] = "0123456789ABCDEF";

bool stands_for_itself(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '_';
}

std::uint8_t byte_from(std::string_view digits) {
    std::uint8_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, value, 16);
    if (digits.size() != 2 || result.ec != std::errc{} || result.ptr != end)
        throw std::runtime_error("not a byte in hexadecimal digits: " + std::string(digits));
    return value;
}

void append_hex(std::string& text, std::uint8_t byte) {
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 0x0FU];
}

std::string dotted(const Network::Address& ip) {
    char text[INET_ADDRSTRLEN];
    return ::inet_ntop(AF_INET, ip.data(), text, sizeof text);
}

// Puts fields into JSON, and takes them out again.
struct Writer {
    json& out;

    template <class Number>
    requires std::is_integral_v<Number>
    static json encode(Number value) { return value; }
    static json encode(BrightnessMode mode) { return static_cast<unsigned>(mode); }
    static json encode(std::chrono::seconds value) { return value.count(); }
    static json encode(const std::string& text) { return label_of(text); }
    template <std::size_t size> static json encode(const std::array<std::uint8_t, size>& bytes) {
        return hex_of(bytes);
    }
    static json encode(const Network::Address& ip) { return dotted(ip); }
    template <class Item> static json encode(const std::vector<Item>& items) {
        json list = json::array();
        for (const Item& item : items) list.push_back(encode(item));
        return list;
    }
    template <class Record>
    requires requires(Record& record, Writer& writer) { visit_fields(record, writer); }
    static json encode(const Record& record) {
        json object = json::object();
        Writer writer{object};
        visit_fields(record, writer);
        return object;
    }

    template <class Field, class... More>
    void operator()(const char* key, const Field& field, const More&... more) {
        out[key] = encode(field);
        if constexpr (sizeof...(more) > 0) (*this)(more...);
    }
};

struct Reader {
    const json& in;

    static void decode(const json& value, bool& to) { to = value.get<bool>(); }
    template <class Number>
    requires std::is_integral_v<Number>
    static void decode(const json& value, Number& to) {
        const auto number = value.get<std::int64_t>();
        if (!value.is_number_integer() || !std::in_range<Number>(number))
            throw std::runtime_error("a number is out of range");
        to = static_cast<Number>(number);
    }
    static void decode(const json& value, BrightnessMode& to) {
        const auto mode = value.get<unsigned>();
        if (mode > static_cast<unsigned>(BrightnessMode::by_sensor))
            throw std::runtime_error("there is no such brightness mode");
        to = static_cast<BrightnessMode>(mode);
    }
    // Two hundred years either way: clocks stay within what their records can say.
    static void decode(const json& value, std::chrono::seconds& to) {
        constexpr std::int64_t kLongest = std::int64_t{200} * 366 * 86400;
        std::int64_t count = 0;
        decode(value, count);
        if (count < -kLongest || count > kLongest) throw std::runtime_error("a time is out of range");
        to = std::chrono::seconds(count);
    }
    static void decode(const json& value, std::string& to) { to = bytes_of(value.get<std::string>()); }
    template <std::size_t size> static void decode(const json& value, std::array<std::uint8_t, size>& to) {
        const auto text = value.get<std::string>();
        if (text.size() != 2 * size) throw std::runtime_error("a field has not the right length");
        for (std::size_t i = 0; i < size; ++i) to[i] = byte_from(std::string_view(text).substr(2 * i, 2));
    }
    static void decode(const json& value, Network::Address& to) {
        if (::inet_pton(AF_INET, value.get<std::string>().c_str(), to.data()) != 1)
            throw std::runtime_error("an address is not a dotted IPv4 address");
    }
    template <class Item> static void decode(const json& value, std::vector<Item>& to) {
        if (!value.is_array()) throw std::runtime_error("a list is missing");
        to.clear();
        for (const json& item : value) decode(item, to.emplace_back());
    }
    template <class Record>
    requires requires(Record& record, Writer& writer) { visit_fields(record, writer); }
    static void decode(const json& value, Record& to) {
        if (!value.is_object()) throw std::runtime_error("an object is missing");
        Reader reader{value};
        visit_fields(to, reader);
    }

    template <class Field, class... More> void operator()(const char* key, Field& field, More&... more) {
        if (const auto value = in.find(key); value != in.end()) decode(*value, field);
        if constexpr (sizeof...(more) > 0) (*this)(more...);
    }
};

json list_of(const std::vector<StoredFile>& files) {
    json list = json::array();
    for (const StoredFile& file : files) list.push_back(json_of(file));
    return list;
}

} // namespace

std::string hex_of(Bytes bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) append_hex(text, byte);
    return text;
}

std::string label_of(const std::string& bytes) {
    std::string label;
    for (const char c : bytes)
        if (stands_for_itself(c))
            label += c;
        else
            append_hex(label += '%', static_cast<std::uint8_t>(c));
    return label;
}

std::string bytes_of(const std::string& label) {
    std::string bytes;
    for (std::size_t i = 0; i < label.size(); ++i) {
        const bool escaped = label[i] == '%';
        bytes += escaped ? static_cast<char>(byte_from(std::string_view(label).substr(i + 1, 2))) : label[i];
        if (escaped) i += 2;
    }
    return bytes;
}

json json_of(const ControllerState& state) { return Writer::encode(state); }

ControllerState state_from(const json& json) {
    ControllerState state;
    Reader::decode(json, state);
    return state;
}

json json_of(const StoredFile& file) {
    return {{"family", file.family == FileFamily::ordinary ? "ordinary" : "configuration"},
            {"name", label_of(file.name)},
            {"type", file.type},
            {"size", file.data.size()},
            {"crc", file.crc}};
}

json json_of(const FileSystem& files) {
    json list = json::array();
    for (const auto& [key, file] : files.all()) list.push_back(json_of(file));
    return list;
}

json json_of(const SpokenText& sound) {
    return {{"person", sound.person},
            {"volume", sound.volume},
            {"speed", sound.speed},
            {"data_mode", sound.data_mode},
            {"replay_times", sound.replay_times},
            {"replay_delay", sound.replay_delay},
            {"num_deal", sound.num_deal},
            {"languages", sound.languages},
            {"word_style", sound.word_style},
            {"bytes", sound.text.size()},
            {"text", std::string(sound.text.begin(), sound.text.end())}};
}

json json_of(const KeptArea& kept) {
    const AreaSettings& area = kept.area;
    json out = {{"id", area.id},
                {"x", area.rect.x},
                {"y", area.rect.y},
                {"width", area.rect.width},
                {"height", area.rect.height},
                {"pages", kept.pages},
                {"run_mode", area.run_mode},
                {"timeout", area.timeout},
                {"play_at_once", area.play_at_once},
                {"with_all_programs", area.with_all_programs},
                {"programs", area.programs},
                {"shown", kept.shown}};
    if (area.sound) out["sound"] = json_of(*area.sound);
    return out;
}

json json_of(const Voice& voice) {
    json out = json_of(voice.sound);
    if (voice.id)
        out["voice"] = *voice.id;
    else
        out["flag"] = voice.flag;
    out["store_flag"] = voice.store_flag;
    return out;
}

json json_of(const Snapshot& snapshot, json files) {
    json out = json_of(static_cast<const ControllerState&>(snapshot));
    out["clock"] = clock_text(snapshot.clock);
    out["power"] = snapshot.power;
    out["brightness_level"] = snapshot.brightness_level;
    out["total_memory"] = snapshot.total_memory;
    out["available_memory"] = snapshot.available_memory;
    out["program"] = label_of(snapshot.program);
    out["program_errors"] = snapshot.program_errors;
    out["files"] = std::move(files);
    out["areas"] = json::array();
    for (const KeptArea& area : snapshot.areas) out["areas"].push_back(json_of(area));
    out["sounds"] = json::array();
    for (const Voice& voice : snapshot.voices) out["sounds"].push_back(json_of(voice));
    return out;
}

std::string state_text(const Snapshot& snapshot, const std::vector<StoredFile>& files) {
    return json_of(snapshot, list_of(files)).dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

} // namespace qm::sim
