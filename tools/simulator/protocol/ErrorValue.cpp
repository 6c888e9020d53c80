#include "simulator/protocol/ErrorValue.h"

namespace qm::sim {

const char* meaning_of(ErrorValue error) {
    switch (error) {
#define QM_SIM_ERROR_MEANING(name, value, meaning)                                                           \
    case ErrorValue::name:                                                                                   \
        return meaning;
        QM_SIM_ERRORS(QM_SIM_ERROR_MEANING)
#undef QM_SIM_ERROR_MEANING
    }
    return "error";
}

} // namespace qm::sim
