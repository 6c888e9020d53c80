#include "ProgramUpload.h"

#include "Progress.h"

namespace qm::ctl {
namespace {

constexpr Ouint8 kOverwrite = 1;

void require(int status, const std::string& step) {
    if (status != QM_OK) throw Failure(status, step);
}

// The transfer, ended in any case.
class Transfer {
  public:
    explicit Transfer(const Controller& to) : m_to(to) {
        require(cmd_ofsStartFileTransf(m_to.ip.c_str(), m_to.port), "announcing the transfer");
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer() {
        if (m_open) (void)finish(); // something else has failed, and is what is told
    }
    int finish() {
        m_open = false;
        return cmd_ofsEndFileTransf(m_to.ip.c_str(), m_to.port);
    }

  private:
    const Controller& m_to;
    bool m_open = true;
};

} // namespace

void upload(Session& session, const std::vector<ProgramFile>& files) {
    const Controller& to = session.controller;
    Transfer transfer(to);
    for (const ProgramFile& file : files) {
        std::optional<Progress> progress;
        if (!session.json && !session.verbose && session.output.is_terminal())
            progress.emplace(session, file.name, file.bytes.size());
        require(cmd_ofsWriteFile(to.ip.c_str(), to.port, file.name.c_str(), file.type,
                                 static_cast<Ouint32>(file.bytes.size()), kOverwrite, file.bytes.data()),
                "writing " + file.name);
    }
    require(transfer.finish(), "ending the transfer");
}

} // namespace qm::ctl
