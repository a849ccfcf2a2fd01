#include "BenchData.h"

#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>

#include <cstdlib>
#include <iostream>

namespace corvane::bench {

namespace {

QMap<QString, JSONValue> cameraData(int index) {
    const auto text = [](const char *value) { return QString::fromUtf8(value); };
    return {
        {text("cameraModel"), text("Alpha cinema line")},
        {text("lens"), text("24-70mm F2.8 GM II")},
        {text("iso"), 100 * (index % 64 + 1)},
        {text("whiteBalanceKelvin"), 3200 + index % 3000},
        {text("aperture"), 2.8 + 0.1 * (index % 20)},
        {text("gamma"), text("s-log3-cine")},
        {text("timecode"), QStringLiteral("%1:12:33:07").arg(index % 24, 2, 10, QLatin1Char('0'))},
        {text("gps"), JSONValue::Object{{text("latitude"), 53.5 + 0.0001 * index},
                                        {text("longitude"), 9.98 - 0.0001 * index}}},
        {text("faces"), JSONValue::Array{index % 3, index % 7, true, nullptr}}};
}

Subclip subclip(const QString &videoId, int index, const QDateTime &date) {
    return {.id = newIdentifier(),
            .sourceVideoId = videoId,
            .label = QStringLiteral("Take %1 — gulls over the pier").arg(index),
            .inSeconds = 1.0 / 3 * index,
            .outSeconds = 1.0 / 3 * index + 2.041708333,
            .selectedForExport = index % 2 == 0,
            .rating = index % 6,
            .createdAt = date,
            .creationIndex = index};
}

VideoItem video(int index, const QDateTime &date) {
    VideoRecord record{
        .id = newIdentifier(),
        .sourcePath = QStringLiteral("/media/cards/day-%1/C%2.MP4").arg(index % 9).arg(index),
        .fileName = QStringLiteral("C%1.MP4").arg(index, 4, 10, QLatin1Char('0')),
        .parentFolder = QStringLiteral("/media/cards/day-%1").arg(index % 9),
        .durationSeconds = 12.345678 + index,
        .width = 3840,
        .height = 2160,
        .fps = 23.976023976023978,
        .codec = QStringLiteral("avc1"),
        .fileSizeBytes = qint64(734'003'200) + index,
        .rating = index % 6,
        .reviewed = index % 2 == 0,
        .tags = {QStringLiteral("pier"), QStringLiteral("Möwe %1").arg(index % 50)},
        .notes = QStringLiteral("Focus drifts at the end; see take %1.").arg(index % 7),
        .cameraMetadata = cameraData(index),
        .contentHash = QString(64, QLatin1Char('a')),
        .createdAt = date,
        .updatedAt = date};
    for (int i = 1; i <= 5; ++i) {
        record.subclips.append(subclip(record.id, i, date.addMSecs(index * 1000 + i)));
    }
    return record;
}

} // namespace

QString dataFolder() {
    const QString folder = qEnvironmentVariable("CORVANE_BENCH_DIR");
    if (folder.isEmpty()) {
        std::cerr << "Run scripts/bench, which sets CORVANE_BENCH_DIR.\n";
        std::exit(2);
    }
    fileSystem().createFolders(folder);
    return folder;
}

QString dataPath(const QString &relative) {
    return paths::joined(dataFolder(), relative);
}

Project largeProject(int videos) {
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(1772357412345, Qt::UTC);
    Project project{.id = newIdentifier(),
                    .name = QStringLiteral("Harbor"),
                    .createdAt = date,
                    .updatedAt = date};
    for (int index = 0; index < videos; ++index) {
        project.videos.append(video(index, date));
    }
    return project;
}

QString largeFile(const QString &name, qint64 bytes) {
    const QString path = dataPath(name);
    const auto existing = fileSystem().linkStatus(path);
    if (existing && existing->size == bytes) {
        return path;
    }
    QRandomGenerator generator(1);
    QByteArray block(1 << 20, Qt::Uninitialized);
    generator.fillRange(reinterpret_cast<quint32 *>(block.data()), block.size() / 4);
    TemporaryFile file(OpenFolder::at(paths::parentFolder(path)),
                       paths::lastComponent(path) + QStringLiteral(".tmp"));
    for (qint64 written = 0; written < bytes; written += block.size()) {
        block[qsizetype(written % 4096)] = char(written >> 20);
        file.write(block.constData(), std::min<qint64>(block.size(), bytes - written));
    }
    file.finish();
    file.commit(paths::lastComponent(path));
    return path;
}

void runCommand(const QString &command) {
    if (std::system(command.toUtf8().constData()) != 0) {
        std::cerr << "failed: " << command.toStdString() << '\n';
        std::exit(1);
    }
}

namespace {

double memoryLine(const QByteArray &key) {
    const QList<QByteArray> lines =
        readAll(QStringLiteral("/proc/self/status"), 1 << 20).split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(key)) {
            return line.mid(key.size()).trimmed().split(' ').first().toDouble() * 1024;
        }
    }
    return 0;
}

} // namespace

double currentMemory() {
    return memoryLine("VmRSS:");
}
double peakMemory() {
    return memoryLine("VmHWM:");
}

double measureInNewProcess(const QString &figure) {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--measure"), figure});
    if (!process.waitForFinished(120'000) || process.exitCode() != 0) {
        std::cerr << "failed to measure " << figure.toStdString() << '\n';
        std::exit(1);
    }
    return process.readAllStandardOutput().trimmed().toDouble();
}

} // namespace corvane::bench
