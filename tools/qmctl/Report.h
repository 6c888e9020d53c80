// The result of a verb: named values, shown as a table to people and as one JSON object to scripts.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace qm::ctl {

class Report {
  public:
    // Of one controller, when it is named.
    explicit Report(std::string controller = "");

    // A row of the table, and the same value for scripts.
    Report& add(std::string label, std::string text, std::string key, nlohmann::ordered_json value);
    // A value that reads the same in both; of several, the table has the items, or their names.
    Report& add(std::string label, std::string key, nlohmann::ordered_json value);
    // A row of the table only.
    Report& show(std::string label, std::string text);
    // A value for scripts only.
    Report& add(std::string key, nlohmann::ordered_json value);

    // Makes it that of a verb which found something wrong.
    Report& fail(int status, const std::string& reason);

    // A list: its lines (the first one the headings) below the table, and the same for scripts.
    Report& list(std::vector<std::vector<std::string>> lines, std::string key, nlohmann::ordered_json values);

    [[nodiscard]] bool ok() const { return m_values["ok"]; }
    [[nodiscard]] std::string table() const;
    // The rows in one line, without the controller; "done" when there are none.
    [[nodiscard]] std::string line() const;
    [[nodiscard]] std::string json() const;

  private:
    struct Row {
        std::string label, text;
    };
    std::string m_controller;
    std::vector<Row> m_rows;
    std::vector<std::vector<std::string>> m_list;
    nlohmann::ordered_json m_values{{"ok", true}, {"status", 0}};
};

// Of what failed; the reason is that of the library's call, when it was one.
[[nodiscard]] std::string failure_json(int status, const std::string& meaning, const std::string& reason,
                                       const std::string& controller);
// Of a command line that asks for what cannot be done, by the controller when one is named.
[[nodiscard]] std::string usage_json(const std::string& error, const std::string& controller = "");

} // namespace qm::ctl
