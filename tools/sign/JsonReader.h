// JSON that says where it is wrong: every value knows its path, such as areas[1].color.
#pragma once

#include "errors.h"
#include "options/readers.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qm::sign {

// "areas[1].color: expected ..., not ..."
class JsonError : public UsageError {
    using UsageError::UsageError;
};

// Parses text. Throws JsonError for syntax errors, with line and column, and for a field that stands twice in
// an object.
[[nodiscard]] nlohmann::json parse_json(const std::string& text);

// What a file holds. Throws likewise, and when it cannot be read.
[[nodiscard]] nlohmann::json read_json(const std::string& path);

class Field {
  public:
    Field(const nlohmann::json& value, std::string path) : m_value(&value), m_path(std::move(path)) {}

    [[nodiscard]] const nlohmann::json& value() const { return *m_value; }
    [[nodiscard]] const std::string& path() const { return m_path; }
    [[noreturn]] void refuse(const std::string& reason) const;
    [[noreturn]] void expected(const std::string& what) const; // adds what it is instead

    [[nodiscard]] unsigned number(unsigned min, unsigned max) const;
    [[nodiscard]] bool flag() const;
    [[nodiscard]] std::string text() const; // not empty, and no zero byte in it
    [[nodiscard]] std::vector<Field> list(std::size_t min, std::size_t max) const;

    // A text, taken by a reader that throws std::invalid_argument with what it expected.
    template <class Reader> auto read(Reader reader) const {
        const std::string given = text();
        try {
            return reader(given);
        } catch (const std::invalid_argument& wrong) {
            refuse(wrong.what() + (", not " + shown()));
        }
    }

  private:
    [[nodiscard]] std::string shown() const; // in one line, shortened

    const nlohmann::json* m_value;
    std::string m_path;
};

// The fields of an object, each asked for by name.
class Object {
  public:
    explicit Object(const Field& field);

    [[nodiscard]] std::optional<Field> find(const std::string& name);
    [[nodiscard]] Field require(const std::string& name);

    // What is not there leaves value alone.
    template <class Value, class Reader> void take(const std::string& name, Value& value, Reader reader) {
        if (const auto field = find(name)) value = std::invoke(reader, *field);
    }
    template <class Value>
    void take_number(const std::string& name, Value& value, unsigned min, unsigned max) {
        take(name, value, [=](const Field& field) { return static_cast<Value>(field.number(min, max)); });
    }
    // From 0 to the most that the value holds.
    template <class Value> void take_number(const std::string& name, Value& value) {
        take_number(name, value, 0, options::kMost<Value>);
    }
    // A text, read as arguments are.
    template <class Value, class Reader>
    void take_text(const std::string& name, Value& value, Reader reader) {
        take(name, value, [=](const Field& field) { return field.read(reader); });
    }

    // Throws JsonError for a field that nobody asked for.
    void finish() const;

  private:
    const nlohmann::json& m_object;
    std::string m_path;
    std::vector<std::string> m_asked;
};

// Gives an object's fields to read, which has to ask for all of them.
template <class Read> void read_object(const Field& field, Read read) {
    Object object(field);
    read(object);
    object.finish();
}

} // namespace qm::sign
