// What owners do: by the library, and by processes of qmctl.
#pragma once

#include "Owner.h"

#include <memory>

namespace qm::test {

// Owners of one controller have places from 0 to 4.
struct Place {
    unsigned seed;
    std::size_t number;
    Ouint16 port;
    bool generation_5;
};

std::unique_ptr<Owner> library_owner(const Place& place);
std::unique_ptr<Owner> qmctl_owner(const Place& place, const std::string& qmctl, const std::string& folder);

} // namespace qm::test
