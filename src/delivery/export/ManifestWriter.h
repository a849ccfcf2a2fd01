#pragma once

#include "delivery/export/ExportRow.h"
#include "platform/OpenFolder.h"

#include <QCoroTask>

/// Writes the manifest of an export: a JSON file beside the outputs, for people and other tools.
/// The program never reads it.
namespace corvane::ManifestWriter {

class WriteError : public Failure {
  public:
    enum class Kind { invalidBatchId, serializationFailed, ioFailed };

    static WriteError invalidBatchId(const QString &id);
    static WriteError serializationFailed(const QString &error);
    static WriteError ioFailed(const QString &path, const QString &error);

    Kind kind() const { return m_kind; }

  private:
    WriteError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

    Kind m_kind;
};

/// Returns the content of the file.
JSONValue::Object manifest(const ExportBatchInput &input, const QList<ExportRowOutcome> &succeeded,
                           const QList<ExportRowFailure> &failed);

/// Writes "manifest-<batchId>.json" atomically into the open output folder and returns its path.
/// Throws `WriteError`, or `DestinationLost` if that folder is no longer at its path; no partial
/// file is left. Main thread.
QCoro::Task<QString> write(OpenFolder folder, ExportBatchInput input,
                           QList<ExportRowOutcome> succeeded, QList<ExportRowFailure> failed);

} // namespace corvane::ManifestWriter
