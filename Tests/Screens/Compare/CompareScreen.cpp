#include "Tests/Screens/Compare/CompareScreen.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <stdexcept>

namespace tallyglass::test {

CompareStage::CompareStage() : ScreenStage(machine.environment()) {
    model.setFdaStatus(FDAStatus::granted);
}

CompareScreen::CompareScreen(CompareStage& stage, QSize size)
    : QmlScreen("CompareView {}", stage.properties(), size),
      m_viewModel(root()->findChild<CompareViewModel*>()) {}

QQuickItem& CompareScreen::page() const {
    return *qobject_cast<QQuickItem*>(root());
}

QQuickItem& CompareScreen::list() const {
    for (auto* item : root()->findChildren<QQuickItem*>())
        if (item->inherits("QQuickListView") &&
            item->property("model").value<QObject*>() == m_viewModel->rows())
            return *item;
    throw std::runtime_error("There is no list.");
}

double CompareScreen::placeOf(int row) const {
    return list().parentItem()->mapToScene({0, row * Theme::of(*qmlEngine(root()))->rowHeight()}).y();
}

void CompareScreen::show(const DiffModel::Shown& shown) {
    diff().show(shown);
    settle();
}

void CompareScreen::showResult(const std::vector<std::string>& names, std::int64_t depth) {
    DiffModel::Shown shown{.comparison = Comparison("/old", "/new", {}, {}, depth, "key", Date())};
    shown.comparison->isPartial = false;
    for (const auto& name : names) {
        shown.changes.emplace_back(std::nullopt, "id", fmt::format("/Users/{}", name), ChangeKind::added,
                                   false, 1000, 1000, std::nullopt);
        shown.comparison->count(shown.changes.back());
    }
    show(shown);
}

void CompareScreen::settle() {
    for (int turn = 0; turn < 4; ++turn) {
        QCoreApplication::processEvents();
        static_cast<void>(picture());
    }
}

} // namespace tallyglass::test
