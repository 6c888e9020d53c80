// A generation-6 program: a program file that describes, and a data file that holds the pixels.
#pragma once

#include "program/PicturesArea_g6.h"
#include "program/ProgramObj.h"

namespace qm {

class ProgramObj_g6 : public ProgramObj {
  public:
    // Sets the header and the names of both files.
    void AddProgram(const HVprogramHeader_G6& header, const ProgramName& name);
    void addPlayPeriodGrp(const HVprogramppGrp_G56& periods) override;

    // -1 when there is a border already, or its picture cannot be read.
    int ProgramAddFrame(const HVscreenframeHeader_G6& header, const char* picPath);
    // -1 when there is no border, or the new picture cannot be read: then the old one stays under the new
    // header.
    int ProgramChangeFrame(const HVscreenframeHeader_G6& header, const char* picPath);

    // Adds an empty area in the place of all those with its number; false for a kind that is not taken.
    bool ProgramAddArea_g6(Ouint16 areaID, const qm_G5_area_header& header,
                           const qm_G6_area_header_p2& header2);

    // Assembles both files.
    void SendProgram();

    ByteBuffer d_src; // the assembled data file
    ProgramName dFileName{};
    Ouint8 dFileType = 9;
    Ouint32 dCRC32 = 0;

  private:
    HVprogramHeader_G6 m_pHeader{};
    HVscreenframeHeader_G6 m_fHeader{};
    bool m_bIfHaveBK = false; // a background was added at some time
};

} // namespace qm
