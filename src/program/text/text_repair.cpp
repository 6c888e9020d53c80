#include "program/text/text_repair.h"

namespace qm {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// A first byte, how long its sequence is, and the range of its second byte, which is what keeps overlong
// forms, surrogates and values past U+10FFFF out.
struct Lead {
    unsigned char from, to, length, secondFrom, secondTo;
};
constexpr Lead kLeads[] = {
    {0x00, 0x7F, 1, 0, 0},       {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

unsigned char byte_at(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

struct Sequence {
    std::size_t length; // bytes that belong together
    bool valid;
};

Sequence sequence_at(std::string_view text) {
    const unsigned char first = byte_at(text, 0);
    for (const Lead& lead : kLeads) {
        if (first < lead.from || first > lead.to) continue;
        for (std::size_t i = 1; i < lead.length; ++i) {
            const unsigned char low = i == 1 ? lead.secondFrom : 0x80, high = i == 1 ? lead.secondTo : 0xBF;
            if (i >= text.size() || byte_at(text, i) < low || byte_at(text, i) > high) return {i, false};
        }
        return {lead.length, true};
    }
    return {1, false};
}

} // namespace

std::string repair_utf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(text.size());
    while (!text.empty()) {
        const Sequence sequence = sequence_at(text);
        const bool keep = sequence.valid && sequence.length <= 3;
        repaired += keep ? text.substr(0, sequence.length) : kReplacement;
        text.remove_prefix(sequence.length);
    }
    return repaired;
}

} // namespace qm
