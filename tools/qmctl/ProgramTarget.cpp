#include "ProgramTarget.h"

#include "JsonReader.h"
#include "record_text.h"

namespace qm::ctl {
namespace {

constexpr unsigned kUsualG5 = 0x0051, kUsualG6 = 0x0262, kUsualFullColor = 0x0166; // controller types

// Whether its pixels are full-colour ones: then they are nothing else.
bool has_full_color(unsigned type) {
    const unsigned series = type & 0xFFU, variant = type >> 8U;
    return series == 0x66 && (variant <= 7 || variant == 0x81);
}

void require_color(Ouint16 type, unsigned color) {
    const bool full = color == SCREEN_COLOR_FULLCOLOR;
    if (full != has_full_color(type))
        throw UsageError("screen.color: a controller of type " + hex(unsigned{type}, 4) +
                         (full ? " has no full colour" : " has full colour only"));
}

std::optional<unsigned> known_generation(std::optional<unsigned> type) {
    const unsigned generation = type ? generation_of(static_cast<Ouint16>(*type)) : 0;
    return generation ? std::optional(generation) : std::nullopt;
}

// What the controller says, as far as it makes sense.
ScreenDescription ask(const Session& session) {
    const Ping_data data = session.ping();
    ScreenDescription screen;
    screen.type = data.ControllerType;
    if (data.Color >= SCREEN_COLOR_SINGLE && data.Color <= SCREEN_COLOR_FULLCOLOR) screen.color = data.Color;
    if (data.ScreenWidth > 0 && data.ScreenHeight > 0)
        screen.size = PixelSize{data.ScreenWidth, data.ScreenHeight};
    return screen;
}

ScreenDescription ask_for_open_fields(const Session& session) {
    try {
        return ask(session);
    } catch (const Failure& failure) {
        throw Failure(failure.status(), "asking for what the description leaves open (generation, "
                                        "screen.color or screen.size)");
    }
}

template <class Value>
const std::optional<Value>& first_of(const std::optional<Value>& a, const std::optional<Value>& b) {
    return a ? a : b;
}

template <class Value> Value require(const std::optional<Value>& value, const char* what) {
    if (!value) throw UsageError(std::string("neither the description nor the controller says ") + what);
    return *value;
}

std::string generations(unsigned ours, unsigned theirs) {
    return "generation " + std::to_string(ours) + ", but the controller is of generation " +
           std::to_string(theirs);
}

void require_room(const Border& border, unsigned width, unsigned height) {
    const unsigned thickness = border.pattern.size.height;
    if (2 * thickness >= std::min(width, height))
        throw JsonError(border.pattern.where + ": a border of " + std::to_string(thickness) +
                        " pixels leaves no room in " + to_string({width, height}));
}

void fit_area(Area& area, const Rect& inside, const PixelSize& screen) {
    if (!area.rect) area.rect = inside;
    const Rect& rect = *area.rect;
    if (const std::string wrong = beyond(rect, screen); !wrong.empty())
        throw JsonError(area.where + ".rect: " + wrong);
    if (area.border) require_room(*area.border, rect.width, rect.height);
    if (!area.analog || !area.analog->pivot) return;
    const auto [x, y] = *area.analog->pivot;
    if (x >= rect.width || y >= rect.height)
        throw JsonError(area.where + ".analog.pivot: lies outside the area of " +
                        to_string({rect.width, rect.height}) + " pixels");
}

// What the records of hands hold of a colour.
void require_palette(const Area& area, const ProgramTarget& target) {
    if (!area.analog || (target.generation == 6 && target.color == SCREEN_COLOR_FULLCOLOR)) return;
    for (const ClockHand* hand : {&area.analog->hour, &area.analog->minute, &area.analog->second})
        if (hand->color > eWhite)
            throw JsonError(hand->where +
                            ".color: #RRGGBB is for screens of full colour in generation 6; here "
                            "hands are black, red, green, yellow, blue, magenta, cyan or white");
}

template <class Value>
void leave_out(Value& value, const std::string& field, std::vector<std::string>& notes) {
    if (value) notes.push_back(field + " is left out: generation 5 has none");
    value = {};
}

} // namespace

void ProgramTargetOptions::add_to(ArgumentList& command) {
    add_number(command, "--generation", m_generation, 5, 6,
               "Generation of the controller, 5 or 6 (default as the description says)");
    add_value(command, "--type", m_type, "TYPE", "Type of the controller, such as 0x0262 (likewise)",
              read_type);
    add_word(command, "--screen", m_color, kScreenColors,
             "Colours of the screen: single, double, three or full (likewise)");
}

std::optional<unsigned> ProgramTargetOptions::generation(const ProgramDescription& program) const {
    const auto of_type = known_generation(m_type), described_type = known_generation(program.screen.type);
    if (m_generation && of_type && m_generation != of_type)
        throw UsageError("--type: a controller of generation " + std::to_string(*of_type) +
                         ", but --generation says " + std::to_string(*m_generation));
    if (program.generation && described_type && program.generation != described_type)
        throw JsonError("screen.type: a controller of generation " + std::to_string(*described_type) +
                        ", but generation says " + std::to_string(*program.generation));
    if (m_generation || of_type) return first_of(m_generation, of_type);
    return first_of(program.generation, described_type);
}

ProgramTarget ProgramTargetOptions::target(const Session& session, const ProgramDescription& program,
                                           bool sending) const {
    const auto wanted = generation(program);
    ScreenDescription described = program.screen;
    if (wanted && known_generation(described.type).value_or(*wanted) != *wanted) described.type.reset();
    ScreenDescription found;
    const bool open = !wanted || !first_of(m_color, described.color) || !described.size;
    if (sending)
        found = ask(session);
    else if (open)
        found = ask_for_open_fields(session);

    const auto theirs = known_generation(found.type);
    if (sending && wanted && theirs && *wanted != *theirs)
        throw UsageError("the program is made for " + generations(*wanted, *theirs));
    ProgramTarget target;
    target.generation = require(first_of(wanted, theirs), "the generation");
    if (theirs && *theirs != target.generation) found.type.reset();
    const ScreenDescription& first = sending ? found : described;
    const ScreenDescription& second = sending ? described : found;
    target.color = static_cast<E_ScreenColor_G56>(
        require(first_of(m_color, first_of(first.color, second.color)), "screen.color"));
    const bool full = target.color == SCREEN_COLOR_FULLCOLOR;
    const unsigned usual = target.generation == 5 ? kUsualG5 : full ? kUsualFullColor : kUsualG6;
    const auto type = first_of(m_type, first_of(first.type, second.type));
    target.type = static_cast<Ouint16>(type.value_or(usual));
    require_color(target.type, target.color);
    target.size = require(first_of(first.size, second.size), "screen.size");
    target.wiring = static_cast<E_DoubleColorPixel_G56>(described.wiring);
    return target;
}

Rect inside_border(const ProgramDescription& program, const ProgramTarget& target) {
    const unsigned border = program.border ? program.border->pattern.size.height : 0;
    const auto u16 = [](unsigned value) { return static_cast<Ouint16>(value); };
    return {u16(border), u16(border), u16(target.size.width - 2 * border),
            u16(target.size.height - 2 * border)};
}

std::vector<std::string> fit_to(ProgramDescription& program, const ProgramTarget& target) {
    if (program.border) require_room(*program.border, target.size.width, target.size.height);
    const Rect inside = inside_border(program, target);
    for (Area& area : program.areas) {
        fit_area(area, inside, target.size);
        require_palette(area, target);
    }
    std::vector<std::string> notes;
    if (target.generation == 6) return notes;
    leave_out(program.background, "background", notes);
    for (Area& area : program.areas) {
        leave_out(area.sound, area.where + ".sound", notes);
        leave_out(area.battle, area.where + ".battle", notes);
        leave_out(area.background_flag, area.where + ".background_flag", notes);
        leave_out(area.transparency, area.where + ".transparency", notes);
        leave_out(area.equal, area.where + ".equal", notes);
    }
    return notes;
}

} // namespace qm::ctl
