#include "Tallyglass/Screens/Shell/ScreenPictures.h"

#include "Tallyglass/Controls/Theme/Theme.h"
#include "Tallyglass/Models/DiffModel.h"
#include "Tallyglass/Screens/BackupChanges/BackupChangesViewModel.h"
#include "Tallyglass/Screens/Compare/CompareViewModel.h"
#include "Tallyglass/Screens/Context/ScreenContext.h"
#include "Tallyglass/Screens/Diagnostics/DiagnosticsViewModel.h"
#include "Tallyglass/Screens/Exclusions/ExclusionsViewModel.h"
#include "Tallyglass/Screens/FileHistory/FileHistoryViewModel.h"
#include "TallyglassKit/Insight/ExclusionStatus.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QQmlListReference>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

namespace tallyglass {

namespace {

struct Look {
    QSize size;
    bool dark;
    double textScale;
};

constexpr Look looks[] = {
    {{720, 560}, false, 1}, {{900, 720}, false, 1}, {{1600, 1000}, false, 1}, {{720, 560}, false, 2},
    {{720, 560}, true, 1},  {{900, 720}, true, 1},  {{1600, 1000}, true, 1},
};
constexpr int maximumPages = 9; ///< of one screen that scrolls

QString nameOf(const Look& look) {
    return QString::fromStdString(fmt::format("{}x{}-{}{}", look.size.width(), look.size.height(),
                                              look.dark ? "dark" : "light",
                                              look.textScale == 1 ? "" : "-large-text"));
}

/// The first item at or below `item` that scrolls, if its content is higher than it.
QQuickItem* scrollingItem(QQuickItem& item) {
    if (item.inherits("QQuickFlickable") && item.property("contentHeight").toDouble() > item.height() + 1)
        return &item;
    for (QQuickItem* child : item.childItems())
        if (QQuickItem* found = scrollingItem(*child))
            return found;
    return nullptr;
}

/// The property as the object that it must be.
template <typename Type>
Type& part(const QObject& object, const char* name) {
    auto* value = object.property(name).value<Type*>();
    if (!value)
        throw Error(fmt::format("The window has no {}.", name));
    return *value;
}

void waitForEvents() {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void writeWhole(const QString& path, const QImage& image) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit())
        return;
    throw Error(fmt::format("The picture \"{}\" can't be written: {}", path.toStdString(),
                            file.errorString().toStdString()));
}

} // namespace

ScreenPictures::ScreenPictures(QQuickWindow& window, Theme& theme, ScreenActions actions,
                               std::vector<Appearance> others)
    : m_window(window), m_theme(theme), m_actions(std::move(actions)), m_others(std::move(others)),
      m_root(part<QQuickItem>(window, "root")) {}

void ScreenPictures::save(const std::filesystem::path& folder, const QString& session,
                          const std::function<void(const QString&)>& written) {
    m_folder = QString::fromStdString(folder.string());
    if (!QDir().mkpath(m_folder))
        throw Error(fmt::format("The folder \"{}\" can't be made.", folder.string()));
    m_session = session;
    m_written = written;
    for (const Look& look : looks) {
        m_look = nameOf(look);
        m_theme.setDark(look.dark);
        m_theme.setTextScale(look.textScale);
        m_window.resize(look.size);
        saveSections();
    }
}

void ScreenPictures::saveSections() {
    const QQmlListReference sections(&m_root, "sections");
    for (int index = 0; index < sections.count(); ++index) {
        m_section = sections.at(index)->property("name").toString();
        m_root.setProperty("sectionIndex", index);
        settle();
        auto& screen = part<QQuickItem>(m_root, "screen");
        compareBackups(screen);
        traceFile(screen);
        awaitExclusions(screen);
        diagnose(screen);
        saveFrame({});
        savePages(screen);
    }
    m_root.setProperty("sectionIndex", 0);
    m_section.clear();
    settle();
    saveSheets();
}

void ScreenPictures::compareBackups(const QQuickItem& screen) {
    const auto* compare = screen.findChild<CompareViewModel*>();
    DiffModel* diff = compare && !compare->isLocked() ? compare->diff() : nullptr;
    if (!diff)
        return;
    using enum ScreenActions::Work;
    while (diff->isLoadingBackups() ||
           (diff->backups().empty() && !diff->error() && !diff->unavailableReason()))
        waitForEvents();
    if (!diff->canRun() || diff->comparison() || diff->error())
        return;
    if (m_actions.liftsDepthLimit)
        diff->setUnlimitedDepth(true);
    if (m_actions.comparing != none) {
        diff->run(true);
        const auto text = diff->progressText();
        while (m_actions.comparing == finish ? diff->progressText().has_value()
                                             : diff->progressText() == text)
            waitForEvents();
    }
    if (m_actions.comparesAll)
        compareAll(diff->backfill());
    const auto changed = std::ranges::find_if(diff->changes(), [](const ChangeRecord& change) {
        return change.kind == ChangeKind::modified && !change.isDirectory;
    });
    if (changed != diff->changes().end())
        m_changedFile = QString::fromStdString(changed->path);
    settle();
}

/// Until as many pairs are at work as can be at once, and no other one has been finished.
void ScreenPictures::compareAll(BackfillModel& backfill) {
    backfill.start();
    const auto isHalted = [&] {
        const auto& pairs = backfill.pairs();
        return std::ranges::count(pairs, AdjacentPair::State::running, &AdjacentPair::state) ==
               backfill.concurrency();
    };
    while (!isHalted()) {
        backfill.reload();
        waitForEvents();
    }
}

void ScreenPictures::traceFile(const QQuickItem& screen) {
    auto* history = screen.findChild<FileHistoryViewModel*>();
    if (!history || history->isLocked() || !m_actions.traces || !history->path().isEmpty())
        return;
    const QString path = m_actions.tracedPath ? QString::fromStdString(*m_actions.tracedPath) : m_changedFile;
    if (path.isEmpty())
        return;
    history->trace(path);
    const auto isWaiting = [&] { return history->history()->progress() == "Listing backups…"; };
    while (history->history()->progress() && !(m_actions.tracesForever && isWaiting()))
        waitForEvents();
    if (!history->presence().empty())
        history->selectBackup(history->presence().size() / 2);
    settle();
}

void ScreenPictures::awaitExclusions(const QQuickItem& screen) {
    const auto* viewModel = screen.findChild<ExclusionsViewModel*>();
    if (!viewModel)
        return;
    ExclusionsModel& exclusions = *viewModel->exclusions();
    const auto awaitRest = [&] {
        while (exclusions.isBusy())
            waitForEvents();
    };
    awaitRest();
    const auto item = std::ranges::find_if(exclusions.statuses(), &ExclusionStatus::canToggle);
    if (m_actions.togglesExclusion && !exclusions.error() && item != exclusions.statuses().end())
        exclusions.setExcluded(!item->isExcluded(), item->path);
    awaitRest();
    settle();
}

void ScreenPictures::diagnose(const QQuickItem& screen) {
    auto* viewModel = screen.findChild<DiagnosticsViewModel*>();
    if (!viewModel || m_hasDiagnosed)
        return;
    m_hasDiagnosed = true;
    AppModel& model = *viewModel->model();
    using enum ScreenActions::Work;
    if (m_actions.capturing != none)
        model.captureDiagnostics();
    if (m_actions.benchmarking != none)
        viewModel->runBenchmark();
    const auto isWorking = [](ScreenActions::Work work, const std::optional<std::string>& progress,
                              std::string_view last) {
        return work == begin ? !progress->starts_with(last) : progress.has_value();
    };
    while (isWorking(m_actions.capturing, model.diagnosticsProgress(), "Latest backup") ||
           isWorking(m_actions.benchmarking, model.benchmarkProgress(), "Timing "))
        waitForEvents();
    settle();
}

void ScreenPictures::savePages(QQuickItem& screen) {
    QQuickItem* scrolling = scrollingItem(screen);
    if (!scrolling)
        return;
    const double end = scrolling->property("contentHeight").toDouble() - scrolling->height();
    const int pages = std::min(maximumPages, 1 + static_cast<int>(std::ceil(end / scrolling->height())));
    for (int page = 2; page <= pages; ++page) {
        scrolling->setProperty("contentY", std::min(end, (page - 1) * scrolling->height()));
        settle();
        saveFrame(QStringLiteral("page%1").arg(page));
    }
    scrolling->setProperty("contentY", 0);
}

void ScreenPictures::saveSheets() {
    constexpr std::pair<const char*, ScreenContext::Sheet> sheets[] = {
        {"about", ScreenContext::About},
        {"access-guide-app", ScreenContext::AppAccessGuide},
        {"access-guide-helper", ScreenContext::HelperAccessGuide},
        {"changes", ScreenContext::BackupChanges},
    };
    for (const auto& [name, kind] : sheets) {
        QVariant presented;
        QMetaObject::invokeMethod(&m_root, "present", Q_RETURN_ARG(QVariant, presented), Q_ARG(int, kind),
                                  Q_ARG(QVariant, QVariant()));
        auto* sheet = presented.value<QObject*>();
        if (!sheet)
            throw Error(fmt::format("The sheet \"{}\" can't be shown.", name));
        settle();
        if (auto* changes = sheet->findChild<BackupChangesViewModel*>())
            awaitChanges(*changes);
        saveFrame(QLatin1String(name));
        QMetaObject::invokeMethod(sheet, "close");
        settle();
    }
    for (const Appearance& other : m_others) {
        other.show();
        settle();
        saveFrame(other.name);
        other.dismiss();
        settle();
    }
}

void ScreenPictures::awaitChanges(BackupChangesViewModel& changes) {
    const auto isReached = [&](const ScreenActions::Standstill& standstill) {
        const BackupChangesContent content = changes.content();
        return content.elapsed == QString::fromStdString(standstill.elapsed) &&
               content.received.isEmpty() != standstill.hasReceived;
    };
    while (changes.isBusy() && !(m_actions.changes && isReached(*m_actions.changes)))
        waitForEvents();
    for (const std::string& folder : m_actions.expandedFolders)
        changes.expand(folder);
    settle();
}

void ScreenPictures::saveFrame(const QString& subject) {
    QStringList name{m_session, m_section, subject, m_look};
    name.removeAll(QString());
    const QString path = QDir(m_folder).filePath(name.join(QLatin1Char('-')) + QStringLiteral(".png"));
    writeWhole(path, m_window.grabWindow());
    m_written(path);
}

/// Lets bindings, loaders and layouts come to rest. Nothing moves by itself, so a few turns of the loop do.
void ScreenPictures::settle() {
    for (int turn = 0; turn < 4; ++turn) {
        QCoreApplication::processEvents();
        static_cast<void>(m_window.grabWindow()); // lays out what waits for the next frame
    }
}

} // namespace tallyglass
