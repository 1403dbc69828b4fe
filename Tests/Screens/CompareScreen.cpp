#include "Tests/Screens/CompareScreen.h"

#include <QCoreApplication>
#include <stdexcept>

namespace tallyglass::test {

CompareStage::CompareStage() : model(machine.surroundings()), helperSetup(model.paths(), workspace, alerts) {
    model.setFdaStatus(FDAStatus::granted);
}

CompareScreen::CompareScreen(CompareStage& stage, QSize size)
    : QmlScreen("CompareView {}",
                {{QStringLiteral("model"), QVariant::fromValue(&stage.model)},
                 {QStringLiteral("helperSetup"), QVariant::fromValue(&stage.helperSetup)},
                 {QStringLiteral("workspace"), QVariant::fromValue<Workspace*>(&stage.workspace)},
                 {QStringLiteral("pasteboard"), QVariant::fromValue<Pasteboard*>(&stage.pasteboard)}},
                size),
      m_machine(stage.machine), m_state(root()->findChild<CompareState*>()) {}

QQuickItem& CompareScreen::page() const {
    return *qobject_cast<QQuickItem*>(root());
}

QQuickItem& CompareScreen::list() const {
    for (auto* item : root()->findChildren<QQuickItem*>())
        if (item->inherits("QQuickListView") && item->property("model").value<QObject*>() == m_state->rows())
            return *item;
    throw std::runtime_error("There is no list.");
}

double CompareScreen::placeOf(int row) const {
    return list().parentItem()->mapToScene({0, row * Theme::of(*qmlEngine(root()))->rowHeight()}).y();
}

void CompareScreen::showResult(const std::vector<std::string>& names) {
    const auto roots = m_machine.setBackups(2);
    std::vector<std::string> files;
    for (const auto& name : names)
        files.push_back("Users/" + name);
    m_machine.setAdded(roots[1], files);
    diff().loadBackups();
    until([this] { return !diff().isLoadingBackups() && diff().canRun(); });
    diff().run(false);
    until([this] { return !diff().progressText(); });
    settle();
}

void CompareScreen::settle() {
    for (int turn = 0; turn < 4; ++turn) {
        QCoreApplication::processEvents();
        static_cast<void>(picture());
    }
}

} // namespace tallyglass::test
