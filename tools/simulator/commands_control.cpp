// Configuration and control, group 0xA2.
#include "simulator/commands.h"

namespace qm::sim {
namespace {

// Ping_data, 52 bytes: ControllerType u16, FirmwareVersion 8, ScreenParaStatus, uAddress u16, Baudrate,
// ScreenWidth u16, ScreenHeight u16, Color, CurrentBrigtness, CurrentOnOffStatus, ScanConfNumber u16,
// reversed 9, ipAdder 20 (filled in by the host).
Outcome ping(State& state, Bytes, Time) {
    constexpr std::uint8_t kFirmware[8] = {'S', 'I', 'M', ' ', '1', '.', '0', '0'};
    Frame data;
    data.reserve(52);
    ByteWriter out(data);
    out.u16(state.model.type).bytes(kFirmware).u8(1).u16(state.address).u8(0);
    out.u16(static_cast<unsigned>(state.model.width)).u16(static_cast<unsigned>(state.model.height));
    out.u8(static_cast<unsigned>(state.model.format.color)).u8(state.brightness).u8(state.on ? 1 : 0);
    out.u16(0).zeros(9).zeros(20);
    return {std::move(data), {}};
}

constexpr Command kCommands[] = {
    {kConfigurationGroup, 0, "ping", 0, 0, ping},
};

} // namespace

std::span<const Command> control_commands() { return kCommands; }

} // namespace qm::sim
