#pragma once

#include "delivery/handoff/CacheMaker.h"
#include "delivery/handoff/PackageGrants.h"
#include "delivery/handoff/PackageProject.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "transfer/CancelToken.h"
#include "transfer/NameReserver.h"
#include "trust/PathSafety.h"

namespace corvane {

/// What one handoff works with and has made so far. Its steps share it, one at a time. Main thread;
/// the parts that an executor needs are copied or never change.
struct HandoffRun {
    HandoffPlan plan;
    PackageProject::Places places;
    PathSafety::SourceGrants sourceGrants;
    PackageGrants packageGrants;
    std::shared_ptr<CancelToken> cancelToken;
    std::stop_token abort; ///< ends the output in hand
    HandoffProgressHandler onProgress;
    media::ExportSessionFactory &sessions;
    CacheMaker &cacheMaker;
    Clock &clock;

    NameReserver names{NameReserver::systemSeconds};
    int sequence = 0; ///< of the output named last
    QList<VideoItem> videos;
    HandoffResult result;
};

} // namespace corvane
