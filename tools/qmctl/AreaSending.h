// Puts dynamic areas on a controller of either generation.
#pragma once

#include "AreaOptions.h"
#include "ProgramDescription.h"

#include <span>

namespace qm::ctl {

struct AreaContent {
    Ouint8 id = 0;
    Rect rect;
    HVpageHeader_G6 page{};
    std::string font, text;      // of a text
    std::string picture;         // path of a picture; empty: a text
    std::optional<Sound> speech; // generation 6
};

// Numbers of the programs that areas are shown with, or every program.
using WithPrograms = std::optional<std::vector<Ouint16>>;

// Generation 6 takes neighbours of one kind in one command, which it carries out as a whole. Throws
// UsageError, before the first one is sent, for what the generation does not have, and Failure.
void send_areas(const Controller& to, const Screen& screen, const std::vector<AreaContent>& areas,
                const WithPrograms& programs);

} // namespace qm::ctl
