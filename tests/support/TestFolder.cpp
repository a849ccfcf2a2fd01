#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace corvane::test {

TestFolder::TestFolder() : m_path(QFileInfo(m_folder.path()).canonicalFilePath()) {}

QString TestFolder::at(QAnyStringView relative) const {
    return relative.isEmpty() ? m_path : m_path + QLatin1Char('/') + relative.toString();
}

QString TestFolder::write(QAnyStringView relative, const QByteArray &bytes) const {
    const QString path = at(relative);
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path;
}

QString TestFolder::folder(QAnyStringView relative) const {
    EXPECT_TRUE(QDir().mkpath(at(relative)));
    return at(relative);
}

QString TestFolder::link(QAnyStringView relative, QAnyStringView target) const {
    EXPECT_TRUE(QDir().mkpath(QFileInfo(at(relative)).path()));
    EXPECT_TRUE(QFile::link(target.toString(), at(relative)));
    return at(relative);
}

QByteArray TestFolder::read(QAnyStringView relative) const {
    QFile file(at(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool TestFolder::has(QAnyStringView relative) const {
    const QFileInfo info(at(relative));
    return info.exists() || info.isSymLink();
}

QStringList TestFolder::names(QAnyStringView relative) const {
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
