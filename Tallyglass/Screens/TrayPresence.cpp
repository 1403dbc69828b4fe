#include "Tallyglass/Screens/TrayPresence.h"

#include "Tallyglass/Screens/MenuBarView.h"
#include "Tallyglass/Screens/SymbolImages.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

namespace tallyglass {

TrayPresence::TrayPresence(QQmlEngine& engine, AppModel& model, Workspace& workspace,
                           UpdaterController& updater)
    : m_engine(engine), m_model(model), m_workspace(workspace), m_updater(updater) {
    connect(&m_host, &TrayHost::availableChanged, this, &TrayPresence::follow);
    follow();
}

TrayPresence::~TrayPresence() = default;

void TrayPresence::follow() {
    if (m_host.isAvailable() == isShown())
        return;
    if (m_host.isAvailable()) {
        show();
    } else {
        m_item.reset();
        m_view.reset();
    }
    emit shownChanged();
}

void TrayPresence::show() {
    if (!m_engine.imageProvider(SymbolImages::providerName))
        m_engine.addImageProvider(SymbolImages::providerName, new SymbolImages); // owned by the engine
    m_view = std::make_unique<MenuBarView>(m_model, m_workspace, m_updater);
    connect(m_view.get(), &MenuBarView::openRequested, this, &TrayPresence::openRequested);
    connect(m_view.get(), &MenuBarView::quitRequested, qGuiApp, &QGuiApplication::quit, Qt::QueuedConnection);

    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/Tallyglass/TrayItem.qml")));
    m_item.reset(component.createWithInitialProperties({
        {QStringLiteral("view"), QVariant::fromValue(m_view.get())},
    }));
    if (!m_item)
        qWarning("The tray item can't be shown: %s", qUtf8Printable(component.errorString()));
}

} // namespace tallyglass
