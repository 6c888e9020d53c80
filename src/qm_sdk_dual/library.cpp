// What the library says about itself and about its calls.
#include "DynamicArea/DynamicArea.h"
#include "program/measure.h"
#include "qm_sdk_dual.h"
#include "qm_sdk_dual/exports.h"
#include "support/controller_types.h"
#include "support/message.h"
#include "support/reason.h"

#include <cstring>

#define QM_TEXT(number) #number
#define QM_VERSION_TEXT(major, minor, patch) QM_TEXT(major) "." QM_TEXT(minor) "." QM_TEXT(patch)

const char* qm_last_error() noexcept { return qm::reason(); }

void qm_set_message_handler(void (*handler)(const char* message, void* context), void* context) noexcept {
    qm::set_message_handler(handler, context);
}

Ouint16 qm_assume_controller_type(Ouint16 controllerType) noexcept {
    return qm::assume_controller_type(controllerType);
}

int qm_controller_type(Ouint16 controllerType, QM_ControllerType* type) noexcept {
    const int generation = static_cast<int>(qm::generation_of(controllerType));
    if (!type) return generation;
    *type = {};
    if (const qm::ControllerSeries* series = qm::series_of(controllerType))
        std::strncpy(type->model, series->model, sizeof type->model - 1);
    type->generation = static_cast<Ouint8>(generation);
    type->transferMode = qm::transfer_mode_of(controllerType).value_or(0);
    return generation;
}

int qm_measure_text(const char* text, const qm_text_style* style, Ouint16 width, Ouint16 height,
                    qm_text_extent* extent) noexcept {
    const auto measure = [&] { *extent = qm::measure_text(text, *style, width, height); };
    if (!style) return qm::guarded({{"style", style}}, measure);
    return qm::guarded({{"text", text}, {"font", style->font}, {"extent", extent}}, measure);
}

const char* qm_version() noexcept {
    return QM_VERSION_TEXT(QM_VERSION_MAJOR, QM_VERSION_MINOR, QM_VERSION_PATCH);
}
