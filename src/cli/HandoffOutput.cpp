#include "cli/HandoffOutput.h"

#include "cli/JSONMembers.h"
#include "delivery/handoff/HandoffTexts.h"
#include "platform/Paths.h"

namespace corvane {

CORVANE_JSON_FIELDS(HandoffRowFailure, videoId, videoFileName, error, cancelled);

void writeHandoffResult(JSONWriter &writer, const HandoffResult &result) {
    writer.beginObject();
    const auto writeText = [&](std::string_view key, const std::optional<QString> &text) {
        writer.key(key);
        writer.value(JSONValue::orNull(text));
    };
    writeText("packageFolder", result.packageFolder);
    writeText("projectFile", result.projectFileURL);
    writeMember(writer, "succeeded", int(result.succeeded.size()));
    writeMember(writer, "failed", result.failedCount());
    writeMember(writer, "cancelledCount", result.cancelledCount);
    writeMember(writer, "cancelled", result.cancelled);
    writeText("generalError", result.generalError);
    writeMember(writer, "failures", result.failed);
    writer.endObject();
}

void printHandoffResult(const CommandCall &call, const HandoffResult &result) {
    const bool isEmpty =
        result.succeeded.isEmpty() && result.failed.isEmpty() && !result.generalError;
    if (isEmpty) {
        call.printLine(QStringLiteral("Nothing to hand off."));
        return;
    }
    for (const HandoffRowOutcome &row : result.succeeded) {
        call.printLine(QStringLiteral("Handed over ") + row.destinationPath);
        if (row.hdPath) {
            call.printLine(QStringLiteral("Handed over ") + *row.hdPath);
        }
    }
    call.printLine(HandoffTexts::headline(result));
    call.printLine(QStringLiteral("Succeeded %1, failed %2, cancelled %3")
                       .arg(result.succeeded.size())
                       .arg(result.failedCount())
                       .arg(result.cancelledCount));
    if (result.projectFileURL) {
        call.printLine(QStringLiteral("Package: ") + *result.projectFileURL);
    }
}

bool printHandoffFailures(const CommandCall &call, const HandoffResult &result,
                          HandoffOutputMode outputMode) {
    for (const HandoffRowFailure &failure : result.failed) {
        call.printNotice(HandoffTexts::row(failure));
    }
    bool isDone = result.failed.isEmpty();
    for (const HandoffRowOutcome &row : result.succeeded) {
        if (outputMode == HandoffOutputMode::primaryAndHd && !row.hdPath) {
            isDone = false;
            call.printNotice(paths::lastComponent(row.destinationPath) +
                             QStringLiteral(": There is no HD copy of it."));
        }
    }
    if (result.generalError) {
        isDone = false;
        call.printNotice(*result.generalError);
    }
    return isDone;
}

} // namespace corvane
