#include "names.h"

#include <algorithm>

namespace qm::sign {

std::string word_for(Names names, unsigned code) {
    const auto found = std::ranges::find(names, code, &Name::code);
    return found != names.end() ? found->word : "unknown (" + std::to_string(code) + ")";
}

std::string status_meaning(int status) {
    switch (status) {
#define QM_STATUS_CASE(name, value, meaning)                                                                 \
    case value:                                                                                              \
        return meaning;
        QM_STATUS_MAP(QM_STATUS_CASE)
#undef QM_STATUS_CASE
    default:
        break;
    }
    if (status > 0) return "the controller refused: error " + std::to_string(status);
    return "unknown status";
}

} // namespace qm::sign
