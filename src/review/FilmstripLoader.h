#pragma once

#include <QCoroTask>
#include <QObject>
#include <QStringList>

#include <functional>
#include <stop_token>

namespace corvane {

/// The filmstrip of the clip in the player. A new clip cancels the run of the one before, whose
/// frames never show on it. What fails shows no filmstrip. Main thread.
class FilmstripLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList filmstripURLs READ filmstripURLs NOTIFY changed)
    Q_PROPERTY(bool filmstripGenerating READ filmstripGenerating NOTIFY changed)
    /// Whether there is anything to show: frames, or what stands in place of them.
    Q_PROPERTY(bool showsStrip READ showsStrip NOTIFY changed)
    /// What stands in place of the frames while they are made.
    Q_PROPERTY(QString placeholderText READ placeholderText NOTIFY changed)

  public:
    /// Gives the frames' paths in order: of a clip's id as a canonical UUID, its media file, and
    /// the cache root. It may throw.
    using Generator = std::function<QCoro::Task<QStringList>(QString videoId, QString media,
                                                             QString cacheRoot, std::stop_token)>;

    explicit FilmstripLoader(Generator generator, QObject *parent = nullptr);
    ~FilmstripLoader() override;

    const QStringList &filmstripURLs() const { return m_frames; }
    bool filmstripGenerating() const { return m_isGenerating; }
    bool showsStrip() const { return m_isGenerating || !m_frames.isEmpty(); }
    QString placeholderText() const;

    /// Drops what is shown, and cancels what is under way.
    void clear();
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
