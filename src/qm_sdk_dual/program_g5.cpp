// Generation-5 programs.
#include "qm_sdk_dual/program_exports.h"

#include <cstdlib>

using namespace qm;

namespace {

qm_G5_area_header area_header(const HVareaHeader& h) {
    return {h.AreaType, h.AreaX, h.AreaY, h.AreaWidth, h.AreaHeight};
}

int set_header(const HVprogramHeader* header,
               void (ProgramObj::*set)(const HVprogramHeader&, const ProgramName&)) {
    return guarded({{"header", header}}, [&] {
        const auto name = program_name(header->ProgramID);
        if (!name) return QM_FAILED + 0;
        return on_program<ProgramObj>([&](ProgramObj& program) { (program.*set)(*header, *name); });
    });
}

int set_frame(const HVscreenframeHeader* header, const char* picPath) {
    return with_program<ProgramObj>({{"header", header}, {"picPath", picPath}}, [&](ProgramObj& program) {
        program.ProgramChangeFrame(*header, picPath);
    });
}

// The empty program of program_pictureArea.
void assemble_demonstration(ProgramObj& program) {
    HVprogramHeader header{};
    header.ProgramPlayTimes = 1;
    header.ProgramWeek = 0xFF;
    header.ProgramLifeSpan_sy = header.ProgramLifeSpan_ey = 0xFFFF;
    header.ProgramLifeSpan_sm = header.ProgramLifeSpan_em = 0x12;
    header.ProgramLifeSpan_sd = header.ProgramLifeSpan_ed = 0x12;
    const auto renderer = lock_renderer();
    ScreenSettings& settings = screen_settings();
    settings.m_screenColor = SCREEN_COLOR_DOUBLE;
    settings.m_tranMode = Tran_Pixel_Mode0;
    settings.m_doubleColorPixel = DOUBLE_COLOR_PIXTYPE_2;
    program.AddProgram(header, {'P', '0', '0', '0'});
    program.ProgramAddArea(0, {ePicturesArea, 0, 0, 0, 0});
    program.SendProgram();
}

} // namespace

int program_addProgram(const HVprogramHeader* header) noexcept {
    return set_header(header, &ProgramObj::AddProgram);
}

int program_changeProgramParams(const HVprogramHeader* header) noexcept {
    return set_header(header, &ProgramObj::ProgramChangeParams);
}

int program_addPlayPeriodGrp(const HVprogramppGrp_G56* periods) noexcept {
    return add_play_periods<ProgramObj>(periods);
}

int program_addFrame(const HVscreenframeHeader* header, const char* picPath) noexcept {
    return set_frame(header, picPath);
}

int program_changeFrame(const HVscreenframeHeader* header, const char* picPath) noexcept {
    return set_frame(header, picPath);
}

int program_removeFrame(void) noexcept { return remove_frame<ProgramObj>(); }

int program_AddArea(Ouint16 areaID, const HVareaHeader* header) noexcept {
    return guarded({{"header", header}}, [&] {
        if (!is_drawable(*header)) return QM_FAILED + 0;
        return on_program<ProgramObj>(
            [&](ProgramObj& program) { return program.ProgramAddArea(areaID, area_header(*header)); });
    });
}

int program_deleteArea(Ouint16 areaID) noexcept { return delete_area<ProgramObj>(areaID); }

int program_MoveArea(Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) noexcept {
    return move_area<ProgramObj>(areaID, x, y, width, height);
}

int program_IntegrateProgramFile(HVprogram* program) noexcept {
    return guarded({{"program", program}}, [&] {
        *program = {};
        return on_program<ProgramObj>([&](ProgramObj& source) {
            source.SendProgram();
            Ouint8* copy = copy_for_caller(source.p_src);
            if (!copy) return false;
            std::copy(source.pFileName.begin(), source.pFileName.end(), program->fileName);
            program->fileType = source.pFileType;
            program->fileLen = static_cast<Ouint32>(source.p_src.size());
            program->fileAddre = copy;
            program->fileCRC32 = source.pCRC32;
            return true;
        });
    });
}

int program_freeBuffer(HVprogram* program) noexcept {
    return guarded({{"program", program}}, [&] {
        std::free(program->fileAddre);
        program->fileAddre = nullptr;
    });
}

int program_deleteProgram(void) noexcept { return guarded(delete_program); }

int program_pictureArea(Ouint32, const char* ip, Ouint16 port) noexcept {
    return guarded({{"ip", ip}}, [&] {
        ProgramObj program;
        assemble_demonstration(program);
        return on_connection(Tcp{ip, port}, [&](ON_command& c) {
            return c.hv_cmd_ofs_writeFile({program.pFileName.data(), program.pFileType, 1, program.p_src});
        });
    });
}
