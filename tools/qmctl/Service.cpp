#include "Service.h"

#include "exception_reason.h"
#include "sign/JsonReader.h"

#include <algorithm>
#include <atomic>

namespace qm::ctl {
namespace {

constexpr std::size_t kMostWaiting = 10000;      // jobs; then nothing is read
constexpr std::size_t kLongestRequest = 1 << 20; // bytes

using Words = std::vector<std::string>;

// Numbers are as good as texts; true is a flag.
void add_option(Words& words, const std::string& name, const Field& field) {
    if (name == "c") field.refuse("is the request's own field controller");
    constexpr const char* kOfAll[] = {"controllers", "jobs", "json", "report", "retries", "verbose"};
    if (name.empty() || name.front() == '-') field.refuse("expected the name of an option without dashes");
    for (const char* shared : kOfAll)
        if (name == shared) field.refuse("is for all requests: give it to qmctl serve");
    const auto& value = field.value();
    if (value.is_boolean()) {
        if (field.flag()) words.push_back("--" + name);
    } else if (value.is_string() || value.is_number_integer()) {
        words.push_back("--" + name + "=" + (value.is_string() ? value.get<std::string>() : value.dump()));
    } else {
        field.expected("a text, a whole number or true");
    }
}

std::string argument_of(const Field& field) {
    if (field.value().is_number_integer()) return field.value().dump();
    if (!field.value().is_string()) field.expected("a text or a whole number");
    std::string text = field.value().get<std::string>();
    if (text == "-") field.refuse("standard input is where the requests come from");
    return text;
}

// All of a line, or so much of it that it is too long.
bool read_line(std::istream& input, std::string& line) {
    line.clear();
    for (char c = 0; input.get(c) && c != '\n';)
        if (line.size() <= kLongestRequest) line += c;
    return input.good() || !line.empty();
}

// Of a command line.
Words words_of(const CommandLine& line, const Field& request) {
    Words words, arguments;
    std::string verb;
    read_object(request, [&](Object& object) {
        (void)object.find("id");
        verb = object.require("verb").text();
        if (verb.starts_with('-') || verb.find(" -") != std::string::npos)
            throw UsageError("request.verb: expected words without options");
        for (const std::string_view word : split(verb, ' ')) words.emplace_back(word);
        if (const auto named = object.find("controller")) words.push_back("--controller=" + named->text());
        if (const auto options = object.find("options")) {
            if (!options->value().is_object()) options->expected("an object");
            for (const auto& [name, value] : options->value().items())
                add_option(words, name, Field(value, options->path() + "." + name));
        }
        if (const auto given = object.find("arguments"))
            for (const Field& one : given->list(0, 10000)) arguments.push_back(argument_of(one));
    });
    if (line.has_group(verb) && !arguments.empty() &&
        !arguments.front().starts_with('-')) { // "area" and "rm" are one verb
        words.insert(words.begin() + 1, arguments.front());
        arguments.erase(arguments.begin());
    }
    if (!arguments.empty()) words.emplace_back("--");
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

} // namespace

struct Service::Request {
    explicit Request(const Session& of) : session(of) {}

    Json id;
    Session session;
    std::unique_ptr<const Verb> verb{};
    std::vector<NamedController> targets{};
    std::vector<Json> results{}; // of the controllers, in their order
    std::atomic<std::size_t> left{0};
};

Service::Service(const Session& session) : m_session(session) {}

void Service::serve(std::istream& requests) {
    std::vector<std::thread> workers;
    try {
        while (workers.size() < m_session.jobs) workers.emplace_back([this] { work(); });
    } catch (const std::exception&) { // fewer will do
        if (workers.empty()) throw;
    }
    try {
        for (std::string line; read_line(requests, line) && !failed();) take(line);
    } catch (...) { // nobody reads the answers any more
        const std::lock_guard lock(m_mutex);
        m_trouble = std::current_exception();
    }
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_changed.notify_all();
    for (std::thread& worker : workers) worker.join();
    if (m_trouble) std::rethrow_exception(m_trouble);
}

bool Service::failed() {
    const std::lock_guard lock(m_mutex);
    return m_trouble != nullptr;
}

void Service::take(const std::string& line) {
    const auto request = std::make_shared<Request>(m_session);
    const auto refuse = [&](const Outcome& outcome) {
        answer(request->id, request->session.object_of(outcome));
    };
    try {
        read(line, *request);
        add(request);
    } catch (const UsageError& error) {
        refuse(error);
    } catch (const Failure& failure) {
        refuse(failure);
    } catch (const std::exception& error) {
        refuse(Failure(reason_of(error)));
    }
}

void Service::read(const std::string& text, Request& request) {
    if (text.size() > kLongestRequest) throw UsageError("expected at most 1 MiB in a line");
    const nlohmann::json object = parse_json(text);
    if (object.is_object() && object.contains("id")) request.id = object["id"];
    CommandLine line(request.session);
    try {
        auto verb = line.parse(words_of(line, Field(object, "request")));
        if (line.reach() == Reach::none)
            throw UsageError("request.verb: expected one that goes to controllers, not " +
                             request.session.verb);
        if (verb->ending()) throw UsageError("request.verb: expected one that does not stay");
        line.settle(*verb);
        request.verb = std::move(verb);
    } catch (const CLI::Success&) {
        throw UsageError("request.options: expected no question for help or version");
    }
    request.targets = line.controllers();
    request.results.resize(request.targets.size());
    request.left = request.targets.size();
}

void Service::add(const std::shared_ptr<Request>& request) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_waiting < kMostWaiting; });
    for (std::size_t i = 0; i < request->targets.size(); ++i) {
        auto& queue = m_queues[request->targets[i].address()];
        if (queue.empty()) m_ready.push_back(request->targets[i].address());
        queue.push_back({request, i});
        ++m_waiting;
    }
    m_changed.notify_all();
}

void Service::work() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return !m_ready.empty() || (m_ended && m_waiting == 0); });
        if (m_ready.empty()) return;
        const std::string address = std::move(m_ready.front());
        m_ready.pop_front();
        auto& queue = m_queues[address];
        const Job job = queue.front();
        lock.unlock();
        const std::exception_ptr trouble = run(job);
        lock.lock();
        if (trouble) m_trouble = trouble;
        --m_waiting;
        queue.pop_front(); // only now: until then nobody else may take what follows
        if (queue.empty())
            m_queues.erase(address);
        else
            m_ready.push_back(address);
        m_changed.notify_all();
    }
}

std::exception_ptr Service::run(const Job& job) const {
    Request& request = *job.request;
    Session session = request.session;
    session.target = request.targets[job.place];
    request.results[job.place] = session.object_of(outcome_of(*request.verb, session));
    if (--request.left > 0) return nullptr;
    try {
        if (request.results.size() == 1) return answer(request.id, request.results.front()), nullptr;
        const bool ok =
            std::ranges::all_of(request.results, [](const Json& one) { return one["ok"] == true; });
        answer(request.id, {{"ok", ok}, {"results", request.results}});
    } catch (...) { // nobody reads the answers any more
        return std::current_exception();
    }
    return nullptr;
}

void Service::answer(const Json& id, const Json& object) const {
    Json line = Json::object();
    if (!id.is_null()) line["id"] = id;
    line.update(object);
    m_session.output->write(one_line(line));
}

} // namespace qm::ctl
