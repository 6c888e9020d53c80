// Why a picture cannot be shown, as every call that takes one tells it.
#include "drawing.h"
#include "outcome.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
constexpr E_ScreenColor_G56 kDual = SCREEN_COLOR_DOUBLE;
constexpr Ouint16 kNobody = 65534;

// Files that cannot be shown, in a folder of their own, and as somebody to whom files can be closed.
class BadPictures : public testing::Test {
  protected:
    BadPictures() {
        const std::string head("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16);
        std::filesystem::create_directories(m_folder / "folder");
        EXPECT_EQ(::chmod(m_folder.c_str(), 0755), 0);
        write("text", "no picture at all, though long enough");
        write("cut", head + std::string("\0\0\0\x10\0\0\0\x10\x08\x06\0\0\0", 13));
        write("damaged", head + std::string("\0\0\0\x10\0\0\0\x10\x08\x06\0\0\0", 13) + std::string(99, 'x'));
        write("bomb", head + std::string("\0\0\xEA\x60\0\0\xEA\x60\x08\x06\0\0\0", 13));
        write("closed", head);
        write_png(sim::Image(8, 8), path("good"));
        EXPECT_EQ(::chmod(path("closed").c_str(), 0), 0);
        if (::geteuid() == 0) m_changed = ::seteuid(kNobody) == 0;
    }
    ~BadPictures() override {
        EXPECT_TRUE(!m_changed || ::seteuid(0) == 0);
        program_deleteProgram();
        std::filesystem::remove_all(m_folder);
    }

    [[nodiscard]] std::string path(const char* name) const { return m_folder / name; }

    const std::pair<const char*, const char*> m_reasons[7] = {
        {"missing", "No such file or directory"},
        {"folder", "it is no ordinary file"},
        {"text", "it is no PNG file"},
        {"bomb", "it has more than 64 million pixels"},
        {"closed", "Permission denied"},
        {"cut", "error while reading from input stream"},
        {"damaged", "it is damaged"},
    };

    // Each call on each file fails with the file and what is wrong with it.
    void expect_reasons(const std::function<int(const char*)>& call, const char* name) {
        for (const auto& [file, why] : m_reasons) {
            program_deleteProgram();
            const Outcome outcome = call(path(file).c_str());
            EXPECT_EQ(outcome.status, QM_FAILED) << name << ", " << file;
            EXPECT_EQ(outcome.reason, "Picture " + path(file) + ": " + why + ".") << name;
        }
    }

  private:
    void write(const char* name, const std::string& content) {
        std::ofstream(m_folder / name, std::ios::binary) << content;
    }

    std::filesystem::path m_folder = testing::TempDir() + "qm_bad_pictures_" + std::to_string(::getpid());
    bool m_changed = false;
};

// The first page of an area in which add puts a picture.
int preview_g5(const std::function<int(const HVpageHeader&)>& add) {
    const HVareaHeader area{ePicturesArea, 0, 0, 16, 16};
    const HVpageHeader page{};
    EXPECT_EQ(program_AddArea(0, &area), 0);
    EXPECT_EQ(add(page), 0);
    getPageData preview{};
    return program_pictureAreaGetOnePage(0, 0, &preview);
}

int preview_g6(Ouint8 type, const std::function<int(const HVpageHeader_G6&)>& add) {
    HVareaHeader_G6 area = rectangle(0, 0, 16, 16);
    area.AreaType = type;
    const HVpageHeader_G6 page{};
    EXPECT_EQ(program_addArea_G6(0, &area), 0);
    EXPECT_EQ(add(page), 0);
    getPageData preview{};
    return program_pictureAreaGetOnePage(0, 0, &preview);
}

TEST_F(BadPictures, AreNamedWithTheirFaultByProgramCalls) {
    const HVscreenframeHeader_G6 border{};
    const std::string good = path("good");
    const std::pair<const char*, std::function<int(const char*)>> calls[] = {
        {"addFrame_G6", [&](const char* file) { return program_addFrame_G6(&border, file); }},
        {"changeFrame_G6",
         [&](const char* file) {
             EXPECT_EQ(program_addFrame_G6(&border, good.c_str()), 0);
             return program_changeFrame_G6(&border, file);
         }},
        {"AddPic",
         [](const char* file) {
             return preview_g5(
                 [=](const auto& page) { return program_pictureAreaAddPic(0, 1, &page, file); });
         }},
        {"AddPic_G6",
         [](const char* file) {
             return preview_g6(ePicturesArea, [=](const auto& page) {
                 return program_pictureAreaAddPic_G6(0, 1, &page, file);
             });
         }},
        {"ChangePic_G6",
         [&](const char* file) {
             return preview_g6(ePicturesArea, [&](const auto& page) {
                 EXPECT_EQ(program_pictureAreaAddPic_G6(0, 1, &page, good.c_str()), 0);
                 return program_pictureAreaChangePic_G6(0, 1, &page, file);
             });
         }},
        {"backGroundPic_G6",
         [](const char* file) {
             return preview_g6(eGlobalBackGroundArea,
                               [=](const auto& page) { return program_backGroundPic_G6(0, 1, &page, file); });
         }},
    };
    for (const auto& [name, call] : calls) expect_reasons(call, name);
}

// These go on without the picture: the call succeeds, and its message is all that is told.
TEST_F(BadPictures, AreBorneByProgramCallsThatGoOnWithoutThem) {
    const HVareaHeader area{ePicturesArea, 0, 0, 16, 16}, clock{eTimeClockArea, 0, 0, 16, 16};
    const HVscreenframeHeader screenBorder{};
    const HVareaframeHeader areaBorder{};
    const std::string missing = path("missing");
    ASSERT_EQ(program_AddArea(0, &area), 0);
    ASSERT_EQ(program_AddArea(1, &clock), 0);
    const Outcome outcomes[] = {
        program_addFrame(&screenBorder, missing.c_str()),
        program_changeFrame(&screenBorder, missing.c_str()),
        program_picturesAreaAddFrame(0, &areaBorder, missing.c_str()),
        program_timeAreaChangeDialPic(1, missing.c_str()),
    };
    for (const Outcome& outcome : outcomes) {
        EXPECT_EQ(outcome.status, QM_OK);
        EXPECT_EQ(outcome.reason, "");
    }
}

TEST_F(BadPictures, AreNamedWithTheirFaultByDynamicAreaCalls) {
    const sim::Simulator sim;
    const Ouint16 port = sim.port();
    HVpageHeader_G6 page = still_text(12, 1);
    const auto with_record = [&](const char* file, auto&& call) {
        DynamicAreaParams params{};
        params.oAreaHeader_G6 = rectangle(0, 0, 16, 16);
        params.strAreaTxtContent = reinterpret_cast<const Ouint8*>(file);
        return call(&params);
    };
    const std::pair<const char*, std::function<int(const char*)>> calls[] = {
        {"AddAreaPic_6G",
         [&](const char* file) {
             return dynamicArea_AddAreaPic_6G(kHost, port, kDual, 0, 0, 0, 16, 16, &page, file);
         }},
        {"AddAreaPic_WithProgram_6G",
         [&](const char* file) {
             return dynamicArea_AddAreaPic_WithProgram_6G(kHost, port, kDual, 0, 0, 0, 16, 16, &page, file, 0,
                                                          nullptr);
         }},
        {"AddAreaPic_6G of several",
         [&](const char* file) {
             return with_record(file, [&](DynamicAreaParams* params) {
                 return dynamicAreaS_AddAreaPic_6G(kHost, port, kDual, 1, params);
             });
         }},
        {"AddAreaPic_WithProgram_6G of several",
         [&](const char* file) {
             return with_record(file, [&](DynamicAreaParams* params) {
                 return dynamicAreaS_AddAreaPic_WithProgram_6G(kHost, port, kDual, 1, params, 0, nullptr);
             });
         }},
        {"AddAreaWithPic_5G",
         [&](const char* file) {
             return dynamicArea_AddAreaWithPic_5G(kHost, port, kDual, 0, 0, 0, 1, 0, nullptr, 1, 0, 0, 16, 16,
                                                  {}, 1, 1, 1, 1, 1, file);
         }},
        {"AddAreaInfos_5G",
         [&](const char* file) {
             DynamicAreaBaseInfo_5G info{}, *infos[] = {&info};
             info.nType = 2;
             info.filePath = reinterpret_cast<const Ouint8*>(file);
             return dynamicArea_AddAreaInfos_5G(kHost, port, kDual, 0, 0, 0, 1, 0, nullptr, 1, 0, 0, 16, 16,
                                                {}, 1, infos);
         }},
    };
    for (const auto& [name, call] : calls) expect_reasons(call, name);
    EXPECT_TRUE(sim.payloads().empty());
}

} // namespace
} // namespace qm::test
