#include "Plan.h"

#include "program_files.h"

#include <algorithm>

namespace qm::sign {
namespace {

FileEntry entry_of(const File& file) {
    return {file.name, file.type, static_cast<std::uint32_t>(file.bytes.size()), crc_at_end(file.bytes)};
}

bool same_file(const FileEntry& a, const FileEntry& b) { return a.name == b.name && a.type == b.type; }

FileState state_of(const FileEntry& wanted, const std::vector<FileEntry>& held) {
    const auto found =
        std::ranges::find_if(held, [&](const FileEntry& one) { return same_file(one, wanted); });
    if (found == held.end()) return FileState::fresh;
    const bool same = found->size == wanted.size && found->checksum == wanted.checksum;
    return same ? FileState::unchanged : FileState::changed;
}

} // namespace

bool Plan::anything_to_do() const {
    return std::ranges::any_of(settings, [](const Setting& s) { return s.state == SettingState::differs; }) ||
           std::ranges::any_of(files, [](const PlannedFile& file) {
               return file.state != FileState::unchanged && file.state != FileState::kept;
           });
}

std::vector<File> Plan::writes() const {
    std::vector<File> writes;
    for (const PlannedFile& file : files)
        if (file.state == FileState::fresh || file.state == FileState::changed)
            writes.push_back(*file.content);
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
    const std::vector<FileEntry> held = list_program_files(controller, identity);
    Plan plan{plan_files(programs, held, source.sign().prune), {}};
    if (has_settings(source.sign()))
        plan.settings = settings_of(source.sign(), require(controller.status(), "asking for the status"));
    return plan;
}

void carry_out(const Plan& plan, const Controller& controller,
               const std::function<std::shared_ptr<void>(const File&)>& watch) {
    if (const auto writes = plan.writes(); !writes.empty())
        require(controller.upload(writes, watch));
    else
        require(controller.call(cmd_ofsEndFileTransf), "ending the transfer");
    if (const auto names = plan.deletes(); !names.empty())
        require(controller.remove_files(names), "deleting " + joined(names));
    for (const Setting& setting : plan.changes()) require(setting.set(controller), "setting " + setting.name);
}

} // namespace qm::sign
