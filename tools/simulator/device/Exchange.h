// A controller's side of the wire without the wire: frames in, answers out. It counts, spoils
// answers when a fault is set, and reports to the owner. Any thread may call it.
#pragma once

#include "simulator/controller/SimulatedController.h"
#include "simulator/controller/Store.h"
#include "simulator/device/HostClock.h"
#include "simulator/device/Options.h"
#include "simulator/device/RequestLog.h"
#include "simulator/wire/Answerer.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

namespace qm::sim {

class Exchange : public Answerer {
  public:
    // The options outlive the exchange.
    explicit Exchange(const Options& options);

    Delivery answer(const ReceivedFrame& frame, const std::string& peer) override;
    // What fills the screen goes into one frame, and 32 MiB besides.
    [[nodiscard]] std::size_t longest_frame() const override;
    // One datagram for the Wi-Fi module, and the answer.
    std::string ask_wifi(std::string_view text, const std::string& peer);

    // Reports what has changed by itself; gives how long to wait until the next call, unless it is woken.
    Milliseconds tick();
    // Called, from any thread, when the next change may come sooner than tick said. Set before all else.
    void on_wake(std::function<void()> wake) { m_wake = std::move(wake); }

    // What a host can do, done without one; the log names the peer.
    void switch_screen(bool on, const std::string& peer);
    void reset(const std::string& peer);
    // The controller's clock shows that time, or goes on at that rate, or both.
    void set_clock(std::optional<LocalSeconds> time, std::optional<unsigned> rate, const std::string& peer);
    // Of the requests from now on; nothing ends it. Its count of good answers starts anew.
    void set_fault(std::optional<Fault> fault, const std::string& peer);

    // While there is a watcher, the picture is kept up to date. It is called, with the controller locked,
    // when picture, state or log have changed, and may neither block nor look at the controller. An empty one
    // ends that: the former is not called any more once this returns.
    void watch(std::function<void()> watcher);
    // The latest picture.
    [[nodiscard]] std::shared_ptr<const Image> shown() const;
    [[nodiscard]] const RequestLog& log() const { return m_log; }

    [[nodiscard]] std::size_t requests() const { return m_requests; }
    [[nodiscard]] std::size_t bad_frames() const { return m_bad_frames; }

    // What its owner has set beside the controller.
    struct Conditions {
        unsigned rate; // of the host's clock
        std::optional<Fault> fault;
    };

    // Looks at the controller, and at the conditions if asked for, while nothing happens to it.
    template <class Look> [[nodiscard]] auto look(Look at) const {
        const std::lock_guard lock(m_mutex);
        if constexpr (std::is_invocable_v<Look, const SimulatedController&, Now>)
            return at(m_controller, now());
        else
            return at(m_controller, now(), Conditions{m_clock.rate(), m_fault});
    }

  private:
    struct News {
        LogEntry log;
        std::vector<std::string> trouble{};
        std::shared_ptr<const Image> screen; // when it has changed
        std::optional<Snapshot> state;       // likewise, with the files
        std::vector<StoredFile> files{};
        bool wake = false; // the next change is another one
    };

    // What news of the state tell; when it differs, there are some.
    struct Known {
        ControllerState settings;
        std::uint64_t files = 0, dynamic = 0;
        std::string program;
        bool power = true;
        unsigned brightness_level = kBrightest;
        bool operator==(const Known&) const = default;
        // Files as such are not seen.
        [[nodiscard]] bool looks_like(Known other) const {
            other.files = files;
            return *this == other;
        }
    };

    [[nodiscard]] Now now() const;
    void restore();
    void save();
    template <class Step> void reporting(Step step);
    void command(std::uint8_t cmd, ByteBuffer payload, const std::string& peer);
    Delivery carry_out(const std::variant<Request, BadFrame>& opened, News& news);
    void settle(bool updated, News& news);
    void look_soon(News& news);
    void settle_news(News& news);
    [[nodiscard]] bool looked_at() const;
    std::optional<Fault> fault_for_this_one();
    [[nodiscard]] Known known() const;
    void note_screen(News& news);
    // Whether the screen may have another look.
    bool note_state(News& news);
    void tell(const News& news) const;

    const Options& m_options;
    const Generation m_generation;
    std::function<void()> m_wake;
    const std::chrono::steady_clock::time_point m_switched_on = std::chrono::steady_clock::now();

    RequestLog m_log;
    std::atomic<std::size_t> m_requests{0}, m_bad_frames{0};

    mutable std::mutex m_mutex; // guards what follows
    SimulatedController m_controller;
    std::optional<Fault> m_fault;
    unsigned m_answered_well = 0; // since the fault was set
    HostClock m_clock;
    std::function<void()> m_watcher;
    std::shared_ptr<const Image> m_shown;
    Milliseconds m_due{0};              // when the screen may have changed by itself
    Known m_known;                      // as it was reported last
    std::vector<std::string> m_trouble; // of the store, not yet told
    std::optional<Store> m_store;
};

} // namespace qm::sim
