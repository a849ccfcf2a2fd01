#pragma once

#include "mediacache/FilmstripService.h"
#include "mediacache/MetadataProcessor.h"

#include <functional>

namespace corvane {

/// Creates the cache entries of a media file. Tests replace the functions. Main thread.
struct CacheFunctions {
    /// Reads the file's facts and writes its thumbnail. Never throws.
    std::function<QCoro::Task<MetadataProcessor::Outcome>(QString videoId, QString file,
                                                          QString cacheRoot)>
        process = MetadataProcessor::process;
    /// Writes the missing frames of the file's filmstrip. Throws on failure and on cancellation.
    std::function<QCoro::Task<QStringList>(QString videoId, QString file, QString cacheRoot,
                                           std::stop_token stop)>
        makeFilmstrip = FilmstripService::generate;
};

} // namespace corvane
