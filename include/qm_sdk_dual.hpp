// The C++ face of libqm_sdkDual: header-only over qm_sdk_dual.h, C++17, without dependencies.
//
//     const qm::Controller sign("192.168.0.199");
//     if (const auto shown = sign.show("Hello"); !shown) std::cerr << shown.error().reason << "\n";
//
// Nothing throws but a result that is asked for what it does not hold, and what runs out of memory.
#pragma once

#include "qm_sdk_dual/controller.hpp"
#include "qm_sdk_dual/program.hpp"
