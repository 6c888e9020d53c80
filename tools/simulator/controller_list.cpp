#include "simulator/controller_list.h"

#include "options/json_text.h"
#include "options/readers.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <system_error>

namespace qm::sim {
namespace {

using namespace options;
using nlohmann::json;

std::string name_at(std::size_t place) { return "controller-" + std::to_string(place + 1); }

// A number stands for its digits, so that a file may hold either.
std::string digits_or_text(const json& value) {
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
    else if (key == "size")
        take_size(options, text);
    else
        expected("name, port, type, size or color");
}

Options controller_from(const json& item, Options options) {
    if (!item.is_object()) throw std::invalid_argument(": expected an object");
    for (const auto& [key, value] : item.items()) try {
            take(options, key, digits_or_text(value));
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("." + key + ": " + error.what());
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

void require_ports_that_differ(const std::vector<Options>& controllers) {
    std::map<std::uint16_t, std::size_t> places;
    for (std::size_t place = 0; place < controllers.size(); ++place) {
        const std::uint16_t port = controllers[place].port;
        if (port == 0) continue;
        const auto [other, is_new] = places.emplace(port, place);
        if (!is_new)
            throw std::invalid_argument("[" + std::to_string(other->second) + "] and [" +
                                        std::to_string(place) + "] both have port " + std::to_string(port));
    }
}

std::string whole_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::invalid_argument(path + ": " + std::generic_category().message(errno));
    if (std::filesystem::is_directory(path)) throw std::invalid_argument(path + ": it is a folder");
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

json list_in(const std::string& path) {
    const std::string text = whole_file(path);
    json list;
    try {
        list = parse_json(text);
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument(path + ": " + error.what());
    }
    if (!list.is_array() || list.empty() || list.size() > kMostControllers)
        expected("a JSON file with a list of 1 to " + std::to_string(kMostControllers) + " controllers");
    return list;
}

// The one at that place, before its own words.
Options unnamed(Options options, std::size_t place, bool has_port) {
    options.name = name_at(place);
    if (options.port == 0 || has_port) return options;
    if (options.port + place > kLastPort)
        throw std::invalid_argument(": expected ports up to " + std::to_string(kLastPort));
    options.port = static_cast<std::uint16_t>(options.port + place);
    return options;
}

void give_stores(std::vector<Options>& controllers) {
    for (Options& options : controllers)
        if (!options.store.empty())
            options.store = std::filesystem::path(options.store) / file_name_for(options.name);
}

} // namespace

void take_size(Options& options, const std::string& text) {
    const auto [width, height] = read_size(text);
    options.width = static_cast<int>(width);
    options.height = static_cast<int>(height);
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

std::string file_name_for(const std::string& name) {
    std::string text;
    for (const char c : name) {
        const bool itself = c != '%' && c != '/' && c != '\0' && (c != '.' || !text.empty());
        text += itself ? std::string(1, c) : "%" + hex(static_cast<unsigned char>(c), 2).substr(2);
    }
    return text;
}

std::vector<Options> controllers_in(const std::string& path, const Options& options) {
    std::vector<Options> controllers;
    for (const json& item : list_in(path)) try {
            const std::size_t place = controllers.size();
            controllers.push_back(controller_from(item, unnamed(options, place, item.contains("port"))));
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("[" + std::to_string(controllers.size()) + "]" + error.what());
        }
    require_names_that_differ(controllers);
    require_ports_that_differ(controllers);
    give_stores(controllers);
    return controllers;
}

} // namespace qm::sim
