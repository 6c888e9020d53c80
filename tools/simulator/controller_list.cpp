#include "simulator/controller_list.h"

#include "options/readers.h"
#include "simulator/controller/state_json.h"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

namespace qm::sim {
namespace {

using namespace options;
using nlohmann::json;

constexpr unsigned kLongestSide = 4096, kLastPort = 65535;

std::string name_at(std::size_t place) { return "controller-" + std::to_string(place + 1); }

// A number stands for its digits, so that a file may hold either.
std::string text_of(const json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_number_unsigned()) return value.dump();
    expected("a text or a whole number");
}

void take(Options& options, const std::string& key, const std::string& text) {
    if (key == "name")
        options.name = text;
    else if (key == "port")
        options.port = static_cast<std::uint16_t>(read_number(text, 0, kLastPort));
    else if (key == "type")
        options.type = static_cast<std::uint16_t>(read_type(text));
    else if (key == "color")
        options.color = read_color(text);
    else if (key == "size") {
        const Size size = read_size(text);
        options.width = size.width;
        options.height = size.height;
    } else
        expected("name, port, type, size or color");
}

Options controller_from(const json& item, Options options) {
    if (!item.is_object()) expected("an object");
    for (const auto& [key, value] : item.items()) try {
            take(options, key, text_of(value));
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("\"" + key + "\": " + error.what());
        }
    return options;
}

// A name is a file's, too.
void require_names_that_differ(const std::vector<Options>& controllers) {
    std::set<std::string> names;
    for (const Options& options : controllers)
        if (options.name.empty() || !names.insert(options.name).second)
            expected("names that differ, none of them empty");
}

void give_stores(std::vector<Options>& controllers) {
    for (Options& options : controllers)
        if (!options.store.empty())
            options.store = std::filesystem::path(options.store) / label_of(options.name);
}

} // namespace

Size read_size(const std::string& text) {
    const auto sides = split(text, 'x');
    const auto width = sides.size() == 2 ? to_number(sides[0], 1, kLongestSide) : std::nullopt;
    const auto height = sides.size() == 2 ? to_number(sides[1], 1, kLongestSide) : std::nullopt;
    if (!width || !height) expected("WIDTHxHEIGHT with 1 to 4096 pixels each, such as 128x32");
    return {static_cast<int>(*width), static_cast<int>(*height)};
}

ScreenColor read_color(const std::string& text) {
    const auto code = to_number(text, 1, 4);
    return static_cast<ScreenColor>(code ? *code : read_word(text, kScreenColors));
}

std::vector<Options> copies_of(const Options& options, unsigned count) {
    if (options.port != 0 && options.port + count - 1 > kLastPort)
        expected("ports up to " + std::to_string(kLastPort));
    std::vector<Options> controllers(count, options);
    for (std::size_t place = 0; place < count; ++place) {
        controllers[place].name = name_at(place);
        if (options.port != 0) controllers[place].port = static_cast<std::uint16_t>(options.port + place);
    }
    if (count > 1) give_stores(controllers);
    return controllers;
}

std::vector<Options> controllers_in(const std::string& path, const Options& options) {
    std::ifstream file(path);
    const json list = json::parse(file, nullptr, false);
    if (!list.is_array() || list.empty() || list.size() > kMostControllers)
        expected("a JSON file with a list of 1 to " + std::to_string(kMostControllers) + " controllers");
    std::vector<Options> controllers;
    for (const json& item : list) try {
            controllers.push_back(options);
            controllers.back().name = name_at(controllers.size() - 1);
            if (options.port != 0)
                controllers.back().port += static_cast<std::uint16_t>(controllers.size() - 1);
            controllers.back() = controller_from(item, controllers.back());
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("controller " + std::to_string(controllers.size()) + ", " +
                                        error.what());
        }
    require_names_that_differ(controllers);
    give_stores(controllers);
    return controllers;
}

} // namespace qm::sim
