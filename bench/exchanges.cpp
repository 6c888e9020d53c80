// Whole exchanges with a controller on loopback, beside the rests that each connection has to keep.
#include "compare.h"
#include "silence.h"

#include "qm_sdk_dual.h"
#include "simulator/Simulator.h"
#include "tcpClient/HV_Client.h"

#include <algorithm>
#include <memory>
#include <unistd.h>

namespace qm::bench {
namespace {

constexpr Ouint16 kWidth = 128, kHeight = 32;

void rest(int connections) {
    for (int i = 0; i < connections; ++i) {
        ::usleep(5000);  // after connecting
        ::usleep(10000); // after closing
    }
}

int update_text(Ouint16 port) {
    const Silence silence;
    return dynamicArea_AddAreaTxt_6G("127.0.0.1", port, SCREEN_COLOR_DOUBLE, 1, 0, 0, kWidth, kHeight,
                                     "DejaVu Sans", 18, "Flight QM 214 to Lisbon is boarding at gate 12");
}

// Three areas in one command.
int update_areas(Ouint16 port) {
    const Silence silence;
    DynamicAreaParams areas[3]{};
    for (Ouint8 i = 0; i < 3; ++i) {
        DynamicAreaParams& area = areas[i];
        area.uAreaId = i;
        area.oAreaHeader_G6.AreaY = static_cast<Ouint16>(10 * i);
        area.oAreaHeader_G6.AreaWidth = kWidth;
        area.oAreaHeader_G6.AreaHeight = 10;
        area.stPageHeader.DisplayMode = 1;
        area.stPageHeader.fontSize = 6;
        area.stPageHeader.color = eRed;
        area.fontName = reinterpret_cast<const Ouint8*>("DejaVu Sans");
        area.strAreaTxtContent = reinterpret_cast<const Ouint8*>("12:34 Lisbon 12");
    }
    return dynamicAreaS_AddTxtDetails_6G("127.0.0.1", port, SCREEN_COLOR_DOUBLE, 3, areas);
}

// An area of 57 pages, 60,122 bytes.
ByteBuffer long_payload() {
    constexpr Ouint32 kPages = 57, kPageBytes = 2 * kWidth * kHeight / 8;
    ByteBuffer payload;
    ByteWriter out(payload);
    out.u8(1).u8(hv_GPR_5HDynamicArea).u8(0).u16(0).u16(1); // command header, one area
    out.u32(33 + 30 * kPages).u8(1).u8(0).u16(5).u8(1).u16(0).u8(1).u32(0);
    out.u8(0x10).u16(0).u16(0).u16(kWidth).u16(kHeight).zeros(1 + 4 + 5).u16(kPages);
    for (Ouint32 page = 0; page < kPages; ++page) {
        out.u32(26).u8(0).u8(1).u8(0).u8(32).u16(0).u8(1).u16(kWidth).zeros(9);
        out.u32(page * kPageBytes).u32(kPageBytes);
    }
    out.bytes(random_bytes(std::size_t{kPages} * kPageBytes));
    return payload;
}

int send_blocks(Ouint16 port, Bytes payload) {
    const Silence silence;
    HV_Client client;
    if (const int code = client.init("127.0.0.1", port); code != QM_OK) return code;
    Ouint8 buffer[1024];
    Answer answer{buffer};
    return client.send_recv_cmd_1K2(hv_GPR_5HDynamicArea, 0, payload, answer);
}

bool shows_something(const sim::Simulator& controller) {
    const auto areas = controller.dynamic_areas();
    if (areas.size() != 1 || areas[0].pages.empty()) return false;
    const ByteBuffer& pixels = areas[0].pages[0].pixels;
    return std::any_of(pixels.begin(), pixels.end(), [](Ouint8 b) { return b != 0xFF; });
}

} // namespace

void exchanges() {
    const auto controller =
        std::make_shared<sim::Simulator>(sim::Options{.width = kWidth, .height = kHeight});

    const auto update = [=] { require(update_text(controller->port()) == QM_OK, "text update: refused"); };
    update();
    require(shows_something(*controller), "text update: the controller shows nothing");
    compare_time("text update, 128 x 32", update,
                 {{"prescribed rests of two connections and 2 ms",
                   [] {
                       rest(2);
                       ::usleep(2000);
                   },
                   1}});

    const auto three = [=] { require(update_areas(controller->port()) == QM_OK, "three areas: refused"); };
    three();
    require(controller->dynamic_areas().size() == 3, "three areas: they are not all there");
    compare_time("three areas in one command", three,
                 {{"prescribed rests of two connections", [] { rest(2); }}});

    const auto payload = std::make_shared<const ByteBuffer>(long_payload());
    const auto send = [=] {
        require(send_blocks(controller->port(), *payload) == QM_OK, "block sending: refused");
    };
    send();
    require(controller->payloads().back() == *payload, "block sending: other bytes arrived");
    compare_time("60,122 bytes in blocks of 1,024", send,
                 {{"prescribed rests of one connection", [] { rest(1); }}});
}

} // namespace qm::bench
