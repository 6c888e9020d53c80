#include "AddressBook.h"

#include "errors.h"
#include "options/names.h"
#include "options/readers.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <netdb.h>
#include <sstream>

namespace qm::sign {
namespace {

constexpr std::string_view kTag = "tag:";

bool may_be_host(const std::string& text) {
    const auto fits = [](unsigned char c) { return std::isalnum(c) || c == '-' || c == '.' || c == '_'; };
    return !text.empty() && std::ranges::all_of(text, fits);
}

// Four numbers, right or wrong, are no name of a host.
bool is_numeric(const std::string& text) {
    return text.find_first_not_of("0123456789.") == std::string::npos;
}

std::filesystem::path path_of_user() {
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder && *folder)
        return std::filesystem::path(folder) / "qmctl" / "controllers";
    const char* home = std::getenv("HOME");
    return home ? std::filesystem::path(home) / ".config" / "qmctl" / "controllers" : std::filesystem::path();
}

// The same, naming what it is not.
NamedController named_host(const std::string& text) {
    try {
        return read_host(text);
    } catch (const std::invalid_argument& wrong) {
        throw std::invalid_argument(wrong.what() + (", not '" + text + "'"));
    }
}

} // namespace

Controller NamedController::controller() const {
    if (options::is_dotted_ipv4(host)) return Controller(host, port);
    ::addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    ::addrinfo* found = nullptr;
    if (const int error = ::getaddrinfo(host.c_str(), nullptr, &hints, &found); error != 0)
        throw Failure("\"" + host +
                      "\" is neither in the list of controllers nor a host whose address is known (" +
                      ::gai_strerror(error) + ")");
    const std::unique_ptr<::addrinfo, void (*)(::addrinfo*)> owner(found, ::freeaddrinfo);
    char text[INET_ADDRSTRLEN] = "";
    ::inet_ntop(AF_INET, &reinterpret_cast<const ::sockaddr_in*>(found->ai_addr)->sin_addr, text,
                sizeof text);
    return Controller(text, port);
}

NamedController read_host(const std::string& text) {
    NamedController controller;
    const auto colon = text.find(':');
    controller.host = text.substr(0, colon);
    const auto port =
        colon == std::string::npos ? controller.port : options::to_number(text.substr(colon + 1), 1, 65535);
    const bool host =
        is_numeric(controller.host) ? options::is_dotted_ipv4(controller.host) : may_be_host(controller.host);
    if (!host || !port)
        options::expected("an IPv4 address or the name of a host, with or without a port, such as "
                          "192.168.0.199:5005");
    controller.port = static_cast<std::uint16_t>(*port);
    return controller;
}

AddressBook::AddressBook(const std::filesystem::path& path) : m_path(path) {
    std::ifstream file(path);
    if (!file) throw UsageError(m_path + ": expected a list of controllers that can be read");
    unsigned number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        try {
            add(line.substr(0, line.find('#')));
        } catch (const std::invalid_argument& wrong) {
            throw UsageError(m_path + ": line " + std::to_string(number) + ": " + wrong.what());
        }
    }
    if (file.bad()) throw UsageError(m_path + ": expected a list of controllers that can be read");
}

AddressBook AddressBook::of_user() {
    if (const char* path = std::getenv("QMCTL_CONTROLLERS"); path && *path) return AddressBook(path);
    const auto path = path_of_user();
    std::error_code error;
    return std::filesystem::exists(path, error) ? AddressBook(path) : AddressBook();
}

void AddressBook::add(const std::string& line) {
    std::istringstream text(line);
    std::vector<std::string> words;
    for (std::string word; text >> word;) words.push_back(word);
    if (words.empty()) return;
    if (words.size() == 1) return m_all.push_back(named_host(words.front()));
    NamedController controller = named_host(words[1]);
    controller.name = words[0];
    if (controller.name.find_first_of(":,") != std::string::npos)
        options::expected("a name without colon and comma");
    if (std::ranges::find(m_all, controller.name, &NamedController::name) != m_all.end())
        options::expected("every name once, not \"" + controller.name + "\" again");
    controller.tags.assign(words.begin() + 2, words.end());
    for (const std::string& tag : controller.tags)
        if (tag.find_first_of(":,") != std::string::npos || is_numeric(tag))
            options::expected("tags without colon and comma that are no numbers, not '" + tag + "'");
    m_all.push_back(std::move(controller));
}

std::vector<NamedController> AddressBook::find(const std::string& text) const {
    std::vector<NamedController> found;
    for (std::string_view one : options::split(text, ',')) {
        one.remove_prefix(std::min(one.find_first_not_of(' '), one.size()));
        for (NamedController& controller : find_one(std::string(one)))
            if (std::ranges::find(found, controller.address(), &NamedController::address) == found.end())
                found.push_back(std::move(controller));
    }
    return found;
}

std::set<std::string> AddressBook::tags() const {
    std::set<std::string> tags;
    for (const NamedController& controller : m_all)
        tags.insert(controller.tags.begin(), controller.tags.end());
    return tags;
}

std::vector<NamedController> AddressBook::find_one(const std::string& text) const {
    std::vector<NamedController> found;
    const auto take = [&](const auto& wanted) {
        std::ranges::copy_if(m_all, std::back_inserter(found), wanted);
    };
    if (text.starts_with(kTag)) {
        const std::string tag = text.substr(kTag.size());
        take([&](const NamedController& one) { return std::ranges::count(one.tags, tag) > 0; });
        if (found.empty() && m_path.empty())
            options::expected("a list of controllers for '" + text + "'; there is none");
        if (found.empty())
            options::expected("a tag of " + m_path + " (" + options::joined(tags()) + "), not '" + text +
                              "'");
    } else {
        take([&](const NamedController& one) { return !one.name.empty() && one.name == text; });
        if (found.empty() && tags().contains(text)) options::expected("tag:" + text + ", not '" + text + "'");
        if (found.empty()) found.push_back(named_host(text));
    }
    return found;
}

} // namespace qm::sign
