#include "DynamicArea/DynamicArea_5G.h"

#include "support/reason.h"

#include <numeric>
#include <optional>

namespace qm {
namespace {

// The pages of a single content item are written last page first in mode 38, and else as they are listed.
PageOrder order_of(const PageEffect_5G& effect) {
    return effect.DisplayMode == 38 ? PageOrder::reading : PageOrder::playing;
}

qm_G5_area_header area_header(const AreaRequest_5G& area) {
    return {0x10, area.uAreaX, area.uAreaY, area.uWidth, area.uHeight};
}

// The area without pages; nothing when numbers of programs are promised that are not there.
std::optional<CVemarProtocol_DynamicArea_5G> area_record(const AreaRequest_5G& area) {
    if (!given({{"RelateProSerial", area.RelateProSerial, area.RelateProNum != 0}})) return std::nullopt;
    CVemarProtocol_DynamicArea_5G record;
    record.AreaId = area.uAreaId;
    record.RunMode = area.RunMode;
    record.Timeout = area.Timeout;
    record.RelateAllPro = area.RelateAllPro;
    record.RelateProNum = area.RelateProNum;
    record.vctRelateProSerial.assign(area.RelateProSerial, area.RelateProSerial + area.RelateProNum);
    record.ImmePlay = area.ImmePlay;
    record.AreaX = area.uAreaX;
    record.AreaY = area.uAreaY;
    record.AreaWidth = area.uWidth;
    record.AreaHeight = area.uHeight;
    record.AreaFFlag = area.AreaFFlag;
    return record;
}

void add_page(CVemarProtocol_DynamicArea_5G& area, const PageEffect_5G& effect, const CData& pixels,
              Ouint16 validLen) {
    CVemarProtocl_PageDataFormat page;
    page.PageDataLen = pixels.m_nDataLen + CVemarProtocl_PageDataFormat::GetSize_PagePropertySize();
    page.DisplayMode = effect.DisplayMode;
    page.ClearMode = effect.ClearMode;
    page.Speed = effect.Speed;
    page.StayTime = effect.StayTime;
    page.RepeatTime = effect.RepeatTime;
    page.ValidLen = validLen;
    area.vctPageStyle.push_back(page);
    area.vctPicPageData.push_back(pixels);
}

// Adds pages as they are listed, or the other way round when that is the order of reading; the last one added
// has a valid length of its own.
void add_pages(CVemarProtocol_DynamicArea_5G& area, const PageEffect_5G& effect,
               const ST_PageDataA_ValieLen& pages, PageOrder order) {
    const std::size_t count = pages.vctPicData.size();
    const Ouint16 end = std::min(pages.nValidLen, area.AreaWidth);
    for (std::size_t i = 0; i < count; ++i)
        add_page(area, effect, pages.vctPicData[order == PageOrder::reading ? count - 1 - i : i],
                 i + 1 == count ? end : area.AreaWidth);
}

// Draws and converts a content item, under the renderer's lock; nothing when its picture cannot be read. A
// picture is valid in the area's whole width.
std::optional<ST_PageDataA_ValieLen> render(const AreaRequest_5G& area, const ContentItem_5G& item,
                                            PageOrder order) {
    const PageEffect_5G& effect = item.effect;
    const qm_G5_page_header page{
        0,          effect.DisplayMode, effect.ClearMode, effect.Speed, effect.StayTime, effect.RepeatTime,
        area.uWidth};
    PicturesArea content(order);
    content.setGeometry(area_header(area));
    if (const auto* text = std::get_if<TextContent_5G>(&item.content))
        content.AreaAddTxt(text->text, text->fontName, text->font, page);
    else if (const auto* path = std::get_if<const char*>(&item.content))
        content.AreaAddPic(0, *path, page);
    if (!content.PreparePageData()) return std::nullopt;
    const bool isText = std::holds_alternative<TextContent_5G>(item.content);
    return ST_PageDataA_ValieLen{std::move(content.pixelDataList),
                                 isText ? static_cast<Ouint16>(content.endPageLen) : area.uWidth};
}

// Pings, renders under the renderer's lock with what build does, and sends outside it.
template <class Build> int update(const ControllerAddress& to, Build&& build) {
    Ouint16 controllerType = 0;
    if (const int code = ping_for_type(to.ip, to.port, controllerType); code != QM_OK) return code;
    CData payload;
    {
        const auto lock = lock_renderer();
        screen_settings().set(to.color, controllerType, DOUBLE_COLOR_PIXTYPE_1);
        payload = build();
    }
    if (payload.m_nDataLen == 0) return QM_FAILED;
    return send_dynamic_payload(to.ip, to.port, controllerType, payload.bytes());
}

} // namespace

void CVemarProtocl_PageDataFormat::append(ByteWriter& out) const {
    out.u32(PageDataLen).u8(PageStyle).u8(DisplayMode).u8(ClearMode).u8(Speed).u16(StayTime).u8(RepeatTime);
    out.u16(ValidLen).zeros(4);
}

void CVemarProtocol_DynamicArea_5G::CalculateAreaDataLen() {
    AreaFFlag = 0;
    AreaDataLen = 24;
    if (names_programs()) AreaDataLen += 2U * RelateProNum;
    for (const CData& page : vctPicPageData)
        AreaDataLen += CVemarProtocl_PageDataFormat::GetSize() + page.m_nDataLen;
}

Ouint32 CVemarProtocol_DynamicArea_5G::GetSize() {
    CalculateAreaDataLen();
    return AreaDataLen + CVemarProtocol_DynamicAreaCmdHeader::GetSize() + 4;
}

CData CVemarProtocol_DynamicArea_5G::GetData() {
    const auto longer = [](std::size_t sum, const CData& page) { return sum + page.m_nDataLen; };
    if (std::accumulate(vctPicPageData.begin(), vctPicPageData.end(), std::size_t{0}, longer) > kLongest ||
        GetSize() > kLongest) {
        (void)fail(QM_FAILED, "The area takes more than the %u bytes that generation 5 has room for.",
                   kLongest);
        return {};
    }
    ByteBuffer payload;
    ByteWriter out(payload);
    m_oCmdHeader.append(out);
    out.u32(AreaDataLen).u8(AreaId).u8(RunMode).u16(Timeout).u8(RelateAllPro).u16(RelateProNum);
    if (names_programs())
        for (const Ouint16 serial : vctRelateProSerial) out.u16(serial);
    out.u8(ImmePlay).u32(0).u8(AreaType).u16(AreaX).u16(AreaY).u16(AreaWidth).u16(AreaHeight).u8(AreaFFlag);
    out.u16(static_cast<Ouint16>(vctPageStyle.size()));
    for (std::size_t i = 0; i < vctPageStyle.size(); ++i) {
        vctPageStyle[i].append(out);
        out.bytes(vctPicPageData[i].bytes());
    }
    return CData(Bytes(payload));
}

CData CBuild_DynamicArea_5H::BuildDynamicAreaData(const AreaRequest_5G& area, const PageEffect_5G& effect,
                                                  const ST_PageDataA_ValieLen& pages) {
    auto record = area_record(area);
    if (!record) return {};
    add_pages(*record, effect, pages, order_of(effect));
    return record->GetData();
}

CData CBuild_DynamicArea_5H::BuildDynamicAreaData(const AreaRequest_5G& area,
                                                  std::span<const ContentItem_5G> items,
                                                  std::span<const ST_PageDataA_ValieLen> pages) {
    auto record = area_record(area);
    if (!record) return {};
    for (std::size_t i = 0; i < items.size(); ++i)
        add_pages(*record, items[i].effect, pages[i], PageOrder::playing);
    return record->GetData();
}

int CBuild_DynamicArea_5H::UpdateOrAdd(const ControllerAddress& to, const AreaRequest_5G& area,
                                       const ContentItem_5G& item) {
    return update(to, [&] {
        const auto pages = render(area, item, order_of(item.effect));
        return pages ? BuildDynamicAreaData(area, item.effect, *pages) : CData();
    });
}

int CBuild_DynamicArea_5H::dynamicArea_AddAreaInfos_5G(const ControllerAddress& to,
                                                       const AreaRequest_5G& area,
                                                       std::span<const ContentItem_5G> items) {
    return update(to, [&] {
        std::vector<ST_PageDataA_ValieLen> pages;
        for (const ContentItem_5G& item : items) {
            auto rendered = render(area, item, PageOrder::playing);
            if (!rendered) return CData();
            pages.push_back(std::move(*rendered));
        }
        return BuildDynamicAreaData(area, items, pages);
    });
}

} // namespace qm
