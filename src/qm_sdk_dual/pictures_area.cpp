// Text, pictures, borders and speech of program areas, in both generations.
#include "program/BackGround.h"
#include "qm_sdk_dual/program_exports.h"

using namespace qm;

namespace {

// The program of each generation, by the page header that its calls take.
template <class Header>
using ProgramOf = std::conditional_t<std::is_same_v<Header, HVpageHeader>, ProgramObj, ProgramObj_g6>;

constexpr Needed kFontAsBefore{nullptr, nullptr, false};

// Text is for every such area but a background, which has only a colour or pictures.
template <class Header>
int set_text(const char* name, Ouint16 areaID, const char* str, const Needed& font, const Header* header) {
    const Call call{name, "text"};
    const auto set = [&](PicturesArea& area) {
        if (dynamic_cast<BackGround*>(&area)) return takes_no_such_content(call, areaID);
        if (font.needed)
            area.AreaAddTxt(str, static_cast<const char*>(font.pointer), font_data_of(*header),
                            page_header_of(*header));
        else
            area.AreaChangeTxt(str, font_data_of(*header), page_header_of(*header));
        return QM_OK + 0;
    };
    return with_area<ProgramOf<Header>, PicturesArea>(areaID, call, {{"str", str}, font, {"header", header}},
                                                      set);
}

template <class Header>
int add_picture(const char* name, Ouint16 areaID, Ouint16 picID, const Header* header, const char* picPath) {
    return with_area<ProgramOf<Header>, PicturesArea>(
        areaID, {name, "picture"}, {{"header", header}, {"picPath", picPath}},
        [=](PicturesArea& area) { area.AreaAddPic(picID, picPath, page_header_of(*header)); });
}

int set_sound(const char* name, Ouint16 areaID, const HVPicAreaSoundHeader_G6& header,
              const char* soundData) {
    return with_area<ProgramObj_g6, PicturesArea_g6>(
        areaID, {name, "speech"}, {{"soundData", soundData}}, [&](PicturesArea_g6& area) {
            if (area.EnableSound(header, soundData)) return QM_OK + 0;
            say("Error:soundData is empty.\n");
            return fail(QM_FAILED, "Argument soundData is empty.");
        });
}

} // namespace

int program_picturesAreaAddTxt(Ouint16 areaID, const char* str, const char* fontName,
                               const HVpageHeader* header) noexcept {
    return set_text(__func__, areaID, str, {"fontName", fontName}, header);
}

int program_picturesAreaAddTxt_G6(Ouint16 areaID, const char* str, const char* fontName,
                                  const HVpageHeader_G6* header) noexcept {
    return set_text(__func__, areaID, str, {"fontName", fontName}, header);
}

int program_fontPath_picturesAreaAddTxt(Ouint16 areaID, const char* str, const char* fontPathName,
                                        const HVpageHeader* header) noexcept {
    return set_text(__func__, areaID, str, {"fontPathName", fontPathName}, header);
}

int program_fontPath_picturesAreaAddTxt_G6(Ouint16 areaID, const char* str, const char* fontPathName,
                                           const HVpageHeader_G6* header) noexcept {
    return set_text(__func__, areaID, str, {"fontPathName", fontPathName}, header);
}

int program_picturesAreaChangeTxt(Ouint16 areaID, const char* str, const HVpageHeader* header) noexcept {
    return set_text(__func__, areaID, str, kFontAsBefore, header);
}

int program_picturesAreaChangeTxt_G6(Ouint16 areaID, const char* str,
                                     const HVpageHeader_G6* header) noexcept {
    return set_text(__func__, areaID, str, kFontAsBefore, header);
}

int program_fontPath_picturesAreaChangeTxt(Ouint16 areaID, const char* str,
                                           const HVpageHeader* header) noexcept {
    return set_text(__func__, areaID, str, kFontAsBefore, header);
}

int program_fontPath_picturesAreaChangeTxt_G6(Ouint16 areaID, const char* str,
                                              const HVpageHeader_G6* header) noexcept {
    return set_text(__func__, areaID, str, kFontAsBefore, header);
}

int program_pictureAreaAddPic(Ouint16 areaID, Ouint16 picID, const HVpageHeader* header,
                              const char* picPath) noexcept {
    return add_picture(__func__, areaID, picID, header, picPath);
}

int program_pictureAreaAddPic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                                 const char* picPath) noexcept {
    return add_picture(__func__, areaID, picID, header, picPath);
}

int program_pictureAreaChangePic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                                    const char* picPath) noexcept {
    return with_area<ProgramObj_g6, PicturesArea_g6>(
        areaID, {__func__, "picture"}, {{"header", header}, {"picPath", picPath}},
        [=](PicturesArea_g6& area) {
            if (area.AreaChangePic(picID, picPath, page_header_of(*header))) return QM_OK + 0;
            say("Error:The picture does not exist.ID:%d\n", picID);
            return fail(QM_FAILED, "The area has no picture %d.", picID);
        });
}

int program_picturesAreaAddFrame(Ouint16 areaID, const HVareaframeHeader* header,
                                 const char* picPath) noexcept {
    return with_area<PicturesArea>(areaID, {__func__, "border"}, {{"header", header}, {"picPath", picPath}},
                                   [&](PicturesArea& area) {
                                       const HVareaframeHeader& h = *header;
                                       area.AreaAddFrame({1, h.AreaFDispStyle, h.AreaFDispSpeed,
                                                          h.AreaFMoveStep, h.AreaFWidth, h.AreaFBackup},
                                                         picPath);
                                   });
}

int program_pictureAreaRemoveFrame(Ouint16 areaID) noexcept {
    return with_area<PicturesArea>(areaID, {__func__, "border"}, {},
                                   [](PicturesArea& area) { area.AreaRemoveFrame(); });
}

int program_pictureAreaGetOnePage(Ouint16 areaID, Oint32 pageNum, getPageData* page) noexcept {
    const Call call{__func__, "pages"};
    return guarded({{"page", page}}, [&] {
        *page = {};
        return with_area<HVarea>(areaID, call, {}, [&](HVarea& area) {
            page->allPageNub = static_cast<Ouint16>(area.page_count());
            if (!area.LoadAreaPage(pageNum)) return false;
            page->pageLen = static_cast<Ouint32>(area.preview().size());
            page->fileAddre = area.preview().data();
            return true;
        });
    });
}

int program_pictureAreaEnableSound_G6(Ouint16 areaID, HVPicAreaSoundHeader_G6 header,
                                      const char* soundData) noexcept {
    return set_sound(__func__, areaID, header, soundData);
}

int program_pictureAreaChangeSoundSettings_G6(Ouint16 areaID, HVPicAreaSoundHeader_G6 header,
                                              const char* soundData) noexcept {
    return set_sound(__func__, areaID, header, soundData);
}

int program_pictureAreaDisableSound_G6(Ouint16 areaID) noexcept {
    return with_area<ProgramObj_g6, PicturesArea_g6>(areaID, {__func__, "speech"}, {},
                                                     [](PicturesArea_g6& area) { area.DisableSound(); });
}
