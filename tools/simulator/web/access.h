// Who may ask: pages of other sites, which a browser lets ask this machine, may not.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace qm::sim {

// What a request says of whom it is for, and of the page that it comes from.
struct Caller {
    std::string host, origin; // empty: it does not say
};

// Why it is refused; nothing when it may ask. Place is the address and port that was made known, here those
// that the connection came to.
[[nodiscard]] std::optional<std::string> refused(const Caller& caller, const std::string& place,
                                                 const std::string& here);

// Whether a body is JSON by its Content-Type, which browsers send across origins only when they were allowed
// to.
[[nodiscard]] bool says_json(std::string_view content_type);

// Of every answer.
inline constexpr std::pair<const char*, const char*> kSafetyHeaders[] = {
    {"Content-Security-Policy",
     "default-src 'self'; frame-ancestors 'none'; base-uri 'none'; form-action 'none'"},
    {"X-Content-Type-Options", "nosniff"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Referrer-Policy", "no-referrer"},
    {"Cache-Control", "no-store"},
};

} // namespace qm::sim
