// The face of an analog clock, without its hands.
#pragma once

#include "program/pixels/Surface.h"
#include "qm_sdk_dual.h"

namespace qm {

struct ClockDial {
    Ouint32 style = eLINE;
    ClockColor_G56 colors{};
    int pivotX = 0, pivotY = 0; // of the hands
};

// Fills the canvas with the background and draws the hour marks, on the largest circle around the pivot that
// the canvas holds whole. They are as symmetric as the pivot's place lets them be.
void draw_dial(Canvas32& canvas, const ClockDial& dial);

// Draws a picture over the whole canvas, scaled to it.
void draw_scaled(Canvas32& canvas, cairo_surface_t* picture);

} // namespace qm
