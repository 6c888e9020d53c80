// qmctl: the library's calls from the command line.
#include "CommandLine.h"
#include "ExitStatus.h"
#include "ManyControllers.h"
#include "Session.h"

#include <iostream>

namespace qm::ctl {
namespace {

int refuse(const std::exception& error) {
    std::cerr << "qmctl: " << error.what() << "\nTry 'qmctl --help' or 'qmctl VERB --help'.\n";
    return kUsage;
}

int run(Session& session, int argc, char** argv) {
    CommandLine line(session);
    try {
        Verb& verb = line.parse(argc, argv);
        if (session.verbose) Output::show_messages();
        verb.prepare();
        if (session.controllers.size() > 1) return run_on_all(session, verb);
        session.controller = session.controllers.front();
        return run_verb(session, verb);
    } catch (const CLI::Success& request) {
        session.output.write(line.information(request));
    } catch (const CLI::ParseError& error) {
        return refuse(error);
    } catch (const UsageError& error) {
        return refuse(error);
    }
    return kDone;
}

} // namespace

int run_verb(Session& session, Verb& verb) {
    try {
        verb.run(session);
        return kDone;
    } catch (const UsageError& error) {
        if (!session.one_of_many) return refuse(error);
        session.report(Failure(QM_FAILED, error.what()));
        return kFailed; // others may have been sent to
    } catch (const Failure& failure) {
        session.report(failure);
        return kFailed;
    }
}

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
