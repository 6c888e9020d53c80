// Puts areas on controllers of either generation.
#pragma once

#include "records.hpp"
#include "result.hpp"

namespace qm {

// Numbers of the programs that areas are shown with, 0 to 9999; none means all of them.
using ProgramNumbers = std::vector<std::uint16_t>;

namespace detail {

class AreaSender {
  public:
    AreaSender(const char* ip, std::uint16_t port, const Screen& screen,
               const std::optional<ProgramNumbers>& programs)
        : m_ip(ip), m_port(port), m_screen(screen), m_programs(programs) {}

    // Generation 6 takes neighbours of one kind in one command, which it carries out as a whole.
    Result<> send(const std::vector<Area>& areas) {
        if (m_programs && m_programs->size() > 0xFFFF)
            return Error{QM_FAILED, "There are more than 65535 programs."};
        if (std::max(m_screen.size.width, m_screen.size.height) > 0xFFFF)
            return Error{QM_FAILED, "A screen has at most 65535 x 65535 pixels."};
        const KnownType known(m_screen);
        for (const Area* area = areas.data(); area != areas.data() + areas.size();) {
            const std::size_t count = together(area, areas.data() + areas.size());
            if (auto sent = send_first(area, count); !sent) return sent;
            area += count;
        }
        return {};
    }

  private:
    // What the controller has told of itself holds for the calls of this thread.
    struct KnownType {
        explicit KnownType(const Screen& screen)
            : before(qm_assume_controller_type(screen.told ? screen.type : Ouint16{0})) {}
        ~KnownType() { qm_assume_controller_type(before); }
        KnownType(const KnownType&) = delete;
        KnownType& operator=(const KnownType&) = delete;
        Ouint16 before;
    };

    static bool is_picture(const Area& area) { return !area.picture.empty(); }
    [[nodiscard]] bool alone(const Area& area) const {
        return m_screen.generation == 5 || (m_programs && area.speech);
    }

    [[nodiscard]] std::size_t together(const Area* first, const Area* end) const {
        constexpr std::size_t kMost = 255;
        std::size_t count = 1;
        while (!alone(*first) && count < kMost && first + count != end && !alone(first[count]) &&
               is_picture(first[count]) == is_picture(*first))
            ++count;
        return count;
    }

    Result<> send_first(const Area* areas, std::size_t count) {
        if (m_screen.generation == 5) return Result<>::of(send_5(*areas));
        if (!alone(*areas)) return Result<>::of(send_together(areas, count));
        if (is_picture(*areas))
            return Error{QM_FAILED, "A picture with speech cannot be related to programs."};
        return Result<>::of(send_spoken(*areas));
    }

    [[nodiscard]] Rect rect_of(const Area& area) const {
        return area.rect.value_or(Rect{0, 0, u16(m_screen.size.width), u16(m_screen.size.height)});
    }

    [[nodiscard]] HVareaHeader_G6 header_of(const Area& area) const {
        const Rect rect = rect_of(area);
        HVareaHeader_G6 header{};
        header.AreaX = rect.x;
        header.AreaY = rect.y;
        header.AreaWidth = rect.width;
        header.AreaHeight = rect.height;
        if (area.speech) header.stSoundData = sound_of(*area.speech);
        return header;
    }

    [[nodiscard]] HVpageHeader_G6 page_header(const Area& area) const {
        if (!is_picture(area))
            return page_of<HVpageHeader_G6>(area.effect, area.style, area.text, rect_of(area));
        auto page = page_of<HVpageHeader_G6>(area.effect);
        page.ValidLen = rect_of(area).width;
        return page;
    }

    int send_together(const Area* areas, std::size_t count) {
        std::vector<DynamicAreaParams> params;
        for (const Area* area = areas; area != areas + count; ++area)
            params.push_back({area->id, header_of(*area), page_header(*area), bytes_of(area->style.font),
                              bytes_of(is_picture(*area) ? area->picture : area->text)});
        if (!m_programs) {
            const auto call = is_picture(*areas) ? dynamicAreaS_AddAreaPic_6G : dynamicAreaS_AddTxtDetails_6G;
            return call(m_ip, m_port, m_screen.color, u8(static_cast<unsigned>(count)), params.data());
        }
        const auto call = is_picture(*areas) ? dynamicAreaS_AddAreaPic_WithProgram_6G
                                             : dynamicAreaS_AddTxtDetails_WithProgram_6G;
        return call(m_ip, m_port, m_screen.color, u8(static_cast<unsigned>(count)), params.data(),
                    program_count(), m_programs->data());
    }

    // The only way for an area with both programs and speech.
    int send_spoken(const Area& area) {
        HVareaHeader_G6 header = header_of(area);
        HVpageHeader_G6 page = page_header(area);
        return dynamicArea_AddAreaTxtDetails_WithProgram_6G(m_ip, m_port, m_screen.color, area.id, &header,
                                                            &page, area.style.font.c_str(), area.text.c_str(),
                                                            program_count(), m_programs->data());
    }

    int send_5(const Area& area) {
        constexpr Ouint8 kForever = 0;
        constexpr Ouint16 kTimeout = 5;
        const Ouint8 all = program_count() == 0, at_once = !m_programs;
        Ouint16* numbers = m_programs ? m_programs->data() : nullptr;
        const HVpageHeader_G6 page = page_header(area);
        const Rect rect = rect_of(area);
        if (is_picture(area))
            return dynamicArea_AddAreaWithPic_5G(
                m_ip, m_port, m_screen.color, area.id, kForever, kTimeout, all, program_count(), numbers,
                at_once, rect.x, rect.y, rect.width, rect.height, {}, page.DisplayMode, page.ClearMode,
                page.Speed, page.StayTime, page.RepeatTime, area.picture.c_str());
        const HVfontData font{page.arrMode,    page.fontSize, page.color,  page.fontBold, page.fontItalic,
                              page.tdirection, page.txtSpace, page.Halign, page.Valign};
        return dynamicArea_AddAreaWithTxt_5G(
            m_ip, m_port, m_screen.color, area.id, kForever, kTimeout, all, program_count(), numbers, at_once,
            rect.x, rect.y, rect.width, rect.height, {}, page.DisplayMode, page.ClearMode, page.Speed,
            page.StayTime, page.RepeatTime, font, area.style.font.c_str(), area.text.c_str());
    }

    [[nodiscard]] Ouint16 program_count() const {
        return m_programs ? u16(static_cast<unsigned>(m_programs->size())) : Ouint16{0};
    }

    const char* m_ip;
    std::uint16_t m_port;
    Screen m_screen;
    std::optional<ProgramNumbers> m_programs;
};

} // namespace detail
} // namespace qm
