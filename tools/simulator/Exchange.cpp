#include "simulator/Exchange.h"

namespace qm::sim {
namespace {

Model model_of(const Options& options) {
    return {options.type, options.width, options.height, {transfer_mode_of(options.type), options.color}};
}

} // namespace

Exchange::Exchange(const Options& options)
    : m_options(options), m_generation(generation_of(options.type)), m_controller(model_of(options)),
      m_fault(options.fault), m_shown(options.width, options.height) {}

Exchange::Turn Exchange::take(Bytes body) {
    const auto opened = open_request(body, m_generation);
    Report report;
    Turn turn;
    {
        const std::lock_guard lock(m_mutex);
        turn = carry_out(opened, report);
    }
    tell(report);
    return turn;
}

Exchange::Turn Exchange::carry_out(const std::variant<Request, BadFrame>& opened, Report& report) {
    if (const auto* bad = std::get_if<BadFrame>(&opened)) {
        ++m_bad_frames;
        report.words = std::string("bad frame, ") + bad->why + ": not answered";
        return {};
    }
    const Request& request = std::get<Request>(opened);
    ++m_requests;
    const std::optional<Fault> fault = fault_for_this_one();
    const bool refused = fault && fault->kind == FaultKind::nack;
    const Outcome outcome =
        refused ? m_controller.refuse(request, fault->error) : m_controller.handle(request, now());
    report.words = outcome.words;
    if (fault) report.words.append(" (fault: ").append(name_of(fault->kind)).append(")");
    if (outcome.updated) note_screen(report);
    Turn turn{std::nullopt, outcome.updated};
    if (request.wants_answer) turn.delivery = deliver(request, outcome.reply, m_controller.sender(), fault);
    return turn;
}

std::optional<Fault> Exchange::fault_for_this_one() {
    if (!m_fault || m_answered_well++ < m_fault->after) return std::nullopt;
    m_answered_well = m_fault->after;
    return m_fault;
}

void Exchange::note_screen(Report& report) {
    Image image = m_controller.screen(now());
    if (image == m_shown) return;
    m_shown = image;
    report.screen = std::move(image);
}

void Exchange::tell(const Report& report) const {
    if (m_options.on_request) m_options.on_request(report.words);
    if (report.screen && m_options.on_screen) m_options.on_screen(*report.screen);
}

Time Exchange::now() const {
    return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now() - m_switched_on);
}

void Exchange::set_fault(std::optional<Fault> fault) {
    const std::lock_guard lock(m_mutex);
    m_fault = fault;
    m_answered_well = 0;
}

Image Exchange::screen() const {
    const std::lock_guard lock(m_mutex);
    return m_controller.screen(now());
}

std::vector<DynamicArea> Exchange::dynamic_areas() const {
    const std::lock_guard lock(m_mutex);
    std::vector<DynamicArea> areas;
    for (const PlayedArea& played : m_controller.state().areas) areas.push_back(played.area);
    return areas;
}

std::vector<Frame> Exchange::payloads() const {
    const std::lock_guard lock(m_mutex);
    const auto& payloads = m_controller.state().payloads;
    return {payloads.begin(), payloads.end()};
}

std::size_t Exchange::requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

std::size_t Exchange::bad_frames() const {
    const std::lock_guard lock(m_mutex);
    return m_bad_frames;
}

} // namespace qm::sim
