#include "names.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace qm::ctl {
namespace {

constexpr Name kModels[] = {
    {"G5-T0", QM_G5_T0}, {"G5-T1", QM_G5_T1}, {"G5-T2", QM_G5_T2}, {"G5-T3", QM_G5_T3}, {"5H", QM_5H},
    {"G5-T5", QM_G5_T5}, {"WV", QM_WV},       {"X2", QM_X2},       {"X1", QM_X1},       {"G6-T0", QM_G6_T0},
    {"G6-T1", QM_G6_T1}, {"G6-T2", QM_G6_T2}, {"G6-T3", QM_G6_T3}, {"6H", QM_6H},       {"none", QM_NO}};

const char* find_word(Names names, unsigned code) {
    const auto found = std::ranges::find(names, code, &Name::code);
    return found == names.end() ? nullptr : found->word;
}

} // namespace

std::string word_for(Names names, unsigned code) {
    const char* word = find_word(names, code);
    return word ? word : "unknown (" + std::to_string(code) + ")";
}

std::string model_name(Ouint16 controllerType) {
    const unsigned series = controllerType & 0xFFU;
    const char* word = find_word(kModels, series);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%s (0x%02X)", word ? word : "unknown", series);
    return text.data();
}

unsigned generation_of(Ouint16 controllerType) {
    switch (controllerType & 0xFFU) {
    case QM_G5_T0:
    case QM_G5_T1:
    case QM_G5_T2:
    case QM_G5_T3:
    case QM_5H:
    case QM_G5_T5:
    case QM_X2:
        return 5;
    case QM_WV:
    case QM_G6_T0:
    case QM_G6_T1:
    case QM_G6_T2:
    case QM_G6_T3:
    case QM_6H:
        return 6;
    default:
        return 0;
    }
}

std::string status_meaning(int status) {
    switch (status) {
#define QM_STATUS_CASE(name, value, meaning)                                                                 \
    case value:                                                                                              \
        return meaning;
        QM_STATUS_MAP(QM_STATUS_CASE)
#undef QM_STATUS_CASE
    default:
        break;
    }
    if (status > 0) return "the controller refused: error " + std::to_string(status);
    return "unknown status";
}

} // namespace qm::ctl
