// A generation-5 program: header, play periods, border, areas, and the file that they make.
#pragma once

#include "program/HVarea.h"
#include "program/HVframe.h"

#include <array>
#include <memory>
#include <optional>

namespace qm {

using ProgramName = std::array<char, 4>;

// The file name that a program ID gives: P000 to P999, then 1000 to 9999; nothing above.
[[nodiscard]] std::optional<ProgramName> program_name(Ouint32 programID);

class ProgramObj {
  public:
    ProgramObj() = default;
    ProgramObj(const ProgramObj&) = delete;
    ProgramObj& operator=(const ProgramObj&) = delete;
    virtual ~ProgramObj() = default;

    void AddProgram(const HVprogramHeader& header, const ProgramName& name);
    // Replaces the header; the file keeps its name.
    void ProgramChangeParams(const HVprogramHeader& header, const ProgramName& name);
    // At most 8 periods.
    virtual void addPlayPeriodGrp(const HVprogramppGrp_G56& periods);

    // The border around the screen. A picture that cannot be read leaves none.
    void ProgramChangeFrame(const HVscreenframeHeader& header, const char* picPath);
    void ProgramRemoveFrame() { screenFrame.reset(); }

    // Adds an empty area in the place of those with its number; false for a kind that is not taken.
    bool ProgramAddArea(Ouint16 areaID, const qm_G5_area_header& header);
    // The first area of that number, or null.
    [[nodiscard]] HVarea* getArea(Ouint16 areaID) const;
    // Deletes the first area of that number; 65535 deletes all when there is none.
    void deleteArea(Ouint16 areaID);
    // False for an unknown area.
    bool MoveArea(Ouint16 areaID, const qm_G5_area_header& rectangle);

    // Assembles the file.
    void SendProgram();

    ByteBuffer p_src; // the assembled program file
    ProgramName pFileName{};
    Ouint8 pFileType = 0;
    Ouint32 pCRC32 = 0; // the last four bytes of the file

  protected:
    // Makes room for one area more, so that adding it cannot fail.
    void make_room();
    // Puts an area at the end of the list.
    void add_area(Ouint16 areaID, const qm_G5_area_header& header, std::unique_ptr<HVarea> area);
    void remove_areas(Ouint16 areaID, bool all);
    static bool no_such_kind(Ouint8 type); // false
    void append_play_periods(ByteWriter& out) const;
    // Appends the number of areas, and every area's record behind its length.
    void append_areas(ProgramFiles& files) const;

    int m_iAreaNum = 0; // counts areas that were replaced, too
    std::vector<std::unique_ptr<HVarea>> _areaList;
    std::optional<HVframe> screenFrame;

  private:
    HVprogramHeader m_header{};
    ProgramName m_headerName{};
    HVscreenframeHeader m_sfHeader{};
    HVprogramppGrp_G56 m_ppHeader{};
};

// Appends the CRC-32 of a file to it, and gives it.
Ouint32 close_with_crc(ByteBuffer& file);

} // namespace qm
