// Verbs that set one thing: locks, password, numbers, firmware, restart.
#include "Verb.h"
#include "device_arguments.h"

namespace qm::ctl {
namespace {

constexpr unsigned kLock = 1, kUnlock = 0;

// Whether it is to outlive a power failure.
class Keep {
  public:
    void add_to(ArgumentList& command) {
        command.add_flag("--keep", m_keep, "Also after a power failure (nonvolatile)");
    }
    [[nodiscard]] bool given() const { return m_keep; }
    [[nodiscard]] const char* words() const {
        return m_keep ? "after a power failure, too" : "until a power failure";
    }

  private:
    bool m_keep = false;
};

template <unsigned lock> class LockScreen : public Verb {
  public:
    void add_arguments(ArgumentList& command) override { m_keep.add_to(command); }
    Report run(const Session& session) const override {
        session.command(cmd_screenLock, m_keep.given(), lock);
        return session.report()
            .add("Screen", "screen", word_for(kLocks, lock))
            .add("Kept", m_keep.words(), "keep", m_keep.given());
    }

  private:
    Keep m_keep;
};

template <unsigned lock> class LockProgram : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "NAME", m_name, "", "Program, by its name of 4 characters", read_name).required();
        m_keep.add_to(command);
        if (lock == kLock)
            add_number(command, "--for", m_duration, 0, 0xFFFFFFFF,
                       "How long, in the controller's units (default 0, until it is unlocked)");
    }
    Report run(const Session& session) const override {
        session.command(cmd_programLock, m_keep.given(), lock, m_name.c_str(), m_duration);
        Report report = session.report();
        report.add("Program", "program", m_name)
            .add("State", "state", word_for(kLocks, lock))
            .add("Kept", m_keep.words(), "keep", m_keep.given());
        if (lock == kLock) report.add("Duration", "duration", m_duration);
        return report;
    }

  private:
    std::string m_name;
    Keep m_keep;
    unsigned m_duration = 0;
};

class SetPassword : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "OLD", m_old, "", "The present password, or any 6 characters when none is set",
                  read_password)
            .required();
        add_value(command, "NEW", m_new, "", "The new one, 6 characters", read_password).required();
    }
    Report run(const Session& session) const override {
        session.command(cmd_setPassword, m_old.c_str(), m_new.c_str());
        return session.report().add("Password", "password", "set");
    }

  private:
    std::string m_old, m_new;
};

class DeletePassword : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "PASSWORD", m_password, "", "The present password, 6 characters", read_password)
            .required();
    }
    Report run(const Session& session) const override {
        session.command(cmd_deletePassword, m_password.c_str());
        return session.report().add("Password", "password", "deleted");
    }

  private:
    std::string m_password;
};

class ActivateFirmware : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "NAME", m_name, "", "File of the controller's, by its name of 4 characters",
                  read_name)
            .required();
    }
    Report run(const Session& session) const override {
        session.command(cmd_firmwareActivate, m_name.c_str());
        return session.report().add("Firmware", "firmware", m_name);
    }

  private:
    std::string m_name;
};

class Reset : public Verb {
  public:
    Report run(const Session& session) const override {
        session.command(cmd_sysReset);
        return session.report().add("Restart", "begun", "reset", true);
    }
};

struct NumberSetting {
    const char *label, *key, *help;
    int min, max;
    void (*send)(const Session&, int);
};

template <const NumberSetting& setting> class SetNumber : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "N", m_value, "", setting.help, [](const std::string& text) {
            return setting.min < 0
                       ? read_signed(text)
                       : static_cast<int>(read_number(text, 0, static_cast<unsigned>(setting.max)));
        }).required();
    }
    Report run(const Session& session) const override {
        setting.send(session, m_value);
        return session.report().add(setting.label, setting.key, m_value);
    }

  private:
    int m_value = 0;
};

template <auto call> void send(const Session& session, int value) { session.command(call, value); }

constexpr NumberSetting kButton{"Button", "button", "Mode, 0 to 255, in the controller's numbers",
                                0,        255,      send<cmd_setBtnFunc>};
constexpr NumberSetting kMode{
    "Display mode", "mode", "Mode, 0 to 255, in the controller's numbers", 0, 255, send<cmd_setDispMode>};
constexpr NumberSetting kSpeed{"Speed", "speed", "Adjustment, -32768 to 32767, in the controller's units",
                               -32768,  32767,   send<cmd_setSpeedAdjust>};
constexpr NumberSetting kAddress{"Screen address",          "address", "Address, 0 to 32767", 0, 32767,
                                 send<cmd_setScreenAddress>};
constexpr NumberSetting kDelay{
    "Power-on delay",      "delay", "Delay, 0 to 32767, in the controller's units", 0, 32767,
    send<cmd_setDelayTime>};

constexpr VerbEntry kSettingVerbs[] = {
    {"lock screen", "Keep showing what is shown now", "Example:\n  qmctl lock screen --keep",
     make_verb<LockScreen<kLock>>},
    {"lock program", "Show one program only", "Example:\n  qmctl lock program P001 --for 60",
     make_verb<LockProgram<kLock>>},
    {"unlock screen", "Let the screen change again", "Example:\n  qmctl unlock screen",
     make_verb<LockScreen<kUnlock>>},
    {"unlock program", "Show all programs again", "Example:\n  qmctl unlock program P001",
     make_verb<LockProgram<kUnlock>>},
    {"password set", "Set or change the controller's password",
     "Other users of this host can see the arguments while qmctl runs.\n\n"
     "Example:\n  qmctl password set 000000 s3cret",
     make_verb<SetPassword>},
    {"password delete", "Delete the controller's password", "Example:\n  qmctl password delete s3cret",
     make_verb<DeletePassword>},
    {"button", "Set what the controller's button does", "Example:\n  qmctl button 1",
     make_verb<SetNumber<kButton>>},
    {"mode", "Set the controller's display mode", "Example:\n  qmctl mode 0", make_verb<SetNumber<kMode>>},
    {"speed", "Adjust the controller's speed", "Example:\n  qmctl speed -5", make_verb<SetNumber<kSpeed>>},
    {"address", "Set the screen address", "Example:\n  qmctl address 2", make_verb<SetNumber<kAddress>>},
    {"delay", "Set the delay between power-on and the first picture", "Example:\n  qmctl delay 10",
     make_verb<SetNumber<kDelay>>},
    {"reset", "Restart the controller", "Example:\n  qmctl reset", make_verb<Reset>},
    {"firmware activate", "Make the controller run the firmware in one of its files",
     "Put the file there first, with fs put.\n\nExample:\n  qmctl firmware activate F001",
     make_verb<ActivateFirmware>}};

} // namespace

Family setting_verbs() { return kSettingVerbs; }

} // namespace qm::ctl
