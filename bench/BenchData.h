#pragma once

#include "document/Project.h"

#include <QString>

namespace corvane::bench {

/// The folder for benchmark data: $CORVANE_BENCH_DIR, which scripts/bench sets.
QString dataFolder();
QString dataPath(const QString &relative);

/// A document of a long shoot: clips with five subclips each, tags, notes and camera metadata.
Project largeProject(int videos);

/// A file of this many incompressible bytes, created on first use.
QString largeFile(const QString &name, qint64 bytes);

/// Runs a shell command. If it fails, prints its output and exits.
void runCommand(const QString &command);

/// Resident memory of this process in bytes: current and peak.
double currentMemory();
double peakMemory();

/// Runs this program with "--measure" and returns the figure it prints.
double measureInNewProcess(const QString &figure);
/// Peak memory of loading a large document, in multiples of its file's size.
double loadMemoryPerFileByte();
double megabytesOfFiftyUndoSteps();

} // namespace corvane::bench
