// What the button binds that starts a backup, or stops the one that runs.
//
// Main thread only.

#pragma once

#include "Tallyglass/Screens/Context/ViewModel.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QProperty>
#include <QString>

namespace tallyglass {

struct BackupStatus;

struct BackupButtonContent {
    Q_GADGET
    QML_VALUE_TYPE(backupButtonContent)

    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool stops MEMBER stops)

public:
    QString text;
    QString symbol;
    bool stops = false; ///< a press stops the running backup, else it starts one

    friend bool operator==(const BackupButtonContent&, const BackupButtonContent&) = default;
};

[[nodiscard]] BackupButtonContent backupButtonContent(const BackupStatus& status);

class BackupButtonViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tallyglass::BackupButtonContent content READ content NOTIFY contentChanged)

public:
    using ViewModel::ViewModel;

    [[nodiscard]] BackupButtonContent content() const { return m_content; }

    /// Starts a backup, or stops the one that runs.
    Q_INVOKABLE void press();

signals:
    void contentChanged();

protected:
    void update() override;

private:
    Q_OBJECT_BINDABLE_PROPERTY(BackupButtonViewModel, BackupButtonContent, m_content,
                               &BackupButtonViewModel::contentChanged)
};

} // namespace tallyglass
