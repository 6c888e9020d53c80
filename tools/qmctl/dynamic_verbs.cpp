// Verbs for dynamic areas beyond text and picture: several at once, deletion, and speech.
#include "AreaOptions.h"

namespace qm::ctl {
namespace {

class SendAreas : public AreaVerb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE", m_path, "", "Description of a program, in JSON", read_path).required();
        add_program_option(command, m_programs);
        m_remarks.add_to(command);
    }
    void prepare() override { m_areas.read(m_path, m_programs.has_value()); }
    Report run(const Session& session) const override {
        const Screen screen = Screen::of(require(session.controller.ping()));
        const auto& [areas, texts] = m_areas.fitted(screen);
        m_remarks.tell(session, texts.remarks);
        show_areas(session, areas, screen, m_programs);
        Report report = session.report();
        return add_texts(report.add("Areas", "areas", m_areas.ids()), texts);
    }

  private:
    std::string m_path;
    std::optional<ProgramNumbers> m_programs;
    AreaSource m_areas;
    Remarks m_remarks;
};

class RemoveAreas : public AreaVerb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "N", m_ids, 100, "Numbers of areas, or all", [](const std::string& text) -> int {
            if (text == "all") return kAll;
            return static_cast<int>(read_number(text, 0, 255));
        });
    }
    void prepare() override {
        m_all = std::find(m_ids.begin(), m_ids.end(), kAll) != m_ids.end();
        if (m_all && m_ids.size() > 1) throw UsageError("expected numbers of areas or all, not both");
    }
    Report run(const Session& session) const override {
        const Identity identity = require(session.controller.ping());
        std::vector<Ouint8> ids;
        if (!m_all) ids.assign(m_ids.begin(), m_ids.end());
        require(session.controller.remove_areas(ids, identity.type.generation));
        if (m_all) return session.report().add("Deleted", "all areas", "deleted", "all");
        return session.report().add("Deleted", "deleted", m_ids);
    }

  private:
    static constexpr int kAll = -1;
    std::vector<int> m_ids;
    bool m_all = false;
};

class Say : public AreaVerb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "TEXT", m_speech.text, "", "What to say", read_speech).required();
        add_number(command, "--flag", m_flag, 0, 255, "VoiceFlg of the speech unit (default 0)");
        add_number(command, "--store", m_store, 0, 255, "StoreFlag of the speech unit (default 0)");
        add_speech_options(command, m_speech);
    }
    Report run(const Session& session) const override {
        require(session.controller.speak(m_speech, m_flag, m_store));
        return session.report().add("Says", "text", m_speech.text);
    }

  private:
    unsigned m_flag = 0, m_store = 0;
    Speech m_speech;
};

class UpdateSounds : public AreaVerb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(
            command, "ENTRY", m_entries, 255, "N=TEXT: its number, and the text to speak for it",
            [](const std::string& text) {
                const std::size_t equals = text.find('=');
                if (equals == std::string::npos) expected("N=TEXT");
                const unsigned voice = read_number(text.substr(0, equals), 0, 255);
                return VoiceEntry{static_cast<Ouint8>(voice), {.text = read_speech(text.substr(equals + 1))}};
            });
        add_number(command, "--store", m_store, 0, 255, "StoreFlag of the speech unit (default 0)");
        add_speech_options(command, m_speech);
    }
    Report run(const Session& session) const override {
        nlohmann::ordered_json texts;
        std::vector<VoiceEntry> entries = m_entries;
        for (VoiceEntry& entry : entries) {
            texts[std::to_string(entry.id)] = entry.speech.text;
            Speech speech = m_speech;
            speech.text = entry.speech.text;
            entry.speech = std::move(speech);
        }
        require(session.controller.replace_voices(entries, m_store));
        return session.report().add("Sounds", "sounds", texts);
    }

  private:
    std::vector<VoiceEntry> m_entries;
    unsigned m_store = 0;
    Speech m_speech;
};

constexpr VerbEntry kDynamicVerbs[] = {
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

Family dynamic_verbs() { return kDynamicVerbs; }

} // namespace qm::ctl
