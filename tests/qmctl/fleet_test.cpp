// One verb on many controllers.
#include "sign_fixture.h"

#include <csignal>
#include <future>
#include <gmock/gmock.h>
#include <random>
#include <sstream>

namespace qm::test {
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;

std::vector<Json> objects_in(const std::string& text) {
    std::vector<Json> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) objects.push_back(Json::parse(line));
    return objects;
}

TEST(ManyControllers, GetTheVerbAndALineEach) {
    std::vector<std::unique_ptr<sim::Simulator>> controllers;
    std::string list = "# all of them\n", commas;
    for (int i = 0; i < 8; ++i) {
        controllers.push_back(std::make_unique<sim::Simulator>());
        list.append(address(controllers.back()->port())).append(" # a remark\n\n");
        commas.append(commas.empty() ? "" : ",").append(address(controllers.back()->port()));
    }
    const TemporaryFile file("list.txt", list);
    const Outcome table = qmctl({"--controllers", file.path(), "--jobs", "3", "text", "-"}, "Hello");
    EXPECT_EQ(table.status, 0) << table.err;
    const Outcome json = qmctl({"-c", commas, "--json", "area", "rm", "9"});
    std::istringstream lines(json.out);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        EXPECT_EQ(nlohmann::json::parse(line)["ok"], true);
    EXPECT_EQ(count, 8U);
    for (const auto& controller : controllers) {
        EXPECT_EQ(ids_of(*controller), std::vector<unsigned>{0});
        EXPECT_THAT(table.out, HasSubstr(address(controller->port()).append(": Area 0;")));
    }
}

TEST(ManyControllers, AreAllTriedWhenOneFails) {
    const sim::Simulator good;
    sim::Simulator bad;
    bad.set_fault(sim::Fault{.kind = sim::FaultKind::close});
    const std::string both = address(bad.port()).append(",").append(address(good.port()));
    const Outcome outcome = qmctl({"-c", both, "--jobs", "1", "text", "Hello"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, testing::ContainsRegex(address(bad.port()).append(": .*\\(status -1\\)")));
    EXPECT_THAT(outcome.out, HasSubstr(address(good.port()).append(": Area 0;")));
    EXPECT_EQ(ids_of(good).size(), 1U);
    const Outcome json = qmctl({"-c", both, "--json", "area", "rm", "all"});
    EXPECT_EQ(json.status, 2);
    EXPECT_THAT(json.out, HasSubstr(R"("controller":")" + address(bad.port())));
}

TEST(ManyControllers, RefuseWhatNoneOfThemHas) {
    const sim::Simulator five({.type = 0x0051}), other({.type = 0x0051}), six;
    const struct {
        const sim::Simulator& second;
        int status;
    } cases[] = {{other, 1}, {six, 2}}; // 1 promises that nothing was sent to any
    for (const auto& c : cases) {
        const std::string both = address(five.port()).append(",").append(address(c.second.port()));
        const Outcome outcome = qmctl({"-c", both, "--json", "text", "x", "--say", "y"});
        EXPECT_EQ(outcome.status, c.status) << outcome.out;
        EXPECT_THAT(outcome.out,
                    HasSubstr(R"({"ok":false,"error":"speech needs a controller of generation 6",)"
                              R"("controller":")" +
                              address(five.port())));
        EXPECT_THAT(outcome.err, HasSubstr(" failed: " + address(five.port())));
        const Outcome built = qmctl({"-c", both, "program", "preview", QM_EXAMPLES "/program/shop.json"});
        EXPECT_EQ(built.status, 1);
        EXPECT_THAT(built.err, HasSubstr("one controller, not for 2"));
    }
}

TEST(ManyControllers, AreCalledByNameTagOrHost) {
    const sim::Simulator entrance, hall, roof;
    const std::string port = std::to_string(hall.port());
    const TemporaryFile list("controllers", "entrance " + address(entrance.port()) + " hall\n# none\n" +
                                                "\"hall\" localhost:" + port + " hall warm # a host\n" +
                                                "roof " + address(roof.port()) + " cold\n");
    const Words listed{"--controllers", list.path(), "--json"};
    const auto names = [&](const char* wanted) {
        std::vector<std::string> found;
        for (const Json& object : objects_in(qmctl(listed + Words{"-c", wanted, "ping"}).out))
            found.push_back(object["name"]);
        std::ranges::sort(found);
        return found;
    };
    EXPECT_THAT(names("tag:hall"), testing::ElementsAre("\"hall\"", "entrance"));
    EXPECT_THAT(names("entrance,tag:hall,tag:cold,roof"), testing::SizeIs(3)) << "everyone once";
    EXPECT_EQ(objects_in(qmctl(listed + Words{"ping"}).out).size(), 3U);
    EXPECT_THAT(qmctl(listed + Words{"-c", "tag:none", "ping"}).err,
                HasSubstr("expected a tag of " + list.path()));
    ::setenv("QMCTL_CONTROLLERS", list.path().c_str(), 1);
    EXPECT_THAT(qmctl({"-c", "roof", "text", "x"}).out, HasSubstr("roof (" + address(roof.port()) + ")"));
    ::unsetenv("QMCTL_CONTROLLERS");
    EXPECT_EQ(ids_of(roof).size(), 1U);
    for (const std::string line : {"a 127.0.0.1\na 127.0.0.2", "a 127.1", "a,b 127.0.0.1"}) {
        const TemporaryFile wrong("controllers", line);
        EXPECT_THAT(qmctl({"--controllers", wrong.path(), "ping"}).err, HasSubstr("line ")) << line;
    }
}

TEST(ManyControllers, AreTriedAgainWhereThatHelpsAndReported) {
    const sim::Simulator good;
    sim::Simulator gone, against;
    gone.set_fault(sim::Fault{.kind = sim::FaultKind::close});
    against.set_fault(sim::Fault{.kind = sim::FaultKind::nack});
    const TemporaryFile report("report", std::string());
    const std::string all = address(gone.port()) + "," + address(against.port()) + "," + address(good.port());
    EXPECT_EQ(qmctl({"-c", all, "--retries", "1", "--report", report.path(), "text", "x"}).status, 2);
    std::ifstream file(report.path());
    std::map<std::string, Json> told;
    for (const Json& line : objects_in({std::istreambuf_iterator<char>(file), {}}))
        told.emplace(line["controller"].get<std::string>(), line);
    ASSERT_EQ(told.size(), 3U);
    EXPECT_EQ(told[address(gone.port())]["tries"], 2);
    EXPECT_EQ(told[address(against.port())]["tries"], 1) << "what is refused will be refused again";
    const Json& done = told[address(good.port())];
    EXPECT_EQ(done["tries"], 1);
    EXPECT_EQ(done["ok"], true);
    EXPECT_EQ(done["verb"], "text");
}

// How controllers behave, and what the report has to say of each.
struct Behaviour {
    std::optional<sim::FaultKind> fault;
    std::size_t count;
    int status;
    const char *meaning, *reason;
};
constexpr Behaviour kBehaviours[] = {
    {sim::FaultKind::silence, 10, -1, "no connection, no usable answer in time", "was silent for 3 s"},
    {sim::FaultKind::reset, 10, -1, "writing ", "was reset"},
    {sim::FaultKind::nack, 5, 199, "the controller refused: error 199", "refused with error 199"},
    {std::nullopt, 75, 0, "", ""},
};

class ManyControllersOfASign : public Sign {
  protected:
    ManyControllersOfASign() {
        folder.program("one.json", 1, 20);
        sign = folder.write("sign.json", R"({"playlist": ["one.json"]})");
        for (const Behaviour& behaviour : kBehaviours)
            for (std::size_t i = 0; i < behaviour.count; ++i) add(behaviour);
    }

    std::string sign, list;
    std::map<std::string, const Behaviour*> behaviours; // by address
    std::vector<std::unique_ptr<sim::Simulator>> controllers;

  private:
    // The requests of an upload, those that bring a block true.
    std::vector<bool> find_blocks() {
        std::vector<bool> blocks;
        {
            const sim::Simulator reference({.on_request = [&](const std::string& line) {
                if (!line.starts_with("program ")) blocks.push_back(line.starts_with("write,"));
            }});
            EXPECT_EQ(apply(reference, sign).status, 0);
        }
        EXPECT_GE(std::ranges::count(blocks, true), 20);
        return blocks;
    }
    void add(const Behaviour& behaviour) {
        if (m_blocks.empty()) m_blocks = find_blocks();
        sim::Options options;
        if (behaviour.fault) options.fault = sim::Fault{.kind = *behaviour.fault};
        while (behaviour.fault == sim::FaultKind::reset && !m_blocks.at(options.fault->after))
            options.fault->after = static_cast<unsigned>(m_random() % m_blocks.size());
        controllers.push_back(std::make_unique<sim::Simulator>(options));
        behaviours[address(controllers.back()->port())] = &behaviour;
        list += (list.empty() ? "" : ",") + address(controllers.back()->port());
    }

    std::vector<bool> m_blocks;
    std::mt19937 m_random{17};
};

TEST_F(ManyControllersOfASign, DoNotWaitForTheSilentAndAreReportedExactly) {
    const TemporaryFile report("report", std::string());
    const Outcome outcome = qmctl({"--json", "-c", list, "--report", report.path(), "apply", sign});
    EXPECT_EQ(outcome.status, 2) << outcome.err;
    std::size_t done = 0;
    for (const Json& line : objects_in(outcome.out)) {
        const auto fault = behaviours.at(line["controller"])->fault;
        if (fault == sim::FaultKind::silence) {
            EXPECT_EQ(done, 75U) << "before a silent one is given up";
        }
        done += !fault;
    }
    std::ifstream file(report.path());
    for (const Json& line : objects_in({std::istreambuf_iterator<char>(file), {}})) {
        const auto told = behaviours.extract(line["controller"].get<std::string>());
        ASSERT_FALSE(told.empty()) << "twice: " << line;
        const Behaviour& behaviour = *told.mapped();
        EXPECT_EQ(line["ok"], !behaviour.fault) << line;
        EXPECT_EQ(line.value("status", 0), behaviour.status) << line;
        EXPECT_EQ(line["tries"], 1) << line;
        EXPECT_THAT(line.value("meaning", ""), testing::StartsWith(behaviour.meaning));
        EXPECT_THAT(line.value("reason", ""), HasSubstr(behaviour.reason));
    }
    EXPECT_TRUE(behaviours.empty()) << "not reported: " << behaviours.size();
    for (std::size_t i = 25; i < controllers.size(); ++i) // those without a fault
        EXPECT_EQ(controllers[i]->state().program, "P001");
}

TEST(Service, OutlivesRequestsAndReadersThatAreNone) {
    const std::string deep = R"({"id": )" + std::string(200000, '[') + std::string(200000, ']') + "}\n";
    const Outcome outcome =
        qmctl({"serve"}, deep + std::string(3 << 20, 'x') + "\n" + R"({"verb": "ping --jobs=1"})");
    EXPECT_EQ(outcome.status, 0);
    const std::vector<Json> answers = objects_in(outcome.out);
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_THAT(answers[0]["error"].get<std::string>(), HasSubstr("more than 100 deep"));
    EXPECT_THAT(answers[1]["error"].get<std::string>(), HasSubstr("at most 1 MiB"));
    EXPECT_THAT(answers[2]["error"].get<std::string>(), HasSubstr("without options"));
    EXPECT_EQ(qmctl({"serve"}, "nonsense\nnonsense\n", "/dev/full").status, 2);
    const sim::Simulator one, two;
    const std::string both = address(one.port()) + "," + address(two.port());
    const Outcome unreported = qmctl({"-c", both, "--report", "/dev/full", "ping"});
    EXPECT_EQ(unreported.status, 2);
    EXPECT_THAT(unreported.err, HasSubstr("'/dev/full' cannot be written any more"));
}

TEST(Service, AnswersEveryLineAndKeepsTheOrderOfAController) {
    const sim::Simulator one, two;
    const TemporaryFile list("controllers", "one " + address(one.port()) + "\ntwo " + address(two.port()));
    std::string requests =
        R"({"id": "both", "verb": "text", "arguments": ["-5"], "options": {"area": 9, "bold": true}})"
        "\nnonsense\n[]\n"
        R"({"id": 2, "verb": "serve"})"
        "\n"
        R"({"id": 3, "verb": "text", "arguments": ["-"]})"
        "\n"
        R"({"id": 4, "verb": "area rm", "options": {"json": true}})"
        "\n"
        R"({"id": 5, "controller": "one", "verb": "area", "arguments": ["rm", 8]})"
        "\n";
    for (int i = 10; i < 40; ++i)
        requests += R"({"id": )" + std::to_string(i) +
                    R"(, "controller": "one", "verb": "brightness", "arguments": [)" +
                    std::to_string(i % 16) + "]}\n";
    const Outcome outcome = qmctl({"--controllers", list.path(), "serve"}, requests);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::vector<Json> answers = objects_in(outcome.out);
    ASSERT_EQ(answers.size(), 37U);
    std::vector<int> order;
    for (const Json& answer : answers) {
        const Json id = answer.value("id", Json());
        if (id == "both") {
            EXPECT_EQ(answer["results"][1]["name"], "two") << answer;
        } else if (id == 5) {
            EXPECT_EQ(answer["deleted"], Json::array({8})) << answer;
        } else if (id >= 10) {
            EXPECT_EQ(answer["ok"], true) << answer;
            order.push_back(id);
        } else {
            EXPECT_THAT(answer["error"].get<std::string>(), testing::Not("")) << answer;
        }
    }
    EXPECT_TRUE(std::ranges::is_sorted(order));
    EXPECT_EQ(ids_of(two), std::vector<unsigned>{9});
}

TEST(Override, IsGoneInTheEndAndWhenInterrupted) {
    const sim::Simulator one, two;
    sim::Simulator gone;
    gone.set_fault(sim::Fault{.kind = sim::FaultKind::close});
    for (const auto* controller : {&one, &two})
        ASSERT_EQ(qmctl({"-c", address(controller->port()), "text", "under it"}).status, 0);
    const std::string all = address(one.port()) + "," + address(gone.port()) + "," + address(two.port());
    const Outcome outcome = qmctl({"-c", all, "--json", "override", "--for", "1s", "Closed"});
    EXPECT_EQ(outcome.status, 2) << outcome.err;
    std::vector<std::string> order;
    for (const Json& object : objects_in(outcome.out))
        order.push_back(object.contains("until") ? "shown" : object.contains("deleted") ? "gone" : "failed");
    EXPECT_THAT(order, testing::UnorderedElementsAre("shown", "shown", "failed", "gone", "gone"));
    EXPECT_EQ(ids_of(one), std::vector<unsigned>{0});
    EXPECT_EQ(ids_of(two), std::vector<unsigned>{0});

    std::promise<void> shown;
    const sim::Simulator third({.on_screen = [&, first = true](const sim::Image&) mutable {
        if (std::exchange(first, false)) shown.set_value();
    }});
    RunningQmctl run({"-c", address(third.port()), "override", "--for", "1h", "Closed"});
    ASSERT_EQ(shown.get_future().wait_for(std::chrono::seconds(30)), std::future_status::ready);
    EXPECT_EQ(ids_of(third), std::vector<unsigned>{31});
    for (int i = 0; i < 2; ++i) run.send(SIGHUP); // as terminals do
    EXPECT_EQ(run.end().status, 130);
    EXPECT_EQ(ids_of(third), std::vector<unsigned>{});
    EXPECT_THAT(qmctl({"override", "--for", "2d", "x"}).err,
                HasSubstr("such as 90s, 5m or 1h30m, of at most 24h"));
}

TEST(ManyControllers, LeftUndoneWhenInterruptedAreNamed) {
    std::promise<void> asked;
    bool first = true;
    const sim::Simulator silent(
        {.fault = sim::Fault{.kind = sim::FaultKind::silence}, .on_request = [&](const std::string&) {
             if (std::exchange(first, false)) asked.set_value();
         }});
    const sim::Simulator never;
    RunningQmctl run({"-c", address(silent.port()) + "," + address(never.port()), "--jobs", "1", "ping"});
    ASSERT_EQ(asked.get_future().wait_for(std::chrono::seconds(30)), std::future_status::ready);
    run.send(SIGINT);
    const Outcome outcome = run.end();
    EXPECT_EQ(outcome.status, 130);
    EXPECT_THAT(outcome.err, HasSubstr("interrupted; not done: "));
    EXPECT_THAT(outcome.err, HasSubstr(address(never.port())));
    EXPECT_EQ(never.connections(), 0U);
}

} // namespace
} // namespace qm::test
