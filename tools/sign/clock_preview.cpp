#include "clock_preview.h"

#include "clock/hands.h"
#include "panel_picture.h"

namespace qm::sign {
namespace {

constexpr int kHour = 10, kMinute = 8, kSecond = 35;

// A palette index has a bit a channel.
void set_color(cairo_t* context, std::uint32_t color) {
    const auto channel = [color](unsigned bit, unsigned shift) {
        return color < 8 ? (color >> bit & 1U) : (color >> shift & 0xFFU) / 255.0;
    };
    cairo_set_source_rgb(context, channel(0, 16), channel(1, 8), channel(2, 0));
}

} // namespace

std::string with_hands(const std::string& dial, const AnalogClock& clock, const Rect& area) {
    const Surface picture = opaque(picture_of(dial));
    const Context context(cairo_create(picture.get()));
    const HVAnalogClockHeader_G56 hands = hands_record(clock, area);
    const auto draw = [&](int width, int length, std::uint32_t color, double turn) {
        set_color(context.get(), color);
        qm::clock::draw_hand(width, length, turn, [&](int dx, int dy) {
            cairo_rectangle(context.get(), hands.OrignPointX + dx, hands.OrignPointY + dy, 1, 1);
        });
        cairo_fill(context.get());
    };
    const auto turns = qm::clock::turns_at(kHour, kMinute, kSecond);
    draw(hands.HourHandWidth, hands.HourHandLen, hands.HourHandColor, turns.hour);
    draw(hands.MinHandWidth, hands.MinHandLen, hands.MinHandColor, turns.minute);
    draw(hands.SecHandWidth, hands.SecHandLen, hands.SecHandColor, turns.second);
    return png_of(picture.get());
}

} // namespace qm::sign
