// Controllers by name: a file with one on each line.
#pragma once

#include "qm_sdk_dual.hpp"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace qm::sign {

// A controller as people call it.
struct NamedController {
    std::string name; // empty: none but its address
    std::string host = Controller().ip();
    std::uint16_t port = Controller().port();
    std::vector<std::string> tags{};

    [[nodiscard]] std::string address() const { return host + ":" + std::to_string(port); }
    [[nodiscard]] std::string label() const { return name.empty() ? address() : name; }

    // Its IPv4 address, for which the name of a host is looked up. Throws Failure when there is none.
    [[nodiscard]] Controller controller() const;

    bool operator==(const NamedController&) const = default;
};

// HOST[:PORT], with an IPv4 address or the name of a host. Throws std::invalid_argument.
[[nodiscard]] NamedController read_host(const std::string& text);

// A line of the file is a name, the controller's address and its tags, or an address alone; # begins a
// remark.
class AddressBook {
  public:
    AddressBook() = default;
    // Throws UsageError with the line that is wrong.
    explicit AddressBook(const std::filesystem::path& path);
    // The user's own: what QMCTL_CONTROLLERS names, else qmctl/controllers in the folder of settings; empty
    // when there is none.
    [[nodiscard]] static AddressBook of_user();

    [[nodiscard]] const std::vector<NamedController>& all() const { return m_all; }
    [[nodiscard]] std::set<std::string> tags() const;
    // A name, tag:TAG, or an address; several are separated by commas. Every address once. Throws
    // std::invalid_argument.
    [[nodiscard]] std::vector<NamedController> find(const std::string& text) const;

  private:
    void add(const std::string& line);
    [[nodiscard]] std::vector<NamedController> find_one(const std::string& text) const;

    std::string m_path;
    std::vector<NamedController> m_all;
};

} // namespace qm::sign
