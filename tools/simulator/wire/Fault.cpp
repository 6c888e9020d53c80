#include "simulator/wire/Fault.h"

#include <algorithm>
#include <iterator>

namespace qm::sim {
namespace {

constexpr std::string_view kNames[] = { // in the order of the kinds
#define QM_SIM_FAULT_NAME(name, text, meaning) text,
    QM_SIM_FAULTS(QM_SIM_FAULT_NAME)
#undef QM_SIM_FAULT_NAME
};

} // namespace

std::optional<FaultKind> fault_named(std::string_view name) {
    const auto* const found = std::find(std::begin(kNames), std::end(kNames), name);
    if (found == std::end(kNames)) return std::nullopt;
    return static_cast<FaultKind>(found - kNames);
}

std::string_view name_of(FaultKind kind) { return kNames[static_cast<std::size_t>(kind)]; }

std::string fault_names() {
    std::string names;
    for (const std::string_view name : kNames) names.append(names.empty() ? "" : ", ").append(name);
    return names;
}

} // namespace qm::sim
