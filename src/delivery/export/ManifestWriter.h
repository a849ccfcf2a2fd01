#pragma once

#include "delivery/export/ExportRow.h"

#include <QCoroTask>

/// The record of one run that stays with what it delivered: a JSON file for people and other tools.
/// The program never reads it back.
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

/// The content of the file.
JSONValue::Object manifest(const ExportBatchInput &input, const QList<ExportRowOutcome> &succeeded,
                           const QList<ExportRowFailure> &failed);

/// Writes "manifest-<batchId>.json" into the output folder in one step and gives its path. Throws
/// `WriteError`; no part of a file is then left. Called and awaited on the main thread.
QCoro::Task<QString> write(ExportBatchInput input, QList<ExportRowOutcome> succeeded,
                           QList<ExportRowFailure> failed);

} // namespace corvane::ManifestWriter
