#include "delivery/DeliveryScreenState.h"

#include "delivery/ChoicePlaces.h"
#include "delivery/ExportTexts.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

/// A plan that takes longer isn't made at each key but when the keys rest.
constexpr std::chrono::milliseconds kQuickPlan{8};
constexpr std::chrono::milliseconds kKeysRest{120};

constexpr std::array kModes{ExportBatch::Mode::fastCopy, ExportBatch::Mode::accurateTranscode};

/// The folder, or the first above it that exists: a folder that a run will make can't be shown.
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

DeliveryScreenState::DeliveryScreenState(ProjectStore &store, FilePanels &panels, Clock &clock,
                                         NamingFields::Choices naming, QObject *parent)
    : QObject(parent),
      m_store(store),
      m_panels(panels),
      m_clock(clock),
      m_naming(std::move(naming)) {
    connect(&store, &ProjectStore::projectChanged, this, &DeliveryScreenState::followProject);
}

DeliveryScreenState::~DeliveryScreenState() = default;

QString DeliveryScreenState::folderLine() const {
    return inOneLine(folder());
}

QStringList DeliveryScreenState::modes() {
    return choicePlaces::labels(kModes, [](auto mode) { return ExportTexts::label(mode); });
}

QStringList DeliveryScreenState::handles() {
    return choicePlaces::labels(ExportTexts::handleChoices(), ExportTexts::handleLabel);
}

std::optional<ExportBatch::Mode> DeliveryScreenState::modeAt(int place) {
    return choicePlaces::at(kModes, place);
}

int DeliveryScreenState::placeOf(ExportBatch::Mode mode) {
    return choicePlaces::placeOf(kModes, mode);
}

std::optional<double> DeliveryScreenState::handleAt(int place) {
    return choicePlaces::at(ExportTexts::handleChoices(), place);
}

int DeliveryScreenState::placeOfHandle(double seconds) {
    return choicePlaces::placeOf(ExportTexts::handleChoices(), seconds);
}

void DeliveryScreenState::open() {
    if (m_isOpen || (!m_store.project() && stage() != Stage::Running)) {
        return;
    }
    if (stage() != Stage::Running) {
        beginAnew(*m_store.project());
    }
    setOpen(true);
}

void DeliveryScreenState::beginAnew(const Project &project) {
    m_projectFile = m_store.fileURL();
    resetFlow(project);
    noteChoices();
    planNow();
}

void DeliveryScreenState::dismiss() {
    if (m_isOpen && canDismiss()) {
        m_planTimer.reset();
        setOpen(false);
        Q_EMIT dismissed();
    }
}

void DeliveryScreenState::again() {
    if (stage() != Stage::Done) {
        return;
    }
    if (m_store.project()) {
        beginAnew(*m_store.project());
    } else {
        dismiss();
    }
}

void DeliveryScreenState::setOpen(bool open) {
    if (std::exchange(m_isOpen, open) != open) {
        Q_EMIT isOpenChanged();
        Q_EMIT canStartChanged();
    }
}

void DeliveryScreenState::chooseFolder() {
    if (stage() != Stage::Configure) {
        return;
    }
    const auto folder = chosenFolder();
    const FilePanels::ChoosePanel panel{.message = folderPanelMessage(),
                                        .startFolder =
                                            folder ? existingFolder(*folder) : QString()};
    m_panels.chooseFolder(panel, [self = QPointer(this)](const QString &chosen) {
        if (self && self->m_isOpen && self->stage() == Stage::Configure) {
            self->setChosenFolder(chosen);
        }
    });
}

void DeliveryScreenState::start() {
    if (canStart() && stage() == Stage::Configure && m_store.project()) {
        startFlow(*m_store.project());
    }
}

void DeliveryScreenState::requestCancel() {
    cancelFlow();
}

void DeliveryScreenState::reveal(const QString &path) {
    Q_EMIT revealWanted(path);
}

bool DeliveryScreenState::showsOpenProject() const {
    return m_store.project() && m_store.fileURL() == m_projectFile;
}

void DeliveryScreenState::followProject() {
    if (!m_isOpen || stage() != Stage::Configure) {
        return;
    }
    if (showsOpenProject()) {
        planSoon();
    } else {
        dismiss();
    }
}

void DeliveryScreenState::planSoon() {
    if (m_planCost <= kQuickPlan) {
        planNow();
    } else {
        m_planTimer = m_clock.after(kKeysRest, [this] { planNow(); });
    }
}

void DeliveryScreenState::planNow() {
    m_planTimer.reset();
    if (!m_store.project() || stage() != Stage::Configure) {
        return;
    }
    const auto began = m_clock.monotonic();
    m_rows.setRows(plan(*m_store.project()));
    m_planCost = m_clock.monotonic() - began;
    Q_EMIT planChanged();
    weighStart();
}

void DeliveryScreenState::weighStart() {
    QString why = obstacle();
    if (std::exchange(m_startHelp, std::move(why)) != m_startHelp) {
        Q_EMIT canStartChanged();
    }
}

void DeliveryScreenState::noteChoices() {
    m_choices = choiceTexts();
    Q_EMIT choicesChanged();
    Q_EMIT m_naming.changed();
    if (m_isOpen && stage() == Stage::Configure) {
        if (planFollowsChoices()) {
            planSoon();
        }
        weighStart();
    }
}

void DeliveryScreenState::noteRun() {
    m_run = runTexts();
    Q_EMIT runChanged();
}

void DeliveryScreenState::noteStage() {
    if (stage() == Stage::Running) {
        m_planTimer.reset();
        m_remaining.emplace(m_clock.monotonic());
        noteRun();
    }
    if (stage() == Stage::Done) {
        m_result = resultTexts();
        m_results.setRows(std::exchange(m_result.rows, {}));
        Q_EMIT resultChanged();
    }
    Q_EMIT stageChanged();
}

void DeliveryScreenState::appendUnder(const QString &heading, QList<DeliveryResult> rows,
                                      QList<DeliveryResult> &all) {
    if (!rows.isEmpty()) {
        rows.first().heading = heading;
        all.append(std::move(rows));
    }
}

QString DeliveryScreenState::remainingTime(double fraction) const {
    return m_remaining ? m_remaining->text(fraction, m_clock.monotonic()) : QString();
}

} // namespace corvane
