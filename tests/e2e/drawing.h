// What the end-to-end tests expect on the screen, drawn with cairo alone and turned into LED colours here.
#pragma once

#include "qm_sdk_dual.h"
#include "simulator/Simulator.h"
#include "simulator/playback/PixelReader.h"
#include "simulator/show/picture.h"

#include <string>

namespace qm::test {

// What the LEDs of a screen show of a pixel: 565 stands for full colour of 16 bits, 888 for 24 bits.
enum class Leds { single, dual, three, full565, full888 };
sim::Rgb shown_by(Leds leds, sim::Rgb pixel);
Leds leds_of(sim::PixelFormat format);

// A text in one line, drawn by cairo: unless said otherwise at the left edge, with its baseline where the
// font's ascent puts it.
struct TextPlace {
    int x = 0, baseline = -1;
    bool bold = false;
    bool slanted = false; // as an italic text of a family that has none
};
sim::Image text_image(const std::string& family, double size, const std::string& text, sim::Rgb color,
                      int width, int height, TextPlace place = {});

// The part of a screen that a picture covers from (x, y) on, as those LEDs show it; the rest is black.
sim::Image on_screen(const sim::Image& picture, Leds leds, int x, int y, int width, int height);

// Pixels on which two images differ, for a readable failure; -1 for different sizes.
int differing_pixels(const sim::Image& a, const sim::Image& b);
int lit_pixels(const sim::Image& image);

// Settings of a page whose text stands still at the top left.
HVpageHeader_G6 still_text(Ouint16 points, Ouint32 color);
HVareaHeader_G6 rectangle(Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height);

// One area with a text or a picture, sent in the form of the controller's generation; the status.
int show_text(const sim::Simulator& sim, Ouint16 type, Ouint32 color, HVareaHeader_G6 area,
              HVpageHeader_G6 page, const char* text);
int show_picture(const sim::Simulator& sim, Ouint16 type, Ouint32 color, HVareaHeader_G6 area,
                 HVpageHeader_G6 page, const char* path);

} // namespace qm::test
