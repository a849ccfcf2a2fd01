#pragma once

#include "delivery/handoff/HandoffStep.h"

namespace corvane {

/// Cuts a subclip out of its clip as a file and a clip of its own.
class SubclipStep : public HandoffStep {
  public:
    SubclipStep(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index, Subclip subclip);

  private:
    QCoro::Task<> make() override;
    QString failureText(const QString &error) const override;
    QCoro::Task<MetadataProcessor::Outcome> readFacts();

    Subclip m_subclip;
};

} // namespace corvane
