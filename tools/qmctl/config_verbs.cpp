// Verbs for a controller's configuration file.
#include "ConfigRecord.h"
#include "Verb.h"
#include "arguments.h"

namespace qm::ctl {
namespace {

class Push : public Verb { // NOLINT(bugprone-exception-escape)
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE", m_fields, "", "One JSON object with the fields of the configuration",
                  read_configuration)
            .required();
    }
    Report run(const Session& session) const override {
        const Identity controller = require(session.controller.ping());
        const unsigned generation = controller.type.generation;
        send(session, controller, generation);
        return session.report()
            .add("Generation", "generation", generation)
            .add("Configuration", "file", "C000");
    }

  private:
    void send(const Session& session, const Identity& controller, unsigned generation) const {
        if (generation == 0)
            throw Failure("a controller of an unknown generation; its configuration is as it was");
        try {
            if (generation == 5) {
                ConfigFile record = configuration5(m_fields, controller);
                session.command(cmd_sendConfigFile, &record);
            } else {
                ConfigFile_G6 record = configuration6(m_fields, controller);
                session.command(cmd_sendConfigFile_G6, &record);
            }
        } catch (const std::invalid_argument& wrong) {
            throw Failure(std::string(wrong.what()) + " (generation " + std::to_string(generation) +
                          "); nothing was written");
        }
    }

    nlohmann::json m_fields;
};

constexpr VerbEntry kConfigVerbs[] = {
    {"config push", "Write the controller's configuration",
     "A wrong configuration can leave the screen dark. The record is that of the controller's generation,\n"
     "which its ping tells. Address, Baudrate, ScreenWidth, ScreenHeight and Color are the controller's\n"
     "present ones unless given; FileType is 0 unless given; everything else has to be given:\n"
     "  generation 5: ControllerName (text of 8 bytes), MirrorMode, OEPol, DAPol, RowOrder, FreqPar, "
     "OEWidth,\n"
     "    OEAngle, FaultProcessMode, CommTimeoutValue, RunningMode, LoggingMode, GrayFlag, CascadeMode,\n"
     "    Default_brightness, HUBConfig, Language\n"
     "  generation 6: ControllerName (text of 16 bytes), ScreenAddress (text of 48 bytes), modeofdisp,\n"
     "    TipLanguage, FaultProcessMode, CommTimeoutValue, RunningMode, LoggingMode, DevideScreenMode,\n"
     "    Default_brightness\n"
     "The other values are whole numbers from 0 to 255, Address and the screen's sizes to 65535.\n\n"
     "Example:\n  qmctl -c 192.168.0.199 config push screen.json",
     make_verb<Push>}};

} // namespace

Family config_verbs() { return kConfigVerbs; }

} // namespace qm::ctl
