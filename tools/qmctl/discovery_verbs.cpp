// Verbs that find controllers and ask who they are.
#include "Session.h"
#include "Verb.h"
#include "names.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace qm::ctl {
namespace {

// A controller's text may hold anything; a terminal and JSON get printable ASCII.
template <std::size_t Size> std::string printable(const Ouint8 (&bytes)[Size]) {
    std::string text(bytes, std::find(bytes, bytes + Size, 0));
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

constexpr Name kPower[] = {{"off", 0}, {"on", 1}};

std::string hex(unsigned value) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "0x%04X", value & 0xFFFFU);
    return text.data();
}

Result describe(const Ping_data& data) {
    const unsigned width = data.ScreenWidth, height = data.ScreenHeight;
    Result result;
    result.add("Model", "model", model_name(data.ControllerType))
        .add("Type", hex(data.ControllerType), "type", unsigned{data.ControllerType})
        .add("Firmware", "firmware", printable(data.FirmwareVersion))
        .add("Screen", std::to_string(width) + " x " + std::to_string(height) + " pixels", "width", width)
        .add("height", height)
        .add("Colour", "color", word_for(kScreenColors, data.Color))
        .add("Brightness", "brightness", unsigned{data.CurrentBrigtness})
        .add("Power", "power", word_for(kPower, data.CurrentOnOffStatus))
        .add("Screen address", "address", unsigned{data.uAddress});
    return result;
}

class Ping : public Verb {
  public:
    void add_arguments(CLI::App&) override {}
    void run(Session& session) override {
        Result result = describe(session.ping());
        result.add("Controller", "controller", session.controller.text());
        session.print(result);
    }
};

constexpr VerbEntry kVerbs[] = {
    {"ping", "Ask the controller who it is", "Example:\n  qmctl -c 192.168.0.199 ping", make_verb<Ping>}};

} // namespace

Family discovery_verbs() { return kVerbs; }

} // namespace qm::ctl
