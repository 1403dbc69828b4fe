// What the frame around the screens binds.
//
// Main thread only.

#pragma once

#include "Tallyglass/Screens/Context/ViewModel.h"
#include "Tallyglass/Screens/Shell/ShellContent.h"

#include <QtQml/qqmlregistration.h>

#include <QProperty>

namespace tallyglass {

class ShellViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tallyglass::ShellContent content READ content NOTIFY contentChanged)

public:
    using ViewModel::ViewModel;

    [[nodiscard]] ShellContent content() const { return m_content; }

signals:
    void contentChanged();

protected:
    void update() override;

private:
    Q_OBJECT_BINDABLE_PROPERTY(ShellViewModel, ShellContent, m_content, &ShellViewModel::contentChanged)
};

} // namespace tallyglass
