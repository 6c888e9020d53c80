// The table of verbs. A family of verbs is one file with one table; a new family adds a line to kFamilies.
#pragma once

#include "options/ArgumentList.h"
#include "sign/AddressBook.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace qm::ctl {

using namespace options;

class Report;
class Session;
class Verb;

// After that time, or sooner when the user interrupts, another verb goes to the controllers that it concerns.
struct Ending {
    std::chrono::seconds after;
    const Verb& verb;
    std::function<bool(const sign::NamedController&)> concerns;
};

// One verb: its arguments, and what it does once all of them are known to be good.
class Verb {
  public:
    virtual ~Verb() = default;
    virtual void add_arguments(ArgumentList&) {}
    // Reads and checks what needs no controller, before the first one is asked; trouble is thrown as
    // UsageError.
    virtual void prepare() {}
    // Whom it goes to when the command line names nobody, once it is prepared; each as -c takes it.
    virtual std::vector<std::string> controllers() const { return {}; }
    // Refuses a controller that it cannot be done for, by UsageError, before the first one is asked.
    virtual void check(const sign::NamedController&) const {}
    // When what it does goes by itself.
    virtual std::optional<Ending> ending() const { return {}; }
    // Does it for one controller, for many of them at once; trouble is thrown as UsageError or Failure.
    virtual Report run(const Session& session) const = 0;
};

// Whom a verb asks when several controllers are named: each, none of them but whoever answers, the only one,
// for several are refused, or none.
enum class Reach { each, broadcast, one, none };

struct VerbEntry {
    const char* words; // "ping", or "fs ls" for a verb of a group
    const char* summary;
    const char* notes; // shown at the end of its help: an example, and what needs explaining
    std::unique_ptr<Verb> (*make)();
    Reach reach = Reach::each;
};

template <class Type> std::unique_ptr<Verb> make_verb() { return std::make_unique<Type>(); }

using Family = std::span<const VerbEntry>;

Family discovery_verbs();
Family doctor_verbs();
Family status_verbs();
Family area_verbs();
Family dynamic_verbs();
Family power_verbs();
Family setting_verbs();
Family network_verbs();
Family config_verbs();
Family file_verbs();
Family program_verbs();
Family serve_verbs();
Family sign_verbs();
Family sign_preview_verbs();

inline constexpr Family (*kFamilies[])() = {discovery_verbs,    doctor_verbs, status_verbs,  area_verbs,
                                            dynamic_verbs,      power_verbs,  setting_verbs, network_verbs,
                                            config_verbs,       file_verbs,   program_verbs, sign_verbs,
                                            sign_preview_verbs, serve_verbs};

} // namespace qm::ctl
