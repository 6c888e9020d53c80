#include "Report.h"

#include <algorithm>

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;

std::string in_words(const Json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (!value.is_structured()) return value.dump();
    std::string words;
    for (const auto& [name, item] : value.items())
        words.append(words.empty() ? "" : ", ").append(value.is_object() ? name : in_words(item));
    return words;
}

// Rows of the same number of cells, the cells of a column below each other.
std::string aligned(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(row.size());
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::string lines;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            lines.append(row[i]).append(widths[i] + 2 - row[i].size(), ' ');
        lines.append(row.back()).push_back('\n');
    }
    return lines;
}

} // namespace

Report::Report(std::string controller, const std::string& name) : m_controller(std::move(controller)) {
    if (!m_controller.empty()) add("controller", m_controller);
    if (name.empty()) return;
    add("name", name);
    m_controller = name + " (" + m_controller + ")";
}

Report& Report::show(std::string label, std::string text) {
    m_rows.push_back({std::move(label), std::move(text)});
    return *this;
}

Report& Report::add(std::string label, std::string text, std::string key, Json value) {
    return show(std::move(label), std::move(text)).add(std::move(key), std::move(value));
}

Report& Report::add(std::string label, std::string key, Json value) {
    std::string text = in_words(value);
    return add(std::move(label), std::move(text), std::move(key), std::move(value));
}

Report& Report::add(std::string key, Json value) {
    m_values[std::move(key)] = std::move(value);
    return *this;
}

Report& Report::fail(int status, const std::string& reason) {
    m_values["ok"] = false;
    m_values["status"] = status;
    return exit_with(2).add("reason", reason);
}

Report& Report::exit_with(int status) {
    m_exit = status;
    return *this;
}

Report& Report::keep_silent() {
    m_silent = true;
    return *this;
}

Report& Report::list(std::vector<std::vector<std::string>> lines, std::string key, Json values) {
    m_list = std::move(lines);
    return add(std::move(key), std::move(values));
}

std::string Report::table() const {
    std::vector<std::vector<std::string>> rows;
    if (!m_controller.empty()) rows.push_back({"Controller", m_controller});
    for (const Row& row : m_rows) rows.push_back({row.label, row.text});
    std::string text = aligned(rows);
    if (!m_list.empty()) text.append("\n").append(aligned(m_list));
    return text;
}

std::string Report::line() const {
    std::string text;
    for (const auto& [label, words] : m_rows)
        text.append(text.empty() ? "" : "; ").append(label).append(" ").append(words);
    std::replace(text.begin(), text.end(), '\n', ' ');
    if (text.empty()) text = "done";
    return text.append("\n");
}

std::string one_line(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace qm::ctl
