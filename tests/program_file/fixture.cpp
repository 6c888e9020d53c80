#include "fixture.h"

#include "seeds.h"
#include "simulator/show/picture.h"

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
    use(kFive);
}

void Program::use(const ScreenKind& screen) {
    s_screen = screen;
    program_deleteProgram();
    program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(screen.color), screen.type,
                                DOUBLE_COLOR_PIXTYPE_1);
}

void Program::begin(const ScreenKind& screen) {
    use(screen);
    const HVprogramHeader five = program_header(1);
    const HVprogramHeader_G6 six = program_header_g6(1);
    EXPECT_EQ(screen.six ? program_addProgram_G6(&six) : program_addProgram(&five), 0);
}

void Program::add_area(Ouint16 id, Ouint8 type, sim::Rect rect) {
    const auto u16 = [](int value) { return static_cast<Ouint16>(value); };
    const HVareaHeader five = area_header(type, u16(rect.x), u16(rect.y), u16(rect.width), u16(rect.height));
    const HVareaHeader_G6 six =
        area_header_g6(type, u16(rect.x), u16(rect.y), u16(rect.width), u16(rect.height));
    EXPECT_EQ(s_screen.six ? program_addArea_G6(id, &six) : program_AddArea(id, &five), 0);
}

Program::~Program() {
    program_deleteProgram();
    std::filesystem::current_path(m_before);
    std::filesystem::remove_all(m_folder);
}

std::string Program::picture(const std::string& name, int width, int height, unsigned color) {
    sim::Image image(width, height);
    const auto channel = [&](unsigned shift) { return static_cast<std::uint8_t>(color >> shift); };
    for (int i = 0; i < width * height; ++i)
        image.set(i % width, i / width, {channel(16), channel(8), channel(0)});
    const std::string path = (m_folder / name).string();
    write_png(image, path);
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
    keep_program_seeds(file.bytes);
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
    keep_program_seeds(file.bytes, file.data);
    return file;
}

sim::StoredProgram Program::parsed_g6() {
    const File file = integrate_g6();
    EXPECT_EQ(std::string(file.data.begin() + 1, file.data.begin() + 5), file.dataName);
    return accepted(sim::parse_program(file.bytes, file.data, format()));
}

sim::StoredProgram Program::accepted(sim::ParsedProgram program) {
    if (const auto* error = std::get_if<std::string>(&program)) {
        ADD_FAILURE() << *error;
        return {};
    }
    return std::get<sim::StoredProgram>(std::move(program));
}

} // namespace qm::test
