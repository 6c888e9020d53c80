// Shows two lines of a departure board, in C++20, whose designated initialisers name the fields of the
// values.
//
//     c++ -std=c++20 board.cpp $(pkg-config --cflags --libs qm_sdkDual) -o board
//     ./board 127.0.0.1 5005 "Lisbon via Coimbra"
#include <cstdlib>
#include <iostream>
#include <qm_sdk_dual.hpp>

int main(int argc, char** argv) {
    const auto port = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 5005;
    const qm::Controller sign(argc > 1 ? argv[1] : "127.0.0.1", static_cast<std::uint16_t>(port));
    const auto identity = sign.ping();
    if (!identity) {
        std::cerr << identity.error().reason << "\n";
        return 2;
    }
    const qm::Screen screen = qm::Screen::of(*identity);
    std::cout << "A screen of " << screen.size.width << " x " << screen.size.height << " pixels.\n";

    const auto width = static_cast<std::uint16_t>(screen.size.width);
    const auto half = static_cast<std::uint16_t>(screen.size.height / 2);
    const auto shown = sign.show({{.id = 1,
                                   .rect = qm::Rect{.width = width, .height = half},
                                   .text = "Platform 4",
                                   .style = {.font = "DejaVu Sans", .color = eGreen}},
                                  {.id = 2,
                                   .rect = qm::Rect{.y = half, .width = width, .height = half},
                                   .text = argc > 3 ? argv[3] : "Lisbon via Coimbra",
                                   .style = {.font = "DejaVu Sans", .color = eYellow},
                                   .effect = {.mode = 4}}}, // runs to the left
                                 screen);
    if (!shown) std::cerr << shown.error().reason << " (status " << shown.status() << ")\n";
    return shown ? 0 : 2;
}
