#include "simulator/device/Device.h"

#include <stdexcept>

namespace qm::sim {
namespace {

constexpr int kLongestSide = 4096;

Options checked(Options options) {
    const auto fits = [](int side) { return side >= 1 && side <= kLongestSide; };
    if (!fits(options.width) || !fits(options.height))
        throw std::invalid_argument("the screen must have 1 to 4096 pixels in width and in height");
    if (options.color < ScreenColor::single || options.color > ScreenColor::full)
        throw std::invalid_argument("the screen colour must be 1 to 4");
    return options;
}

} // namespace

Device::Device(Options options)
    : m_options(checked(std::move(options))), m_exchange(m_options), m_connections(m_options.on_closed) {}

} // namespace qm::sim
