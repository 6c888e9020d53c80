#include "broadcast/HV_Broadcast.h"

namespace qm {
namespace {

constexpr char kEverybody[] = "255.255.255.255";
constexpr int kAttempts = 3;

} // namespace

int HV_Broadcast::init() {
    if (const int code = InitUdp(kEverybody, 5007, 5009); code != QM_OK) return code;
    return ping_handshake(kAttempts);
}

int HV_Broadcast::AT_init() {
    if (const int code = InitUdp(kEverybody, 13769, 14769); code != QM_OK) return code;
    constexpr Ouint8 probe[] = {'A', 'T'};
    Send(probe, sizeof probe);
    Bytes answer;
    return receive_frame(kAttempts, answer);
}

} // namespace qm
