// Carries out requests that come line by line, many at once.
#pragma once

#include "CommandLine.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <istream>
#include <map>
#include <thread>

namespace qm::ctl {

// A request is a JSON object in a line: verb, arguments, options, controller and id; the answer is the object
// that --json prints, with that id, or of several controllers a list of them. What goes to one controller
// goes in the order in which it came.
class Service {
  public:
    explicit Service(const Session& session);

    // Reads to the end, and waits for what was begun. Throws std::runtime_error when an answer cannot be
    // written.
    void serve(std::istream& requests);

  private:
    using Json = nlohmann::ordered_json;
    struct Request;
    struct Job {
        std::shared_ptr<Request> request;
        std::size_t place; // of its controller in the request
    };

    [[nodiscard]] bool failed();
    void take(const std::string& line);
    static void read(const std::string& text, Request& request);
    void add(const std::shared_ptr<Request>& request);
    void work();
    // Gives what keeps the answer from being written.
    [[nodiscard]] std::exception_ptr run(const Job& job) const;
    void answer(const Json& id, const Json& object) const;

    const Session m_session;
    std::mutex m_mutex; // of all that follows
    std::condition_variable m_changed;
    std::map<std::string, std::deque<Job>> m_queues; // by the controllers' addresses, none empty
    std::deque<std::string> m_ready;                 // addresses whose first job nobody does
    std::size_t m_waiting = 0;                       // jobs
    bool m_ended = false;
    std::exception_ptr m_trouble; // the answers cannot be written
};

} // namespace qm::ctl
