#include "program/ProgramObj.h"

#include "global.h"
#include "program/PicturesArea.h"
#include "program/TimeArea.h"
#include "support/Descriptor.h"
#include "support/reason.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qm {
namespace {

constexpr Ouint16 kAllAreas = 65535;

std::unique_ptr<HVarea> make_area(Ouint8 type) {
    if (type == ePicturesArea) return std::make_unique<PicturesArea>();
    if (type == eTimeClockArea) return std::make_unique<TimeArea>();
    return nullptr;
}

// Leaves a copy for debugging in the current directory. What cannot be written is not missed.
void write_debugging_copy(const ByteBuffer& file) {
    const Descriptor copy(
        ::open("dataFantx.bin", O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0644));
    struct stat status {};
    if (!copy || ::fstat(copy.get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
    for (std::size_t written = 0; written < file.size();) {
        const auto n = ::write(copy.get(), file.data() + written, file.size() - written);
        if (n <= 0) return;
        written += static_cast<std::size_t>(n);
    }
}

// FileType; name 4; ProgramStyle; ProgramPriority; ProgramPlayTimes; ProgramTimeSpan u16; ProgramWeek; life
// span: start year u16, month, day, end year u16, month, day. 19 bytes.
void append_header(ByteWriter& out, const HVprogramHeader& h, const ProgramName& name) {
    out.u8(h.FileType).text(name.data(), name.size());
    out.u8(h.ProgramStyle).u8(h.ProgramPriority).u8(h.ProgramPlayTimes).u16(h.ProgramTimeSpan);
    out.u8(h.ProgramWeek);
    out.u16(h.ProgramLifeSpan_sy).u8(h.ProgramLifeSpan_sm).u8(h.ProgramLifeSpan_sd);
    out.u16(h.ProgramLifeSpan_ey).u8(h.ProgramLifeSpan_em).u8(h.ProgramLifeSpan_ed);
}

} // namespace

std::optional<ProgramName> program_name(Ouint32 programID) {
    if (!in_range("ProgramID", programID, 0, 9999)) return std::nullopt;
    char text[8];
    std::snprintf(text, sizeof text, programID <= 999 ? "P%03u" : "%u", programID);
    ProgramName name;
    std::copy_n(text, name.size(), name.begin());
    return name;
}

Ouint32 close_with_crc(ByteBuffer& file) {
    const Ouint32 crc = calc_crc32(file);
    ByteWriter(file).u32(crc);
    (void)CData::length_of(file); // throws: the caller is told the length in 32 bits
    return crc;
}

void ProgramObj::AddProgram(const HVprogramHeader& header, const ProgramName& name) {
    ProgramChangeParams(header, name);
    pFileName = name;
}

void ProgramObj::ProgramChangeParams(const HVprogramHeader& header, const ProgramName& name) {
    m_header = header;
    m_headerName = name;
}

void ProgramObj::addPlayPeriodGrp(const HVprogramppGrp_G56& periods) {
    m_ppHeader = periods;
    m_header.ProgramPriority = periods.playTimeGrpNum != 0;
}

void ProgramObj::ProgramChangeFrame(const HVscreenframeHeader& header, const char* picPath) {
    screenFrame = HVframe::load(picPath);
    m_sfHeader = header;
}

bool ProgramObj::ProgramAddArea(Ouint16 areaID, const qm_G5_area_header& header) {
    std::unique_ptr<HVarea> area = make_area(header.AreaType);
    if (!area) return no_such_kind(header.AreaType);
    make_room();
    remove_areas(areaID, false);
    add_area(areaID, header, std::move(area));
    return true;
}

bool ProgramObj::no_such_kind(Ouint8 type) {
    (void)fail(QM_FAILED, "Argument AreaType is %d, which is no kind of area of this generation.", type);
    return false;
}

void ProgramObj::make_room() {
    if (_areaList.size() == _areaList.capacity()) _areaList.reserve(2 * _areaList.size() + 1);
}

void ProgramObj::add_area(Ouint16 areaID, const qm_G5_area_header& header, std::unique_ptr<HVarea> area) {
    area->_areaID = areaID;
    area->setGeometry(header);
    _areaList.push_back(std::move(area));
    ++m_iAreaNum;
}

HVarea* ProgramObj::getArea(Ouint16 areaID) const {
    for (const auto& area : _areaList)
        if (area->_areaID == areaID) return area.get();
    return nullptr;
}

// Removes the first area of that number, or all of them, without a change of the count.
void ProgramObj::remove_areas(Ouint16 areaID, bool all) {
    const auto same = [areaID](const auto& area) { return area->_areaID == areaID; };
    if (all) {
        std::erase_if(_areaList, same);
        return;
    }
    const auto first = std::find_if(_areaList.begin(), _areaList.end(), same);
    if (first != _areaList.end()) _areaList.erase(first);
}

void ProgramObj::deleteArea(Ouint16 areaID) {
    if (getArea(areaID)) {
        remove_areas(areaID, false);
        --m_iAreaNum;
    } else if (areaID == kAllAreas) {
        _areaList.clear();
        m_iAreaNum = 0;
    }
}

bool ProgramObj::MoveArea(Ouint16 areaID, const qm_G5_area_header& rectangle) {
    HVarea* area = getArea(areaID);
    if (!area) return false;
    const qm_G5_area_header before = area->m_aHeader;
    qm_G5_area_header header = rectangle;
    header.AreaType = before.AreaType;
    area->setGeometry(header);
    try {
        area->MoveArea();
    } catch (...) { // the text has too many pages there
        area->setGeometry(before);
        throw;
    }
    return true;
}

// Flag 0, or flag 1 and the periods used; their number is not written.
void ProgramObj::append_play_periods(ByteWriter& out) const {
    out.u8(m_ppHeader.playTimeGrpNum != 0);
    for (unsigned i = 0; i < m_ppHeader.playTimeGrpNum; ++i) {
        const HVprogrampTime_G56& p = m_ppHeader.timeGrp[i];
        out.u8(p.StartHour).u8(p.StartMinute).u8(p.StartSecond);
        out.u8(p.EndHour).u8(p.EndMinute).u8(p.EndSecond);
    }
}

void ProgramObj::append_areas(ProgramFiles& files) const {
    ByteWriter out(files.program);
    out.u8(static_cast<Ouint8>(m_iAreaNum));
    for (const auto& area : _areaList) {
        area->PreparePageData();
        clear_reason(); // a picture that cannot be read is left out
        const std::size_t start = files.program.size();
        out.u32(0);
        area->assemble(files);
        out.set_u32(start, static_cast<Ouint32>(files.program.size() - start - 4));
    }
}

// Header 19; play periods; border: 0, or header 7 and pixels; background 0; area count u8; for each area:
// length u32, record; CRC-32.
void ProgramObj::SendProgram() {
    p_src.clear();
    ProgramFiles files{std::move(p_src), {}};
    ByteWriter out(files.program);
    append_header(out, m_header, m_headerName);
    append_play_periods(out);
    if (screenFrame) {
        const HVscreenframeHeader& f = m_sfHeader;
        out.u8(f.FrameDispFlag).u8(f.FrameDispStyle).u8(f.FrameDispSpeed).u8(f.FrameMoveStep);
        out.u8(f.FrameWidth).u16(f.FrameBackup).bytes(screenFrame->pixels.bytes());
    } else {
        out.u8(0);
    }
    out.u8(0);
    append_areas(files);
    pCRC32 = close_with_crc(files.program);
    p_src = std::move(files.program);
    write_debugging_copy(p_src);
}

} // namespace qm
