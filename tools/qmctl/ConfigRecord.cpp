#include "ConfigRecord.h"

#include "arguments.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <span>

namespace qm::ctl {
namespace {

using nlohmann::json;

enum class Kind { number, text };

struct Field {
    const char* name;
    std::size_t offset, size;
    Kind kind = Kind::number;
    bool optional = false;
};
using Fields = std::span<const Field>;

#define QM_NUMBER(record, name)                                                                              \
    { #name, offsetof(record, name), sizeof(record::name) }
#define QM_TEXT(record, name)                                                                                \
    { #name, offsetof(record, name), sizeof(record::name), Kind::text }

constexpr Field kFields5[] = {{"FileType", offsetof(ConfigFile, FileType), 1, Kind::number, true},
                              QM_TEXT(ConfigFile, ControllerName),
                              QM_NUMBER(ConfigFile, Address),
                              QM_NUMBER(ConfigFile, Baudrate),
                              QM_NUMBER(ConfigFile, ScreenWidth),
                              QM_NUMBER(ConfigFile, ScreenHeight),
                              QM_NUMBER(ConfigFile, Color),
                              QM_NUMBER(ConfigFile, MirrorMode),
                              QM_NUMBER(ConfigFile, OEPol),
                              QM_NUMBER(ConfigFile, DAPol),
                              QM_NUMBER(ConfigFile, RowOrder),
                              QM_NUMBER(ConfigFile, FreqPar),
                              QM_NUMBER(ConfigFile, OEWidth),
                              QM_NUMBER(ConfigFile, OEAngle),
                              QM_NUMBER(ConfigFile, FaultProcessMode),
                              QM_NUMBER(ConfigFile, CommTimeoutValue),
                              QM_NUMBER(ConfigFile, RunningMode),
                              QM_NUMBER(ConfigFile, LoggingMode),
                              QM_NUMBER(ConfigFile, GrayFlag),
                              QM_NUMBER(ConfigFile, CascadeMode),
                              QM_NUMBER(ConfigFile, Default_brightness),
                              QM_NUMBER(ConfigFile, HUBConfig),
                              QM_NUMBER(ConfigFile, Language)};

constexpr Field kFields6[] = {{"FileType", offsetof(ConfigFile_G6, FileType), 1, Kind::number, true},
                              QM_TEXT(ConfigFile_G6, ControllerName),
                              QM_TEXT(ConfigFile_G6, ScreenAddress),
                              QM_NUMBER(ConfigFile_G6, Address),
                              QM_NUMBER(ConfigFile_G6, Baudrate),
                              QM_NUMBER(ConfigFile_G6, ScreenWidth),
                              QM_NUMBER(ConfigFile_G6, ScreenHeight),
                              QM_NUMBER(ConfigFile_G6, Color),
                              QM_NUMBER(ConfigFile_G6, modeofdisp),
                              QM_NUMBER(ConfigFile_G6, TipLanguage),
                              QM_NUMBER(ConfigFile_G6, FaultProcessMode),
                              QM_NUMBER(ConfigFile_G6, CommTimeoutValue),
                              QM_NUMBER(ConfigFile_G6, RunningMode),
                              QM_NUMBER(ConfigFile_G6, LoggingMode),
                              QM_NUMBER(ConfigFile_G6, DevideScreenMode),
                              QM_NUMBER(ConfigFile_G6, Default_brightness)};

#undef QM_TEXT
#undef QM_NUMBER

const Field* find(Fields fields, const std::string& name) {
    const auto found = std::ranges::find(fields, name, &Field::name);
    return found == fields.end() ? nullptr : &*found;
}

bool is_value(const Field& field, const json& value) {
    if (field.kind == Kind::number) {
        const unsigned most = field.size == 1 ? 0xFF : 0xFFFF;
        return value.is_number_unsigned() && value.get<std::uint64_t>() <= most;
    }
    return value.is_string() && value.get_ref<const std::string&>().size() <= field.size;
}

std::string value_words(const Field& field) {
    if (field.kind == Kind::text) return "a text of at most " + std::to_string(field.size) + " bytes";
    return std::string("a whole number from 0 to ") + (field.size == 1 ? "255" : "65535");
}

void check(const std::string& name, const json& value) {
    const Field *of5 = find(kFields5, name), *of6 = find(kFields6, name);
    if (!of5 && !of6) expected("a configuration whose fields have known names (" + name + " has not)");
    const bool good = (of5 && is_value(*of5, value)) || (of6 && is_value(*of6, value));
    if (!good) expected("a configuration whose " + name + " is " + value_words(of6 ? *of6 : *of5));
}

void store(const Field& field, const json& value, unsigned char* record) {
    if (!is_value(field, value))
        throw std::invalid_argument(std::string(field.name) + " has to be " + value_words(field));
    if (field.kind == Kind::text) {
        const auto& text = value.get_ref<const std::string&>();
        std::copy(text.begin(), text.end(), record + field.offset);
        return;
    }
    const auto number = value.get<unsigned>();
    for (std::size_t i = 0; i < field.size; ++i)
        record[field.offset + i] = static_cast<unsigned char>(number >> 8 * i);
}

// What the controller says of itself already.
json told_by(const Identity& controller) {
    return {{"Address", controller.address},
            {"Baudrate", controller.baud_rate},
            {"ScreenWidth", controller.screen.width},
            {"ScreenHeight", controller.screen.height},
            {"Color", controller.color}};
}

template <class Record> Record build(Fields fields, const json& given, const Identity& controller) {
    for (const auto& [name, value] : given.items())
        if (!find(fields, name))
            throw std::invalid_argument("the controller's generation has no field " + name);
    json values = told_by(controller);
    values.update(given);
    unsigned char bytes[sizeof(Record)]{};
    for (const Field& field : fields) {
        const auto value = values.find(field.name);
        if (value != values.end())
            store(field, *value, bytes);
        else if (!field.optional)
            throw std::invalid_argument("the configuration lacks " + std::string(field.name));
    }
    Record record;
    std::memcpy(&record, bytes, sizeof record);
    return record;
}

} // namespace

nlohmann::json read_configuration(const std::string& path) {
    std::ifstream file(read_path(path));
    json fields = json::parse(file, nullptr, false);
    if (!fields.is_object()) expected("a file with one JSON object");
    for (const auto& [name, value] : fields.items()) check(name, value);
    return fields;
}

ConfigFile configuration5(const json& fields, const Identity& controller) {
    return build<ConfigFile>(kFields5, fields, controller);
}

ConfigFile_G6 configuration6(const json& fields, const Identity& controller) {
    return build<ConfigFile_G6>(kFields6, fields, controller);
}

} // namespace qm::ctl
