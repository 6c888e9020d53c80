#include "simulator/device/Exchange.h"

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

} // namespace

// What happens to the controller happens under the lock; the owner hears of it afterwards.
template <class Step> auto Exchange::reporting(Step step) {
    News news;
    auto result = [&] {
        const std::lock_guard lock(m_mutex);
        auto done = step(news);
        news.trouble = std::exchange(m_trouble, {});
        return done;
    }();
    tell(news);
    return result;
}

Exchange::Exchange(const Options& options)
    : m_options(options), m_generation(generation_of(options.type)), m_controller(model_of(options)),
      m_fault(options.fault), m_shown(options.width, options.height) {
    reporting([this](News&) { return restore(), 0; });
}

void Exchange::restore() {
    if (m_options.store.empty()) return;
    m_store.emplace(m_options.store, [this](const std::string& sentence) { m_trouble.push_back(sentence); });
    Store::Contents contents = m_store->load();
    m_controller.restore(std::move(contents.settings), std::move(contents.files));
    m_known.settings = m_controller.state().settings;
    m_known.files = m_controller.state().files.version();
}

std::string Exchange::ask_wifi(std::string_view text) {
    return reporting([&](News& news) {
        ++m_requests;
        std::string answer = m_controller.ask_wifi(text);
        news.log = "Wi-Fi module, " + label_of(std::string(text.substr(0, 64))) + ": " + answer;
        (void)note_state(news);
        return answer;
    });
}

std::size_t Exchange::longest_frame() const { return (std::size_t{32} << 20U) + model_of(m_options).page(); }

Delivery Exchange::answer(const ReceivedFrame& frame) {
    const auto* body = std::get_if<ByteBuffer>(&frame);
    const auto opened =
        body ? open_request(*body, m_generation) : std::variant<Request, BadFrame>(std::get<BadFrame>(frame));
    return reporting([&](News& news) { return carry_out(opened, news); });
}

Delivery Exchange::carry_out(const std::variant<Request, BadFrame>& opened, News& news) {
    if (const auto* bad = std::get_if<BadFrame>(&opened)) {
        ++m_bad_frames;
        news.log = std::string("bad frame, ") + bad->why + ": not answered";
        return {};
    }
    const Request& request = std::get<Request>(opened);
    ++m_requests;
    const std::optional<Fault> fault = fault_for_this_one();
    const bool refused = fault && fault->kind == FaultKind::nack;
    const Outcome outcome =
        refused ? m_controller.refuse(request, fault->error) : m_controller.handle(request, now());
    news.log = outcome.log;
    if (fault) news.log.append(" (fault: ").append(name_of(fault->kind)).append(")");
    news.wake = note_state(news) || outcome.updated;
    if (news.wake) note_screen(news);
    Delivery delivery;
    if (request.wants_answer) delivery = deliver(request, outcome.reply, m_controller.sender(), fault);
    delivery.updated = outcome.updated;
    return delivery;
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
    if (!m_options.on_screen) return;
    Image image = m_controller.screen(present);
    if (image == m_shown) return;
    m_shown = image;
    news.screen = std::move(image);
}

// What goes by the clock is noticed within a second, and at once when the owner's time jumps.
Milliseconds Exchange::tick() {
    constexpr Milliseconds kLatest{1000}, kJumping{50};
    if (!m_options.on_screen && !m_options.on_request && !m_options.on_state) return kLatest;
    const Milliseconds latest = m_options.uptime || m_options.clock ? kJumping : kLatest;
    return reporting([&](News& news) {
        const Milliseconds up = now().up;
        if (note_state(news) || up >= m_due) note_screen(news);
        return std::clamp(m_due - up, Milliseconds{0}, latest);
    });
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
        if (!news.log.empty()) news.log += "; ";
        news.log += latest.program.empty() ? "no program" : "program " + latest.program;
        news.log += " is played";
    }
    const bool kept = latest.settings != m_known.settings || latest.files != m_known.files;
    m_known = std::move(latest);
    const State& state = m_controller.state();
    if (m_store && kept) m_store->save(state.settings, state.files);
    if (!m_options.on_state) return !same_look;
    news.state = m_controller.snapshot(now());
    news.files = state.files.copies();
    return !same_look;
}

void Exchange::tell(const News& news) const {
    if (m_options.on_trouble) std::ranges::for_each(news.trouble, m_options.on_trouble);
    if (m_options.on_request && !news.log.empty()) m_options.on_request(news.log);
    if (news.screen) m_options.on_screen(*news.screen);
    if (news.state) m_options.on_state(*news.state, news.files);
    if (news.wake && m_wake) m_wake();
}

Now Exchange::now() const {
    const auto since = std::chrono::steady_clock::now() - m_switched_on;
    return {m_options.uptime ? m_options.uptime() : std::chrono::duration_cast<Milliseconds>(since),
            m_options.clock ? m_options.clock() : host_time()};
}

void Exchange::set_fault(std::optional<Fault> fault) {
    const std::lock_guard lock(m_mutex);
    m_fault = fault;
    m_answered_well = 0;
}

} // namespace qm::sim
