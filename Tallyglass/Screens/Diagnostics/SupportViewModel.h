// What the support card shows and does. Main thread only.

#pragma once

#include "Tallyglass/Desktop/Workspace.h"
#include "Tallyglass/Screens/Diagnostics/Support.h"

#include <qqmlintegration.h>

#include <QObject>
#include <QPointer>
#include <QString>

namespace tallyglass {

class SupportViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        tallyglass::Workspace* workspace READ workspace WRITE setWorkspace NOTIFY workspaceChanged REQUIRED)
    Q_PROPERTY(QString link READ link WRITE setLink NOTIFY linkChanged)
    Q_PROPERTY(QString hint READ hint NOTIFY linkChanged)

public:
    using QObject::QObject;

    /// Outlives this object.
    [[nodiscard]] Workspace* workspace() const { return m_workspace; }
    void setWorkspace(Workspace* workspace);
    /// That of this build unless it is set.
    [[nodiscard]] QString link() const { return m_link; }
    void setLink(const QString& link);
    /// Of the button.
    [[nodiscard]] QString hint() const;

    /// Opens the link in the browser, if it is one.
    Q_INVOKABLE void open();

signals:
    void workspaceChanged();
    void linkChanged();

private:
    QPointer<Workspace> m_workspace;
    QString m_link = Support::paymentLink();
};

} // namespace tallyglass
