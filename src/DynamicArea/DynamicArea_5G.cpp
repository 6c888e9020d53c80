#include "DynamicArea/DynamicArea_5G.h"

#include "support/reason.h"

#include <optional>

namespace qm {
namespace {

constexpr std::size_t kLongest = 0xFFFF; // a position in the payload is a 16-bit quantity
constexpr Ouint8 kDynamicAreaType = 0x10;
constexpr std::size_t kAreaRecord = 24, kPageHeader = 13;

// The pages of a single content item are written last page first in mode 38, and else as they are listed.
PageOrder order_of(const ContentItem_5G& item) {
    return item.page.DisplayMode == 38 ? PageOrder::reading : PageOrder::playing;
}

// Draws and converts a content item; nothing when its picture cannot be read. A picture is valid in the
// area's whole width.
std::optional<ST_PageDataA_ValieLen> render(const AreaRequest_5G& area, const ContentItem_5G& item,
                                            PageOrder order) {
    PicturesArea content(order);
    content.setGeometry({kDynamicAreaType, area.uAreaX, area.uAreaY, area.uWidth, area.uHeight});
    const auto* text = std::get_if<TextContent_5G>(&item.content);
    if (text)
        content.AreaAddTxt(text->text, text->fontName, text->font, item.page);
    else if (const auto* path = std::get_if<const char*>(&item.content))
        content.AreaAddPic(0, *path, item.page);
    if (!content.PreparePageData()) return std::nullopt;
    return ST_PageDataA_ValieLen{std::move(content.pages),
                                 text ? static_cast<Ouint16>(content.end_page_len()) : area.uWidth};
}

int update(const ControllerAddress& to, const AreaRequest_5G& area, std::span<const ContentItem_5G> items,
           PageOrder order) {
    return send_built(to, [&] {
        std::vector<ST_PageDataA_ValieLen> rendered;
        for (const ContentItem_5G& item : items) {
            auto pages = render(area, item, order);
            if (!pages) return CData();
            rendered.push_back(std::move(*pages));
        }
        return CBuild_DynamicArea_5H::BuildDynamicAreaData(area, rendered, order);
    });
}

// For each page: length u32 of what follows, page header 13, pixels.
void append_pages(ByteWriter& out, const ST_PageDataA_ValieLen& item, PageOrder order, Ouint16 areaWidth) {
    const std::size_t count = item.vctPicData.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Page& page = item.vctPicData[order == PageOrder::reading ? count - 1 - i : i];
        qm_G6_page_header header = page.header;
        header.ValidLen = i + 1 == count ? std::min(item.nValidLen, areaWidth) : areaWidth;
        out.u32(page.pixels.m_nDataLen + kPageHeader);
        header.append_g5(out);
        out.bytes(page.pixels.bytes());
    }
}

} // namespace

// Command header 5; AreaDataLen u32, of what follows; id, RunMode; Timeout u16; RelateAllPro; RelateProNum
// u16, and the numbers, u16 each; ImmePlay; reserved u32; type; rectangle; no border; page count u16; the
// pages.
CData CBuild_DynamicArea_5H::BuildDynamicAreaData(const AreaRequest_5G& area,
                                                  std::span<const ST_PageDataA_ValieLen> items,
                                                  PageOrder order) {
    if (!given({{"RelateProSerial", area.RelateProSerial, area.RelateProNum != 0}})) return {};
    const std::span programs(area.RelateProSerial, area.RelateAllPro == 0 ? area.RelateProNum : 0);
    std::size_t length = kAreaRecord + programs.size_bytes(), count = 0;
    for (const ST_PageDataA_ValieLen& item : items) {
        count += item.vctPicData.size();
        for (const Page& page : item.vctPicData) length += 4 + kPageHeader + page.pixels.m_nDataLen;
    }
    const CVemarProtocol_DynamicAreaCmdHeader command;
    if (command.GetSize() + 4 + length > kLongest) {
        (void)fail(QM_FAILED, "The area takes more than the %zu bytes that generation 5 has room for.",
                   kLongest);
        return {};
    }
    const auto append = [&](ByteWriter& out) {
        command.append(out);
        out.u32(static_cast<Ouint32>(length)).u8(area.uAreaId).u8(area.RunMode).u16(area.Timeout);
        out.u8(area.RelateAllPro).u16(area.RelateProNum);
        for (const Ouint16 program : programs) out.u16(program);
        out.u8(area.ImmePlay).u32(0).u8(kDynamicAreaType).u16(area.uAreaX).u16(area.uAreaY);
        out.u16(area.uWidth).u16(area.uHeight).u8(0).u16(static_cast<Ouint16>(count));
        for (const ST_PageDataA_ValieLen& item : items) append_pages(out, item, order, area.uWidth);
    };
    return serialised(append, command.GetSize() + 4 + length);
}

int CBuild_DynamicArea_5H::UpdateOrAdd(const ControllerAddress& to, const AreaRequest_5G& area,
                                       const ContentItem_5G& item) {
    return update(to, area, {&item, 1}, order_of(item));
}

int CBuild_DynamicArea_5H::dynamicArea_AddAreaInfos_5G(const ControllerAddress& to,
                                                       const AreaRequest_5G& area,
                                                       std::span<const ContentItem_5G> items) {
    return update(to, area, items, PageOrder::playing);
}

} // namespace qm
