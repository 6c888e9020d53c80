// A controller takes any commands at any times: each gets one answer, which the library reads, and one that
// is refused changes nothing. Files and settings are the same after a restart.
#include "controller_promises.h"
#include "screens.h"

namespace qm::sim {
namespace {

Reply handle(SimulatedController& controller, const Request& request, Now now) {
    const State& of = controller.state();
    const auto known = [&of] { return std::tuple(of.settings, of.files.version(), of.dynamic_version); };
    const auto before = known();
    Reply reply = controller.handle(request, now).reply;
    if (request.group != 0xA0) check_answer(request, reply, controller.sender()); // which is the answers' own
    require(!std::holds_alternative<ErrorValue>(reply) || known() == before);
    require(of.areas.size() <= 256 && of.payloads.size() <= 64);
    require(controller.next_change(now).value_or(Milliseconds::max()) > now.up);
    return reply;
}

// How long it waits, group, code, length and bytes of the payload.
Request next_request(ByteReader& in, Now& now) {
    const std::uint8_t wait = in.u8();
    now.up += Milliseconds(wait == 0 ? 0 : 1 << wait % 28);
    now.host += std::chrono::seconds(wait);
    Request request{.group = in.u8(), .cmd = in.u8(), .application = {}};
    const std::size_t length = in.u16();
    const Bytes payload = in.bytes(std::min(length, in.left()));
    request.application.assign(payload.begin(), payload.end());
    return request;
}

void play(std::uint8_t choice, ByteReader in) {
    const Model model = fuzz::model_of(choice);
    SimulatedController controller(model), twin(model);
    Now now{Milliseconds{0}, fuzz::day()};
    while (in.left() > 0) {
        const Request request = next_request(in, now);
        const Reply reply = handle(controller, request, now);
        require(twin.handle(request, now).reply.index() == reply.index());
        const std::string text(request.application.begin(), request.application.end());
        require(request.group != 0 || controller.ask_wifi(text) == twin.ask_wifi(text));
        const Image screen = controller.screen(now);
        require(screen.rgb.size() == std::size_t{64} * 16 * 3 && screen == twin.screen(now));
    }
    require(twin.state().settings == controller.state().settings);
    if (choice < 0x80) check_state(controller, now); // which takes longer than all else
}

} // namespace
} // namespace qm::sim

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0) qm::sim::play(data[0], qm::ByteReader({data + 1, size - 1}));
    return 0;
}
