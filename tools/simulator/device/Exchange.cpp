#include "simulator/device/Exchange.h"

#include "cmdPacket/catalogue.h"
#include "simulator/controller/commands.h"
#include "simulator/controller/state_json.h"
#include "simulator/wire/open_request.h"

#include <algorithm>
#include <utility>

namespace qm::sim {
namespace {

Model model_of(const Options& options) {
    const PixelFormat format{packing_of(options.type), options.color};
    return {options.type, {options.width, options.height, format}, options.long_search};
}

std::optional<unsigned> status_of(const Reply& reply, const Delivery& delivery) {
    if (delivery.bytes.empty()) return std::nullopt;
    const auto* error = std::get_if<ErrorValue>(&reply);
    return error ? static_cast<unsigned>(*error) : 0;
}

} // namespace

// What happens to the controller happens under the lock; the owner hears of it afterwards.
template <class Step> void Exchange::reporting(Step step) {
    News news;
    {
        const std::lock_guard lock(m_mutex);
        step(news);
        settle_news(news);
    }
    tell(news);
}

Exchange::Exchange(const Options& options)
    : m_options(options), m_generation(generation_of(options.type)), m_controller(model_of(options)),
      m_fault(options.fault), m_clock(options.starts_at, options.rate),
      m_shown(std::make_shared<const Image>(options.width, options.height)) {
    reporting([this](News&) { restore(); });
}

void Exchange::restore() {
    if (m_options.store.empty()) return;
    m_store.emplace(m_options.store, [this](const std::string& sentence) { m_trouble.push_back(sentence); });
    Store::Contents contents = m_store->load();
    m_controller.restore(std::move(contents.settings), std::move(contents.files));
    m_known.settings = m_controller.state().settings;
    m_known.files = m_controller.state().files.version();
}

std::string Exchange::ask_wifi(std::string_view text, const std::string& peer) {
    std::string answer;
    reporting([&](News& news) {
        ++m_requests;
        answer = m_controller.ask_wifi(text);
        news.log.peer = peer;
        news.log.status = 0;
        news.log.command = "Wi-Fi module, " + label_of(std::string(text.substr(0, 64))) + ": " + answer;
        (void)note_state(news);
    });
    return answer;
}

std::size_t Exchange::longest_frame() const { return (std::size_t{32} << 20U) + model_of(m_options).page(); }

Delivery Exchange::answer(const ReceivedFrame& frame, const std::string& peer) {
    const auto* body = std::get_if<ByteBuffer>(&frame.body);
    const auto opened = body ? open_request(*body, m_generation)
                             : std::variant<Request, BadFrame>(std::get<BadFrame>(frame.body));
    Delivery delivery;
    reporting([&](News& news) {
        news.log.peer = peer;
        if (m_options.keeps_log) news.log.bytes = frame.bytes;
        delivery = carry_out(opened, news);
    });
    return delivery;
}

Delivery Exchange::carry_out(const std::variant<Request, BadFrame>& opened, News& news) {
    if (const auto* bad = std::get_if<BadFrame>(&opened)) {
        ++m_bad_frames;
        news.log.command = std::string("bad frame, ") + bad->why + ": not answered";
        return {};
    }
    const Request& request = std::get<Request>(opened);
    ++m_requests;
    const std::optional<Fault> fault = fault_for_this_one();
    const bool refused = fault && fault->kind == FaultKind::nack;
    const Outcome outcome =
        refused ? m_controller.refuse(request, fault->error) : m_controller.handle(request, now());
    news.log.command = outcome.log;
    if (fault) news.log.command.append(" (fault: ").append(name_of(fault->kind)).append(")");
    settle(outcome.updated, news);
    Delivery delivery;
    if (request.wants_answer) delivery = deliver(request, outcome.reply, m_controller.sender(), fault);
    delivery.updated = outcome.updated;
    news.log.status = status_of(outcome.reply, delivery);
    return delivery;
}

void Exchange::settle(bool updated, News& news) {
    news.wake = note_state(news) || updated;
    if (news.wake) note_screen(news);
}

// What another thread has done is reported by the next tick, so that pictures are told in their order.
void Exchange::look_soon(News& news) {
    m_due = Milliseconds{0};
    news.wake = true;
}

void Exchange::settle_news(News& news) {
    news.trouble = std::exchange(m_trouble, {});
    const bool logged = !news.log.command.empty();
    if (logged && m_options.keeps_log) {
        news.log.time = std::chrono::system_clock::now();
        m_log.add(news.log);
    }
    if (m_watcher && (logged || news.wake || news.screen)) m_watcher();
}

void Exchange::command(std::uint8_t cmd, ByteBuffer payload, const std::string& peer) {
    const Request request{.group = kConfigurationGroup, .cmd = cmd, .application = std::move(payload)};
    reporting([&](News& news) {
        const Outcome outcome = m_controller.handle(request, now());
        save();
        news.log = {.peer = peer, .command = outcome.log, .status = 0};
        look_soon(news);
    });
}

void Exchange::switch_screen(bool on, const std::string& peer) {
    command(hv_conf_SwitchOnOffScreen, {static_cast<std::uint8_t>(on ? 1 : 0)}, peer);
}

void Exchange::reset(const std::string& peer) { command(hv_conf_SystemReset, {}, peer); }

void Exchange::set_clock(std::optional<LocalSeconds> time, std::optional<unsigned> rate,
                         const std::string& peer) {
    reporting([&](News& news) {
        if (rate) m_clock.set_rate(*rate, now().host);
        if (time) m_clock.set(*time - m_controller.state().settings.clock_offset);
        std::string words = "the clock";
        if (time) words += " is set to " + clock_text(*time);
        if (time && rate) words += " and";
        if (rate) words += " runs at " + std::to_string(*rate) + " times its speed";
        news.log = {.peer = peer, .command = std::move(words), .status = 0};
        look_soon(news);
    });
}

void Exchange::set_fault(std::optional<Fault> fault, const std::string& peer) {
    reporting([&](News& news) {
        m_fault = fault;
        m_answered_well = 0;
        news.log = {.peer = peer,
                    .command = std::string("fault: ").append(fault ? name_of(fault->kind) : "none"),
                    .status = 0};
        look_soon(news);
    });
}

void Exchange::watch(std::function<void()> watcher) {
    reporting([&](News& news) {
        m_watcher = std::move(watcher);
        if (m_watcher && !m_options.on_screen) // else it is up to date
            m_shown = std::make_shared<const Image>(m_controller.screen(now()));
        look_soon(news);
    });
}

std::shared_ptr<const Image> Exchange::shown() const {
    const std::lock_guard lock(m_mutex);
    return m_shown;
}

std::optional<Fault> Exchange::fault_for_this_one() {
    if (!m_fault || m_answered_well++ < m_fault->after) return std::nullopt;
    m_answered_well = m_fault->after;
    return m_fault;
}

void Exchange::note_screen(News& news) {
    constexpr Milliseconds kSoonest{16}; // after the one that is drawn now
    const Now present = now();
    const auto next = m_controller.next_change(present).value_or(Milliseconds::max());
    m_due = std::max(next, present.up + kSoonest);
    if (!m_options.on_screen && !m_watcher) return;
    Image image = m_controller.screen(present);
    if (image == *m_shown) return;
    m_shown = std::make_shared<const Image>(std::move(image));
    news.screen = m_shown;
}

// What goes by the clock is noticed within a second, and at once when the owner's time jumps.
Milliseconds Exchange::tick() {
    constexpr Milliseconds kLatest{1000}, kJumping{50};
    Milliseconds wait = kLatest;
    reporting([&](News& news) {
        if (!looked_at()) return;
        const bool jumping = m_options.uptime || m_options.clock;
        const Milliseconds latest = jumping ? kJumping : kLatest / std::clamp(m_clock.rate(), 1U, 60U);
        const Milliseconds up = now().up;
        if (note_state(news) || up >= m_due) note_screen(news);
        wait = std::clamp(m_due - up, Milliseconds{0}, latest);
    });
    return wait;
}

bool Exchange::looked_at() const {
    return m_options.on_screen || m_options.on_request || m_options.on_state || m_watcher;
}

Exchange::Known Exchange::known() const {
    const State& state = m_controller.state();
    const Now present = now();
    const LocalSeconds clock = clock_of(state, present);
    return {state.settings,
            state.files.version(),
            state.dynamic_version,
            shown_program(state, present),
            power_at(state.settings, clock),
            brightness_at(state.settings, clock)};
}

bool Exchange::note_state(News& news) {
    Known latest = known();
    if (latest == m_known) return false;
    const bool same_look = latest.looks_like(m_known);
    if (latest.program != m_known.program) {
        std::string& words = news.log.command;
        if (!words.empty()) words += "; ";
        words += latest.program.empty() ? "no program" : "program " + latest.program;
        words += " is played";
    }
    const bool kept = latest.settings != m_known.settings || latest.files != m_known.files;
    m_known = std::move(latest);
    const State& state = m_controller.state();
    if (kept) save();
    if (!m_options.on_state) return !same_look;
    news.state = m_controller.snapshot(now());
    news.files = state.files.copies();
    return !same_look;
}

void Exchange::save() {
    const State& state = m_controller.state();
    if (m_store) m_store->save(state.settings, state.files);
}

void Exchange::tell(const News& news) const {
    if (m_options.on_trouble) std::ranges::for_each(news.trouble, m_options.on_trouble);
    if (m_options.on_request && !news.log.command.empty()) m_options.on_request(news.log.command);
    if (news.screen && m_options.on_screen) m_options.on_screen(*news.screen);
    if (news.state) m_options.on_state(*news.state, news.files);
    if (news.wake && m_wake) m_wake();
}

Now Exchange::now() const {
    const auto since = std::chrono::steady_clock::now() - m_switched_on;
    return {m_options.uptime ? m_options.uptime() : std::chrono::duration_cast<Milliseconds>(since),
            m_options.clock ? m_options.clock() : m_clock.at(host_time())};
}

} // namespace qm::sim
