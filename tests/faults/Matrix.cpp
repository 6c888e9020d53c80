#include "Matrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

namespace qm::test {
namespace {

constexpr int kThreads = 192; // most of which wait, if for no more than the rests of a connection

bool is_number(const std::string& word) {
    return word.find_first_of("0123456789") == 0 ||
           (word.size() == 2 && word.find_first_not_of("0123456789ABCDEF") == word.npos);
}

template <class Values> std::string joined(const Values& values, const char* separator) {
    std::ostringstream text;
    for (auto value = values.begin(); value != values.end(); ++value)
        text << (value == values.begin() ? "" : separator) << *value;
    return text.str();
}

// The sentence with N for every number; bytes in a row are one.
std::string without_numbers(const std::string& sentence) {
    std::istringstream in(sentence);
    std::vector<std::string> words;
    for (std::string word; in >> word; words.push_back(word)) {
        const std::size_t size = std::min(word.find_first_of(".,:"), word.size());
        if (!is_number(word.substr(0, size))) continue;
        word.replace(0, size, "N");
        if (!words.empty() && words.back() == "N") words.pop_back();
    }
    return joined(words, " ");
}

std::string contents(const std::string& path) {
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

} // namespace

Met meet(const TalkingCall& call, Ouint16 port, const std::function<void()>& heal) {
    Met met;
    const auto begin = std::chrono::steady_clock::now();
    const Given given = call.run(port);
    met.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    met.status = given.status;
    met.reason = given.reason;
    heal();
    met.next = call.run(port);
    return met;
}

void Matrix::run(const std::vector<Case>& cases) {
    std::atomic<std::size_t> next = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (std::size_t at; (at = next++) < cases.size();) judge(cases[at], cases[at].run());
        });
    for (std::thread& thread : threads) thread.join();
}

void Matrix::judge(const Case& one, const Met& met) {
    const Row& row = m_rows[one.row];
    const std::lock_guard lock(m_mutex);
    SCOPED_TRACE(std::string(one.call->name) + ", " + row.what + ", " + one.where);
    Column& column = m_met[std::string(one.call->name)];
    column.resize(m_rows.size());
    column[one.row].insert(met.status);
    EXPECT_TRUE(row.statuses.empty() ? met.status == one.good : row.statuses.contains(met.status))
        << met.status << ": " << met.reason;
    EXPECT_EQ(met.reason.empty(), met.status == QM_OK) << met.reason;
    EXPECT_TRUE(row.reasons.empty() || row.reasons.contains(without_numbers(met.reason))) << met.reason;
    EXPECT_LT(met.seconds, one.most_seconds);
    EXPECT_EQ(met.next, one.good) << "the next call";
}

// The largest first.
std::vector<Matrix::Group> Matrix::groups(const std::map<std::string, std::string>& titles) const {
    std::map<Column, Group> by_column;
    for (const auto& [call, column] : m_met) {
        Group& group = by_column.try_emplace(column, Group{column}).first->second;
        group.calls.push_back("`" + call + "`");
        const auto title = titles.find(call);
        if (title != titles.end()) group.title += (group.title.empty() ? "" : ", ") + title->second;
    }
    std::vector<Group> groups;
    for (auto& [column, group] : by_column) groups.push_back(std::move(group));
    std::ranges::stable_sort(groups, std::greater<>(), [](const Group& group) { return group.calls.size(); });
    return groups;
}

std::string Matrix::markdown(const std::map<std::string, std::string>& titles) const {
    const std::vector<Group> all = groups(titles);
    std::ostringstream page;
    page << "| What happens to an answer |";
    for (const Group& group : all) page << ' ' << group.title << " |";
    page << " `qm_last_error` |\n|---|---|";
    for (std::size_t i = 0; i < all.size(); ++i) page << "---|";
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        page << "\n| " << m_rows[row].what << " |";
        for (const Group& group : all) page << ' ' << joined(group.column[row], " or ") << " |";
        page << ' ' << joined(m_rows[row].reasons, "<br>") << " |";
    }
    page << "\n";
    for (const Group& group : all) page << "\n- " << group.title << ": " << joined(group.calls, ", ");
    return page.str() + "\n";
}

void expect_on_page(const std::string& name, const std::string& text) {
    const std::string path = QM_RELIABILITY_PAGE, mark = "<!-- " + name + " -->\n",
                      end = "<!-- end of " + name + " -->";
    std::string page = contents(path);
    const std::size_t from = page.find(mark) + mark.size(), to = page.find(end);
    ASSERT_NE(to, page.npos) << "there is no place for " << name << " in " << path;
    if (std::getenv("QM_RELIABILITY")) {
        std::ofstream(path) << page.replace(from, to - from, "\n" + text + "\n");
        return;
    }
    EXPECT_EQ(page.substr(from, to - from), "\n" + text + "\n") << "scripts/reliability writes it anew";
}

} // namespace qm::test
