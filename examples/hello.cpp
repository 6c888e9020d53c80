// Asks a controller who it is, lets a text run over its screen, and gives it a program with a clock to play.
//
//     c++ -std=c++17 hello.cpp $(pkg-config --cflags --libs qm_sdkDual) -o hello
//     ./hello 127.0.0.1 5005 "Hello, world"
#include <cstdlib>
#include <iostream>
#include <qm_sdk_dual.hpp>

namespace {

std::vector<qm::File> program_for(const qm::Screen& screen) {
    const qm::Rect all{0, 0, static_cast<std::uint16_t>(screen.size.width),
                       static_cast<std::uint16_t>(screen.size.height)};
    qm::DigitalClock clock;
    clock.time = HH_MM_COLON;
    clock.style.color = eGreen;
    qm::Program program(screen);
    program.set_rules(1).value(); // file P001
    program.add_area(0, eTimeClockArea, all).value();
    program.add_clock(0, clock, all).value();
    return program.files().value();
}

} // namespace

int main(int argc, char** argv) {
    const auto port = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 5005;
    if (port < 1024 || port > 65535) {
        std::cerr << "usage: hello [IP [PORT [TEXT]]], with a port from 1024 to 65535\n";
        return 1;
    }
    const qm::Controller sign(argc > 1 ? argv[1] : "127.0.0.1", static_cast<std::uint16_t>(port));
    try { // value() throws; without it every call gives a result to be asked
        const qm::Screen screen = qm::Screen::of(sign.ping().value());
        std::cout << "A screen of " << screen.size.width << " x " << screen.size.height << " pixels.\n";

        qm::Area area;
        area.text = argc > 3 ? argv[3] : "Hello";
        area.style.font = "DejaVu Sans";
        area.effect.mode = 4;
        sign.show({area}, screen).value();
        sign.upload(program_for(screen)).value();
    } catch (const qm::Exception& failed) {
        std::cerr << failed.what() << " (status " << failed.error().status << ")\n";
        return 2;
    }
}
