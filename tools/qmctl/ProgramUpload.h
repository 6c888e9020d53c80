// Writes the files of a program to a controller.
#pragma once

#include "ProgramBuilder.h"

namespace qm::ctl {

// Announces the transfer, writes every file over one of the same name, and ends the transfer, also when a
// file could not be written. Shows on a terminal how far it is. Throws Failure that says at which step.
void upload(Session& session, const std::vector<ProgramFile>& files);

} // namespace qm::ctl
