#pragma once

#include "delivery/handoff/HandoffStep.h"

namespace corvane {

/// Delivers a whole clip: its media, sidecar, thumbnails, filmstrip and HD copy.
class WholeClipStep : public HandoffStep {
  public:
    using HandoffStep::HandoffStep;

  private:
    QCoro::Task<> make() override;
    QCoro::Task<> makePrimary();
    QCoro::Task<> copySidecar();
    QCoro::Task<> copyCache();
};

} // namespace corvane
