// Verbs that find controllers and ask who they are.
#include "Verb.h"
#include "network.h"

namespace qm::ctl {
namespace {

Report& describe(Report& report, const Identity& identity) {
    return report.add("Model", "model", model_name(identity.type))
        .add("Type", hex(identity.type.code, 4), "type", unsigned{identity.type.code})
        .add("Firmware", "firmware", printable(identity.firmware))
        .add("Screen", to_string(identity.screen) + " pixels", "width", identity.screen.width)
        .add("height", identity.screen.height)
        .add("Colour", "color", word_for(kScreenColors, identity.color))
        .add("Brightness", "brightness", identity.brightness)
        .add("Power", "power", word_for(kOffOn, identity.power))
        .add("Screen address", "address", identity.address);
}

class Ping : public Verb {
  public:
    Report run(const Session& session) const override {
        Report report = session.report();
        return describe(report, require(session.controller.ping()));
    }
};

class Find : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        command.add_flag("--network", m_network,
                         "Ask for the network settings of whoever answers the broadcast");
    }
    Report run(const Session&) const override {
        Report report;
        if (m_network)
            find_network(report);
        else
            find(report);
        return report;
    }

  private:
    static void find(Report& report) {
        const auto found = search();
        require_answer(found ? Result<>() : found.error());
        report.add("Found at", "ip", printable(found->ip));
        describe(report, *found);
    }
    static void find_network(Report& report) {
        NetSearchCmdRet data{};
        const int status = cmd_udpNetworkSearch_6G(&data);
        if (status != QM_TRUNCATED) return require_answer(Result<>::of(status)), describe(report, data);
        NetSearchCmdRet_Web web{}; // a controller with a web server says more
        require_answer(Result<>::of(cmd_udpNetworkSearch_6G_Web(&web)));
        describe(report, web);
    }

    bool m_network = false;
};

constexpr VerbEntry kDiscoveryVerbs[] = {
    {"ping", "Ask the controller who it is", "Example:\n  qmctl -c 192.168.0.199 ping", make_verb<Ping>},
    {"find", "Find a controller whose address is not known",
     "Asks by broadcast on every network of this host, and at 192.168.100.1; -c is not used. The first\n"
     "controller that answers is shown. Takes about half a minute when there is none.\n\n"
     "Examples:\n  qmctl find\n  qmctl find --network",
     make_verb<Find>, Reach::broadcast}};

} // namespace

Family discovery_verbs() { return kDiscoveryVerbs; }

} // namespace qm::ctl
