// What is refused before anything is sent.
#include "child.h"
#include "scripted_peer.h"
#include "support/descriptor.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/socket.h>

namespace qm::test {
namespace {

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
    std::vector<std::string> arguments;
    const char* bad;      // the word that the message must name
    const char* expected; // and what it must ask for
};

const Misuse kMisuses[] = {
    {{}, "verb", "required"},
    {{"pong"}, "pong", ""},
    {{"ping", "surplus"}, "surplus", ""},
    {{"ping", "--fast"}, "--fast", ""},
    {{"text"}, "TEXT", "required"},
    {{"text", "two", "words"}, "words", ""},
    {{"text", "x", "--area", "256"}, "256", "--area: expected a whole number from 0 to 255"},
    {{"text", "x", "--area", "-1"}, "-1", "from 0 to 255"},
    {{"text", "x", "--area", "0x10"}, "0x10", "from 0 to 255"},
    {{"text", "x", "--area", ""}, "''", "from 0 to 255"},
    {{"text", "x", "--size", "0"}, "'0'", "--size: expected a whole number from 1 to 1000"},
    {{"text", "x", "--stay", "65536"}, "65536", "from 0 to 65535"},
    {{"text", "x", "--speed", "99999999999999999999"}, "99999999999999999999", "from 0 to 255"},
    {{"text", "x", "--speed", "5.5"}, "5.5", "from 0 to 255"},
    {{"text", "x", "--repeat"}, "--repeat", "required"},
    {{"text", "x", "--rect", "1,2,3"}, "1,2,3", "X,Y,W,H"},
    {{"text", "x", "--rect", "1,2,3,4,5"}, "1,2,3,4,5", "X,Y,W,H"},
    {{"text", "x", "--rect", "0,0,0,8"}, "0,0,0,8", "not 0"},
    {{"text", "x", "--rect", "-1,0,8,8"}, "-1,0,8,8", "X,Y,W,H"},
    {{"text", "x", "--color", "mauve"}, "mauve", "red, green, yellow"},
    {{"text", "x", "--color", "#12345"}, "#12345", "#RRGGBB"},
    {{"text", "x", "--color", "#12345G"}, "#12345G", "#RRGGBB"},
    {{"text", "x", "--screen", "triple"}, "triple", "single, double, three, full"},
    {{"text", "x", "--mode", "zigzag"}, "zigzag", "static, left, right"},
    {{"text", "x", "--mode", "256"}, "256", "from 0 to 255"},
    {{"text", "x", "--halign", "top"}, "top", "left, center, right"},
    {{"text", "x", "--valign", "left"}, "left", "top, center, bottom"},
    {{"text", "x", "--single", "--multi"}, "--single", "--multi"},
    {{"text", "x", "--font", "/nowhere/font.TTF"}, "/nowhere/font.TTF", "a file that can be read"},
    {{"text", "x", "--font", "fonts/some.otf"}, "fonts/some.otf", ".ttf or .ttc"},
    {{"text", "x", "--font", ""}, "''", "a font family"},
    {{"picture"}, "FILE", "required"},
    {{"picture", "/nowhere/logo.png"}, "/nowhere/logo.png", "a file that can be read"},
    {{"picture", "/dev"}, "/dev", "a file that can be read"},
    {{"picture", QMCTL_BINARY}, QMCTL_BINARY, "a PNG picture"},
};

TEST(BadArguments, AreNamedAndNothingIsSent) {
    const Listener controller;
    for (const Misuse& misuse : kMisuses) {
        SCOPED_TRACE(testing::PrintToString(misuse.arguments));
        std::vector<std::string> arguments = misuse.arguments;
        arguments.insert(arguments.begin(), {"-c", controller.address()});
        const Outcome outcome = qmctl(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr(misuse.bad));
        EXPECT_THAT(outcome.err, HasSubstr(misuse.expected));
        EXPECT_EQ(outcome.out, "");
        EXPECT_FALSE(controller.was_connected());
    }
}

TEST(BadArguments, AddressesAreNeverGuessed) {
    for (const char* bad : {"localhost", "127.1", "127.0.0.1:", "127.0.0.1:0", "127.0.0.1:65536",
                            "127.0.0.1:5x", "127.0.0.1:5005:1", "::1", "", "127.0.0.1 "}) {
        const Outcome outcome = qmctl({"ping", "-c", bad});
        EXPECT_EQ(outcome.status, 1) << bad;
        EXPECT_THAT(outcome.err, HasSubstr("such as 192.168.0.199:5005, not '" + std::string(bad) + "'"));
    }
    const Outcome reserved = qmctl({"text", "x", "-c", "127.0.0.1:1023"});
    EXPECT_EQ(reserved.status, 1);
    EXPECT_THAT(reserved.err, HasSubstr("1024 to 65535, not 1023"));
}

TEST(BadArguments, StandardInputMustBeAText) {
    const Listener controller;
    const std::vector<std::string> arguments{"-c", controller.address(), "text", "-"};
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

TEST(Help, ShowsAnExampleOfEveryVerb) {
    const Outcome all = qmctl({"--help"});
    EXPECT_EQ(all.status, 0);
    for (const std::string verb : {"ping", "text", "picture"}) {
        EXPECT_THAT(all.out, HasSubstr("\n  " + verb + " "));
        const Outcome help = qmctl({verb, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.out, HasSubstr("\n  qmctl ")) << verb;
        EXPECT_EQ(help.err, "");
    }
}

} // namespace
} // namespace qm::test
