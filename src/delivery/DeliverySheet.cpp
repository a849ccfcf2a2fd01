#include "delivery/DeliverySheet.h"

#include "delivery/DeliveryTexts.h"
#include "delivery/Segments.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

/// If planning takes longer, it waits for a pause in typing.
constexpr std::chrono::milliseconds kQuickPlan{8};
constexpr std::chrono::milliseconds kTypingPause{120};

constexpr std::array kModes{ExportBatch::Mode::fastCopy, ExportBatch::Mode::accurateTranscode};
constexpr std::array kHandleSeconds{0.0, 0.5, 1.0, 2.0, 4.0};

QString handleLabel(double seconds) {
    return seconds == 0 ? QStringLiteral("None") : QString::number(seconds) + QLatin1Char('s');
}

/// Returns the folder or its nearest existing ancestor, because a panel cannot start elsewhere.
QString existingFolder(QString folder) {
    const auto exists = [](const QString &path) {
        try {
            return fileSystem().linkStatus(path).has_value();
        } catch (const FileError &) {
            return false;
        }
    };
    while (!exists(folder) && folder != paths::parentFolder(folder)) {
        folder = paths::parentFolder(folder);
    }
    return folder;
}

} // namespace

DeliverySheet::DeliverySheet(DeliveryFlow &flow, ProjectStore &store, FilePanels &panels,
                             Clock &clock, QObject *parent)
    : QObject(parent),
      m_flow(flow),
      m_store(store),
      m_panels(panels),
      m_clock(clock),
      m_naming(flow) {
    connect(&store, &ProjectStore::projectChanged, this, &DeliverySheet::followProject);
    connect(&flow, &DeliveryFlow::choicesChanged, this, &DeliverySheet::handleChoices);
    connect(&flow, &DeliveryFlow::progressChanged, this, &DeliverySheet::updateRun);
    connect(&flow, &DeliveryFlow::cancelStageChanged, this, &DeliverySheet::updateRun);
    connect(&flow, &DeliveryFlow::stageChanged, this, &DeliverySheet::handleStage);
}

DeliverySheet::~DeliverySheet() = default;

DeliverySheet::Stage DeliverySheet::stage() const {
    switch (m_flow.stage()) {
    case DeliveryFlow::Stage::configure:
        return Stage::Configure;
    case DeliveryFlow::Stage::running:
        return Stage::Running;
    case DeliveryFlow::Stage::done:
        break;
    }
    return Stage::Done;
}

QString DeliverySheet::folder() const {
    return DeliveryTexts::folder(m_flow.folder());
}

QString DeliverySheet::folderLine() const {
    return inOneLine(folder());
}

DeliveryChoice DeliverySheet::mode() const {
    return {segments::labels(kModes, DeliveryTexts::label),
            segments::indexOf(kModes, m_flow.choices().mode), modeHelp()};
}

DeliveryChoice DeliverySheet::handles() const {
    return {segments::labels(kHandleSeconds, handleLabel),
            segments::indexOf(kHandleSeconds, m_flow.choices().subclipHandleSeconds),
            handlesHelp()};
}

void DeliverySheet::chooseMode(int index) {
    if (const auto mode = segments::valueAt(kModes, index)) {
        m_flow.setMode(*mode);
    }
}

void DeliverySheet::chooseHandle(int index) {
    if (const auto seconds = segments::valueAt(kHandleSeconds, index)) {
        m_flow.setSubclipHandleSeconds(*seconds);
    }
}

QString DeliverySheet::cancelText() const {
    return DeliveryTexts::cancelButton(m_flow.cancelStage());
}

void DeliverySheet::open() {
    if (m_isOpen || (!m_store.project() && stage() != Stage::Running)) {
        return;
    }
    if (stage() != Stage::Running) {
        resetFlow(*m_store.project());
    }
    setOpen(true);
}

void DeliverySheet::resetFlow(const Project &project) {
    m_projectFile = m_store.fileURL();
    m_flow.reset(project);
    planNow();
}

void DeliverySheet::dismiss() {
    if (m_isOpen && stage() != Stage::Running) {
        m_planTimer.reset();
        setOpen(false);
        Q_EMIT dismissed();
    }
}

void DeliverySheet::again() {
    if (stage() != Stage::Done) {
        return;
    }
    if (m_store.project()) {
        resetFlow(*m_store.project());
    } else {
        dismiss();
    }
}

void DeliverySheet::setOpen(bool isOpen) {
    if (std::exchange(m_isOpen, isOpen) != isOpen) {
        Q_EMIT isOpenChanged();
        Q_EMIT canStartChanged();
    }
}

void DeliverySheet::chooseFolder() {
    if (stage() != Stage::Configure) {
        return;
    }
    const auto chosen = m_flow.folder();
    const FilePanels::ChoosePanel panel{.message = folderPanelMessage(),
                                        .startFolder =
                                            chosen ? existingFolder(*chosen) : QString()};
    m_panels.chooseFolder(panel, [self = QPointer(this)](const QString &folder) {
        if (self && self->m_isOpen && self->stage() == Stage::Configure) {
            self->m_flow.setFolder(folder);
        }
    });
}

void DeliverySheet::start() {
    if (canStart() && stage() == Stage::Configure && m_store.project()) {
        detach(m_flow.start(*m_store.project()));
    }
}

void DeliverySheet::requestCancel() {
    m_flow.requestCancel();
}

void DeliverySheet::reveal(const QString &path) {
    Q_EMIT revealWanted(path);
}

void DeliverySheet::followProject() {
    if (!m_isOpen || stage() != Stage::Configure) {
        return;
    }
    if (m_store.project() && m_store.fileURL() == m_projectFile) {
        planSoon();
    } else {
        dismiss();
    }
}

void DeliverySheet::planSoon() {
    if (m_planDuration <= kQuickPlan) {
        planNow();
    } else {
        m_planTimer = m_clock.after(kTypingPause, [this] { planNow(); });
    }
}

void DeliverySheet::planNow() {
    m_planTimer.reset();
    if (!m_store.project() || stage() != Stage::Configure) {
        return;
    }
    const auto startTime = m_clock.monotonic();
    m_rows.setRows(plan(*m_store.project()));
    m_planDuration = m_clock.monotonic() - startTime;
    Q_EMIT planChanged();
    updateCanStart();
}

void DeliverySheet::updateCanStart() {
    QString help = obstacle();
    if (std::exchange(m_startHelp, std::move(help)) != m_startHelp) {
        Q_EMIT canStartChanged();
    }
}

void DeliverySheet::handleChoices() {
    Q_EMIT choicesChanged();
    if (m_isOpen && stage() == Stage::Configure) {
        if (planDependsOnChoices()) {
            planSoon();
        }
        updateCanStart();
    }
}

void DeliverySheet::handleStage() {
    if (stage() == Stage::Running) {
        m_planTimer.reset();
        m_remaining.emplace(m_clock.monotonic());
        updateRun();
    }
    if (stage() == Stage::Done) {
        updateResult();
    }
    Q_EMIT stageChanged();
}

void DeliverySheet::updateRun() {
    m_run = {.line = DeliveryTexts::checkingLine(), .fraction = m_flow.overallFraction()};
    if (const auto texts = progressTexts()) {
        m_run.line = texts->line;
        m_run.percent = DeliveryTexts::percent(m_run.fraction);
        m_run.details = texts->details;
        if (m_remaining) {
            m_run.timeLeft = m_remaining->text(m_run.fraction, m_clock.monotonic());
        }
    }
    Q_EMIT runChanged();
}

void DeliverySheet::updateResult() {
    m_result = resultTexts();
    m_result.backupLine = DeliveryTexts::backupLine(m_flow.backupError());
    QList<DeliveryResult> rows = std::exchange(m_result.rows, {});
    const qsizetype failedCount = rows.size() - m_result.succeeded;
    if (m_result.succeeded > 0) {
        rows.first().heading = DeliveryTexts::succeededTitle(m_result.succeeded);
    }
    if (failedCount > 0) {
        rows[m_result.succeeded].heading = DeliveryTexts::failedTitle(failedCount);
    }
    m_results.setRows(std::move(rows));
    Q_EMIT resultChanged();
}

} // namespace corvane
