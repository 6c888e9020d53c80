// Verbs for shells and scripts.
#include "Service.h"

#include <iostream>

namespace qm::ctl {
namespace {

class Serve : public Verb {
  public:
    Report run(const Session& session) const override {
        Service(session).serve(std::cin);
        return Report().keep_silent();
    }
};

class PrintCompletion : public Verb {
  public:
    Report run(const Session& session) const override {
        session.output->write("complete -o default -C 'qmctl completion' qmctl\n");
        return Report().keep_silent();
    }
};

constexpr VerbEntry kServeVerbs[] = {
    {"completion", "Print what makes bash complete verbs, options and names of controllers",
     "In ~/.bashrc: eval \"$(qmctl completion)\"\n\n"
     "Example:\n  qmctl completion >/etc/bash_completion.d/qmctl",
     make_verb<PrintCompletion>, Reach::none},
    {"serve", "Stay, and carry out requests from standard input",
     "A request is a JSON object in a line, and so is its answer on standard output: what --json prints, "
     "with\n"
     "the request's id, or of several controllers {\"ok\": ..., \"results\": [...]}. Up to --jobs "
     "controllers are\n"
     "spoken to at once; what goes to one goes in the order in which it came. It ends with its input.\n\n"
     "Example:\n  qmctl serve <requests\n"
     "of lines such as\n"
     "  {\"id\": 1, \"verb\": \"text\", \"arguments\": [\"Hello\"], \"options\": {\"color\": \"green\", "
     "\"area\": 1,\n"
     "   \"bold\": true}, \"controller\": \"stop-5\"}",
     make_verb<Serve>, Reach::none}};

} // namespace

Family serve_verbs() { return kServeVerbs; }

} // namespace qm::ctl
