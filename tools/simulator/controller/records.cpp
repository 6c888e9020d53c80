#include "simulator/controller/records.h"

#include "global.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr char kFirmware[] = "SIM 1.00";
constexpr char kBarCode[] = "QM-SIMULATOR-001";
constexpr std::size_t kBarCodeSize = 16, kWebText = 128, kNameSize = 16, kLocation = 44;
constexpr std::uint8_t kClockWorks = 1, kFirmwareRuns = 1, kParametersSet = 1;

// Text in a field of fixed size, cut or filled with zeros.
void field(ByteWriter& out, const std::string& text, std::size_t size) {
    const std::size_t length = std::min(text.size(), size);
    out.text(text.data(), length).zeros(size - length);
}

void identity(ByteWriter& out, const State& state) {
    out.u16(state.model.type).text(kFirmware, 8).u8(kParametersSet).u16(state.settings.address).u8(0);
    out.u16(static_cast<unsigned>(state.model.screen.width))
        .u16(static_cast<unsigned>(state.model.screen.height));
    out.u8(static_cast<unsigned>(state.model.screen.format.color));
}

unsigned brightness(const State& state, Now now) {
    return brightness_at(state.settings, clock_of(state, now));
}

bool power(const State& state, Now now) { return power_at(state.settings, clock_of(state, now)); }

// From the count of programs to the noise, 28 bytes that the status and the network search share.
void activity(ByteWriter& out, const State& state, Now now) {
    out.u16(static_cast<unsigned>(state.programs.count()));
    field(out, shown_program(state, now), FileSystem::kNameSize);
    out.u8(state.settings.screen_lock.locked).u8(program_locked(state, now)).u8(kFirmwareRuns);
    out.u8(kClockWorks);
    write_clock(out, clock_of(state, now));
    out.zeros(3 + 3 + 2 + 2); // no sensors of temperature, humidity and noise
}

// From the MAC to CustomID, 51 bytes.
void network_head(ByteWriter& out, const Network& network) {
    constexpr std::uint8_t kAddressSet = 1;
    out.bytes(network.mac).bytes(network.ip).bytes(network.subnet_mask).bytes(network.gateway);
    out.u16(network.port).u8(network.mode).u8(kAddressSet).u8(network.server_mode);
    out.bytes(network.server_ip).u16(network.server_port).bytes(network.password).u16(network.heartbeat);
    out.bytes(network.net_id);
}

void web_part(ByteWriter& out) {
    field(out, "", kWebText);
    out.u32(0).u8(0);
    field(out, "", kWebText);
    field(out, "qm_simulator", kWebText);
}

// ScanConfNumber, RowsPerChanel, GrayFlag, UnitWidth, modeofdisp, NetTranMode, PackageMode, BarcodeFlag.
void scan_part(ByteWriter& out, const State& state) {
    out.u16(0).u8(0).u8(state.model.screen.format.color == ScreenColor::full).zeros(2);
    out.u8(state.settings.display_mode).u8(0).u8(0).u8(1);
}

void naming(ByteWriter& out, const ControllerState& settings) {
    ByteBuffer names;
    ByteWriter texts(names);
    field(texts, settings.name, kNameSize);
    field(texts, settings.location, kLocation);
    out.bytes(names).u32(calc_crc32(names));
}

} // namespace

// ControllerType u16, FirmwareVersion 8, ScreenParaStatus, uAddress u16, Baudrate, ScreenWidth u16,
// ScreenHeight u16, Color, CurrentBrigtness, CurrentOnOffStatus, ScanConfNumber u16, reversed 9, ipAdder 20
// (filled in by the host).
void write_ping(ByteWriter& out, const State& state, Now now) {
    identity(out, state);
    out.u8(brightness(state, now)).u8(power(state, now)).u16(0).zeros(9).zeros(20);
}

// onoffStatus, timingOnOff, brightnessAdjMode, brightness; what it is doing; switchStatus, CustomID 12,
// BarCode 16. The clock is in BCD, as in every clock record.
void write_status(ByteWriter& out, const State& state, Now now) {
    const ControllerState& settings = state.settings;
    out.u8(power(state, now)).u8(!settings.timing.empty());
    out.u8(static_cast<unsigned>(settings.brightness.mode)).u8(brightness(state, now));
    activity(out, state, now);
    out.u8(0).bytes(settings.network.net_id).text(kBarCode, kBarCodeSize);
}

// password 8, ip, subNetMask, gate 4 each, port u16, mac 6, netID 12.
void write_heartbeat(ByteWriter& out, const State& state) {
    const Network& network = state.settings.network;
    out.bytes(network.password).bytes(network.ip).bytes(network.subnet_mask).bytes(network.gateway);
    out.u16(network.port).bytes(network.mac).bytes(network.net_id);
}

void write_net_search(ByteWriter& out, const State& state, Now now) {
    const ControllerState& settings = state.settings;
    network_head(out, settings.network);
    if (state.model.long_search) web_part(out);
    out.text(kBarCode, kBarCodeSize);
    identity(out, state);
    out.u8(static_cast<unsigned>(settings.brightness.mode)).u8(brightness(state, now));
    out.u8(!settings.timing.empty()).u8(power(state, now));
    scan_part(out, state);
    activity(out, state, now);
    out.u8(0).u8(0).u16(settings.power_on_delay).zeros(2 * 4); // Reserved, LogoFlag; no wind, no dust
    out.u16(0);                                                // ExtendParaLen
    naming(out, settings);
}

} // namespace qm::sim
