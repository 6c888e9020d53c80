// The moment that a picture is drawn for.
#pragma once

#include "simulator/playback/Clock.h"

#include <string>

namespace qm::sim {

struct Moment {
    Milliseconds played{0};              // since the programs began
    LocalSeconds clock{};                // the controller's
    std::optional<std::string> locked{}; // the program that is shown alone, be it there or not
};

} // namespace qm::sim
