#pragma once

#include "media/StillImage.h"
#include "platform/Failure.h"

#include <QString>

/// Writes pictures as files.
namespace corvane::ImageIOHelper {

class WriteError : public Failure {
  public:
    enum class Case { destinationCreateFailed, finalizeFailed };

    WriteError(Case reason, const QString &url);

    Case reason() const noexcept { return m_reason; }
    const QString &url() const noexcept { return m_url; }

  private:
    Case m_reason;
    QString m_url;
};

/// Writes a JPEG file in one step, in the place of a file that has the name already; missing
/// folders are created. `quality` from 0 to 1. Throws `WriteError`, or `FileError` where a folder
/// can't be created or the finished file not be moved into place. No part of a file stays behind.
/// Any thread.
void writeJPEG(const media::StillImage &image, const QString &url, double quality);

} // namespace corvane::ImageIOHelper
