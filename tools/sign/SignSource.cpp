#include "SignSource.h"

#include "program_files.h"
#include "program_reading.h"
#include "sign_reading.h"

#include <set>

namespace qm::sign {

void SignSource::read(const std::string& path) {
    m_path = path;
    name_description(path, [&] { m_sign = read_sign(path); });
    read_programs();
    if (areas()) m_areas.read(m_sign.areas, false);
    name_description(path, [this] { require_order(); });
}

void SignSource::read_programs() {
    for (const PlaylistEntry& entry : m_sign.playlist) {
        auto& variants = m_playlist.emplace_back();
        const auto number = static_cast<unsigned>(m_playlist.size());
        for (const std::string& path : entry.programs) {
            variants.emplace_back().read(path, entry.times,
                                         m_sign.number ? std::optional(number) : std::nullopt);
            name_description(path, [&] { (void)generation_for({}, variants.back().program()); });
        }
    }
}

// Controllers play by name. Numbers that end alike share the name of the data file, too.
void SignSource::require_order() const {
    std::string before;
    std::set<std::string> data;
    for (std::size_t i = 0; i < m_playlist.size(); ++i) {
        const unsigned id = m_playlist[i].front().program().id;
        const std::string name = program_name(id);
        const auto refuse = [&](const std::string& why) {
            throw JsonError(m_sign.playlist[i].where + ": " + why);
        };
        for (const ProgramSource& variant : m_playlist[i])
            if (variant.program().id != id)
                refuse("variants have one number, not " + std::to_string(id) + " and " +
                       std::to_string(variant.program().id));
        if (name <= before && m_sign.number) refuse("a playlist that numbers its programs has at most 999");
        if (name <= before)
            refuse(name + " does not come after " + before +
                   " by name, as controllers play; order the numbers, or set \"number\": true");
        if (!data.insert(data_name(name)).second) refuse(name + " has the data file of another program");
        before = name;
    }
}

std::vector<SignProgram> SignSource::programs(const Identity& controller) const {
    std::vector<SignProgram> programs;
    for (std::size_t i = 0; i < m_playlist.size(); ++i) {
        const ProgramSource& source = variant_for(i, controller);
        name_description(source.path(), [&] {
            const FittedProgram& fitted = source.fitted(target_for({}, source.program(), controller));
            programs.push_back({&source, &fitted, &source.files(fitted.screen)});
        });
    }
    return programs;
}

const ProgramSource& SignSource::variant_for(std::size_t entry, const Identity& controller) const {
    const auto& variants = m_playlist[entry];
    if (!m_sign.playlist[entry].has_variants) return variants.front();
    for (const ProgramSource& variant : variants)
        if (is_made_for(variant.program(), controller)) return variant;
    throw UsageError(m_path + ": " + m_sign.playlist[entry].where + ": no variant is for a controller of " +
                     "generation " + std::to_string(controller.type.generation) + " with " +
                     to_string(controller.screen) + " pixels, " + word_for(kScreenColors, controller.color));
}

} // namespace qm::sign
