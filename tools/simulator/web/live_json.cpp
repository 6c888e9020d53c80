#include "simulator/web/live_json.h"

#include "options/names.h"
#include "options/readers.h"
#include "simulator/controller/state_json.h"

#include <cstdio>
#include <ctime>
#include <nlohmann/json.hpp>

namespace qm::sim {
namespace {

using nlohmann::json;

json outline(int id, const char* kind, const Rect& rect) {
    return {{"id", id}, {"kind", kind}, {"rect", {rect.x, rect.y, rect.width, rect.height}}};
}

json outlines_of(const Snapshot& snapshot) {
    json outlines = json::array();
    int id = 0;
    for (const Rect& rect : snapshot.program_areas) outlines.push_back(outline(id++, "program", rect));
    for (const KeptArea& kept : snapshot.areas)
        if (kept.shown) outlines.push_back(outline(kept.area.id, "dynamic", kept.area.rect));
    return outlines;
}

json json_of(const std::optional<Fault>& fault) {
    if (!fault) return {{"fault", "none"}};
    return {{"fault", name_of(fault->kind)}, {"after", fault->after}, {"delay", fault->delay.count()}};
}

// Local time to the millisecond.
std::string time_text(std::chrono::system_clock::time_point time) {
    const auto since = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch()).count();
    const auto seconds = static_cast<std::time_t>(since / 1000);
    std::tm local{};
    localtime_r(&seconds, &local);
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
    std::snprintf(text + length, sizeof text - length, ".%03d", static_cast<int>(since % 1000));
    return text;
}

json json_of(const LogEntry& entry) {
    json out = {{"time", time_text(entry.time)},
                {"peer", entry.peer},
                {"command", entry.command},
                {"status", nullptr},
                {"bytes", hex_of(entry.bytes)}};
    if (entry.status) out["status"] = *entry.status;
    return out;
}

} // namespace

json live_state(const Exchange& exchange) {
    const auto [snapshot, files, conditions] =
        exchange.look([](const auto& controller, Now now, const Exchange::Conditions& set) {
            return std::tuple(controller.snapshot(now), json_of(controller.state().files), set);
        });
    json out = json_of(snapshot, files);
    out["next"] = label_of(snapshot.next_program);
    out["rate"] = conditions.rate;
    out["fault"] = json_of(conditions.fault);
    out["outlines"] = outlines_of(snapshot);
    return out;
}

json json_of(const std::vector<LogEntry>& entries) {
    json list = json::array();
    for (const LogEntry& entry : entries) list.push_back(json_of(entry));
    return list;
}

json controllers_json(const Fleet& fleet) {
    json list = json::array();
    for (std::size_t i = 0; i < fleet.size(); ++i) {
        const Options& options = fleet.device(i).options();
        list.push_back(
            {{"name", options.name},
             {"address", options.listen},
             {"port", fleet.ports(i).tcp()},
             {"type", options::hex(options.type, 4)},
             {"size", {options.width, options.height}},
             {"color", options::word_for(options::kScreenColors, static_cast<unsigned>(options.color))}});
    }
    return list;
}

std::string text_of(const json& value) { return value.dump(-1, ' ', false, json::error_handler_t::replace); }

} // namespace qm::sim
