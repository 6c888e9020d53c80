#include "simulator/web/api.h"

#include "options/json_text.h"
#include "options/readers.h"
#include "simulator/show/picture.h"
#include "simulator/web/access.h"
#include "simulator/web/live_json.h"
#include "simulator/web/page_files.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace qm::sim {
namespace {

using nlohmann::json;

constexpr unsigned kMostRequests = 1000000, kLongestDelay = 600000;

[[noreturn]] void refuse_bad(const std::string& what) { throw web_error(400, what); }

WebAnswer answer_with(const json& value) { return {.body = text_of(value)}; }
WebAnswer done() { return answer_with(json::object()); }

std::string type_of(std::string_view name) {
    if (name.ends_with(".html")) return "text/html; charset=utf-8";
    if (name.ends_with(".js")) return "text/javascript; charset=utf-8";
    if (name.ends_with(".css")) return "text/css; charset=utf-8";
    if (name.ends_with(".svg")) return "image/svg+xml";
    return "application/octet-stream";
}

// The body as an object that has no other members than these.
json object_in(const WebRequest& request, std::initializer_list<std::string_view> members) {
    json object;
    try {
        object = options::parse_json(request.body);
    } catch (const std::invalid_argument& error) {
        refuse_bad(error.what());
    }
    if (!object.is_object()) refuse_bad("expected a JSON object");
    for (const auto& [key, value] : object.items())
        if (std::ranges::find(members, key) == members.end()) refuse_bad("unknown member \"" + key + "\"");
    return object;
}

std::optional<unsigned> number_in(const json& object, const char* key, unsigned most) {
    if (!object.contains(key)) return std::nullopt;
    const json& value = object[key];
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() > most)
        refuse_bad(std::string("\"") + key + "\": expected a whole number from 0 to " + std::to_string(most));
    return value.get<unsigned>();
}

std::optional<std::string> text_in(const json& object, const char* key) {
    if (!object.contains(key)) return std::nullopt;
    if (!object[key].is_string()) refuse_bad(std::string("\"") + key + "\": expected a text");
    return object[key].get<std::string>();
}

WebAnswer get_state(const WebRequest&, Feed& feed) { return answer_with(live_state(feed.exchange())); }

WebAnswer get_screen(const WebRequest&, Feed& feed) {
    const auto png =
        png_of(feed.exchange().look([](const auto& controller, Now now) { return controller.screen(now); }));
    return {.type = "image/png", .body = std::string(png.begin(), png.end())};
}

WebAnswer get_log(const WebRequest&, Feed& feed) {
    return answer_with(json_of(feed.exchange().log().after(0)));
}

WebAnswer set_fault(const WebRequest& request, Feed& feed) {
    const json object = object_in(request, {"fault", "after", "delay"});
    const std::string name = text_in(object, "fault").value_or("");
    Fault fault;
    fault.after = number_in(object, "after", kMostRequests).value_or(fault.after);
    if (const auto delay = number_in(object, "delay", kLongestDelay))
        fault.delay = std::chrono::milliseconds(*delay);
    const auto kind = fault_named(name);
    if (!kind && name != "none") refuse_bad("\"fault\": expected none or one of " + fault_names());
    if (kind) fault.kind = *kind;
    feed.exchange().set_fault(kind ? std::optional(fault) : std::nullopt, request.peer);
    return done();
}

WebAnswer set_clock(const WebRequest& request, Feed& feed) {
    const json object = object_in(request, {"clock", "rate"});
    const auto text = text_in(object, "clock");
    const auto clock = clock_from(text.value_or(""));
    if (text && !clock)
        refuse_bad("\"clock\": expected a time of the years 2000 to 2099 such as 2026-12-31 23:59:50");
    const auto rate = number_in(object, "rate", kFastest);
    if (!clock && !rate) refuse_bad("expected \"clock\" or \"rate\" or both");
    feed.exchange().set_clock(clock, rate, request.peer);
    return done();
}

WebAnswer set_power(const WebRequest& request, Feed& feed) {
    const json object = object_in(request, {"power"});
    if (!object.contains("power") || !object["power"].is_boolean())
        refuse_bad("\"power\": expected true or false");
    feed.exchange().switch_screen(object["power"].get<bool>(), request.peer);
    return done();
}

WebAnswer reset(const WebRequest& request, Feed& feed) {
    (void)object_in(request, {});
    feed.exchange().reset(request.peer);
    return done();
}

WebAnswer end_recordings(const WebRequest& request, Feed& feed) {
    (void)object_in(request, {});
    feed.end_recordings();
    return done();
}

struct Route {
    std::string_view method, path;
    WebAnswer (*answer)(const WebRequest& request, Feed& feed);
};

constexpr Route kRoutes[] = {
    {"GET", "/api/state", get_state},  {"GET", "/api/screen.png", get_screen},
    {"GET", "/api/log", get_log},      {"POST", "/api/fault", set_fault},
    {"POST", "/api/clock", set_clock}, {"POST", "/api/power", set_power},
    {"POST", "/api/reset", reset},     {"POST", "/api/recording", end_recordings},
};

WebAnswer not_allowed(std::string_view method) {
    WebAnswer answer = web_error(405, "expected the method " + std::string(method));
    answer.allowed = method == "GET" ? "GET, HEAD" : method;
    return answer;
}

WebAnswer answer_api(const WebRequest& request, Site& site) {
    const auto* const route = std::ranges::find(kRoutes, request.path, &Route::path);
    if (route == std::end(kRoutes)) return web_error(404, "there is no " + request.path);
    if (request.method != route->method) return not_allowed(route->method);
    if (request.method == "POST" && !says_json(request.content_type))
        throw web_error(415, "expected application/json");
    return route->answer(request, *site.feeds[controller_in(request, site.fleet)]);
}

WebAnswer answer_page(const WebRequest& request) {
    const std::string name = request.path == "/" ? "index.html" : request.path.substr(1);
    const auto file = std::ranges::find(page_files(), name, &PageFile::name);
    if (file == page_files().end()) return web_error(404, "there is no " + request.path);
    if (request.method != "GET") return not_allowed("GET");
    return {.type = type_of(name), .body = std::string(file->content)};
}

} // namespace

void WebRequest::set_target(std::string_view target) {
    const auto question = target.find('?');
    path = target.substr(0, question);
    if (question == std::string_view::npos) return;
    for (const std::string_view part : options::split(target.substr(question + 1), '&')) {
        const auto equals = std::min(part.find('='), part.size());
        query[std::string(part.substr(0, equals))] = part.substr(std::min(equals + 1, part.size()));
    }
}

WebAnswer web_error(unsigned status, const std::string& what) {
    return {.status = status, .body = text_of(json{{"error", what}})};
}

std::size_t controller_in(const WebRequest& request, const Fleet& fleet) {
    const auto given = request.query.find("controller");
    if (given == request.query.end()) return 0;
    const auto number = options::to_number(given->second, 0, kMostRequests);
    if (!number && given->second.find_first_not_of("0123456789") != std::string::npos)
        refuse_bad("controller: expected a whole number");
    if (!number || *number >= fleet.size()) throw web_error(404, "there is no controller " + given->second);
    return *number;
}

WebAnswer answer_to(const WebRequest& request, Site& site) try {
    if (!request.path.starts_with("/api/")) return answer_page(request);
    if (request.path != "/api/controllers") return answer_api(request, site);
    return request.method == "GET" ? answer_with(controllers_json(site.fleet)) : not_allowed("GET");
} catch (const WebAnswer& answer) {
    return answer;
}

} // namespace qm::sim
