// What is interrupted is finished by the next apply.
#include "qm_sdk_dual.hpp"
#include "sign_fixture.h"

#include <atomic>
#include <csignal>
#include <thread>

namespace qm::test {
namespace {

// A controller that kills qmctl.
class Interrupter {
  public:
    // When it has carried out so many requests from now on.
    void kill_after(std::size_t requests) { m_left = requests; }
    void choose(const RunningQmctl& victim) {
        m_victim = &victim;
        m_victim.notify_one();
    }

  private:
    void see(const std::string& line) {
        if (line.starts_with("program ") || m_left == 0 || --m_left > 0) return;
        m_victim.wait(nullptr);
        m_victim.load()->send(SIGKILL);
    }

    std::atomic<std::size_t> m_left = 0;
    std::atomic<const RunningQmctl*> m_victim = nullptr;

  public:
    sim::Simulator controller{{.on_request = [this](const std::string& line) { see(line); }}};
};

// Begins with one playlist, and goes on to another.
class Interruption : public Sign {
  protected:
    Interruption() {
        folder.program("one.json", 1, 1);
        folder.program("gone.json", 9, 1);
        before = folder.write("before.json", R"({"playlist": ["one.json", "gone.json"]})");
        folder.program("one-more.json", 1, 45);
        folder.program("two.json", 2, 15);
        after = folder.write("after.json", R"({"playlist": ["one-more.json", "two.json"], "prune": true,
                                               "brightness": 5})");
        apply(m_reference, before);
        for (const sim::StoredFile& file : m_reference.files())
            m_first.push_back({file.name, file.type, {file.data.begin(), file.data.end()}});
        const auto requests = m_reference.requests();
        EXPECT_EQ(apply(m_reference, after).status, 0);
        frames = m_reference.requests() - requests;
    }

    void begin(const sim::Simulator& controller) const {
        EXPECT_TRUE(Controller("127.0.0.1", controller.port()).upload(m_first));
    }
    void finish(const sim::Simulator& controller, const std::string& what) {
        const Outcome outcome = apply(controller, after);
        EXPECT_EQ(outcome.status, 0) << what << outcome.err;
        EXPECT_EQ(files_of(controller), files_of(m_reference)) << what;
        EXPECT_EQ(controller.state().program, "P001") << what;
        EXPECT_EQ(controller.state().next_program, "P002") << what;
        EXPECT_EQ(controller.state().brightness_level, 5U) << what;
    }
    // For every frame of the upload; mostly it waits.
    template <class Try> void at_every_frame(Try one, std::size_t step) {
        std::atomic<std::size_t> next = 1;
        std::vector<std::thread> workers;
        for (int i = 0; i < 6; ++i)
            workers.emplace_back([&] {
                for (std::size_t n = 0; (n = next.fetch_add(step)) <= frames;) one(n);
            });
        for (std::thread& worker : workers) worker.join();
    }

    std::string before, after;
    std::size_t frames = 0;

  private:
    sim::Simulator m_reference;
    std::vector<File> m_first;
};

TEST_F(Interruption, OfAKilledApplyIsFinishedByTheNext) {
    EXPECT_GE(frames, 60U + 20U);
    at_every_frame(
        [&](std::size_t n) {
            Interrupter interrupter;
            begin(interrupter.controller);
            interrupter.kill_after(n);
            RunningQmctl victim({"-c", address(interrupter.controller.port()), "apply", after});
            interrupter.choose(victim);
            EXPECT_EQ(victim.end().status, -1) << n;
            finish(interrupter.controller, "killed at frame " + std::to_string(n));
        },
        1);
}

TEST_F(Interruption, OfTheControllerIsFinishedByTheNext) {
    at_every_frame(
        [&](std::size_t n) {
            sim::Simulator controller;
            begin(controller);
            controller.set_fault(sim::Fault{.kind = n % 2 ? sim::FaultKind::reset : sim::FaultKind::close,
                                            .after = static_cast<unsigned>(n - 1)});
            EXPECT_EQ(apply(controller, after).status, 2) << n;
            controller.set_fault({});
            finish(controller, "broken off at frame " + std::to_string(n));
        },
        3);
}

} // namespace
} // namespace qm::test
