#include "support/message.h"

#include "support/reason.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>

namespace qm {
namespace {

constexpr std::size_t kLongest = 512; // of a message

struct Handler {
    MessageHandler function = nullptr;
    void* context = nullptr;
};

std::mutex g_guard;
Handler g_handler; // guarded by g_guard

thread_local bool t_inHandler = false;

// The time that a thread spends in the handler.
class InHandler {
  public:
    InHandler() { t_inHandler = true; }
    InHandler(const InHandler&) = delete;
    InHandler& operator=(const InHandler&) = delete;
    ~InHandler() { t_inHandler = false; }

  private:
    ReasonSetAside m_ofTheCall;
};

// A handler runs without a lock, so that it may set another, and threads do not wait for one another's.
Handler handler_now() {
    const std::lock_guard lock(g_guard);
    return g_handler;
}

} // namespace

void set_message_handler(MessageHandler handler, void* context) {
    const std::lock_guard lock(g_guard);
    g_handler = {handler, context};
}

bool in_message_handler() { return t_inHandler; }

void say(const char* format, ...) {
    char message[kLongest];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    const Handler handler = handler_now();
    if (!handler.function) {
        std::fputs(message, stdout);
        return;
    }
    const InHandler now;
    handler.function(message, handler.context);
}

} // namespace qm
