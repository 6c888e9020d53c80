// Words for codes.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace qm::options {

struct Name {
    const char* word;
    unsigned code;
};
using Names = std::span<const Name>;

inline constexpr Name kScreenColors[] = {{"single", 1}, {"double", 2}, {"three", 3}, {"full", 4}};

[[nodiscard]] std::optional<unsigned> to_code(Names names, std::string_view word);
// The word for code, or "unknown (9)".
[[nodiscard]] std::string word_for(Names names, unsigned code);

// "left, center, right"
template <class Words> std::string joined(const Words& words) {
    std::string text;
    for (const auto& word : words) text.append(text.empty() ? "" : ", ").append(word);
    return text;
}
[[nodiscard]] std::string list(Names names);

} // namespace qm::options
