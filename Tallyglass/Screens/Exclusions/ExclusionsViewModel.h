// The exclusions screen's state over a model of its own: what it shows and what its controls do.
//
// Main thread only.

#pragma once

#include "Tallyglass/Models/ExclusionsModel.h"
#include "Tallyglass/Screens/Context/ViewModel.h"
#include "Tallyglass/Screens/Exclusions/ExclusionListModel.h"

#include <qqmlintegration.h>

#include <QList>
#include <QProperty>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <memory>

namespace tallyglass {

class ExclusionsViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(QStringList skipPaths READ skipPaths NOTIFY skipPathsChanged)
    Q_PROPERTY(tallyglass::ExclusionListModel* rows READ rows CONSTANT)

public:
    using ViewModel::ViewModel;

    /// Null until the application's model is there.
    [[nodiscard]] ExclusionsModel* exclusions() const { return m_exclusions.get(); }

    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    [[nodiscard]] bool isEmpty() const { return m_isEmpty; } ///< it is known that no item is watched
    [[nodiscard]] QString error() const { return m_error; }  ///< empty when there is none
    [[nodiscard]] QStringList skipPaths() const { return m_skipPaths; }
    [[nodiscard]] ExclusionListModel* rows() { return &m_rows; }

    /// The user has come to the screen: items may have changed.
    Q_INVOKABLE void appear();

    // The controls. None does anything before the application's model is there.
    Q_INVOKABLE void addItems();                    ///< asks for files
    Q_INVOKABLE void addFolder();                   ///< asks for a folder
    Q_INVOKABLE void drop(const QList<QUrl>& urls); ///< adds those that are local
    Q_INVOKABLE void setExcluded(bool excluded, const QString& path);
    Q_INVOKABLE void toggle(const QString& path); ///< if it can be and nothing runs
    Q_INVOKABLE void stopTracking(const QString& path);
    Q_INVOKABLE void copy(const QString& path);
    Q_INVOKABLE void reveal(const QString& path);

signals:
    void isBusyChanged();
    void isEmptyChanged();
    void errorChanged();
    void skipPathsChanged();

protected:
    void update() override;

private:
    using Self = ExclusionsViewModel;

    void makeModel();
    void showPanel(FilePanel::Kind kind);

    std::unique_ptr<ExclusionsModel> m_exclusions;
    ExclusionListModel m_rows;

    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isBusy, false, &ExclusionsViewModel::isBusyChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isEmpty, false, &ExclusionsViewModel::isEmptyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QString, m_error, &ExclusionsViewModel::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QStringList, m_skipPaths, &ExclusionsViewModel::skipPathsChanged)
};

} // namespace tallyglass
