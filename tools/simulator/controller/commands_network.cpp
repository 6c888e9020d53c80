// Network, group 0xA4.
#include "simulator/controller/commands.h"

#include "cmdPacket/catalogue.h"
#include "simulator/controller/records.h"

#include <bit>

namespace qm::sim {
namespace {

constexpr std::size_t kMac = 6, kSettings = 51;

template <std::size_t size> void read_field(ByteReader& reader, std::array<std::uint8_t, size>& to) {
    const Bytes field = reader.bytes(size);
    std::copy(field.begin(), field.end(), to.begin());
}

// Ones first, then zeros.
bool is_mask(const Network::Address& mask) {
    std::uint32_t bits = 0;
    for (const std::uint8_t byte : mask) bits = bits << 8U | byte;
    return std::countl_one(bits) == std::popcount(bits);
}

Outcome set_mac(State& state, Bytes payload, Now) {
    std::copy(payload.begin(), payload.end(), state.settings.network.mac.begin());
    return done();
}

// mode, ip 4, subnetMask 4, gateway 4, port u16, serverMode, serverIP 4, serverPort u16, password 8,
// heartbeat u16, netID 12, onoffMac, mac 6.
Outcome set_ip(State& state, Bytes payload, Now) {
    Network network = state.settings.network;
    ByteReader reader(payload);
    network.mode = reader.u8();
    read_field(reader, network.ip);
    read_field(reader, network.subnet_mask);
    read_field(reader, network.gateway);
    network.port = reader.u16();
    network.server_mode = reader.u8();
    read_field(reader, network.server_ip);
    network.server_port = reader.u16();
    read_field(reader, network.password);
    network.heartbeat = reader.u16();
    read_field(reader, network.net_id);
    const bool with_mac = reader.u8() != 0;
    if (with_mac) read_field(reader, network.mac);
    if (!is_mask(network.subnet_mask)) return refuse(ErrorValue::bad_value);
    state.settings.network = network;
    return done();
}

Outcome search(State& state, Bytes, Now) {
    return answer([&](ByteWriter& out) { write_heartbeat(out, state); });
}

Outcome search_6g(State& state, Bytes, Now now) {
    return answer([&](ByteWriter& out) { write_net_search(out, state, now); });
}

constexpr Command kNetworkCommands[] = {
    {kNetworkGroup, hv_net_SetEthernetMac, "set MAC", kMac, kMac, set_mac},
    {kNetworkGroup, hv_net_SetEthernetIP, "set IP", kSettings, kSettings, set_ip},
    {kNetworkGroup, hv_net_NetworkSearch, "network search", 0, 0, search},
    {kNetworkGroup, hv_net_NetworkSearch_6G, "network search 6G", 0, 0, search_6g},
};

} // namespace

std::span<const Command> network_commands() { return kNetworkCommands; }

} // namespace qm::sim
