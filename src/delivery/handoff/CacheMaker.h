#pragma once

#include "mediacache/MetadataProcessor.h"

#include <stop_token>

namespace corvane {

/// Makes what a cache holds of a media file. An interface, so that a handoff is tested without a
/// media framework. Main thread.
class CacheMaker {
  public:
    virtual ~CacheMaker();

    /// Reads the file's facts and writes its thumbnail. Never throws: what can't be read is absent.
    virtual QCoro::Task<MetadataProcessor::Outcome> process(QString videoId, QString file,
                                                            QString cacheRoot) = 0;
    /// Writes the file's filmstrip, unless it is there in full. Throws what went wrong, and
    /// `Cancelled`.
    virtual QCoro::Task<> makeFilmstrip(QString videoId, QString file, QString cacheRoot,
                                        std::stop_token stop) = 0;
};

} // namespace corvane
