// Verbs that find controllers and ask who they are.
#include "Verb.h"
#include "network.h"

namespace qm::ctl {
namespace {

void describe(Result& result, const Ping_data& data) {
    const unsigned width = data.ScreenWidth, height = data.ScreenHeight;
    result.add("Model", "model", model_name(data.ControllerType))
        .add("Type", hex(data.ControllerType, 4), "type", unsigned{data.ControllerType})
        .add("Firmware", "firmware", printable(octets(data.FirmwareVersion)))
        .add("Screen", std::to_string(width) + " x " + std::to_string(height) + " pixels", "width", width)
        .add("height", height)
        .add("Colour", "color", word_for(kScreenColors, data.Color))
        .add("Brightness", "brightness", unsigned{data.CurrentBrigtness})
        .add("Power", "power", word_for(kOffOn, data.CurrentOnOffStatus))
        .add("Screen address", "address", unsigned{data.uAddress});
}

class Ping : public Verb {
  public:
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        const Ping_data data = session.ping();
        Result result = session.result();
        describe(result, data);
        session.print(result);
    }
};

class Find : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        command.add_flag("--network", m_network,
                         "Ask for the network settings of whoever answers the broadcast");
    }
    void run(Session& session) override {
        session.broadcast = true;
        Result result;
        if (m_network)
            find_network(result);
        else
            find(result);
        session.print(result);
    }

  private:
    static void find(Result& result) {
        Ping_data data{};
        require_answer(cmd_searchController(&data));
        result.add("Found at", "ip", printable(octets(data.ipAdder)));
        describe(result, data);
    }
    static void find_network(Result& result) {
        NetSearchCmdRet data{};
        const int status = cmd_udpNetworkSearch_6G(&data);
        if (status != QM_TRUNCATED) return require_answer(status), describe(result, data);
        NetSearchCmdRet_Web web{}; // a controller with a web server says more
        require_answer(cmd_udpNetworkSearch_6G_Web(&web));
        describe(result, web);
    }

    bool m_network = false;
};

constexpr VerbEntry kVerbs[] = {
    {"ping", "Ask the controller who it is", "Example:\n  qmctl -c 192.168.0.199 ping", make_verb<Ping>},
    {"find", "Find a controller whose address is not known",
     "Asks by broadcast on every network of this host, and at 192.168.100.1; -c is not used. The first\n"
     "controller that answers is shown. Takes about half a minute when there is none.\n\n"
     "Examples:\n  qmctl find\n  qmctl find --network",
     make_verb<Find>}};

} // namespace

Family discovery_verbs() { return kVerbs; }

} // namespace qm::ctl
