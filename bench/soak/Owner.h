// One of those who use a controller at the same time: each has areas, files and settings that no other
// touches, and knows what they must be in the end.
#pragma once

#include "qm_sdk_dual.h"

#include <functional>
#include <map>
#include <random>
#include <stdexcept>
#include <string>

namespace qm::test {

// Something that goes on for too long, or has given what it must not.
struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Owner {
  public:
    // Gives a status.
    using Action = std::function<int(Ouint16 port)>;

    Owner(unsigned seed, std::size_t place, Ouint16 port, bool generation_5)
        : m_random(seed), m_place(place), m_port(port), m_five(generation_5) {}
    virtual ~Owner() = default;

    virtual void do_something() = 0;
    // Makes a controller on which nothing has been done what it must be in the end; 0, or what was not done.
    [[nodiscard]] int repeat_on(Ouint16 port) const;
    [[nodiscard]] const std::map<int, unsigned long>& statuses() const { return m_statuses; }

  protected:
    // Until it succeeds: a call that failed may have been carried out or not.
    void keep(const std::string& item, const Action& action);
    // Until it succeeds, or fails with the other status, which says that there is no such thing.
    void give_up(const std::string& item, const Action& action, int gone);
    int once(const Action& action);

    [[nodiscard]] unsigned random(unsigned below) { return static_cast<unsigned>(m_random() % below); }
    [[nodiscard]] std::string random_text();
    // Of 4 characters; no other owner has it.
    [[nodiscard]] std::string file_name(unsigned number) const;
    [[nodiscard]] std::vector<Ouint8> random_file();
    [[nodiscard]] std::size_t place() const { return m_place; }
    [[nodiscard]] Ouint16 port() const { return m_port; }
    [[nodiscard]] bool is_of_generation_5() const { return m_five; }
    [[nodiscard]] const std::map<std::string, Action>& kept() const { return m_kept; }

    // Throws Broken for a status that nothing explains.
    virtual void check(int status) const = 0;

  private:
    std::mt19937 m_random;
    const std::size_t m_place; // among those of its controller
    const Ouint16 m_port;
    const bool m_five;
    std::map<std::string, Action> m_kept;
    std::map<int, unsigned long> m_statuses;
};

} // namespace qm::test
