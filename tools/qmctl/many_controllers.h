// One verb on many controllers at once.
#pragma once

#include "Verb.h"

namespace qm::ctl {

// Runs the verb for every controller of the session, each in a process of its own and at most session.jobs at
// a time, and writes a line for each as soon as it is done. Returns their exit status, or kFailed when they
// differ.
int run_on_all(Session& session, Verb& verb);

} // namespace qm::ctl
