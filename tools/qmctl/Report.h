// The result of a verb: named values, shown as a table to people and as one JSON object to scripts.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace qm::ctl {

class Report {
  public:
    // Of one controller, at an address and perhaps with a name, when there is one.
    explicit Report(std::string controller = "", const std::string& name = "");

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
    // Which qmctl then has; 0 unless something else is said, or the verb failed.
    Report& exit_with(int status);
    [[nodiscard]] int exit_status() const { return m_exit; }

    // A list: its lines (the first one the headings) below the table, and the same for scripts.
    Report& list(std::vector<std::vector<std::string>> lines, std::string key, nlohmann::ordered_json values);

    // Makes it one that is not printed.
    Report& keep_silent();
    [[nodiscard]] bool is_silent() const { return m_silent; }

    [[nodiscard]] bool ok() const { return m_values["ok"]; }
    [[nodiscard]] std::string table() const;
    // The rows in one line, without the controller; "done" when there are none.
    [[nodiscard]] std::string line() const;
    [[nodiscard]] const nlohmann::ordered_json& object() const { return m_values; }

  private:
    struct Row {
        std::string label, text;
    };
    std::string m_controller;
    std::vector<Row> m_rows;
    std::vector<std::vector<std::string>> m_list;
    nlohmann::ordered_json m_values{{"ok", true}, {"status", 0}};
    int m_exit = 0;
    bool m_silent = false;
};

// An object, and a line end. Text that is not valid UTF-8 (a file name may be anything) gets replacement
// characters.
[[nodiscard]] std::string one_line(const nlohmann::ordered_json& object);

} // namespace qm::ctl
