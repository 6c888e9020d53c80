#include "JsonReader.h"

#include "options/json_text.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace qm::sign {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kLongestShown = 60; // bytes

std::string member(const std::string& path, const std::string& name) {
    return path.empty() ? name : path + "." + name;
}

} // namespace

Json parse_json(const std::string& text) try {
    return options::parse_json(text);
} catch (const std::invalid_argument& error) {
    throw JsonError(error.what());
}

Json read_json(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad()) throw JsonError("cannot be read");
    return parse_json(text);
}

void Field::refuse(const std::string& reason) const {
    throw JsonError((m_path.empty() ? "" : m_path + ": ") + reason);
}

void Field::expected(const std::string& what) const { refuse("expected " + what + ", not " + shown()); }

std::string Field::shown() const {
    if (m_value->is_object()) return "an object";
    if (m_value->is_array()) return "a list of " + std::to_string(m_value->size());
    std::string text = m_value->dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() <= kLongestShown) return text;
    std::size_t end = kLongestShown;
    while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) --end; // between characters
    return text.substr(0, end) + "...";
}

unsigned Field::number(unsigned min, unsigned max) const {
    const bool whole = m_value->is_number_unsigned();
    const auto number = whole ? m_value->get<std::uint64_t>() : 0;
    if (!whole || number < min || number > max)
        expected("a whole number from " + std::to_string(min) + " to " + std::to_string(max));
    return static_cast<unsigned>(number);
}

bool Field::flag() const {
    if (!m_value->is_boolean()) expected("true or false");
    return m_value->get<bool>();
}

std::string Field::text() const {
    if (!m_value->is_string() || m_value->get_ref<const std::string&>().empty())
        expected("a text that is not empty");
    std::string text = m_value->get<std::string>();
    if (text.find('\0') != std::string::npos) expected("a text without a zero byte");
    return text;
}

std::vector<Field> Field::list(std::size_t min, std::size_t max) const {
    if (!m_value->is_array() || m_value->size() < min || m_value->size() > max)
        expected("a list of " + std::to_string(min) + (min == max ? "" : " to " + std::to_string(max)));
    std::vector<Field> fields;
    for (std::size_t i = 0; i < m_value->size(); ++i)
        fields.emplace_back((*m_value)[i], m_path + "[" + std::to_string(i) + "]");
    return fields;
}

Object::Object(const Field& field) : m_object(field.value()), m_path(field.path()) {
    if (!m_object.is_object()) field.expected("an object");
}

std::optional<Field> Object::find(const std::string& name) {
    if (std::ranges::find(m_asked, name) == m_asked.end()) m_asked.push_back(name);
    const auto found = m_object.find(name);
    if (found == m_object.end()) return std::nullopt;
    return Field(*found, member(m_path, name));
}

Field Object::require(const std::string& name) {
    if (auto field = find(name)) return *field;
    throw JsonError(member(m_path, name) + ": is missing");
}

void Object::finish() const {
    for (const auto& [name, value] : m_object.items())
        if (std::ranges::find(m_asked, name) == m_asked.end())
            throw JsonError(member(m_path, name) + ": unknown field; known are " + options::joined(m_asked));
}

} // namespace qm::sign
