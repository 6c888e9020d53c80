// A controller at an address, and what it can be asked to do.
#pragma once

#include "areas.hpp"

namespace qm {

// Names an address and holds no connection: every call makes one of its own, waits for the answer, and may be
// made from any thread. Calls fail, wait and print as the calls of qm_sdk_dual.h that they make; a value that
// no field holds is an error before anything is sent.
class Controller {
  public:
    explicit Controller(std::string ip = "127.0.0.1", std::uint16_t port = 5005)
        : m_ip(std::move(ip)), m_port(port) {}

    [[nodiscard]] const std::string& ip() const { return m_ip; }
    [[nodiscard]] std::uint16_t port() const { return m_port; }
    [[nodiscard]] std::string address() const { return m_ip + ":" + std::to_string(m_port); }

    // Any call of the C interface that begins with ip and port: call(cmd_setDispMode, 3).
    template <class Port, class... Parameters, class... Arguments>
    Result<> call(int (*function)(const char*, Port, Parameters...), Arguments... arguments) const {
        if (!(detail::fits<Parameters>(arguments) && ...)) return too_large();
        return Result<>::of(function(m_ip.c_str(), m_port, static_cast<Parameters>(arguments)...));
    }

    [[nodiscard]] Result<Identity> ping() const {
        Ping_data record{};
        return give(call(cmd_tcpPing, &record), [&] { return detail::identity_of(record); });
    }
    // A longer answer than is known is an error, QM_TRUNCATED; cmd_check_controllerStatus delivers what fits.
    [[nodiscard]] Result<ControllerStatus> status() const {
        ControllerStatus_G56 record{};
        return give(call(cmd_check_controllerStatus, &record), [&] { return detail::status_of(record); });
    }

    // ---- Areas, which are shown at once

    // Shows a text in the whole screen, in the largest size that fits.
    Result<> show(const std::string& text) const {
        Area area;
        area.text = text;
        return show(area);
    }
    // Asks the controller for its screen first.
    Result<> show(const Area& area) const {
        const auto identity = ping();
        return identity ? show({area}, Screen::of(*identity)) : Result<>(identity.error());
    }
    // For a screen that is known. Without programs the areas are shown at once; with them, together with
    // these, without interrupting what is being played. Areas of generation 5 do not speak.
    Result<> show(const std::vector<Area>& areas, const Screen& screen,
                  const std::optional<ProgramNumbers>& programs = std::nullopt) const {
        return detail::AreaSender(m_ip.c_str(), m_port, screen, programs).send(areas);
    }
    // Removes areas by their numbers, at most 127, or all when there are none.
    Result<> remove_areas(const std::vector<std::uint8_t>& ids, unsigned generation) const {
        std::vector<Oint8> numbers(ids.begin(), ids.end());
        const std::ptrdiff_t count = ids.empty() ? -1 : static_cast<std::ptrdiff_t>(ids.size());
        if (ids.empty()) numbers.push_back(-1); // which is not read
        return call(generation == 5 ? dynamicArea_DelAreaS_5G : dynamicArea_DelAreas_6G, count,
                    numbers.data());
    }
    // Speaks a text; generation 6. The flags are VoiceFlg and StoreFlag of the speech unit.
    Result<> speak(const Speech& speech, unsigned voice_flag = 0, unsigned store_flag = 0) const {
        return call(dynamicArea_InsertSoundIndepend, HVSoundDepend_6G{0, detail::sound_of(speech)},
                    voice_flag, store_flag);
    }
    // Replaces entries of the list of voices, 1 to 255; generation 6.
    Result<> replace_voices(const std::vector<VoiceEntry>& entries, unsigned store_flag = 0) const {
        if (entries.size() > 0xFF) return too_large();
        std::vector<HVSoundDepend_6G> records;
        for (const VoiceEntry& entry : entries) records.push_back({entry.id, detail::sound_of(entry.speech)});
        return call(dynamicArea_UpdateSoundIndepend, records.data(), records.size(), store_flag);
    }

    // ---- Light and clock

    Result<> switch_screen(bool on) const { return call(cmd_coerceOnOff, on); }
    // By timer, in place of the one that was set. Periods must not overlap; 1 to 255.
    Result<> switch_screen(const std::vector<OnPeriod>& periods) const {
        std::vector<Ouint8> data;
        for (const OnPeriod& p : periods)
            data.insert(data.end(), {p.on_hour, p.on_minute, p.off_hour, p.off_minute});
        return call(cmd_timingOnOff, periods.size(), data.data());
    }
    Result<> cancel_timer() const { return call(cmd_cancelTimingOnOff); }
    // Of the whole day, 0 to 255; controllers take 0 to 15 as a rule.
    Result<> set_brightness(std::uint8_t level) const {
        std::array<std::uint8_t, 48> levels{};
        levels.fill(level);
        return set_brightness(levels, 0);
    }
    // By the clock, a level for each half hour of the day.
    Result<> set_brightness(const std::array<std::uint8_t, 48>& levels) const {
        return set_brightness(levels, 1);
    }
    // To this host's local time.
    Result<> set_clock() const { return call(cmd_check_time); }
    Result<> set_clock(const Time& time) const {
        return call(qm_set_clock, time.date.year, time.date.month, time.date.day, time.hour, time.minute,
                    time.second);
    }
    Result<> restart() const { return call(cmd_sysReset); }

    // ---- Files

    // A listing that breaks off is an error.
    [[nodiscard]] Result<std::vector<FileEntry>> files(std::uint8_t type = 0) const {
        return files(std::vector{type});
    }
    // Of several types, at most 255, on one connection.
    [[nodiscard]] Result<std::vector<FileEntry>> files(const std::vector<std::uint8_t>& types) const {
        Listings listings(types);
        return give(call(qm_list_files, listings.records.data(), types.size()),
                    [&] { return listings.files(); });
    }
    // Writes a file, in place of the one of its name unless that is to be kept, which then is a refusal.
    Result<> write(const File& file, bool overwrite = true) const {
        if (file.name.size() != 4) return no_name(file.name);
        return call(cmd_ofsWriteFile, file.name.c_str(), file.type, file.bytes.size(), overwrite,
                    file.bytes.data());
    }
    // Writes files as one transfer, which ends in any case. What watch(file) returns, if anything, lives
    // while a file is written. Files may be a vector of references to them, too.
    template <class Files = std::vector<File>, class Watch>
    Result<> upload(const Files& files, Watch watch) const {
        for (const File& file : files)
            if (file.name.size() != 4) return no_name(file.name);
        const auto announced = in_step("announcing the transfer", call(cmd_ofsStartFileTransf));
        if (!announced) return announced;
        Result<> written;
        try {
            for (const File& file : files) {
                written = in_step("writing " + file.name, write_watched(file, watch));
                if (!written) break;
            }
        } catch (...) {
            (void)call(cmd_ofsEndFileTransf);
            throw;
        }
        const auto ended = in_step("ending the transfer", call(cmd_ofsEndFileTransf));
        return written ? ended : written;
    }
    Result<> upload(const std::vector<File>& files) const {
        return upload(files, [](const File&) {});
    }
    Result<> remove_files(const std::vector<std::string>& names) const {
        std::string all;
        for (const std::string& name : names) {
            if (name.size() != 4) return no_name(name);
            all += name;
        }
        return call(cmd_ofsDeleteFormatFile, names.size(), all.c_str());
    }
    [[nodiscard]] Result<Volume> volume() const {
        Volume volume;
        return give(call(cmd_ofsGetMemoryVolume, &volume.total, &volume.available), [&] { return volume; });
    }
    // Erases all files.
    Result<> format() const { return call(cmd_ofsFormat); }

  private:
    static Error too_large() { return {QM_FAILED, "An argument is too large for its field."}; }
    static Error no_name(const std::string& name) {
        return {QM_FAILED, "\"" + name + "\" is no name of 4 characters."};
    }
    template <class Watch> Result<> write_watched(const File& file, Watch& watch) const {
        if constexpr (std::is_void_v<decltype(watch(file))>) {
            watch(file);
            return write(file);
        } else {
            [[maybe_unused]] const auto watching = watch(file);
            return write(file);
        }
    }
    static Result<> in_step(const std::string& step, const Result<>& done) {
        return done ? done : Result<>(Error{done.error().status, done.error().reason, step});
    }
    template <class Make> static auto give(const Result<>& done, Make make) -> Result<decltype(make())> {
        if (!done) return done.error();
        return make();
    }

    Result<> set_brightness(const std::array<std::uint8_t, 48>& levels, Ouint8 mode) const {
        Brightness record{};
        record.BrightnessMode = mode;
        std::copy(levels.begin(), levels.end(), record.HalfHourValue);
        return call(cmd_setBrightness, &record);
    }

    // Released at their end.
    struct Listings {
        explicit Listings(const std::vector<std::uint8_t>& types) {
            for (const std::uint8_t type : types) records.push_back({type, 0, nullptr});
        }
        ~Listings() {
            for (GetDirBlock_G56& record : records) cmd_ofs_freeDirBlock(&record);
        }
        Listings(const Listings&) = delete;
        Listings& operator=(const Listings&) = delete;

        [[nodiscard]] std::vector<FileEntry> files() const {
            std::vector<FileEntry> files;
            for (const GetDirBlock_G56& record : records)
                for (unsigned i = 0; i < record.fileNumber; ++i) {
                    FileAttribute_G56 entry{};
                    cmd_getFileAttr(&record, detail::u16(i), &entry);
                    files.push_back(
                        {detail::text_of(entry.fileName), entry.fileType, entry.fileLen, entry.fileCRC});
                }
            return files;
        }

        std::vector<GetDirBlock_G56> records{};
    };

    std::string m_ip;
    std::uint16_t m_port;
};

// Looks for a controller whose address is not known, by broadcast: see cmd_searchController.
[[nodiscard]] inline Result<Identity> search() {
    Ping_data record{};
    if (const int status = cmd_searchController(&record); status != QM_OK) return Error::last(status);
    return detail::identity_of(record);
}

} // namespace qm
