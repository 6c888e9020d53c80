// Whatever answers a search, or a command to a Wi-Fi module, the record holds what came and nothing is
// written beyond it. There is no network here: the answers are the input.
#include "AnsweringLink.h"
#include "broadcast/wifi_module.h"
#include "qm_sdk_dual/exports.h"
#include "require.h"

#include <memory>
#include <string>

namespace qm::fuzz {
namespace {

template <class Record, std::size_t capacity, auto command> int search(AnsweringLink& link) {
    if (const int status = link.ping_handshake(3); status != QM_OK) return status;
    const auto record = std::make_unique<Record>();
    const int status =
        into_record<capacity>(*record, [&](Answer& answer) { return (link.*command)(answer); });
    const Bytes came = Bytes(link.payload()).first(std::min(sizeof(Record), link.payload().size()));
    const Bytes kept(reinterpret_cast<const Ouint8*>(record.get()), came.size());
    require(!link.was_right() || status < QM_OK || std::ranges::equal(kept, came));
    return status;
}

int probe(AnsweringLink& link) {
    const int status = link.send_AT_cmd("AT", 2);
    require((status == QM_OK) == says_ok(link.latest()));
    return status;
}

// A piece of the answer, zeros behind it.
std::string piece_of(const std::string& room) { return room.substr(0, room.find_last_not_of('\0') + 1); }

int settings(AnsweringLink& link) {
    std::string ssid(512, '\0'), pwd(512, '\0');
    const int status = ask_wifi_settings(link, ssid.data(), pwd.data());
    std::string came(link.latest().begin(), link.latest().end());
    require(status == (came.empty() || came.size() >= 512 ? QM_FAILED : came.size() < 38 ? 2 : QM_OK));
    const std::size_t first = came.find(','), second = came.find(',', first + 1);
    if (status != QM_OK || first == came.npos) return status;
    require(piece_of(ssid) == piece_of(came.substr(0, first)));
    require(piece_of(pwd) ==
            (second == came.npos ? "" : piece_of(came.substr(first + 1, second - first - 1))));
    return status;
}

constexpr int (*kCalls[])(AnsweringLink&) = {
    search<Ping_data, 1024, &ON_command::hv_cmd_ping>,
    search<heartbeatData, 64, &ON_command::hv_cmd_networkSearch>,
    search<NetSearchCmdRet, sizeof(NetSearchCmdRet), &ON_command::hv_cmd_networkSearch_6G>,
    search<NetSearchCmdRet_Web, sizeof(NetSearchCmdRet_Web), &ON_command::hv_cmd_networkSearch_6G>,
    probe,
    settings,
};

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm;
    ByteReader in({data, size});
    const auto call = fuzz::kCalls[in.u8() % std::size(fuzz::kCalls)];
    fuzz::AnsweringLink link(0xFFFE, in.rest());
    clear_reason();
    const int status = call(link);
    fuzz::require(status >= QM_WRONG_ANSWER && status <= 0xFFFF);
    fuzz::require(status == QM_OK || *reason() != 0);
    return 0;
}
