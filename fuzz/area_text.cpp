// The same of dynamic areas, up to the payload that is sent, which the simulator takes.
#include "DynamicArea/DynamicArea_5G.h"
#include "DynamicArea/DynamicArea_6G.h"
#include "WantedText.h"
#include "program/pixels/ScreenSettings.h"
#include "qm_sdk_dual/exports.h"
#include "require.h"
#include "simulator/playback/ReceivedArea.h"

namespace qm::fuzz {
namespace {

using Header = HVpageHeader_G6;

std::vector<Page> pages_of(PicturesArea& content, const WantedText& wanted, const Header& page) {
    const Rect& rect = wanted.rect;
    screen_settings().set(wanted.screen.color, wanted.screen.type, DOUBLE_COLOR_PIXTYPE_1);
    content.setGeometry({0x10, rect.x, rect.y, rect.width, rect.height});
    content.AreaAddTxt(wanted.text.c_str(), wanted.style.font.c_str(), font_data_of(page),
                       page_header_of(page));
    require(content.PreparePageData());
    return std::move(content.pages);
}

ByteBuffer payload5(const WantedText& wanted, const Header& page) {
    const Rect& rect = wanted.rect;
    const PageOrder order = wanted.effect.mode == 38 ? PageOrder::reading : PageOrder::playing;
    PicturesArea content(order);
    const ST_PageDataA_ValieLen pages{pages_of(content, wanted, page),
                                      static_cast<Ouint16>(content.end_page_len())};
    return CBuild_DynamicArea_5H::BuildDynamicAreaData(
               {1, 0, 0, 1, 0, nullptr, 1, rect.x, rect.y, rect.width, rect.height}, {&pages, 1}, order)
        .m_pData;
}

ByteBuffer payload6(const WantedText& wanted, const Header& page) {
    PicturesArea_g6 content(PageOrder::playing);
    CDynamicArea_ALL_6G all;
    require(all.AddArea({1,
                         {0x10, wanted.rect.x, wanted.rect.y, wanted.rect.width, wanted.rect.height},
                         {},
                         {},
                         "",
                         ""}) == QM_OK);
    require(all.AddPages(1, pages_of(content, wanted, page)) == QM_OK);
    return all.GetDynamicAreaData().m_pData;
}

// Empty when it cannot be made.
ByteBuffer payload(const WantedText& wanted) {
    const bool five = wanted.screen.generation == 5;
    const auto page = detail::page_of<Header>(wanted.effect, wanted.style, wanted.text, wanted.rect);
    ByteBuffer made;
    const int status = guarded([&] {
        const auto lock = lock_renderer();
        made = five ? payload5(wanted, page) : payload6(wanted, page);
        return !made.empty();
    });
    require((status == QM_OK) == (*reason() == 0) &&
            (status == QM_OK || (status == QM_FAILED && made.empty())));
    if (made.empty()) return made;
    const Bytes content = Bytes(made).subspan(CVemarProtocol_DynamicAreaCmdHeader::GetSize());
    const auto taken = five ? sim::parse_dynamic_area_5(content) : sim::parse_dynamic_areas(content);
    require(std::holds_alternative<std::vector<sim::ReceivedArea>>(taken));
    return made;
}

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const qm::fuzz::WantedText wanted(qm::ByteReader({data, size}));
    qm::fuzz::require(qm::fuzz::payload(wanted) == qm::fuzz::payload(wanted));
    return 0;
}
