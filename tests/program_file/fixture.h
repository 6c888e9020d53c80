// A program of either generation, built through the exports and read as a controller reads it.
#pragma once

#include "hex.h"
#include "qm_sdk_dual.h"
#include "simulator/playback/ProgramPlayer.h"
#include "simulator/playback/program_parser.h"
#include "simulator/protocol/PixelFormat.h"

#include <filesystem>

namespace qm::test {

constexpr char kFont[] = "DejaVu Sans";
constexpr char kFontFile[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr Ouint16 kMode0 = 0x0051, kMode4 = 0x0262, kMode3 = 0x0066, kMode5 = 0x8166; // controller types

HVprogramHeader program_header(Ouint32 id);
HVprogramHeader_G6 program_header_g6(Ouint32 id);
HVpageHeader page_header(Ouint8 displayMode = 1, Ouint32 arrMode = MULTILINE);
HVpageHeader_G6 page_header_g6(Ouint8 displayMode = 1, Ouint32 arrMode = MULTILINE);
// A date as 2024-12-31 in yellow, centred.
HVtimeAreaData_G56 time_content();
HVareaHeader area_header(Ouint8 type, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height);
HVareaHeader_G6 area_header_g6(Ouint8 type, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height);

// A controller of a generation, and its screen.
struct ScreenKind {
    const char* name;
    bool six;
    Ouint16 type;
    sim::ScreenColor color;

    [[nodiscard]] sim::PixelFormat format() const { return {sim::packing_of(type), color}; }
};
constexpr ScreenKind kFive{"Dual5", false, kMode0, sim::ScreenColor::dual};
constexpr ScreenKind kSix{"Dual6", true, kMode4, sim::ScreenColor::dual};
constexpr ScreenKind kSixOfPlanes8{"", true, kMode0, sim::ScreenColor::dual};

// Each test runs in a folder of its own and leaves no program behind.
class Program : public testing::Test {
  protected:
    Program();
    ~Program() override;

    // A program of its own for that screen, without areas.
    static void begin(const ScreenKind& screen);
    // The same without a header, without which a program of generation 6 has no name.
    static void use(const ScreenKind& screen);
    static void add_area(Ouint16 id, Ouint8 type, sim::Rect rect);

    // Writes a picture of one colour (0xRRGGBB).
    std::string picture(const std::string& name, int width, int height, unsigned color);

    // The assembled file or files as they are handed out.
    struct File {
        std::string name, dataName;
        int type = 0, dataType = 0;
        ByteBuffer bytes, data;
        Ouint32 crc = 0;
    };
    static File integrate_g5();
    static File integrate_g6();
    static File integrate() { return s_screen.six ? integrate_g6() : integrate_g5(); }
    // What the controller finds in it, which must not refuse it.
    static sim::StoredProgram parsed_g5() {
        return accepted(sim::parse_program(integrate_g5().bytes, format()));
    }
    static sim::StoredProgram parsed_g6();
    static sim::StoredProgram parsed() { return s_screen.six ? parsed_g6() : parsed_g5(); }
    static sim::StoredProgram accepted(sim::ParsedProgram program);
    static sim::PixelFormat format() { return s_screen.format(); }
    static bool is_six() { return s_screen.six; }
    // Played on a screen of that size.
    static sim::Playlist played(int width, int height) {
        sim::Playlist list({width, height, format()});
        list.put("P001", parsed());
        return list;
    }

  private:
    static inline ScreenKind s_screen = kFive;
    std::filesystem::path m_before, m_folder;
};

} // namespace qm::test
