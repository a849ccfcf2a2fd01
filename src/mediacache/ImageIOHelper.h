#pragma once

#include "media/RGBImage.h"
#include "platform/Failure.h"

#include <QString>

/// Writes pictures as files.
namespace corvane::ImageIOHelper {

class WriteError : public Failure {
  public:
    enum class Case { destinationCreateFailed, finalizeFailed };

    WriteError(Case reason, const QString &path);

    Case reason() const noexcept { return m_reason; }
    const QString &path() const noexcept { return m_path; }

  private:
    Case m_reason;
    QString m_path;
};

/// Writes a JPEG file in one step, in the place of a file that has the name already; missing
/// folders are created. `quality` from 0 to 1. Throws `WriteError`, or `FileError` where a folder
/// can't be created or the finished file not be moved into place. No part of a file stays behind.
/// Any thread.
void writeJPEG(const media::RGBImage &image, const QString &path, double quality);

} // namespace corvane::ImageIOHelper
