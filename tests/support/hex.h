// Byte strings as tests write them and as failures show them.
#pragma once

#include "support/bytes.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

namespace qm::test {

// "A5*8 FE 00" is eight bytes A5, then FE and 00.
ByteBuffer hex(std::string_view text);
std::string hex_text(Bytes bytes);

// Whole byte strings, shown in hex when they differ.
MATCHER_P(is_hex, text, "is " + hex_text(hex(text))) {
    const std::string actual = hex_text(Bytes(arg));
    *result_listener << "which is " << actual;
    return actual == hex_text(hex(text));
}

// What action prints on standard output.
template <class Action> std::string printed_by(Action&& action) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

} // namespace qm::test
