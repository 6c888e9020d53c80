// Runs a verb, on one controller or on many at once; both give the exit status.
#pragma once

#include "Verb.h"

#include <functional>

namespace qm::ctl {

constexpr int kDone = 0, kUsage = 1, kFailed = 2;

// On the session's controller; prints the report, or what went wrong.
int run_verb(Session& session, Verb& verb);

// For every controller of the session, each in a process of its own and at most session.jobs at a time.
// Writes a line for each as soon as it is done. Gives their exit status, or kFailed when they differ.
int run_on_all(Session& session, Verb& verb);

// Runs a check, which may throw UsageError, in a process of its own: what decodes pictures starts threads,
// and where there are any, the processes of many controllers would wait for some that they do not have.
void run_check(const std::function<void()>& check);

} // namespace qm::ctl
