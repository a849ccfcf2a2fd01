#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace corvane::test {

/// A temporary folder, removed on destruction. Its path contains no symbolic links, so that paths
/// in it can be compared as text.
class TestFolder {
  public:
    TestFolder();

    const QString &path() const { return m_path; }
    QString at(const QString &relative) const;

    // Each creates missing parent folders and returns the absolute path.
    QString write(const QString &relative, const QByteArray &bytes) const;
    QString folder(const QString &relative) const;
    QString link(const QString &relative, const QString &target) const;

    QByteArray read(const QString &relative) const;
    bool has(const QString &relative) const;
    /// The relative paths of everything below a folder, sorted; folders have a trailing slash.
    QStringList names(const QString &relative = {}) const;
    /// The temporary files among `names()`.
    QStringList temporaries() const;

  private:
    QTemporaryDir m_folder;
    QString m_path;
};

/// Pseudorandom bytes, the same in every run.
QByteArray noise(qsizetype count, quint32 seed = 1);

} // namespace corvane::test
