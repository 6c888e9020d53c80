// What is refused before anything is sent.
#include "TemporaryFile.h"
#include "child.h"
#include "scripted_peer.h"
#include "support/Descriptor.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>

namespace qm::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

// A port that takes connections and keeps them, to see whether there were any.
class Listener {
  public:
    Listener() : m_socket(bound_socket()) { EXPECT_EQ(::listen(m_socket.get(), 8), 0); }
    [[nodiscard]] std::string address() const { return test::address(port_of(m_socket)); }
    [[nodiscard]] bool was_connected() const { return wait_ready(m_socket.get(), POLLIN, Clock::now()) != 0; }

  private:
    Descriptor m_socket;
};

struct Misuse {
    Words arguments;
    const char* bad;      // the word that the message must name
    const char* expected; // and what it must ask for
};

const Misuse kMisuses[] = {
    {{}, "verb", "required"},
    {"text", "TEXT", "required"},
    {"text two words", "words", ""},
    {"text x --area 256", "256", "--area: expected a whole number from 0 to 255"},
    {"text x --area -1", "-1", "from 0 to 255"},
    {"text x --area 0x10", "0x10", "from 0 to 255"},
    {{"text", "x", "--area", ""}, "''", "from 0 to 255"},
    {"text x --size 0", "'0'", "--size: expected a whole number from 1 to 1000"},
    {"text x --stay 65536", "65536", "from 0 to 65535"},
    {"text x --speed 99999999999999999999", "99999999999999999999", "from 0 to 255"},
    {"text x --speed 5.5", "5.5", "from 0 to 255"},
    {"text x --rect 1,2,3", "1,2,3", "X,Y,W,H"},
    {"text x --rect 1,2,3,4,5", "1,2,3,4,5", "X,Y,W,H"},
    {"text x --rect 0,0,0,8", "0,0,0,8", "not 0"},
    {"text x --rect -1,0,8,8", "-1,0,8,8", "X,Y,W,H"},
    {"text x --color mauve", "mauve", "red, green, yellow"},
    {"text x --color #12345", "#12345", "#RRGGBB"},
    {"text x --color #12345G", "#12345G", "#RRGGBB"},
    {"text x --screen triple", "triple", "single, double, three, full"},
    {"text x --mode zigzag", "zigzag", "static, left, right"},
    {"text x --mode 256", "256", "from 0 to 255"},
    {"text x --halign top", "top", "left, center, right"},
    {"text x --valign left", "left", "top, center, bottom"},
    {"text x --single --multi", "--single", "--multi"},
    {"text x --font /nowhere/font.TTF", "/nowhere/font.TTF", "a file that can be read"},
    {"text x --font /nowhere/font.PCF.gz", "/nowhere/font.PCF.gz", "a file that can be read"},
    {"text x --font fonts/some", "fonts/some", ".otf, .otb"},
    {{"text", "x", "--font", ""}, "''", "a font family"},
    {{"text", "x", "--say", ""}, "--say", "a text of 1 to 65515 bytes"},
    {"picture", "FILE", "required"},
    {"picture /nowhere/logo.png", "/nowhere/logo.png", "a file that can be read"},
    {"picture /dev", "/dev", "a file that can be read"},
    {{"picture", QMCTL_BINARY}, QMCTL_BINARY, "is no picture of a known kind"},
    {{"picture", QMCTL_BINARY, "--fit", "fill"}, "fill", "none, contain, cover, stretch"},
    {"find surplus", "surplus", ""},
    {"status surplus", "surplus", ""},
    {"clock now", "now", ""},
    {"power", "verb", "required"},
    {"power maybe", "maybe", ""},
    {"power on off", "off", ""},
    {"power timer", "PERIOD", "required"},
    {"power timer 7:30-12:00", "7:30-12:00", "such as 07:30-22:00"},
    {"power timer 07:30-24:00", "07:30-24:00", "such as 07:30-22:00"},
    {"power timer 07:30-12:60", "07:30-12:60", "such as 07:30-22:00"},
    {"power timer 07:30-12:00 13:00", "'13:00'", "such as 07:30-22:00"},
    {"power timer 07:30-12:00-13:00", "07:30-12:00-13:00", "such as 07:30-22:00"},
    {"power timer 07:00-12:00 11:59-13:00", "'11:59-13:00'", "do not overlap"},
    {"power timer 22:00-06:00 12:00-13:00 05:59-07:00", "'05:59-07:00'", "'22:00-06:00'"},
    {"power timer 08:00-09:00 07:00-10:00", "'07:00-10:00'", "do not overlap"},
    {"power timer 08:00-08:00", "'08:00-08:00'", "two different times"},
    {"brightness", "brightness", "or --table FILE"},
    {"brightness 256", "256", "from 0 to 255"},
    {"brightness -1", "-1", "from 0 to 255"},
    {"brightness --table /nowhere/levels", "/nowhere/levels", "a file that can be read"},
    {{"brightness", "--table", QMCTL_BINARY}, QMCTL_BINARY, "48 numbers from 0 to 255"},
    {"lock door", "door", ""},
    {"lock screen P001", "P001", ""},
    {"lock program", "NAME", "required"},
    {"lock program P01", "P01", "a name of 4 characters"},
    {"lock program P0001", "P0001", "a name of 4 characters"},
    {"lock program P001 --for 4294967296", "4294967296", "from 0 to 4294967295"},
    {"unlock program P001 --for 1", "--for", ""},
    {"password set 000000", "NEW", "required"},
    {"password set 000000 short", "short", "a password of 6 characters"},
    {"password delete toolong", "toolong", "a password of 6 characters"},
    {"button", "N", "required"},
    {"button 256", "256", "from 0 to 255"},
    {"mode x", "x", "from 0 to 255"},
    {"speed 32768", "32768", "from -32768 to 32767"},
    {"speed -32769", "-32769", "from -32768 to 32767"},
    {"speed -- --5", "--5", "from -32768 to 32767"},
    {"address 32768", "32768", "from 0 to 32767"},
    {"delay -1", "-1", "from 0 to 32767"},
    {"battle --mode 256", "256", "from 0 to 255"},
    {"reset now", "now", ""},
    {"firmware activate firmware.bin", "firmware.bin", "a name of 4 characters"},
    {"network set-ip 192.168.0.50 255.255.255.0", "GATEWAY", "required"},
    {"network set-ip 192.168.0.256 255.255.255.0 192.168.0.1", "192.168.0.256", "an IPv4 address"},
    {"network set-ip 1.2.3.4 255.0.0.0 1.1.1.1 --port 0", "'0'", "from 1 to 65535"},
    {"network set-ip 1.2.3.4 255.0.0.0 1.1.1.1 --password ninebytes", "ninebytes", "8 bytes"},
    {"network set-ip 1.2.3.4 255.0.0.0 1.1.1.1 --net-id thirteenbytes", "thirteen", "12 bytes"},
    {"network set-mac 0-26-43-60-77-94", "0-26-43-60-77-94", "in hex, such as 00:1a:2b:3c:4d:5e"},
    {"network set-mac 00:1a:2b:3c:4d", "00:1a:2b:3c:4d", "in hex"},
    {"network set-mac 00:1a:2b-3c:4d:5e", "00:1a:2b-3c:4d:5e", "in hex"},
    {"network set-mac 01:1a:2b:3c:4d:5e", "01:1a:2b:3c:4d:5e", "of one station"},
    {"network wifi Signpost", "PASSWORD", "requires"},
    {"network wifi a,b 12345678", "a,b", "without comma"},
    {"network wifi Signpost 1234567", "1234567", "8 to 63 characters"},
    {{"network", "wifi", "Signpost", "12345678\r\n"}, "12345678", "8 to 63 characters"},
    {"config push /nowhere/screen.json", "/nowhere/screen.json", "a file that can be read"},
    {"config push /bin/sh", "/bin/sh", "one JSON object"},
    {"fs", "verb", "required"},
    {"fs ls --type x", "'x'", "from 0 to 255"},
    {"fs put /nowhere/P001", "/nowhere/P001", "a file that can be read"},
    {{"fs", "put", QMCTL_BINARY}, "'qmctl'", "a name of 4 characters"},
    {{"fs", "put", QMCTL_BINARY, "P1"}, "P1", "a name of 4 characters"},
    {{"fs", "put", QMCTL_BINARY, "P001", "--block", "0"}, "'0'", "from 1 to 32758"},
    {{"fs", "put", QMCTL_BINARY, "P001", "--block", "32759"}, "32759", "from 1 to 32758"},
    {"fs rm", "NAME", "required"},
    {"fs rm P001 P2", "'P2'", "a name of 4 characters"},
    {"fs rm {}", "'{}'", "a name of 4 characters"},
    {"fs format", "--yes", "erases all files"},
    {"area send /no/such/file", "/no/such/file", "a file that can be read"},
    {"program send /bin/sh", "/bin/sh", "syntax error"},
};

TEST(BadArguments, AreNamedAndNothingIsSentToOneOrSeveral) {
    const Listener controller, other;
    for (const Misuse& misuse : kMisuses) {
        SCOPED_TRACE(testing::PrintToString(misuse.arguments));
        for (const std::string& to : {controller.address(), controller.address() + "," + other.address()}) {
            const Outcome outcome = qmctl(Words{"-c", to} + misuse.arguments);
            EXPECT_EQ(outcome.status, 1);
            EXPECT_THAT(outcome.err, HasSubstr(misuse.bad));
            EXPECT_THAT(outcome.err, HasSubstr(misuse.expected));
            EXPECT_EQ(outcome.out, "");
            EXPECT_FALSE(controller.was_connected());
        }
    }
}

TEST(BadArguments, ConfigurationIsReadBeforeAnythingIsSent) {
    const Listener controller;
    const struct {
        std::string fields;
        const char* words;
    } cases[] = {
        {"[]", "one JSON object"},
        {R"({"OEPol": 1)", "one JSON object"},
        {R"({"Oepol": 1})", "Oepol has not"},
        {R"({"CRC16": 1})", "CRC16 has not"},
        {R"({"OEPol": 256})", "whose OEPol is a whole number from 0 to 255"},
        {R"({"OEPol": -1})", "whose OEPol is a whole number"},
        {R"({"OEPol": "1"})", "whose OEPol is a whole number"},
        {R"({"ScreenWidth": 65536})", "whose ScreenWidth is a whole number from 0 to 65535"},
        {R"({"ControllerName": "seventeen letters"})", "ControllerName is a text of at most 16 bytes"}};
    for (const auto& c : cases) {
        const TemporaryFile file("screen.json", c.fields);
        const Outcome outcome = qmctl({"config", "push", file.path(), "-c", controller.address()});
        EXPECT_EQ(outcome.status, 1) << c.fields;
        EXPECT_THAT(outcome.err, HasSubstr(c.words));
    }
    EXPECT_FALSE(controller.was_connected());
}

TEST(BadArguments, BrightnessTableHasExactly48Numbers) {
    const Listener controller;
    std::string numbers;
    for (int i = 0; i < 47; ++i) numbers += "1 ";
    for (const std::string& wrong :
         {numbers, numbers + "1 1", numbers + "256", numbers + "x", std::string()}) {
        const TemporaryFile file("levels", wrong);
        const Outcome outcome = qmctl({"brightness", "--table", file.path(), "-c", controller.address()});
        EXPECT_EQ(outcome.status, 1) << wrong;
        EXPECT_THAT(outcome.err, HasSubstr("48 numbers"));
    }
    EXPECT_FALSE(controller.was_connected());
}

TEST(BadArguments, AddressesAreNeverGuessed) {
    for (const char* bad : {"127.1", "127.0.0.1.", "127.0.0.1:", "127.0.0.1:0", "127.0.0.1:65536",
                            "127.0.0.1:5x", "127.0.0.1:5005:1", "::1", "", "127.0.0.1 "}) {
        const Outcome outcome = qmctl({"ping", "-c", bad});
        EXPECT_EQ(outcome.status, 1) << bad;
        EXPECT_THAT(outcome.err, HasSubstr("such as 192.168.0.199:5005, not '" + std::string(bad) + "'"));
    }
    for (const char* reserved : {"127.0.0.1:1023", "127.0.0.1,127.0.0.1:1023"}) {
        const Outcome outcome = qmctl({"text", "x", "-c", reserved});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr("1024 to 65535, not 1023"));
    }
}

TEST(BadArguments, StandardInputMustBeAText) {
    const Listener controller;
    const Words arguments{"-c", controller.address(), "text", "-"};
    const struct {
        std::string input;
        const char* words;
    } cases[] = {{std::string("a\0b", 3), "zero byte"}, {std::string(65536, 'a'), "at most 65535 bytes"}};
    for (const auto& c : cases) {
        const Outcome outcome = qmctl(arguments, c.input);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr(c.words));
    }
    EXPECT_FALSE(controller.was_connected());
}

TEST(BadArguments, MistypedWordIsNamedOnceWithTheNearest) {
    const struct {
        Words arguments;
        std::string words;
    } cases[] = {
        {{"pign"}, "unknown verb 'pign'; did you mean 'ping'?"},
        {{"Brigthness", "5"}, "unknown verb 'Brigthness'; did you mean 'brightness'?"},
        {{"ls"}, "unknown verb 'ls'; did you mean 'fs ls'?"},
        {{"help"}, "unknown verb 'help'; did you mean '--help'?"},
        {{"power", "of"}, "unknown verb 'power of'; did you mean 'power off'?"},
        {{"power", "maybe"}, "unknown verb 'power maybe'; power has on, off, timer, cancel"},
        {{"xyzzy"}, "unknown verb 'xyzzy'"},
        {{"text", "--aera=5", "x"}, "unknown option '--aera'; did you mean '--area'?"},
        {{"text", "x", "--controler", "127.0.0.1"},
         "unknown option '--controler'; did you mean '--controller'?"},
        {{"lock", "program", "--fro", "5"}, "unknown option '--fro'; did you mean '--for'?"},
        {{"text", "-x"}, "unknown option '-x'"},
        {{"text", "[two]", "[words]"},
         "unexpected argument '[words]'; what contains spaces stands in quotes"},
        {{"ping", "surplus"}, "unexpected argument 'surplus'"},
        {{"text", "x", "--repeat"}, "--repeat: a value is required"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = qmctl(c.arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err.substr(0, outcome.err.find('\n')), "qmctl: " + c.words);
        const Outcome told = qmctl(Words("--json") + c.arguments);
        EXPECT_EQ(told.status, 1);
        EXPECT_EQ(nlohmann::json::parse(told.err, nullptr, false),
                  (nlohmann::json{{"ok", false}, {"error", c.words}}))
            << told.err;
        EXPECT_EQ(told.out, "");
    }
}

// The verbs that the help of the program, or of a group, lists.
std::vector<std::string> listed_verbs(const std::string& help) {
    std::vector<std::string> verbs;
    std::istringstream lines(help.substr(std::min(help.find("\nVerbs:\n"), help.size())));
    std::string line;
    std::getline(lines, line);
    for (std::getline(lines, line); std::getline(lines, line) && line.starts_with("  ");)
        if (line[2] != ' ') verbs.push_back(line.substr(2, line.find(' ', 2) - 2));
    return verbs;
}

// Of a verb, or of the verbs of a group; returns how many they are.
unsigned expect_examples(const std::string& path, const std::string& help) {
    const auto verbs = listed_verbs(help);
    const bool has_example = help.find("\n  qmctl ") != help.npos;
    EXPECT_TRUE(has_example || !verbs.empty()) << path;
    if (has_example) {
        EXPECT_THAT(help, testing::ContainsRegex("\n  (.*[|] )?qmctl .*" + path)) << path;
    }
    unsigned count = has_example ? 1 : 0;
    for (const std::string& verb : verbs) {
        const std::string all = path.empty() ? verb : path + " " + verb;
        const Outcome outcome = qmctl((all + " --help").c_str());
        EXPECT_EQ(outcome.status, 0) << all;
        EXPECT_EQ(outcome.err, "") << all;
        count += expect_examples(all, outcome.out);
    }
    return count;
}

TEST(Help, ShowsAnExampleOfEveryVerb) { EXPECT_GT(expect_examples("", qmctl({"--help"}).out), 40U); }

TEST(Completion, KnowsVerbsOptionsAndControllers) {
    const TemporaryFile list("controllers",
                             std::string("stop-5 10.0.0.5 hall\nstop-6 10.0.0.6 hall\n10.0.0.7\n"));
    ::setenv("QMCTL_CONTROLLERS", list.path().c_str(), 1);
    const struct {
        const char *line, *word, *expected;
    } cases[] = {
        {"qmctl ov", "ov", "override\n"},
        {"qmctl -c stop-5 program s", "s", "send\n"},
        {"qmctl power --js", "--js", "--json\n"},
        {"qmctl text --bold --valign bottom --sp", "--sp",
         "--speed\n--spacing\n--speech-speed\n--speech-repeat\n"},
        {"qmctl ping -c ", "", "10.0.0.7:5005\nstop-5\nstop-6\ntag:hall\n"},
        {"qmctl --controller=stop-5,ta", "stop-5,ta", "stop-5,tag:hall\n"},
        {"qmctl -c tag:h", "h", "hall\n"}, // colons part words in bash
        {"qmctl program send ", "", ""},   // files
        {"qmctl text --font 'a b", "'a b", ""},
    };
    for (const auto& c : cases) {
        ::setenv("COMP_LINE", c.line, 1);
        EXPECT_EQ(qmctl({"completion", "qmctl", c.word, ""}).out, c.expected) << c.line;
    }
    ::unsetenv("COMP_LINE");
    ::unsetenv("QMCTL_CONTROLLERS");
    EXPECT_THAT(qmctl("completion").out, testing::StartsWith("complete "));
}

} // namespace
} // namespace qm::test
