// qmctl: the library's calls from the command line.
#include "CommandLine.h"
#include "Session.h"

#include <iostream>

namespace qm::ctl {
namespace {

constexpr int kDone = 0, kUsage = 1, kFailed = 2;

int refuse(const std::exception& error) {
    std::cerr << "qmctl: " << error.what() << "\nTry 'qmctl --help' or 'qmctl VERB --help'.\n";
    return kUsage;
}

int run(Session& session, int argc, char** argv) {
    CommandLine line(session);
    try {
        Verb& verb = line.parse(argc, argv);
        if (session.verbose) Output::show_messages();
        verb.run(session);
    } catch (const CLI::Success& request) {
        session.output.write(line.information(request));
    } catch (const CLI::ParseError& error) {
        return refuse(error);
    } catch (const UsageError& error) {
        return refuse(error);
    } catch (const Failure& failure) {
        session.report(failure);
        return kFailed;
    }
    return kDone;
}

} // namespace
} // namespace qm::ctl

int main(int argc, char** argv) {
    try {
        qm::ctl::Session session;
        return qm::ctl::run(session, argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "qmctl: " << error.what() << "\n";
        return qm::ctl::kFailed;
    }
}
