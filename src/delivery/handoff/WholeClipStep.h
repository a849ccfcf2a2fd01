#pragma once

#include "delivery/handoff/HandoffStep.h"

namespace corvane {

/// Hands a whole clip over: its media, its sidecar, its pictures, and its HD copy.
class WholeClipStep : public HandoffStep {
  public:
    using HandoffStep::HandoffStep;

  private:
    QCoro::Task<> make() override;
    QCoro::Task<> makePrimary();
    QCoro::Task<> copySidecar();
    QCoro::Task<> carryCache();
};

} // namespace corvane
