#include "target.h"

#include "JsonReader.h"
#include "errors.h"

namespace qm::sign {
namespace {

constexpr unsigned kUsualG5 = 0x0051, kUsualG6 = 0x0262, kUsualFullColor = 0x0166; // controller types

ControllerType type_of(unsigned code) { return ControllerType::of(static_cast<std::uint16_t>(code)); }

void require_color(const Screen& screen, const ScreenWishes& wishes) {
    const bool full = screen.color == SCREEN_COLOR_FULLCOLOR;
    if (full == type_of(screen.type).full_color) return;
    const std::string why = ": a controller of type " + hex(screen.type, 4) +
                            (full ? " has no full colour" : " has full colour only");
    if (wishes.color) throw UsageError(wishes.color_name + why);
    throw JsonError("screen.color" + why);
}

std::optional<unsigned> known_generation(std::optional<unsigned> type) {
    const unsigned generation = type ? type_of(*type).generation : 0;
    return generation ? std::optional(generation) : std::nullopt;
}

// What the controller says, as far as it makes sense.
ScreenDescription screen_of(const Identity& identity) {
    ScreenDescription screen;
    screen.type = identity.type.code;
    if (identity.color >= SCREEN_COLOR_SINGLE && identity.color <= SCREEN_COLOR_FULLCOLOR)
        screen.color = identity.color;
    if (identity.screen.width > 0 && identity.screen.height > 0) screen.size = identity.screen;
    return screen;
}

template <class Value>
const std::optional<Value>& first_of(const std::optional<Value>& a, const std::optional<Value>& b) {
    return a ? a : b;
}

template <class Value> Value said(const std::optional<Value>& value, const char* what) {
    if (!value) throw JsonError(std::string("neither the description nor the controller says ") + what);
    return *value;
}

std::string generations(unsigned ours, unsigned theirs) {
    return "generation " + std::to_string(ours) + ", but the controller is of generation " +
           std::to_string(theirs);
}

void require_room(const PatternBorder& border, unsigned width, unsigned height) {
    const unsigned thickness = border.size.height;
    if (2 * thickness >= std::min(width, height))
        throw JsonError(border.where + ": a border of " + std::to_string(thickness) +
                        " pixels leaves no room in " + to_string({width, height}));
}

void fit_area(AreaDescription& area, const Rect& inside, const Size& screen) {
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
void require_palette(const AreaDescription& area, const Screen& screen) {
    if (!area.analog || (screen.generation == 6 && screen.color == SCREEN_COLOR_FULLCOLOR)) return;
    const std::uint32_t colors[] = {area.analog->hour.color, area.analog->minute.color,
                                    area.analog->second.color};
    for (std::size_t i = 0; i < std::size(colors); ++i)
        if (colors[i] > eWhite)
            throw JsonError(area.analog->hands[i] +
                            ".color: #RRGGBB is for screens of full colour in generation 6; here "
                            "hands are black, red, green, yellow, blue, magenta, cyan or white");
}

template <class Value>
void leave_out(Value& value, const std::string& field, std::vector<std::string>& notes) {
    if (value) notes.push_back(field + " is left out: generation 5 has none");
    value = {};
}

} // namespace

std::optional<unsigned> generation_for(const ScreenWishes& wishes, const ProgramDescription& program) {
    const auto of_type = known_generation(wishes.type),
               described_type = known_generation(program.screen.type);
    if (wishes.generation && of_type && wishes.generation != of_type)
        throw UsageError(std::string(wishes.type_name) + ": a controller of generation " +
                         std::to_string(*of_type) + ", but " + wishes.generation_name + " says " +
                         std::to_string(*wishes.generation));
    if (program.generation && described_type && program.generation != described_type)
        throw JsonError("screen.type: a controller of generation " + std::to_string(*described_type) +
                        ", but generation says " + std::to_string(*program.generation));
    if (wishes.generation || of_type) return first_of(wishes.generation, of_type);
    return first_of(program.generation, described_type);
}

namespace {

// Its type says nothing of a controller of another generation.
ScreenDescription described_for(const ProgramDescription& program, std::optional<unsigned> generation) {
    ScreenDescription described = program.screen;
    if (generation && known_generation(described.type).value_or(*generation) != *generation)
        described.type.reset();
    return described;
}

// found: what the controller says, if it was asked.
Screen target_among(const ScreenWishes& wishes, const ProgramDescription& program, ScreenDescription found,
                    bool sending) {
    const auto wanted = generation_for(wishes, program);
    const ScreenDescription described = described_for(program, wanted);
    const auto theirs = known_generation(found.type);
    if (sending && wanted && theirs && *wanted != *theirs)
        throw UsageError("the program is made for " + generations(*wanted, *theirs));
    Screen screen;
    screen.generation = said(first_of(wanted, theirs), "the generation");
    if (theirs && *theirs != screen.generation) found.type.reset();
    const ScreenDescription& first = sending ? found : described;
    const ScreenDescription& second = sending ? described : found;
    screen.color = static_cast<E_ScreenColor_G56>(
        said(first_of(wishes.color, first_of(first.color, second.color)), "screen.color"));
    const bool full = screen.color == SCREEN_COLOR_FULLCOLOR;
    const unsigned usual = screen.generation == 5 ? kUsualG5 : full ? kUsualFullColor : kUsualG6;
    const auto type = first_of(wishes.type, first_of(first.type, second.type));
    screen.type = static_cast<std::uint16_t>(type.value_or(usual));
    require_color(screen, wishes);
    screen.size = said(first_of(first.size, second.size), "screen.size");
    screen.wiring = static_cast<E_DoubleColorPixel_G56>(described.wiring);
    return screen;
}

} // namespace

Screen target_for(const ScreenWishes& wishes, const ProgramDescription& program,
                  const Controller& controller) {
    const bool open = !generation_for(wishes, program) || !first_of(wishes.color, program.screen.color) ||
                      !program.screen.size;
    ScreenDescription found;
    if (open)
        found =
            screen_of(require(controller.ping(), "asking for what the description leaves open (generation, "
                                                 "screen.color or screen.size)"));
    return target_among(wishes, program, std::move(found), false);
}

Screen target_for(const ScreenWishes& wishes, const ProgramDescription& program, const Identity& controller) {
    return target_among(wishes, program, screen_of(controller), true);
}

bool is_made_for(const ProgramDescription& program, const Identity& controller) {
    const auto generation = generation_for({}, program);
    const ScreenDescription& screen = program.screen;
    const ScreenDescription found = screen_of(controller);
    const auto differ = [](const auto& ours, const auto& theirs) {
        return ours && theirs && *ours != *theirs;
    };
    return !differ(generation, known_generation(found.type)) && !differ(screen.color, found.color) &&
           (!screen.size || !found.size || to_string(*screen.size) == to_string(*found.size));
}

Rect whole(const Size& screen) {
    return {0, 0, static_cast<std::uint16_t>(screen.width), static_cast<std::uint16_t>(screen.height)};
}

Rect inside(const Rect& rect, const std::optional<PatternBorder>& border) {
    const unsigned thickness = border ? border->size.height : 0;
    const auto u16 = [](unsigned value) { return static_cast<std::uint16_t>(value); };
    return {u16(rect.x + thickness), u16(rect.y + thickness), u16(rect.width - 2 * thickness),
            u16(rect.height - 2 * thickness)};
}

std::vector<std::string> fit_to(ProgramDescription& program, const Screen& screen) {
    if (program.border) require_room(*program.border, screen.size.width, screen.size.height);
    const Rect room = inside(whole(screen.size), program.border);
    for (AreaDescription& area : program.areas) {
        fit_area(area, room, screen.size);
        require_palette(area, screen);
    }
    std::vector<std::string> notes;
    if (screen.generation == 6) return notes;
    leave_out(program.background, "background", notes);
    for (AreaDescription& area : program.areas) {
        leave_out(area.speech, area.where + ".sound", notes);
        leave_out(area.battle, area.where + ".battle", notes);
        leave_out(area.flags.background_flag, area.where + ".background_flag", notes);
        leave_out(area.flags.transparency, area.where + ".transparency", notes);
        leave_out(area.flags.equal, area.where + ".equal", notes);
    }
    return notes;
}

} // namespace qm::sign
