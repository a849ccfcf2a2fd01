#include "transfer/CancelToken.h"

namespace corvane {

CancelStage CancelToken::stage() const {
    const std::scoped_lock lock(m_mutex);
    return m_stage;
}

CancelStage CancelToken::request() {
    const std::scoped_lock lock(m_mutex);
    m_requested.request_stop();
    m_stage = m_stage == CancelStage::none ? CancelStage::graceful : CancelStage::hard;
    if (m_stage == CancelStage::hard) {
        m_stop.request_stop();
    }
    return m_stage;
}

void CancelToken::abort() {
    const std::scoped_lock lock(m_mutex);
    m_stage = CancelStage::hard;
    m_requested.request_stop();
    m_stop.request_stop();
    m_abort.request_stop();
}

} // namespace corvane
