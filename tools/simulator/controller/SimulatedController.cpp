#include "simulator/controller/SimulatedController.h"

#include "simulator/controller/WifiModule.h"
#include "simulator/controller/commands.h"
#include "support/controller_types.h"

#include <cstdio>

namespace qm::sim {
namespace {

constexpr std::size_t kPayloadsKept = 64, kPayloadBytesKept = std::size_t{64} << 20U;

const Command* find_command(const Request& request) {
    for (const auto table :
         {control_commands(), power_commands(), file_commands(), network_commands(), dynamic_area_commands()})
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

std::string result_of(const Reply& reply) {
    if (const auto* error = std::get_if<ErrorValue>(&reply))
        return "refused with " + std::to_string(static_cast<unsigned>(*error)) + ", " + meaning_of(*error);
    if (const auto* payload = std::get_if<ByteBuffer>(&reply))
        return std::to_string(payload->size()) + " bytes";
    return "acknowledged";
}

Outcome carry_out(State& state, const Request& request, Now now) {
    if (request.malformed) return {ErrorValue::malformed, {}};
    const Command* command = find_command(request);
    if (!command) return {ErrorValue::unknown_command, {}};
    const std::size_t length = request.payload().size();
    if (length < command->shortest || length > command->longest) return {ErrorValue::bad_length, {}};
    return command->carry_out(state, request.payload(), now);
}

void remember(std::deque<ByteBuffer>& payloads, const Request& request) {
    if (request.group != kDynamicAreaGroup) return;
    payloads.push_back(request.application);
    std::size_t bytes = 0;
    for (const ByteBuffer& payload : payloads) bytes += payload.size();
    while (payloads.size() > 1 && (payloads.size() > kPayloadsKept || bytes > kPayloadBytesKept)) {
        bytes -= payloads.front().size();
        payloads.pop_front();
    }
}

void describe(Outcome& outcome, const Request& request) {
    std::string line = request.handshake ? "handshake" : name_of(request);
    if (!outcome.log.empty()) line += ", " + outcome.log;
    outcome.log = line + ": " + result_of(outcome.reply);
}

// Level 0 can still be told from dark: it has a quarter of the light, and nothing lit is rounded to nothing.
void dim(Image& image, unsigned level) {
    constexpr unsigned kFloor = 5, kWhole = kFloor + kBrightest;
    if (level >= kBrightest) return;
    for (std::uint8_t& value : image.rgb)
        value = static_cast<std::uint8_t>((value * (kFloor + level) + kWhole - 1) / kWhole);
}

} // namespace

Outcome SimulatedController::handle(const Request& request, Now now) {
    remember(m_state.payloads, request);
    Outcome outcome = carry_out(m_state, request, now);
    describe(outcome, request);
    const std::string programs = m_state.programs.update(m_state.files, now.up);
    outcome.updated = outcome.updated || !programs.empty();
    outcome.log += programs;
    return outcome;
}

Outcome SimulatedController::refuse(const Request& request, ErrorValue error) {
    remember(m_state.payloads, request);
    Outcome outcome{error, {}};
    describe(outcome, request);
    return outcome;
}

void SimulatedController::restore(ControllerState settings, std::vector<StoredFile> files) {
    m_state.settings = std::move(settings);
    for (StoredFile& file : files) m_state.files.restore(std::move(file));
    (void)m_state.programs.update(m_state.files, Milliseconds{0});
    if (m_state.settings.screen_lock.locked) m_state.held = dark_screen(m_state.model);
}

std::string SimulatedController::ask_wifi(std::string_view text) {
    return answer_of(m_state.settings.wifi, text);
}

Image SimulatedController::screen(Now now) const {
    const LocalSeconds clock = clock_of(m_state, now);
    if (!power_at(m_state.settings, clock)) return {m_state.model.screen.width, m_state.model.screen.height};
    Image image = m_state.held ? m_state.held->image : played(m_state, now);
    dim(image, brightness_at(m_state.settings, clock));
    return image;
}

std::optional<Milliseconds> SimulatedController::next_change(Now now) const {
    const auto program = m_state.programs.next_change(moment_of(m_state, now));
    const auto area = sim::next_change(m_state.areas, now.up, playing_program(m_state, now));
    return sooner(program, area);
}

Snapshot SimulatedController::snapshot(Now now) const {
    Snapshot snapshot{m_state.settings};
    snapshot.clock = clock_of(m_state, now);
    snapshot.power = power_at(m_state.settings, snapshot.clock);
    snapshot.brightness_level = brightness_at(m_state.settings, snapshot.clock);
    snapshot.program_lock.locked = program_locked(m_state, now);
    snapshot.program = shown_program(m_state, now);
    const std::string playing = playing_program(m_state, now);
    snapshot.next_program = m_state.programs.next(moment_of(m_state, now));
    snapshot.program_areas = m_state.programs.areas(moment_of(m_state, now));
    for (const PlayedArea& played : m_state.areas)
        snapshot.areas.push_back({played.area, played.area.pages.size(), played.shown(now.up, playing)});
    snapshot.voices = m_state.voices.all();
    snapshot.program_errors = m_state.programs.errors();
    snapshot.total_memory = FileSystem::kCapacity;
    snapshot.available_memory = m_state.files.available();
    return snapshot;
}

} // namespace qm::sim
