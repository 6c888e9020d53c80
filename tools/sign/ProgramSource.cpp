#include "ProgramSource.h"

#include "program_reading.h"

namespace qm::sign {

void ProgramSource::read(const std::string& path) { read(path, {}, {}); }

void ProgramSource::read(const std::string& path, const PlayTimes& times, std::optional<unsigned> id) {
    m_path = path;
    name_description(path, [&] {
        m_program = read_program(path);
        require_drawable(m_program);
    });
    times.replace(m_program.rules);
    m_program.id = id.value_or(m_program.id);
}

const FittedProgram& ProgramSource::fitted(const Screen& screen) const {
    return m_fitted.get(kind_of(screen), [&] {
        return name_description(m_path, [&] {
            FittedProgram fitted{m_program, screen, {}, {}};
            fitted.notes = fit_to(fitted.program, screen);
            fitted.texts = drawn_texts(fitted.program.areas, screen.size);
            fitted.texts.remarks.insert(fitted.texts.remarks.begin(), fitted.notes.begin(),
                                        fitted.notes.end());
            return fitted;
        });
    });
}

const std::vector<File>& ProgramSource::files(const Screen& screen) const {
    const FittedProgram& made = fitted(screen);
    return m_files.get(kind_of(screen), [&] {
        return name_description(m_path, [&] { return ProgramBuilder(made.program, made.screen).files(); });
    });
}

ProgramSource::Kind ProgramSource::kind_of(const Screen& screen) {
    return {screen.type, screen.color, screen.wiring, screen.size.width, screen.size.height};
}

} // namespace qm::sign
