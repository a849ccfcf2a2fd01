#include "cli/DeliveryArguments.h"

#include "cli/ProgressLine.h"
#include "delivery/DeliveryTexts.h"
#include "platform/Tasks.h"

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
        call.printNotice(DeliveryTexts::backupLine(flow.backupError()));
    }
}

} // namespace corvane
