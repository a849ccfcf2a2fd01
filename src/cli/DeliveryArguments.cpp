#include "cli/DeliveryArguments.h"

#include "cli/ProgressLine.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"
#include "session/SessionTexts.h"

namespace corvane {

void runDelivery(DeliveryFlow &flow, CliSession &session, const CommandCall &call,
                 const QString &initialText) {
    {
        ProgressLine line(call.console());
        if (!initialText.isEmpty()) {
            line.show(initialText);
        }
        const QObject context;
        QObject::connect(&flow, &DeliveryFlow::progressChanged, &context, [&] {
            if (const auto row = flow.currentRow(); row && !row->fileName.isEmpty()) {
                line.show(flow.overallFraction(), row->fileName);
            }
        });
        waitUntilDone(flow.start(session.project()));
    }
    session.save();
    if (flow.backupError()) {
        call.printNotice(SessionTexts::backupLine(flow.backupError()));
    }
    const auto changed = session.store().mediaConfirmation().contentMismatchPendingPaths.size();
    if (changed > 0) {
        call.printNotice(QStringLiteral("%1 not what this project authorized. See \"corvane-cli "
                                        "media\" to trust the new contents.")
                             .arg(counted(changed, QStringLiteral("file")) +
                                  QLatin1String(changed == 1 ? " is" : " are")));
    }
}

} // namespace corvane
