// Verbs for dynamic areas beyond text and picture: several at once, deletion, and speech.
#include "AreaSending.h"
#include "JsonReader.h"
#include "Speech.h"
#include "Verb.h"
#include "device_arguments.h"

namespace qm::ctl {
namespace {

// What no dynamic area can be is refused.
void require_dynamic(const Area& area, bool with_programs) {
    const auto refuse = [&](const std::string& why) { throw JsonError(area.where + ": " + why); };
    if (area.id > 0xFF) refuse("a dynamic area has a number from 0 to 255");
    if (area.border) refuse("a dynamic area has no border");
    if (area.background_flag || area.transparency || area.equal)
        refuse("a dynamic area has no background_flag, transparency or equal");
    if (area.text.empty() == area.pictures.empty() || area.pictures.size() > 1)
        refuse("a dynamic area has either a text or one picture");
    if (with_programs && area.sound && area.text.empty())
        refuse("a picture with speech cannot be related to programs");
}

// An area of the description in path as a dynamic one.
AreaContent content_of(const Area& area, const Screen& screen, const std::string& path) {
    AreaContent content;
    content.id = static_cast<Ouint8>(area.id);
    content.rect = area_rect(area.rect, screen, path + ": " + area.where + ".rect");
    content.speech = area.sound;
    const Effect& effect = area.pictures.empty() ? area.effect : area.pictures.front().effect;
    effect.apply_to(content.page);
    content.page.ValidLen = content.rect.width;
    if (area.pictures.empty()) {
        content.text = area.text;
        content.font = area.style.font;
        area.style.apply_to(content.page, area.text, content.rect, effect.running());
    } else {
        content.picture = area.pictures.front().picture.path;
    }
    return content;
}

class SendAreas : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE", m_path, "", "Description of a program, in JSON", read_path).required();
        m_programs.add_to(command);
    }
    void prepare(const Session& session) override {
        require_area_port(session);
        try {
            m_description = read_program(m_path);
            for (const Area& area : m_description.areas)
                require_dynamic(area, m_programs.value().has_value());
        } catch (const std::runtime_error& wrong) {
            throw UsageError(m_path + ": " + wrong.what());
        }
        if (m_description.areas.empty()) throw UsageError(m_path + ": areas: expected at least one");
    }
    void run(Session& session) override {
        const Screen screen = screen_of(session.ping());
        std::vector<AreaContent> areas;
        nlohmann::ordered_json ids;
        std::string words;
        for (const Area& area : m_description.areas) {
            areas.push_back(content_of(area, screen, m_path));
            ids.push_back(area.id);
            words += (words.empty() ? "" : ", ") + std::to_string(area.id);
        }
        send_areas(session.controller, screen, areas, m_programs.value());
        Result result = session.result();
        result.add("Areas", words, "areas", ids);
        session.print(result);
    }

  private:
    std::string m_path;
    ProgramOption m_programs;
    ProgramDescription m_description;
};

class RemoveAreas : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "N", m_ids, 100, "Numbers of areas, or all", [](const std::string& text) -> int {
            if (text == "all") return kAll;
            return static_cast<int>(read_number(text, 0, 255));
        });
    }
    void prepare(const Session& session) override {
        require_area_port(session);
        m_all = std::find(m_ids.begin(), m_ids.end(), kAll) != m_ids.end();
        if (m_all && m_ids.size() > 1) throw UsageError("expected numbers of areas or all, not both");
    }
    void run(Session& session) override {
        const bool five = generation_of(session.ping().ControllerType) == 5;
        const char* ip = session.controller.ip.c_str();
        std::vector<Oint8> ids;
        for (const int id : m_ids) ids.push_back(static_cast<Oint8>(id));
        const auto several = five ? dynamicArea_DelAreaS_5G : dynamicArea_DelAreas_6G;
        const auto count = static_cast<Oint8>(m_all ? kAll : static_cast<int>(ids.size()));
        Session::require(several(ip, session.controller.port, count, ids.data()));
        Result result = session.result();
        std::string words;
        for (const int id : m_ids) words += (words.empty() ? "" : ", ") + std::to_string(id);
        result.add("Deleted", m_all ? "all areas" : words, "deleted",
                   m_all ? nlohmann::ordered_json("all") : nlohmann::ordered_json(m_ids));
        session.print(result);
    }

  private:
    static constexpr int kAll = -1;
    std::vector<int> m_ids;
    bool m_all = false;
};

HVSoundDepend_6G entry_of(unsigned voice, const Sound& sound) {
    return {static_cast<Ouint8>(voice), record_of(sound)};
}

class Say : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "TEXT", m_text, "", "What to say", read_speech).required();
        add_number(command, "--flag", m_flag, 0, 255, "VoiceFlg of the speech unit (default 0)");
        add_number(command, "--store", m_store, 0, 255, "StoreFlag of the speech unit (default 0)");
        m_speech.add_to(command);
    }
    void prepare(const Session& session) override { require_area_port(session); }
    void run(Session& session) override {
        const Sound sound = m_speech.sound(m_text);
        Session::require(dynamicArea_InsertSoundIndepend(
            session.controller.ip.c_str(), session.controller.port, entry_of(0, sound),
            static_cast<Ouint8>(m_flag), static_cast<Ouint8>(m_store)));
        Result result = session.result();
        result.add("Says", "text", m_text);
        session.print(result);
    }

  private:
    std::string m_text;
    unsigned m_flag = 0, m_store = 0;
    SpeechOptions m_speech;
};

class UpdateSounds : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "ENTRY", m_entries, 255, "N=TEXT: its number, and the text to speak for it",
                   [](const std::string& text) {
                       const std::size_t equals = text.find('=');
                       if (equals == std::string::npos) expected("N=TEXT");
                       return Entry{read_number(text.substr(0, equals), 0, 255),
                                    read_speech(text.substr(equals + 1))};
                   });
        add_number(command, "--store", m_store, 0, 255, "StoreFlag of the speech unit (default 0)");
        m_speech.add_to(command);
    }
    void prepare(const Session& session) override { require_area_port(session); }
    void run(Session& session) override {
        std::vector<Sound> sounds;
        for (const Entry& entry : m_entries) sounds.push_back(m_speech.sound(entry.text));
        std::vector<HVSoundDepend_6G> records;
        nlohmann::ordered_json texts;
        std::string words;
        for (std::size_t i = 0; i < sounds.size(); ++i) {
            records.push_back(entry_of(m_entries[i].voice, sounds[i]));
            texts[std::to_string(m_entries[i].voice)] = m_entries[i].text;
            words += (words.empty() ? "" : ", ") + std::to_string(m_entries[i].voice);
        }
        Session::require(dynamicArea_UpdateSoundIndepend(
            session.controller.ip.c_str(), session.controller.port, records.data(),
            static_cast<Ouint16>(records.size()), static_cast<Ouint8>(m_store)));
        Result result = session.result();
        result.add("Sounds", words, "sounds", texts);
        session.print(result);
    }

  private:
    struct Entry {
        unsigned voice;
        std::string text;
    };
    std::vector<Entry> m_entries;
    unsigned m_store = 0;
    SpeechOptions m_speech;
};

constexpr VerbEntry kVerbs[] = {
    {"area send", "Show the areas of a description at once",
     "Example:\n  qmctl area send examples/areas/areas.json\n"
     "The file is a description as program build takes it. Each area has a text or one picture and\n"
     "no border; what is said of the program itself makes no difference.",
     make_verb<SendAreas>},
    {"area rm", "Delete dynamic areas",
     "Examples:\n  qmctl area rm 3\n  qmctl area rm 1 2\n  qmctl area rm all", make_verb<RemoveAreas>},
    {"say", "Speak a text", "Example:\n  qmctl say --volume 8 'Gate 4 is open'\nGeneration 6 only.",
     make_verb<Say>},
    {"sound update", "Replace entries of the list of voices",
     "Example:\n  qmctl sound update 1=Hello '2=Please wait'\nGeneration 6 only.", make_verb<UpdateSounds>}};

} // namespace

Family dynamic_verbs() { return kVerbs; }

} // namespace qm::ctl
