#pragma once

#include "delivery/handoff/HandoffStep.h"

namespace corvane {

/// Extracts a subclip into a file and a clip of its own.
class SubclipStep : public HandoffStep {
  public:
    SubclipStep(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index, Subclip subclip);

  private:
    QCoro::Task<> make() override;
    QString failureText(const QString &error) const override;

    Subclip m_subclip;
};

} // namespace corvane
