// discovery_probe CASE [ARGUMENT]: calls the library as an application would, on a network that run.sh has
// made. Exit status 0 when all is as expected; else what was not stands on standard error.
#include "qm_sdk_dual.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/time.h>
#include <vector>

namespace {

int failures = 0;

template <class Actual, class Expected>
void expect(const char* what, const Actual& actual, const Expected& expected) {
    if (actual == expected) return;
    ++failures;
    const nlohmann::json shown = {{"is", actual}, {"should be", expected}};
    std::fprintf(stderr, "%s: %s\n", what, shown.dump().c_str());
}

std::string text(const void* field, std::size_t size) {
    const auto* characters = static_cast<const char*>(field);
    return {characters, ::strnlen(characters, size)};
}

template <class Record> bool untouched(const Record& record, unsigned char filling) {
    const std::vector<unsigned char> expected(sizeof record, filling);
    return std::memcmp(&record, expected.data(), sizeof record) == 0;
}

template <class Record> Record filled() {
    Record record;
    std::memset(&record, 0x77, sizeof record);
    return record;
}

void expect_simulator(const Ping_data& data) {
    expect("type", int{data.ControllerType}, 0x0262);
    expect("firmware", text(data.FirmwareVersion, 8), "SIM 1.00");
    expect("width", int{data.ScreenWidth}, 96);
    expect("height", int{data.ScreenHeight}, 16);
}

void udp_ping(const char*) {
    auto data = filled<Ping_data>();
    expect("cmd_udpPing", cmd_udpPing(&data), 0);
    expect_simulator(data);
}

const std::vector<int> kAddress{192, 168, 0, 199};

template <class Record> std::vector<int> address_in(const Record& field) {
    return {field[0], field[1], field[2], field[3]};
}

void network_search(const char*) {
    auto data = filled<heartbeatData>();
    expect("cmd_udpNetworkSearch", cmd_udpNetworkSearch(&data), 0);
    expect("ip", address_in(data.ip), kAddress);
    expect("port", int{data.port}, 5005);
    auto six = filled<NetSearchCmdRet>();
    expect("cmd_udpNetworkSearch_6G", cmd_udpNetworkSearch_6G(&six), 0);
    expect("IP", address_in(six.IP), kAddress);
    expect("ScreenWidth", int{six.ScreenWidth}, 96);
    expect("BarCode", std::string(six.BarCode, 16), "QM-SIMULATOR-001");
}

void network_search_web(const char*) {
    auto web = filled<NetSearchCmdRet_Web>();
    expect("cmd_udpNetworkSearch_6G_Web", cmd_udpNetworkSearch_6G_Web(&web), 0);
    expect("IP", address_in(web.IP), kAddress);
    expect("WebControllerName", text(web.WebControllerName, 128), "qm_simulator");
    expect("ScreenHeight", int{web.ScreenHeight}, 16);
    auto six = filled<NetSearchCmdRet>();
    expect("the longer record into the shorter", cmd_udpNetworkSearch_6G(&six), 1);
    expect("IP of the cut record", address_in(six.IP), kAddress);
}

nlohmann::json state_in(const char* file) {
    std::ifstream in(file);
    return nlohmann::json::parse(in);
}

void set_network(const char* file) {
    expect("cmd_udpSetMac", cmd_udpSetMac("0-26-43-60-77-94"), 0);
    expect("cmd_udpSetIP",
           cmd_udpSetIP(1, "10.1.2.3", "255.255.0.0", "10.1.0.1", 6005, 2, "10.9.9.9", 7005, "password", 60,
                        "0123456789AB"),
           0);
    const auto network = state_in(file).at("network");
    expect("mac", network.at("mac"), "001A2B3C4D5E");
    expect("ip", network.at("ip"), "10.1.2.3");
    expect("subnet mask", network.at("subnet_mask"), "255.255.0.0");
    expect("gateway", network.at("gateway"), "10.1.0.1");
    expect("port", network.at("port"), 6005);
    expect("server", network.at("server_ip"), "10.9.9.9");
    expect("server port", network.at("server_port"), 7005);
    expect("heartbeat", network.at("heartbeat"), 60);
    expect("net ID", network.at("net_id"), "303132333435363738394142");
}

void search(const char* address) {
    auto data = filled<Ping_data>();
    expect("cmd_searchController", cmd_searchController(&data), 0);
    expect_simulator(data);
    std::string whole(sizeof data.ipAdder, '\0');
    whole.replace(0, std::strlen(address), address);
    expect("found at", std::string(reinterpret_cast<const char*>(data.ipAdder), whole.size()), whole);
}

void search_in_vain(const char*) {
    auto data = filled<Ping_data>();
    expect("cmd_searchController", cmd_searchController(&data), -1);
    expect("the record is zeroed", untouched(data, 0), true);
    expect("reason", std::string(qm_last_error()), "Nobody answered within 3 s.");
}

// Every 10 ms, or no more.
void interrupt_often(bool on) {
    ::signal(SIGALRM, [](int) {});
    const itimerval every{{0, on ? 10000 : 0}, {0, on ? 10000 : 0}};
    ::setitimer(ITIMER_REAL, &every, nullptr);
}

void wifi_setup(const char* file) {
    const auto begin = std::chrono::steady_clock::now();
    interrupt_often(true);
    expect("cmd_AT_setWifiSsidPwd", cmd_AT_setWifiSsidPwd("lobby", "secret99"), 0);
    interrupt_often(false);
    const bool rested = std::chrono::steady_clock::now() - begin >= std::chrono::milliseconds(4 * 100);
    expect("the module has its rests, whatever signals arrive", rested, true);
    const auto wifi = state_in(file).at("wifi");
    expect("ssid", wifi.at("ssid"), "lobby");
    expect("password", wifi.at("password"), "secret99");
    expect("address", wifi.at("address"), "192%2E168%2E100%2E1");
    expect("socket", wifi.at("socket"), "TCPS%2C0%2E0%2E0%2E0%2C0%2C5005");
    expect("mode", wifi.at("mode"), "2");
    expect("restarts", wifi.at("restarts"), 1);
    char ssid[512] = {}, password[512] = {};
    expect("cmd_AT_getWifiSsidPwd", cmd_AT_getWifiSsidPwd(ssid, password), 0);
    expect("ssid read back", std::string(ssid), "lobby");
    expect("password read back", std::string(password), "secret99");
    expect("a name that the module refuses", cmd_AT_setWifiSsidPwd("lob,by", "secret99"), -1);
    expect("restarts", state_in(file).at("wifi").at("restarts"), 1);
}

void wifi_absent(const char*) {
    char ssid[512] = {}, password[512] = {};
    expect("cmd_AT_setWifiSsidPwd", cmd_AT_setWifiSsidPwd("lobby", "secret99"), -1);
    expect("cmd_AT_getWifiSsidPwd", cmd_AT_getWifiSsidPwd(ssid, password), -1);
    expect("ssid", std::string(ssid), "");
    expect("reason", std::string(qm_last_error()), "Nobody answered within 3 s.");
}

void loopback_only(const char*) {
    auto data = filled<Ping_data>();
    expect("cmd_udpPing", cmd_udpPing(&data), -1);
    expect("the record is left alone", untouched(data, 0x77), true);
    expect("cmd_udpSetMac", cmd_udpSetMac("0-26-43-60-77-94"), -1);
    expect("reason", std::string(qm_last_error()), "The host has no network interface to broadcast on.");
    expect("cmd_tcpPing", cmd_tcpPing("10.77.1.2", 5005, &data), -1);
    expect("reason", std::string(qm_last_error()),
           "There is no route to 10.77.1.2:5005 (Network is unreachable).");
}

constexpr struct {
    const char* name;
    void (*run)(const char* argument);
} kCases[] = {
    {"udp_ping", udp_ping},
    {"network_search", network_search},
    {"network_search_web", network_search_web},
    {"set_network", set_network},
    {"search", search},
    {"search_in_vain", search_in_vain},
    {"wifi_setup", wifi_setup},
    {"wifi_absent", wifi_absent},
    {"loopback_only", loopback_only},
};

} // namespace

int main(int argc, char** argv) {
    for (const auto& row : kCases) {
        if (argc < 2 || std::strcmp(argv[1], row.name) != 0) continue;
        row.run(argc > 2 ? argv[2] : "");
        return failures == 0 ? 0 : 1;
    }
    std::fprintf(stderr, "discovery_probe: there is no such case\n");
    return 2;
}
