#include "review/ReviewServices.h"

#include "media/FrameGenerator.h"
#include "mediacache/FilmstripService.h"
#include "mediacache/ImageIOHelper.h"

namespace corvane {

namespace {

constexpr QSize kSubclipThumbnailSize = {320, 180};
constexpr double kSubclipThumbnailTolerance = 0.1;
constexpr double kSubclipThumbnailQuality = 0.7;

void writeSubclipThumbnail(const QString &mediaFile, double seconds, const QString &file) {
    media::FrameGenerator generator(
        mediaFile, {.maximumSize = kSubclipThumbnailSize, .tolerance = kSubclipThumbnailTolerance});
    ImageIOHelper::writeJPEG(generator.imageAt(media::MediaTime::fromSeconds(seconds)), file,
                             kSubclipThumbnailQuality);
}

} // namespace

ReviewScreenState::Services reviewServices() {
    return {.filmstrip = FilmstripService::generate, .subclipThumbnail = writeSubclipThumbnail};
}

} // namespace corvane
