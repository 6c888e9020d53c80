// The files and the configuration of a controller.
#include "fixture.h"
#include "simulator/controller/FileSystem.h"
#include "support/Descriptor.h"

#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>

namespace qm::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr std::size_t kCapacity = 16777216;

class Files : public ControllerTest {
  protected:
    // Bytes of every value, 2,600 of them.
    static ByteBuffer content() {
        ByteBuffer bytes;
        for (unsigned i = 0; i < 2600; ++i) bytes.push_back(static_cast<Ouint8>(i * 7));
        return bytes;
    }
};

TEST_F(Files, AreWrittenWholeUnderTheirName) {
    const TemporaryFile file("P007.bin", content());
    const struct {
        const char *options, *name;
        int type;
    } cases[] = {{"", "P007", 0},
                 {"ABCD --type 255", "ABCD", 255},
                 {"ABCD --type 3 --block 1", "ABCD", 3},
                 {"(ab) --block 32758", "(ab)", 0}};
    for (const auto& c : cases) {
        done(Words{"fs", "put", file.path()} + c.options);
        const auto written = controller.file(c.name);
        ASSERT_TRUE(written) << c.name;
        EXPECT_EQ(written->data, content());
        EXPECT_EQ(written->type, c.type);
    }
}

TEST_F(Files, AreListedByTypeAndRemoved) {
    const TemporaryFile digits("1234", std::string("123456789"));
    for (const char* name : {"P001", "P002", "[ab]"}) done({"fs", "put", digits.path(), name});
    done({"fs", "put", digits.path(), "F001", "--type", "2"});
    // The CRC is the one that was announced, in the last 4 bytes.
    const nlohmann::json file{{"name", "F001"}, {"type", 2}, {"size", 9}, {"crc32", 0x39383736}};
    EXPECT_EQ(json({"fs", "ls", "--type", "2"})["files"], nlohmann::json::array({file}));
    EXPECT_EQ(json({"fs", "ls"})["files"].size(), 3U);
    EXPECT_THAT(run({"fs", "ls"}).out,
                AllOf(HasSubstr("P001  0     9      0x39383736"), Not(HasSubstr("F001"))));
    EXPECT_EQ(json({"fs", "df"})["available"], kCapacity - 4 * 9);
    done({"fs", "rm", "P002", "[ab]", "P001"});
    EXPECT_EQ(json({"fs", "ls"})["files"], nlohmann::json::array());
    EXPECT_EQ(run({"fs", "rm", "F001", "P001"}).status, 2) << "which is not there any more";
    done({"fs", "rm", "F001"});
    EXPECT_EQ(json({"fs", "df"})["available"], kCapacity);
}

TEST_F(Files, AreNotOverwrittenWhenAskedNotToAndErased) {
    done({"fs", "put", TemporaryFile("P001", content()).path()});
    const TemporaryFile other("P001", std::string("other"));
    const Outcome outcome = run({"fs", "put", other.path(), "--no-overwrite"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("error 107"));
    EXPECT_EQ(controller.file("P001")->data, content());
    done({"fs", "put", other.path()});
    EXPECT_EQ(controller.file("P001")->data.size(), 5U);
    done("fs format --yes");
    EXPECT_TRUE(controller.files().empty());
}

// The controlling side of a new terminal; name is the other side's.
Descriptor terminal(std::string& name) {
    Descriptor side(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    EXPECT_EQ(::grantpt(side.get()), 0);
    EXPECT_EQ(::unlockpt(side.get()), 0);
    name = ::ptsname(side.get());
    return side;
}

// What is written to a terminal reaches its other side bit by bit.
std::string read_until(const Descriptor& side, const std::string& end) {
    std::string text;
    char part[1024];
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (text.find(end) == text.npos && wait_ready(side.get(), POLLIN, deadline) > 0) {
        const ssize_t size = ::read(side.get(), part, sizeof part);
        if (size <= 0) break;
        text.append(part, static_cast<std::size_t>(size));
    }
    return text;
}

TEST_F(Files, UploadShowsABarOnATerminalOnlyAndEndsWithTheResult) {
    const TemporaryFile file("P007", content());
    EXPECT_THAT(run({"fs", "put", file.path()}).out, Not(HasSubstr("\r")));
    std::string name;
    const Descriptor side = terminal(name);
    const Descriptor other(::open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)); // keeps what was written
    const Outcome outcome = run({"fs", "put", file.path()}, "", name.c_str());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const std::string end = "\r\x1B[KController";
    const std::string shown = read_until(side, end);
    EXPECT_THAT(shown, AllOf(HasSubstr("P007  ["), HasSubstr(" of 2600 bytes"), HasSubstr(end)));
}

constexpr const char* kConfiguration6 =
    R"({"ControllerName": "Gate 7", "ScreenAddress": "Hall", "modeofdisp": 1, "TipLanguage": 2,
        "FaultProcessMode": 3, "CommTimeoutValue": 4, "RunningMode": 5, "LoggingMode": 6,
        "DevideScreenMode": 7, "Default_brightness": 8, "Address": 515})";
constexpr const char* kConfiguration5 =
    R"({"ControllerName": "Gate 7", "MirrorMode": 1, "OEPol": 2, "DAPol": 3, "RowOrder": 4, "FreqPar": 5,
        "OEWidth": 6, "OEAngle": 7, "FaultProcessMode": 8, "CommTimeoutValue": 9, "RunningMode": 10,
        "LoggingMode": 11, "GrayFlag": 12, "CascadeMode": 13, "Default_brightness": 14, "HUBConfig": 15,
        "Language": 16, "FileType": 1})";

// All of the record but its CRC-16.
ByteBuffer pushed(const sim::Simulator& controller, const std::string& fields) {
    const TemporaryFile file("screen.json", fields);
    const Outcome outcome = qmctl({"config", "push", file.path(), "-c", address(controller.port())});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const auto written = controller.file("C000");
    if (!written || written->data.size() < 2) return {};
    return {written->data.begin(), written->data.end() - 2};
}

TEST(Configuration, HasEveryFieldAtItsPlaceAndTheRestFromThePing) {
    const sim::Simulator six({.width = 192, .height = 48});
    EXPECT_THAT(pushed(six, kConfiguration6),
                is_hex("00 47 61 74 65 20 37 00*10 48 61 6C 6C 00*44 03 02 00 C0 00 30 00 02 01 02 00*5 "
                       "03 04 05 06 07 00 08 00*5"));
    EXPECT_EQ(six.state().name, "Gate 7");
    const sim::Simulator five({.type = 0x0154, .width = 192, .height = 48});
    EXPECT_THAT(
        pushed(five, kConfiguration5),
        is_hex("01 47 61 74 65 20 37 00 00 01 00 00 C0 00 30 00 02 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D "
               "0E 0F 10 00*3"));
}

TEST(Configuration, ThatDoesNotFitTheControllerIsNotWritten) {
    const sim::Simulator six;
    const struct {
        const sim::Simulator& controller;
        std::string fields;
        const char* words;
    } cases[] = {{six, "{}", "lacks ControllerName"},
                 {six, kConfiguration5, "has no field CascadeMode (generation 6)"},
                 {six, R"({"ControllerName": "x", "modeofdisp": 1})", "lacks FaultProcessMode"}};
    for (const auto& c : cases) {
        const TemporaryFile file("screen.json", c.fields);
        const Outcome outcome = qmctl({"config", "push", file.path(), "-c", address(c.controller.port())});
        EXPECT_EQ(outcome.status, 2) << c.words;
        EXPECT_THAT(outcome.err, HasSubstr(c.words));
        EXPECT_TRUE(c.controller.files().empty()) << c.words;
    }
}

} // namespace
} // namespace qm::test
