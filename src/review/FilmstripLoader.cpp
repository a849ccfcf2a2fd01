#include "review/FilmstripLoader.h"

#include "platform/Tasks.h"

#include <QPointer>
#include <QUuid>

namespace corvane {

FilmstripLoader::FilmstripLoader(Generator generator, QObject *parent)
    : QObject(parent), m_generator(std::move(generator)) {}

FilmstripLoader::~FilmstripLoader() {
    m_task.request_stop();
}

QString FilmstripLoader::placeholderText() const {
    return m_isGenerating && m_frames.isEmpty() ? QStringLiteral("Generating filmstrip…")
                                                : QString();
}

void FilmstripLoader::clear() {
    m_task.request_stop();
    m_task = {};
    set({}, false);
}

void FilmstripLoader::start(const QString &videoId, const QString &media,
                            const QString &cacheRoot) {
    clear();
    detach(run(videoId, media, cacheRoot, m_task.get_token()));
}

QCoro::Task<> FilmstripLoader::run(QString videoId, QString media, QString cacheRoot,
                                   std::stop_token stop) {
    const QPointer self(this);
    const Generator generator = m_generator; // the run may outlive this object
    const QUuid id = QUuid::fromString(videoId);
    QStringList frames;
    try {
        if (!generator || id.isNull()) {
            co_return;
        }
        set({}, true);
        frames =
            co_await generator(id.toString(QUuid::WithoutBraces).toUpper(), media, cacheRoot, stop);
    } catch (const std::exception &) {
        frames.clear(); // without frames the plain scrubber is shown
    }
    if (self && !stop.stop_requested()) {
        set(frames, false);
    }
}

void FilmstripLoader::set(const QStringList &frames, bool isGenerating) {
    if (m_frames != frames || m_isGenerating != isGenerating) {
        m_frames = frames;
        m_isGenerating = isGenerating;
        Q_EMIT changed();
    }
}

} // namespace corvane
