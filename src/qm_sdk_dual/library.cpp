// What the library says about itself and about its calls.
#include "qm_sdk_dual.h"
#include "support/message.h"
#include "support/reason.h"

#define QM_TEXT(number) #number
#define QM_VERSION_TEXT(major, minor, patch) QM_TEXT(major) "." QM_TEXT(minor) "." QM_TEXT(patch)

const char* qm_last_error() noexcept { return qm::reason(); }

void qm_set_message_handler(void (*handler)(const char* message, void* context), void* context) noexcept {
    qm::set_message_handler(handler, context);
}

const char* qm_version() noexcept {
    return QM_VERSION_TEXT(QM_VERSION_MAJOR, QM_VERSION_MINOR, QM_VERSION_PATCH);
}
