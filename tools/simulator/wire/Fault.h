// The ways in which a controller can be made to answer badly.
#pragma once

#include "simulator/protocol/ErrorValue.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace qm::sim {

// X(enumerator, name on the command line, what happens)
#define QM_SIM_FAULTS(X)                                                                                     \
    X(silence, "silence", "no answer")                                                                       \
    X(close, "close", "the connection is closed in place of an answer")                                      \
    X(reset, "reset", "the connection is reset in place of an answer")                                       \
    X(split, "split", "the answer comes in two pieces, the second one late")                                 \
    X(bad_crc, "bad-crc", "the CRC of the answer is wrong, its header checksum right")                       \
    X(bad_header, "bad-header", "the header checksum of the answer is wrong")                                \
    X(wrong_code, "wrong-code", "the answer belongs to another command")                                     \
    X(nack, "nack", "the request is refused and not carried out")                                            \
    X(garbage, "garbage", "bytes that are no frame")                                                         \
    X(oversize, "oversize", "the answer holds 4,096 bytes more than it should, with right checksums")        \
    X(false_length, "false-length", "the answer's length field claims more than it holds, checksums right")  \
    X(delay, "delay", "the answer comes late")

#define QM_SIM_FAULT_ENUMERATOR(name, text, meaning) name,
enum class FaultKind { QM_SIM_FAULTS(QM_SIM_FAULT_ENUMERATOR) };
#undef QM_SIM_FAULT_ENUMERATOR

// All faults but nack spoil the answer only: the request has been carried out.
struct Fault {
    FaultKind kind = FaultKind::silence;
    unsigned after = 0;                              // requests answered well before the first spoilt one
    std::chrono::milliseconds delay{200};            // of delay, and of the second piece of split
    ErrorValue error = ErrorValue::refused_by_fault; // of nack
};

[[nodiscard]] std::optional<FaultKind> fault_named(std::string_view name);

// Its name on the command line.
[[nodiscard]] std::string_view name_of(FaultKind kind);

// The names of all kinds: "silence, close, ...".
[[nodiscard]] std::string fault_names();

} // namespace qm::sim
