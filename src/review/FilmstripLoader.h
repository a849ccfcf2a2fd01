#pragma once

#include <QCoroTask>
#include <QObject>
#include <QStringList>

#include <functional>
#include <stop_token>

namespace corvane {

/// Creates and shows the filmstrip of the clip in the player. Starting another clip cancels the
/// previous run and discards its frames. A failure leaves the filmstrip empty. Main thread only.
class FilmstripLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList filmstripURLs READ filmstripURLs NOTIFY changed)
    /// True if frames or the placeholder are shown.
    Q_PROPERTY(bool showsStrip READ showsStrip NOTIFY changed)
    /// Shown until the frames are created; otherwise empty.
    Q_PROPERTY(QString placeholderText READ placeholderText NOTIFY changed)

  public:
    /// Returns the paths of the frames in order. Takes the clip's id as a canonical UUID, its media
    /// file and the cache root. May throw.
    using Generator = std::function<QCoro::Task<QStringList>(QString videoId, QString media,
                                                             QString cacheRoot, std::stop_token)>;

    explicit FilmstripLoader(Generator generator, QObject *parent = nullptr);
    ~FilmstripLoader() override;

    const QStringList &filmstripURLs() const { return m_frames; }
    bool filmstripGenerating() const { return m_isGenerating; }
    bool showsStrip() const { return m_isGenerating || !m_frames.isEmpty(); }
    QString placeholderText() const;

    /// Removes the frames and cancels the run.
    void clear();
    /// Without a generator, or for an id that is not a UUID, the filmstrip stays empty.
    void start(const QString &videoId, const QString &media, const QString &cacheRoot);

  Q_SIGNALS:
    void changed();

  private:
    QCoro::Task<> run(QString videoId, QString media, QString cacheRoot, std::stop_token stop);
    void set(const QStringList &frames, bool isGenerating);

    Generator m_generator;
    QStringList m_frames;
    bool m_isGenerating = false;
    std::stop_source m_task;
};

} // namespace corvane
