#pragma once

#include "support/Descriptor.h"

namespace qm::bench {

// Sends what the library prints to nowhere, so that the results stand alone on standard output.
class Silence {
  public:
    Silence();
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence();

  private:
    Descriptor m_output;
};

} // namespace qm::bench
