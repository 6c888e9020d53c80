// Configuration and control commands.
#include "cmdPacket/command.h"

namespace qm {
namespace {

enum conf_cmd : Ouint8 { hv_conf_Ping = 0 };

} // namespace

int ON_command::hv_cmd_ping(Answer& retData) { return send_recv_cmd(hv_GRP_CONF, hv_conf_Ping, {}, retData); }

} // namespace qm
