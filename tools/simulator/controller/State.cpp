#include "simulator/controller/State.h"

namespace qm::sim {

State::State(const Model& what)
    : model(what), programs(generation_of(what.type), what.width, what.height, what.format) {}

HeldScreen dark_screen(const Model& model) { return {Image(model.width, model.height), {}}; }

LocalSeconds clock_of(const State& state, Moment now) { return now.host + state.settings.clock_offset; }

bool program_locked(const State& state, Moment now) {
    const ProgramLock& lock = state.settings.program_lock;
    const Time end = state.program_locked_since + std::chrono::seconds(lock.duration);
    return lock.locked && (lock.duration == 0 || now.up < end);
}

std::optional<std::string> locked_program(const State& state, Moment now) {
    if (!program_locked(state, now)) return std::nullopt;
    return state.settings.program_lock.program;
}

std::string playing_program(const State& state, Moment now) {
    return state.programs.playing(now.up, clock_of(state, now), locked_program(state, now));
}

std::string shown_program(const State& state, Moment now) {
    return state.held ? state.held->program : playing_program(state, now);
}

std::optional<Time> end_of_turn(const State& state, Moment now) {
    return state.programs.end_of_turn(now.up, clock_of(state, now), locked_program(state, now));
}

Image played(const State& state, Moment now) {
    Image image = state.programs.screen(now.up, clock_of(state, now), locked_program(state, now));
    draw(image, state.areas, now.up, playing_program(state, now));
    return image;
}

} // namespace qm::sim
