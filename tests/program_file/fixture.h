// A program of either generation, built through the exports and taken apart again.
#pragma once

#include "parser.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

namespace qm::test {

constexpr char kFont[] = "DejaVu Sans";
constexpr Ouint16 kMode0 = 0x0051, kMode4 = 0x0262, kMode3 = 0x0066, kMode5 = 0x8166; // controller types

HVprogramHeader program_header(Ouint32 id);
HVprogramHeader_G6 program_header_g6(Ouint32 id);
HVpageHeader page_header(Ouint8 displayMode = 1, Ouint32 arrMode = MULTILINE);
HVpageHeader_G6 page_header_g6(Ouint8 displayMode = 1, Ouint32 arrMode = MULTILINE);
// A date as 2024-12-31 in yellow, centred.
HVtimeAreaData_G56 time_content();
HVareaHeader area_header(Ouint8 type, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height);
HVareaHeader_G6 area_header_g6(Ouint8 type, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height);

// Each test runs in a folder of its own and leaves no program behind.
class Program : public testing::Test {
  protected:
    Program();
    ~Program() override;

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
    static ParsedProgram parsed_g5(NotInTheFile known = {});
    static ParsedProgram parsed_g6(NotInTheFile known = {});

    static std::string printed_by(const std::function<void()>& action);

  private:
    std::filesystem::path m_before, m_folder;
};

} // namespace qm::test
