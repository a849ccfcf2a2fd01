#pragma once

#include "media/RGBImage.h"
#include "platform/OpenFolder.h"

/// Writes images to files.
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

/// Writes a JPEG file atomically, replacing an existing file, and creates missing folders.
/// `quality` is 0 to 1. Throws `WriteError`, or `FileError` if creating the folders or renaming the
/// file fails. Leaves no temporary file. Any thread.
void writeJPEG(const media::RGBImage &image, const QString &path, double quality);
/// Does the same with a file of an open folder.
void writeJPEG(const media::RGBImage &image, const OpenFolder &folder, const QString &name,
               double quality);

} // namespace corvane::ImageIOHelper
