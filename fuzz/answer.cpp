// Whatever a controller answers to a command, the status is a documented one and has a reason, nothing is
// written beyond the caller's memory, and what is handed out is what came.
#include "handed_out.h"
#include "support/reason.h"

#include <map>

namespace qm::fuzz {
namespace {

using C = ON_command;

// Each sends a command, and leaves in the room what of the answer is handed out as it came. By group and code
// in one byte, where they have a code.
const std::map<Ouint8, int (*)(AnsweringLink&, ByteBuffer& room)> kCommands{
    {0x40, into_room<&C::hv_cmd_ping>},
    {0x82, into_room<&C::hv_cmd_networkSearch>},
    {0x83, into_room<&C::hv_cmd_networkSearch_6G>},
    {0x4F, into_room<&C::hv_cmd_check_controllerStatus>},
    {0xF0, enveloped<&C::send_recv_cmd_1K>},
    {0xF1, enveloped<&C::send_recv_cmd_1K2>},
    {0xF2, enveloped<&C::send_recv_cmd_6HnX>},
    {0xF3, enveloped<&C::send_recv_5H_DynamicArea>},
    {0x4A, in_fields<identity, 1>},
    {0x32, in_fields<volume, 4>},
    {0x33, in_fields<transfer, 1>},
    {0x2D, in_fields<read_start, 4>},
    {0x26, ignored<directory>},
    {0x22, ignored<write_files>},
    {0x57, ignored<battle_time>},
    {0x41, ignored<[](C& c) { return c.hv_cmd_sys_reset(); }>},
    {0x58, ignored<[](C& c) { return c.hv_cmd_get_stopwatch(0); }>},
    {0x59, ignored<[](C& c) { return c.hv_cmd_get_sensorBrightnessValue(); }>},
    {0x25, ignored<[](C& c) { return c.hv_cmd_ofs_reedFileBlock("P000"); }>},
    {0x2E, ignored<[](C& c) { return c.hv_cmd_conf_reedFileBlock("P000"); }>},
};

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm::fuzz;
    qm::ByteReader in({data, size});
    const auto found = kCommands.find(in.u8());
    if (found == kCommands.end()) return 0;
    qm::ByteBuffer room(in.u8());
    AnsweringLink link(in.u8() != 0 ? 0x0051 : 0x0262, in.rest());
    qm::clear_reason();
    const int status = found->second(link, room);
    require(status >= QM_WRONG_ANSWER && status <= 0xFFFF);
    require(status == QM_OK || *qm::reason() != 0);
    require((qm::conclude(status) == QM_OK) == (*qm::reason() == 0));
    const auto& came = link.payload();
    if (link.was_right())
        require(std::equal(room.begin(), room.end(), came.begin(),
                           came.begin() + std::min(room.size(), came.size())));
    return 0;
}
