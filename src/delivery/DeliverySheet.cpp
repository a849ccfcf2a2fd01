#include "delivery/DeliverySheet.h"

#include "delivery/DeliveryTexts.h"
#include "delivery/Segments.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"
#include "session/SessionTexts.h"

#include <QMetaEnum>

namespace corvane {

namespace {

/// If planning takes longer, it waits for a pause in typing.
constexpr std::chrono::milliseconds kQuickPlan{8};
constexpr std::chrono::milliseconds kTypingPause{120};
/// How long the folder panel waits for the check of its initial folder.
constexpr std::chrono::milliseconds kFolderCheckLimit{1000};

constexpr std::array<segments::Segment<ExportBatch::Mode>, 2> kModes{{
    {ExportBatch::Mode::fastCopy, "Fast copy",
     "Whole-clips: byte-level copy (no re-encode). Subclips: stream pass-through (GOP-snapped, may "
     "extend trim ~1–2s)."},
    {ExportBatch::Mode::accurateTranscode, "Accurate transcode"},
}};
constexpr std::array<segments::Segment<double>, 5> kHandleSeconds{
    {{0, "None"}, {0.5, "0.5s"}, {1, "1s"}, {2, "2s"}, {4, "4s"}}};

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

DeliverySheet::DeliverySheet(Texts texts, DeliveryFlow &flow, ProjectStore &store,
                             FilePanels &panels, Clock &clock, QObject *parent)
    : QObject(parent),
      m_texts(std::move(texts)),
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

QString DeliverySheet::stageName() const {
    return QString::fromLatin1(QMetaEnum::fromType<Stage>().valueToKey(int(stage())));
}

QString DeliverySheet::folder() const {
    return m_flow.folder().value_or(QStringLiteral("(none chosen)"));
}

QString DeliverySheet::folderLine() const {
    return inOneLine(folder());
}

DeliveryChoice DeliverySheet::mode() const {
    DeliveryChoice choice = segments::choice(kModes, m_flow.choices().mode);
    if (choice.help.isEmpty()) {
        choice.help = m_texts.transcodeHelp;
    }
    return choice;
}

DeliveryChoice DeliverySheet::handles() const {
    DeliveryChoice choice = segments::choice(kHandleSeconds, m_flow.choices().subclipHandleSeconds);
    choice.help = m_texts.handlesHelp;
    return choice;
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
    if (m_isOpen || (!m_store.project() && stage() != Stage::running)) {
        return;
    }
    if (stage() != Stage::running) {
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
    if (m_isOpen && stage() != Stage::running) {
        m_planTimer.reset();
        setOpen(false);
        Q_EMIT dismissed();
    }
}

void DeliverySheet::again() {
    if (stage() != Stage::done) {
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
        m_panelTimer.reset();
        Q_EMIT isOpenChanged();
        Q_EMIT canStartChanged();
    }
}

void DeliverySheet::chooseFolder() {
    if (stage() != Stage::configure) {
        return;
    }
    if (const auto chosen = m_flow.folder()) {
        // A drive that doesn't respond must not keep the panel closed.
        m_panelTimer = m_clock.after(kFolderCheckLimit, [this] { showFolderPanel({}); });
        detach(showFolderPanelAt(*chosen));
    } else {
        showFolderPanel({});
    }
}

QCoro::Task<> DeliverySheet::showFolderPanelAt(QString folder) {
    const QPointer self(this);
    const QString start =
        co_await userInitiatedExecutor().run([folder] { return existingFolder(folder); });
    if (self && m_panelTimer) {
        showFolderPanel(start);
    }
}

void DeliverySheet::showFolderPanel(const QString &startFolder) {
    m_panelTimer.reset();
    if (stage() != Stage::configure) {
        return;
    }
    const FilePanels::ChoosePanel panel{.message = m_texts.folderPanelMessage,
                                        .startFolder = startFolder};
    m_panels.chooseFolder(panel, [self = QPointer(this)](const QString &folder) {
        if (self && self->m_isOpen && self->stage() == Stage::configure) {
            self->m_flow.setFolder(folder);
        }
    });
}

void DeliverySheet::start() {
    if (canStart() && stage() == Stage::configure && m_store.project()) {
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
    if (!m_isOpen || stage() != Stage::configure) {
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
    if (!m_store.project() || stage() != Stage::configure) {
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
    if (m_isOpen && stage() == Stage::configure) {
        if (planDependsOnChoices()) {
            planSoon();
        }
        updateCanStart();
    }
}

void DeliverySheet::handleStage() {
    if (stage() == Stage::running) {
        m_planTimer.reset();
        m_remaining.emplace(m_clock.monotonic());
        updateRun();
    }
    if (stage() == Stage::done) {
        updateResult();
    }
    Q_EMIT stageChanged();
}

void DeliverySheet::updateRun() {
    m_run = {.line = DeliveryTexts::checkingLine(), .fraction = m_flow.overallFraction()};
    if (const auto row = m_flow.currentRow()) {
        m_run.line = DeliveryTexts::progressLine(row->index, row->total, row->fileName);
        m_run.percent = DeliveryTexts::percent(m_run.fraction);
        m_run.details = progressDetails();
        if (m_remaining) {
            m_run.timeLeft = m_remaining->text(m_run.fraction, m_clock.monotonic());
        }
    }
    Q_EMIT runChanged();
}

void DeliverySheet::updateResult() {
    m_result = resultTexts();
    m_result.backupLine = SessionTexts::backupLine(m_flow.backupError());
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
