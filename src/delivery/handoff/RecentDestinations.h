#pragma once

#include <QSettings>
#include <QStringList>

#include <memory>

namespace corvane {

/// The folders that handoffs went to, kept in the user defaults. Main thread.
class RecentDestinations {
  public:
    static constexpr qsizetype kMost = 5;
    static const QString &key();

    explicit RecentDestinations(std::unique_ptr<QSettings> defaults);

    /// Newest first; what is no absolute path is left out.
    QStringList load() const;
    /// Moves or adds the folder to the front, and gives the new list.
    QStringList note(const QString &folder);

  private:
    std::unique_ptr<QSettings> m_defaults;
};

} // namespace corvane
