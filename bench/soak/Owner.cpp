#include "Owner.h"

namespace qm::test {
namespace {

constexpr int kMostAttempts = 2000; // several minutes

} // namespace

int Owner::once(const Action& action) {
    const int status = action(m_port);
    ++m_statuses[status];
    check(status);
    return status;
}

void Owner::keep(const std::string& item, const Action& action) {
    for (int attempt = 0; once(action) != QM_OK;)
        if (++attempt == kMostAttempts) throw Broken(item + " does not succeed");
    m_kept[item] = action;
}

void Owner::give_up(const std::string& item, const Action& action, int gone) {
    int status = QM_OK;
    for (int attempt = 0; (status = once(action)) != QM_OK && status != gone;)
        if (++attempt == kMostAttempts) throw Broken("giving up " + item + " does not succeed");
    m_kept.erase(item);
}

int Owner::repeat_on(Ouint16 port) const {
    for (const auto& [item, action] : m_kept)
        if (const int status = action(port); status != QM_OK) return status;
    return QM_OK;
}

std::string Owner::random_text() {
    static constexpr const char* kWords[] = {"Hello",
                                             "12:34",
                                             "Zug 7",
                                             "\u4F60\u597D",
                                             "Gr\u00FC\u00DFe",
                                             "\u0645\u0631\u062D\u0628\u0627",
                                             "-",
                                             "A long line of words"};
    return kWords[random(std::size(kWords))];
}

std::string Owner::file_name(unsigned number) const {
    return std::string("F").append(std::to_string(m_place)).append("0").append(std::to_string(number));
}

std::vector<Ouint8> Owner::random_file() {
    std::vector<Ouint8> data(random(4) == 0 ? random(5) : random(5000));
    for (Ouint8& byte : data) byte = static_cast<Ouint8>(m_random());
    return data;
}

} // namespace qm::test
