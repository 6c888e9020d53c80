// qmctl: the library's calls from the command line.
#include "CommandLine.h"
#include "Fleet.h"
#include "exception_reason.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <optional>
#include <span>

namespace qm::ctl {
namespace {

// Known before the arguments have been read, since what is wrong with them is told in JSON, too.
bool asks_for_json(std::span<char* const> arguments) {
    const auto end = std::ranges::find(arguments, std::string_view("--"));
    return std::find(arguments.begin(), end, std::string_view("--json")) != end;
}

// What goes by itself is taken away in the end, even though a controller does not answer at that moment. A
// terminal that is closed sends its signal twice.
constexpr unsigned kRetriesAtTheEnd = 5;
constexpr std::chrono::seconds kDeafAtTheEnd{3};

int end(const Session& session, const Ending& ending, const CommandLine& line,
        const AwaitedSignals& signals) {
    std::vector<NamedController> concerned;
    std::ranges::copy_if(line.controllers(), std::back_inserter(concerned), ending.concerns);
    if (concerned.empty()) return kDone;
    FleetTerms terms = line.terms();
    terms.retries = std::max(terms.retries, kRetriesAtTheEnd);
    terms.deaf = kDeafAtTheEnd;
    return Fleet(session, ending.verb, concerned, terms).run(&signals);
}

int run_at(const Session& session, const Verb& verb, const CommandLine& line) {
    const auto ending = verb.ending();
    std::optional<AwaitedSignals> signals;
    if (ending || line.controllers().size() > 1) signals.emplace();
    Fleet fleet(session, verb, line.controllers(), line.terms());
    const int status = fleet.run(signals ? &*signals : nullptr);
    if (!ending) return status;
    const bool any = std::ranges::any_of(line.controllers(), ending->concerns);
    const bool interrupted = status == kInterrupted || (any && signals->wait(ending->after));
    const int ended = end(session, *ending, line, *signals);
    return ended != kDone ? ended : interrupted ? kInterrupted : status;
}

int run_line(Session& session, CommandLine& line, std::span<char* const> arguments) {
    const auto verb = line.parse({arguments.begin(), arguments.end()});
    if (session.verbose) Output::show_messages();
    line.settle(*verb);
    return run_at(session, *verb, line);
}

// A shell asks: completion COMMAND WORD BEFORE, and what has been typed is in its variables.
std::optional<std::string> typed_so_far(std::span<char* const> arguments) {
    const char *line = std::getenv("COMP_LINE"), *point = std::getenv("COMP_POINT");
    if (!line || arguments.size() < 3 || arguments[0] != std::string_view("completion")) return std::nullopt;
    return std::string(line).substr(0, point ? std::strtoul(point, nullptr, 10) : std::string::npos);
}

int run(Session& session, std::span<char* const> arguments) {
    session.json = asks_for_json(arguments);
    CommandLine line(session);
    try {
        if (const auto typed = typed_so_far(arguments)) {
            session.output->write(line.completions(*typed, arguments[2]));
            return kDone;
        }
        return run_line(session, line, arguments);
    } catch (const CLI::Success& request) {
        session.output->write(line.information(request));
        return kDone;
    } catch (const UsageError& error) {
        session.one_of_many = false;
        session.print(error);
        return kUsage;
    } catch (const Failure& failure) { // of a check that needs no controller
        session.print(failure);
    } catch (const std::exception& error) {
        session.print(Failure(reason_of(error)));
    }
    return kFailed;
}

// Destructors of JSON objects need memory, and may not throw.
[[noreturn]] void give_up() {
    try {
        if (std::current_exception()) throw;
    } catch (const std::bad_alloc&) {
        std::fputs("qmctl: out of memory\n", stderr);
        std::_Exit(kFailed);
    } catch (...) { // is for whoever mends it
    }
    std::abort();
}

} // namespace

} // namespace qm::ctl

int main(int argc, char** argv) {
    std::set_terminate(qm::ctl::give_up);
    std::signal(SIGPIPE, SIG_IGN); // what cannot be written is an error, and ends nothing midway
    try {
        qm::ctl::Output output;
        qm::ctl::Session session(output);
        return qm::ctl::run(session,
                            std::span(argv, static_cast<std::size_t>(argc)).subspan(argc > 0 ? 1 : 0));
    } catch (const std::exception& error) {
        std::cerr << "qmctl: " << qm::ctl::reason_of(error) << "\n";
        return qm::ctl::kFailed;
    }
}
