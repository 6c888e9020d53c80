// The first text of a process, which finds the fonts and keeps them, while memory gives out in the middle of
// it.
#include "simulator/Simulator.h"
#include "torture.h"

#include "qm_sdk_dual.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qm::test {
namespace {

struct Report {
    bool whole;
    long seen;
    int first, next; // statuses of the text with the fault, and of one without
    char reason[512];
    unsigned sent; // with the latter
};

class ColdStart : public testing::Test {
  protected:
    ColdStart()
        : m_report(static_cast<Report*>(
              ::mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {}
    ~ColdStart() override { ::munmap(m_report, sizeof(Report)); }

    // In a child, so that every time is the first.
    Report first_text(const Strike& strike) {
        *m_report = {};
        const pid_t child = ::fork();
        if (child == 0) {
            report(strike);
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(m_report->whole && status == 0)
            << "ends with " << status << " at allocation " << strike.at;
        return *m_report;
    }

  private:
    [[nodiscard]] int show() const {
        return dynamicArea_AddAreaTxt_6G("127.0.0.1", m_sim.port(), SCREEN_COLOR_DOUBLE, 1, 0, 0, 64, 16,
                                         "auto", 12, "Hello 你好 שלום สวัสดี");
    }

    void report(const Strike& strike) {
        qm_set_message_handler([](const char*, void*) {}, nullptr);
        Torture& t = *torture();
        t.arm(strike, ::gettid());
        m_report->first = show();
        t.what = Failing::nothing;
        m_report->seen = t.seen;
        std::snprintf(m_report->reason, sizeof m_report->reason, "%s", qm_last_error());
        t.sent = 0;
        m_report->next = show();
        m_report->sent = t.sent;
        m_report->whole = true;
    }

    sim::Simulator m_sim;
    Report* m_report;
};

// Where cairo has no memory for a clip it draws nothing and says nothing, so that one glyph stays empty.
constexpr int kSilentInCairo = 1;

// Every one takes a process: of a thousand every seventh, or all of them where QM_TORTURE_ALL is set.
TEST_F(ColdStart, MayLackMemoryAndTheNextTextIsWhole) {
    const long step = std::getenv("QM_TORTURE_ALL") ? 1 : 7;
    const Report reference = first_text({});
    EXPECT_EQ(reference.first, 0) << reference.reason;
    for (const bool lasting : {false, true}) {
        long at = 1;
        int different = 0;
        for (Report report; report = first_text({Failing::allocations, at, lasting}), report.seen >= at;
             at += step) {
            SCOPED_TRACE("allocation " + std::to_string(at) + (lasting ? " and all that follow" : ""));
            EXPECT_STREQ(report.reason, report.first == 0 ? "" : "Out of memory.");
            EXPECT_EQ(report.next, 0);
            different += report.sent != reference.sent;
        }
        EXPECT_GT(at, 100);
        EXPECT_LE(different, kSilentInCairo);
    }
}

} // namespace
} // namespace qm::test
