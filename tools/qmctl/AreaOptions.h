// What the verbs that fill a dynamic area have in common: where on the screen, how it appears, looks and
// sounds.
#pragma once

#include "Verb.h"
#include "arguments.h"
#include "sign/AreaSource.h"
#include "sign/ProgramSource.h"

namespace qm::ctl {

// Throws UsageError for a port to which the library sends no dynamic areas and no speech.
void require_area_port(const NamedController& target);

// One of dynamic areas or speech.
class AreaVerb : public Verb {
  public:
    void check(const NamedController& target) const final { require_area_port(target); }
};

// Throws UsageError for speech where the generation has none.
void require_voice(const std::vector<Area>& areas, const Screen& screen);

// Shows areas, after that.
void show_areas(const Session& session, const std::vector<Area>& areas, const Screen& screen,
                const std::optional<ProgramNumbers>& programs);

// Says on standard error how texts are not drawn as they were meant; when that is not allowed, throws Failure
// instead.
class Remarks {
  public:
    void add_to(ArgumentList& command) {
        command.add_flag(
            "--strict", m_strict,
            "Fail, and send nothing, when a text is cut, or a font is not installed or has no such\n"
            "character");
    }
    void tell(const Session& session, std::span<const std::string> remarks) const;
    // Those of a program; what its generation does not have is only noted, perhaps with the program's name.
    void tell(const Session& session, const FittedProgram& fitted, const std::string& name = "") const;

  private:
    bool m_strict = false;
};

void add_program_option(ArgumentList& command, std::optional<ProgramNumbers>& programs);
void add_text_options(ArgumentList& command, TextStyle& style);
void add_speech_options(ArgumentList& command, Speech& speech);
[[nodiscard]] std::string read_speech(const std::string& text); // of a length that can be sent

// How many pages each text makes, and the remarks on them.
Report& add_texts(Report& report, const DrawnTexts& texts);

class AreaOptions {
  public:
    // The number that the area has when no other is asked for.
    explicit AreaOptions(unsigned id = 0) : m_id(id) {}
    void add_to(ArgumentList& command);

    [[nodiscard]] Ouint8 id() const { return static_cast<Ouint8>(m_id); }
    // Puts the area where it is to be, on the screen that the controller's ping tells.
    [[nodiscard]] Screen place(const Session& session, Area& area) const;
    // Shows it there; a report that begins with that.
    [[nodiscard]] Report show(const Session& session, const Area& area, const Screen& screen) const;

  private:
    unsigned m_id;
    std::optional<Rect> m_rect;
    std::optional<unsigned> m_color;
    unsigned m_mode = Effect().mode; // or kRun
    Effect m_effect;
    std::optional<ProgramNumbers> m_programs;
};

} // namespace qm::ctl
