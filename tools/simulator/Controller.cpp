#include "simulator/Controller.h"

#include "simulator/commands.h"

#include <cstdio>

namespace qm::sim {
namespace {

constexpr std::size_t kPayloadsKept = 64, kPayloadBytesKept = std::size_t{64} << 20U;

const Command* find_command(const Request& request) {
    for (const auto table : {control_commands(), dynamic_area_commands()})
        for (const Command& command : table)
            if (command.group == request.group && command.cmd == request.cmd) return &command;
    return nullptr;
}

std::string name_of(const Request& request) {
    if (const Command* command = find_command(request)) return command->name;
    char name[32];
    std::snprintf(name, sizeof name, "command 0x%02X/%u", request.group, unsigned{request.cmd});
    return name;
}

std::string words_of_reply(const Reply& reply) {
    if (const auto* error = std::get_if<ErrorValue>(&reply))
        return "refused with " + std::to_string(static_cast<unsigned>(*error)) + ", " + words_of(*error);
    if (const auto* payload = std::get_if<Frame>(&reply)) return std::to_string(payload->size()) + " bytes";
    return "acknowledged";
}

Outcome carry_out(State& state, const Request& request, Time now) {
    if (request.malformed) return {ErrorValue::malformed, {}};
    const Command* command = find_command(request);
    if (!command) return {ErrorValue::unknown_command, {}};
    const std::size_t length = request.payload().size();
    if (length < command->shortest || length > command->longest) return {ErrorValue::bad_length, {}};
    return command->carry_out(state, request.payload(), now);
}

void remember(std::deque<Frame>& payloads, const Request& request) {
    if (request.group != kDynamicAreaGroup) return;
    payloads.push_back(request.application);
    std::size_t bytes = 0;
    for (const Frame& payload : payloads) bytes += payload.size();
    while (payloads.size() > 1 && (payloads.size() > kPayloadsKept || bytes > kPayloadBytesKept)) {
        bytes -= payloads.front().size();
        payloads.pop_front();
    }
}

void describe(Outcome& outcome, const Request& request) {
    std::string words = request.handshake ? "handshake" : name_of(request);
    if (!outcome.words.empty()) words += ", " + outcome.words;
    outcome.words = words + ": " + words_of_reply(outcome.reply);
}

} // namespace

Outcome Controller::handle(const Request& request, Time now) {
    remember(m_state.payloads, request);
    Outcome outcome = carry_out(m_state, request, now);
    describe(outcome, request);
    return outcome;
}

Outcome Controller::refuse(const Request& request, ErrorValue error) {
    remember(m_state.payloads, request);
    Outcome outcome{error, {}};
    describe(outcome, request);
    return outcome;
}

Image Controller::screen(Time now) const {
    Image image(m_state.model.width, m_state.model.height);
    draw(image, m_state.model.format, m_state.areas, now);
    return image;
}

} // namespace qm::sim
