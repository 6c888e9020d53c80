// What it takes to make a controller what its sign wants.
#pragma once

#include "Setting.h"
#include "SignSource.h"

#include <functional>

namespace qm::sign {

enum class FileState { fresh, changed, unchanged, deleted, kept };
inline constexpr Name kFileStates[] = {
    {"new", 0}, {"changed", 1}, {"unchanged", 2}, {"to be deleted", 3}, {"kept, not in the sign", 4}};

struct PlannedFile {
    FileState state;
    FileEntry entry;               // as it is to be; one that the sign does not have, as it is
    std::string program{};         // path of its description
    const File* content = nullptr; // of the sign's, whose source keeps it
};

struct Plan {
    bool has_playlist = true; // else files are not looked at
    std::vector<PlannedFile> files;
    std::vector<Setting> settings;

    // Settings that are unknown do not count.
    [[nodiscard]] bool anything_to_do() const;
    // What differs, in the order in which it should be written.
    [[nodiscard]] std::vector<std::reference_wrapper<const File>> writes() const;
    [[nodiscard]] std::vector<std::string> deletes() const;
    // Settings that differ or are unknown.
    [[nodiscard]] std::vector<Setting> changes() const;
};

// The files of programs, beside those that the controller lists. Of the others, those that are named as files
// of programs are to be deleted, if that is wanted.
[[nodiscard]] std::vector<PlannedFile> plan_files(const std::vector<SignProgram>& programs,
                                                  const std::vector<FileEntry>& held, bool prune);

// Asks a controller that has said who it is, and only what the sign has to do with.
[[nodiscard]] Plan plan_for(const SignSource& source, const std::vector<SignProgram>& programs,
                            const Controller& controller, const Identity& identity);

// Does it in one transfer, deletes after it or, where there is no room, before; what watch(file) returns
// lives while a file is written. With nothing to write, a transfer that was broken off is ended. Throws
// Failure.
void carry_out(const Plan& plan, const Controller& controller,
               const std::function<std::shared_ptr<void>(const File&)>& watch);

} // namespace qm::sign
