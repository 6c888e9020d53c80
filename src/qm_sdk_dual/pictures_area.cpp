// Text, pictures, borders and speech of program areas, in both generations.
#include "program/BackGround.h"
#include "program/TimeArea.h"
#include "qm_sdk_dual/program_exports.h"

using namespace qm;

namespace {

// The area class and the program of each generation, by the page header that its calls take.
struct G5 {
    using Header = HVpageHeader;
    using Area = PicturesArea;
    template <class Operation>
    static int with_program(std::initializer_list<Needed> needed, Operation&& operation) {
        return with_program_g5(needed, std::forward<Operation>(operation));
    }
};
struct G6 {
    using Header = HVpageHeader_G6;
    using Area = PicturesArea_g6;
    template <class Operation>
    static int with_program(std::initializer_list<Needed> needed, Operation&& operation) {
        return with_program_g6(needed, std::forward<Operation>(operation));
    }
};

template <class G, class Operation>
int on_area(Ouint16 areaID, const Call& call, std::initializer_list<Needed> needed, Operation&& operation) {
    return G::with_program(needed, [&](ProgramObj& program) {
        return with_area<typename G::Area>(program, areaID, call, [&](typename G::Area& area) {
            operation(area);
            return QM_OK;
        });
    });
}

// Text is for every such area but a background, which has only a colour or pictures.
template <class G, class Operation>
int on_text_area(Ouint16 areaID, const char* name, std::initializer_list<Needed> needed,
                 Operation&& operation) {
    const Call call{name, "text"};
    return G::with_program(needed, [&](ProgramObj& program) {
        if (dynamic_cast<BackGround*>(program.getArea(areaID))) return takes_no_such_content(call, areaID);
        return with_area<typename G::Area>(program, areaID, call, [&](typename G::Area& area) {
            operation(area);
            return QM_OK;
        });
    });
}

template <class G>
int add_text(const char* name, Ouint16 areaID, const char* str, Needed font,
             const typename G::Header* header) {
    return on_text_area<G>(areaID, name, {{"str", str}, font, {"header", header}},
                           [&](typename G::Area& area) {
                               area.AreaAddTxt(str, static_cast<const char*>(font.pointer),
                                               font_data_of(*header), page_header_of(*header));
                           });
}

template <class G>
int change_text(const char* name, Ouint16 areaID, const char* str, const typename G::Header* header) {
    return on_text_area<G>(areaID, name, {{"str", str}, {"header", header}}, [&](typename G::Area& area) {
        area.AreaChangeTxt(str, font_data_of(*header), page_header_of(*header));
    });
}

template <class G>
int add_picture(const char* name, Ouint16 areaID, Ouint16 picID, const typename G::Header* header,
                const char* picPath) {
    return on_area<G>(
        areaID, {name, "picture"}, {{"header", header}, {"picPath", picPath}},
        [&](typename G::Area& area) { area.AreaAddPic(picID, picPath, page_header_of(*header)); });
}

int set_sound(const char* name, Ouint16 areaID, const HVPicAreaSoundHeader_G6& header,
              const char* soundData) {
    return with_program_g6({{"soundData", soundData}}, [&](ProgramObj_g6& program) {
        return with_area<PicturesArea_g6>(program, areaID, {name, "speech"}, [&](PicturesArea_g6& area) {
            if (area.EnableSound(header, soundData)) return QM_OK + 0;
            say("Error:soundData is empty.\n");
            return fail(QM_FAILED, "Argument soundData is empty.");
        });
    });
}

} // namespace

int program_picturesAreaAddTxt(Ouint16 areaID, const char* str, const char* fontName,
                               const HVpageHeader* header) noexcept {
    return add_text<G5>(__func__, areaID, str, {"fontName", fontName}, header);
}

int program_picturesAreaAddTxt_G6(Ouint16 areaID, const char* str, const char* fontName,
                                  const HVpageHeader_G6* header) noexcept {
    return add_text<G6>(__func__, areaID, str, {"fontName", fontName}, header);
}

int program_fontPath_picturesAreaAddTxt(Ouint16 areaID, const char* str, const char* fontPathName,
                                        const HVpageHeader* header) noexcept {
    return add_text<G5>(__func__, areaID, str, {"fontPathName", fontPathName}, header);
}

int program_fontPath_picturesAreaAddTxt_G6(Ouint16 areaID, const char* str, const char* fontPathName,
                                           const HVpageHeader_G6* header) noexcept {
    return add_text<G6>(__func__, areaID, str, {"fontPathName", fontPathName}, header);
}

int program_picturesAreaChangeTxt(Ouint16 areaID, const char* str, const HVpageHeader* header) noexcept {
    return change_text<G5>(__func__, areaID, str, header);
}

int program_picturesAreaChangeTxt_G6(Ouint16 areaID, const char* str,
                                     const HVpageHeader_G6* header) noexcept {
    return change_text<G6>(__func__, areaID, str, header);
}

int program_fontPath_picturesAreaChangeTxt(Ouint16 areaID, const char* str,
                                           const HVpageHeader* header) noexcept {
    return change_text<G5>(__func__, areaID, str, header);
}

int program_fontPath_picturesAreaChangeTxt_G6(Ouint16 areaID, const char* str,
                                              const HVpageHeader_G6* header) noexcept {
    return change_text<G6>(__func__, areaID, str, header);
}

int program_pictureAreaAddPic(Ouint16 areaID, Ouint16 picID, const HVpageHeader* header,
                              const char* picPath) noexcept {
    return add_picture<G5>(__func__, areaID, picID, header, picPath);
}

int program_pictureAreaAddPic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                                 const char* picPath) noexcept {
    return add_picture<G6>(__func__, areaID, picID, header, picPath);
}

int program_pictureAreaChangePic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                                    const char* picPath) noexcept {
    const char* const name = __func__;
    return with_program_g6({{"header", header}, {"picPath", picPath}}, [&](ProgramObj_g6& program) {
        return with_area<PicturesArea_g6>(program, areaID, {name, "picture"}, [&](PicturesArea_g6& area) {
            if (area.AreaChangePic(picID, picPath, page_header_of(*header))) return QM_OK + 0;
            say("Error:The picture does not exist.ID:%d\n", picID);
            return fail(QM_FAILED, "The area has no picture %d.", picID);
        });
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
                                       return QM_OK;
                                   });
}

int program_pictureAreaRemoveFrame(Ouint16 areaID) noexcept {
    return with_area<PicturesArea>(areaID, {__func__, "border"}, {}, [](PicturesArea& area) {
        area.AreaRemoveFrame();
        return QM_OK;
    });
}

int program_pictureAreaGetOnePage(Ouint16 areaID, Oint32 pageNum, getPageData* page) noexcept {
    const Call call{__func__, "pages"};
    return guarded({{"page", page}}, [&] {
        *page = {};
        return with_area<HVarea>(areaID, call, {}, [&](HVarea& area) {
            page->allPageNub = static_cast<Ouint16>(area.page_count());
            if (!area.LoadAreaPage(pageNum)) return QM_FAILED;
            page->pageLen = static_cast<Ouint32>(area.preview().size());
            page->fileAddre = area.preview().data();
            return QM_OK;
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
    return on_area<G6>(areaID, {__func__, "speech"}, {}, [](PicturesArea_g6& area) { area.DisableSound(); });
}
