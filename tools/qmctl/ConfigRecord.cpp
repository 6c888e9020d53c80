#include "ConfigRecord.h"

#include "arguments.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <optional>
#include <type_traits>
#include <vector>

namespace qm::ctl {
namespace {

using nlohmann::json;

enum class Kind { number, text };

struct RecordField {
    const char* name;
    std::size_t offset, size;
    Kind kind;
};
using Fields = std::vector<RecordField>;

template <class Type> constexpr RecordField field(const char* name, std::size_t offset) {
    return {name, offset, sizeof(Type), std::is_array_v<Type> ? Kind::text : Kind::number};
}

#define FIELD(name) field<decltype(Record::name)>(#name, offsetof(Record, name))

// Those of both generations, and those of one.
template <class Record> Fields with_shared(const Fields& own) {
    Fields fields{FIELD(FileType),    FIELD(ControllerName),   FIELD(Address),
                  FIELD(Baudrate),    FIELD(ScreenWidth),      FIELD(ScreenHeight),
                  FIELD(Color),       FIELD(FaultProcessMode), FIELD(CommTimeoutValue),
                  FIELD(RunningMode), FIELD(LoggingMode),      FIELD(Default_brightness)};
    fields.insert(fields.end(), own.begin(), own.end());
    return fields;
}

Fields fields5() {
    using Record = ConfigFile;
    return with_shared<Record>({FIELD(MirrorMode), FIELD(OEPol), FIELD(DAPol), FIELD(RowOrder),
                                FIELD(FreqPar), FIELD(OEWidth), FIELD(OEAngle), FIELD(GrayFlag),
                                FIELD(CascadeMode), FIELD(HUBConfig), FIELD(Language)});
}

Fields fields6() {
    using Record = ConfigFile_G6;
    return with_shared<Record>(
        {FIELD(ScreenAddress), FIELD(modeofdisp), FIELD(TipLanguage), FIELD(DevideScreenMode)});
}

#undef FIELD

std::optional<RecordField> find(const Fields& fields, const std::string& name) {
    const auto found = std::ranges::find(fields, name, &RecordField::name);
    return found == fields.end() ? std::nullopt : std::optional(*found);
}

bool is_value(const RecordField& field, const json& value) {
    if (field.kind == Kind::number) {
        const unsigned most = field.size == 1 ? 0xFF : 0xFFFF;
        return value.is_number_unsigned() && value.get<std::uint64_t>() <= most;
    }
    return value.is_string() && value.get_ref<const std::string&>().size() <= field.size;
}

std::string value_words(const RecordField& field) {
    if (field.kind == Kind::text) return "a text of at most " + std::to_string(field.size) + " bytes";
    return std::string("a whole number from 0 to ") + (field.size == 1 ? "255" : "65535");
}

void check(const std::string& name, const json& value) {
    const auto of5 = find(fields5(), name), of6 = find(fields6(), name);
    if (!of5 && !of6) expected("a configuration whose fields have known names (" + name + " has not)");
    const bool good = (of5 && is_value(*of5, value)) || (of6 && is_value(*of6, value));
    if (!good) expected("a configuration whose " + name + " is " + value_words(of6 ? *of6 : *of5));
}

void store(const RecordField& field, const json& value, unsigned char* record) {
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

// What need not be given.
json known_of(const Identity& controller) {
    return {{"FileType", 0U},
            {"Address", controller.address},
            {"Baudrate", controller.baud_rate},
            {"ScreenWidth", controller.screen.width},
            {"ScreenHeight", controller.screen.height},
            {"Color", controller.color}};
}

template <class Record> Record build(const Fields& fields, const json& given, const Identity& controller) {
    for (const auto& [name, value] : given.items())
        if (!find(fields, name))
            throw std::invalid_argument("the controller's generation has no field " + name);
    json values = known_of(controller);
    values.update(given);
    unsigned char bytes[sizeof(Record)]{};
    for (const RecordField& field : fields) {
        const auto value = values.find(field.name);
        if (value == values.end())
            throw std::invalid_argument("the configuration lacks " + std::string(field.name));
        store(field, *value, bytes);
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
    return build<ConfigFile>(fields5(), fields, controller);
}

ConfigFile_G6 configuration6(const json& fields, const Identity& controller) {
    return build<ConfigFile_G6>(fields6(), fields, controller);
}

} // namespace qm::ctl
