#pragma once

#include <QSettings>
#include <QStringList>

#include <memory>

namespace corvane {

/// The destination folders of recent handoffs, stored in the user settings. Main thread.
class RecentDestinations {
  public:
    static constexpr qsizetype kMaxCount = 5;
    static const QString &key();

    explicit RecentDestinations(std::unique_ptr<QSettings> defaults);

    /// Newest first. Omits stored values that are not absolute paths.
    QStringList load() const;
    /// Moves or adds the folder to the front and returns the new list.
    QStringList note(const QString &folder);

  private:
    std::unique_ptr<QSettings> m_defaults;
};

} // namespace corvane
