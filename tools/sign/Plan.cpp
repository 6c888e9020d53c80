#include "Plan.h"

#include "program_files.h"

#include <algorithm>

namespace qm::sign {
namespace {

bool same_file(const FileEntry& a, const FileEntry& b) { return a.name == b.name && a.type == b.type; }

FileState state_of(const FileEntry& wanted, const std::vector<FileEntry>& held) {
    const auto found =
        std::ranges::find_if(held, [&](const FileEntry& one) { return same_file(one, wanted); });
    if (found == held.end()) return FileState::fresh;
    const bool same = found->size == wanted.size && found->checksum == wanted.checksum;
    return same ? FileState::unchanged : FileState::changed;
}

bool has_room(const Controller& controller, const std::vector<std::reference_wrapper<const File>>& files) {
    std::uint64_t size = 0;
    for (const File& file : files) size += file.bytes.size();
    return require(controller.volume(), "asking for the room").available >= size;
}

} // namespace

bool Plan::anything_to_do() const {
    return std::ranges::any_of(settings, [](const Setting& s) { return s.state == SettingState::differs; }) ||
           std::ranges::any_of(files, [](const PlannedFile& file) {
               return file.state != FileState::unchanged && file.state != FileState::kept;
           });
}

std::vector<std::reference_wrapper<const File>> Plan::writes() const {
    std::vector<std::reference_wrapper<const File>> writes;
    for (const PlannedFile& file : files)
        if (file.state == FileState::fresh || file.state == FileState::changed)
            writes.emplace_back(*file.content);
    return writes;
}

std::vector<std::string> Plan::deletes() const {
    std::vector<std::string> names;
    for (const PlannedFile& file : files)
        if (file.state == FileState::deleted) names.push_back(file.entry.name);
    return names;
}

std::vector<Setting> Plan::changes() const {
    std::vector<Setting> changes;
    std::ranges::copy_if(settings, std::back_inserter(changes),
                         [](const Setting& setting) { return setting.state != SettingState::same; });
    return changes;
}

std::vector<PlannedFile> plan_files(const std::vector<SignProgram>& programs,
                                    const std::vector<FileEntry>& held, bool prune) {
    std::vector<PlannedFile> files;
    for (const SignProgram& program : programs)
        for (const File& file : *program.files)
            files.push_back({state_of(entry_of(file), held), entry_of(file), program.source->path(), &file});
    const auto wanted = files.size();
    for (const FileEntry& one : held) {
        const auto end = files.begin() + static_cast<std::ptrdiff_t>(wanted);
        const bool ours = std::any_of(files.begin(), end,
                                      [&](const PlannedFile& file) { return same_file(file.entry, one); });
        if (!ours && (is_program(one) || is_data(one)))
            files.push_back({prune ? FileState::deleted : FileState::kept, one});
    }
    return files;
}

Plan plan_for(const SignSource& source, const std::vector<SignProgram>& programs,
              const Controller& controller, const Identity& identity) {
    Plan plan{source.sign().has_playlist, {}, {}};
    if (plan.has_playlist)
        plan.files = plan_files(programs, list_program_files(controller, identity), source.sign().prune);
    if (has_settings(source.sign()))
        plan.settings = settings_of(source.sign(), require(controller.status(), "asking for the status"));
    return plan;
}

void carry_out(const Plan& plan, const Controller& controller,
               const std::function<std::shared_ptr<void>(const File&)>& watch) {
    const auto writes = plan.writes();
    const auto names = plan.deletes();
    const auto remove = [&] { require(controller.remove_files(names), "deleting " + joined(names)); };
    const bool no_room = !names.empty() && !writes.empty() && !has_room(controller, writes);
    if (no_room) remove();
    if (!writes.empty())
        require(controller.upload(writes, watch));
    else if (plan.has_playlist)
        require(controller.call(cmd_ofsEndFileTransf), "ending the transfer");
    if (!names.empty() && !no_room) remove();
    for (const Setting& setting : plan.changes()) require(setting.set(controller), "setting " + setting.name);
}

} // namespace qm::sign
