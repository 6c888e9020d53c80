#include "silence.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace qm::bench {
namespace {

void redirect(const Descriptor& to) {
    std::fflush(stdout);
    ::dup2(to.get(), STDOUT_FILENO);
}

} // namespace

Silence::Silence() : m_output(::dup(STDOUT_FILENO)) { redirect(Descriptor(::open("/dev/null", O_WRONLY))); }
Silence::~Silence() { redirect(m_output); }

} // namespace qm::bench
