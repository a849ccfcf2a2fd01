#include "delivery/export/ManifestWriter.h"

#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "transfer/Destination.h"

namespace corvane::ManifestWriter {

namespace {

bool isValidBatchId(const QString &id) {
    return !id.isEmpty() && std::ranges::all_of(id, [](QChar character) {
        const char16_t code = character.unicode();
        return (code < 128 && character.isLetterOrNumber()) || code == u'-' || code == u'_';
    });
}

QString hdStatus(const ExportRowOutcome &row) {
    if (row.hdOutputPath) {
        return QStringLiteral("succeeded");
    }
    return row.hdError == kCancelledText ? QStringLiteral("cancelled") : QStringLiteral("failed");
}

/// Fields of every row.
template <typename Row> JSONValue::Object commonFields(const Row &row, const QString &status) {
    return {{QStringLiteral("rowId"), row.rowId},
            {QStringLiteral("parentVideoId"), row.parentVideoId},
            {QStringLiteral("subclipId"), JSONValue::orNull(row.subclipId)},
            {QStringLiteral("destinationPath"), row.destinationPath},
            {QStringLiteral("status"), status}};
}

template <typename Row>
void addHDFields(JSONValue::Object &fields, const Row &row, const QString &status) {
    fields.insert(QStringLiteral("hdDestinationPath"), *row.hdDestinationPath);
    fields.insert(QStringLiteral("hdStatus"), status);
}

JSONValue::Object succeededRow(const ExportRowOutcome &row, OutputMode outputMode) {
    JSONValue::Object fields = commonFields(row, QStringLiteral("succeeded"));
    if (outputMode == OutputMode::primaryAndHd && row.hdDestinationPath) {
        addHDFields(fields, row, hdStatus(row));
    }
    if (row.hdError) {
        fields.insert(QStringLiteral("hdError"), *row.hdError);
    }
    return fields;
}

JSONValue::Object failedRowFields(const ExportRowFailure &row, OutputMode outputMode) {
    JSONValue::Object fields =
        commonFields(row, row.cancelled ? QStringLiteral("cancelled") : QStringLiteral("failed"));
    fields.insert(QStringLiteral("error"), row.error);
    if (outputMode == OutputMode::primaryAndHd && row.hdDestinationPath) {
        addHDFields(fields, row, QStringLiteral("not-attempted"));
    }
    return fields;
}

/// If the naming options cannot be encoded, the manifest contains the error instead.
void addNamingOptions(JSONValue::Object &fields, const ExportNamingOptions &options) {
    JSONValue value;
    JSONValue error;
    try {
        value = toJSONValue(options);
    } catch (const Failure &failure) {
        error = QStringLiteral("naming options encode failed: ") + failure.description();
    }
    fields.insert(QStringLiteral("namingOptions"), value);
    fields.insert(QStringLiteral("namingOptionsError"), error);
}

QByteArray serialized(const JSONValue::Object &fields) {
    try {
        return encodeJSON(JSONValue(fields));
    } catch (const Failure &error) {
        throw WriteError::serializationFailed(error.description());
    }
}

void writeNow(const OpenFolder &folder, const QString &name, const QByteArray &bytes) {
    assertInPlace(folder);
    try {
        writeAtomically(folder, name, bytes, Placing::mayReplaceRegular);
    } catch (const FileError &error) {
        throw WriteError::ioFailed(paths::joined(folder.path(), name), error.description());
    }
}

} // namespace

WriteError WriteError::invalidBatchId(const QString &id) {
    return {Kind::invalidBatchId,
            QStringLiteral("invalid batch id (must be alphanumeric/dash/underscore): ") + id};
}

WriteError WriteError::serializationFailed(const QString &error) {
    return {Kind::serializationFailed, QStringLiteral("manifest serialization failed: ") + error};
}

WriteError WriteError::ioFailed(const QString &path, const QString &error) {
    return {Kind::ioFailed, QStringLiteral("manifest write failed at %1: %2").arg(path, error)};
}

JSONValue::Object manifest(const ExportBatchInput &input, const QList<ExportRowOutcome> &succeeded,
                           const QList<ExportRowFailure> &failed) {
    const int cancelledCount = int(std::ranges::count_if(failed, &ExportRowFailure::cancelled));
    JSONValue::Array rows;
    for (const ExportRowOutcome &row : succeeded) {
        rows.append(succeededRow(row, input.outputMode));
    }
    for (const ExportRowFailure &row : failed) {
        rows.append(failedRowFields(row, input.outputMode));
    }
    JSONValue::Object fields{
        {QStringLiteral("id"), input.batchId},
        {QStringLiteral("completedAt"), isoDate::toText(input.completedAt)},
        {QStringLiteral("outputFolder"), input.outputFolder},
        {QStringLiteral("mode"), rawValue(input.mode)},
        {QStringLiteral("outputMode"), rawValue(input.outputMode)},
        {QStringLiteral("subclipHandleSeconds"), input.subclipHandleSeconds},
        {QStringLiteral("includeWholeVideoSelects"), input.includeWholeVideoSelects},
        {QStringLiteral("includeSubclipSelects"), input.includeSubclipSelects},
        {QStringLiteral("succeededCount"), int(succeeded.size())},
        {QStringLiteral("failedCount"), int(failed.size()) - cancelledCount},
        {QStringLiteral("cancelledCount"), cancelledCount},
        {QStringLiteral("cancelled"), cancelledCount != 0},
        {QStringLiteral("rows"), rows}};
    addNamingOptions(fields, input.namingOptions);
    return fields;
}

QCoro::Task<QString> write(OpenFolder folder, ExportBatchInput input,
                           QList<ExportRowOutcome> succeeded, QList<ExportRowFailure> failed) {
    if (!isValidBatchId(input.batchId)) {
        throw WriteError::invalidBatchId(input.batchId);
    }
    const QByteArray bytes = serialized(manifest(input, succeeded, failed));
    const QString name = QStringLiteral("manifest-%1.json").arg(input.batchId);
    co_await userInitiatedExecutor().run([&] { writeNow(folder, name, bytes); });
    co_return paths::joined(folder.path(), name);
}

} // namespace corvane::ManifestWriter
