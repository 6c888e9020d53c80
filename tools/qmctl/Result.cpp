#include "Result.h"

#include <algorithm>

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;

// One line. Text that is not valid UTF-8 (a file name may be anything) gets replacement characters.
std::string line(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

Result& Result::add(std::string label, std::string text, std::string key, Json value) {
    m_rows.push_back({std::move(label), std::move(text)});
    return add(std::move(key), std::move(value));
}

Result& Result::add(std::string label, std::string key, Json value) {
    std::string text = value.is_string() ? value.get<std::string>() : value.dump();
    return add(std::move(label), std::move(text), std::move(key), std::move(value));
}

Result& Result::add(std::string key, Json value) {
    m_values[std::move(key)] = std::move(value);
    return *this;
}

std::string Result::table() const {
    std::size_t width = 0;
    for (const Row& row : m_rows) width = std::max(width, row.label.size());
    std::string lines;
    for (const Row& row : m_rows)
        lines += row.label + std::string(width + 2 - row.label.size(), ' ') + row.text + "\n";
    return lines;
}

std::string Result::json() const { return line(m_values); }

std::string failure_json(int status, const std::string& meaning) {
    return line({{"ok", false}, {"status", status}, {"meaning", meaning}});
}

} // namespace qm::ctl
