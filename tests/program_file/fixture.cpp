#include "fixture.h"

#include <cairo.h>

#include <cstdlib>

namespace qm::test {
namespace {

// The fields that the page headers of both generations share.
template <class Header> Header page_of(Ouint8 displayMode, Ouint32 arrMode) {
    Header page{};
    page.DisplayMode = displayMode;
    page.Speed = 3;
    page.StayTime = 500;
    page.arrMode = static_cast<E_arrMode>(arrMode);
    page.fontSize = 9;
    page.color = eRed;
    return page;
}

template <class Header> Header area_of(Ouint8 type, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height) {
    Header area{};
    area.AreaType = type;
    area.AreaX = x;
    area.AreaY = y;
    area.AreaWidth = width;
    area.AreaHeight = height;
    return area;
}

} // namespace

HVprogramHeader program_header(Ouint32 id) {
    HVprogramHeader header{};
    header.ProgramID = id;
    return header;
}

HVprogramHeader_G6 program_header_g6(Ouint32 id) {
    HVprogramHeader_G6 header{};
    header.ProgramID = id;
    return header;
}

HVpageHeader page_header(Ouint8 displayMode, Ouint32 arrMode) {
    return page_of<HVpageHeader>(displayMode, arrMode);
}

HVpageHeader_G6 page_header_g6(Ouint8 displayMode, Ouint32 arrMode) {
    return page_of<HVpageHeader_G6>(displayMode, arrMode);
}

HVtimeAreaData_G56 time_content() {
    HVtimeAreaData_G56 content{};
    content.color = eYellow;
    content.fontName = kFont;
    content.fontSize = 9;
    content.fontAlign = 1;
    content.date_enable = true;
    return content;
}

HVareaHeader area_header(Ouint8 type, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height) {
    return area_of<HVareaHeader>(type, x, y, width, height);
}

HVareaHeader_G6 area_header_g6(Ouint8 type, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height) {
    return area_of<HVareaHeader_G6>(type, x, y, width, height);
}

Program::Program() : m_before(std::filesystem::current_path()) {
    std::string pattern = testing::TempDir() + "qm_program_XXXXXX";
    m_folder = mkdtemp(pattern.data());
    std::filesystem::current_path(m_folder);
    program_deleteProgram();
    program_setScreenParams_G56(SCREEN_COLOR_DOUBLE, kMode0, DOUBLE_COLOR_PIXTYPE_1);
}

Program::~Program() {
    program_deleteProgram();
    std::filesystem::current_path(m_before);
    std::filesystem::remove_all(m_folder);
}

std::string Program::picture(const std::string& name, int width, int height, unsigned color) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    cairo_t* c = cairo_create(surface);
    cairo_set_source_rgb(c, (color >> 16 & 255) / 255.0, (color >> 8 & 255) / 255.0, (color & 255) / 255.0);
    cairo_paint(c);
    cairo_destroy(c);
    const std::string path = (m_folder / name).string();
    cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
    return path;
}

Program::File Program::integrate_g5() {
    HVprogram program{};
    EXPECT_EQ(program_IntegrateProgramFile(&program), 0);
    File file;
    file.name.assign(program.fileName, 4);
    file.type = program.fileType;
    file.bytes.assign(program.fileAddre, program.fileAddre + program.fileLen);
    file.crc = program.fileCRC32;
    EXPECT_EQ(program_freeBuffer(&program), 0);
    EXPECT_TRUE(program.fileAddre == nullptr);
    return file;
}

Program::File Program::integrate_g6() {
    HVprogram_G6 program{};
    EXPECT_EQ(program_IntegrateProgramFile_G6(&program), 0);
    File file;
    file.name.assign(program.fileName, 4);
    file.dataName.assign(program.dfileName, 4);
    file.type = program.fileType;
    file.dataType = program.dfileType;
    file.bytes.assign(program.fileAddre, program.fileAddre + program.fileLen);
    file.data.assign(program.dfileAddre, program.dfileAddre + program.dfileLen);
    EXPECT_EQ(program_freeBuffer_G6(&program), 0);
    EXPECT_TRUE(program.fileAddre == nullptr);
    EXPECT_TRUE(program.dfileAddre == nullptr);
    return file;
}

ParsedProgram Program::parsed_g5(NotInTheFile known) {
    return parse_g5(integrate_g5().bytes, std::move(known));
}

ParsedProgram Program::parsed_g6(NotInTheFile known) {
    const File file = integrate_g6();
    return parse_g6(file.bytes, file.data, file.dataName, std::move(known));
}

std::string Program::printed_by(const std::function<void()>& action) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

} // namespace qm::test
