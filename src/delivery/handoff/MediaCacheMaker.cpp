#include "delivery/handoff/MediaCacheMaker.h"

#include "mediacache/FilmstripService.h"

namespace corvane {

QCoro::Task<MetadataProcessor::Outcome> MediaCacheMaker::process(QString videoId, QString file,
                                                                 QString cacheRoot) {
    co_return co_await MetadataProcessor::process(videoId, file, cacheRoot);
}

QCoro::Task<> MediaCacheMaker::makeFilmstrip(QString videoId, QString file, QString cacheRoot,
                                             std::stop_token stop) {
    co_await FilmstripService::generate(videoId, file, cacheRoot, stop);
}

} // namespace corvane
