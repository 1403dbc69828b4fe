#include "Tallyglass/Screens/Shell/TrayPresence.h"

#include "Tallyglass/Controls/Theme/SymbolImages.h"
#include "Tallyglass/Screens/Shell/MenuBarViewModel.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

namespace tallyglass {

TrayPresence::TrayPresence(QQmlEngine& engine, ScreenContext& context)
    : m_engine(engine), m_context(context) {
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
        m_viewModel.reset();
    }
    emit shownChanged();
}

void TrayPresence::show() {
    if (!m_engine.imageProvider(SymbolImages::providerName))
        m_engine.addImageProvider(SymbolImages::providerName, new SymbolImages); // owned by the engine
    m_viewModel = std::make_unique<MenuBarViewModel>(m_context);
    connect(m_viewModel.get(), &MenuBarViewModel::openRequested, this, &TrayPresence::openRequested);
    connect(m_viewModel.get(), &MenuBarViewModel::quitRequested, qGuiApp, &QGuiApplication::quit,
            Qt::QueuedConnection);

    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/Tallyglass/Shell/TrayItem.qml")));
    m_item.reset(component.createWithInitialProperties({
        {QStringLiteral("viewModel"), QVariant::fromValue(m_viewModel.get())},
    }));
    if (!m_item)
        qWarning("The tray item can't be shown: %s", qUtf8Printable(component.errorString()));
}

} // namespace tallyglass
