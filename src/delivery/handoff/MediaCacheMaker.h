#pragma once

#include "delivery/handoff/CacheMaker.h"

namespace corvane {

/// Makes thumbnails and filmstrips as an import and the review do.
class MediaCacheMaker : public CacheMaker {
  public:
    QCoro::Task<MetadataProcessor::Outcome> process(QString videoId, QString file,
                                                    QString cacheRoot) override;
    QCoro::Task<> makeFilmstrip(QString videoId, QString file, QString cacheRoot,
                                std::stop_token stop) override;
};

} // namespace corvane
