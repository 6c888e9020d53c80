#include "verbs.h"

#include <cstring>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1", kFont[] = "DejaVu Sans", kPicture[] = QM_EXAMPLES "/sign/logo.png";
constexpr E_ScreenColor_G56 kDual = SCREEN_COLOR_DOUBLE;
constexpr int kNoSuchFile = 108; // the simulator's error value
constexpr unsigned kFiles = 4;
constexpr Ouint8 kFileType = 1; // not a program's

struct Rectangle {
    Ouint16 x, y, width = 64, height = 12;
};

int show_text6(Ouint16 port, Ouint8 id, Rectangle at, const std::string& text) {
    HVareaHeader_G6 area{};
    area.AreaX = at.x, area.AreaY = at.y, area.AreaWidth = at.width, area.AreaHeight = at.height;
    HVpageHeader_G6 page{};
    page.DisplayMode = 1, page.fontSize = 8, page.color = eRed;
    return dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, id, &area, &page, kFont, text.c_str());
}

int show_text5(Ouint16 port, Ouint8 id, Rectangle at, const std::string& text) {
    HVfontData font{};
    font.fontSize = 8, font.color = eRed;
    return dynamicArea_AddAreaWithTxt_5G(kHost, port, kDual, id, 0, 0, 1, 0, nullptr, 1, at.x, at.y, at.width,
                                         at.height, {}, 1, 0, 0, 300, 1, font, kFont, text.c_str());
}

int show_picture6(Ouint16 port, Ouint8 id, Rectangle at) {
    HVpageHeader_G6 page{};
    page.DisplayMode = 1;
    return dynamicArea_AddAreaPic_6G(kHost, port, kDual, id, at.x, at.y, at.width, at.height, &page,
                                     kPicture);
}

int show_picture5(Ouint16 port, Ouint8 id, Rectangle at) {
    return dynamicArea_AddAreaWithPic_5G(kHost, port, kDual, id, 0, 0, 1, 0, nullptr, 1, at.x, at.y, at.width,
                                         at.height, {}, 1, 0, 0, 300, 1, kPicture);
}

int write(Ouint16 port, const std::string& name, const std::vector<Ouint8>& data) {
    return cmd_ofsWriteFile(kHost, port, name.c_str(), kFileType, static_cast<Ouint32>(data.size()), 1,
                            data.data());
}

// What is made of a text by the one program that a process builds at a time; its data file in generation 6.
std::vector<Ouint8> built5(const std::string& text) {
    const HVprogramHeader header{};
    const HVareaHeader area{ePicturesArea, 0, 0, 64, 16};
    HVpageHeader page{};
    page.fontSize = 12, page.color = eRed;
    HVprogram program{};
    program_addProgram(&header);
    program_AddArea(1, &area);
    program_picturesAreaAddTxt(1, text.c_str(), kFont, &page);
    program_IntegrateProgramFile(&program);
    std::vector<Ouint8> file(program.fileAddre, program.fileAddre + program.fileLen);
    program_freeBuffer(&program);
    program_deleteProgram();
    return file;
}

std::vector<Ouint8> built6(const std::string& text) {
    const HVprogramHeader_G6 header{};
    HVareaHeader_G6 area{};
    area.AreaWidth = 64, area.AreaHeight = 16;
    HVpageHeader_G6 page{};
    page.fontSize = 12, page.color = eRed;
    HVprogram_G6 program{};
    program_addProgram_G6(&header);
    program_addArea_G6(1, &area);
    program_picturesAreaAddTxt_G6(1, text.c_str(), kFont, &page);
    program_IntegrateProgramFile_G6(&program);
    std::vector<Ouint8> file(program.dfileAddre, program.dfileAddre + program.dfileLen);
    program_freeBuffer_G6(&program);
    program_deleteProgram_G6();
    return file;
}

class LibraryOwner : public Owner {
  public:
    explicit LibraryOwner(const Place& at) : Owner(at.seed, at.number, at.port, at.generation_5) {}

    void do_something() override {
        using Verb = void (LibraryOwner::*)();
        constexpr Verb kVerbs[] = {
            &LibraryOwner::show,        &LibraryOwner::show,   &LibraryOwner::show_picture,
            &LibraryOwner::remove_area, &LibraryOwner::save,   &LibraryOwner::save,
            &LibraryOwner::remove_file, &LibraryOwner::set,    &LibraryOwner::set,
            &LibraryOwner::ask,         &LibraryOwner::ask,    &LibraryOwner::list,
            &LibraryOwner::build,       &LibraryOwner::measure};
        (this->*kVerbs[random(std::size(kVerbs))])();
    }

  private:
    // Each has a line of the screen, with two areas.
    [[nodiscard]] Ouint8 area() { return static_cast<Ouint8>(2 * place() + random(2)); }
    [[nodiscard]] Rectangle rectangle(Ouint8 id) const {
        return {static_cast<Ouint16>(64 * (id % 2)), static_cast<Ouint16>(12 * place())};
    }

    void show() {
        const Ouint8 id = area();
        keep("area " + std::to_string(id),
             [show = is_of_generation_5() ? show_text5 : show_text6, id, at = rectangle(id),
              text = random_text()](Ouint16 port) { return show(port, id, at, text); });
    }

    void show_picture() {
        const Ouint8 id = area();
        keep("area " + std::to_string(id), [show = is_of_generation_5() ? show_picture5 : show_picture6, id,
                                            at = rectangle(id)](Ouint16 port) { return show(port, id, at); });
    }

    void remove_area() {
        const Ouint8 id = area();
        give_up(
            "area " + std::to_string(id),
            [id, five = is_of_generation_5()](Ouint16 port) {
                return five ? dynamicArea_DelArea_5G(kHost, port, id)
                            : dynamicArea_DelArea_6G(kHost, port, static_cast<Oint8>(id));
            },
            QM_OK);
    }

    void save() {
        const std::string name = file_name(random(kFiles));
        m_sizes[name] = 0;
        const std::vector<Ouint8> data = random_file();
        keep("file " + name, [name, data](Ouint16 port) { return write(port, name, data); });
        m_sizes[name] = data.size();
    }

    void remove_file() {
        const std::string name = file_name(random(kFiles));
        m_sizes.erase(name);
        give_up(
            "file " + name,
            [name](Ouint16 port) { return cmd_ofsDeleteFormatFile(kHost, port, 1, name.c_str()); },
            kNoSuchFile);
    }

    // Every place has settings of its own.
    void set() {
        using Setting = int (*)(Ouint16 port, unsigned value);
        static constexpr Setting kSettings[][2] = {
            {[](Ouint16 port, unsigned value) {
                 Brightness brightness{};
                 std::memset(brightness.HalfHourValue, static_cast<int>(value % 16), 48);
                 return cmd_setBrightness(kHost, port, &brightness);
             },
             [](Ouint16 port, unsigned value) {
                 return qm_set_clock(kHost, port, 2026, 11, static_cast<Ouint8>(1 + value % 30), 10, 20, 30);
             }},
            {[](Ouint16 port, unsigned value) {
                 return cmd_setDelayTime(kHost, port, static_cast<int16_t>(value));
             },
             [](Ouint16 port, unsigned value) {
                 return cmd_setScreenAddress(kHost, port, static_cast<int16_t>(value));
             }},
            {[](Ouint16 port, unsigned value) {
                 return cmd_setDispMode(kHost, port, static_cast<Ouint8>(value));
             },
             [](Ouint16 port, unsigned value) {
                 TimingReset reset{};
                 reset.rstMode = static_cast<Ouint8>(value);
                 return cmd_setTimingReset(kHost, port, &reset);
             }},
            {[](Ouint16 port, unsigned value) {
                 return cmd_setBtnFunc(kHost, port, static_cast<Ouint8>(value));
             },
             [](Ouint16 port, unsigned value) {
                 const std::vector<Ouint8> data(1 + value, static_cast<Ouint8>(value));
                 return cmd_confWriteFile(kHost, port, "C009", 1, static_cast<Ouint32>(data.size()), 1,
                                          data.data());
             }},
        };
        const unsigned which = random(2), value = random(3000);
        keep("setting " + std::to_string(which),
             [setting = kSettings[place()][which], value](Ouint16 port) { return setting(port, value); });
    }

    void ask() {
        static constexpr int (*kQuestions[])(Ouint16) = {
            [](Ouint16 port) {
                Ping_data told{};
                return cmd_tcpPing(kHost, port, &told);
            },
            [](Ouint16 port) {
                ControllerStatus_G56 told{};
                return cmd_check_controllerStatus(kHost, port, &told);
            },
            [](Ouint16 port) {
                NetSearchCmdRet told{};
                return cmd_tcpNetworkSearch_6G(kHost, port, &told);
            },
            [](Ouint16 port) {
                BattleTime told{};
                return cmd_battieTime(kHost, port, 0, &told);
            },
            [](Ouint16 port) {
                Ouint32 told = 0;
                return cmd_getStopwatch(kHost, port, 0, &told);
            },
            [](Ouint16 port) {
                Ouint8 told[8];
                return cmd_readControllerID(kHost, port, told);
            },
            [](Ouint16 port) {
                Ouint32 all = 0, left = 0;
                return cmd_ofsGetMemoryVolume(kHost, port, &all, &left);
            },
        };
        (void)once(kQuestions[random(std::size(kQuestions))]);
    }

    // A listing that has succeeded has the owner's files; but a controller lists one kind of files at a time,
    // and in generation 6 others ask for programs.
    void list() {
        GetDirBlock_G56 directory{};
        directory.fileType = kFileType;
        const int status = once([&](Ouint16 port) { return cmd_ofsReedDirBlock(kHost, port, &directory); });
        std::map<std::string, std::size_t> sizes;
        for (Ouint16 i = 0; i < directory.fileNumber; ++i) {
            FileAttribute_G56 file{};
            cmd_getFileAttr(&directory, i, &file);
            sizes[std::string(file.fileName, 4)] = file.fileLen;
        }
        if (directory.dataAddre) cmd_ofs_freeDirBlock(&directory);
        for (const auto& [name, size] : m_sizes)
            if (status == QM_OK && is_of_generation_5() && (!sizes.contains(name) || sizes[name] != size))
                throw Broken("the listing of controller " + std::to_string(port()) + " has not " + name);
    }

    void build() {
        const std::string text = random_text(), name = file_name(kFiles);
        const std::vector<Ouint8> data = is_of_generation_5() ? built5(text) : built6(text);
        if (data.empty()) throw Broken("a program has no file");
        keep("file " + name, [name, data](Ouint16 port) { return write(port, name, data); });
    }

    void measure() {
        const qm_text_style style{kFont, 12, false, false, MULTILINE, eHorizontal, 0, 1};
        qm_text_extent extent{};
        if (qm_measure_text(random_text().c_str(), &style, 64, 16, &extent) != QM_OK)
            throw Broken("no measure");
    }

    void check(int status) const override {
        const bool documented = (status >= QM_WRONG_ANSWER && status <= QM_TRUNCATED) ||
                                (status >= 101 && status <= 112) || status == 199;
        if (!documented) throw Broken("status " + std::to_string(status));
        if ((*qm_last_error() == 0) != (status == QM_OK))
            throw Broken("status without a reason, or the contrary");
    }

    std::map<std::string, std::size_t> m_sizes; // of the files that are there
};

} // namespace

std::unique_ptr<Owner> library_owner(const Place& place) { return std::make_unique<LibraryOwner>(place); }

} // namespace qm::test
