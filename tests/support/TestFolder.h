#pragma once

#include <QAnyStringView>
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
    QString at(QAnyStringView relative) const;

    // Each creates missing parent folders and returns the absolute path.
    QString write(QAnyStringView relative, const QByteArray &bytes) const;
    QString folder(QAnyStringView relative) const;
    QString link(QAnyStringView relative, QAnyStringView target) const;

    QByteArray read(QAnyStringView relative) const;
    bool has(QAnyStringView relative) const;
    /// The relative paths of everything below a folder, sorted; folders have a trailing slash.
    QStringList names(QAnyStringView relative = {}) const;
    /// The temporary files among `names()`.
    QStringList temporaries() const;

  private:
    QTemporaryDir m_folder;
    QString m_path;
};

/// Pseudorandom bytes, the same in every run.
QByteArray noise(qsizetype count, quint32 seed = 1);

} // namespace corvane::test
