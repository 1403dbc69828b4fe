#include "Tests/Screens/Compare/CompareScreen.h"

#include <QCoreApplication>
#include <stdexcept>

namespace tallyglass::test {

CompareStage::CompareStage() : ScreenStage(machine.environment()) {
    model.setFdaStatus(FDAStatus::granted);
}

CompareScreen::CompareScreen(CompareStage& stage, QSize size)
    : QmlScreen("CompareView {}", stage.properties(), size), m_machine(stage.machine),
      m_viewModel(root()->findChild<CompareViewModel*>()) {}

QQuickItem& CompareScreen::list() const {
    for (auto* item : root()->findChildren<QQuickItem*>())
        if (item->inherits("QQuickListView") &&
            item->property("model").value<QObject*>() == m_viewModel->rows())
            return *item;
    throw std::runtime_error("There is no list.");
}

void CompareScreen::scrollTo(int row) {
    constexpr int beginning = 0;
    QMetaObject::invokeMethod(&list(), "positionViewAtIndex", Q_ARG(int, row), Q_ARG(int, beginning));
    settle();
}

QRectF CompareScreen::boxOf(int row) const {
    QQuickItem* item = nullptr;
    QMetaObject::invokeMethod(&list(), "itemAtIndex", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, row));
    if (!item)
        throw std::runtime_error("The row isn't in view.");
    return item->mapRectToScene(item->boundingRect());
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
