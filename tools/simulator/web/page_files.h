// The page, built in.
#pragma once

#include <span>
#include <string_view>

namespace qm::sim {

struct PageFile {
    std::string_view name; // index.html
    std::string_view content;
};

[[nodiscard]] std::span<const PageFile> page_files();

} // namespace qm::sim
