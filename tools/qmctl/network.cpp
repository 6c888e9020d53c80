#include "network.h"

namespace qm::ctl {

void require_answer(const Result<>& done) {
    if (done.status() == QM_FAILED)
        throw Failure(done.error(),
                      "no controller gave a good answer (is it powered and on this network, and does the "
                      "firewall let UDP ports 5009 and 14769 in?)");
    require(done);
}

} // namespace qm::ctl
