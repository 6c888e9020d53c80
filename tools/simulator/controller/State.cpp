#include "simulator/controller/State.h"

namespace qm::sim {

State::State(const Model& what) : model(what), programs(generation_of(what.type), what.screen) {}

HeldScreen dark_screen(const Model& model) { return {Image(model.screen.width, model.screen.height), {}}; }

LocalSeconds clock_of(const State& state, Now now) { return now.host + state.settings.clock_offset; }

bool program_locked(const State& state, Now now) {
    const ProgramLock& lock = state.settings.program_lock;
    const Milliseconds end = state.program_locked_since + std::chrono::seconds(lock.duration);
    return lock.locked && (lock.duration == 0 || now.up < end);
}

Moment moment_of(const State& state, Now now) {
    Moment moment{now.up, clock_of(state, now)};
    if (program_locked(state, now)) moment.locked = state.settings.program_lock.program;
    return moment;
}

std::string playing_program(const State& state, Now now) {
    return state.programs.playing(moment_of(state, now));
}

std::string shown_program(const State& state, Now now) {
    return state.held ? state.held->program : playing_program(state, now);
}

Image played(const State& state, Now now) {
    Image image = state.programs.screen(moment_of(state, now));
    draw(image, state.areas, now.up, playing_program(state, now));
    return image;
}

} // namespace qm::sim
