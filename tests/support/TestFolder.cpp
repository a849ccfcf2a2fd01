#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace corvane::test {

TestFolder::TestFolder() : m_path(QFileInfo(m_folder.path()).canonicalFilePath()) {}

QString TestFolder::at(const QString &relative) const {
    return relative.isEmpty() ? m_path : m_path + QLatin1Char('/') + relative;
}

QString TestFolder::write(const QString &relative, const QByteArray &bytes) const {
    const QString path = at(relative);
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path;
}

QString TestFolder::folder(const QString &relative) const {
    EXPECT_TRUE(QDir().mkpath(at(relative)));
    return at(relative);
}

QString TestFolder::link(const QString &relative, const QString &target) const {
    EXPECT_TRUE(QDir().mkpath(QFileInfo(at(relative)).path()));
    EXPECT_TRUE(QFile::link(target, at(relative)));
    return at(relative);
}

QByteArray TestFolder::read(const QString &relative) const {
    QFile file(at(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool TestFolder::has(const QString &relative) const {
    const QFileInfo info(at(relative));
    return info.exists() || info.isSymLink();
}

QStringList TestFolder::names(const QString &relative) const {
    QStringList names;
    const QString root = at(relative);
    QDirIterator entries(root,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        entries.next();
        const bool isFolder = entries.fileInfo().isDir() && !entries.fileInfo().isSymLink();
        names.append(entries.filePath().mid(root.size() + 1) +
                     (isFolder ? QStringLiteral("/") : QString()));
    }
    names.sort();
    return names;
}

QStringList TestFolder::temporaries() const {
    return names().filter(QStringLiteral(".tmp"));
}

QByteArray noise(qsizetype count, quint32 seed) {
    QRandomGenerator generator(seed);
    QByteArray bytes((count + 3) / 4 * 4, Qt::Uninitialized);
    generator.fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
    bytes.truncate(count);
    return bytes;
}

} // namespace corvane::test
