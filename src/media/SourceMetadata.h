#pragma once

// Internal to src/media.

#include "media/ExportSource.h"

#include <QByteArray>

namespace corvane::media::sourceMetadata {

/// Copies the metadata of the source file to the output. Date, location and camera get the names
/// that players and editors read.
void copyFile(const AVFormatContext &source, AVFormatContext &output);

/// Copies a stream's language, name, creation date and disposition.
void copyStream(const AVStream &source, AVStream &output);

/// Copies side data of this type if the source has it.
void copySideData(const AVStream &source, AVStream &output, AVPacketSideDataType type);

/// Timecode of the source's frame at `time`, counted from the source's start timecode, with or
/// without dropped frame numbers. Returns nullopt if the source has no timecode.
std::optional<QByteArray> timecodeAt(const ExportSource &source, MediaTime time);

} // namespace corvane::media::sourceMetadata
