#include "delivery/DeliveryFlow.h"

#include "delivery/SourceChange.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"

#include <algorithm>
#include <cmath>

namespace corvane {

DeliveryRun::~DeliveryRun() = default;

DeliveryFlow::DeliveryFlow(ProjectStore *store, QObject *parent)
    : QObject(parent), m_store(store) {}

DeliveryFlow::~DeliveryFlow() {
    m_cancelToken->abort();
}

void DeliveryFlow::setMode(ExportBatch::Mode mode) {
    assign(editableChoices().mode, mode, &DeliveryFlow::choicesChanged);
}

void DeliveryFlow::setSubclipHandleSeconds(double seconds) {
    const bool isLength = std::isfinite(seconds) && seconds > 0;
    assign(editableChoices().subclipHandleSeconds, isLength ? seconds : 0.0,
           &DeliveryFlow::choicesChanged);
}

void DeliveryFlow::setNamingPreset(NamingPreset preset) {
    DeliveryChoices chosen = editableChoices();
    chosen.namingPreset = preset;
    applyPreset(chosen.naming, preset, m_projectDisplayName);
    assign(editableChoices(), std::move(chosen), &DeliveryFlow::choicesChanged);
}

void DeliveryFlow::setNaming(const ExportNamingOptions &naming) {
    assign(editableChoices().naming, naming, &DeliveryFlow::choicesChanged);
}

std::optional<QString> DeliveryFlow::standardizedFolder(const std::optional<QString> &folder) {
    return folder && !folder->isEmpty() ? std::optional(paths::standardized(*folder))
                                        : std::nullopt;
}

void DeliveryFlow::reset(const Project &project) {
    if (m_stage == Stage::running) {
        return;
    }
    assign(m_projectDisplayName, std::optional(project.displayName()),
           &DeliveryFlow::projectDisplayNameChanged);
    resetChoices(project);
    m_folderOfLimits.reset();
    detach(readVolumeLimits());
    clearRun();
    setStage(Stage::configure);
}

void DeliveryFlow::clearRun() {
    const CancelStage previousStage = cancelStage();
    m_cancelToken = std::make_shared<CancelToken>();
    m_overallFraction = 0;
    clearOutcome();
    assign(m_backupError, {}, &DeliveryFlow::backupErrorChanged);
    if (previousStage != CancelStage::none) {
        Q_EMIT cancelStageChanged();
    }
}

QCoro::Task<> DeliveryFlow::readVolumeLimits() {
    const QPointer self(this);
    const auto target = folder();
    if (!target) {
        co_return;
    }
    const VolumeLimits limits =
        co_await userInitiatedExecutor().run([path = *target] { return VolumeLimits::of(path); });
    if (self && self->m_stage != Stage::running && self->folder() == target) {
        self->m_folderOfLimits = target;
        self->assign(self->editableChoices().volumeLimits, limits, &DeliveryFlow::choicesChanged);
    }
}

QCoro::Task<> DeliveryFlow::start(Project project) {
    if (!m_store || m_stage == Stage::running) {
        co_return;
    }
    if (folder() && m_folderOfLimits != folder()) {
        // Started before they were read, as by a command.
        assign(editableChoices().volumeLimits, VolumeLimits::of(*folder()),
               &DeliveryFlow::choicesChanged);
    }
    if (const auto run = prepareRun(project)) {
        clearRun();
        setStage(Stage::running);
        co_await perform(this, project.filePath, run);
    }
}

/// Static, because the flow may be destroyed during the run.
QCoro::Task<> DeliveryFlow::perform(QPointer<DeliveryFlow> flow, QString projectFile,
                                    std::shared_ptr<DeliveryRun> run) {
    const QPointer<ProjectStore> store = flow->m_store;
    const auto cancelToken = flow->m_cancelToken;
    const auto backupFailure = co_await store->backUp();
    if (flow && backupFailure) {
        flow->assign(flow->m_backupError, std::optional(backupFailure->description()),
                     &DeliveryFlow::backupErrorChanged);
    }
    PathSafety::SourceGrants grants;
    if (store) {
        grants = co_await store->authorization().sourceGrants(projectFile);
    }
    QStringList changed;
    if (flow) {
        changed = co_await run->deliver(grants, cancelToken);
    }
    if (!changed.isEmpty()) {
        changed =
            co_await userInitiatedExecutor().run([changed] { return existingSources(changed); });
    }
    if (store && !changed.isEmpty()) {
        co_await store->authorization().markPending({}, changed, projectFile);
    }
    if (store && !changed.isEmpty()) {
        co_await store->refreshMediaConfirmationState();
    }
}

void DeliveryFlow::requestCancel() {
    if (m_stage == Stage::running && cancelStage() != CancelStage::hard) {
        m_cancelToken->request();
        Q_EMIT cancelStageChanged();
    }
}

void DeliveryFlow::abort() {
    if (m_stage == Stage::running) {
        const CancelStage before = cancelStage();
        m_cancelToken->abort();
        if (cancelStage() != before) {
            Q_EMIT cancelStageChanged();
        }
    }
}

void DeliveryFlow::raiseOverallFraction(double fraction) {
    m_overallFraction = std::max(m_overallFraction, fraction);
}

} // namespace corvane
