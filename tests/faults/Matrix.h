// What faults make of calls, and the page where it stands.
#pragma once

#include "talking_calls.h"

#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace qm::test {

// Something that happens to an answer, and what becomes of the call.
struct Row {
    std::string what;
    std::set<int> statuses;        // any of them; none: what the call gives without a fault
    std::set<std::string> reasons; // any of them, with N for numbers; none: that of the call without a fault
};

// A call that has met a fault, and the next one, which meets none.
struct Met {
    int status = 0;
    std::string reason{};
    double seconds = 0;
    int next = 0;
};
Met meet(const TalkingCall& call, Ouint16 port, const std::function<void()>& heal);

struct Case {
    const TalkingCall* call;
    std::size_t row;
    std::string where; // which of its answers, and the like
    int good;          // status without a fault
    std::function<Met()> run;
    double most_seconds = 12; // of the call: three waits of 3 s, and a busy machine
};

class Matrix {
  public:
    explicit Matrix(std::vector<Row> rows) : m_rows(std::move(rows)) {}

    // Runs all of them, many at a time, and fails the test for what is not as its row says.
    void run(const std::vector<Case>& cases);
    void judge(const Case& one, const Met& met);

    // One column for all calls with the same statuses, and which those are. A column is called by the title
    // of the call in it that has one.
    [[nodiscard]] std::string markdown(const std::map<std::string, std::string>& titles) const;

  private:
    using Column = std::vector<std::set<int>>; // statuses by row
    struct Group {
        Column column;
        std::vector<std::string> calls{};
        std::string title{};
    };
    [[nodiscard]] std::vector<Group> groups(const std::map<std::string, std::string>& titles) const;

    std::vector<Row> m_rows;
    std::mutex m_mutex;
    std::map<std::string, Column> m_met; // by call
};

// Fails unless the text stands in docs/reliability.md between the marks of that name; writes it there when
// QM_RELIABILITY is set.
void expect_on_page(const std::string& name, const std::string& text);

} // namespace qm::test
