// What a text takes when it is laid out.
#pragma once

#include "qm_sdk_dual.h"

namespace qm {

[[nodiscard]] qm_text_extent measure_text(const char* text, const qm_text_style& style, int width,
                                          int height);

} // namespace qm
