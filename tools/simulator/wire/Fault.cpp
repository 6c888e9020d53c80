#include "simulator/wire/Fault.h"

namespace qm::sim {
namespace {

struct Named {
    FaultKind kind;
    std::string_view name;
};

constexpr Named kFaults[] = {
#define QM_SIM_FAULT_NAME(name, text, words) {FaultKind::name, text},
    QM_SIM_FAULTS(QM_SIM_FAULT_NAME)
#undef QM_SIM_FAULT_NAME
};

} // namespace

std::optional<FaultKind> fault_named(std::string_view name) {
    for (const Named& fault : kFaults)
        if (fault.name == name) return fault.kind;
    return std::nullopt;
}

std::string_view name_of(FaultKind kind) {
    for (const Named& fault : kFaults)
        if (fault.kind == kind) return fault.name;
    return {};
}

std::string fault_names() {
    std::string names;
    for (const Named& fault : kFaults) {
        if (!names.empty()) names += ", ";
        names += fault.name;
    }
    return names;
}

} // namespace qm::sim
