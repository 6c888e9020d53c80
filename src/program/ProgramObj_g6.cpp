#include "program/ProgramObj_g6.h"

#include "program/BackGround.h"
#include "program/TimeArea_g6.h"
#include "support/message.h"
#include "support/reason.h"

namespace qm {
namespace {

// FileType; name 4; then the fields of the caller's record behind its ID, in their order. 29 bytes.
void append_header(ByteWriter& out, const HVprogramHeader_G6& h, const ProgramName& name) {
    out.u8(h.FileType).text(name.data(), name.size());
    out.u8(h.ProgramStyle).u8(h.ProgramPriority).u8(h.ProgramPlayTimes).u16(h.ProgramTimeSpan);
    out.u8(h.SpecialFlag).u8(h.CommExtendParaLen).u16(h.ScheduNum).u16(h.LoopValue).u8(h.Intergrate);
    out.u8(h.TimeAttributeNum).u16(h.TimeAttribute0Offset).u8(h.ProgramWeek);
    out.u16(h.ProgramLifeSpan_sy).u8(h.ProgramLifeSpan_sm).u8(h.ProgramLifeSpan_sd);
    out.u16(h.ProgramLifeSpan_ey).u8(h.ProgramLifeSpan_em).u8(h.ProgramLifeSpan_ed);
}

// Flag 1; the caller's six bytes; zero 7.
void append_frame(ByteWriter& out, const HVscreenframeHeader_G6& f, Bytes pixels) {
    out.u8(1).u8(f.FrameDispStype).u8(f.FrameDispSpeed).u8(f.FrameMoveStep);
    out.u8(f.FrameUnitLength).u8(f.FrameUnitWidth).u8(f.FrameDirectDispBit).zeros(7).bytes(pixels);
}

template <class Area> std::unique_ptr<HVarea> make_pictures(const qm_G6_area_header_p2& header2) {
    auto area = std::make_unique<Area>();
    area->m_aHeader_p2 = header2;
    return area;
}

std::unique_ptr<HVarea> make_time(const qm_G6_area_header_p2& header2) {
    auto area = std::make_unique<TimeArea_G6>();
    area->m_aHeader_p3.BackGroundFlag = header2.BackGroundFlag;
    area->m_aHeader_p3.Transparency = header2.Transparency;
    area->m_aHeader_p3.AreaEqual = header2.AreaEqual;
    return area;
}

std::unique_ptr<HVarea> make_area(Ouint8 type, const qm_G6_area_header_p2& header2) {
    switch (type) {
    case ePicturesArea:
        return make_pictures<PicturesArea_g6>(header2);
    case eGlobalBackGroundArea:
        return make_pictures<BackGround>(header2);
    case eTimeClockArea:
        return make_time(header2);
    default:
        return nullptr;
    }
}

} // namespace

void ProgramObj_g6::AddProgram(const HVprogramHeader_G6& header, const ProgramName& name) {
    m_pHeader = header;
    pFileName = name;
    dFileName = name;
    dFileName[0] = 'D';
}

void ProgramObj_g6::addPlayPeriodGrp(const HVprogramppGrp_G56& periods) {
    ProgramObj::addPlayPeriodGrp(periods);
    m_pHeader.ProgramPriority = periods.playTimeGrpNum != 0;
}

int ProgramObj_g6::ProgramAddFrame(const HVscreenframeHeader_G6& header, const char* picPath) {
    if (screenFrame) return fail(QM_FAILED, "The program has a border.");
    screenFrame = HVframe::load(picPath);
    m_fHeader = header;
    return screenFrame ? QM_OK : QM_FAILED;
}

int ProgramObj_g6::ProgramChangeFrame(const HVscreenframeHeader_G6& header, const char* picPath) {
    if (!screenFrame) {
        say("Error:No frame have been added.\n");
        return fail(QM_FAILED, "The program has no border.");
    }
    std::optional<HVframe> changed = HVframe::load(picPath);
    m_fHeader = header;
    if (!changed) return QM_FAILED;
    screenFrame = std::move(changed);
    return QM_OK;
}

bool ProgramObj_g6::ProgramAddArea_g6(Ouint16 areaID, const qm_G5_area_header& header,
                                      const qm_G6_area_header_p2& header2) {
    std::unique_ptr<HVarea> area = make_area(header.AreaType, header2);
    if (!area) return no_such_kind(header.AreaType);
    make_room();
    remove_areas(areaID, true);
    add_area(areaID, header, std::move(area));
    if (header.AreaType == eGlobalBackGroundArea) m_bIfHaveBK = true;
    return true;
}

// Program file: header 29; play periods; border: 0, or header 14 and pixels; background flag; area count u8;
// for each area: length u32, record; CRC-32. Data file: type 9; name 4; zero 8; pixels; CRC-32.
void ProgramObj_g6::SendProgram() {
    ProgramFiles files{std::move(p_src), std::move(d_src)};
    files.program.clear();
    files.data.clear();
    ByteWriter(files.data).u8(dFileType).text(dFileName.data(), dFileName.size()).zeros(8);
    ByteWriter out(files.program);
    append_header(out, m_pHeader, pFileName);
    append_play_periods(out);
    if (screenFrame)
        append_frame(out, m_fHeader, screenFrame->pixels.bytes());
    else
        out.u8(0);
    out.u8(m_bIfHaveBK);
    append_areas(files);
    pCRC32 = close_with_crc(files.program);
    dCRC32 = close_with_crc(files.data);
    p_src = std::move(files.program);
    d_src = std::move(files.data);
}

} // namespace qm
