#pragma once

#include "document/Project.h"

#include <QString>

namespace corvane::bench {

/// The folder that the benchmarks fill: $CORVANE_BENCH_DIR, which scripts/bench sets.
QString dataFolder();
QString dataPath(const QString &relative);

/// A document as a long shoot makes it: clips with five subclips each, tags, notes and camera data.
Project largeProject(int videos);

/// A file of so many bytes that don't compress, made once.
QString largeFile(const QString &name, qint64 bytes);

/// Runs a shell command and ends the program with its text where it fails.
void runCommand(const QString &command);

/// Bytes of memory that this process holds now, and the most it ever held.
double currentMemory();
double peakMemory();

/// A figure that only a fresh process can tell: starts this program again to measure it.
double measuredByItself(const QString &what);
/// What that process measures.
double timesTheFileToLoad();
double megabytesOfFiftyUndoSteps();

} // namespace corvane::bench
