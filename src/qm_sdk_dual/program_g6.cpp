// Screen settings, and generation-6 programs.
#include "program/BackGround.h"
#include "qm_sdk_dual/program_exports.h"

#include <cstdlib>

using namespace qm;

namespace {

qm_G5_area_header area_header(const HVareaHeader_G6& h) {
    return {h.AreaType, h.AreaX, h.AreaY, h.AreaWidth, h.AreaHeight};
}

int set_header(const HVprogramHeader_G6* header) {
    return guarded({{"header", header}}, [&] {
        const auto name = program_name(header->ProgramID);
        if (!name) return QM_FAILED + 0;
        return on_program<ProgramObj_g6>([&](ProgramObj_g6& program) { program.AddProgram(*header, *name); });
    });
}

// Hands out both files, or neither.
bool hand_out(const ProgramObj_g6& source, HVprogram_G6& program) {
    Ouint8* file = copy_for_caller(source.p_src);
    Ouint8* data = copy_for_caller(source.d_src);
    if (!file || !data) {
        std::free(file);
        std::free(data);
        return false;
    }
    std::copy(source.pFileName.begin(), source.pFileName.end(), program.fileName);
    program.fileType = source.pFileType;
    program.fileLen = static_cast<Ouint32>(source.p_src.size());
    program.fileAddre = file;
    std::copy(source.dFileName.begin(), source.dFileName.end(), program.dfileName);
    program.dfileType = source.dFileType;
    program.dfileLen = static_cast<Ouint32>(source.d_src.size());
    program.dfileAddre = data;
    return true;
}

} // namespace

int program_setScreenParams_G56(E_ScreenColor_G56 color, Ouint16 ControllerType,
                                E_DoubleColorPixel_G56 doubleColor) noexcept {
    return guarded([&] {
        const auto lock = lock_renderer();
        screen_settings().set(color, ControllerType, doubleColor);
    });
}

int program_addProgram_G6(const HVprogramHeader_G6* header) noexcept { return set_header(header); }

int program_changeProgramParams_G6(const HVprogramHeader_G6* header) noexcept { return set_header(header); }

int program_addPlayPeriodGrp_G6(const HVprogramppGrp_G56* periods) noexcept {
    return add_play_periods<ProgramObj_g6>(periods);
}

int program_addFrame_G6(const HVscreenframeHeader_G6* header, const char* picPath) noexcept {
    return with_program<ProgramObj_g6>(
        {{"header", header}, {"picPath", picPath}},
        [&](ProgramObj_g6& program) { return program.ProgramAddFrame(*header, picPath); });
}

int program_changeFrame_G6(const HVscreenframeHeader_G6* header, const char* picPath) noexcept {
    return with_program<ProgramObj_g6>(
        {{"header", header}, {"picPath", picPath}},
        [&](ProgramObj_g6& program) { return program.ProgramChangeFrame(*header, picPath); });
}

int program_removeFrame_G6(void) noexcept { return remove_frame<ProgramObj_g6>(); }

int program_addArea_G6(Ouint16 areaID, const HVareaHeader_G6* header) noexcept {
    return guarded({{"header", header}}, [&] {
        if (!is_drawable(*header)) return QM_FAILED + 0;
        return on_program<ProgramObj_g6>([&](ProgramObj_g6& program) {
            const qm_G6_area_header_p2 header2{header->BackGroundFlag, header->Transparency,
                                               header->AreaEqual};
            return program.ProgramAddArea_g6(areaID, area_header(*header), header2);
        });
    });
}

int program_deleteArea_G6(Ouint16 areaID) noexcept { return delete_area<ProgramObj_g6>(areaID); }

int program_MoveArea_G6(Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) noexcept {
    return move_area<ProgramObj_g6>(areaID, x, y, width, height);
}

int program_IntegrateProgramFile_G6(HVprogram_G6* program) noexcept {
    return guarded({{"program", program}}, [&] {
        *program = {};
        return on_program<ProgramObj_g6>([&](ProgramObj_g6& source) {
            source.SendProgram();
            return hand_out(source, *program);
        });
    });
}

int program_freeBuffer_G6(HVprogram_G6* program) noexcept {
    return guarded({{"program", program}}, [&] {
        std::free(program->dfileAddre);
        std::free(program->fileAddre);
        program->dfileAddre = program->fileAddre = nullptr;
    });
}

int program_deleteProgram_G6(void) noexcept { return program_deleteProgram(); }

int program_backGroundColor_G6(Ouint16 areaID, const HVpageHeader_G6* header, Ouint32 BGColor) noexcept {
    return with_area<ProgramObj_g6, BackGround>(areaID, {__func__, "background"}, {{"header", header}},
                                                [=](BackGround& area) { area.backGroundClolor(BGColor); });
}

int program_backGroundPic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                             const char* picPath) noexcept {
    return with_area<ProgramObj_g6, BackGround>(
        areaID, {__func__, "background"}, {{"header", header}, {"picPath", picPath}},
        [=](BackGround& area) { area.AreaAddPic(picID, picPath, page_header_of(*header)); });
}
