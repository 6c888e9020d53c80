#include "AreaSending.h"

#include "Speech.h"

namespace qm::ctl {
namespace {

using Contents = std::span<const AreaContent>;

constexpr std::size_t kMostTogether = 255;

const Ouint8* bytes_of(const std::string& text) { return reinterpret_cast<const Ouint8*>(text.c_str()); }

HVareaHeader_G6 header_of(const AreaContent& area) {
    HVareaHeader_G6 header{};
    header.AreaX = area.rect.x;
    header.AreaY = area.rect.y;
    header.AreaWidth = area.rect.width;
    header.AreaHeight = area.rect.height;
    if (area.speech) header.stSoundData = record_of(*area.speech);
    return header;
}

bool is_picture(const AreaContent& area) { return !area.picture.empty(); }

void send_together(const Controller& to, const Screen& screen, Contents areas, const WithPrograms& programs) {
    std::vector<DynamicAreaParams> params;
    for (const AreaContent& area : areas)
        params.push_back({area.id, header_of(area), area.page, bytes_of(area.font),
                          bytes_of(is_picture(area) ? area.picture : area.text)});
    const auto count = static_cast<Ouint8>(params.size());
    const char* ip = to.ip.c_str();
    if (!programs) {
        const auto call =
            is_picture(areas.front()) ? dynamicAreaS_AddAreaPic_6G : dynamicAreaS_AddTxtDetails_6G;
        return Session::require(call(ip, to.port, screen.color, count, params.data()));
    }
    const auto call = is_picture(areas.front()) ? dynamicAreaS_AddAreaPic_WithProgram_6G
                                                : dynamicAreaS_AddTxtDetails_WithProgram_6G;
    std::vector<Ouint16> numbers = *programs;
    Session::require(call(ip, to.port, screen.color, count, params.data(),
                          static_cast<Ouint16>(numbers.size()), numbers.data()));
}

// The only way for an area with both programs and speech.
void send_spoken(const Controller& to, const Screen& screen, const AreaContent& area,
                 std::vector<Ouint16> programs) {
    HVareaHeader_G6 header = header_of(area);
    HVpageHeader_G6 page = area.page;
    Session::require(dynamicArea_AddAreaTxtDetails_WithProgram_6G(
        to.ip.c_str(), to.port, screen.color, area.id, &header, &page, area.font.c_str(), area.text.c_str(),
        static_cast<Ouint16>(programs.size()), programs.data()));
}

void send_6(const Controller& to, const Screen& screen, Contents areas, const WithPrograms& programs) {
    while (!areas.empty()) {
        std::size_t count = 1;
        if (programs && areas.front().speech) {
            send_spoken(to, screen, areas.front(), *programs);
        } else {
            const auto follows = [&](const AreaContent& area) {
                return is_picture(area) == is_picture(areas.front()) && !(programs && area.speech);
            };
            while (count < areas.size() && count < kMostTogether && follows(areas[count])) ++count;
            send_together(to, screen, areas.first(count), programs);
        }
        areas = areas.subspan(count);
    }
}

HVfontData font_of(const HVpageHeader_G6& page) {
    return {page.arrMode,    page.fontSize, page.color,  page.fontBold, page.fontItalic,
            page.tdirection, page.txtSpace, page.Halign, page.Valign};
}

void send_5(const Controller& to, const Screen& screen, const AreaContent& area,
            const WithPrograms& programs) {
    constexpr Ouint8 kForever = 0;
    constexpr Ouint16 kTimeout = 5;
    std::vector<Ouint16> numbers = programs.value_or(std::vector<Ouint16>());
    const auto count = static_cast<Ouint16>(numbers.size());
    const Ouint8 all = numbers.empty(), at_once = !programs;
    const HVpageHeader_G6& page = area.page;
    const Rect& rect = area.rect;
    if (is_picture(area))
        Session::require(dynamicArea_AddAreaWithPic_5G(
            to.ip.c_str(), to.port, screen.color, area.id, kForever, kTimeout, all, count, numbers.data(),
            at_once, rect.x, rect.y, rect.width, rect.height, {}, page.DisplayMode, page.ClearMode,
            page.Speed, page.StayTime, page.RepeatTime, area.picture.c_str()));
    else
        Session::require(dynamicArea_AddAreaWithTxt_5G(
            to.ip.c_str(), to.port, screen.color, area.id, kForever, kTimeout, all, count, numbers.data(),
            at_once, rect.x, rect.y, rect.width, rect.height, {}, page.DisplayMode, page.ClearMode,
            page.Speed, page.StayTime, page.RepeatTime, font_of(page), area.font.c_str(), area.text.c_str()));
}

} // namespace

void send_areas(const Controller& to, const Screen& screen, const std::vector<AreaContent>& areas,
                const WithPrograms& programs) {
    for (const AreaContent& area : areas)
        if (area.speech && screen.generation == 5)
            throw UsageError("speech needs a controller of generation 6");
    if (screen.generation != 5) return send_6(to, screen, areas, programs);
    for (const AreaContent& area : areas) send_5(to, screen, area, programs);
}

} // namespace qm::ctl
