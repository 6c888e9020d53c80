// What controllers say of their networks, and who answers a broadcast.
#pragma once

#include "arguments.h"
#include "record_text.h"

namespace qm::ctl {

// Throws Failure unless a call has succeeded, with words for a broadcast that nobody answers.
void require_answer(const Result<>& done);

// Of either kind of network-search record; they share these fields.
template <class Record> void describe(Report& report, const Record& data) {
    const auto number = [](auto value) {
        return unsigned{static_cast<std::make_unsigned_t<decltype(value)>>(value)};
    };
    const unsigned width = number(data.ScreenWidth), height = number(data.ScreenHeight);
    const auto type = ControllerType::of(static_cast<Ouint16>(data.ControllerType));
    report.add("MAC address", "mac", hex(octets(data.Mac), ":"))
        .add("IP address", "ip", dotted(octets(data.IP)))
        .add("Subnet mask", "subnet_mask", dotted(octets(data.SubNetMask)))
        .add("Gateway", "gateway", dotted(octets(data.Gate)))
        .add("Port", "port", unsigned{data.Port[0]} + 256U * data.Port[1])
        .add("IP mode", "ip_mode", number(data.IPMode))
        .add("IP status", "ip_status", number(data.IPStatus))
        .add("Server mode", "server_mode", number(data.ServerMode))
        .add("Server", dotted(octets(data.ServerIPAddress)) + ":" + std::to_string(number(data.ServerPort)),
             "server_ip", dotted(octets(data.ServerIPAddress)))
        .add("server_port", number(data.ServerPort))
        .add("Heartbeat", "heartbeat", number(data.HeartBeatInterval))
        .add("Custom ID", "custom_id", printable(octets(data.CustomID)))
        .add("Bar code", "bar_code", printable(octets(data.BarCode)))
        .add("Model", "model", model_name(type))
        .add("Type", hex(type.code, 4), "type", unsigned{type.code})
        .add("Firmware", "firmware", printable(octets(data.FirmwareVersion)))
        .add("Screen", to_string({width, height}) + " pixels", "width", width)
        .add("height", height)
        .add("Colour", "color", word_for(kScreenColors, number(data.Color)))
        .add("Screen address", "address", number(data.Address))
        .add("Name", "name", printable(octets(data.ControllerName)))
        .add("Location", "location", printable(octets(data.ScreenLocation)));
}

} // namespace qm::ctl
