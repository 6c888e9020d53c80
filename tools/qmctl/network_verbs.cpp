// Verbs for a controller's addresses and its Wi-Fi module.
#include "Verb.h"
#include "device_arguments.h"
#include "network.h"

#include <algorithm>

namespace qm::ctl {
namespace {

class ShowNetwork : public Verb {
  public:
    Report run(const Session& session) const override {
        Report report = session.report();
        NetSearchCmdRet data{};
        const auto asked = session.controller.call(cmd_tcpNetworkSearch_6G, &data);
        if (asked.status() == QM_TRUNCATED) { // a controller with a web server says more
            NetSearchCmdRet_Web web{};
            session.command(cmd_tcpNetworkSearch_6G_Web, &web);
            describe(report, web);
        } else {
            require(asked);
            describe(report, data);
        }
        return report;
    }
};

// Text of at most the size of a field, zeros behind it.
template <std::size_t size> std::array<char, size> read_field(const std::string& text) {
    if (text.size() > size) expected("at most " + std::to_string(size) + " bytes");
    std::array<char, size> field{};
    std::ranges::copy(text, field.begin());
    return field;
}

class SetIp : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "IP", m_ip, "", "New address", read_address).required();
        add_value(command, "MASK", m_mask, "", "Subnet mask, such as 255.255.255.0", read_address).required();
        add_value(command, "GATEWAY", m_gateway, "", "Gateway", read_address).required();
        add_number(command, "--port", m_port, 1, 65535, "TCP port (default 5005)");
        add_number(command, "--mode", m_mode, 0, 255, "IP mode, in the controller's numbers (default 0)");
        add_number(command, "--server-mode", m_server_mode, 0, 255,
                   "Server mode, in the controller's numbers (default 0)");
        add_value(command, "--server", m_server, "IP[:PORT]",
                  "Server that the controller reports to (default none; port 5005)", read_controller);
        add_number(command, "--heartbeat", m_heartbeat, 0, 32767,
                   "Between two reports, in the controller's units (default 0)");
        add_value(command, "--password", m_password, "TEXT", "For the server, up to 8 bytes", read_field<8>);
        add_value(command, "--net-id", m_net_id, "TEXT", "Network ID, up to 12 bytes", read_field<12>);
    }
    Report run(const Session&) const override {
        require_answer(Result<>::of(cmd_udpSetIP(static_cast<Ouint8>(m_mode), m_ip.c_str(), m_mask.c_str(),
                                                 m_gateway.c_str(), static_cast<int16_t>(m_port),
                                                 static_cast<Ouint8>(m_server_mode), m_server.ip().c_str(),
                                                 static_cast<int16_t>(m_server.port()), m_password.data(),
                                                 static_cast<int16_t>(m_heartbeat), m_net_id.data())));
        return Report()
            .add("IP address", "ip", m_ip)
            .add("Subnet mask", "subnet_mask", m_mask)
            .add("Gateway", "gateway", m_gateway)
            .add("Port", "port", m_port);
    }

  private:
    std::string m_ip, m_mask, m_gateway;
    unsigned m_port = 5005, m_mode = 0, m_server_mode = 0, m_heartbeat = 0;
    Controller m_server{"0.0.0.0", 0};
    std::array<char, 8> m_password{};
    std::array<char, 12> m_net_id{};
};

class SetMac : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "MAC", m_mac, "", "Address in hex, such as 00:1a:2b:3c:4d:5e or 00-1A-2B-3C-4D-5E",
                  [](const std::string& text) {
                      (void)read_mac(text);
                      return text;
                  })
            .required();
    }
    Report run(const Session&) const override {
        require_answer(Result<>::of(cmd_udpSetMac(read_mac(m_mac).c_str())));
        return Report().add("MAC address", "mac", m_mac);
    }

  private:
    std::string m_mac;
};

class Wifi : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        auto ssid =
            add_value(command, "SSID", m_ssid, "", "Name of the network, 1 to 32 bytes, no comma", read_ssid);
        const auto key =
            add_value(command, "PASSWORD", m_key, "", "8 to 63 characters, no comma", read_wifi_key);
        ssid.needs(key);
    }
    Report run(const Session&) const override {
        if (m_ssid.empty()) return settings();
        require_accepted(cmd_AT_setWifiSsidPwd(m_ssid.c_str(), m_key.c_str()));
        return describe(m_ssid, m_key);
    }

  private:
    static constexpr int kShortAnswer = 2;

    static void require_accepted(int status) {
        if (status == QM_FAILED)
            throw Failure(Error::last(status),
                          "no Wi-Fi module took all settings; those before the one that it did not take are "
                          "kept");
        require(Result<>::of(status));
    }

    static Report describe(const std::string& ssid, const std::string& key) {
        return Report().add("SSID", "ssid", ssid).add("Password", "password", key);
    }

    static Report settings() {
        unsigned char ssid[513]{}, key[513]{}; // an answer has at most 511 bytes
        const int status = cmd_AT_getWifiSsidPwd(reinterpret_cast<char*>(ssid), reinterpret_cast<char*>(key));
        if (status == kShortAnswer)
            throw Failure(Error::last(status), "the Wi-Fi module's answer is too short to hold its settings");
        require_answer(Result<>::of(status));
        return describe(printable(octets(ssid)), printable(octets(key)));
    }

    std::string m_ssid, m_key;
};

constexpr VerbEntry kNetworkVerbs[] = {
    {"network show", "Show a generation-6 controller's addresses and what it says of its screen",
     "Example:\n  qmctl -c 192.168.0.199 network show", make_verb<ShowNetwork>},
    {"network set-ip", "Set a controller's addresses",
     "Goes by broadcast to every controller that it reaches; -c is not used. Connect the one that is meant\n"
     "alone. What is not given is set to its default.\n\nExample:\n  qmctl network set-ip 192.168.0.50 "
     "255.255.255.0 192.168.0.1",
     make_verb<SetIp>, Reach::broadcast},
    {"network set-mac", "Set a controller's MAC address",
     "Goes by broadcast to every controller that it reaches; -c is not used. Connect the one that is meant\n"
     "alone.\n\n"
     "Example:\n  qmctl network set-mac 00:1a:2b:3c:4d:5e",
     make_verb<SetMac>, Reach::broadcast},
    {"network wifi", "Show or set the network that a controller's Wi-Fi module opens",
     "Goes by broadcast to every module that it reaches; -c is not used. Setting it restarts the module,\n"
     "whose controller is then reached at 192.168.100.1.\n\n"
     "Examples:\n  qmctl network wifi\n  qmctl network wifi Signpost 'correct horse'",
     make_verb<Wifi>, Reach::broadcast}};

} // namespace

Family network_verbs() { return kNetworkVerbs; }

} // namespace qm::ctl
