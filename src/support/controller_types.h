// What a controller type says: its low byte is the series, its high byte the variant.
#pragma once

#include "qm_sdk_dual.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace qm {

// Of frames, programs and areas. Controllers of none take the handshake and envelopes only.
enum class Generation : Ouint8 { none = 0, five = 5, six = 6 };

struct ControllerSeries {
    Ouint8 code;
    const char* model;
    Generation generation;
};

inline constexpr ControllerSeries kControllerSeries[] = {
    {QM_G5_T0, "G5-T0", Generation::five}, {QM_G5_T1, "G5-T1", Generation::five},
    {QM_G5_T2, "G5-T2", Generation::five}, {QM_G5_T3, "G5-T3", Generation::five},
    {QM_5H, "5H", Generation::five},       {QM_G5_T5, "G5-T5", Generation::five},
    {QM_WV, "WV", Generation::six},        {QM_X2, "X2", Generation::five},
    {QM_X1, "X1", Generation::none},       {QM_G6_T0, "G6-T0", Generation::six},
    {QM_G6_T1, "G6-T1", Generation::six},  {QM_G6_T2, "G6-T2", Generation::six},
    {QM_G6_T3, "G6-T3", Generation::six},  {QM_6H, "6H", Generation::six},
    {QM_NO, "none", Generation::none}};

// Variants of a series whose pixels are packed in one transfer mode, a TranPixelMode.
struct ControllerVariants {
    Ouint8 series, first, last, transferMode;
};

inline constexpr ControllerVariants kControllerVariants[] = {
    {0x51, 0x00, 0x09, 0}, {0x51, 0x13, 0x13, 0}, {0x51, 0x15, 0x16, 0}, {0x51, 0x18, 0x18, 0},
    {0x51, 0x22, 0x22, 0}, {0x52, 0x00, 0x00, 0}, {0x52, 0x02, 0x05, 0}, {0x54, 0x01, 0x03, 0},
    {0x55, 0x00, 0x05, 0}, {0x55, 0x07, 0x08, 0}, {0x5E, 0x01, 0x06, 0}, {0x5F, 0x01, 0x06, 0},
    {0x62, 0x00, 0x05, 4}, {0x62, 0x10, 0x14, 4}, {0x63, 0x00, 0x04, 4}, {0x63, 0x20, 0x24, 4},
    {0x63, 0x30, 0x34, 4}, {0x63, 0x40, 0x44, 4}, {0x63, 0x50, 0x53, 4}, {0x64, 0x00, 0x05, 4},
    {0x66, 0x01, 0x06, 5}, {0x66, 0x81, 0x81, 5}, {0x66, 0x00, 0x00, 3}, {0x66, 0x07, 0x07, 3},
    {0x74, 0x01, 0x05, 4}, {0x74, 0x83, 0x83, 4},
};

// Null for a series that is not known.
[[nodiscard]] constexpr const ControllerSeries* series_of(Ouint16 controllerType) {
    const auto known =
        std::find_if(std::begin(kControllerSeries), std::end(kControllerSeries),
                     [&](const ControllerSeries& s) { return s.code == (controllerType & 0xFF); });
    return known == std::end(kControllerSeries) ? nullptr : known;
}

[[nodiscard]] constexpr Generation generation_of(Ouint16 controllerType) {
    const ControllerSeries* series = series_of(controllerType);
    return series ? series->generation : Generation::none;
}

// How the type packs pixels; nothing for a type that is not known.
[[nodiscard]] constexpr std::optional<Ouint8> transfer_mode_of(Ouint16 controllerType) {
    const unsigned series = controllerType & 0xFFU, variant = controllerType >> 8U;
    for (const ControllerVariants& row : kControllerVariants)
        if (row.series == series && row.first <= variant && variant <= row.last) return row.transferMode;
    return std::nullopt;
}

} // namespace qm
