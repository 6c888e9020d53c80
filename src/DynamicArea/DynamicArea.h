// What dynamic areas of both generations share: the ping before and the exchange behind the rendering.
#pragma once

#include "support/bytes.h"

namespace qm {

// A font name that contains ".ttf" or ".ttc", in any case, is the path of a file.
[[nodiscard]] bool is_font_file(const char* fontName);

// Pings the controller for its type; the ping's result.
int ping_for_type(const char* ip, Ouint16 port, Ouint16& controllerType);

// Connects, and sends the payload to a controller of that type; the result of the exchange.
int send_dynamic_payload(const char* ip, Ouint16 port, Ouint16 controllerType, Bytes payload);

} // namespace qm
