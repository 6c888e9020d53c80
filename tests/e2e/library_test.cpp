// What the library says about itself and about its calls.
#include "drawing.h"
#include "hex.h"
#include "outcome.h"

#include <barrier>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace qm::test {
namespace {

TEST(Reason, IsTheCallingThreadsAndOfItsLastCallAlone) {
    constexpr int kRounds = 500;
    ASSERT_EQ(set_packetLen(1024), 0); // whatever failed before
    std::barrier together(2);
    const auto check = [&](const std::function<int()>& call, const char* reason) {
        EXPECT_STREQ(qm_last_error(), "") << "a thread begins without one";
        for (int round = 0; round < kRounds; ++round) {
            together.arrive_and_wait();
            EXPECT_EQ(call(), -1);
            together.arrive_and_wait(); // the other thread's call has failed, too
            EXPECT_STREQ(qm_last_error(), reason);
        }
    };
    FileCRC16_G56 unreadable{nullptr, 1, 0};
    std::thread one(
        check, [] { return cmd_sysReset(nullptr, 1); }, "Argument ip is missing.");
    std::thread other(
        check, [&] { return get_crc16(&unreadable); }, "Argument fileAddre is missing.");
    one.join();
    other.join();
    EXPECT_STREQ(qm_last_error(), "");
}

TEST(Reason, IsEmptyAfterSuccessAndLeftAloneByItsOwnSection) {
    FileCRC16_G56 empty{};
    const std::function<int()> successes[] = {
        [&] { return get_crc16(&empty); },
        [] { return set_packetLen(1024); },
        [] { return update_firmware(nullptr, 0, nullptr); },
        [] { return dynamicArea_addTxt(1); },
        [] { return program_deleteProgram(); },
        [] { return program_setScreenParams_G56(SCREEN_COLOR_DOUBLE, 0x0262, DOUBLE_COLOR_PIXTYPE_1); },
    };
    for (const auto& succeed : successes) {
        EXPECT_EQ(get_crc32(nullptr), -1);
        (void)qm_version();
        qm_set_message_handler(nullptr, nullptr);
        EXPECT_STREQ(qm_last_error(), "Argument data is missing.");
        EXPECT_EQ(succeed(), 0) << &succeed - successes;
        EXPECT_STREQ(qm_last_error(), "");
    }
}

TEST(Version, IsThatOfTheHeader) {
    EXPECT_EQ(qm_version(), std::to_string(QM_VERSION_MAJOR) + "." + std::to_string(QM_VERSION_MINOR) + "." +
                                std::to_string(QM_VERSION_PATCH));
}

// Takes the messages while it lives.
class Messages {
  public:
    explicit Messages(std::function<void()> also = [] {}) : m_also(std::move(also)) {
        qm_set_message_handler(
            [](const char* message, void* context) {
                auto* self = static_cast<Messages*>(context);
                self->taken.emplace_back(message);
                self->m_also();
            },
            this);
    }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;
    ~Messages() { qm_set_message_handler(nullptr, nullptr); }

    std::vector<std::string> taken;

  private:
    std::function<void()> m_also;
};

int call_on_unknown_area() { return program_pictureAreaRemoveFrame(9); }
constexpr char kUnknownArea[] =
    "Error:program_pictureAreaRemoveFrame==>Can not find the area.please check areaID.\n";

TEST(Messages, GoToTheHandlerOrToStandardOutput) {
    const Messages messages;
    EXPECT_EQ(printed_by([] { call_on_unknown_area(); }), "");
    EXPECT_EQ(messages.taken, std::vector<std::string>{kUnknownArea});
    qm_set_message_handler(nullptr, nullptr);
    EXPECT_EQ(printed_by([] { call_on_unknown_area(); }), kUnknownArea);
    EXPECT_EQ(messages.taken.size(), 1U);
}

// The calling thread holds the library's locks while it is in the handler.
TEST(Messages, HandlerThatCallsTheLibraryIsRefusedAndSpoilsNothing) {
    const Messages messages([] {
        EXPECT_STREQ(qm_last_error(), "");
        EXPECT_EQ(program_deleteProgram(), -1);
        EXPECT_STREQ(qm_last_error(), "A message handler may not call the library.");
    });
    EXPECT_EQ(call_on_unknown_area(), -1);
    EXPECT_STREQ(qm_last_error(), "The program has no area 9.");
    EXPECT_EQ(program_deleteProgram(), 0);
}

TEST(Messages, HandlerMayBeChangedWhileThreadsPrint) {
    std::atomic<int> taken = 0;
    std::atomic<bool> stop = false;
    std::thread changing([&] {
        while (!stop) {
            for (int value : {1, 1000})
                qm_set_message_handler(
                    value == 1
                        ? [](const char*, void* count) { *static_cast<std::atomic<int>*>(count) += 1; }
                        : [](const char*, void* count) { *static_cast<std::atomic<int>*>(count) += 1000; },
                    &taken);
        }
    });
    while (taken < 2000) (void)printed_by([] { call_on_unknown_area(); });
    stop = true;
    changing.join();
    qm_set_message_handler(nullptr, nullptr);
}

} // namespace
} // namespace qm::test
