// A Wi-Fi module behind any transport, set up and asked with AT commands. Both give the status of the call
// that they are made for.
#pragma once

#include "cmdPacket/command.h"

#include <string>

namespace qm {

int configure_wifi(ON_command& module, const std::string& ssid, const std::string& pwd);
// Each may get 511 bytes, without a zero behind.
int ask_wifi_settings(ON_command& module, char* ssid, char* pwd);

} // namespace qm
