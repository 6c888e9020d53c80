#include "json_text.h"

#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

namespace qm::options {
namespace {

using nlohmann::json;

// Sees every name of every object that is being parsed.
class DuplicateGuard {
  public:
    bool operator()(int depth, json::parse_event_t event, const json& value) {
        constexpr int kDeepest = 100; // values are copied and printed by recursion
        if (depth > kDeepest) throw std::invalid_argument("it is nested more than 100 deep");
        if (event == json::parse_event_t::object_start) m_names.emplace_back();
        if (event == json::parse_event_t::object_end) m_names.pop_back();
        if (event == json::parse_event_t::key && !m_names.back().insert(value.get<std::string>()).second)
            throw std::invalid_argument("\"" + value.get<std::string>() + "\" stands twice in one object");
        return true;
    }

  private:
    std::vector<std::set<std::string>> m_names;
};

} // namespace

json parse_json(const std::string& text) {
    try {
        return json::parse(
            text, [guard = DuplicateGuard()](int depth, json::parse_event_t event, json& value) mutable {
                return guard(depth, event, value);
            });
    } catch (const json::exception& error) {
        const std::string message = error.what(); // "[json.exception...] parse error at line 3, ..."
        const std::size_t name = message.find("] ");
        throw std::invalid_argument(name == std::string::npos ? message : message.substr(name + 2));
    }
}

} // namespace qm::options
