// Clocks in a program's description.
#pragma once

#include "JsonReader.h"
#include "ProgramDescription.h"

namespace qm::sign {

[[nodiscard]] DigitalClock read_digital(const Field& field);
// The dial picture is read by the caller's reader.
[[nodiscard]] ClockFace read_analog(const Field& field,
                                    const std::function<PictureFile(const Field&)>& read_picture);

// Refuses the area's fields that mean nothing for a clock.
void refuse_beside_clock(Object& area, bool digital);

} // namespace qm::sign
