// A broadcast connection to whichever controller, or Wi-Fi module of one, answers.
#pragma once

#include "broadcast/BroadcastPeer.h"

namespace qm {

class HV_Broadcast : public BroadcastPeer {
  public:
    // Pings by broadcast and learns the controller's type: 0, -1, or -4.
    int init();
    // Probes for a Wi-Fi module; answered() tells whether one is there.
    int AT_init();
};

} // namespace qm
