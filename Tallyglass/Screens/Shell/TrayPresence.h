// The program's item in the desktop's tray, there for as long as the desktop has a tray.
//
// Main thread only. What it needs is loaded when there is a tray and not before. What it is given has to
// outlive it.

#pragma once

#include "Tallyglass/Desktop/TrayHost.h"

#include <QObject>
#include <memory>

class QQmlEngine;

namespace tallyglass {

class MenuBarViewModel;
class ScreenContext;

class TrayPresence : public QObject {
    Q_OBJECT

public:
    TrayPresence(QQmlEngine& engine, ScreenContext& context);
    ~TrayPresence() override;

    [[nodiscard]] bool isShown() const { return m_item != nullptr; }

signals:
    void shownChanged();
    void openRequested(); ///< the user wants the window

private:
    void follow();
    void show();

    QQmlEngine& m_engine;
    ScreenContext& m_context;
    TrayHost m_host;
    std::unique_ptr<MenuBarViewModel> m_viewModel;
    std::unique_ptr<QObject> m_item; // shows the view
};

} // namespace tallyglass
