// Simulated controllers in a process of their own, half of them of each generation, with faults at random;
// and as many that have none, to hold them against.
#pragma once

#include "qm_sdk_dual.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace qm::test {

constexpr std::size_t kControllers = 8;
constexpr int kWidth = 128, kHeight = 64;

class Controllers {
  public:
    // Starts the process; to be done before there are threads. Stores are kept below the folder.
    Controllers(unsigned seed, const std::string& folder);
    ~Controllers(); // ends it
    Controllers(const Controllers&) = delete;
    Controllers& operator=(const Controllers&) = delete;

    [[nodiscard]] pid_t process() const { return m_process; }
    [[nodiscard]] Ouint16 port(std::size_t place) const { return m_ports.at(place); }
    // Of the one without faults.
    [[nodiscard]] Ouint16 twin(std::size_t place) const { return m_ports.at(kControllers + place); }
    static bool is_of_generation_5(std::size_t place) { return place % 2 == 1; }

    // No more faults from now on.
    void heal() { (void)tell('h'); }
    // In which way controllers differ from their twins, on the screen, in settings and files, and in what
    // their stores hold; empty when they do not.
    std::string compare() { return tell('c'); }

  private:
    std::string tell(char command);

    int m_line = -1;
    pid_t m_process = -1;
    std::vector<Ouint16> m_ports;
};

} // namespace qm::test
