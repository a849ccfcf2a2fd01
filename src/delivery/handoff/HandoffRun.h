#pragma once

#include "delivery/handoff/CacheFunctions.h"
#include "delivery/handoff/PackageFolder.h"
#include "delivery/handoff/PackageGrants.h"
#include "delivery/handoff/PackageProject.h"
#include "platform/Clock.h"
#include "transfer/CancelToken.h"
#include "transfer/NameReserver.h"
#include "transfer/OutputMaker.h"
#include "trust/PathSafety.h"

namespace corvane {

/// The state of one run, shared by its steps, which run one after another. Main thread; members
/// that executors read are copied or constant.
struct HandoffRun {
    HandoffPlan plan;
    PackageProject::Paths paths;
    std::optional<PackageFolder::Folders> folders; ///< set before the first step
    PathSafety::SourceGrants sourceGrants;
    PackageGrants packageGrants;
    std::shared_ptr<CancelToken> cancelToken;
    HandoffProgressHandler onProgress;
    OutputMaker maker;
    CacheFunctions cache;
    Clock &clock;

    NameReserver names{plan.volumeLimits};
    int sequence = 0; ///< of the last named output, from 1
    QList<VideoItem> videos;
    HandoffResult result;
};

} // namespace corvane
