#include "delivery/DeliverySheet.h"

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

DeliverySheet::DeliverySheet(ProjectStore &store, FilePanels &panels, Clock &clock,
                             NamingFields::Choices naming, QObject *parent)
    : QObject(parent),
      m_store(store),
      m_panels(panels),
      m_clock(clock),
      m_naming(std::move(naming)) {
    connect(&store, &ProjectStore::projectChanged, this, &DeliverySheet::followProject);
}

DeliverySheet::~DeliverySheet() = default;

QString DeliverySheet::folderLine() const {
    return inOneLine(folder());
}

QStringList DeliverySheet::modes() {
    return choicePlaces::labels(kModes, [](auto mode) { return ExportTexts::label(mode); });
}

QStringList DeliverySheet::handles() {
    return choicePlaces::labels(ExportTexts::handleChoices(), ExportTexts::handleLabel);
}

std::optional<ExportBatch::Mode> DeliverySheet::modeAt(int place) {
    return choicePlaces::at(kModes, place);
}

int DeliverySheet::placeOf(ExportBatch::Mode mode) {
    return choicePlaces::placeOf(kModes, mode);
}

std::optional<double> DeliverySheet::handleAt(int place) {
    return choicePlaces::at(ExportTexts::handleChoices(), place);
}

int DeliverySheet::placeOfHandle(double seconds) {
    return choicePlaces::placeOf(ExportTexts::handleChoices(), seconds);
}

void DeliverySheet::open() {
    if (m_isOpen || (!m_store.project() && stage() != Stage::Running)) {
        return;
    }
    if (stage() != Stage::Running) {
        beginAnew(*m_store.project());
    }
    setOpen(true);
}

void DeliverySheet::beginAnew(const Project &project) {
    m_projectFile = m_store.fileURL();
    resetFlow(project);
    noteChoices();
    planNow();
}

void DeliverySheet::dismiss() {
    if (m_isOpen && canDismiss()) {
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
        beginAnew(*m_store.project());
    } else {
        dismiss();
    }
}

void DeliverySheet::setOpen(bool open) {
    if (std::exchange(m_isOpen, open) != open) {
        Q_EMIT isOpenChanged();
        Q_EMIT canStartChanged();
    }
}

void DeliverySheet::chooseFolder() {
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

void DeliverySheet::start() {
    if (canStart() && stage() == Stage::Configure && m_store.project()) {
        startFlow(*m_store.project());
    }
}

void DeliverySheet::requestCancel() {
    cancelFlow();
}

void DeliverySheet::reveal(const QString &path) {
    Q_EMIT revealWanted(path);
}

bool DeliverySheet::showsOpenProject() const {
    return m_store.project() && m_store.fileURL() == m_projectFile;
}

void DeliverySheet::followProject() {
    if (!m_isOpen || stage() != Stage::Configure) {
        return;
    }
    if (showsOpenProject()) {
        planSoon();
    } else {
        dismiss();
    }
}

void DeliverySheet::planSoon() {
    if (m_planCost <= kQuickPlan) {
        planNow();
    } else {
        m_planTimer = m_clock.after(kKeysRest, [this] { planNow(); });
    }
}

void DeliverySheet::planNow() {
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

void DeliverySheet::weighStart() {
    QString why = obstacle();
    if (std::exchange(m_startHelp, std::move(why)) != m_startHelp) {
        Q_EMIT canStartChanged();
    }
}

void DeliverySheet::noteChoices() {
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

void DeliverySheet::noteRun() {
    m_run = runTexts();
    Q_EMIT runChanged();
}

void DeliverySheet::noteStage() {
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

void DeliverySheet::appendUnder(const QString &heading, QList<DeliveryResult> rows,
                                QList<DeliveryResult> &all) {
    if (!rows.isEmpty()) {
        rows.first().heading = heading;
        all.append(std::move(rows));
    }
}

QString DeliverySheet::remainingTime(double fraction) const {
    return m_remaining ? m_remaining->text(fraction, m_clock.monotonic()) : QString();
}

} // namespace corvane
