#include "simulator/protocol/ErrorValue.h"

namespace qm::sim {

const char* words_of(ErrorValue error) {
    switch (error) {
#define QM_SIM_ERROR_WORDS(name, value, words)                                                               \
    case ErrorValue::name:                                                                                   \
        return words;
        QM_SIM_ERRORS(QM_SIM_ERROR_WORDS)
#undef QM_SIM_ERROR_WORDS
    }
    return "error";
}

} // namespace qm::sim
