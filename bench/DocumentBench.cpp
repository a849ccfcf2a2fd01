// Reads and writes a document of the maximum size, compared with the JSON library doing the minimum
// with the same bytes. Edits a clip in a large project.

#include "BenchData.h"

#include "document/ProjectFileIO.h"
#include "platform/AtomicWrite.h"
#include "platform/Tasks.h"
#include "session/ProjectStore.h"

#include <benchmark/benchmark.h>

#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

using namespace corvane;
using namespace corvane::bench;

namespace {

/// A file just below 32 MiB.
const QString &largeDocument() {
    static const QString path = [] {
        const QString file = dataPath(QStringLiteral("large.corvane"));
        if (fileSystem().linkStatus(file)) {
            return file;
        }
        const qsizetype sample = encodeJSON(largeProject(100)).size();
        int videos = int(ProjectFileIO::kFileLimit * 100 / sample);
        QByteArray bytes = encodeJSON(largeProject(videos));
        while (bytes.size() > ProjectFileIO::kFileLimit) {
            videos -= int((bytes.size() - ProjectFileIO::kFileLimit) * 100 / sample) + 1;
            bytes = encodeJSON(largeProject(videos));
        }
        writeAtomically(file, bytes);
        return file;
    }();
    return path;
}

const QByteArray &largeBytes() {
    static const QByteArray bytes = readAll(largeDocument(), ProjectFileIO::kFileLimit);
    return bytes;
}

/// Sends a document's values to a RapidJSON handler.
template <typename Writer> void replay(JSONView view, Writer &writer) {
    switch (view.kind()) {
    case JSONView::Kind::Null:
        writer.Null();
        break;
    case JSONView::Kind::Bool:
        writer.Bool(*view.boolean());
        break;
    case JSONView::Kind::Int:
        writer.Int64(*view.integer());
        break;
    case JSONView::Kind::Double:
        writer.Double(*view.real());
        break;
    case JSONView::Kind::String:
        writer.String(view.string()->data(), rapidjson::SizeType(view.string()->size()));
        break;
    case JSONView::Kind::Array:
        writer.StartArray();
        view.forEachElement([&](JSONView element) { replay(element, writer); });
        writer.EndArray();
        break;
    case JSONView::Kind::Object:
        writer.StartObject();
        view.forEachMember([&](std::string_view key, JSONView member) {
            writer.Key(key.data(), rapidjson::SizeType(key.size()));
            replay(member, writer);
        });
        writer.EndObject();
        break;
    }
}

void loadOurs(benchmark::State &state) {
    largeBytes();
    for (auto _ : state) {
        benchmark::DoNotOptimize(ProjectFileIO::loadNow(largeDocument()));
    }
}

void loadTheirs(benchmark::State &state) {
    const QByteArray &bytes = largeBytes();
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag |
                                rapidjson::kParseFullPrecisionFlag |
                                rapidjson::kParseValidateEncodingFlag;
    for (auto _ : state) {
        rapidjson::BaseReaderHandler<> handler;
        rapidjson::StringStream stream(bytes.constData());
        rapidjson::Reader reader;
        benchmark::DoNotOptimize(reader.Parse<kFlags>(stream, handler));
    }
}

void encodeOurs(benchmark::State &state) {
    const Project project = ProjectFileIO::loadNow(largeDocument());
    for (auto _ : state) {
        benchmark::DoNotOptimize(encodeJSON(project));
    }
}

void encodeTheirs(benchmark::State &state) {
    const JSONDocument document = JSONDocument::parse(largeBytes());
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.SetIndent(' ', 2);
        replay(document.root(), writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
}

/// A store over a project of 25,000 clips.
struct Session {
    ProjectFileIO io;
    ProjectRegistry registry{dataPath(QStringLiteral("session"))};
    BackupService backups;
    MediaSourceAuthorization authorization{dataPath(QStringLiteral("session"))};
    ProjectStore store{io, registry, backups, authorization};

    Session() {
        const QString file = dataPath(QStringLiteral("session/empty.corvane"));
        Project project = largeProject(25'000);
        waitUntilDone(io.save(Project{.id = project.id,
                                      .createdAt = project.createdAt,
                                      .updatedAt = project.createdAt},
                              file, true));
        waitUntilDone(store.openProject(file));
        store.updateProject(std::move(project));
    }
};

void rateOneClip(benchmark::State &state) {
    Session session;
    const QString id = session.store.project()->videos.at(12'500)->id;
    int rating = 0;
    for (auto _ : state) {
        session.store.setRating(id, ++rating % 6);
    }
}

void memory(benchmark::State &state, const QString &what) {
    for (auto _ : state) {
        largeDocument(); // created before the measurement
        state.counters["figure"] = measureInNewProcess(what);
    }
}

BENCHMARK(loadOurs)->Name("load/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(loadTheirs)->Name("load/theirs")->Unit(benchmark::kMillisecond);
BENCHMARK(encodeOurs)->Name("encode/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(encodeTheirs)->Name("encode/theirs")->Unit(benchmark::kMillisecond);
BENCHMARK(rateOneClip)->Name("rating/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(memory, load, QStringLiteral("load"))->Name("load-memory/ours")->Iterations(1);
BENCHMARK_CAPTURE(memory, undo, QStringLiteral("undo"))->Name("undo-memory/ours")->Iterations(1);

} // namespace

double corvane::bench::loadMemoryPerFileByte() {
    const QString path = largeDocument();
    const double size = double(fileSystem().status(path).size);
    const double before = peakMemory();
    benchmark::DoNotOptimize(ProjectFileIO::loadNow(path));
    return (peakMemory() - before) / size;
}

double corvane::bench::megabytesOfFiftyUndoSteps() {
    Session session;
    const double before = currentMemory();
    for (int step = 0; step < 50; ++step) {
        session.store.setRating(session.store.project()->videos.at(step * 400)->id, 3);
    }
    return (currentMemory() - before) / 1e6;
}
