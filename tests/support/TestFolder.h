#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace corvane::test {

/// A folder of a test's own, gone when the test ends. Links in its own path are resolved, so that
/// paths below it compare as text.
class TestFolder {
  public:
    TestFolder();

    const QString &path() const { return m_path; }
    QString at(const QString &relative) const;

    /// Each makes what is missing above it and gives the absolute path.
    QString write(const QString &relative, const QByteArray &bytes) const;
    QString folder(const QString &relative) const;
    QString link(const QString &relative, const QString &target) const;

    QByteArray read(const QString &relative) const;
    bool has(const QString &relative) const;
    /// Every name below, folders with a trailing slash, hidden ones included, sorted.
    QStringList names(const QString &relative = {}) const;
    /// Names of temporary files that should not be there.
    QStringList temporaries() const;

  private:
    QTemporaryDir m_folder;
    QString m_path;
};

/// Bytes that look random and are the same at every run.
QByteArray noise(qsizetype count, quint32 seed = 1);

} // namespace corvane::test
