// Whatever comes to the simulator's page, the connection ends soon and the next one is served. Nothing
// changes but by a request that says JSON, is meant for this host, and comes from its own page or from none.
#include "WebPage.h"

#include <algorithm>

namespace qm::sim {
namespace {

std::string trimmed_lower(std::string text) {
    for (char& c : text) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    text.erase(0, text.find_first_not_of(' '));
    return text.erase(text.find_last_not_of(' ') + 1);
}

// A request that changes something, were it not for one of its headers.
bool changes_with(WebPage& page, const std::string& header, const std::string& value) {
    std::map<std::string, std::string> headers{{"Host", WebPage::kPlace},
                                               {"Content-Type", "application/json"}};
    headers[header] = value;
    std::string lines = "POST /api/power HTTP/1.1\r\nContent-Length: 14\r\n";
    for (const auto& [name, content] : headers) lines += name + ": " + content + "\r\n";
    const auto before = page.changes();
    (void)page.answer_to(lines + "\r\n{\"power\":true}");
    return page.changes() > before;
}

void check_header(WebPage& page, unsigned which, std::string line) {
    line.erase(std::ranges::find_if(line, [](unsigned char c) { return c < 0x20 || c == 0x7F; }), line.end());
    const std::string value = trimmed_lower(line), type = trimmed_lower(value.substr(0, value.find(';')));
    constexpr const char* kHeaders[] = {"Host", "Origin", "Content-Type"};
    const bool right[] = {value == WebPage::kPlace, value.empty() || value == "http://" + WebPage::kPlace,
                          type == "application/json"};
    fuzz::require(line.size() > 4096 || value.ends_with(":" + page.port()) ||
                  changes_with(page, kHeaders[which], line) == right[which]);
}

void check_any(WebPage& page, const std::string& bytes) {
    const auto before = page.changes();
    const std::string answer = page.answer_to(bytes), said = trimmed_lower(bytes);
    const auto says = [&said](const char* words) { return said.find(words) != std::string::npos; };
    const bool may_change = says("post") && says("json") && (says("127.0.0.1:") || says("localhost:"));
    fuzz::require((answer.empty() || answer.starts_with("HTTP/1.")) &&
                  (may_change || page.changes() == before));
    fuzz::require(changes_with(page, "Host", WebPage::kPlace));
}

} // namespace
} // namespace qm::sim

// What is looked at, and the header's value or all that comes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm::sim;
    static WebPage page;
    if (size == 0) return 0;
    const std::string bytes(data + 1, data + size);
    data[0] % 4 > 0 ? check_header(page, data[0] % 4U - 1, bytes) : check_any(page, bytes);
    return 0;
}
