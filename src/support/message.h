// The one way to standard output, or to whoever takes its place.
#pragma once

namespace qm {

using MessageHandler = void (*)(const char* message, void* context);

// Hands one of the library's fixed messages to the handler, or prints it; whole, even when several threads
// do so.
[[gnu::format(printf, 1, 2)]] void say(const char* format, ...);

// Null: standard output.
void set_message_handler(MessageHandler handler, void* context);

// Whether the calling thread is in the handler. It may hold any of the library's locks there.
[[nodiscard]] bool in_message_handler();

} // namespace qm
