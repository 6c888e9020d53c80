// Runs a verb, on one controller or on many at once; both give the exit status.
#pragma once

#include "Verb.h"

namespace qm::ctl {

constexpr int kDone = 0, kUsage = 1, kFailed = 2;

// On the session's controller; prints the report, or what went wrong.
int run_verb(Session& session, Verb& verb);

// For every controller of the session, each in a process of its own and at most session.jobs at a time.
// Writes a line for each as soon as it is done. Gives their exit status, or kFailed when they differ.
int run_on_all(Session& session, Verb& verb);

} // namespace qm::ctl
