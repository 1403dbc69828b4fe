// The tray item's menu and look, following the model, and what the menu's commands do.
//
// Main thread only. The context has to outlive it.

#pragma once

#include "Tallyglass/Screens/Context/ViewModel.h"
#include "Tallyglass/Screens/Shell/MenuBarContent.h"

#include <QtQml/qqmlregistration.h>

#include <QUrl>
#include <QVariantList>

namespace tallyglass {

class MenuBarViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes its one menu")

    Q_PROPERTY(QVariantList entries READ entries NOTIFY entriesChanged)
    Q_PROPERTY(QUrl iconSource READ iconSource NOTIFY iconChanged)
    Q_PROPERTY(QString accessibleName READ accessibleName NOTIFY iconChanged)

public:
    explicit MenuBarViewModel(ScreenContext& context, QObject* parent = nullptr);

    [[nodiscard]] QVariantList entries() const;
    [[nodiscard]] QUrl iconSource() const;
    [[nodiscard]] QString accessibleName() const { return m_icon.accessibleName; }

    /// Does what the entry stands for; nothing for a text, a divider or an entry that isn't there any more.
    Q_INVOKABLE void activate(int index);
    /// Asks for the window.
    Q_INVOKABLE void open() { emit openRequested(); }

signals:
    void entriesChanged();
    void iconChanged();
    void openRequested();
    void quitRequested();

protected:
    void update() override;

private:
    std::vector<MenuEntry> m_entries;
    BackupHealth::Level m_level = BackupHealth::Level::healthy;
    MenuBarIcon m_icon = menuBarIcon(m_level);
};

} // namespace tallyglass
