// How qmctl ends.
#pragma once

namespace qm::ctl {

class Session;
class Verb;

constexpr int kDone = 0, kUsage = 1, kFailed = 2;

// Runs the verb; trouble is reported and becomes the exit status.
int run_verb(Session& session, Verb& verb);

} // namespace qm::ctl
