#include "hex.h"

#include <cstdio>
#include <sstream>

namespace qm::test {

ByteBuffer hex(std::string_view text) {
    std::istringstream words{std::string(text)};
    ByteBuffer out;
    for (std::string word; words >> word;) {
        const auto star = word.find('*');
        const std::size_t count = star == word.npos ? 1 : std::stoul(word.substr(star + 1));
        out.insert(out.end(), count, static_cast<Ouint8>(std::stoul(word.substr(0, star), nullptr, 16)));
    }
    return out;
}

std::string hex_text(Bytes bytes) {
    std::string out;
    for (const Ouint8 b : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02X ", b);
        out += digits;
    }
    if (!out.empty()) out.pop_back();
    return out;
}

} // namespace qm::test
