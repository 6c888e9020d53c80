#include "program_files.h"

#include "ProgramBuilder.h"
#include "errors.h"

#include <algorithm>

namespace qm::sign {
namespace {

constexpr std::uint8_t kProgramType = 0, kDataType = 9;
constexpr unsigned kFirstOfFour = 1000; // from here on a number fills the name

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool has_number(const std::string& name) {
    return name.size() == 4 && std::all_of(name.begin() + 1, name.end(), is_digit);
}

} // namespace

std::string program_name(unsigned id) {
    const std::string digits = std::to_string(id);
    return id < kFirstOfFour ? "P" + std::string(3 - digits.size(), '0') + digits : digits;
}

std::string data_name(const std::string& program) { return "D" + program.substr(1); }

FileEntry entry_of(const File& file) {
    return {file.name, file.type, static_cast<std::uint32_t>(file.bytes.size()), crc_at_end(file.bytes)};
}

bool is_program(const FileEntry& file) {
    if (file.type != kProgramType || !has_number(file.name)) return false;
    return file.name.front() == 'P' || (is_digit(file.name.front()) && file.name.front() != '0');
}

bool is_data(const FileEntry& file) {
    return file.type == kDataType && has_number(file.name) && file.name.front() == 'D';
}

std::vector<FileEntry> list_program_files(const Controller& controller, const Identity& identity) {
    std::vector<std::uint8_t> types{kProgramType};
    if (identity.type.generation != 5) types.push_back(kDataType);
    return require(controller.files(types), "listing the programs");
}

} // namespace qm::sign
