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
        return on_program_g6([&](ProgramObj_g6& program) {
            program.AddProgram(*header, *name);
            return QM_OK;
        });
    });
}

// Hands out both files, or neither.
int hand_out(const ProgramObj_g6& source, HVprogram_G6& program) {
    Ouint8* file = copy_for_caller(source.p_src);
    Ouint8* data = copy_for_caller(source.d_src);
    if (!file || !data) {
        std::free(file);
        std::free(data);
        return QM_FAILED;
    }
    std::copy(source.pFileName.begin(), source.pFileName.end(), program.fileName);
    program.fileType = source.pFileType;
    program.fileLen = static_cast<Ouint32>(source.p_src.size());
    program.fileAddre = file;
    std::copy(source.dFileName.begin(), source.dFileName.end(), program.dfileName);
    program.dfileType = source.dFileType;
    program.dfileLen = static_cast<Ouint32>(source.d_src.size());
    program.dfileAddre = data;
    return QM_OK;
}

} // namespace

int program_setScreenParams_G56(E_ScreenColor_G56 color, Ouint16 ControllerType,
                                E_DoubleColorPixel_G56 doubleColor) noexcept {
    return guarded([&] {
        const auto lock = lock_renderer();
        screen_settings().set(color, ControllerType, doubleColor);
        return QM_OK;
    });
}

int program_addProgram_G6(const HVprogramHeader_G6* header) noexcept { return set_header(header); }

int program_changeProgramParams_G6(const HVprogramHeader_G6* header) noexcept { return set_header(header); }

int program_addPlayPeriodGrp_G6(const HVprogramppGrp_G56* periods) noexcept {
    return guarded({{"periods", periods}}, [&] {
        if (!is_valid(*periods)) return QM_FAILED + 0;
        return on_program_g6([&](ProgramObj_g6& program) {
            program.addPlayPeriodGrp(*periods);
            return QM_OK;
        });
    });
}

int program_addFrame_G6(const HVscreenframeHeader_G6* header, const char* picPath) noexcept {
    return with_program_g6({{"header", header}, {"picPath", picPath}},
                           [&](ProgramObj_g6& program) { return program.ProgramAddFrame(*header, picPath); });
}

int program_changeFrame_G6(const HVscreenframeHeader_G6* header, const char* picPath) noexcept {
    return with_program_g6({{"header", header}, {"picPath", picPath}}, [&](ProgramObj_g6& program) {
        return program.ProgramChangeFrame(*header, picPath);
    });
}

int program_removeFrame_G6(void) noexcept {
    return with_program_g6({}, [](ProgramObj_g6& program) {
        program.ProgramRemoveFrame();
        return QM_OK;
    });
}

int program_addArea_G6(Ouint16 areaID, const HVareaHeader_G6* header) noexcept {
    return guarded({{"header", header}}, [&] {
        if (!is_drawable(*header)) return QM_FAILED + 0;
        return on_program_g6([&](ProgramObj_g6& program) {
            const qm_G6_area_header_p2 header2{header->BackGroundFlag, header->Transparency,
                                               header->AreaEqual};
            return program.ProgramAddArea_g6(areaID, area_header(*header), header2) ? QM_OK : QM_FAILED;
        });
    });
}

int program_deleteArea_G6(Ouint16 areaID) noexcept {
    return with_program_g6({}, [&](ProgramObj_g6& program) {
        program.deleteArea(areaID);
        return QM_OK;
    });
}

int program_MoveArea_G6(Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) noexcept {
    return with_program_g6(
        {}, [&](ProgramObj_g6& program) { return move_area(program, areaID, x, y, width, height); });
}

int program_IntegrateProgramFile_G6(HVprogram_G6* program) noexcept {
    return guarded({{"program", program}}, [&] {
        *program = {};
        return on_program_g6([&](ProgramObj_g6& source) {
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
        return QM_OK;
    });
}

int program_deleteProgram_G6(void) noexcept { return program_deleteProgram(); }

int program_backGroundColor_G6(Ouint16 areaID, const HVpageHeader_G6* header, Ouint32 BGColor) noexcept {
    const char* const name = __func__;
    return with_program_g6({{"header", header}}, [&](ProgramObj_g6& program) {
        return with_area<BackGround>(program, areaID, {name, "background"}, [&](BackGround& area) {
            area.backGroundClolor(BGColor);
            return QM_OK;
        });
    });
}

int program_backGroundPic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                             const char* picPath) noexcept {
    const char* const name = __func__;
    return with_program_g6({{"header", header}, {"picPath", picPath}}, [&](ProgramObj_g6& program) {
        return with_area<BackGround>(program, areaID, {name, "background"}, [&](BackGround& area) {
            area.AreaAddPic(picID, picPath, page_header_of(*header));
            return QM_OK;
        });
    });
}
